#pragma once
// Statement: one statement handle, and the results of the batch that runs on it.
//
//   Statement s(link);
//   for (auto r = s.execute("update t set a=1 select a from t"); r != Statement::Result::end; r = s.next()) ...

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "odbc/diagnostics.h"
#include "odbc/handle.h"
#include "odbc/link.h"

namespace odbc {

class Statement {
public:
  explicit Statement(std::shared_ptr<Link> link);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // What a batch answers, one after the other. failure: failureOfResult() has it; the server may have gone on behind
  // it.
  enum class Result { rows, count, failure, end };

  // Runs a batch and gives its first result. Parameters are those that were bound. The text of a failure is the batch.
  Result execute(const std::string& batch);
  // The next result. A connection that got lost on the way is a RunTimeError, never a result.
  Result next();

  // Passes over everything that is left; the first failure there, if any.
  std::optional<platform::RunTimeError> drain();

  std::int64_t rowCount() const { return rowCount_; }  // of a Result::count: rows changed, -1 when it has none
  int columnCount() const { return columnCount_; }     // of a Result::rows
  const platform::RunTimeError& failureOfResult() const { return *failure_; }
  // Texts that came with the results since the last call (print, warnings).
  std::vector<Diagnostic> takeMessages() { return std::exchange(messages_, {}); }

  // A statement that is run several times: prepared once, then executed with the values that stand in the bound
  // parameters. Its results come as those of a batch.
  void prepare(const std::string& statement);
  Result executePrepared();
  // The same for one that changes rows: how many, -1 when the driver does not tell. RunTimeError on failure.
  std::int64_t changePrepared();

  // 0: no limit. RunTimeError when the driver has no such limit and seconds is not 0.
  void setTimeout(int seconds);
  void setAttribute(SQLINTEGER what, SQLULEN value, const char* name);
  SQLULEN attributeValue(SQLINTEGER what) const;

  void closeCursor() noexcept;  // ends the result, keeps the handle and its bound parameters
  SQLHANDLE handle() const { return handle_.get(); }
  Link& link() const { return *link_; }
  const std::shared_ptr<Link>& sharedLink() const { return link_; }
  const std::string& text() const { return text_; }
  // RunTimeError unless the call succeeded.
  void check(SQLRETURN result);
  [[noreturn]] void raise();

private:
  friend class Link;
  void drop() noexcept;  // by the link, which goes
  Result classify(SQLRETURN result);
  void collectMessages();
  Result failed();

  std::shared_ptr<Link> link_;
  StatementHandle handle_;
  std::string text_;
  std::int64_t rowCount_ = -1;
  int columnCount_ = 0;
  bool underway_ = false;
  int failuresInARow_ = 0;
  std::optional<platform::RunTimeError> failure_;
  std::vector<Diagnostic> messages_;
};

}  // namespace odbc
