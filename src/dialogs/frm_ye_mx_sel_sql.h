#pragma once

#include "core/sql.h"

namespace gljz::frm_ye_mx_sel_sql {

// new year: the accounts that were chosen before, by balance and by detail, with their names in the closing year. A
// stored account that the closing year does not have is not among them.
inline constexpr Sql selectByBalance{
    "frm_ye_mx_sel.select_by_balance",
    "Select C.ccode as ccode,C.ccode_name as ccode_name from GL_YeMxSel G,{lastDb}..code C where c.iyear={lastYear} "
    "and  G.ccode=C.ccode and G.iCusSupType={cusSup} and G.iYeMxType=1 order by C.ccode",
    "lastDb", "lastYear", "cusSup"};
inline constexpr Sql selectByDetail{
    "frm_ye_mx_sel.select_by_detail",
    "Select C.ccode as ccode,C.ccode_name as ccode_name from GL_YeMxSel G,{lastDb}..code C where c.iyear={lastYear} "
    "and G.ccode=C.ccode and G.iCusSupType={cusSup} and G.iYeMxType=2 order by C.ccode",
    "lastDb", "lastYear", "cusSup"};

// new year: all last-level accounts of customers or suppliers
inline constexpr Sql selectCustomerAccounts{
    "frm_ye_mx_sel.select_customer_accounts",
    "Select ccode,ccode_name from {lastDb}..code where iyear={lastYear} and bcus=1 and bend=1 order by ccode", "lastDb",
    "lastYear"};
inline constexpr Sql selectSupplierAccounts{
    "frm_ye_mx_sel.select_supplier_accounts",
    "Select ccode,ccode_name from {lastDb}..code where iyear={lastYear} and bsup=1 and bend=1 order by ccode", "lastDb",
    "lastYear"};

// new year: the choice takes the place of the earlier one of its kind
inline constexpr Sql deleteChoice{"frm_ye_mx_sel.delete_choice", "Delete from GL_YeMxSel Where iCusSupType={cusSup}",
                                  "cusSup"};
inline constexpr Sql insertChoice{"frm_ye_mx_sel.insert_choice",
                                  "Insert GL_YeMxSel(iCusSupType,ccode,iYeMxType) Values({cusSup},'{ccode}',{yeMx})",
                                  "cusSup", "ccode", "yeMx"};

inline constexpr const SqlText* all[] = {&selectByBalance,        &selectByDetail, &selectCustomerAccounts,
                                         &selectSupplierAccounts, &deleteChoice,   &insertChoice};

}  // namespace gljz::frm_ye_mx_sel_sql
