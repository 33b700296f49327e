#pragma once
// The verification after the commit. Account by account, the opening balance in the account totals is compared with the
// sum of its auxiliary totals; the closing report frmJZBG shows both with the verdict, and the counts of right and
// wrong accounts.

namespace gljz {

// Fills and shows frmJZBG, and returns when it has been closed. Writes nothing into the ledger and changes nothing
// about the outcome of the run. Failures go to the caller.
void CheckOpeningBalance();

}  // namespace gljz
