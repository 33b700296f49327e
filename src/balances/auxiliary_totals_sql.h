#pragma once

#include "core/sql.h"

namespace gljz::auxiliary_totals_sql {

// closing year: balances of last-level accounts at the end of period 12 that name an auxiliary. The foreign amount
// counts only with a currency, the quantity only with a measure unit; the filter looks at the raw columns.
inline constexpr Sql selectBalances{
    "auxiliary_totals.select_balances",
    "select code.ccode,code.ccode_name,gl_accass.cdept_id,gl_accass.cperson_id,gl_accass.ccus_id,gl_accass.csup_id,"
    "isnull(gl_accass.cexch_name,'') as cexch_name,gl_accass.citem_class,gl_accass.citem_id,gl_accass.cendd_c,"
    "gl_accass.cendd_c_engl,gl_accass.me,"
    "(case when gl_accass.cexch_name is null then 0 else gl_accass.me_f end) as me_f,"
    "(case when code.cmeasure is null then 0 else gl_accass.ne_s end) as ne_s "
    "from code inner join gl_accass on code.ccode=gl_accass.ccode  and code.iyear=gl_accass.iyear "
    "where not gl_accass.ccode is null and gl_accass.iperiod=12 and code.bend=1 "
    "and (gl_accass.me<>0 or gl_accass.me_f<>0 or gl_accass.ne_s<>0) "
    "and (not gl_accass.cdept_id is null or not gl_accass.cperson_id is null or not gl_accass.ccus_id is null "
    "or not gl_accass.csup_id is null or not gl_accass.citem_class is null or not gl_accass.citem_id is null)  "
    "and code.iyear= {lastYear} order by gl_accass.ccode",
    "lastYear"};

// new year: everything that stands for the year goes
inline constexpr Sql deleteYear{"auxiliary_totals.delete_year", "delete from gl_accass where iyear={curYear}",
                                "curYear"};

// new year: and the opening rows of the vouchers, once for all later stages
inline constexpr Sql deleteOpeningRows{"auxiliary_totals.delete_opening_rows",
                                       "delete from gl_accvouch where (iperiod<1 or iperiod>12) and iyear={curYear}",
                                       "curYear"};

// new year: opened and closed, nothing is read from it
inline constexpr Sql selectTarget{"auxiliary_totals.select_target",
                                  "select * from gl_accass where iyear={curYear} order by "
                                  "ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_id,iperiod",
                                  "curYear"};

// new year: one period of one balance; twelve of them are a batch. The values of cexch, auxiliaries, cendd_c and
// cendd_c_engl bring their comma.
inline constexpr Sql insertPeriod{
    "auxiliary_totals.insert_period",
    "Insert into gl_accass(iyear,cCode,cexch_name,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,iPeriod,"
    "cbegind_c,cendd_c,cbegind_c_engl,cendd_c_engl,mb,Me,mb_f,me_f,nb_s,ne_s) "
    "Values({curYear}, N'{newCode}',{cexch}{auxiliaries}{iPeriod},"
    "{cendd_c}{cendd_c}{cendd_c_engl}{cendd_c_engl}{me},{me},{foreign},{foreign},{quantity},{quantity})\r\n",
    "curYear",
    "newCode",
    "cexch",
    "auxiliaries",
    "iPeriod",
    "cendd_c",
    "cendd_c_engl",
    "me",
    "foreign",
    "quantity"};

inline constexpr const SqlText* all[] = {&selectBalances, &deleteYear, &deleteOpeningRows, &selectTarget,
                                         &insertPeriod};

}  // namespace gljz::auxiliary_totals_sql
