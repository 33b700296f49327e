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

// new year: one period of one account. The columns of foreign amount and quantity are named only where they apply, so
// that they keep their defaults elsewhere; the movement columns always do.
inline constexpr Sql insertPeriod{
    "account_totals.insert_period",
    "insert into gl_accsum(iyear,cCode,cexch_name,iPeriod,cbegind_c,cbegind_c_engl,cendd_c,cendd_c_engl,mb,Me"
    "{moreColumns}) Values({curYear},{ccode},{cexch_name},{iPeriod},{cendd_c},{cendd_c_engl},{cendd_c},{cendd_c_engl},"
    "{me},{me}{moreValues})",
    "moreColumns",
    "curYear",
    "ccode",
    "cexch_name",
    "iPeriod",
    "cendd_c",
    "cendd_c_engl",
    "me",
    "moreValues"};

// fragments of insertPeriod
inline constexpr Sql foreignColumns{"account_totals.foreign_columns", ",mb_f,me_f"};
inline constexpr Sql foreignValues{"account_totals.foreign_values", ",{me_f},{me_f}", "me_f"};
inline constexpr Sql quantityColumns{"account_totals.quantity_columns", ",nb_s,ne_s"};
inline constexpr Sql quantityValues{"account_totals.quantity_values", ",{ne_s},{ne_s}", "ne_s"};

inline constexpr const SqlText* all[] = {&selectBalances, &deleteYear, &insertPeriod};

}  // namespace gljz::account_totals_sql
