#pragma once
// The ledger stage sequence: everything that carries ledger data into the new year, in its fixed order.

namespace gljz {

// Runs inside the transaction on the new-year connection and traps nothing: a failure ends the sequence.
void JzData();

}  // namespace gljz
