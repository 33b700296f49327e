#pragma once
// Multi-auxiliary totals (gl_accMultiass): also by the free name of a customer or supplier line and by the sixteen
// user-defined columns. Amounts are signed, debit positive.

namespace gljz {

// Replaces the new year's rows, by the rules of the auxiliary totals. A balance that is not carried item by item gets
// an opening row among the vouchers, too. Rows that share a key, as the mapping has dropped what told them apart, are
// merged at the end. Failures go to the caller.
void JzAccMultiAss();

}  // namespace gljz
