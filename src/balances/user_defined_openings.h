#pragma once
// Opening balances by user-defined column (GL_QcUserDef), built from the new year's own multi-auxiliary totals.

namespace gljz {

// Replaces the new year's rows, so it runs when the multi-auxiliary totals stand. Failures go to the caller.
void JzQcUserDef();

}  // namespace gljz
