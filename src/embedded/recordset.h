#pragma once
// Result sets of the embedded server: all rows in memory, or streamed in blocks.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/session_impl.h"
#include "embedded/stream.h"
#include "platform/database.h"

namespace embedded {

// Runs a batch and keeps its first result set. Throws platform::RunTimeError.
std::unique_ptr<platform::Recordset> openRecordset(std::shared_ptr<Session> session, const std::string& sql,
                                                   platform::CursorLocation location);
// The same for a statement with ? in place of arguments; all rows in memory.
std::unique_ptr<platform::Recordset> openRecordset(std::shared_ptr<Session> session, const std::string& sql,
                                                   const std::vector<platform::Value>& parameters);

[[noreturn]] void raise(const tsql::SqlError& e, const std::string& statement);

}  // namespace embedded
