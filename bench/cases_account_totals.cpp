// The account totals stage: each balance becomes twelve rows.

#include <memory>

#include "balances/account_totals.h"
#include "balances/roll_up.h"
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

std::string leafCode(int n) {
  return "1001" + std::to_string(1000000 + n);
}
Money amount(int n) {
  return Money::fromUnits(std::int64_t{100} * (n + 1));
}

// A chart of last-level accounts in both years, and a balance for each at the end of the closing year.
std::unique_ptr<Ledger> ledgerWithBalances(int balances) {
  auto ledger = std::make_unique<Ledger>();
  for (const auto& [database, year] : {std::pair{ledger->closing, 2005}, std::pair{ledger->opening, 2006}})
    ledger->fill(database, "code", {"iyear", "ccode", "ccode_name"}, balances, [year = year](int n, Ledger::Row& row) {
      row = {Value(year), Value(leafCode(n)), Value("科目")};
    });
  ledger->fill(
      ledger->closing, "gl_accsum", {"iyear", "ccode", "iperiod", "cendd_c", "cendd_c_engl", "me"}, balances,
      [](int n, Ledger::Row& row) {
        row = {Value(2005),     Value(leafCode(n)), Value(12), Value(n % 2 ? "借" : "贷"), Value(n % 2 ? "Dr" : "Cr"),
               Value(amount(n))};
      });
  return ledger;
}

// The same rows into a table with the same indexes.
void writeFloor(const std::string& file, int balances) {
  Floor floor(file);
  floor.run(
      "CREATE TABLE gl_accsum(i_id INTEGER PRIMARY KEY,iyear INTEGER NOT NULL,ccode TEXT NOT NULL,cexch_name "
      "TEXT,iperiod INTEGER "
      "NOT NULL,cbegind_c TEXT,cbegind_c_engl TEXT,nb_s REAL NOT NULL DEFAULT 0,mb_f INTEGER NOT NULL DEFAULT 0,mb "
      "INTEGER NOT "
      "NULL DEFAULT 0,nd_s REAL NOT NULL DEFAULT 0,md_f INTEGER NOT NULL DEFAULT 0,md INTEGER NOT NULL DEFAULT 0,nc_s "
      "REAL NOT "
      "NULL DEFAULT 0,mc_f INTEGER NOT NULL DEFAULT 0,mc INTEGER NOT NULL DEFAULT 0,cendd_c TEXT,cendd_c_engl "
      "TEXT,ne_s REAL NOT "
      "NULL DEFAULT 0,me_f INTEGER NOT NULL DEFAULT 0,me INTEGER NOT NULL DEFAULT 0);"
      "CREATE INDEX ix ON gl_accsum(iyear,ccode,iperiod)");
  floor.run("BEGIN");
  sqlite3_stmt* s = floor.prepare(
      "INSERT INTO gl_accsum(iyear,ccode,cexch_name,iperiod,cbegind_c,cendd_c,cbegind_c_engl,cendd_c_engl,mb,me) "
      "VALUES(?,?,?,?,?,?,?,?,?,?)");
  for (int n = 0; n < balances; ++n) {
    const std::string code = leafCode(n), word = n % 2 ? "借" : "贷", english = n % 2 ? "Dr" : "Cr";
    for (int period = 1; period <= 12; ++period) {
      sqlite3_bind_int64(s, 1, 2006);
      bench::bindText(s, 2, code);
      sqlite3_bind_null(s, 3);
      sqlite3_bind_int64(s, 4, period);
      bench::bindText(s, 5, word);
      bench::bindText(s, 6, word);
      bench::bindText(s, 7, english);
      bench::bindText(s, 8, english);
      sqlite3_bind_int64(s, 9, amount(n).units());
      sqlite3_bind_int64(s, 10, amount(n).units());
      if (sqlite3_step(s) != SQLITE_DONE) throw std::runtime_error("the floor's insert failed");
      sqlite3_reset(s);
    }
  }
  sqlite3_finalize(s);
  floor.run("COMMIT");
}

void requireRows(Ledger& ledger, std::int64_t rows) {
  if (ledger.number(ledger.opening, "select count(*) from gl_accsum where iyear=2006") != rows)
    throw std::runtime_error("the stage did not write the rows that are measured");
}

std::vector<bench::Line> accountTotals(const bench::Options& options) {
  const int balances = options.quick ? 50 : 100'000;
  const auto ledger = ledgerWithBalances(balances);
  // First the empty table, as in a new year; a repetition deletes the rows of the one before, so one round is measured.
  const double ours = bench::seconds([&] { ledger->inRun([] { gljz::JzAccSum(); }); });
  requireRows(*ledger, std::int64_t{12} * balances);
  int round = 0;
  const double floor =
      bench::bestOf(options, [&] { writeFloor(ledger->file("floor" + std::to_string(++round)), balances); });
  return {{std::to_string(balances) + " balances, " + std::to_string(12 * balances) + " rows", ours, floor}};
}

std::vector<bench::Line> accountTotalsMemory(const bench::Options& options) {
  const int few = options.quick ? 20 : 20'000, many = options.quick ? 40 : 100'000;
  const auto peak = [](int balances) {
    const auto ledger = ledgerWithBalances(balances);
    bench::resetPeakMemory();
    ledger->inRun([] { gljz::JzAccSum(); });
    return static_cast<double>(bench::peakMemory().value_or(0));
  };
  const double floor = peak(few);
  return {{std::to_string(12 * many) + " rows written against " + std::to_string(12 * few),
           peak(many),
           floor,
           {},
           bench::Line::Unit::bytes}};
}

// Parents on four levels above the last: a tenth of the accounts.
std::unique_ptr<Ledger> ledgerWithParents(int accounts) {
  auto ledger = std::make_unique<Ledger>();
  std::vector<std::pair<std::string, bool>> chart;  // code, last-level
  const int leaves = accounts * 9 / 10;
  std::vector<std::string> level;
  int made = 0;
  for (int n = 0; made < leaves; ++n) {
    // 4 digits, then two a level: every 25 leaves share a parent of the fourth level, and so on.
    const std::string top = std::to_string(1000 + n / 12500 % 9000), second = top + std::to_string(10 + n / 2500 % 5),
                      third = second + std::to_string(10 + n / 250 % 10),
                      fourth = third + std::to_string(10 + n / 25 % 10), leaf = fourth + std::to_string(10 + n % 25);
    if (n % 12500 == 0) chart.emplace_back(top, false);
    if (n % 2500 == 0) chart.emplace_back(second, false);
    if (n % 250 == 0) chart.emplace_back(third, false);
    if (n % 25 == 0) chart.emplace_back(fourth, false);
    chart.emplace_back(leaf, true);
    ++made;
  }
  ledger->fill(ledger->opening, "code", {"iyear", "ccode", "ccode_name", "bend"}, static_cast<int>(chart.size()),
               [&](int n, Ledger::Row& row) {
                 const auto& [code, last] = chart[static_cast<std::size_t>(n)];
                 row = {Value(2006), Value(code), Value("科目"), Value(last)};
               });
  std::vector<std::string> codes;
  for (const auto& [code, last] : chart)
    if (last) codes.push_back(code);
  ledger->fill(ledger->opening, "gl_accsum", {"iyear", "ccode", "iperiod", "cbegind_c", "cendd_c", "mb", "me"},
               static_cast<int>(codes.size()), [&](int n, Ledger::Row& row) {
                 row = {Value(2006),     Value(codes[static_cast<std::size_t>(n)]),
                        Value(1),        Value("借"),
                        Value("借"),     Value(amount(n)),
                        Value(amount(n))};
               });
  return ledger;
}

std::vector<bench::Line> rollUp(const bench::Options& options) {
  const int few = options.quick ? 250 : 25'000, many = options.quick ? 500 : 100'000;
  const auto time = [](int accounts) {
    const auto ledger = ledgerWithParents(accounts);
    return bench::seconds([&] { ledger->inRun([] { gljz::RollUpAccSum(gljz::newConn(), 2006); }); });
  };
  const double floor = time(few) * many / few;
  return {{std::to_string(many) + " accounts on five levels against " + std::to_string(few), time(many), floor}};
}

const bench::Registration totals{{"account_totals", "at most 2.0 times prepared inserts", 2.0, accountTotals}};
const bench::Registration memory{
    {"account_totals_memory", "does not grow with the rows written", 1.2, accountTotalsMemory}};
const bench::Registration parents{{"roll_up_growth", "no more than linear", 1.15, rollUp}};

}  // namespace
