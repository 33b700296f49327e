#pragma once
// The opening row of a multi-auxiliary balance: one line of period 0 among the new year's vouchers, for a balance that
// is carried as a balance and not item by item.

#include <string>

#include "balances/auxiliary_balance.h"

namespace gljz {

bool openingRowIsDue(const TargetAccount& target, const Auxiliaries& auxiliaries);

// keys: the values of auxiliaries, name and user-defined columns as SqlValue gives them, with the comma behind the
// last.
void writeOpeningRow(const platform::Recordset& balance, const TargetAccount& target, const std::string& keys);

}  // namespace gljz
