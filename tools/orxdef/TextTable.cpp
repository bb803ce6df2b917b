#include "orxdef/TextTable.h"

#include <algorithm>

namespace orx::orxdef {
namespace {

/// How many cells of a row stand in columns. A row that is shorter than the first ends in a remark.
std::size_t columnsOf(const Row& row, std::size_t columns) {
    return row.size() < columns ? row.size() - 1 : columns;
}

std::string lineText(const Row& row, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const auto width = std::max(widths[column], row[column].size());
        line.append(row[column]).append(width + 2 - row[column].size(), ' ');
    }
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

}  // namespace

std::string tableText(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows)
        for (std::size_t column = 0; column < columnsOf(row, widths.size()); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    std::string text;
    for (const auto& row : rows)
        text += lineText(row, widths);
    return text;
}

}  // namespace orx::orxdef
