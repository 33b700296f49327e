#pragma once
// FloorLedger: a ledger's two years as plain SQLite files, for a floor that makes the look-ups and inserts of a stage
// by prepared statements.
//
//   FloorLedger floor(ledger, "floor", {"code", "gl_accvouch"});   // before the stage runs
//   Lookup account(floor.opening, "SELECT * FROM code WHERE iyear=2006 AND ccode=?");
//   account.find(code);

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

#include "bench/floor.h"
#include "bench/ledger.h"

namespace bench {

class FloorLedger {
public:
  // Copies the tables of both years with their rows, columns and indexes into two files of the ledger's folder; texts
  // compare by their bytes, which is as quick as it gets.
  FloorLedger(const Ledger& ledger, const std::string& name, const std::vector<std::string>& tables);

  Floor closing, opening;
};

// A prepared statement, finalized at the end of its life.
class FloorStatement {
public:
  FloorStatement(Floor& floor, const std::string& sql) : statement_(floor.prepare(sql)) {}
  ~FloorStatement() { sqlite3_finalize(statement_); }
  FloorStatement(const FloorStatement&) = delete;
  FloorStatement& operator=(const FloorStatement&) = delete;

  sqlite3_stmt* get() const { return statement_; }
  bool step();  // true: a row stands
  void reset() { sqlite3_reset(statement_); }
  int column(std::string_view name) const;  // index of a result column, without regard to case

private:
  sqlite3_stmt* statement_;
};

// A look-up by one text that fetches every column of the row it finds, as a record is read.
class Lookup {
public:
  Lookup(Floor& floor, const std::string& sql) : statement_(floor, sql) {}
  // The integer of the first column; -1 without a row. key: bound as it is.
  std::int64_t find(sqlite3_value* key);

private:
  FloorStatement statement_;
};

// The insert of a carried voucher line: year 2006, and every column that a carried line keeps from the current row of a
// selection.
class VoucherInsert {
public:
  VoucherInsert(Floor& opening, const FloorStatement& lines);
  void write(int period, std::int64_t signSequence);

private:
  const FloorStatement& lines_;
  std::vector<int> sources_;
  FloorStatement insert_;
};

}  // namespace bench
