#pragma once
// The parameter text: a small XML document whose root has one element a switch,
//   <Account><Parameter ID="GL*Clear" Check="True" text="..."/></Account>

#include <string>

namespace gljz {

// Sets the option flags of the run. A flag whose switch is absent keeps the value of the process's previous run, but
// for m_bBankTransfer and m_bCoverData, which become 1. False after a failure, whose description m_strMsg then holds;
// the flags set so far stay set.
bool ParseTransferParameters(const std::string& text);

}  // namespace gljz
