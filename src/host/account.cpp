#include "host/account.h"

#include <algorithm>
#include <cctype>

#include "host/database_desk.h"
#include "host/resources.h"
#include "host/usage_error.h"

namespace host {
namespace {

using embedded::Server;
using platform::DateTime;
using platform::RunTimeError;
using platform::Value;

constexpr int periodsPerYear = 12;

std::string_view definition(std::string_view name) {
  const auto text = resource(name);
  if (!text) throw std::runtime_error("this program was built without " + std::string(name));
  return *text;
}

void checkAccount(const std::string& account) {
  const bool good = !account.empty() && account.size() <= 10 &&
                    std::all_of(account.begin(), account.end(), [](unsigned char c) { return std::isalnum(c) != 0; });
  if (!good) throw UsageError("account \"" + account + "\": up to ten letters and digits are expected");
}

std::string number(int n) {
  return std::to_string(n);
}

void dropDatabase(const ServerPtr& server, const std::string& database) noexcept {
  try {
    server->dropDatabase(database);
  } catch (const std::exception&) {
    // The failure that led here is the one to tell.
  }
}

// A new database with the definitions of a script, or none. One transaction: nobody meets half of the tables, also
// where the process is killed, and where files are slow a commit for each of them would take most of the time.
void createDefined(const ServerPtr& server, const std::string& database, std::string_view script) {
  server->createDatabase(database);
  try {
    DatabaseDesk desk(server, database);
    desk.transaction([&] { desk.runScript(definition(script)); });
  } catch (...) {
    dropDatabase(server, database);
    throw;
  }
}

struct Span {
  std::string database;
  int beginYear = 0, endYear = 0;
};
// The account's newest span that begins no later than the year. UsageError when the account is not registered or begins
// later.
Span spanOf(DatabaseDesk& system, const std::string& account, int year, const std::string& place) {
  const std::string ofAccount = " from UA_AccountDatabase where cAcc_Id=" + quoted(account);
  const auto rows = system.rows("select top 1 cDatabase, iBeginYear, iEndYear" + ofAccount +
                                " and iBeginYear<=" + number(year) + " order by iBeginYear desc");
  if (rows.empty() && !system.any("select top 1 cDatabase" + ofAccount))
    throw UsageError("account " + account + " is not registered at " + place);
  if (rows.empty()) throw UsageError("account " + account + " has no year " + number(year) + " at " + place);
  Span span;
  span.database = rows[0][0].asText();
  span.beginYear = static_cast<int>(rows[0][1].asInteger());
  span.endYear = rows[0][2].isNull() ? span.beginYear : static_cast<int>(rows[0][2].asInteger());
  return span;
}
Span lastSpan(DatabaseDesk& system, const std::string& account, const std::string& place) {
  constexpr int afterAll = 9999;
  return spanOf(system, account, afterAll, place);
}

void requireSystem(const ServerPtr& server) {
  if (!server->hasDatabase(systemDatabase))
    throw UsageError(server->title() + " has no database TqSystem; gljz account create makes it");
}
void requireDatabase(const ServerPtr& server, const std::string& database) {
  if (!server->hasDatabase(database))
    throw UsageError(server->title() + " has no database " + database +
                     ", which TqSystem.dbo.UA_AccountDatabase names");
}

// Month ends open, and the year's state.
void addYearState(DatabaseDesk& desk, const std::string& prefix, int year, bool initialised) {
  desk.run("insert into " + prefix + "gl_yearstate(iyear, iinitflag, iIsUnload) values(" + number(year) + ", " +
           (initialised ? "1" : "0") + ", 0)");
  for (int period = 1; period <= periodsPerYear; ++period)
    desk.run("insert into " + prefix + "gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(" + number(year) + ", " +
             number(period) + ", 0, 0)");
}

// A calendar year: twelve months.
void addCalendar(DatabaseDesk& desk, const std::string& account, int year) {
  for (int period = 1; period <= periodsPerYear; ++period) {
    const DateTime begin = DateTime::fromDate(year, period, 1);
    const DateTime next =
        period == periodsPerYear ? DateTime::fromDate(year + 1, 1, 1) : DateTime::fromDate(year, period + 1, 1);
    const DateTime end = DateTime::fromTicks(next.ticks() - DateTime::ticksPerDay);
    desk.run("insert into TqSystem.dbo.UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(" + quoted(account) + ", " +
             number(year) + ", " + number(period) + ", '" + begin.dateText() + "', '" + end.dateText() + "')");
  }
}

void registerSpan(DatabaseDesk& desk, const std::string& account, const Span& span) {
  desk.run("insert into TqSystem.dbo.UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(" +
           quoted(account) + ", " + number(span.beginYear) + ", " + number(span.endYear) + ", " +
           quoted(span.database) + ")");
}

struct Option {
  const char *system, *name, *value;
};
constexpr Option initialOptions[] = {
    {"GL", "bCusDisplay", "True"}, {"GL", "bSupDisplay", "True"},     {"GL", "bCusAccount", "True"},
    {"GL", "bSupAccount", "True"}, {"GL", "bMultiCurrency", "False"}, {"GL", "cDefaultCurrency", "人民币"},
    {"GL", "bAdjust", "False"},    {"GL", "bDeleteYe", "True"},       {"GL", "iZBMsg", "0"},
    {"GF", "bDeleteYe", "True"},
};
void addOptions(DatabaseDesk& desk, const std::string& prefix, const std::string& companyName) {
  const auto add = [&](std::string_view system, std::string_view name, std::string_view value) {
    desk.run("insert into " + prefix + "accinformation(cSysID, cName, cValue, cDefault) values(" + quoted(system) +
             ", " + quoted(name) + ", " + quoted(value) + ", null)");
  };
  for (const Option& o : initialOptions) add(o.system, o.name, o.value);
  add("AA", "cCompanyName", companyName);
}

// Column names of a table without its identity column, each in brackets. A table's identity column is called i_id.
std::string columnList(DatabaseDesk& desk, const std::string& table) {
  std::string list;
  for (const auto& row : desk.rows("select name from syscolumns where id=object_id(N'" + table + "') order by colid")) {
    const std::string name = row[0].asText();
    if (platform::equalsIgnoreCase(name, "i_id")) continue;
    list += (list.empty() ? "" : ", ") + bracketed(name);
  }
  return list;
}

// Tables that a new database takes over as they stand, beside the chart. Class tables of items come on top.
constexpr const char* referenceTables[] = {
    "dsign",  "settlestyle", "Department",     "Person",    "customerclass",  "Customer",        "vendorclass",
    "Vendor", "fitem",       "fitemstructure", "inventory", "inventoryclass", "foreigncurrency", "accinformation"};

std::vector<std::string> itemTables(DatabaseDesk& desk) {
  std::vector<std::string> names;
  for (const auto& row : desk.rows("select name from sysobjects where type='U' and name like 'fitemss%' order by name"))
    names.push_back(row[0].asText());
  return names;
}

void copyReferences(DatabaseDesk& target, DatabaseDesk& source, const std::string& sourceName) {
  const auto copy = [&](const std::string& table) {
    const std::string columns = columnList(source, table);
    target.run("insert into " + bracketed(table) + "(" + columns + ") select " + columns + " from " +
               bracketed(sourceName) + ".dbo." + bracketed(table));
  };
  for (const char* table : referenceTables) copy(table);
  const auto known = itemTables(target);
  for (const std::string& table : itemTables(source)) {
    if (std::find(known.begin(), known.end(), table) != known.end())
      copy(table);
    else
      target.run("select * into " + bracketed(table) + " from " + bracketed(sourceName) + ".dbo." + bracketed(table));
  }
}

// The chart of one year for the next, from another database or within one.
void copyChart(DatabaseDesk& target, const std::string& sourceTable, const std::string& columns, int fromYear,
               int toYear) {
  std::string selected = columns;
  const std::string yearColumn = "[iyear]";
  selected.replace(selected.find(yearColumn), yearColumn.size(), number(toYear));
  target.run("insert into code(" + columns + ") select " + selected + " from " + sourceTable +
             " where iyear=" + number(fromYear) + " order by ccode");
}
std::string chartColumns(DatabaseDesk& desk) {
  std::string columns = columnList(desk, "code");
  const std::size_t at = platform::toLowerAscii(columns).find("[iyear]");
  if (at == std::string::npos) throw RunTimeError(RunTimeError::noSuchField, "table code has no column iyear");
  return columns.replace(at, 7, "[iyear]");
}

}  // namespace

std::shared_ptr<Server> openServer(const ServerAddress& address, bool create) {
  requireEmbedded(address);
  if (!create) requireFolder(address);
  try {
    return Server::open(address.folder, create);
  } catch (const RunTimeError& e) {
    throw UsageError(e.description());
  }
}

bool ensureSystemDatabase(const ServerPtr& server) {
  if (server->hasDatabase(systemDatabase)) return false;
  createDefined(server, systemDatabase, "schema/system.sql");
  return true;
}

void createAccountDatabase(const ServerPtr& server, const std::string& database) {
  if (server->hasDatabase(database)) throw UsageError(server->title() + " has a database " + database + " already");
  createDefined(server, database, "schema/account_set.sql");
}

std::string createAccount(const ServerPtr& server, const NewAccount& wanted) {
  checkAccount(wanted.account);
  const int through = std::max(wanted.through, wanted.year);
  const bool madeSystem = ensureSystemDatabase(server);
  const std::string database = databaseName(wanted.account, wanted.year);
  bool madeDatabase = false;
  try {
    if (DatabaseDesk(server, systemDatabase)
            .any("select cAcc_Id from UA_AccountDatabase where cAcc_Id=" + quoted(wanted.account)))
      throw UsageError("account " + wanted.account + " is registered already at " + server->name() +
                       "; gljz account open-year adds a year");
    createAccountDatabase(server, database);
    madeDatabase = true;
    DatabaseDesk desk(server, database);
    const std::string name = wanted.name.empty() ? wanted.account : wanted.name;
    desk.transaction([&] {
      addOptions(desk, "", name);
      for (int year = wanted.year; year <= through; ++year) addYearState(desk, "", year, year == wanted.year);
    });
    DatabaseDesk system(server, systemDatabase);
    system.transaction([&] {
      system.run("insert into UA_Account(cAcc_Id, cAcc_Name, iYear) values(" + quoted(wanted.account) + ", " +
                 quoted(name) + ", " + number(wanted.year) + ")");
      registerSpan(system, wanted.account, {database, wanted.year, through});
      for (int year = wanted.year; year <= through; ++year) addCalendar(system, wanted.account, year);
    });
  } catch (...) {
    if (madeDatabase) dropDatabase(server, database);
    if (madeSystem) dropDatabase(server, systemDatabase);
    throw;
  }
  return database;
}

OpenedYear openYear(const ServerPtr& server, const std::string& account, std::optional<int> wanted) {
  requireSystem(server);
  DatabaseDesk system(server, systemDatabase);
  const Span last = lastSpan(system, account, server->name());
  requireDatabase(server, last.database);
  DatabaseDesk lastDesk(server, last.database);

  const auto charts = lastDesk.rows("select max(iyear) from code");
  const int chartYear = charts.empty() || charts[0][0].isNull() ? 0 : static_cast<int>(charts[0][0].asInteger());
  if (chartYear == 0) throw UsageError("database " + last.database + " has no chart of accounts to open a year from");
  const int year = wanted.value_or(chartYear + 1);
  if (year != chartYear + 1)
    throw UsageError("account " + account + " has its last chart in " + number(chartYear) + "; the year to open is " +
                     number(chartYear + 1) + ", not " + number(year));
  const std::string columns = chartColumns(lastDesk);

  if (year <= last.endYear) {
    lastDesk.transaction([&] {
      copyChart(lastDesk, "code", columns, chartYear, year);
      if (!lastDesk.any("select iyear from gl_yearstate where iyear=" + number(year)))
        addYearState(lastDesk, "", year, false);
    });
    return {last.database, year};
  }

  const std::string database = databaseName(account, year);
  createAccountDatabase(server, database);
  try {
    DatabaseDesk desk(server, database);
    desk.transaction([&] {
      copyReferences(desk, lastDesk, last.database);
      copyChart(desk, bracketed(last.database) + ".dbo.code", columns, chartYear, year);
      addYearState(desk, "", year, false);
    });
    system.transaction([&] {
      registerSpan(system, account, {database, year, year});
      if (!system.any("select iId from UA_Period where cAcc_Id=" + quoted(account) + " and iYear=" + number(year)))
        addCalendar(system, account, year);
    });
  } catch (...) {
    dropDatabase(server, database);
    throw;
  }
  return {database, year};
}

void removeAccount(const ServerPtr& server, const std::string& account) noexcept {
  try {
    DatabaseDesk system(server, systemDatabase);
    const std::string ofAccount = " where cAcc_Id=" + quoted(account);
    for (const auto& row : system.rows("select cDatabase from UA_AccountDatabase" + ofAccount))
      dropDatabase(server, row[0].displayText());
    system.transaction([&] {
      for (const char* table : {"UA_AccountDatabase", "UA_Account", "UA_Period", "UA_Mark"})
        system.run("delete from " + std::string(table) + ofAccount);
    });
  } catch (const std::exception&) {
    // The failure that led here is the one to tell.
  }
}

std::string closeYear(const ServerPtr& server, const std::string& account, int year) {
  requireSystem(server);
  DatabaseDesk system(server, systemDatabase);
  const Span span = spanOf(system, account, year, server->name());
  requireDatabase(server, span.database);
  if (year > span.endYear)
    throw UsageError("account " + account + " has no year " + number(year) + " at " + server->name());
  DatabaseDesk desk(server, span.database);
  desk.transaction([&] {
    desk.run("delete from gl_mend where iyear=" + number(year));
    for (int period = 1; period <= periodsPerYear; ++period)
      desk.run("insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(" + number(year) + ", " + number(period) +
               ", 1, 1)");
  });
  return span.database;
}

}  // namespace host
