#pragma once
// The settings tables, and the transfer definitions behind them.

namespace gljz {

// Catches its own failures and returns normally.
void JzOtherTables();

}  // namespace gljz
