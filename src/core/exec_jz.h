#pragma once
// ExecJZ: the frame of a carry-forward. The checks, then the one transaction of the run around the stages, then the
// verification, then the way out.
//
// Reports through run.m_strMsg and run.m_bSuccess. Failures of the checks go to the caller. Of the steps behind them
// the first failure is swallowed and the second goes to the caller, with the transaction open.

namespace gljz {

void ExecJZ();

}  // namespace gljz
