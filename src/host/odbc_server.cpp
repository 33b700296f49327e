#include "host/odbc_server.h"

#include "host/usage_error.h"
#include "odbc/connection.h"

namespace host {
namespace {

using platform::RunTimeError;
using platform::Value;

// The rows of a question, and the failure of a statement.
class Answer final : public platform::ResultSink {
public:
  void columns(const std::vector<platform::ResultColumn>&) override {}
  void row(const std::vector<Value>&) override { any = true; }
  void endRows(std::int64_t) override {}
  void failure(const platform::ServerFailure& failure) override {
    if (!first) first = failure;
  }
  void require() const {
    if (first) throw RunTimeError(*first);
  }
  bool any = false;
  std::optional<platform::ServerFailure> first;
};

class OdbcSession final : public DatabaseSession {
public:
  OdbcSession(const std::string& connectionText, const odbc::Settings& settings) : session_(connectionText, settings) {}

  void execute(const std::string& batch, platform::ResultSink& sink, const std::vector<Value>& parameters) override {
    session_.execute(batch, sink, parameters);
  }
  void begin() override { session_.begin(); }
  void commit() override { session_.commit(); }
  void rollback() override { session_.rollback(); }
  bool inTransaction() const override { return session_.inTransaction(); }
  odbc::ServerCursor serverCursor() const { return session_.serverCursor(); }

private:
  odbc::Session session_;
};

class OdbcServer final : public DatabaseServer {
public:
  explicit OdbcServer(const ServerAddress& address) : address_(address) { settings_.credentials = address.credentials; }

  std::string name() const override { return address_.text; }
  std::string title() const override { return "server " + address_.text; }

  bool hasDatabase(const std::string& database) override {
    Answer answer;
    own().execute("select name from master.dbo.sysdatabases where name=" + quoted(database), answer, {});
    answer.require();
    return answer.any;
  }
  // The statements have Chinese words in literals without N, which the server reads in the code page of the database:
  // it must be one that has these words, whatever the server's own is.
  void createDatabase(const std::string& database) override {
    run("create database " + bracketed(database) + " collate Chinese_PRC_CI_AS");
  }
  void dropDatabase(const std::string& database) override { run("drop database " + bracketed(database)); }

  std::unique_ptr<DatabaseSession> openSession(const std::string& database) override {
    try {
      return std::make_unique<OdbcSession>(connectionText(database, address_), settings_);
    } catch (const RunTimeError& e) {
      throw UsageError(e.description());
    }
  }
  std::shared_ptr<platform::Connection> newConnection() override { return odbc::makeConnection(settings_); }
  void setClock(std::function<std::int64_t()>) override {}

  std::string note() override {
    return own().serverCursor() == odbc::ServerCursor::staticCursor
               ? "server cursors: the server keeps the rows (static cursor), the driver has one result set at a time"
               : "server cursors: rows are streamed, the driver has several result sets at a time";
  }

private:
  // A session on the server itself, for its catalog of databases.
  OdbcSession& own() {
    if (!own_) try {
        own_ = std::make_unique<OdbcSession>(connectionText("", address_), settings_);
      } catch (const RunTimeError& e) {
        throw UsageError(e.description());
      }
    return *own_;
  }
  void run(const std::string& statement) {
    Answer answer;
    own().execute(statement, answer, {});
    answer.require();
  }

  ServerAddress address_;
  odbc::Settings settings_;
  std::unique_ptr<OdbcSession> own_;
};

}  // namespace

std::shared_ptr<DatabaseServer> odbcServer(const ServerAddress& address) {
  return std::make_shared<OdbcServer>(address);
}

}  // namespace host
