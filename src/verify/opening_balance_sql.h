#pragma once

#include "core/sql.h"

namespace gljz::opening_balance_sql {

// All on the new year's connection. The work table has one name on the whole server, whoever runs: a second run at the
// same time builds the same table anew. That is accepted.
inline constexpr Sql dropWorkTable{"opening_balance.drop_work_table", "DROP TABLE tempdb..jztmp"};

inline constexpr Sql createWorkTable{
    "opening_balance.create_work_table",
    "CREATE TABLE tempdb..jztmp ([type] [varchar] (1) NOT NULL ,[ccode] [varchar] (80) NOT NULL ,"
    "cexch_name nvarchar(8) Null,[cbegind_c] [nvarchar] (12) NOT NULL ,[mb] [money] NULL ,[mb_f] [money] NULL ,"
    "[nb_s] [float] NULL ,[cperson_id] [varchar] (40) NULL ,[citem_id] [varchar] (120) NULL)"};

// "A": the account totals, magnitudes with a direction word
inline constexpr Sql insertAccountTotals{
    "opening_balance.insert_account_totals",
    "insert into tempdb..jztmp select 'A' as type,gl_accsum.ccode as ccode,gl_accsum.cexch_name,"
    "gl_accsum.cbegind_c as cbegind_c,gl_accsum.mb as mb,gl_accsum.mb_f as mb_f,gl_accsum.nb_s as nb_s ,"
    "null as cperson_id,null as citem_id from gl_accsum where iYear={y}  and iperiod=1  "
    "and not (mb=0 and mb_f =0 and nb_s=0) order by ccode",
    "y"};

// "B", subsystem GF: sums of the auxiliary totals, debit positive
inline constexpr Sql insertAuxiliaryTotals{
    "opening_balance.insert_auxiliary_totals",
    "insert into tempdb..jztmp select 'B' as type,gl_accass.ccode as ccode,gl_accass.cexch_name,'' as cbegind_c,"
    "sum(case when gl_accass.cbegind_c=N'贷' then -gl_accass.mb else gl_accass.mb end) as mb,"
    "sum(case when gl_accass.cbegind_c=N'贷' then -gl_accass.mb_f else gl_accass.mb_f end) as mb_f,"
    "sum(case when gl_accass.cbegind_c=N'贷' then -gl_accass.nb_s else gl_accass.nb_s end) as nb_s,"
    "min(gl_accass.cperson_id) as cperson_id,min(gl_accass.citem_id) as citem_id from gl_accass "
    "where  iYear={y}  and iperiod=1 and {cus} and {sup} group by ccode,cexch_name "
    "having not (sum(case when gl_accass.cbegind_c=N'贷' then -gl_accass.mb else gl_accass.mb end)=0 "
    "and sum(case when gl_accass.cbegind_c=N'贷' then -gl_accass.mb_f else gl_accass.mb_f end)=0  "
    "and sum(case when gl_accass.cbegind_c=N'贷' then -gl_accass.nb_s else gl_accass.nb_s end)=0)",
    "y", "cus", "sup"};

// "B", subsystem GL: sums of the multi-auxiliary totals, which are signed as they stand
inline constexpr Sql insertMultiAuxiliaryTotals{
    "opening_balance.insert_multi_auxiliary_totals",
    "insert into tempdb..jztmp select 'B' as type,gl_accMultiAss.ccode as ccode,gl_accMultiAss.cexch_name,"
    "'' as cbegind_c,sum(gl_accMultiAss.mb) as mb,sum(gl_accMultiAss.mb_f) as mb_f,sum(gl_accMultiAss.nb_s) as nb_s,"
    "min(gl_accMultiAss.cperson_id) as cperson_id,min(gl_accMultiAss.citem_id) as citem_id from gl_accMultiAss "
    "where  iYear={y}  and iperiod=1 and {cus} and {sup} group by ccode,cexch_name "
    "having not (sum(gl_accMultiAss.mb)=0 and sum(gl_accMultiAss.mb_f) =0 and sum(gl_accMultiAss.nb_s)=0)  ",
    "y", "cus", "sup"};

// fragments of the two: partners whose items were not carried as balances do not count towards the sum
inline constexpr Sql everyPartner{"opening_balance.every_partner", "1=1"};
inline constexpr Sql noCustomer{"opening_balance.no_customer", "gl_accass.ccus_id is null"};
inline constexpr Sql noSupplier{"opening_balance.no_supplier", "gl_accass.csup_id is null"};
inline constexpr Sql noCustomerMulti{"opening_balance.no_customer_multi", "gl_accMultiAss.ccus_id is null"};
inline constexpr Sql noSupplierMulti{"opening_balance.no_supplier_multi", "gl_accMultiAss.csup_id is null"};

// each "A" row stands before the "B" row of its account and currency
inline constexpr Sql selectWorkTable{"opening_balance.select_work_table",
                                     "select * from tempdb..jztmp order by ccode,cexch_name,type"};

inline constexpr const SqlText* all[] = {
    &dropWorkTable,  &createWorkTable, &insertAccountTotals, &insertAuxiliaryTotals, &insertMultiAuxiliaryTotals,
    &selectWorkTable};

}  // namespace gljz::opening_balance_sql
