#include "host/database_desk.h"

#include <optional>

#include "host/sql_script.h"

namespace host {
namespace {

using platform::RunTimeError;
using platform::Value;

class CollectingSink final : public platform::ResultSink {
public:
  void columns(const std::vector<platform::ResultColumn>&) override {}
  void row(const std::vector<Value>& values) override { rows.push_back(values); }
  void endRows(std::int64_t) override {}
  void failure(const platform::ServerFailure& failure) override {
    if (!first) first = failure;
  }
  DatabaseDesk::Rows rows;
  std::optional<platform::ServerFailure> first;
};

DatabaseDesk::Rows execute(DatabaseSession& session, const std::string& batch, const std::vector<Value>& parameters) {
  CollectingSink sink;
  session.execute(batch, sink, parameters);
  if (sink.first) throw RunTimeError(*sink.first);
  return std::move(sink.rows);
}

}  // namespace

void DatabaseDesk::run(const std::string& batch, const std::vector<Value>& parameters) {
  execute(*session_, batch, parameters);
}

void DatabaseDesk::runScript(std::string_view script) {
  for (const std::string& batch : splitBatches(script)) run(batch);
}

DatabaseDesk::Rows DatabaseDesk::rows(const std::string& batch) {
  return execute(*session_, batch, {});
}

void DatabaseDesk::undo() noexcept {
  try {
    if (session_->inTransaction()) session_->rollback();
  } catch (const std::exception&) {
    // The session's end undoes what is open; the failure that led here is the one to tell.
  }
}

}  // namespace host
