#pragma once
// RowShape: the columns of a result set, found by name. Made once per plan and shared by its result sets.

#include <string>
#include <string_view>
#include <vector>

#include "embedded/server.h"
#include "tsql/catalog.h"

namespace embedded {

class RowShape {
public:
  RowShape() = default;
  // baseColumns: of the one table that the rows belong to, -1 for an expression; empty when there is no such table.
  RowShape(std::vector<ColumnInfo> columns, std::vector<int> baseColumns);

  const std::vector<ColumnInfo>& columns() const { return columns_; }
  const std::vector<int>& baseColumns() const { return baseColumns_; }
  // Without regard to case; of equal names the first wins; -1 when missing.
  int find(std::string_view name) const {
    // Names are asked for again and again in one spelling: it is remembered and compared byte by byte first.
    std::size_t at = slotOf(name);
    for (std::size_t i = 0; i < probes; ++i, at = (at + 1) & (spelled_.size() - 1)) {
      if (spelled_[at].name == name) return spelled_[at].column;
      if (spelled_[at].name.empty()) break;
    }
    const int column = search(name);
    if (column >= 0) spelled_[at] = {std::string(name), column};
    return column;
  }

private:
  static constexpr std::size_t probes = 4;
  std::size_t slotOf(std::string_view name) const {
    std::size_t h = name.size();
    for (const char c : name) h = h * 31 + static_cast<unsigned char>(c);
    return (h ^ (h >> 7)) & (spelled_.size() - 1);
  }
  int search(std::string_view name) const;
  struct Spelled {
    std::string name;
    int column = -1;
  };
  std::vector<ColumnInfo> columns_;
  std::vector<int> baseColumns_;
  std::vector<int> names_;                // open addressing, size a power of two
  mutable std::vector<Spelled> spelled_;  // a session belongs to one thread, and so do its plans
};

}  // namespace embedded
