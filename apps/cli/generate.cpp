// gljz generate: a synthetic account set.

#include "host/generate.h"

#include <cstdio>

#include "arguments.h"
#include "commands.h"
#include "host/account.h"
#include "host/database_server.h"
#include "host/usage_error.h"
#include "server_option.h"

namespace cli {

int runGenerate(const Words& words) {
  const Arguments a(
      words,
      withServerOptions(
          {{"--account"}, {"--from"}, {"--to"}, {"--accounts"}, {"--balances"}, {"--items"}, {"--bank"}, {"--seed"}}));
  const std::string account = a.required("--account");
  const int from = a.year("--from"), to = a.year("--to");
  if (to != from + 1) throw host::UsageError("--to is not the year behind --from");
  host::GeneratedSize size;
  size.accounts = a.count("--accounts", size.accounts);
  size.balances = a.count("--balances", size.accounts);
  size.items = a.count("--items", size.items);
  size.bank = a.count("--bank", size.bank);
  constexpr std::int64_t mostAccounts = 1'000'000;
  if (size.accounts > mostAccounts) throw host::UsageError("--accounts: at most 1000000");
  const auto seed = static_cast<std::uint64_t>(a.count("--seed", 1));
  const auto made =
      host::generateAccountSet(host::openAnyServer(serverAddress(a), true), account, from, to, size, seed);
  std::printf(
      "account %s: %lld accounts, %lld balances, %lld auxiliary and %lld multi-auxiliary rows, %lld open items, %lld "
      "bank lines, %lld statement lines, %lld cheques\n",
      account.c_str(), static_cast<long long>(made.accounts), static_cast<long long>(made.balances),
      static_cast<long long>(made.auxiliaries), static_cast<long long>(made.multiAuxiliaries),
      static_cast<long long>(made.items), static_cast<long long>(made.bank), static_cast<long long>(made.statements),
      static_cast<long long>(made.cheques));
  return 0;
}

}  // namespace cli
