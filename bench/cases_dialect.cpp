// The server of the dialect against SQLite alone: statements as texts, keyed look-ups, a long selection.

#include <memory>
#include <string>
#include <vector>

#include "bench/bench.h"
#include "bench/floor.h"
#include "bench/ledger.h"
#include "bench/memory.h"
#include "core/mdu_jz.h"

namespace {

using bench::Floor;
using bench::Ledger;
using platform::Money;
using platform::Value;

std::string code(int n) {
  return "1001" + std::to_string(1000000 + n);
}
Money amount(int n) {
  return Money::fromUnits(std::int64_t{10000} * n + 2500);
}

void expect(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(what);
}
void step(sqlite3_stmt* s, int expected = SQLITE_DONE) {
  expect(sqlite3_step(s) == expected, "a statement of the floor failed");
}
std::string text(sqlite3_stmt* s, int column) {
  const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(s, column));
  return p ? std::string(p, static_cast<std::size_t>(sqlite3_column_bytes(s, column))) : std::string();
}

// ---------------------------------------------------------------- one row of twenty columns, each text another one

std::string insertText(int n) {
  const std::string money = amount(n).text();
  return "Insert into gl_accass(iyear,cCode,cexch_name,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,"
         "iPeriod,cbegind_c,cendd_c,cbegind_c_engl,cendd_c_engl,mb,Me,mb_f,me_f,nb_s,ne_s) Values(2006, N'" +
         code(n) + "',Null,N'D01',N'P" + std::to_string(n % 100) + "',N'C" + std::to_string(n) + "',Null,Null,Null," +
         std::to_string(n % 12 + 1) + ",N'借',N'借',N'Dr',N'Dr'," + money + "," + money + ",0,0,0,0)\r\n";
}

void insertFloor(const std::string& file, int rows) {
  Floor floor(file);
  floor.run(
      "CREATE TABLE gl_accass(i_id INTEGER PRIMARY KEY,iyear INTEGER NOT NULL,ccode TEXT NOT NULL,cexch_name TEXT,"
      "cdept_id TEXT,cperson_id TEXT,ccus_id TEXT,csup_id TEXT,citem_id TEXT,citem_class TEXT,iperiod INTEGER NOT NULL,"
      "cbegind_c TEXT,cbegind_c_engl TEXT,cendd_c TEXT,cendd_c_engl TEXT,mb INTEGER NOT NULL DEFAULT 0,"
      "md INTEGER NOT NULL DEFAULT 0,mc INTEGER NOT NULL DEFAULT 0,me INTEGER NOT NULL DEFAULT 0,"
      "mb_f INTEGER NOT NULL DEFAULT 0,md_f INTEGER NOT NULL DEFAULT 0,mc_f INTEGER NOT NULL DEFAULT 0,"
      "me_f INTEGER NOT NULL DEFAULT 0,nb_s REAL NOT NULL DEFAULT 0,nd_s REAL NOT NULL DEFAULT 0,"
      "nc_s REAL NOT NULL DEFAULT 0,ne_s REAL NOT NULL DEFAULT 0);"
      "CREATE INDEX ix ON gl_accass(iyear,ccode,iperiod);BEGIN");
  sqlite3_stmt* s = floor.prepare(
      "INSERT INTO gl_accass(iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,iperiod,"
      "cbegind_c,cendd_c,cbegind_c_engl,cendd_c_engl,mb,me,mb_f,me_f,nb_s,ne_s) "
      "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
  const std::string department = "D01", word = "借", english = "Dr";
  for (int n = 0; n < rows; ++n) {
    const std::string account = code(n), person = "P" + std::to_string(n % 100), customer = "C" + std::to_string(n);
    sqlite3_bind_int64(s, 1, 2006);
    bench::bindText(s, 2, account);
    bench::bindText(s, 4, department);
    bench::bindText(s, 5, person);
    bench::bindText(s, 6, customer);
    for (const int null : {3, 7, 8, 9}) sqlite3_bind_null(s, null);
    sqlite3_bind_int64(s, 10, n % 12 + 1);
    bench::bindText(s, 11, word);
    bench::bindText(s, 12, word);
    bench::bindText(s, 13, english);
    bench::bindText(s, 14, english);
    sqlite3_bind_int64(s, 15, amount(n).units());
    sqlite3_bind_int64(s, 16, amount(n).units());
    sqlite3_bind_int64(s, 17, 0);
    sqlite3_bind_int64(s, 18, 0);
    sqlite3_bind_double(s, 19, 0);
    sqlite3_bind_double(s, 20, 0);
    step(s);
    sqlite3_reset(s);
  }
  sqlite3_finalize(s);
  floor.run("COMMIT");
}

std::vector<bench::Line> insertTexts(const bench::Options& options) {
  const int rows = options.quick ? 50 : 200'000;
  Ledger ledger;
  std::vector<std::string> texts;
  for (int n = 0; n < rows; ++n) texts.push_back(insertText(n));
  const double ours = bench::seconds([&] {
    ledger.inRun([&] {
      for (const std::string& t : texts) gljz::newConn().ExecuteSql(t);
    });
  });
  expect(ledger.number(ledger.opening, "select count(*) from gl_accass where me=mb and mb-floor(mb)=0.25") == rows,
         "the texts did not write their rows");
  const double floor = bench::seconds([&] { insertFloor(ledger.file("floor"), rows); });
  return {{std::to_string(rows) + " inserts of 20 columns", ours, floor}};
}

// ---------------------------------------------------------------- one account by its key

std::string lookUpText(int n) {
  return "select ccode_name,igrade,bend,bd_c,cexch_name from code where ccode=N'" + code(n) + "' and iyear=2006";
}

std::vector<bench::Line> lookUps(const bench::Options& options) {
  const int accounts = options.quick ? 50 : 10'000, rounds = options.quick ? 1 : 10;
  Ledger ledger;
  ledger.fill(ledger.opening, "code", {"iyear", "ccode", "ccode_name"}, accounts, [](int n, Ledger::Row& row) {
    row = {Value(2006), Value(code(n)), Value("应收账款")};
  });
  std::vector<std::string> texts;
  for (int n = 0; n < accounts; ++n) texts.push_back(lookUpText(n));
  std::size_t read = 0;
  const double ours = bench::bestOf(options, [&] {
    for (int round = 0; round < rounds; ++round)
      for (const std::string& t : texts) {
        const auto rs = gljz::newConn().OpenRecordset(t, 2);
        read += rs->Field("ccode_name").asText().size() + rs->Field("igrade").asInteger() + rs->Field("bend").asBool() +
                rs->Field("bd_c").isNull() + rs->Field("cexch_name").isNull();
        rs->Close();
      }
  });
  Floor floor(ledger.file("floor"));
  floor.run(
      "CREATE TABLE code(i_id INTEGER PRIMARY KEY,iyear INTEGER NOT NULL,ccode TEXT NOT NULL,ccode_name TEXT,igrade "
      "INTEGER,bend INTEGER,bd_c INTEGER,cexch_name TEXT);CREATE UNIQUE INDEX ix ON code(iyear,ccode);BEGIN");
  sqlite3_stmt* insert = floor.prepare("INSERT INTO code(iyear,ccode,ccode_name,igrade,bend) VALUES(2006,?,?,1,1)");
  for (int n = 0; n < accounts; ++n) {
    const std::string key = code(n), name = "应收账款";
    bench::bindText(insert, 1, key);
    bench::bindText(insert, 2, name);
    step(insert);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  floor.run("COMMIT");
  sqlite3_stmt* s = floor.prepare("SELECT ccode_name,igrade,bend,bd_c,cexch_name FROM code WHERE ccode=? AND iyear=?");
  std::size_t readThere = 0;
  const double prepared = bench::bestOf(options, [&] {
    for (int round = 0; round < rounds; ++round)
      for (int n = 0; n < accounts; ++n) {
        const std::string key = code(n);
        bench::bindText(s, 1, key);
        sqlite3_bind_int64(s, 2, 2006);
        step(s, SQLITE_ROW);
        readThere += text(s, 0).size() + static_cast<std::size_t>(sqlite3_column_int64(s, 1)) +
                     static_cast<std::size_t>(sqlite3_column_int64(s, 2)) + (sqlite3_column_type(s, 3) == SQLITE_NULL) +
                     (sqlite3_column_type(s, 4) == SQLITE_NULL);
        step(s);
        sqlite3_reset(s);
      }
  });
  sqlite3_finalize(s);
  expect(read == readThere, "the look-ups read something else than the floor");
  return {{std::to_string(accounts * rounds) + " look-ups of an account", ours, prepared}};
}

// ---------------------------------------------------------------- a long selection through a server cursor

constexpr const char* selectLines =
    "select i_id,iperiod,dbill_date,cdigest,ccode,md,mc,nd_s,bdelete,ccus_id from gl_accvouch";

std::unique_ptr<Ledger> ledgerWithLines(int lines) {
  auto ledger = std::make_unique<Ledger>();
  ledger->fill(ledger->opening, "gl_accvouch",
               {"iyear", "iperiod", "inid", "dbill_date", "cdigest", "ccode", "md", "ccus_id"}, lines,
               [](int n, Ledger::Row& row) {
                 row = {Value(2006),           Value(n % 12 + 1),
                        Value(n % 1000),       Value(platform::DateTime::fromDate(2006, n % 12 + 1, 1)),
                        Value("销售商品一批"), Value(code(n % 5000)),
                        Value(amount(n)),      Value("C" + std::to_string(n % 800))};
               });
  return ledger;
}

// The sum of what was read, so that both ways are known to have read the same.
std::int64_t readThroughCursor() {
  std::int64_t sum = 0;
  const auto rs = gljz::newConn().OpenRecordset(selectLines, 2, platform::CursorLocation::server);
  for (; !rs->Eof(); rs->MoveNext()) {
    sum += rs->Field(0).asInteger() + rs->Field(1).asInteger() + rs->Field(2).asDateTime().ticks();
    sum += static_cast<std::int64_t>(rs->Field(3).asText().size() + rs->Field(4).asText().size());
    sum += rs->Field(5).asMoney().units() + rs->Field(6).asMoney().units();
    sum += static_cast<std::int64_t>(rs->Field(7).asDouble()) + rs->Field(8).asBool();
    sum += static_cast<std::int64_t>(rs->Field(9).asText().size());
  }
  rs->Close();
  return sum;
}

std::int64_t readPrepared(const std::string& file) {
  Floor floor(file);
  sqlite3_stmt* s = floor.prepare(selectLines);
  std::int64_t sum = 0;
  while (sqlite3_step(s) == SQLITE_ROW) {
    sum += sqlite3_column_int64(s, 0) + sqlite3_column_int64(s, 1) + sqlite3_column_int64(s, 2);
    sum += static_cast<std::int64_t>(text(s, 3).size() + text(s, 4).size());
    sum += sqlite3_column_int64(s, 5) + sqlite3_column_int64(s, 6);
    sum += static_cast<std::int64_t>(sqlite3_column_double(s, 7)) + sqlite3_column_int64(s, 8);
    sum += static_cast<std::int64_t>(text(s, 9).size());
  }
  sqlite3_finalize(s);
  return sum;
}

std::vector<bench::Line> serverCursor(const bench::Options& options) {
  const int lines = options.quick ? 500 : 1'000'000;
  const auto ledger = ledgerWithLines(lines);
  std::int64_t ours = 0, theirs = 0;
  const double time = bench::bestOf(options, [&] { ours = readThroughCursor(); });
  const double floor = bench::bestOf(options, [&] { theirs = readPrepared(ledger->file(ledger->opening + ".db")); });
  expect(ours == theirs, "the cursor read something else than the floor");
  return {{std::to_string(lines) + " rows of 10 columns", time, floor}};
}

std::vector<bench::Line> serverCursorMemory(const bench::Options& options) {
  const int few = options.quick ? 50 : 100'000, many = options.quick ? 500 : 1'000'000;
  const auto peak = [](int lines) {
    const auto ledger = ledgerWithLines(lines);
    bench::resetPeakMemory();
    readThroughCursor();
    return static_cast<double>(bench::peakMemory().value_or(0));
  };
  const double floor = peak(few);
  return {{std::to_string(many) + " rows read against " + std::to_string(few),
           peak(many),
           floor,
           {},
           bench::Line::Unit::bytes}};
}

const bench::Registration inserts{{"dialect_insert", "at most 1.6 times a prepared insert", 1.6, insertTexts}};
const bench::Registration keyed{{"dialect_look_up", "at most 2.5 times a prepared look-up", 2.5, lookUps}};
const bench::Registration cursor{{"dialect_server_cursor", "at most 1.3 times a prepared read", 1.3, serverCursor}};
const bench::Registration memory{
    {"dialect_server_cursor_memory", "does not grow with the rows read", 1.2, serverCursorMemory}};

}  // namespace
