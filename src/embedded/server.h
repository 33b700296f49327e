#pragma once
// The embedded server: a folder is a server, each database in it a file.
//
//   auto server = embedded::Server::open("gljz-data");        // throws RunTimeError when the folder is missing
//   embedded::Session session(server, "TqData_001_2005");
//   session.execute("update code set bend=1 select count(*) as n from code", sink);
//
// One Server object exists per folder and process; sessions of a process share it. A session belongs to one thread.
// Two processes on one server wait for each other up to the time-out and then fail with 1222.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "platform/value.h"
#include "tsql/sql_error.h"
#include "tsql/types.h"

namespace embedded {

class Server {
public:
  // The server of an existing folder (create makes a missing one). RunTimeError 76 "Path not found: <folder>" when it
  // is missing, 75 when it cannot be written.
  static std::shared_ptr<Server> open(const std::string& folder, bool create = false);
  ~Server();
  const std::string& folder() const;
  std::vector<std::string> databases() const;  // names as spelled at their creation, sorted; without tempdb
  bool hasDatabase(std::string_view name) const;
  void setTimeout(int milliseconds);  // waiting for another session's write, default 5000
  // Ticks of 1/300 s since 1900-01-01 that getdate() gives; the machine's local time when not set.
  void setClock(std::function<std::int64_t()> clock);

  struct Impl;
  Impl& impl() { return *impl_; }

private:
  explicit Server(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

struct ColumnInfo {
  std::string name;  // empty for an expression without a name
  tsql::SqlType type;
};

// What a batch answers, in order. Failures come in between, as the server sends them.
class ResultSink {
public:
  virtual ~ResultSink() = default;
  virtual void columns(const std::vector<ColumnInfo>& columns) = 0;  // a result set begins
  virtual void row(const std::vector<platform::Value>& row) = 0;
  virtual void endRows(std::int64_t count) = 0;
  virtual void affected(std::int64_t count) { (void)count; }  // after each insert, update, delete
  virtual void failure(const tsql::SqlError& error) = 0;
  virtual void message(const std::string& text) { (void)text; }  // print
};

class Session {
public:
  // database may be empty: the session then stands on the server itself.
  Session(std::shared_ptr<Server> server, const std::string& database);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  const std::string& database() const;
  void use(const std::string& database);  // 911 when there is none
  // Runs a batch. Never throws for a failure of the batch: it goes to the sink. parameters fill the ? in order.
  void execute(const std::string& batch, ResultSink& sink, const std::vector<platform::Value>& parameters = {});
  bool inTransaction() const;
  void setStatementCache(bool on);       // default on
  void setFetchBlock(std::size_t rows);  // rows a server cursor fetches at a time, default 256
  // The SQLite text and query plan of a statement, for a person to read.
  std::string plan(const std::string& statement);

  struct Impl;
  Impl& impl() { return *impl_; }

private:
  std::unique_ptr<Impl> impl_;
};

// The platform's connection over a session. ConnectionOpen takes "Database=<name>;Server=embedded:<folder>;..." (keys
// without regard to case and order; unknown keys are kept and ignored). RunTimeError when the folder or database is
// missing: 4060 "Cannot open database \"x\" ...".
std::shared_ptr<platform::Connection> makeConnection();

}  // namespace embedded
