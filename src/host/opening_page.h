#pragma once
// The report's pages about the opening balances: whether debits and credits of the new year are equal, and the closing
// report's accounts with what each wrong one differs by.

#include <string>
#include <vector>

#include "host/carry_forward.h"
#include "host/messages.h"
#include "host/report_model.h"

namespace host {

// The end of the closing year, the opening of the new one, and what became of the one on the way to the other; a side
// that differs is wrong.
ReportTable sidesTable(const YearBalance& balance, int closingYear, int newYear, const Messages& messages);
// What there is to say of them; nothing when the new year opens in balance.
std::vector<std::string> sidesSentences(const YearBalance& balance, int closingYear, int newYear,
                                        const Messages& messages);

// The closing report in the words of its own form; it has columns without rows too, because it was shown. The last
// column is the account's balance less that of its auxiliaries, debit positive, for a wrong account: in the main
// currency, or where that agrees, in the foreign one or in quantity. It is empty where the report's own cells do not
// tell the amounts.
ReportTable accountsTable(const ClosingReport& report, const Messages& messages);

// {"closing": {"debit", "credit", "difference"}, "opening": {the same}, "leftOut": {account: balance}}; amounts are
// numbers in the main currency, differences and balances debit positive.
std::string balanceJson(const YearBalance& balance);

}  // namespace host
