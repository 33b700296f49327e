#pragma once
// Where the years of the account sets lie: questions to TqSystem.dbo.UA_AccountDatabase, on any connection of the
// server (three-part names).

#include <optional>
#include <string>

#include "platform/database.h"

namespace host {

struct AccountSpan {
  std::string account, database;
  int beginYear = 0;
};

// The newest span that begins no later than the year.
std::optional<AccountSpan> spanOfYear(platform::Connection& connection, const std::string& account, int year);
// The account set's first year.
std::optional<int> firstYear(platform::Connection& connection, const std::string& account);
// The span whose database has this name; of several accounts the first.
std::optional<AccountSpan> spanOfDatabase(platform::Connection& connection, const std::string& database);
// First day of the year by its calendar UA_Period, period 1; 1 January without a row.
platform::DateTime firstDayOfYear(platform::Connection& connection, const std::string& account, int year);

// First row of a selection handed to read; false when there is none.
template <class Read>
bool readFirst(platform::Connection& connection, const std::string& sql, const Read& read) {
  const auto rows = connection.OpenRecordset(sql, 2);
  if (rows->Eof()) return false;
  read(*rows);
  return true;
}
bool isMissingTable(const platform::RunTimeError& failure);  // the server's 208

}  // namespace host
