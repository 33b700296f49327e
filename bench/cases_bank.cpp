// The bank stage: unreconciled lines of the bank accounts, in two currencies, and lines of the bank's statements.

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "bench/bench.h"
#include "bench/floor_ledger.h"
#include "bench/ledger.h"
#include "core/run_state.h"
#include "detail/bank_ledger.h"

namespace {

using bench::FloorLedger;
using bench::FloorStatement;
using bench::Ledger;
using bench::Lookup;
using platform::DateTime;
using platform::Money;
using platform::Value;

constexpr int banks = 10;  // every second one in dollars
constexpr const char* dollars = "美元";
std::string bank(int n) {
  return "1002" + std::to_string(10 + n % banks);
}
bool isForeign(int n) {
  return n % banks % 2 != 0;
}
Money amount(int n) {
  return Money::fromUnits(std::int64_t{100} * (n + 1));
}
DateTime dayOf(int n) {
  return DateTime::fromDate(2005, 1 + n % 12, 1 + n % 28);
}

std::unique_ptr<Ledger> ledgerWithBanks() {
  auto ledger = std::make_unique<Ledger>();
  for (const auto& [database, year] : {std::pair{ledger->closing, 2005}, std::pair{ledger->opening, 2006}}) {
    ledger->fill(database, "code", {"iyear", "ccode", "ccode_name", "be", "bd_c", "dbegin", "cexch_name"}, banks,
                 [year = year](int n, Ledger::Row& row) {
                   row = {Value(year),
                          Value(bank(n)),
                          Value("银行"),
                          Value(true),
                          Value(true),
                          Value(DateTime::fromDate(2005, 1, 1)),
                          isForeign(n) ? Value(dollars) : Value()};
                 });
    ledger->sql(database,
                "insert into settlestyle(csscode,cssname,bssend) values(N'1',N'支票',1) "
                "insert into foreigncurrency(cexch_name,cexch_code) values(N'美元',N'USD')");
  }
  ledger->sql(ledger->opening,
              "update accinformation set cValue=N'True' where cSysID=N'GL' and cName=N'bMultiCurrency' "
              "update accinformation set cValue=N'人民币' where cSysID=N'GL' and cName=N'cDefaultCurrency'");
  gljz::run.m_bBankTransfer = 2;
  return ledger;
}

std::unique_ptr<Ledger> ledgerWithLines(int lines) {
  auto ledger = ledgerWithBanks();
  ledger->fill(ledger->closing, "gl_accvouch",
               {"iyear", "iperiod", "csign",    "isignseq", "ino_id", "inid",       "dbill_date", "idoc",
                "cbill", "cbook",   "ccashier", "cdigest",  "ccode",  "cexch_name", "md",         "mc",
                "md_f",  "mc_f",    "nfrat",    "csettle",  "cn_id",  "dt_date"},
               lines, [](int n, Ledger::Row& row) {
                 const bool in = n % 3 != 0, foreign = isForeign(n);
                 const Money main = amount(foreign ? 8 * n : n), own = foreign ? amount(n) : Money();
                 row = {Value(2005),
                        Value(1 + n % 12),
                        Value("银"),
                        Value(2),
                        Value(1 + n % 9999),
                        Value(1 + n % 8),
                        Value(dayOf(n)),
                        Value(0),
                        Value("钱敏"),
                        Value("赵六"),
                        Value("孙丽"),
                        Value(in ? "收到货款" : "支付货款"),
                        Value(bank(n)),
                        foreign ? Value(dollars) : Value(),
                        Value(in ? main : Money()),
                        Value(in ? Money() : main),
                        Value(in ? own : Money()),
                        Value(in ? Money() : own),
                        Value(foreign ? 8.0 : 0.0),
                        Value("1"),
                        Value("ZZ" + std::to_string(n)),
                        Value(dayOf(n))};
               });
  return ledger;
}

std::unique_ptr<Ledger> ledgerWithStatements(int lines) {
  auto ledger = ledgerWithBanks();
  ledger->fill(ledger->closing, "rp_bankrecp",
               {"iyear", "ibegin", "ddate", "mmoney", "ccode", "csettle", "cn_id", "bd_c", "cexch_name", "cdigest"},
               lines, [](int n, Ledger::Row& row) {
                 row = {Value(2005),
                        Value(1),
                        Value(dayOf(n)),
                        Value(amount(n)),
                        Value(bank(n)),
                        Value("1"),
                        Value("ZZ" + std::to_string(n)),
                        Value(n % 3 != 0),
                        isForeign(n) ? Value(dollars) : Value(),
                        Value("收到货款")};
               });
  return ledger;
}

void requireRows(std::int64_t found, std::int64_t rows) {
  if (found != rows) throw std::runtime_error("the rows that are measured were not written");
}

// Time of the stage. query counts what it has to have written.
double carry(Ledger& ledger, const std::string& query, std::int64_t rows) {
  const double time = bench::seconds([&] { ledger.inRun([] { gljz::JzYhData(); }); });
  requireRows(ledger.number(ledger.opening, query), rows);
  return time;
}
double carryLines(Ledger& ledger, int lines) {
  return carry(ledger, "select count(*) from gl_accvouch where iyear=2006", lines + std::min(lines, banks));
}
double carryStatements(Ledger& ledger, int lines) {
  return carry(ledger, "select count(*) from rp_bankrecp where iyear=2006", lines + std::min(lines, banks));
}

// The movement of an account since the begin of its reconciliation, in its own currency.
std::int64_t movement(FloorStatement& ofCurrency, FloorStatement& ofNone, sqlite3_value* code,
                      sqlite3_value* currency) {
  const bool none = sqlite3_value_type(currency) == SQLITE_NULL;
  FloorStatement& sum = none ? ofNone : ofCurrency;
  sqlite3_bind_value(sum.get(), 1, code);
  if (!none) sqlite3_bind_value(sum.get(), 2, currency);
  sum.step();
  const std::int64_t moved = sqlite3_column_int64(sum.get(), 0);
  sum.reset();
  return moved;
}

// The look-ups of an account that is new in the walk, and what its reconciliation is set to.
class Accounts {
public:
  explicit Accounts(FloorLedger& floor)
      : match_(floor.opening, "SELECT ccode FROM code WHERE iyear=2006 AND ccode=?"),
        record_(floor.opening, "SELECT * FROM code WHERE iyear=2006 AND ccode=?"),
        begin_(floor.opening, "UPDATE code SET dbegin=1 WHERE iyear=2006 AND ccode=?") {}
  void meet(sqlite3_value* code) {
    const std::string text(reinterpret_cast<const char*>(sqlite3_value_text(code)));
    if (text == last_) return;
    last_ = text;
    match_.find(code);
    record_.find(code);
    sqlite3_bind_value(begin_.get(), 1, code);
    begin_.step();
    begin_.reset();
  }

private:
  std::string last_;
  Lookup match_, record_;
  FloorStatement begin_;
};

constexpr const char* joinedLines =
    " FROM code c JOIN gl_accvouch v ON c.ccode=v.ccode AND c.iyear=v.iyear WHERE c.bend=1 AND c.be=1 AND c.iyear=2005 "
    "AND (v.iflagbank IS NULL OR v.iflagbank=0) AND v.iflag IS NULL";

// The same marker rows, selection, sums, look-ups and inserts.
void carryLinesFloor(FloorLedger& floor) {
  floor.closing.run(
      std::string("INSERT INTO gl_accvouch(iperiod,iyear,inid,dbill_date,idoc,ibook,cdigest,ccode,md,mc,md_f,mc_f,nd_s,"
                  "nc_s,nfrat,cexch_name) SELECT DISTINCT 20,2005,0,1,0,1,' ',c.ccode,0,0,0,0,0,0,0,v.cexch_name") +
      joinedLines +
      " AND c.ccode NOT IN (SELECT ccode FROM gl_accvouch WHERE bdelete<>1 AND iflag IS NULL AND iperiod=20 AND "
      "iyear=2005)");
  const std::string sum =
      " FROM gl_accvouch WHERE iyear=2005 AND ccode=? AND iperiod<>20 AND iperiod<>21 AND dbill_date>=0 AND iflag IS "
      "NULL AND cexch_name";
  FloorStatement sumOfCurrency(floor.closing, "SELECT sum(md_f),sum(mc_f)" + sum + "=?"),
      sumOfNone(floor.closing, "SELECT sum(md),sum(mc)" + sum + " IS NULL");
  FloorStatement lines(floor.closing, std::string("SELECT v.*,c.ccode_name") + joinedLines +
                                          " AND v.bdelete<>1 ORDER BY v.ccode,v.cexch_name");
  bench::VoucherInsert insert(floor.opening, lines);
  Accounts accounts(floor);
  const int ccode = lines.column("ccode"), cexch = lines.column("cexch_name"), iperiod = lines.column("iperiod"),
            sign = lines.column("isignseq");
  floor.opening.run("BEGIN");
  while (lines.step()) {
    sqlite3_value* code = sqlite3_column_value(lines.get(), ccode);
    accounts.meet(code);
    const bool balance = sqlite3_column_int(lines.get(), iperiod) == 20;
    if (balance) movement(sumOfCurrency, sumOfNone, code, sqlite3_column_value(lines.get(), cexch));
    insert.write(balance ? 20 : 21, sqlite3_column_int64(lines.get(), sign));
  }
  floor.opening.run("COMMIT");
}

void carryStatementsFloor(FloorLedger& floor) {
  floor.closing.run(
      "INSERT INTO rp_bankrecp(iyear,ibegin,bd_c,ccode,ddate,mmoney,mbalance,bdelete) SELECT DISTINCT "
      "2005,0,1,ccode,1,0,0,0 FROM rp_bankrecp WHERE iflag IS NULL");
  const std::string sum =
      "SELECT sum(case when bd_c=1 then mmoney else -mmoney end) FROM rp_bankrecp WHERE iyear=2005 AND ccode=? AND "
      "ibegin<>0 AND ddate>=0 AND cexch_name";
  FloorStatement sumOfCurrency(floor.closing, sum + "=?"), sumOfNone(floor.closing, sum + " IS NULL");
  FloorStatement lines(floor.closing,
                       "SELECT r.*,c.ccode_name FROM code c JOIN rp_bankrecp r ON c.ccode=r.ccode AND c.iyear=r.iyear "
                       "WHERE c.bend=1 AND c.be=1 AND r.bdelete<>1 AND c.iyear=2005 AND r.iflag IS NULL ORDER BY "
                       "c.ccode,r.cexch_name");
  const std::vector<std::string> columns{"ddate", "mmoney", "mbalance", "ccode",        "csettle",    "cn_id",
                                         "bd_c",  "iflag",  "bdelete",  "cBankReconNo", "cexch_name", "cdigest"};
  std::string names, places;
  std::vector<int> sources;
  for (const std::string& column : columns) {
    names += "," + column;
    places += ",?";
    sources.push_back(lines.column(column));
  }
  FloorStatement insert(floor.opening,
                        "INSERT INTO rp_bankrecp(iyear,ibegin" + names + ") VALUES(2006,?" + places + ")");
  Lookup style(floor.opening, "SELECT csscode FROM settlestyle WHERE csscode=?");
  Accounts accounts(floor);
  const int ccode = lines.column("ccode"), cexch = lines.column("cexch_name"), ibegin = lines.column("ibegin"),
            csettle = lines.column("csettle");
  const auto field = [&](int column) { return sqlite3_column_value(lines.get(), column); };
  floor.opening.run("BEGIN");
  while (lines.step()) {
    accounts.meet(field(ccode));
    if (sqlite3_value_type(field(csettle)) != SQLITE_NULL) style.find(field(csettle));
    const bool opening = sqlite3_column_int(lines.get(), ibegin) == 0;
    if (opening) movement(sumOfCurrency, sumOfNone, field(ccode), field(cexch));
    sqlite3_bind_int(insert.get(), 1, opening ? 0 : 1);
    for (std::size_t i = 0; i < sources.size(); ++i)
      sqlite3_bind_value(insert.get(), static_cast<int>(i) + 2, field(sources[i]));
    insert.step();
    insert.reset();
  }
  floor.opening.run("COMMIT");
}

// The best of the floor's rounds, each in files of its own.
double floorOf(const bench::Options& options, const Ledger& ledger, const std::string& table, std::int64_t rows,
               void (*work)(FloorLedger&)) {
  double best = 0;
  const int rounds = options.quick ? 1 : options.rounds;
  for (int round = 0; round < rounds; ++round) {
    FloorLedger copy(ledger, "floor" + std::to_string(round), {"code", "settlestyle", table});
    const double time = bench::seconds([&] { work(copy); });
    FloorStatement count(copy.opening, "SELECT count(*) FROM " + table);
    count.step();
    requireRows(sqlite3_column_int64(count.get(), 0), rows);
    best = round == 0 ? time : std::min(best, time);
  }
  return best;
}

std::vector<bench::Line> bankLedger(const bench::Options& options) {
  const int lines = options.size(100'000, 40);
  const auto ledger = ledgerWithLines(lines);
  const double floor = floorOf(options, *ledger, "gl_accvouch", lines + std::min(lines, banks), carryLinesFloor);
  return {{std::to_string(lines) + " lines", carryLines(*ledger, lines), floor}};
}

std::vector<bench::Line> bankStatements(const bench::Options& options) {
  const int lines = options.size(100'000, 40);
  const auto ledger = ledgerWithStatements(lines);
  const double floor = floorOf(options, *ledger, "rp_bankrecp", lines + std::min(lines, banks), carryStatementsFloor);
  return {{std::to_string(lines) + " lines", carryStatements(*ledger, lines), floor}};
}

std::vector<bench::Line> bankGrowth(const bench::Options& options) {
  const int few = options.size(10'000, 10), many = options.size(100'000, 20);
  const auto ledgerTime = [](int lines) { return carryLines(*ledgerWithLines(lines), lines); };
  const auto statementTime = [](int lines) { return carryStatements(*ledgerWithStatements(lines), lines); };
  const std::string size = std::to_string(many) + " against " + std::to_string(few);
  const double ledgerFloor = ledgerTime(few) * many / few, statementFloor = statementTime(few) * many / few;
  return {{"ledger, " + size, ledgerTime(many), ledgerFloor},
          {"statements, " + size, statementTime(many), statementFloor}};
}

const bench::Registration lines{{"bank_ledger", "at most 3.0 times prepared look-ups and inserts", 3.0, bankLedger}};
const bench::Registration statements{
    {"bank_statements", "at most 3.0 times prepared look-ups and inserts", 3.0, bankStatements}};
const bench::Registration growth{{"bank_growth", "a line costs at most 1.15 times as much", 1.15, bankGrowth}};

}  // namespace
