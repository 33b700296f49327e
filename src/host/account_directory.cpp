#include "host/account_directory.h"

#include "host/connection_text.h"

namespace host {

using platform::Connection;
using platform::DateTime;
using platform::Recordset;
using platform::RunTimeError;

bool isMissingTable(const RunTimeError& failure) {
  constexpr int invalidObjectName = 208;
  return failure.server() && failure.server()->number == invalidObjectName;
}

std::optional<AccountSpan> spanOfYear(Connection& connection, const std::string& account, int year) {
  std::optional<AccountSpan> span;
  readFirst(
      connection,
      "select top 1 iBeginYear, cDatabase from TqSystem.dbo.UA_AccountDatabase where cAcc_Id=" + quoted(account) +
          " and iBeginYear<=" + std::to_string(year) + " order by iBeginYear desc",
      [&](const Recordset& r) {
        span = AccountSpan{account, r.Field("cDatabase").asText(), static_cast<int>(r.Field("iBeginYear").asInteger())};
      });
  return span;
}

std::optional<int> firstYear(Connection& connection, const std::string& account) {
  std::optional<int> year;
  readFirst(connection,
            "select top 1 iBeginYear from TqSystem.dbo.UA_AccountDatabase where cAcc_Id=" + quoted(account) +
                " order by iBeginYear",
            [&](const Recordset& r) { year = static_cast<int>(r.Field("iBeginYear").asInteger()); });
  return year;
}

std::optional<AccountSpan> spanOfDatabase(Connection& connection, const std::string& database) {
  std::optional<AccountSpan> span;
  readFirst(connection,
            "select top 1 cAcc_Id, iBeginYear, cDatabase from TqSystem.dbo.UA_AccountDatabase where cDatabase=" +
                quoted(database) + " order by cAcc_Id, iBeginYear",
            [&](const Recordset& r) {
              span = AccountSpan{r.Field("cAcc_Id").asText(), r.Field("cDatabase").asText(),
                                 static_cast<int>(r.Field("iBeginYear").asInteger())};
            });
  return span;
}

DateTime firstDayOfYear(Connection& connection, const std::string& account, int year) {
  DateTime day = DateTime::fromDate(year, 1, 1);
  try {
    readFirst(connection,
              "select dBegin from TqSystem.dbo.UA_Period where cAcc_Id=" + quoted(account) +
                  " and iYear=" + std::to_string(year) + " and iId=1",
              [&](const Recordset& r) { day = r.Field("dBegin").asDateTime(); });
  } catch (const RunTimeError& e) {
    if (!isMissingTable(e)) throw;  // a system database without calendars: every year is a calendar year
  }
  return day;
}

}  // namespace host
