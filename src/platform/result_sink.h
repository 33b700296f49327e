#pragma once
// What a batch answers, in order: result sets, counts, failures in between, messages.

#include <cstdint>
#include <string>
#include <vector>

#include "platform/run_time_error.h"
#include "platform/value.h"

namespace platform {

struct ResultColumn {
  std::string name;      // empty for an expression without a name
  bool numeric = false;  // numbers, amounts and flags
};

class ResultSink {
public:
  virtual ~ResultSink() = default;
  virtual void columns(const std::vector<ResultColumn>& columns) = 0;  // a result set begins
  virtual void row(const std::vector<Value>& row) = 0;
  virtual void endRows(std::int64_t count) = 0;
  virtual void affected(std::int64_t count) { (void)count; }  // after each insert, update, delete
  virtual void failure(const ServerFailure& failure) = 0;
  virtual void message(const std::string& text) { (void)text; }  // print
};

}  // namespace platform
