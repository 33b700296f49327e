#pragma once
// Bank statements (rp_bankrecp): an opening row for each bank account with its balance brought forward, and the lines
// that are still open. Second step of the bank stage.

#include <string>

namespace gljz {

// Replaces the new year's lines, but for the protected ones unless the operator chose to cover them. Gives every
// account exactly one opening row in the closing year first. idText: identity of the row in work, for the failure
// message. Failures go to the caller.
void CarryBankStatements(std::string& idText);

}  // namespace gljz
