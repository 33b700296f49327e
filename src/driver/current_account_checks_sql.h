#pragma once

#include "core/sql.h"

namespace gljz::current_account_checks_sql {

// closing year: items that were cleared before the new year began, summed by account, currency and partner. yearCap is
// the new year times 100.

// The person statement alone asks for a department as well.
inline constexpr Sql sumPersonItems{
    "current_account_checks.sum_person_items",
    "select ccode,cdept_id,isnull(cexch_name,'') as cexch_name,cperson_id,sum(md) as summd,sum(mc) as summc,"
    "sum(md_f) as summd_f,sum(mc_f) as summc_f from gl_accvouch where not cdept_id is null and not cperson_id is null "
    " and iyear >={initYear} and  iyear<={lastYear}    and ( not  iflagperson is null  and wllqperiod < {yearCap}  ) "
    "group by ccode,cexch_name,cdept_id,cperson_id order by ccode,cexch_name,cdept_id,cperson_id",
    "initYear", "lastYear", "yearCap"};

inline constexpr Sql sumCustomerItems{
    "current_account_checks.sum_customer_items",
    "select ccode,isnull(cexch_name,'') as cexch_name,ccus_id,sum(md) as summd,sum(mc) as summc,"
    "sum(md_f) as summd_f,sum(mc_f) as summc_f from gl_accvouch where not ccus_id is null "
    " and iyear >={initYear} and  iyear<={lastYear}    and ( not iflagperson is null  and wllqperiod < {yearCap}  ) "
    "group by ccode,cexch_name,ccus_id order by ccode,cexch_name,ccus_id ",
    "initYear", "lastYear", "yearCap"};

// of the accounts that the operator chose to carry by detail
inline constexpr Sql sumChosenCustomerItems{
    "current_account_checks.sum_chosen_customer_items",
    "select ccode,isnull(cexch_name,'') as cexch_name,ccus_id,sum(md) as summd,sum(mc) as summc,"
    "sum(md_f) as summd_f,sum(mc_f) as summc_f from gl_accvouch where not ccus_id is null "
    " and iyear >={initYear} and  iyear<={lastYear}    and ( not iflagperson is null  and wllqperiod < {yearCap} ) "
    " and gl_accvouch.ccode in ({codes}) "
    "group by ccode,cexch_name,ccus_id order by ccode,cexch_name,ccus_id ",
    "initYear",
    "lastYear",
    "yearCap",
    "codes"};

inline constexpr Sql sumSupplierItems{
    "current_account_checks.sum_supplier_items",
    "select ccode,isnull(cexch_name,'') as cexch_name,csup_id,sum(md) as summd,sum(mc) as summc,"
    "sum(md_f) as summd_f,sum(mc_f) as summc_f from gl_accvouch where not csup_id is null "
    " and iyear >={initYear} and  iyear<={lastYear}    and ( not iflagperson is null  and wllqperiod < {yearCap} ) "
    "group by ccode,cexch_name,csup_id order by ccode,cexch_name,csup_id ",
    "initYear", "lastYear", "yearCap"};

inline constexpr Sql sumChosenSupplierItems{
    "current_account_checks.sum_chosen_supplier_items",
    "select ccode,isnull(cexch_name,'') as cexch_name,csup_id,sum(md) as summd,sum(mc) as summc,"
    "sum(md_f) as summd_f,sum(mc_f) as summc_f from gl_accvouch where not csup_id is null "
    " and iyear >={initYear} and  iyear<={lastYear}    and ( not   iflagperson is null  and wllqperiod < {yearCap}  ) "
    "and gl_accvouch.ccode in ({codes}) "
    "group by ccode,cexch_name,csup_id order by ccode,cexch_name,csup_id ",
    "initYear",
    "lastYear",
    "yearCap",
    "codes"};

inline constexpr const SqlText* all[] = {&sumPersonItems, &sumCustomerItems, &sumChosenCustomerItems, &sumSupplierItems,
                                         &sumChosenSupplierItems};

}  // namespace gljz::current_account_checks_sql
