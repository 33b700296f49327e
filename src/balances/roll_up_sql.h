#pragma once

#include "core/sql.h"

namespace gljz::roll_up_sql {

// given connection, before and after: the work table of parent accounts
inline constexpr Sql dropWorkTable{"roll_up.drop_work_table", "if  object_id('tempdb..#T') is not null drop table #T"};

// given connection, one batch: collects the parents, removes their rows, inserts their signed sums, splits these into
// magnitude and direction. The update's right-hand sides see the row as it stood: mb and me lose their sign, the
// other four columns keep one that follows the amount. Quantities are summed without a sign: that is intended.
inline constexpr Sql rebuildParents{
    "roll_up.rebuild_parents",
    "select ccode,iyear into #T from code where bend=0 and iyear={year}\r\n"
    "delete gl_accsum from #T where gl_accsum.iyear=#T.iyear and gl_accsum.ccode=#T.ccode\r\n"
    "Insert into Gl_AccSum(iyear,cCode,cExch_Name,iPeriod,cBegind_c,cBegind_c_engl,nb_s,mb_f,mb,nd_s, md_f,md,nc_s,"
    "mc_f,mc,cEndd_c,cEndd_c_engl,ne_s,me_f,me) Select S.iyear,upcode as cCode,"
    "{currencyColumn}"
    "S.iPeriod,'借','Dr', sum(case when u.cmeasure is null then 0 else nb_s end) as nb_s,"
    " sum(case when {otherCurrency} then 0 else (case when cBegind_c='贷' then -1 else 1 end)*mb_f end) as mb_f,"
    " sum((case when cBegind_c='贷' then -1 else 1 end)*mb) as mb,"
    " 0 as nd_s,"
    "sum(case when {otherCurrency} then 0 else md_f end) as md_f,"
    "sum(md) as md,"
    "0 as nc_s,"
    "sum(case when {otherCurrency} then 0 else mc_f end) as mc_f,"
    "sum(mc) as mc,"
    " '借','Dr',sum(case when u.cmeasure is null then 0 else ne_s end) as ne_s,"
    " sum(case when {otherCurrency} then 0 else (case when cEndd_c='贷' then -1 else 1 end)*me_f end) as  me_f,"
    " sum((case when cEndd_c='贷' then -1 else 1 end)*me) as me"
    " From GL_AccSum S  inner join (select #T.ccode as upcode,code.ccode,code.cexch_name,code.iyear from Code inner "
    "join"
    " #T on code.iyear=#T.iyear and code.ccode like #T.ccode+'%' where bend=1) C on S.cCode=C.cCode and S.iyear=c.iyear"
    "  inner join code u on C.upcode=u.ccode and C.iyear=u.iyear  Group by S.iyear,S.iPeriod,upcode"
    "{currencyGroup}\r\n"
    "Update gl_accsum Set"
    " cbegind_c=(case when mb>0 then '借'  when mb=0 then '平' else '贷' end),"
    "cbegind_c_engl=(case when mb>0 then 'Dr'  when mb=0 then '-' else 'Cr' end),"
    "mb=abs(mb),"
    "mb_f=(case when mb>=0 then mb_f else -mb_f end), "
    " nb_s=(case when mb>=0 then nb_s else -nb_s end), "
    " cendd_c=(case when me>0 then '借'  when me=0 then '平' else '贷' end),"
    "cendd_c_engl=(case when me>0 then 'Dr'  when me=0 then '-' else 'Cr' end),"
    "me=abs(me),"
    "me_f=(case when me>=0 then me_f else -me_f end), "
    " ne_s=(case when me>=0 then ne_s else -ne_s end)  "
    " From gl_accsum, #T where gl_accsum.iyear=#T.iyear and gl_accsum.ccode=#T.ccode\r\n",
    "year",
    "currencyColumn",
    "otherCurrency",
    "currencyGroup"};

// Fragments with several currencies an account: a parent with a currency gets one row per child currency.
inline constexpr Sql severalColumn{"roll_up.several_column",
                                   "case when u.cExch_Name is null then u.cExch_Name else "
                                   "isnull(S.cexch_name,N'{cDefaultCurrency}') end as cexch_name,",
                                   "cDefaultCurrency"};
inline constexpr Sql severalOther{"roll_up.several_other", "c.cExch_Name is null"};
inline constexpr Sql severalGroup{
    "roll_up.several_group",
    ",case when u.cExch_Name is null then u.cExch_Name else isnull(S.cexch_name,N'{cDefaultCurrency}') end ",
    "cDefaultCurrency"};

// Fragments with one currency an account. A Null on either side makes the comparison unknown, and the child's foreign
// amount then counts: that is intended.
inline constexpr Sql oneColumn{"roll_up.one_column", " u.cexch_name,"};
inline constexpr Sql oneOther{"roll_up.one_other", "c.cExch_Name<>u.cexch_name"};
inline constexpr Sql oneGroup{"roll_up.one_group", ",u.cexch_name "};

inline constexpr const SqlText* all[] = {&dropWorkTable, &rebuildParents};

}  // namespace gljz::roll_up_sql
