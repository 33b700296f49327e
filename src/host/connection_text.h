#pragma once
// Server addresses as a person writes them, and the connection texts made from them.

#include <string>
#include <string_view>

#include "odbc/connection_string.h"

namespace host {

struct ServerAddress {
  enum class Kind { embedded, odbc };
  Kind kind = Kind::embedded;
  std::string text;    // as given, but without passwords: "embedded:DIR", "odbc:DSN=ledger"
  std::string folder;  // of an embedded server
  // Of an ODBC server: what is added when a connection is opened, and stands in no text.
  odbc::ConnectionString credentials;
};

inline constexpr const char* defaultServer = "embedded:./gljz-data";
inline constexpr const char* systemDatabase = "TqSystem";

// Throws UsageError for a text that is neither "embedded:DIR" nor "odbc:" with a connection string that names a driver
// or a data source. Passwords of the string go into the credentials; no message repeats them.
ServerAddress parseServer(std::string_view text);
// Throws UsageError unless the address is an embedded server.
void requireEmbedded(const ServerAddress& address);
// Throws UsageError unless the folder of an embedded server exists.
void requireFolder(const ServerAddress& address);

// "Database=<name>;Server=<address>;". The database comes first, so that the first occurrence of its name in the text
// is the name itself, whatever the folder is called: the system replaces database names in connection texts.
std::string connectionText(const std::string& database, const ServerAddress& server);

// "TqData_<account>_<year>".
std::string databaseName(const std::string& account, int beginYear);

// Text as a literal of the dialect: N'it''s'.
std::string quoted(std::string_view text);
// A name of the dialect: [odd]]name].
std::string bracketed(std::string_view name);

}  // namespace host
