#pragma once
// Amounts and counts as a report writes them.

#include <string>

#include "platform/money.h"

namespace host {

// At least two decimals, more where the ledger has them: "681096.80".
std::string amountText(platform::Money amount);

// "681096.80" reads 681,096.80; a text that does not begin with digits stays.
std::string grouped(const std::string& text);

}  // namespace host
