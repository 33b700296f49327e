// Auxiliary and multi-auxiliary totals: each balance becomes twelve rows, after the look-ups of account and customer.

#include <memory>
#include <utility>

#include "balances/auxiliary_totals.h"
#include "balances/multi_auxiliary_totals.h"
#include "bench/bench.h"
#include "bench/floor.h"
#include "bench/ledger.h"

namespace {

using bench::Floor;
using bench::Ledger;
using platform::Money;
using platform::Value;

constexpr const char* account = "1131";
std::string customer(int n) {
  return "C" + std::to_string(1000000 + n);
}
Money amount(int n) {
  return Money::fromUnits(std::int64_t{100} * (n + 1));
}

// One account by customer in both years, and a balance of each customer at the end of the closing year.
std::unique_ptr<Ledger> ledgerWithCustomers(int customers) {
  auto ledger = std::make_unique<Ledger>();
  for (const auto& [database, year] : {std::pair{ledger->closing, 2005}, std::pair{ledger->opening, 2006}}) {
    ledger->fill(database, "code", {"iyear", "ccode", "ccode_name", "bcus"}, 1, [year = year](int, Ledger::Row& row) {
      row = {Value(year), Value(account), Value("应收账款"), Value(true)};
    });
    ledger->fill(database, "Customer", {"cCusCode", "cCusName", "cCusAbbName"}, customers, [](int n, Ledger::Row& row) {
      row = {Value(customer(n)), Value("客户"), Value("客户")};
    });
  }
  ledger->fill(ledger->closing, "gl_accass", {"iyear", "ccode", "iperiod", "ccus_id", "cendd_c", "cendd_c_engl", "me"},
               customers, [](int n, Ledger::Row& row) {
                 row = {Value(2005), Value(account), Value(12),       Value(customer(n)),
                        Value("借"), Value("Dr"),    Value(amount(n))};
               });
  ledger->fill(ledger->closing, "gl_accMultiass", {"iyear", "ccode", "iperiod", "ccus_id", "me"}, customers,
               [](int n, Ledger::Row& row) {
                 row = {Value(2005), Value(account), Value(12), Value(customer(n)), Value(amount(n))};
               });
  return ledger;
}

double carry(int customers, Ledger& ledger) {
  const double time = bench::seconds([&] {
    ledger.inRun([] {
      gljz::JzAccAss();
      gljz::JzAccMultiAss();
    });
  });
  const std::int64_t expected = std::int64_t{12} * customers;
  for (const char* table : {"gl_accass", "gl_accMultiass"})
    if (ledger.number(ledger.opening, std::string("select count(*) from ") + table + " where iyear=2006") != expected)
      throw std::runtime_error(std::string("the stage did not write the measured rows of ") + table);
  return time;
}

void writeFloor(const std::string& file, int customers) {
  Floor floor(file);
  const std::string keys =
      "i_id INTEGER PRIMARY KEY,iyear INTEGER NOT NULL,ccode TEXT NOT NULL,cexch_name TEXT,cdept_id TEXT,cperson_id "
      "TEXT,ccus_id "
      "TEXT,csup_id TEXT,citem_id TEXT,citem_class TEXT,";
  const auto number = [](const char* name, const char* type) {
    return std::string(",") + name + " " + type + " NOT NULL DEFAULT 0";
  };
  std::string amounts;
  for (const char* name : {"mb", "md", "mc", "me", "mb_f", "md_f", "mc_f", "me_f"}) amounts += number(name, "INTEGER");
  for (const char* name : {"nb_s", "nd_s", "nc_s", "ne_s"}) amounts += number(name, "REAL");
  std::string defines, defineNames, defineMarks;
  for (int i = 1; i <= 16; ++i) {
    defines += ",cDefine" + std::to_string(i) + (i == 4 || i == 6 ? " INTEGER" : " TEXT");
    defineNames += ",cDefine" + std::to_string(i);
    defineMarks += ",NULL";
  }
  floor.run("CREATE TABLE gl_accass(" + keys +
            "iperiod INTEGER NOT NULL,cbegind_c TEXT,cbegind_c_engl TEXT,cendd_c TEXT,cendd_c_engl TEXT" + amounts +
            ");CREATE INDEX ix_a ON gl_accass(iyear,ccode,iperiod);CREATE TABLE gl_accMultiass(" + keys + "cname TEXT" +
            defines + ",iperiod INTEGER NOT NULL" + amounts + number("addmd", "INTEGER") +
            number("addmd_f", "INTEGER") + number("addnd_s", "REAL") + number("addmc", "INTEGER") +
            number("addmc_f", "INTEGER") + number("addnc_s", "REAL") +
            ");CREATE INDEX ix_m ON gl_accMultiass(iyear,ccode,iperiod)");
  floor.run("BEGIN");
  sqlite3_stmt* single = floor.prepare(
      "INSERT INTO "
      "gl_accass(iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,iperiod,cbegind_c,"
      "cbegind_c_engl,cendd_c,cendd_c_engl,mb,me,mb_f,me_f,nb_s,ne_s) "
      "VALUES(?,?,NULL,NULL,NULL,?,NULL,NULL,NULL,?,?,?,?,?,?,?,0,0,0,0)");
  sqlite3_stmt* multi = floor.prepare(
      "INSERT INTO "
      "gl_accMultiass(iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname" +
      defineNames + ",iperiod,mb,me,mb_f,me_f,nb_s,ne_s) VALUES(?,?,NULL,NULL,NULL,?,NULL,NULL,NULL,NULL" +
      defineMarks + ",?,?,?,0,0,0,0)");
  const std::string code = account, word = "借", english = "Dr";
  const auto step = [](sqlite3_stmt* s) {
    if (sqlite3_step(s) != SQLITE_DONE) throw std::runtime_error("the floor's insert failed");
    sqlite3_reset(s);
  };
  for (sqlite3_stmt* s : {single, multi}) {
    for (int n = 0; n < customers; ++n) {
      const std::string partner = customer(n);
      for (int period = 1; period <= 12; ++period) {
        sqlite3_bind_int64(s, 1, 2006);
        bench::bindText(s, 2, code);
        bench::bindText(s, 3, partner);
        sqlite3_bind_int64(s, 4, period);
        if (s == single) {
          bench::bindText(s, 5, word);
          bench::bindText(s, 6, english);
          bench::bindText(s, 7, word);
          bench::bindText(s, 8, english);
        }
        const int first = s == single ? 9 : 5;
        sqlite3_bind_int64(s, first, amount(n).units());
        sqlite3_bind_int64(s, first + 1, amount(n).units());
        step(s);
      }
    }
  }
  sqlite3_finalize(single);
  sqlite3_finalize(multi);
  floor.run("COMMIT");
}

std::vector<bench::Line> auxiliaryTotals(const bench::Options& options) {
  const int customers = options.quick ? 20 : 100'000;
  const auto ledger = ledgerWithCustomers(customers);
  const double ours = carry(customers, *ledger);
  const double floor = bench::seconds([&] { writeFloor(ledger->file("floor"), customers); });
  return {{std::to_string(2 * customers) + " balances, " + std::to_string(24 * customers) + " rows", ours, floor}};
}

std::vector<bench::Line> auxiliaryGrowth(const bench::Options& options) {
  const int few = options.quick ? 10 : 10'000, many = options.quick ? 20 : 100'000;
  const auto time = [](int customers) { return carry(customers, *ledgerWithCustomers(customers)); };
  const double floor = time(few) * many / few;
  return {{std::to_string(2 * many) + " balances against " + std::to_string(2 * few), time(many), floor}};
}

const bench::Registration totals{{"auxiliary_totals", "at most 2.5 times prepared inserts", 2.5, auxiliaryTotals}};
const bench::Registration growth{
    {"auxiliary_totals_growth", "a balance costs at most 1.15 times as much", 1.15, auxiliaryGrowth}};

}  // namespace
