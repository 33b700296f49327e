#include "server_option.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include "credentials_file.h"
#include "host/usage_error.h"
#include "host/utf8_path.h"
#include "odbc/connection_string.h"
#include "platform/run_time_error.h"
#include "platform/value.h"
#include "terminal.h"

namespace cli {
namespace {

using host::UsageError;
using odbc::ConnectionString;

constexpr const char *userKeyword = "UID", *passwordKeyword = "PWD", *askOnTerminal = "-";

// Lines keyword=value, as in a connection string; blank lines and lines that begin with # say nothing. Unlike there, a
// value is the rest of its line as it stands: passwords have any characters.
ConnectionString readCredentials(const std::string& path) {
  requirePrivate(path);
  std::ifstream file(host::pathOf(path));
  ConnectionString credentials;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (platform::trim(line).empty() || line[0] == '#') continue;
    const auto equals = line.find('=');
    const std::string keyword = platform::trim(line.substr(0, equals));
    if (equals == std::string::npos ||
        (!platform::equalsIgnoreCase(keyword, userKeyword) && !platform::equalsIgnoreCase(keyword, passwordKeyword)))
      throw UsageError("--credentials: line " + std::to_string(number) + " of " + path +
                       " is neither UID=... nor PWD=...");
    credentials.set(platform::toUpperAscii(keyword), line.substr(equals + 1));
  }
  if (file.bad() || credentials.empty()) throw UsageError("--credentials: file " + path + " has no credentials");
  return credentials;
}

std::string askPassword(const std::string& user) {
  const auto password = askSecret("password" + (user.empty() ? std::string() : " of " + user) + ": ");
  if (!password) throw UsageError("no password was given");
  return *password;
}

}  // namespace

std::vector<Option> withServerOptions(std::vector<Option> options) {
  options.push_back({"--server"});
  options.push_back({"--credentials"});
  return options;
}

host::ServerAddress serverAddress(const Arguments& a) {
  host::ServerAddress address = host::parseServer(a.text("--server", host::defaultServer));
  if (address.kind != host::ServerAddress::Kind::odbc) {
    if (a.has("--credentials")) throw UsageError("--credentials: an embedded server takes none");
    return address;
  }
  const ConnectionString place(address.text.substr(address.text.find(':') + 1));
  const bool inAddress = address.credentials.find(passwordKeyword) || address.credentials.find("Password");
  if (inAddress)
    std::fputs("gljz: other users of this machine see a password on the command line; --credentials FILE hides it\n",
               stderr);

  const std::string* user = place.find(userKeyword);
  if (const auto path = a.text("--credentials"); path && *path != askOnTerminal) {
    if (inAddress) throw UsageError("--credentials and a password in --server exclude each other");
    address.credentials.complete(readCredentials(*path));
  } else if (path) {
    if (!inputIsTerminal()) throw UsageError("--credentials -: there is no terminal to ask for the password on");
    address.credentials.set(passwordKeyword, askPassword(user ? *user : ""));
  } else if (user && !inAddress && !place.find("DSN") && inputIsTerminal() && errorIsTerminal()) {
    address.credentials.set(passwordKeyword, askPassword(*user));
  }
  return address;
}

}  // namespace cli
