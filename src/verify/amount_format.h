#pragma once
// Amounts as the closing report shows them.

#include <string>

#include "platform/value.h"

namespace gljz {

// The format "#.00;; ": two decimals, no grouping, no zero before the point (".50", "-1234.56"), rounded half away from
// zero; a value that rounds to zero is a single blank. Null gives an empty text.
std::string formatAmount(const platform::Value& amount);

}  // namespace gljz
