#pragma once

#include "core/sql.h"

namespace gljz::account_totals_sql {

// closing year: balances at the end of period 12. The foreign amount counts only with a currency, the quantity only
// with a measure unit; the filter looks at the raw columns.
inline constexpr Sql selectBalances{
    "account_totals.select_balances",
    "select code.ccode,code.ccode_name,gl_accsum.cendd_c,gl_accsum.cendd_c_engl,"
    "isnull(gl_accsum.cexch_name,'') as cexch_name,gl_accsum.me,"
    "(case when gl_accsum.cexch_name is null then 0 else gl_accsum.me_f end) as me_f,"
    "(case when code.cmeasure is null then 0 else gl_accsum.ne_s end) as ne_s "
    "from code inner join gl_accsum on code.ccode=gl_accsum.ccode  and code.iyear=gl_accsum.iyear "
    "where not gl_accsum.ccode is null and gl_accsum.iperiod=12 "
    "and (gl_accsum.me<>0 or gl_accsum.me_f<>0 or gl_accsum.ne_s<>0) and code.iyear={lastYear} ",
    "lastYear"};

// new year: everything that stands for the year goes, parents included
inline constexpr Sql deleteYear{"account_totals.delete_year", "delete from gl_accsum where iyear={curYear}", "curYear"};

// new year: where the rows are added
inline constexpr Sql openTarget{"account_totals.open_target",
                                "select * from gl_accsum where iyear={curYear} order by ccode,iperiod", "curYear"};

inline constexpr const SqlText* all[] = {&selectBalances, &deleteYear, &openTarget};

}  // namespace gljz::account_totals_sql
