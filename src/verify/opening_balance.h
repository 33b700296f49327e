#pragma once
// The verification after the commit, which ends in the closing report.

namespace gljz {

void CheckOpeningBalance();

}  // namespace gljz
