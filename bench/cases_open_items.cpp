// Open items of customers: each line is looked up and written anew as an opening detail of the new year.

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "bench/bench.h"
#include "bench/floor_ledger.h"
#include "bench/ledger.h"
#include "bench/memory.h"
#include "detail/open_items.h"

namespace {

using bench::FloorLedger;
using bench::FloorStatement;
using bench::Ledger;
using bench::Lookup;
using platform::DateTime;
using platform::Money;
using platform::Value;

constexpr const char* account = "1131";
constexpr int customers = 1000;
std::string customer(int n) {
  return "C" + std::to_string(1000 + n % customers);
}

const std::vector<std::string> lineColumns{"iyear",      "iperiod", "csign", "ino_id",  "inid",
                                           "dbill_date", "idoc",    "cbill", "cbook",   "cdigest",
                                           "ccode",      "md",      "mc",    "csettle", "ccus_id"};

void fillLine(int n, Ledger::Row& row) {
  const bool sale = n % 3 != 0;
  const Money amount = Money::fromUnits(std::int64_t{100} * (n + 1));
  row = {Value(2005),
         Value(1 + n % 12),
         Value("记"),
         Value(1 + n % 9999),
         Value(1 + n % 8),
         Value(DateTime::fromDate(2005, 1 + n % 12, 1 + n % 28)),
         Value(0),
         Value("钱敏"),
         Value("赵六"),
         Value(sale ? "销售商品" : "收回货款"),
         Value(account),
         Value(sale ? amount : Money()),
         Value(sale ? Money() : amount),
         sale ? Value() : Value("1"),
         Value(customer(n))};
}

// The lines are made in a block and multiplied inside the server.
void fillLines(Ledger& ledger, int lines) {
  constexpr int mostByHand = 100'000;
  int made = std::min(lines, mostByHand);
  ledger.fill(ledger.closing, "gl_accvouch", lineColumns, made, fillLine);
  std::string columns;
  for (const std::string& column : lineColumns) columns += (columns.empty() ? "" : ",") + column;
  for (; made < lines;) {
    const int more = std::min(made, lines - made);
    ledger.sql(ledger.closing, "insert into gl_accvouch(" + columns + ") select top " + std::to_string(more) + " " +
                                   columns + " from gl_accvouch");
    made += more;
  }
}

std::unique_ptr<Ledger> ledgerWithItems(int lines) {
  auto ledger = std::make_unique<Ledger>();
  for (const auto& [database, year] : {std::pair{ledger->closing, 2005}, std::pair{ledger->opening, 2006}}) {
    ledger->fill(database, "code", {"iyear", "ccode", "ccode_name", "bcus"}, 1, [year = year](int, Ledger::Row& row) {
      row = {Value(year), Value(account), Value("应收账款"), Value(true)};
    });
    ledger->fill(database, "Customer", {"cCusCode", "cCusName", "cCusAbbName"}, customers, [](int n, Ledger::Row& row) {
      row = {Value(customer(n)), Value("客户"), Value("客户")};
    });
    ledger->sql(database,
                "insert into dsign(csign,isignseq,ctext) values(N'记',1,N'记账凭证') "
                "insert into settlestyle(csscode,cssname,bssend) values(N'1',N'支票',1)");
  }
  fillLines(*ledger, lines);
  return ledger;
}

void requireLines(std::int64_t found, int lines) {
  if (found != lines) throw std::runtime_error("the lines that are measured were not written");
}

double carry(Ledger& ledger, int lines) {
  const double time = bench::seconds([&] {
    ledger.inRun([] {
      gljz::OpenItemState state;
      gljz::CarryCustomerItems(state);
    });
  });
  requireLines(ledger.number(ledger.opening, "select count(*) from gl_accvouch where iyear=2006 and iperiod=0"), lines);
  return time;
}

// The same selections, the same seven look-ups a line and the same insert.
void carryFloor(FloorLedger& floor) {
  FloorStatement lines(
      floor.closing,
      "SELECT v.*,c.ccode_name FROM code c JOIN gl_accvouch v ON c.ccode=v.ccode AND c.iyear=v.iyear WHERE c.bend=1 "
      "AND "
      "c.bcus=1 AND v.ccus_id IS NOT NULL AND v.iyear>=2005 AND v.iyear<=2005 AND (v.iflagperson IS NULL OR "
      "v.iflagperson=0 OR v.wllqperiod>=200600) AND v.iflag IS NULL AND v.i_id>=? AND v.i_id<?");
  Lookup match(floor.opening, "SELECT ccode FROM code WHERE iyear=2006 AND ccode=?");
  Lookup newAccount(floor.opening, "SELECT * FROM code WHERE iyear=2006 AND ccode=?");
  Lookup lastAccount(floor.closing, "SELECT * FROM code WHERE iyear=2005 AND ccode=?");
  Lookup partner(floor.opening, "SELECT cCusCode FROM Customer WHERE cCusCode=?");
  Lookup style(floor.opening, "SELECT csscode FROM settlestyle WHERE csscode=?");
  Lookup sign(floor.opening, "SELECT isignseq,csign,ctext FROM dsign WHERE csign=?");
  bench::VoucherInsert insert(floor.opening, lines);

  const int ccode = lines.column("ccode"), ccus = lines.column("ccus_id"), csettle = lines.column("csettle"),
            csign = lines.column("csign");
  const auto field = [&](int column) { return sqlite3_column_value(lines.get(), column); };
  constexpr int bands = 11, bandWidth = 200'000;
  constexpr std::int64_t noEnd = std::int64_t{1} << 62;
  floor.opening.run("BEGIN");
  for (int band = 0; band < bands; ++band) {
    sqlite3_bind_int64(lines.get(), 1, std::int64_t{band} * bandWidth);
    sqlite3_bind_int64(lines.get(), 2, band == bands - 1 ? noEnd : std::int64_t{band + 1} * bandWidth);
    while (lines.step()) {
      match.find(field(ccode));
      newAccount.find(field(ccode));
      lastAccount.find(field(ccode));
      partner.find(field(ccus));
      if (sqlite3_value_type(field(csettle)) != SQLITE_NULL) style.find(field(csettle));
      const std::int64_t sequence = sign.find(field(csign));
      sign.find(field(csign));
      insert.write(0, sequence);
    }
    lines.reset();
  }
  floor.opening.run("COMMIT");
}

std::int64_t floorLines(FloorLedger& floor) {
  FloorStatement count(floor.opening, "SELECT count(*) FROM gl_accvouch");
  count.step();
  return sqlite3_column_int64(count.get(), 0);
}

std::vector<bench::Line> openItems(const bench::Options& options) {
  const int lines = options.size(100'000, 30);
  const auto ledger = ledgerWithItems(lines);
  // Each round of the floor begins with files of its own; ours is measured once, in the empty year of a first run.
  int round = 0;
  double floor = 0;
  const int rounds = options.quick ? 1 : options.rounds;
  for (; round < rounds; ++round) {
    FloorLedger copy(*ledger, "floor" + std::to_string(round),
                     {"code", "Customer", "settlestyle", "dsign", "gl_accvouch"});
    const double time = bench::seconds([&] { carryFloor(copy); });
    requireLines(floorLines(copy), lines);
    floor = round == 0 ? time : std::min(floor, time);
  }
  return {{std::to_string(lines) + " items", carry(*ledger, lines), floor}};
}

std::vector<bench::Line> openItemsGrowth(const bench::Options& options) {
  const int few = options.size(10'000, 10), many = options.size(100'000, 20);
  const auto time = [](int lines) { return carry(*ledgerWithItems(lines), lines); };
  const double floor = time(few) * many / few;
  return {{std::to_string(many) + " items against " + std::to_string(few), time(many), floor}};
}

// The page caches of the two years, 64 MiB each at the most, are full with the smaller number; what grows beyond
// is the program's.
std::vector<bench::Line> openItemsMemory(const bench::Options& options) {
  const int few = options.size(options.full ? 1'000'000 : 700'000, 20),
            many = options.size(options.full ? 2'500'000 : 1'400'000, 40);
  const auto peak = [](int lines) {
    const auto ledger = ledgerWithItems(lines);
    bench::resetPeakMemory();
    carry(*ledger, lines);
    return static_cast<double>(bench::peakMemory().value_or(0));
  };
  const double floor = peak(few);
  return {{std::to_string(many) + " items against " + std::to_string(few), peak(many), floor, std::nullopt,
           bench::Line::Unit::bytes}};
}

const bench::Registration items{{"open_items", "at most 3.0 times prepared look-ups and inserts", 3.0, openItems}};
const bench::Registration growth{
    {"open_items_growth", "an item costs at most 1.15 times as much", 1.15, openItemsGrowth}};
const bench::Registration memory{{"open_items_memory", "does not grow with the items", 1.2, openItemsMemory}};

}  // namespace
