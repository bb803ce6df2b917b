// A table of figures that a test measures and a document shows. The document holds it between
// two comments, "<!-- measured: NAME -->" and "<!-- end of NAME -->".
#pragma once

#include <string>
#include <vector>

namespace orx::test {

class MeasuredTable {
  public:
    using Row = std::vector<std::string>;

    MeasuredTable(std::string tableName, Row header);

    void add(Row row);

    /// The table in Markdown, its columns aligned.
    [[nodiscard]] std::string markdown() const;

    /// Fails the test where docs/lens.md shows another table. Where ORX_LENS_TABLES names a folder
    /// writes the table there, as NAME.md, and compares nothing.
    void compareWithDocument() const;

  private:
    [[nodiscard]] std::string line(const Row& row) const;
    [[nodiscard]] std::string documented() const;

    std::string name;
    std::vector<Row> rows;
    std::vector<std::size_t> widths;
};

}  // namespace orx::test
