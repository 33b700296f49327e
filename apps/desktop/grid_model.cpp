#include "grid_model.h"

#include <QCollator>
#include <algorithm>
#include <numeric>
#include <string_view>

#include "platform/value.h"
#include "texts.h"

namespace desktop {
namespace {

// Sign, digits before the point without leading zeros, digits behind it without trailing ones.
struct Number {
  bool negative = false;
  std::string_view whole, fraction;

  bool isZero() const { return whole.empty() && fraction.empty(); }
};

bool allDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<Number> readNumber(std::string_view text) {
  Number number;
  text = trimmed(text);
  if (text.starts_with('-')) {
    number.negative = true;
    text.remove_prefix(1);
  }
  const auto point = text.find('.');
  number.whole = text.substr(0, point);
  if (point != std::string_view::npos) number.fraction = text.substr(point + 1);
  if (number.whole.empty() && number.fraction.empty()) return std::nullopt;
  if (!allDigits(number.whole) || !allDigits(number.fraction)) return std::nullopt;
  number.whole.remove_prefix(std::min(number.whole.find_first_not_of('0'), number.whole.size()));
  const auto last = number.fraction.find_last_not_of('0');
  number.fraction = number.fraction.substr(0, last == std::string_view::npos ? 0 : last + 1);
  if (number.isZero()) number.negative = false;
  return number;
}

int sign(int value) {
  return value < 0 ? -1 : value > 0 ? 1 : 0;
}

int compareMagnitudes(const Number& a, const Number& b) {
  if (a.whole.size() != b.whole.size()) return a.whole.size() < b.whole.size() ? -1 : 1;
  if (const int whole = a.whole.compare(b.whole)) return sign(whole);
  return sign(a.fraction.compare(b.fraction));
}

int compare(const Number& a, const Number& b) {
  if (a.negative != b.negative) return a.negative ? -1 : 1;
  return a.negative ? compareMagnitudes(b, a) : compareMagnitudes(a, b);
}

// A cell of numbers that has none.
bool isBlank(std::string_view text) {
  text = trimmed(text);
  return text.empty() || text == "-";
}

// What a cell of numbers counts by; amounts may name a currency or a unit behind the number.
std::optional<Number> numberOf(std::string_view cell, bool unitAllowed) {
  cell = trimmed(cell);
  return readNumber(unitAllowed ? cell.substr(0, cell.find(' ')) : cell);
}

// The texts of one column, for sorting. Among numbers the blank texts come first.
class ColumnOrder {
public:
  // The cells outlive the order.
  ColumnOrder(const std::vector<const std::string*>& cells, bool numbers, bool unitAllowed) : numbers_(numbers) {
    const QCollator collator;
    for (const std::string* cell : cells) {
      if (numbers_)
        values_.push_back(numberOf(*cell, unitAllowed));
      else
        keys_.push_back(collator.sortKey(shown(*cell)));
    }
  }
  bool less(std::size_t a, std::size_t b) const {
    if (!numbers_) return keys_[a].compare(keys_[b]) < 0;
    if (!values_[a] || !values_[b]) return !values_[a] && values_[b];
    return compare(*values_[a], *values_[b]) < 0;
  }

private:
  bool numbers_;
  std::vector<std::optional<Number>> values_;
  std::vector<QCollatorSortKey> keys_;
};

const std::string& cellOf(const GridModel::Row& row, std::size_t column) {
  static const std::string none;
  return column < row.size() ? row[column] : none;
}

}  // namespace

std::optional<int> compareNumberTexts(const std::string& a, const std::string& b) {
  const auto first = readNumber(a), second = readNumber(b);
  if (!first || !second) return std::nullopt;
  return compare(*first, *second);
}

void GridModel::setGrid(Source source) {
  beginResetModel();
  source_ = std::move(source);
  groups_.clear();
  const std::size_t count = source_.rows ? source_.rows->size() : 0;
  for (std::size_t i = 1; i < count; ++i) {
    if (source_.continued && !groups_.empty() && cellOf((*source_.rows)[i], 0).empty())
      ++groups_.back().count;
    else
      groups_.push_back({i, 1});
  }
  sortColumn_ = -1;
  filter_ = nullptr;
  arrange();
  endResetModel();
}

void GridModel::setFilter(std::function<bool(const Row&)> filter) {
  beginResetModel();
  filter_ = std::move(filter);
  arrange();
  endResetModel();
}

void GridModel::setSearch(const std::string& text) {
  beginResetModel();
  search_ = platform::toLowerAscii(text);
  arrange();
  endResetModel();
}

std::size_t GridModel::matching(const std::function<bool(const Row&)>& filter) const {
  if (!source_.rows || source_.rows->empty()) return 0;
  return static_cast<std::size_t>(std::count_if(source_.rows->begin() + 1, source_.rows->end(), filter));
}

bool GridModel::isKept(const Group& group) const {
  const auto begin = source_.rows->begin() + static_cast<std::ptrdiff_t>(group.first);
  const auto end = begin + static_cast<std::ptrdiff_t>(group.count);
  if (filter_ && std::none_of(begin, end, filter_)) return false;
  return search_.empty() || std::any_of(begin, end, [this](const Row& row) {
           return std::any_of(row.begin(), row.end(), [this](const std::string& cell) {
             return platform::toLowerAscii(cell).find(search_) != std::string::npos;
           });
         });
}

// Of the whole grid: a filter that leaves only numbers does not make a column of texts one of numbers.
bool GridModel::isOfNumbers(std::size_t column) const {
  if (std::find(source_.codes.begin(), source_.codes.end(), column) != source_.codes.end()) return false;
  return std::all_of(groups_.begin(), groups_.end(), [&](const Group& group) {
    const std::string& cell = cellOf((*source_.rows)[group.first], column);
    return isBlank(cell) || numberOf(cell, isRight(column));
  });
}

bool GridModel::isRight(std::size_t column) const {
  return alignment(column) & Qt::AlignRight;
}

void GridModel::arrange() {
  std::vector<Group> kept;
  std::copy_if(groups_.begin(), groups_.end(), std::back_inserter(kept), [this](const Group& g) { return isKept(g); });
  if (sortColumn_ >= 0) {
    const auto column = static_cast<std::size_t>(sortColumn_);
    std::vector<const std::string*> cells;
    for (const Group& group : kept) cells.push_back(&cellOf((*source_.rows)[group.first], column));
    const ColumnOrder by(cells, isOfNumbers(column), isRight(column));
    std::vector<std::size_t> order(kept.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      return sortOrder_ == Qt::AscendingOrder ? by.less(a, b) : by.less(b, a);
    });
    std::vector<Group> sorted;
    for (const std::size_t i : order) sorted.push_back(kept[i]);
    kept = std::move(sorted);
  }
  visible_.clear();
  for (const Group& group : kept)
    for (std::size_t i = 0; i < group.count; ++i) visible_.push_back(group.first + i);
}

const GridModel::Row& GridModel::row(int visible) const {
  return (*source_.rows)[visible_.at(static_cast<std::size_t>(visible))];
}

GridModel::Rows GridModel::visibleRows() const {
  Rows rows;
  if (!source_.rows || source_.rows->empty()) return rows;
  rows.reserve(visible_.size() + 1);
  rows.push_back(source_.rows->front());
  for (const std::size_t i : visible_) rows.push_back((*source_.rows)[i]);
  return rows;
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(visible_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid() || !source_.rows || source_.rows->empty()) return 0;
  return static_cast<int>(source_.rows->front().size());
}

Qt::Alignment GridModel::alignment(std::size_t column) const {
  const gljz::Alignment side = column < source_.alignments.size() ? source_.alignments[column] : gljz::Alignment::left;
  switch (side) {
    case gljz::Alignment::right:
      return Qt::AlignRight | Qt::AlignVCenter;
    case gljz::Alignment::centred:
      return Qt::AlignCenter;
    case gljz::Alignment::left:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& cells = row(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return shown(cellOf(cells, column));
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(static_cast<int>(alignment(column)));
    case Qt::ForegroundRole:
      if (ink_)
        if (const auto ink = ink_(cells, column)) return *ink;
      return {};
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const auto column = static_cast<std::size_t>(section);
  if (role == Qt::DisplayRole) return shown(source_.rows->front()[column]);
  if (role == Qt::TextAlignmentRole) return QVariant::fromValue(static_cast<int>(alignment(column)));
  return {};
}

void GridModel::sort(int column, Qt::SortOrder order) {
  beginResetModel();
  sortColumn_ = column;
  sortOrder_ = order;
  arrange();
  endResetModel();
}

}  // namespace desktop
