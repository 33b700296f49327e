// The ODBC adapter against a hand-written loop over the same driver, on a PostgreSQL server of the run's own.

#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/bench.h"
#include "odbc/api.h"
#include "odbc/connection.h"
#include "postgres/postgres_server.h"

namespace {

using platform::Connection;

// ---------------------------------------------------------------- the hand-written side

std::u16string utf16(const std::string& text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = [&](std::size_t n) { return static_cast<unsigned char>(text[i + n]); };
    if (byte(0) < 0x80) {
      out += byte(0), i += 1;
    } else if (byte(0) < 0xE0) {
      out += static_cast<char16_t>((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F)), i += 2;
    } else {
      out += static_cast<char16_t>((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F)), i += 3;
    }
  }
  return out;
}

std::string utf8(const char16_t* text, SQLLEN bytes) {
  std::string out;
  for (SQLLEN i = 0; i < bytes / 2; ++i) {
    const char16_t c = text[i];
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | c >> 6), out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xE0 | c >> 12), out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

std::int64_t amountUnits(const char* digits) {
  std::int64_t units = 0;
  int decimals = -1;
  const bool negative = *digits == '-';
  for (const char* p = digits + (negative ? 1 : 0); *p; ++p) {
    if (*p == '.') {
      decimals = 0;
      continue;
    }
    units = units * 10 + (*p - '0');
    if (decimals >= 0) ++decimals;
  }
  for (int i = std::max(decimals, 0); i < 4; ++i) units *= 10;
  return negative ? -units : units;
}

class Driver {
public:
  explicit Driver(const PostgresServer& server) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, odbc::attribute(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    const std::u16string text = utf16(server.connectionString("Database=ledger"));
    require(SQLDriverConnectW(connection_, nullptr, odbc::wide(text.data()), static_cast<SQLSMALLINT>(text.size()),
                              nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement_);
  }
  ~Driver() {
    SQLFreeHandle(SQL_HANDLE_STMT, statement_);
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
  }
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

  void autocommit(bool on) {
    SQLSetConnectAttrW(connection_, SQL_ATTR_AUTOCOMMIT, odbc::attribute(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF),
                       SQL_IS_UINTEGER);
  }
  void commit() { require(SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_COMMIT)); }
  void batch(const std::string& sql) {
    execute(sql);
    SQLRETURN more = SQL_SUCCESS;
    while ((more = SQLMoreResults(statement_)) != SQL_NO_DATA) require(more);
    SQLFreeStmt(statement_, SQL_CLOSE);
  }
  void execute(const std::string& sql) {
    const std::u16string text = utf16(sql);
    require(SQLExecDirectW(statement_, odbc::wide(text.data()), static_cast<SQLINTEGER>(text.size())));
  }
  SQLHANDLE statement() const { return statement_; }
  static void require(SQLRETURN result) {
    if (!SQL_SUCCEEDED(result)) throw std::runtime_error("the hand-written loop failed");
  }

private:
  SQLHANDLE environment_ = SQL_NULL_HANDLE, connection_ = SQL_NULL_HANDLE, statement_ = SQL_NULL_HANDLE;
};

// ---------------------------------------------------------------- rows

constexpr const char* selection =
    "select iyear, ccode, cexch_name, iperiod, cbegind_c, mb, mb_f, nb_s, cdigest, bflag, ddate from totals";

void makeRows(Connection& connection, int rows) {
  connection.ExecuteSql(
      "drop table if exists totals; create table totals(iyear int, ccode varchar(40), cexch_name varchar(8), iperiod "
      "int, cbegind_c varchar(2), mb numeric(19,4), mb_f numeric(19,4), nb_s float8, cdigest varchar(60), bflag "
      "boolean, ddate timestamp); insert into totals select 2005, '1001' || i, case when i % 5 = 0 then '美元' end, "
      "12, '借', i * 1.25, 0, i / 8.0, '收到货款 ' || i, i % 2 = 0, timestamp '2005-12-31' from generate_series(1, " +
      std::to_string(rows) + ") i");
}

struct Row {
  std::int64_t year, period, amount, foreign;
  double quantity;
  std::string code, currency, direction, digest;
  SQL_TIMESTAMP_STRUCT date;
  bool flag, noCurrency;
};

constexpr SQLULEN blockRows = 500;

template <std::size_t Characters>
struct TextColumn {
  char16_t text[blockRows][Characters + 1];
  SQLLEN size[blockRows];
  void bind(SQLHANDLE statement, SQLUSMALLINT number) {
    Driver::require(SQLBindCol(statement, number, SQL_C_WCHAR, text, sizeof text[0], size));
  }
  std::string at(std::size_t row) const { return size[row] < 0 ? std::string() : utf8(text[row], size[row]); }
};
template <class T>
struct PlainColumn {
  T value[blockRows];
  SQLLEN size[blockRows];
  void bind(SQLHANDLE statement, SQLUSMALLINT number, SQLSMALLINT type) {
    Driver::require(SQLBindCol(statement, number, type, value, sizeof value[0], size));
  }
};
struct Block {
  PlainColumn<SQLBIGINT> year, period;
  TextColumn<80> code;
  TextColumn<16> currency;
  TextColumn<4> direction;
  TextColumn<120> digest;
  PlainColumn<std::array<char, 32>> amount, foreign;
  PlainColumn<double> quantity;
  PlainColumn<unsigned char> flag;
  PlainColumn<SQL_TIMESTAMP_STRUCT> date;
};

std::size_t fetchByHand(Driver& driver) {
  const SQLHANDLE s = driver.statement();
  driver.execute(selection);
  auto b = std::make_unique<Block>();
  SQLULEN fetched = 0;
  SQLSetStmtAttrW(s, SQL_ATTR_ROW_ARRAY_SIZE, odbc::attribute(blockRows), SQL_IS_UINTEGER);
  SQLSetStmtAttrW(s, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, SQL_IS_POINTER);
  b->year.bind(s, 1, SQL_C_SBIGINT), b->code.bind(s, 2), b->currency.bind(s, 3), b->period.bind(s, 4, SQL_C_SBIGINT);
  b->direction.bind(s, 5), b->amount.bind(s, 6, SQL_C_CHAR), b->foreign.bind(s, 7, SQL_C_CHAR);
  b->quantity.bind(s, 8, SQL_C_DOUBLE), b->digest.bind(s, 9), b->flag.bind(s, 10, SQL_C_BIT);
  b->date.bind(s, 11, SQL_C_TYPE_TIMESTAMP);
  std::vector<Row> rows;
  for (SQLRETURN r = SQLFetch(s); r != SQL_NO_DATA; r = SQLFetch(s)) {
    Driver::require(r);
    for (std::size_t i = 0; i < fetched; ++i)
      rows.push_back({b->year.value[i], b->period.value[i], amountUnits(b->amount.value[i].data()),
                      amountUnits(b->foreign.value[i].data()), b->quantity.value[i], b->code.at(i), b->currency.at(i),
                      b->direction.at(i), b->digest.at(i), b->date.value[i], b->flag.value[i] != 0,
                      b->currency.size[i] < 0});
  }
  SQLFreeStmt(s, SQL_CLOSE);
  SQLFreeStmt(s, SQL_UNBIND);
  SQLSetStmtAttrW(s, SQL_ATTR_ROW_ARRAY_SIZE, odbc::attribute(1), SQL_IS_UINTEGER);
  SQLSetStmtAttrW(s, SQL_ATTR_ROWS_FETCHED_PTR, nullptr, SQL_IS_POINTER);
  return rows.size();
}

std::size_t fetchThroughAdapter(Connection& connection) {
  const auto rows = connection.OpenRecordset(selection, 2);
  std::size_t count = 0;
  for (; !rows->Eof(); rows->MoveNext()) ++count;
  return count;
}

std::shared_ptr<Connection> open(const PostgresServer& server) {
  auto connection = odbc::makeConnection({});
  connection->ConnectionOpen(server.connectionText());
  return connection;
}

std::vector<bench::Line> fetchRows(const bench::Options& options) {
  const int rows = options.quick ? 1'000 : 100'000;
  const PostgresServer server;
  const auto connection = open(server);
  makeRows(*connection, rows);
  Driver driver(server);
  const auto expect = [&](std::size_t count) {
    if (count != static_cast<std::size_t>(rows)) throw std::runtime_error("rows are missing");
  };
  // In turns, so that both meet the same machine.
  double ours = 0, floor = 0;
  const int rounds = options.quick ? 1 : 2 * options.rounds;
  for (int round = 0; round < rounds; ++round) {
    const double a = bench::seconds([&] { expect(fetchThroughAdapter(*connection)); });
    const double b = bench::seconds([&] { expect(fetchByHand(driver)); });
    ours = round == 0 ? a : std::min(ours, a);
    floor = round == 0 ? b : std::min(floor, b);
  }
  return {{std::to_string(rows) + " rows of 11 columns", ours, floor}};
}

// ---------------------------------------------------------------- batches

// What a balance becomes: twelve periods, one insert each.
std::string twelveInserts(const char* table, int n) {
  std::string batch;
  const std::string code = "1001" + std::to_string(n), amount = std::to_string(n) + ".25";
  for (int period = 1; period <= 12; ++period)
    batch += std::string("Insert into ") + table +
             "(iyear,cCode,cexch_name,iPeriod,cbegind_c,cendd_c,mb,Me,nb_s,ne_s) Values(2006, N'" + code + "',Null," +
             std::to_string(period) + ",N'借',N'借'," + amount + "," + amount + ",0,0);\r\n";
  return batch;
}

void makeTarget(Connection& connection, const char* table) {
  connection.ExecuteSql(
      std::string("create table ") + table +
      "(i_id serial, iyear int, ccode varchar(40), cexch_name varchar(8), iperiod int, cbegind_c "
      "varchar(2), cendd_c varchar(2), mb numeric(19,4), me numeric(19,4), nb_s float8, ne_s float8)");
}

std::vector<bench::Line> insertBatches(const bench::Options& options) {
  const int batches = options.quick ? 40 : 100'000, turns = options.quick ? 2 : 20;
  const PostgresServer server;
  const auto connection = open(server);
  makeTarget(*connection, "ours");
  makeTarget(*connection, "floor");
  Driver driver(server);
  double ours = 0, floor = 0;
  for (int turn = 0; turn < turns; ++turn) {
    const int from = batches / turns * turn, to = batches / turns * (turn + 1);
    ours += bench::seconds([&] {
      connection->BeginTrans();
      for (int n = from; n < to; ++n) connection->ExecuteSql(twelveInserts("ours", n));
      connection->CommitTrans();
    });
    floor += bench::seconds([&] {
      driver.autocommit(false);
      for (int n = from; n < to; ++n) driver.batch(twelveInserts("floor", n));
      driver.commit();
      driver.autocommit(true);
    });
  }
  const auto counts = connection->OpenRecordset("select (select count(*) from ours) - (select count(*) from floor)", 2);
  if (counts->Field(std::size_t{0}).asInteger() != 0) throw std::runtime_error("rows are missing");
  return {{std::to_string(batches) + " batches of 12 inserts", ours, floor}};
}

constexpr const char* target = "at most 1.2 times the loop by hand";
const bench::Registration rows{{"odbc_rows", target, 1.2, fetchRows}};
const bench::Registration batches{{"odbc_batches", target, 1.2, insertBatches}};

}  // namespace
