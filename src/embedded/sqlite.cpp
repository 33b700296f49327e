#include "embedded/sqlite.h"

namespace embedded {

namespace {
[[noreturn]] void raise(sqlite3* db) {
  throw SqliteFailure{sqlite3_extended_errcode(db), sqlite3_errmsg(db)};
}
}  // namespace

PreparedStatement::PreparedStatement(sqlite3* db, std::string_view sql, bool persistent) {
  sqlite3_stmt* s = nullptr;
  const int rc = sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()),
                                    persistent ? SQLITE_PREPARE_PERSISTENT : 0, &s, nullptr);
  stmt_.reset(s);
  if (rc != SQLITE_OK) raise(db);
}

void PreparedStatement::bind(int index, const tsql::Datum& value) {
  sqlite3_stmt* s = stmt_.get();
  switch (value.index()) {
    case 0:
      sqlite3_bind_null(s, index);
      break;
    case 1:
      sqlite3_bind_int64(s, index, std::get<std::int64_t>(value));
      break;
    case 2:
      sqlite3_bind_double(s, index, std::get<double>(value));
      break;
    case 3: {
      const auto& t = std::get<std::string>(value);
      sqlite3_bind_text64(s, index, t.data(), t.size(), SQLITE_STATIC, SQLITE_UTF8);
      break;
    }
    default: {
      const auto& b = std::get<tsql::Blob>(value);
      if (b.empty())
        sqlite3_bind_zeroblob(s, index, 0);
      else
        sqlite3_bind_blob64(s, index, b.data(), b.size(), SQLITE_STATIC);
    }
  }
}

bool PreparedStatement::step() {
  const int rc = sqlite3_step(stmt_.get());
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  SqliteFailure f{rc, sqlite3_errmsg(sqlite3_db_handle(stmt_.get()))};
  if (const int extended = sqlite3_extended_errcode(sqlite3_db_handle(stmt_.get())); extended != SQLITE_OK)
    f.code = extended;
  sqlite3_reset(stmt_.get());
  throw f;
}

tsql::Datum PreparedStatement::column(int index) const {
  sqlite3_stmt* s = stmt_.get();
  switch (sqlite3_column_type(s, index)) {
    case SQLITE_INTEGER:
      return sqlite3_column_int64(s, index);
    case SQLITE_FLOAT:
      return sqlite3_column_double(s, index);
    case SQLITE_TEXT:
      return text(index);
    case SQLITE_BLOB: {
      const auto* p = static_cast<const std::uint8_t*>(sqlite3_column_blob(s, index));
      return tsql::Blob(p, p + sqlite3_column_bytes(s, index));
    }
    default:
      return {};
  }
}

std::string PreparedStatement::text(int index) const {
  const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(stmt_.get(), index));
  return p ? std::string(p, static_cast<std::size_t>(sqlite3_column_bytes(stmt_.get(), index))) : std::string();
}

void useTextCollationSafely(sqlite3* db) {
  constexpr unsigned bloomFilter = 0x00080000;
  sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, bloomFilter);
}

void run(sqlite3* db, const std::string& sql) {
  char* message = nullptr;
  const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message);
  if (rc == SQLITE_OK) return;
  SqliteFailure f{sqlite3_extended_errcode(db), message ? message : sqlite3_errmsg(db)};
  sqlite3_free(message);
  throw f;
}

}  // namespace embedded
