#pragma once
// DoubleList: candidates on the left, chosen entries on the right, and buttons that move them.
//
//   list.addLeft(accountEntry("1131", "应收账款"));
//   list.moveRight(0);
//   accountOf(list.right().front());   // "1131"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace gljz {

class DoubleList {
public:
  using Entries = std::vector<std::string>;

  const Entries& left() const { return left_; }
  const Entries& right() const { return right_; }
  void clear();
  void addLeft(std::string entry) { left_.push_back(std::move(entry)); }
  void addRight(std::string entry) { right_.push_back(std::move(entry)); }

  // A moved entry becomes the last one of the other list. std::out_of_range for an index that is not there.
  void moveRight(std::size_t index);
  void moveLeft(std::size_t index);
  void moveAllRight();
  void moveAllLeft();

private:
  Entries left_, right_;
};

// An account as an entry of a list: code and name with one blank between; and the code of such an entry, which is what
// stands before its first blank.
std::string accountEntry(std::string_view ccode, std::string_view name);
std::string accountOf(std::string_view entry);

}  // namespace gljz
