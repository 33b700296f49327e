#pragma once
// What the closing report calls the auxiliary kind of an account.

#include <string>

#include "platform/records.h"

namespace gljz {

// label: what the account was called before; it stays when nothing about the account replaces it.
std::string auxiliaryLabel(const platform::CodeRecord& account, std::string label);

}  // namespace gljz
