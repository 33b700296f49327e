#pragma once
// YearBalance: whether the new year opens in balance, read from both years after a run.
//
// The system compares each account with its auxiliaries and never debits with credits: an account that was left out
// takes its amount out of the new year, and every account that is there is right. What the ledger shows in its trial
// balance only weeks later stands here at once.

#include <map>
#include <optional>
#include <set>
#include <string>

#include "platform/database.h"
#include "platform/money.h"

namespace host {

// Debit and credit balances of all last-level accounts, in the main currency. A balance on the side against its sign
// counts where it stands: a negative debit lessens the debits.
struct YearSides {
  platform::Money debit, credit;
  platform::Money difference() const { return debit - credit; }
};

struct YearBalance {
  YearSides closing;  // at the end of the closing year's period 12
  YearSides opening;  // of the new year
  // What the accounts that were asked for ended the closing year with, debit positive; by account.
  std::map<std::string, platform::Money> leftOut;

  bool opensInBalance() const { return opening.difference().isZero(); }
};

struct YearBalanceQuestion {
  std::string closingDatabase;  // the new year's is the connection's
  int closingYear = 0, newYear = 0;
  std::set<std::string> leftOut;  // accounts of the closing year
};

// Over a connection to the new year's database. Failures of the server go to the caller.
YearBalance readYearBalance(platform::Connection& newYear, const YearBalanceQuestion& question);

}  // namespace host
