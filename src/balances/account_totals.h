#pragma once
// Account totals (gl_accsum): each non-zero period-12 balance of the closing year becomes twelve equal rows, periods 1
// to 12, of its last-level account in the new year. Parents are rebuilt from them.

namespace gljz {

// Replaces the new year's rows. A row whose account has no last-level counterpart is left out; a run that is watched
// reports it. Failures go to the caller.
void JzAccSum();

}  // namespace gljz
