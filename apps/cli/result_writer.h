#pragma once
// Result sets on standard output: as aligned tables, as CSV, as JSON.

#include <functional>
#include <memory>
#include <string>

#include "embedded/server.h"
#include "text_table.h"

namespace cli {

// A sink that writes what a batch answers, and each failure to standard error: as "Msg <number>: <text>" unless told
// otherwise.
class ResultWriter : public embedded::ResultSink {
public:
  using FailureText = std::function<std::string(const tsql::SqlError&)>;

  bool anyFailure() const { return anyFailure_; }
  void sayFailuresAs(FailureText text) { failureText_ = std::move(text); }
  void failure(const tsql::SqlError& error) override;
  void message(const std::string& text) override;

protected:
  virtual void breakOff() {}  // a failure comes in the midst of a result set

private:
  bool anyFailure_ = false;
  FailureText failureText_;
};

// format: "table", "csv", "json". look is for tables.
//
// CSV is what a spreadsheet opens: UTF-8, in a file with a byte order mark, without which it would take Chinese for
// something else (another program gets none); a head with the names; quotes as RFC 4180 has them; lines end in a line
// feed; an empty line between two result sets. Codes stay as they are, leading zeros included. Null is nothing, an
// empty text a pair of quotes.
std::unique_ptr<ResultWriter> makeResultWriter(const std::string& format, const TableLook& look = {});

}  // namespace cli
