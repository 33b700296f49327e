#pragma once
// BankCarry: what became of a bank account in a carry-forward, read from both years after the run.
//
// The system itself says nothing about the bank, not even that its bank stage broke off; the figures here let an
// accountant see it: whether the balance that the new year's reconciliation starts from is the closing year's balance,
// whether every open line, statement line and cheque is there, and whether ledger and bank, each with what only the
// other one has, come to the same amount.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/money.h"
#include "platform/services.h"

namespace host {

// One bank account in one currency, as the new year has them. Amounts are in that currency, debit positive.
struct BankCarry {
  struct Count {
    std::int64_t open = 0;     // that the closing year had to hand over
    std::int64_t carried = 0;  // of these, in the new year
  };
  enum class Finding {
    balanceMissing,  // the new year has no balance of the ledger
    balanceDiffers,  // it has another one than the closing year
    linesMissing,    // not all lines of the ledger are there
    statementsMissing,
    chequesMissing,
    notReconciled  // everything is there, and ledger and bank come to different amounts
  };

  std::string account, name;  // of the closing year
  std::string currency;       // empty for the main one
  platform::Money closingBalance;
  std::optional<platform::Money> ledgerBalance;  // carried; nothing when there is none
  std::optional<platform::Money> bankBalance;    // of the statements, carried
  Count lines, statements;
  std::optional<Count> cheques;  // nothing in one database for both years: there the register stays
  // What only one side has: lines that the bank lacks, statement lines that the ledger lacks.
  platform::Money linesOnly, statementsOnly;

  std::vector<Finding> findings() const;  // none: the account is as it should be
  platform::Money difference() const;     // of the balances: carried less closing year's
  platform::Money gap() const;            // between ledger and bank, each with what only the other one has
};

struct BankYears {
  std::string closingDatabase, newDatabase;  // may be one
  std::string closingYear, newYear;
  bool markedLinesToo = false;  // the run was told to carry reconciled lines as well
};

// All bank accounts of the closing year that have a balance or anything to hand over, by account and currency. services
// answers for the new year, over its own connection. Failures of the server go to the caller.
std::vector<BankCarry> readBankCarry(platform::ZwPubCls& services, const BankYears& years);

}  // namespace host
