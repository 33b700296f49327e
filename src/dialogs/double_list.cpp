#include "dialogs/double_list.h"

#include <iterator>

namespace gljz {
namespace {

void move(DoubleList::Entries& from, DoubleList::Entries& to, std::size_t index) {
  to.push_back(std::move(from.at(index)));
  from.erase(from.begin() + static_cast<std::ptrdiff_t>(index));
}

void moveAll(DoubleList::Entries& from, DoubleList::Entries& to) {
  std::move(from.begin(), from.end(), std::back_inserter(to));
  from.clear();
}

}  // namespace

void DoubleList::clear() {
  left_.clear();
  right_.clear();
}

void DoubleList::moveRight(std::size_t index) {
  move(left_, right_, index);
}

void DoubleList::moveLeft(std::size_t index) {
  move(right_, left_, index);
}

void DoubleList::moveAllRight() {
  moveAll(left_, right_);
}

void DoubleList::moveAllLeft() {
  moveAll(right_, left_);
}

std::string accountEntry(std::string_view ccode, std::string_view name) {
  return std::string(ccode) + " " + std::string(name);
}

std::string accountOf(std::string_view entry) {
  return std::string(entry.substr(0, entry.find(' ')));
}

}  // namespace gljz
