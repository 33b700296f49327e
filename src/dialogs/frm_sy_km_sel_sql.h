#pragma once

#include "core/sql.h"

namespace gljz::frm_sy_km_sel_sql {

// new year: first-grade profit-and-loss accounts that have, in themselves or below, a balance at the end of the closing
// year
inline constexpr Sql selectClosingAccounts{
    "frm_sy_km_sel.select_closing_accounts",
    "Select Distinct C.ccode as ccode,C.ccode_name as ccode_name from {lastDb}..GL_accsum G, {lastDb}..code C "
    "where G.iyear={lastYear} and g.iyear=c.iyear and  G.ccode like C.ccode+'%' and C.cclass=N'损益' and C.igrade=1 "
    "and G.me<>0 order by C.ccode",
    "lastDb", "lastYear"};

// new year: the same by opening balance, of whatever year. Intended: there is no filter of the year.
inline constexpr Sql selectOpeningAccounts{
    "frm_sy_km_sel.select_opening_accounts",
    "Select Distinct C.ccode as ccode,C.ccode_name as ccode_name from GL_accsum G,code C "
    "where G.ccode like C.ccode+'%' and C.cclass='损益' and C.igrade=1 and G.mb<>0 order by C.ccode"};

inline constexpr const SqlText* all[] = {&selectClosingAccounts, &selectOpeningAccounts};

}  // namespace gljz::frm_sy_km_sel_sql
