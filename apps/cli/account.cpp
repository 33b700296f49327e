// gljz account create, open-year, close-year.

#include "host/account.h"

#include <cstdio>

#include "arguments.h"
#include "commands.h"
#include "host/database_server.h"
#include "host/usage_error.h"
#include "server_option.h"

namespace cli {
namespace {

using host::UsageError;

int create(const Words& words) {
  const Arguments a(words, withServerOptions({{"--account"}, {"--year"}, {"--through"}, {"--name"}}));
  host::NewAccount account;
  account.account = a.required("--account");
  account.year = a.year("--year");
  account.through = a.optionalYear("--through").value_or(account.year);
  if (account.through < account.year) throw UsageError("--through lies before --year");
  account.name = a.text("--name", "");
  const std::string database = host::createAccount(host::openAnyServer(serverAddress(a), true), account);
  std::printf("account %s: database %s\n", account.account.c_str(), database.c_str());
  return 0;
}

int openYear(const Words& words) {
  const Arguments a(words, withServerOptions({{"--account"}, {"--year"}}));
  const std::string account = a.required("--account");
  const auto opened = host::openYear(host::openAnyServer(serverAddress(a)), account, a.optionalYear("--year"));
  std::printf("account %s: year %d in database %s\n", account.c_str(), opened.year, opened.database.c_str());
  return 0;
}

int closeYear(const Words& words) {
  const Arguments a(words, withServerOptions({{"--account"}, {"--year"}}));
  const std::string account = a.required("--account");
  const int year = a.year("--year");
  const std::string database = host::closeYear(host::openAnyServer(serverAddress(a)), account, year);
  std::printf("account %s: year %d closed in database %s\n", account.c_str(), year, database.c_str());
  return 0;
}

}  // namespace

int runAccount(const Words& words) {
  if (words.empty()) throw UsageError("account: create, open-year or close-year is expected");
  const Words rest{words.begin() + 1, words.end()};
  if (words[0] == "create") return create(rest);
  if (words[0] == "open-year") return openYear(rest);
  if (words[0] == "close-year") return closeYear(rest);
  throw UsageError("account \"" + words[0] + "\": create, open-year or close-year is expected");
}

}  // namespace cli
