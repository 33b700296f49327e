#pragma once
// Result sets on standard output: as aligned tables, as CSV, as JSON.

#include <memory>
#include <string>

#include "embedded/server.h"

namespace cli {

// A sink that writes what a batch answers, and each failure to standard error as "Msg <number>: <text>".
class ResultWriter : public embedded::ResultSink {
public:
  bool anyFailure() const { return anyFailure_; }
  void failure(const tsql::SqlError& error) override;
  void message(const std::string& text) override;

protected:
  virtual void breakOff() {}  // a failure comes in the midst of a result set

private:
  bool anyFailure_ = false;
};

// format: "table", "csv", "json".
std::unique_ptr<ResultWriter> makeResultWriter(const std::string& format);

}  // namespace cli
