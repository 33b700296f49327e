#pragma once
// What a driver or a server says about a call.

#include <string>
#include <string_view>
#include <vector>

#include "odbc/api.h"
#include "platform/run_time_error.h"

namespace odbc {

struct Diagnostic {
  std::string state;    // five characters: "42S02"
  int number = 0;       // the server's message number; 0 when driver or driver manager speak
  int severity = 16;    // as far as the driver tells, else 16
  int line = 1;         // of the batch, from 1; as far as the driver tells
  std::string message;  // without the names of the components that passed it on, and without secrets

  bool isClass(const char* two) const { return state.compare(0, 2, two) == 0; }
  bool isTimeout() const { return state == "HYT00" || state == "HYT01"; }
};

// "[unixODBC][FreeTDS][SQL Server]Invalid object name 'x'." gives "Invalid object name 'x'.". Behind the server's own
// component everything is its text, brackets too.
std::string withoutComponents(std::string_view text);

// All records of a handle, the most important one first. secrets are blotted out of the texts.
std::vector<Diagnostic> diagnosticsOf(SQLSMALLINT handleType, SQLHANDLE handle,
                                      const std::vector<std::string>& secrets);

// The failure in a list of records: one with a server's number before one that only says that something failed. A text
// of its own when the list is empty.
Diagnostic failureOf(const std::vector<Diagnostic>& records);

platform::ServerFailure serverFailure(const Diagnostic& diagnostic, const std::string& statement);

}  // namespace odbc
