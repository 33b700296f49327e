// The session of odbc/connection.h.

#include "odbc/connection.h"
#include "odbc/parameters.h"
#include "odbc/row_block.h"
#include "odbc/statement.h"

namespace odbc {
namespace {

using platform::ResultSink;
using platform::RunTimeError;

platform::ServerFailure told(const RunTimeError& failure, const std::string& batch) {
  if (failure.server()) return *failure.server();
  return {failure.number(), 16, 1, failure.description(), batch};
}

void messages(Statement& statement, ResultSink& sink) {
  for (const Diagnostic& d : statement.takeMessages()) sink.message(d.message);
}

void rows(Statement& statement, ResultSink& sink) {
  const auto columns = describeColumns(statement);
  std::vector<platform::ResultColumn> told;
  for (const Column& c : columns) told.push_back({c.name, isNumeric(c.kind)});
  sink.columns(told);
  RowBlock block(statement, columns, RowBlock::defaultBytes);
  std::vector<platform::Value> row;
  std::int64_t count = 0;
  while (const std::size_t fetched = block.fetch()) {
    for (std::size_t r = 0; r < fetched; ++r) {
      row.clear();
      block.read(r, row);
      sink.row(row);
    }
    count += static_cast<std::int64_t>(fetched);
  }
  sink.endRows(count);
}

void answer(Statement& statement, Statement::Result result, ResultSink& sink) {
  for (; result != Statement::Result::end; result = statement.next()) {
    messages(statement, sink);
    if (result == Statement::Result::failure)
      sink.failure(told(statement.failureOfResult(), statement.text()));
    else if (result == Statement::Result::rows)
      rows(statement, sink);
    else if (statement.rowCount() >= 0)
      sink.affected(statement.rowCount());
  }
  messages(statement, sink);
}

}  // namespace

class Session::Command {
public:
  Command(std::shared_ptr<Link> link, const std::string& sql) : statement(std::move(link)), parameters(statement) {
    statement.prepare(sql);
  }
  Statement statement;
  Parameters parameters;
};

Session::Session(const std::string& connectionText, const Settings& settings)
    : link_(
          std::make_shared<Link>(connectionStringOf(connectionText), "'" + redacted(connectionText) + "'", settings)) {}

Session::~Session() {
  command_.reset();
  link_->close();
}

void Session::execute(const std::string& batch, ResultSink& sink, const std::vector<platform::Value>& parameters) {
  link_->needOpen();
  try {
    if (parameters.empty()) {
      Statement statement(link_);
      answer(statement, statement.execute(batch), sink);
      return;
    }
    if (!command_ || command_->statement.text() != batch) {
      command_.reset();
      command_ = std::make_unique<Command>(link_, batch);
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) command_->parameters.set(i, parameters[i]);
    answer(command_->statement, command_->statement.executePrepared(), sink);
  } catch (const RunTimeError& e) {
    if (!link_->isOpen()) throw;
    sink.failure(told(e, batch));
  }
}

void Session::begin() {
  link_->begin();
}
void Session::commit() {
  link_->commit();
}
void Session::rollback() {
  link_->rollback();
}
bool Session::inTransaction() const {
  return link_->transactionDepth() > 0;
}
ServerCursor Session::serverCursor() const {
  return link_->serverCursor();
}

}  // namespace odbc
