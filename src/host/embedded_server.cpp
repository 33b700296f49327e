// The embedded server as a DatabaseServer.

#include <optional>
#include <utility>

#include "host/connection_text.h"
#include "host/database_server.h"
#include "host/usage_error.h"

namespace host {
namespace {

using platform::RunTimeError;
using platform::Value;

platform::ServerFailure told(const tsql::SqlError& e, const std::string& batch) {
  return {e.number, e.severity, e.pos.line, e.what(), batch};
}

// Hands on what the embedded server answers.
class Bridge final : public embedded::ResultSink {
public:
  Bridge(platform::ResultSink& sink, const std::string& batch) : sink_(sink), batch_(batch) {}
  void columns(const std::vector<embedded::ColumnInfo>& columns) override {
    std::vector<platform::ResultColumn> out;
    out.reserve(columns.size());
    for (const auto& c : columns) out.push_back({c.name, tsql::isNumeric(c.type.kind)});
    sink_.columns(out);
  }
  void row(const std::vector<Value>& row) override { sink_.row(row); }
  void endRows(std::int64_t count) override { sink_.endRows(count); }
  void affected(std::int64_t count) override { sink_.affected(count); }
  void failure(const tsql::SqlError& error) override { sink_.failure(told(error, batch_)); }
  void message(const std::string& text) override { sink_.message(text); }

private:
  platform::ResultSink& sink_;
  const std::string& batch_;
};

class FirstFailure final : public embedded::ResultSink {
public:
  void columns(const std::vector<embedded::ColumnInfo>&) override {}
  void row(const std::vector<Value>&) override {}
  void endRows(std::int64_t) override {}
  void failure(const tsql::SqlError& error) override {
    if (!first) first = error;
  }
  std::optional<tsql::SqlError> first;
};

class EmbeddedSession final : public DatabaseSession {
public:
  EmbeddedSession(const std::shared_ptr<embedded::Server>& server, const std::string& database)
      : session_(server, database) {}

  void execute(const std::string& batch, platform::ResultSink& sink, const std::vector<Value>& parameters) override {
    Bridge bridge(sink, batch);
    session_.execute(batch, bridge, parameters);
  }
  void begin() override { run("begin transaction"); }
  void commit() override { run("commit transaction"); }
  void rollback() override { run("rollback transaction"); }
  bool inTransaction() const override { return session_.inTransaction(); }

private:
  void run(const std::string& statement) {
    FirstFailure sink;
    session_.execute(statement, sink);
    if (sink.first) throw RunTimeError(told(*sink.first, statement));
  }
  embedded::Session session_;
};

class EmbeddedServer final : public DatabaseServer {
public:
  explicit EmbeddedServer(std::shared_ptr<embedded::Server> server) : server_(std::move(server)) {}

  std::string name() const override { return server_->folder(); }
  std::string title() const override { return "server folder " + server_->folder(); }

  bool hasDatabase(const std::string& database) override { return server_->hasDatabase(database); }
  void createDatabase(const std::string& database) override { run("create database " + bracketed(database)); }
  void dropDatabase(const std::string& database) override { run("drop database " + bracketed(database)); }

  std::unique_ptr<DatabaseSession> openSession(const std::string& database) override {
    if (!database.empty() && !hasDatabase(database)) throw UsageError(title() + " has no database " + database);
    try {
      return std::make_unique<EmbeddedSession>(server_, database);
    } catch (const tsql::SqlError& e) {
      throw UsageError(e.what());
    } catch (const RunTimeError& e) {
      throw UsageError(e.description());
    }
  }
  std::shared_ptr<platform::Connection> newConnection() override { return embedded::makeConnection(); }
  void setClock(std::function<std::int64_t()> clock) override { server_->setClock(std::move(clock)); }

private:
  void run(const std::string& statement) {
    embedded::Session session(server_, "");
    FirstFailure sink;
    session.execute(statement, sink);
    if (sink.first) throw RunTimeError(told(*sink.first, statement));
  }
  std::shared_ptr<embedded::Server> server_;
};

}  // namespace

ServerPtr::ServerPtr(std::shared_ptr<embedded::Server> server)
    : server_(std::make_shared<EmbeddedServer>(std::move(server))) {}

}  // namespace host
