#include "host/year_readiness.h"

#include <algorithm>
#include <map>

#include "driver/precondition_checks_sql.h"
#include "host/account_directory.h"
#include "host/connection_text.h"
#include "host/usage_error.h"
#include "platform/run_time_error.h"

namespace host {
namespace {

namespace sql = gljz::precondition_checks_sql;
using platform::Connection;
using platform::Recordset;
using platform::RunTimeError;
using platform::Value;

std::map<std::string, std::string> accountNames(Connection& system) {
  std::map<std::string, std::string> names;
  try {
    const auto rows = system.OpenRecordset("select cAcc_Id, cAcc_Name from TqSystem.dbo.UA_Account", 2);
    for (; !rows->Eof(); rows->MoveNext())
      names[rows->Field("cAcc_Id").asText()] = rows->Field("cAcc_Name").displayText();
  } catch (const RunTimeError& e) {
    if (!isMissingTable(e)) throw;  // a system database that keeps no names
  }
  return names;
}

// The last year that a database has accounts of; nothing when it cannot be asked: whoever wants a year of it is told
// why.
std::optional<int> lastYearOf(Connection& system, const std::string& database) {
  try {
    std::optional<int> last;
    readFirst(system, "select max(iyear) from [" + database + "].dbo.code", [&](const Recordset& r) {
      const Value year = r.Field(std::size_t{0});
      if (!year.isNull()) last = static_cast<int>(year.asInteger());
    });
    return last;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

// First field of the first row as a Boolean, as the checks read it; `without` when there is no row or it is Null.
bool flag(Connection& connection, const std::string& statement, bool without) {
  bool value = without;
  readFirst(connection, statement, [&](const Recordset& r) {
    const Value field = r.Field(std::size_t{0});
    if (!field.isNull()) value = field.asBool();
  });
  return value;
}

bool hasRows(Connection& connection, const std::string& statement) {
  return readFirst(connection, statement, [](const Recordset&) {});
}

class Look {
public:
  Look(const ServerPtr& server, const ServerAddress& address, const YearPair& years, const Messages& messages)
      : server_(server),
        address_(address),
        messages_(messages),
        account_(years.account),
        closing_(std::to_string(years.closingYear)),
        new_(std::to_string(years.newYear)),
        system_(openSystem(server, address)) {
    firstYear_ = firstYear(*system_, years.account);
    closingDatabase_ = databaseOf(years.closingYear);
    newDatabase_ = databaseOf(years.newYear);
    order_ = years.newYear - years.closingYear;
    isFirst_ = firstYear_ && *firstYear_ == years.newYear;
  }

  std::vector<ReadinessFinding> findings() {
    if (order_ <= 0) say(false, "Order", {closing_, new_});
    if (isFirst_) say(false, "FirstYear", {new_});
    const bool hasClosing = database("ClosingDatabase", closing_, closingDatabase_);
    const bool hasNew = database("NewDatabase", new_, newDatabase_);
    if (hasClosing) lookAtClosingYear();
    if (hasNew) lookAtNewYear();
    return std::move(findings_);
  }

private:
  std::string databaseOf(int year) {
    const auto span = spanOfYear(*system_, account_, year);
    return span && server_->hasDatabase(span->database) ? span->database : std::string();
  }
  std::shared_ptr<Connection> open(const std::string& database) {
    auto connection = server_->newConnection();
    connection->ConnectionOpen(connectionText(database, address_));
    return connection;
  }
  void say(bool good, const std::string& check, const std::vector<Value>& arguments) {
    findings_.push_back({good, messages_.text("Gljz.Host.Ready." + check + (good ? ".Good" : ".Bad"), arguments)});
  }
  bool database(const char* check, const std::string& year, const std::string& database) {
    say(!database.empty(), check, {year, database});
    return !database.empty();
  }

  void lookAtClosingYear() {
    const auto connection = open(closingDatabase_);
    if (!hasRows(*connection, sql::selectYearStateTable())) return say(false, "Structure", {closing_});
    const bool closed = flag(*connection, sql::selectClosed(closing_), false);
    say(closed, "Closed", {closing_});
    // Without a row for period 12 there is nothing to have been closed a second time.
    if (closed && flag(*connection, sql::selectAdjust(), false) &&
        !flag(*connection, sql::selectSecondClosing(closing_), true))
      say(false, "SecondClosing", {closing_});
  }
  void lookAtNewYear() {
    const auto connection = open(newDatabase_);
    say(hasRows(*connection, sql::selectChart(new_)), "Chart", {new_});
    say(hasRows(*connection, sql::selectVoucherCategories()), "Categories", {new_});
    say(!hasRows(*connection, sql::selectPostedVoucher(new_)), "Posted", {new_});
  }

  const ServerPtr& server_;
  const ServerAddress& address_;
  const Messages& messages_;
  std::string account_, closing_, new_;
  std::shared_ptr<Connection> system_;
  std::optional<int> firstYear_;
  std::string closingDatabase_, newDatabase_;
  int order_ = 0;
  bool isFirst_ = false;
  std::vector<ReadinessFinding> findings_;
};

}  // namespace

std::vector<int> AccountSet::years() const {
  std::vector<int> years;
  for (const Span& span : spans)
    for (int year = span.beginYear; year <= span.endYear; ++year) years.push_back(year);
  return years;
}

std::string AccountSet::databaseOf(int year) const {
  std::string database;
  for (const Span& span : spans)
    if (span.beginYear <= year) database = span.database;
  return database;
}

std::shared_ptr<Connection> openSystem(const ServerPtr& server, const ServerAddress& address) {
  try {
    if (!server->hasDatabase(systemDatabase))
      throw UsageError("server " + address.text + " has no database " + systemDatabase);
    auto connection = server->newConnection();
    connection->ConnectionOpen(connectionText(systemDatabase, address));
    return connection;
  } catch (const RunTimeError& e) {
    throw UsageError(e.description());
  }
}

std::vector<AccountSet> accountSets(Connection& system) {
  constexpr int open = 0;  // end of a span without one
  const auto names = accountNames(system);
  std::vector<AccountSet> sets;
  const auto rows = system.OpenRecordset(
      "select cAcc_Id, iBeginYear, iEndYear, cDatabase from TqSystem.dbo.UA_AccountDatabase order by cAcc_Id, "
      "iBeginYear",
      2);
  for (; !rows->Eof(); rows->MoveNext()) {
    const std::string account = rows->Field("cAcc_Id").asText();
    if (sets.empty() || sets.back().account != account) {
      const auto name = names.find(account);
      sets.push_back({account, name == names.end() ? std::string() : name->second, {}});
    }
    const int begin = static_cast<int>(rows->Field("iBeginYear").asInteger());
    auto& spans = sets.back().spans;
    const Value end = rows->Field("iEndYear");
    if (!spans.empty() && spans.back().endYear == open) spans.back().endYear = begin - 1;
    spans.push_back(
        {begin, end.isNull() ? open : static_cast<int>(end.asInteger()), rows->Field("cDatabase").asText()});
  }
  for (AccountSet& set : sets) {
    AccountSet::Span& last = set.spans.back();
    if (last.endYear == open) last.endYear = lastYearOf(system, last.database).value_or(last.beginYear);
    last.endYear = std::max(last.endYear, last.beginYear);
  }
  return sets;
}

std::vector<ReadinessFinding> yearReadiness(const ServerPtr& server, const ServerAddress& address,
                                            const YearPair& years, const Messages& messages) {
  try {
    return Look(server, address, years, messages).findings();
  } catch (const RunTimeError& e) {
    throw UsageError(e.description());
  }
}

bool isReady(const std::vector<ReadinessFinding>& findings) {
  return std::all_of(findings.begin(), findings.end(), [](const ReadinessFinding& f) { return f.good; });
}

}  // namespace host
