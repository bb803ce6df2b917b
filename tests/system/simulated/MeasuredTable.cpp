#include "system/simulated/MeasuredTable.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <utility>

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace orx::test {

MeasuredTable::MeasuredTable(std::string tableName, Row header) : name(std::move(tableName)) {
    widths.resize(header.size());
    add(std::move(header));
}

void MeasuredTable::add(Row row) {
    for (std::size_t column = 0; column < widths.size(); ++column)
        widths.at(column) = std::max(widths.at(column), row.at(column).size());
    rows.push_back(std::move(row));
}

std::string MeasuredTable::line(const Row& row) const {
    std::string text = "|";
    for (std::size_t column = 0; column < widths.size(); ++column) {
        const auto& cell = row.at(column);
        text += " " + cell + std::string(widths.at(column) - cell.size(), ' ') + " |";
    }
    return text + "\n";
}

std::string MeasuredTable::markdown() const {
    auto text = line(rows.front()) + "|";
    for (const auto width : widths)
        text += std::string(width + 2, '-') + "|";
    text += "\n";
    for (auto row = rows.begin() + 1; row != rows.end(); ++row)
        text += line(*row);
    return text;
}

std::string MeasuredTable::documented() const {
    const auto document = contentOf(ORX_SOURCE_DIR "/docs/lens.md");
    const auto begin = "<!-- measured: " + name + " -->\n\n";
    const auto from = document.find(begin);
    const auto to = document.find("\n<!-- end of " + name + " -->");
    if (from == std::string::npos || to == std::string::npos || to < from) return "no such table";
    return document.substr(from + begin.size(), to - from - begin.size());
}

void MeasuredTable::compareWithDocument() const {
    const auto measured = markdown();
    std::cout << measured;
    if (const char* folder = std::getenv("ORX_LENS_TABLES")) {
        std::ofstream file(std::string(folder) + "/" + name + ".md");
        file << measured;
        EXPECT_TRUE(file.flush()) << "the table cannot be written below " << folder;
        return;
    }
    EXPECT_EQ(documented(), measured)
        << "docs/lens.md is out of date; ./scripts/lens-errors --update renews its tables";
}

}  // namespace orx::test
