#pragma once
// An in-memory SQLite connection with the dialect's functions, and values in a form that people read.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <optional>
#include <string>
#include <vector>

#include "embedded/functions.h"
#include "tsql/types.h"

namespace embedded {

class FunctionsTest : public testing::Test {
protected:
  FunctionsTest() {
    EXPECT_EQ(sqlite3_open(":memory:", &db_), SQLITE_OK);
    context_.now = [] { return std::int64_t{38720} * 300 * 86400; };
    registerFunctions(db_, context_);
  }
  ~FunctionsTest() override { sqlite3_close(db_); }

  void run(const std::string& sql) {
    EXPECT_EQ(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
  }

  // The first column of every row: "NULL", "blob", everything else as SQLite's text. A
  // failure is "!number".
  std::vector<std::string> rows(const std::string& sql) {
    context_.failure.reset();
    std::vector<std::string> result;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
      const int type = sqlite3_column_type(statement, 0);  // before it is read as text, which may change it
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
      switch (type) {
        case SQLITE_NULL:
          result.push_back("NULL");
          break;
        case SQLITE_BLOB:
          result.push_back("blob");
          break;
        default:
          result.push_back(std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, 0))));
          break;
      }
    }
    sqlite3_finalize(statement);
    if (code != SQLITE_DONE) {
      EXPECT_TRUE(context_.failure) << sql;
      result = {"!" + std::to_string(context_.failure ? context_.failure->number : 0)};
    }
    return result;
  }

  std::string value(const std::string& expression) { return rows("select " + expression).at(0); }
  std::string message() const { return context_.failure ? context_.failure->what() : ""; }

  static std::string pack(const tsql::SqlType& t) { return std::to_string(t.pack()); }
  static std::string pack(tsql::TypeKind k) { return pack(tsql::typeOf(k)); }
  static std::string kind(tsql::TypeKind k) { return std::to_string(static_cast<int>(k)); }

  sqlite3* db_ = nullptr;
  FunctionContext context_;
};

}  // namespace embedded
