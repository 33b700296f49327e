#pragma once
// Transfer definitions (gl_bautotran) and their run log (GL_TranReport). A definition, the rows of one itype and
// ctran_id, is carried whole or not at all: one row that does not fit the new year's chart or reference records keeps
// all of it behind.

namespace gljz {

// Replaces what the new year has, but for the amortisations and accruals (itype 80 and 81) that have run there: those
// stay until a definition that fits takes their place. A definition that does not fit costs a report row in a run that
// is watched, and nothing else. Failures go to the caller; what was written until then stays.
void JzBautotran();

}  // namespace gljz
