#pragma once
// The report's page about the bank accounts: what was carried of each, and whether it agrees, in an accountant's words.

#include <string>
#include <vector>

#include "host/bank_carry.h"
#include "host/messages.h"
#include "host/report_model.h"

namespace host {

// An account and currency a row; no columns when there is no account.
ReportTable bankTable(const std::vector<BankCarry>& accounts, const Messages& messages);

// One JSON array: [{"account", "name", "currency", "closingBalance", "balanceCarried", "statementBalance",
// "lines": {"open", "carried"}, "statementLines": {"open", "carried"}, "cheques": {"open", "carried"} or null,
// "agrees", "findings": [texts]}]. Balances are numbers in the currency of the account, debit positive; one that was
// not carried is null. currency is empty for the main one.
std::string bankJson(const std::vector<BankCarry>& accounts, const Messages& messages);

}  // namespace host
