#pragma once
// GridModel: rows of texts, filtered, searched and sorted without being copied. A hundred thousand rows are an ordinary
// report.
//
//   GridModel model;
//   model.setGrid({&form.Grid1.rows, form.Grid1.alignments});    // the first row is the header row
//   model.setFilter([](const GridModel::Row& row) { return row.back() == "X"; });
//
// A row that continues the one above it - its first cell is empty - stays with it: the two are filtered and sorted as
// one.

#include <QAbstractTableModel>
#include <QColor>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/controls.h"

namespace desktop {

class GridModel final : public QAbstractTableModel {
public:
  using Row = std::vector<std::string>;
  using Rows = std::vector<Row>;

  struct Source {
    const Rows* rows = nullptr;  // the header row first; it outlives the model's use of it
    std::vector<gljz::Alignment> alignments = {};
    bool continued = false;                // rows with an empty first cell continue the one above
    std::vector<std::size_t> codes = {0};  // columns whose digits are no amounts
  };
  void setGrid(Source source);
  // Keeps the groups of rows that have one for which it holds; none: all.
  void setFilter(std::function<bool(const Row&)> filter);
  // Keeps the groups that have a cell with this text in it, whatever its case.
  void setSearch(const std::string& text);
  // Of a cell; none: the ordinary colour.
  void setInk(std::function<std::optional<QColor>(const Row&, std::size_t column)> ink) { ink_ = std::move(ink); }

  std::size_t matching(const std::function<bool(const Row&)>& filter) const;  // rows of the grid, unfiltered
  const Row& row(int visible) const;
  Rows visibleRows() const;  // the header row first

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  // By the cells of each group's first row. A column whose cells are all numbers or blank is one of numbers, whatever
  // its side: by value, the blank ones first; unless it is of codes. Other columns: by the language's order. -1: as
  // they came.
  void sort(int column, Qt::SortOrder order) override;

private:
  struct Group {
    std::size_t first = 0, count = 0;
  };
  void arrange();
  bool isKept(const Group& group) const;
  bool isOfNumbers(std::size_t column) const;
  bool isRight(std::size_t column) const;
  Qt::Alignment alignment(std::size_t column) const;

  Source source_;
  std::vector<Group> groups_;
  std::vector<std::size_t> visible_;  // indices into the rows
  std::function<bool(const Row&)> filter_;
  std::string search_;
  std::function<std::optional<QColor>(const Row&, std::size_t)> ink_;
  int sortColumn_ = -1;
  Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

// Plain number text ("-1234.50", ".50") compared by value: negative, 0, positive; nothing when one of them is no
// number. Blanks around it count for nothing. No amount passes through a floating-point number.
std::optional<int> compareNumberTexts(const std::string& a, const std::string& b);

}  // namespace desktop
