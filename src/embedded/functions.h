#pragma once
// The run-time functions and the collation that emitted SQLite statements call.
//
// Arguments and results are in the running form of tsql::SqlType. A failure is kept in the FunctionContext (number and
// wording of the server) and the SQLite statement ends with SQLITE_ERROR; the caller takes the failure from there.

#include <functional>
#include <optional>

#include "tsql/datum.h"
#include "tsql/sql_error.h"

struct sqlite3;

namespace embedded {

struct FunctionContext {
  std::optional<tsql::SqlError> failure;      // set by a function that failed
  std::function<std::int64_t()> now;          // ticks of 1/300 s since 1900-01-01, local time
  std::optional<std::int64_t> statementTime;  // what now() gave to the running statement; forgotten at its end
  void fail(const tsql::SqlError& e) {
    if (!failure) failure = e;
  }
};

// The name of the collation of all text: without regard to case, width and trailing blanks, Chinese by sound.
inline constexpr const char* textCollation = "TQ";

// Less, equal, greater than 0: the order of texts. Pure ASCII goes a quick way that gives the same order.
int compareText(std::string_view a, std::string_view b);

// Registers the collation and all functions on a connection. The context must outlive it.
void registerFunctions(sqlite3* db, FunctionContext& context);

}  // namespace embedded
