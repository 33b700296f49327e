#pragma once
// UsageError: what a person asked for cannot be done as asked. One line that says what and where; nothing was changed.

#include <stdexcept>

namespace host {

class UsageError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

}  // namespace host
