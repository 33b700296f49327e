#include "odbc/diagnostics.h"

#include <algorithm>
#include <array>

#include "odbc/connection_string.h"
#include "odbc/text.h"

namespace odbc {
namespace {

// Fields that drivers for servers of this dialect add to a record.
constexpr SQLSMALLINT severityField = -1151, lineField = -1154;

SQLINTEGER numberField(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT record, SQLSMALLINT field,
                       SQLINTEGER otherwise) {
  SQLINTEGER value = 0;
  SQLSMALLINT size = 0;
  const SQLRETURN result = SQLGetDiagFieldW(type, handle, record, field, &value, sizeof value, &size);
  return SQL_SUCCEEDED(result) && value > 0 ? value : otherwise;
}

}  // namespace

std::string withoutComponents(std::string_view text) {
  constexpr std::string_view server = "[SQL Server]";
  constexpr int mostComponents = 4;  // driver manager, maker, driver, server
  std::size_t at = 0;
  for (int i = 0; i < mostComponents && at < text.size() && text[at] == '['; ++i) {
    const std::size_t close = text.find(']', at);
    if (close == std::string_view::npos) break;
    const bool last = text.substr(at).starts_with(server);
    at = close + 1;
    if (last) break;
  }
  const std::size_t begin = text.find_first_not_of(' ', at);
  return std::string(begin == std::string_view::npos ? text : text.substr(begin));
}

std::vector<Diagnostic> diagnosticsOf(SQLSMALLINT handleType, SQLHANDLE handle,
                                      const std::vector<std::string>& secrets) {
  constexpr SQLSMALLINT mostRecords = 50;
  std::vector<Diagnostic> records;
  std::u16string text(1024, u'\0');
  for (SQLSMALLINT record = 1; record <= mostRecords;) {
    std::array<SQLWCHAR, 6> state{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetDiagRecW(handleType, handle, record, state.data(), &number, wide(text.data()),
                                            static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(result)) break;
    if (static_cast<std::size_t>(length) >= text.size()) {
      text.resize(static_cast<std::size_t>(length) + 1);
      continue;
    }
    Diagnostic d;
    for (std::size_t i = 0; i < 5; ++i) d.state += static_cast<char>(state[i]);
    d.number = number;
    d.severity = numberField(handleType, handle, record, severityField, 16);
    d.line = numberField(handleType, handle, record, lineField, 1);
    d.message = redacted(
        withoutComponents(toUtf8({text.data(), static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0))})), secrets);
    records.push_back(std::move(d));
    ++record;
  }
  return records;
}

Diagnostic failureOf(const std::vector<Diagnostic>& records) {
  // Information comes in the same list: "Changed database context" before the failure to log in.
  const auto isFailure = [](const Diagnostic& d) { return !d.isClass("01"); };
  auto found =
      std::find_if(records.begin(), records.end(), [&](const Diagnostic& d) { return isFailure(d) && d.number != 0; });
  if (found == records.end()) found = std::find_if(records.begin(), records.end(), isFailure);
  if (found != records.end()) return *found;
  Diagnostic unknown;
  unknown.state = "HY000";
  unknown.message = records.empty() ? "The driver failed and gave no reason" : records.front().message;
  return unknown;
}

platform::ServerFailure serverFailure(const Diagnostic& diagnostic, const std::string& statement) {
  return {diagnostic.number, diagnostic.severity, diagnostic.line, diagnostic.message, statement};
}

}  // namespace odbc
