#include "dialogs/controls.h"

namespace gljz {

void Grid::addRow(std::string_view text) {
  std::vector<std::string> cells;
  std::size_t start = 0;
  for (std::size_t tab; (tab = text.find('\t', start)) != std::string_view::npos; start = tab + 1) {
    cells.emplace_back(text.substr(start, tab - start));
  }
  cells.emplace_back(text.substr(start));
  rows.push_back(std::move(cells));
}

}  // namespace gljz
