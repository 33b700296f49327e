#include "host/connection_text.h"

#include <filesystem>
#include <system_error>

#include "host/usage_error.h"
#include "platform/run_time_error.h"

namespace host {
namespace {

std::string doubled(std::string_view text, char mark) {
  std::string out;
  out.reserve(text.size() + 2);
  for (const char c : text) {
    out += c;
    if (c == mark) out += c;
  }
  return out;
}

}  // namespace

ServerAddress parseServer(std::string_view text) {
  constexpr std::string_view embedded = "embedded:", odbcPrefix = "odbc:";
  ServerAddress address;
  address.text = text;
  if (text.starts_with(embedded)) {
    address.folder = text.substr(embedded.size());
    if (address.folder.empty()) throw UsageError("server \"" + address.text + "\": a folder must follow embedded:");
    if (address.folder.find(';') != std::string::npos)
      throw UsageError("server \"" + address.text + "\": a folder name with ';' cannot stand in a connection text");
    return address;
  }
  if (text.starts_with(odbcPrefix)) {
    address.kind = ServerAddress::Kind::odbc;
    try {
      odbc::ConnectionString server(text.substr(odbcPrefix.size()));
      address.credentials = server.takeSecrets();
      address.text = std::string(odbcPrefix) + server.text();
      if (!server.find("Driver") && !server.find("DSN") && !server.find("FileDSN"))
        throw UsageError("server \"" + address.text +
                         "\": it names neither a driver (Driver=...) nor a data source (DSN=...)");
    } catch (const platform::RunTimeError& e) {
      throw UsageError("server \"odbc:...\": " + e.description());  // what cannot be read may hold a password
    }
    return address;
  }
  throw UsageError("server \"" + odbc::redacted(text) + "\": neither embedded:DIR nor odbc:...");
}

void requireEmbedded(const ServerAddress& address) {
  if (address.kind != ServerAddress::Kind::embedded)
    throw UsageError("server \"" + address.text + "\": only an embedded server can do this");
}

void requireFolder(const ServerAddress& address) {
  requireEmbedded(address);
  std::error_code failure;
  const auto status = std::filesystem::status(address.folder, failure);
  if (!std::filesystem::exists(status)) throw UsageError("server folder " + address.folder + " does not exist");
  if (!std::filesystem::is_directory(status)) throw UsageError("server folder " + address.folder + " is no folder");
}

std::string connectionText(const std::string& database, const ServerAddress& server) {
  return "Database=" + database + ";Server=" + server.text + ";";
}

std::string databaseName(const std::string& account, int beginYear) {
  return "TqData_" + account + "_" + std::to_string(beginYear);
}

std::string quoted(std::string_view text) {
  return "N'" + doubled(text, '\'') + "'";
}

std::string bracketed(std::string_view name) {
  return "[" + doubled(name, ']') + "]";
}

}  // namespace host
