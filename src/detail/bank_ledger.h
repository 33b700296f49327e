#pragma once
// The bank stage: unreconciled bank ledger, then bank statements, then cheques.
//
// In the new year the bank ledger's rows of gl_accvouch have two periods of their own: 20 is the balance of an account
// and currency at the begin of its reconciliation, netted in md; 21 is a voucher line that is still to be reconciled.

#include <string>

namespace gljz {

// Catches its own failures from its second statement on and returns normally, with the rows written so far; the rest of
// the stage is left out. Only a failure of the first statement, which marks the closing year, goes to the caller.
void JzYhData();

// The first step behind that statement. idText: identity of the row in work, for the failure message.
void CarryBankLedger(std::string& idText);

}  // namespace gljz
