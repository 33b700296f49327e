#pragma once
// A PostgreSQL server of one's own: made in a temporary folder, reached through a socket in it, gone with the object.
//
//   PostgresServer server;                          // std::runtime_error when it cannot be had
//   connection->ConnectionOpen(server.connectionText());
//
// The tests and the benchmarks of the ODBC adapter use it as a server that is really there. It ends with the process
// that made it, whatever becomes of that: a guardian process waits for the end of its owner.

#include <memory>
#include <string>

class PostgresServer {
public:
  PostgresServer();
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  // Where its socket is; for processes that this one starts.
  std::string folder() const;
  // An ODBC connection string without a database; more: keywords behind it, "UseDeclareFetch=1".
  std::string connectionString(const std::string& more = "") const;
  // The same as a connection text of the platform, for database "ledger", which exists.
  std::string connectionText(const std::string& more = "") const;

  // The user that all connections are of that name none.
  static constexpr const char* administrator = "postgres";
  // A user that must give its password, which all others need not.
  static constexpr const char* passwordUser = "clerk";
  static constexpr const char* password = "s3cret;{word}";

private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};
