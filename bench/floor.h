#pragma once
// Floor: a SQLite file written by prepared statements, with nothing in between.

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace bench {

class Floor {
public:
  // With the settings under which the embedded server keeps its files.
  explicit Floor(const std::string& file) {
    if (sqlite3_open(file.c_str(), &db_) != SQLITE_OK) throw std::runtime_error("cannot open " + file);
    run("PRAGMA journal_mode=WAL");
    run("PRAGMA synchronous=NORMAL");
    run("PRAGMA cache_size=-65536");
  }
  ~Floor() { sqlite3_close_v2(db_); }
  Floor(const Floor&) = delete;
  Floor& operator=(const Floor&) = delete;

  void run(const std::string& sql) {
    char* message = nullptr;
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK)
      throw std::runtime_error(std::string(message) + " in " + sql);
  }
  sqlite3_stmt* prepare(const std::string& sql) {
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &s, nullptr) != SQLITE_OK)
      throw std::runtime_error(std::string(sqlite3_errmsg(db_)) + " in " + sql);
    return s;
  }
  sqlite3* handle() { return db_; }

private:
  sqlite3* db_ = nullptr;
};

inline void bindText(sqlite3_stmt* s, int index, const std::string& text) {
  sqlite3_bind_text(s, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

}  // namespace bench
