#pragma once
// DatabaseServer: a server that account sets live on, as the host's own work sees it. There are two kinds: the embedded
// one, and one that is reached through ODBC.
//
//   const ServerPtr server = openServer(parseServer("odbc:DSN=ledger"));
//   auto session = server->openSession("TqSystem");

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "embedded/server.h"
#include "platform/database.h"
#include "platform/result_sink.h"

namespace host {

struct ServerAddress;

// Batches in one session, with everything that they answer. Ends with what is open in it undone.
class DatabaseSession {
public:
  virtual ~DatabaseSession() = default;
  // Failures of the batch go to the sink; RunTimeError when the session itself is lost. parameters fill the ? in order.
  virtual void execute(const std::string& batch, platform::ResultSink& sink,
                       const std::vector<platform::Value>& parameters = {}) = 0;
  virtual void begin() = 0;  // RunTimeError for what the server says
  virtual void commit() = 0;
  virtual void rollback() = 0;
  virtual bool inTransaction() const = 0;
};

class DatabaseServer {
public:
  virtual ~DatabaseServer() = default;

  virtual std::string name() const = 0;   // where it is: "./gljz-data", "odbc:DSN=ledger"; without a password
  virtual std::string title() const = 0;  // the same in a sentence: "server folder ./gljz-data"

  virtual bool hasDatabase(const std::string& database) = 0;
  virtual void createDatabase(const std::string& database) = 0;
  virtual void dropDatabase(const std::string& database) = 0;

  // database may be empty: the session then stands on the server itself. UsageError when it cannot be opened.
  virtual std::unique_ptr<DatabaseSession> openSession(const std::string& database) = 0;
  // A closed connection for connection texts of this server, which hold no password.
  virtual std::shared_ptr<platform::Connection> newConnection() = 0;

  // Ticks of 1/300 s since 1900-01-01 that getdate() gives. A server that is not the host's own keeps its own clock.
  virtual void setClock(std::function<std::int64_t()> clock) = 0;
  // What a reader of a run's report should know of the server; empty when there is nothing to say.
  virtual std::string note() { return {}; }
};

// A server of either kind. An embedded server is one by itself.
class ServerPtr {
public:
  ServerPtr(std::shared_ptr<DatabaseServer> server) : server_(std::move(server)) {}
  ServerPtr(std::shared_ptr<embedded::Server> server);

  DatabaseServer* operator->() const { return server_.get(); }

private:
  std::shared_ptr<DatabaseServer> server_;
};

// The server of an address. An embedded one must be there, unless create is true; one over ODBC is asked when it is
// first needed. UsageError when the folder is missing or cannot be used.
ServerPtr openAnyServer(const ServerAddress& address, bool create = false);

}  // namespace host
