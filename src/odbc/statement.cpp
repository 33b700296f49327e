#include "odbc/statement.h"

#include "odbc/text.h"

namespace odbc {

using platform::RunTimeError;

Statement::Statement(std::shared_ptr<Link> link) : link_(std::move(link)) {
  link_->needOpen();
  try {
    handle_ = StatementHandle(link_->handle());
  } catch (const std::bad_alloc&) {
    link_->raise(SQL_HANDLE_DBC, link_->handle(), "");
  }
  link_->statements_.insert(this);
}

Statement::~Statement() {
  link_->statements_.erase(this);
}

void Statement::drop() noexcept {
  handle_.reset();
}

Statement::Result Statement::execute(const std::string& batch) {
  link_->beforeStatement();
  closeCursor();
  text_ = batch;
  failuresInARow_ = 0;
  const std::u16string text = toUtf16(batch);
  if (text.empty()) return Result::end;  // the driver manager takes no empty text
  underway_ = true;
  return classify(SQLExecDirectW(handle_.get(), wide(text.data()), static_cast<SQLINTEGER>(text.size())));
}

Statement::Result Statement::next() {
  if (!underway_) return Result::end;
  link_->needOpen();
  const SQLRETURN result = SQLMoreResults(handle_.get());
  if (result == SQL_NO_DATA) {
    underway_ = false;
    return Result::end;
  }
  return classify(result);
}

std::optional<RunTimeError> Statement::drain() {
  std::optional<RunTimeError> first;
  for (Result r = next(); r != Result::end; r = next())
    if (r == Result::failure && !first) first = failureOfResult();
  return first;
}

Statement::Result Statement::classify(SQLRETURN result) {
  rowCount_ = -1;
  columnCount_ = 0;
  if (result == SQL_NO_DATA) {  // a searched update or delete that found nothing
    rowCount_ = 0;
    failuresInARow_ = 0;
    return Result::count;
  }
  if (!SQL_SUCCEEDED(result)) return failed();
  failuresInARow_ = 0;
  link_->worked_ = true;
  if (result == SQL_SUCCESS_WITH_INFO) collectMessages();
  SQLSMALLINT columns = 0;
  if (!SQL_SUCCEEDED(SQLNumResultCols(handle_.get(), &columns))) return failed();
  columnCount_ = columns;
  if (columns > 0) return Result::rows;
  SQLLEN rows = -1;
  if (SQL_SUCCEEDED(SQLRowCount(handle_.get(), &rows))) rowCount_ = rows;
  return Result::count;
}

// A failure may stand in the middle of a batch: what is behind it is asked for. A driver that has nothing behind it
// says so (no data); one that repeats itself instead, or complains about the question, is not asked for ever.
Statement::Result Statement::failed() {
  constexpr int mostFailuresInARow = 10'000;
  const auto records = diagnosticsOf(SQL_HANDLE_STMT, handle_.get(), link_->secrets());
  const Diagnostic d = failureOf(records);
  const bool wrongQuestion = d.state == "HY010" || d.state == "24000";
  if (wrongQuestion && failuresInARow_ > 0) {
    underway_ = false;
    return Result::end;
  }
  failure_ = link_->failure(SQL_HANDLE_STMT, handle_.get(), text_);
  if (!link_->isOpen()) {
    underway_ = false;
    throw *failure_;
  }
  if (++failuresInARow_ > mostFailuresInARow || d.isTimeout()) underway_ = false;
  return Result::failure;
}

void Statement::collectMessages() {
  for (Diagnostic& d : diagnosticsOf(SQL_HANDLE_STMT, handle_.get(), link_->secrets()))
    messages_.push_back(std::move(d));
}

void Statement::prepare(const std::string& statement) {
  link_->needOpen();
  closeCursor();
  text_ = statement;
  const std::u16string text = toUtf16(statement);
  check(SQLPrepareW(handle_.get(), wide(text.data()), static_cast<SQLINTEGER>(text.size())));
}

Statement::Result Statement::executePrepared() {
  link_->beforeStatement();
  failuresInARow_ = 0;
  underway_ = true;
  return classify(SQLExecute(handle_.get()));
}

std::int64_t Statement::changePrepared() {
  const Result result = executePrepared();
  if (result == Result::failure) {
    const RunTimeError failure = failureOfResult();
    drain();
    throw failure;
  }
  const std::int64_t changed = rowCount_;
  // Triggers of the table may answer more than the count; their failures are the statement's.
  if (const auto failure = drain()) throw *failure;
  return changed;
}

void Statement::setTimeout(int seconds) {
  setAttribute(SQL_ATTR_QUERY_TIMEOUT, static_cast<SQLULEN>(seconds), "a time limit for a statement");
}

void Statement::setAttribute(SQLINTEGER what, SQLULEN value, const char* name) {
  if (SQL_SUCCEEDED(SQLSetStmtAttrW(handle_.get(), what, attribute(value), SQL_IS_UINTEGER))) return;
  const auto records = diagnosticsOf(SQL_HANDLE_STMT, handle_.get(), link_->secrets());
  throw RunTimeError(RunTimeError::invalidCall,
                     "The driver does not support " + std::string(name) + ": " + failureOf(records).message);
}

SQLULEN Statement::attributeValue(SQLINTEGER what) const {
  SQLULEN value = 0;
  SQLGetStmtAttrW(handle_.get(), what, &value, SQL_IS_UINTEGER, nullptr);
  return value;
}

void Statement::closeCursor() noexcept {
  underway_ = false;
  messages_.clear();
  if (handle_) SQLFreeStmt(handle_.get(), SQL_CLOSE);
}

void Statement::check(SQLRETURN result) {
  if (!SQL_SUCCEEDED(result)) raise();
}

void Statement::raise() {
  link_->raise(SQL_HANDLE_STMT, handle_.get(), text_);
}

}  // namespace odbc
