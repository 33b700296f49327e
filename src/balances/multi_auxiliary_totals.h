#pragma once
// Multi-auxiliary totals (gl_accMultiass): with the sixteen user-defined columns.

namespace gljz {

void JzAccMultiAss();

}  // namespace gljz
