#pragma once
// Auxiliary totals (gl_accass): by department, person, customer, supplier and item.

namespace gljz {

// Replaces the new year's rows, and clears the opening rows of its vouchers for the later stages. Each balance of
// period 12 becomes twelve equal rows when its account is last-level and of the same auxiliary type in the new year,
// and the new year has all that it refers to; else it is left out, which a run that is watched reports. Failures go to
// the caller.
void JzAccAss();

}  // namespace gljz
