#pragma once
// Account sets on a server: make one, open a year, close a year.
//
// Each either succeeds or leaves everything as it was. UsageError when it cannot be done as asked, RunTimeError for a
// failure of the server.

#include <memory>
#include <optional>
#include <string>

#include "embedded/server.h"
#include "host/connection_text.h"
#include "host/database_server.h"

namespace host {

// The embedded server of an address. UsageError when it is another kind of server, when the folder is missing (and
// create is false) or cannot be used.
std::shared_ptr<embedded::Server> openServer(const ServerAddress& address, bool create = false);

struct NewAccount {
  std::string account;  // up to 10 letters and digits
  std::string name;
  int year = 0;
  int through = 0;  // last year of the database span, year itself for a database a year
};

// Makes the database TqData_<account>_<year> from the built-in table definitions and registers it with its calendar and
// the state of its years. Makes TqSystem when it is missing. Returns the database's name.
std::string createAccount(const ServerPtr& server, const NewAccount& account);

// The year is the one behind the account's last when not given. Within the span of the last database the chart's rows
// are copied for the new year; beyond it a new database takes the chart and the reference tables. Returns the name of
// the database that holds the year.
struct OpenedYear {
  std::string database;
  int year = 0;
};
OpenedYear openYear(const ServerPtr& server, const std::string& account, std::optional<int> year);

// Marks all periods of the year closed, the adjustment period too. Returns the database's name.
std::string closeYear(const ServerPtr& server, const std::string& account, int year);

// Drops the databases of an account and its registration, as far as they are there. Never fails.
void removeAccount(const ServerPtr& server, const std::string& account) noexcept;

// Makes TqSystem when it is missing; true when it did.
bool ensureSystemDatabase(const ServerPtr& server);
// An empty database with the tables of an account set; dropped again when that fails.
void createAccountDatabase(const ServerPtr& server, const std::string& database);

}  // namespace host
