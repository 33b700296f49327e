#pragma once

#include "core/sql.h"

namespace gljz::open_items_sql {

// closing year: the items of the last initialised year to the closing year that are not cleared, or cleared in the new
// year or later only. yearCap is the new year times 100.

inline constexpr Sql selectPersonItems{
    "open_items.select_person_items",
    "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode = gl_accvouch.ccode "
    " and code.iyear=gl_accvouch.iyear "
    "where code.bend=1 and code.bperson=1 and not gl_accvouch.ccode is null and not gl_accvouch.cdept_id is null "
    "and not gl_accvouch.cperson_id is null "
    " and gl_accvouch.iyear >={initYear} and  gl_accvouch.iyear<={lastYear}   "
    " and ( ( gl_accvouch.iflagperson is null or gl_accvouch.iflagperson =0 ) or  (  not ( gl_accvouch.iflagperson is "
    "null or gl_accvouch.iflagperson=0 )  and wllqperiod >={yearCap} ) ) and gl_accvouch.iflag is null",
    "initYear", "lastYear", "yearCap"};

inline constexpr Sql selectCustomerItems{
    "open_items.select_customer_items",
    "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode = gl_accvouch.ccode "
    " and code.iyear=gl_accvouch.iyear "
    "where code.bend=1 and code.bcus=1 and not gl_accvouch.ccode is null and not gl_accvouch.ccus_id is null "
    " and gl_accvouch.iyear >={initYear} and  gl_accvouch.iyear<={lastYear}   "
    " and ( ( gl_accvouch.iflagperson is null or gl_accvouch.iflagperson =0 ) or  (  not ( gl_accvouch.iflagperson is "
    "null or gl_accvouch.iflagperson=0 )  and wllqperiod >={yearCap} ) ) and gl_accvouch.iflag is null"
    "{chosenAccounts}{band}",
    "initYear",
    "lastYear",
    "yearCap",
    "chosenAccounts",
    "band"};

inline constexpr Sql selectSupplierItems{
    "open_items.select_supplier_items",
    "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode = gl_accvouch.ccode "
    " and code.iyear=gl_accvouch.iyear "
    "where code.bend=1 and code.bsup=1 and not gl_accvouch.ccode is null and not gl_accvouch.csup_id is null "
    " and gl_accvouch.iyear >={initYear} and  gl_accvouch.iyear<={lastYear}   "
    " and ( ( gl_accvouch.iflagperson is null or gl_accvouch.iflagperson =0 ) or  (  not ( gl_accvouch.iflagperson is "
    "null or gl_accvouch.iflagperson=0 )  and wllqperiod >={yearCap} ) ) and gl_accvouch.iflag is null"
    "{chosenAccounts}",
    "initYear",
    "lastYear",
    "yearCap",
    "chosenAccounts"};

// fragment: the accounts that the operator chose to carry by detail
inline constexpr Sql chosenAccounts{"open_items.chosen_accounts", " and code.ccode in ({codes})", "codes"};

// fragments: customer items are read in slices of the row identity, so that never more than one of them is open as one
// selection. The last one has no end.
inline constexpr const char* customerBands[] = {
    " and gl_accvouch.i_id <200000 ",
    " and gl_accvouch.i_id >=200000 and gl_accvouch.i_id <400000 ",
    " and gl_accvouch.i_id >=400000 and gl_accvouch.i_id <600000 ",
    " and gl_accvouch.i_id >=600000 and gl_accvouch.i_id <800000 ",
    " and gl_accvouch.i_id >=800000 and gl_accvouch.i_id <1000000 ",
    " and gl_accvouch.i_id >=1000000 and gl_accvouch.i_id <1200000 ",
    " and gl_accvouch.i_id >=1200000 and gl_accvouch.i_id <1400000 ",
    " and gl_accvouch.i_id >=1400000 and gl_accvouch.i_id <1600000 ",
    " and gl_accvouch.i_id >=1600000 and gl_accvouch.i_id <1800000 ",
    " and gl_accvouch.i_id >=1800000 and gl_accvouch.i_id <2000000 ",
    " and gl_accvouch.i_id >=2000000 ",
};

// new year: opened beside each selection and read by nothing
inline constexpr Sql probePersonYear{"open_items.probe_person_year",
                                     "select  top 1 * from gl_accvouch where iyear={curYear}", "curYear"};
inline constexpr Sql probeYear{"open_items.probe_year", "select top 1 * from gl_accvouch where iyear={curYear}",
                               "curYear"};

// closing year: a settlement style, for its name in the report
inline constexpr Sql selectSettleStyle{"open_items.select_settle_style",
                                       "select * from SettleStyle where csscode='{code}' order by csscode", "code"};

// closing year's connection: lines of an account with foreign money, of any year
inline constexpr Sql selectForeignBankLines{
    "open_items.select_foreign_bank_lines",
    "select * from gl_accvouch where ccode='{ccode}' and (md_f<>0 or mc_f<>0) and bdelete=0 and iflag is null",
    "ccode"};
inline constexpr Sql selectForeignLines{
    "open_items.select_foreign_lines",
    "select * from gl_accvouch where ccode='{ccode}' and (md_f<>0 or mc_f<>0) and iflagPerson is null and iflag is "
    "null",
    "ccode"};

inline constexpr const SqlText* all[] = {&selectPersonItems,      &selectCustomerItems, &selectSupplierItems,
                                         &probePersonYear,        &probeYear,           &selectSettleStyle,
                                         &selectForeignBankLines, &selectForeignLines};

}  // namespace gljz::open_items_sql
