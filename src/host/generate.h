#pragma once
// Synthetic account sets of a given size, the same for the same seed on every machine.

#include <cstdint>
#include <memory>
#include <string>

#include "host/database_server.h"

namespace host {

struct GeneratedSize {
  std::int64_t accounts = 200;  // of the chart, parents included, in each year
  std::int64_t balances = 150;  // last-level accounts with a balance; at most all of them
  std::int64_t items = 0;       // open current-account items; half as many on top that were cleared in the year
  // Unreconciled lines of the bank ledger, in two currencies; half as many lines of bank statements, a tenth of
  // cheques.
  std::int64_t bank = 0;
};

struct Generated {
  std::int64_t accounts = 0, balances = 0, auxiliaries = 0, multiAuxiliaries = 0, items = 0, bank = 0, statements = 0,
               cheques = 0;
};

// Makes account set `account` with a closing year that is closed and a new year with the same chart, a database each.
// Balances of the closing year stand in period 12: totals of parents are the sums of their children, auxiliary rows add
// up to their account's total, open items to their auxiliary row, and debits equal credits. UsageError when the account
// exists; on any failure nothing of it stays.
Generated generateAccountSet(const ServerPtr& server, const std::string& account, int closingYear, int newYear,
                             const GeneratedSize& size, std::uint64_t seed);

}  // namespace host
