#include "embedded/row_shape.h"

namespace embedded {

namespace {
std::size_t hashOf(std::string_view name) {
  std::size_t h = name.size();
  for (const char c : name) h = h * 31 + (static_cast<unsigned char>(c) | 0x20u);
  return h;
}
}  // namespace

RowShape::RowShape(std::vector<ColumnInfo> columns, std::vector<int> baseColumns)
    : columns_(std::move(columns)), baseColumns_(std::move(baseColumns)) {
  std::size_t size = 16;
  while (size < columns_.size() * 2) size *= 2;
  names_.assign(size, -1);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    std::size_t at = hashOf(columns_[i].name) & (size - 1);
    while (names_[at] >= 0) at = (at + 1) & (size - 1);
    names_[at] = static_cast<int>(i);
  }
  spelled_.resize(2 * size);  // more than one spelling of a name is in use
}

int RowShape::search(std::string_view name) const {
  if (names_.empty()) return -1;
  for (std::size_t at = hashOf(name) & (names_.size() - 1); names_[at] >= 0; at = (at + 1) & (names_.size() - 1))
    if (tsql::sameName(columns_[static_cast<std::size_t>(names_[at])].name, name)) return names_[at];
  return -1;
}

}  // namespace embedded
