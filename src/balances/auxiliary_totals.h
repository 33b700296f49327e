#pragma once
// Auxiliary totals (gl_accass): by department, person, customer, supplier and item.

namespace gljz {

void JzAccAss();

}  // namespace gljz
