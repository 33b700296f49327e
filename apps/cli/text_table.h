#pragma once
// Rows as an aligned table. A Chinese character takes two columns of a terminal.
//
//   TextTable t({{"ccode"}, {"me", true}});
//   t.row({{"1001"}, {"25.5"}});
//   put(t.text());

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

struct TableColumn {
  std::string name;
  bool right = false;     // numbers
  bool longText = false;  // may be cut where the terminal is too narrow
};

struct TableCell {
  std::string text;
  bool null = false;
};

struct TableLook {
  std::size_t width = 0;  // of the terminal; 0: as wide as the rows are, nothing is cut
  bool colours = false;   // Null is shown dim
};

class TextTable {
public:
  explicit TextTable(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}
  void row(std::vector<TableCell> cells);  // as many cells as there are columns
  std::size_t rows() const { return rows_.size(); }
  // Head, rule and rows. What does not fit into the width even with its texts cut comes in several blocks of columns,
  // one below the other.
  std::string text(const TableLook& look = {}) const;

private:
  std::vector<std::size_t> widths(std::size_t longest) const;
  void block(std::size_t first, std::size_t last, const std::vector<std::size_t>& widths, const TableLook& look,
             std::string& out) const;

  std::vector<TableColumn> columns_;
  std::vector<std::vector<TableCell>> rows_;
};

}  // namespace cli
