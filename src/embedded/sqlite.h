#pragma once
// SQLite's handles as objects, and values in the running form.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "tsql/datum.h"

namespace embedded {

struct CloseDatabase {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

// What SQLite answered: its extended code and text. The session turns it into the server's words.
struct SqliteFailure {
  int code = 0;  // extended
  std::string message;
  int primary() const { return code & 0xff; }
};

class PreparedStatement {
public:
  PreparedStatement() = default;
  // Throws SqliteFailure.
  PreparedStatement(sqlite3* db, std::string_view sql, bool persistent = false);

  explicit operator bool() const { return stmt_ != nullptr; }
  sqlite3_stmt* get() const { return stmt_.get(); }
  void bind(int index, const tsql::Datum& value);  // index from 1; the value must stay until reset
  bool step();                                     // true: a row stands. Throws SqliteFailure
  void reset() { sqlite3_reset(stmt_.get()); }
  int columns() const { return sqlite3_column_count(stmt_.get()); }
  tsql::Datum column(int index) const;  // from 0
  std::int64_t integer(int index) const { return sqlite3_column_int64(stmt_.get(), index); }
  std::string text(int index) const;
  int timesPrepared() const { return sqlite3_stmt_status(stmt_.get(), SQLITE_STMTSTATUS_REPREPARE, 0); }

private:
  struct Finalize {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> stmt_;
};

// Resets at the end of a block, so that no read stays open behind it.
class ResetGuard {
public:
  explicit ResetGuard(PreparedStatement& s) : s_(s) {}
  ~ResetGuard() { s_.reset(); }
  ResetGuard(const ResetGuard&) = delete;
  ResetGuard& operator=(const ResetGuard&) = delete;

private:
  PreparedStatement& s_;
};

// SQLite before 3.41 hashes the length of a text into the Bloom filters of its joins, so that two texts of different
// length that a collation calls equal ("a" and "a ") do not meet. Switches these filters off on the connection.
void useTextCollationSafely(sqlite3* db);

// Runs statements without results. Throws SqliteFailure.
void run(sqlite3* db, const std::string& sql);

}  // namespace embedded
