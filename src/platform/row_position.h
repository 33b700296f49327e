#pragma once
// RowPosition: where a result set stands among the rows that it holds: before the first, on one of them, or behind the
// last. How many it holds is the caller's to say, since it changes with each block that is fetched.

#include <cstddef>

#include "platform/run_time_error.h"

namespace platform {

class RowPosition {
public:
  bool isBefore() const { return before_; }
  bool isBehind(std::size_t rows) const { return !before_ && at_ >= rows; }

  // The row's number from 0. RunTimeError (no current record) when it stands on none; so do all steps that lead
  // nowhere.
  std::size_t row(std::size_t rows) const {
    if (before_ || at_ >= rows) noRow();
    return at_;
  }

  void toFirst(std::size_t rows) {
    if (rows == 0) noRow();
    toStart();
  }
  void toStart() {
    at_ = 0;
    before_ = false;
  }
  // From the last row: behind it.
  void toNext(std::size_t rows) {
    if (before_) return toStart();
    if (at_ >= rows) noRow();
    ++at_;
  }
  // From the first row: before it.
  void toPrevious(std::size_t rows) {
    if (before_ || rows == 0) noRow();
    if (at_ == 0)
      before_ = true;
    else
      --at_;
  }
  bool isAtStart() const { return !before_ && at_ == 0; }

  [[noreturn]] static void noRow() { throw RunTimeError(RunTimeError::noCurrentRecord, "There is no current record"); }

private:
  std::size_t at_ = 0;
  bool before_ = false;
};

}  // namespace platform
