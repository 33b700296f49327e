#pragma once

#include "core/sql.h"

namespace gljz::multi_auxiliary_totals_sql {

// closing year: balances of last-level accounts at the end of period 12, those without any auxiliary too. The foreign
// amount counts only with a currency, the quantity only with a measure unit; the filter looks at the raw columns.
inline constexpr Sql selectBalances{
    "multi_auxiliary_totals.select_balances",
    "select code.ccode,code.ccode_name,gl_accMultiass.cdept_id,gl_accMultiass.cperson_id,gl_accMultiass.ccus_id,"
    "gl_accMultiass.csup_id,gl_accMultiass.cName,isnull(gl_accmultiass.cexch_name,'') as cexch_name,"
    "gl_accMultiass.citem_class,gl_accMultiass.citem_id,gl_accMultiass.cdefine1,gl_accMultiass.cDefine2,"
    "gl_accMultiass.cdefine3,gl_accMultiass.cDefine4,gl_accMultiass.cdefine5,gl_accMultiass.cDefine6,"
    "gl_accMultiass.cdefine7,gl_accMultiass.cDefine8,gl_accMultiass.cdefine9,gl_accMultiass.cDefine10,"
    "gl_accMultiass.cdefine11,gl_accMultiass.cDefine12,gl_accMultiass.cdefine13,gl_accMultiass.cDefine14,"
    "gl_accMultiass.cdefine15,gl_accMultiass.cDefine16,gl_accMultiass.me,(case when gl_accmultiass.cexch_name is "
    "null then 0 else gl_accMultiass.me_f end) as me_f,(case when code.cmeasure is null then 0 else "
    "gl_accMultiass.ne_s end) as ne_s from code inner join gl_accMultiass on code.ccode=gl_accMultiass.ccode  and "
    "code.iyear=gl_accmultiass.iyear where not gl_accMultiass.ccode is null and gl_accMultiass.iperiod=12 and "
    "code.bend=1 and (gl_accMultiass.me<>0 or gl_accMultiass.me_f<>0 or gl_accMultiass.ne_s<>0)  and code.iyear "
    "={lastYear} order by gl_accMultiass.ccode",
    "lastYear"};

// new year: everything that stands for the year goes. (The opening rows of the vouchers are gone by now.)
inline constexpr Sql deleteYear{"multi_auxiliary_totals.delete_year",
                                "delete from gl_accMultiass where iyear={curYear}", "curYear"};

// new year: opened and closed, nothing is read from it
inline constexpr Sql selectTarget{"multi_auxiliary_totals.select_target",
                                  "select top 1 * from gl_accMultiass where iyear={curYear}", "curYear"};

// new year: one period of one balance; twelve of them are a batch. cexch and keys bring their commas; keys are the
// auxiliaries, the name and the user-defined columns.
inline constexpr Sql insertPeriod{
    "multi_auxiliary_totals.insert_period",
    "Insert into gl_accMultiass(iyear,cCode,cexch_name,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,"
    "cName,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,"
    "cDefine12,cDefine13,cDefine14,cDefine15,cDefine16,iPeriod,mb,Me,mb_f,me_f,nb_s,ne_s) Values({curYear} ,"
    "N'{newCode}',{cexch}{keys}{iPeriod},{me},{me},{foreign},{foreign},{quantity},{quantity})\r\n",
    "curYear",
    "newCode",
    "cexch",
    "keys",
    "iPeriod",
    "me",
    "foreign",
    "quantity"};

// new year: has the mapping made two rows of one key? The twelve rows of a balance come together, so period 1 tells.
inline constexpr Sql selectDuplicate{
    "multi_auxiliary_totals.select_duplicate",
    "select top 1 ccode,cexch_name,cdept_id,cperson_id,citem_class,citem_id,ccus_id,csup_id,cname,cdefine1,cdefine2,"
    "cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,"
    "cdefine14,cdefine15,cdefine16,iperiod,count(iperiod) as repeatRow  from gl_accmultiass where iyear={curYear} "
    "and iperiod=1 group by ccode,cexch_name,cdept_id,cperson_id,citem_class,citem_id,ccus_id,csup_id,cname,cdefine1,"
    "cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,"
    "cdefine14,cdefine15,cdefine16,iperiod having count(iperiod)>=2",
    "curYear"};

// new year: rows of one key become one, with summed amounts. The work table stands until the connection ends. The join
// leaves out rows of accounts that the new year does not have.
inline constexpr Sql dropWorkTable{
    "multi_auxiliary_totals.drop_work_table",
    " IF OBJECT_ID(N'tempdb..#gl_accmultiass', N'U') IS NOT NULL  DROP TABLE #gl_accmultiass "};

inline constexpr Sql collectSums{
    "multi_auxiliary_totals.collect_sums",
    "select {curYear} as iyear,cexch_name,ccode,cdept_id,cperson_id,citem_class,citem_id,ccus_id,csup_id,cname,"
    "cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,"
    "cdefine13,cdefine14,cdefine15,cdefine16,iperiod,sum(mb) as mb,sum(mb_f) as mb_f,sum(nb_s ) as nb_s,sum(me) as "
    "me,sum(me_f) as me_f,sum(ne_s) as ne_s,sum(md) as md,sum(md_f) as md_f,sum(nd_s) as nd_s,sum(mc) as mc,"
    "sum(mc_f) as mc_f,sum(nc_s) as nc_s,sum(addmd) as addmd,sum(addmd_f) as addmd_f,sum(addnd_s) as addnd_s,"
    "sum(addmc) as addmc,sum(addmc_f) as addmc_f,sum(addnc_s) as addnc_s into #gl_accmultiass  from gl_accmultiass "
    "where iyear={curYear} group by cexch_name,ccode,cdept_id,cperson_id,citem_class,citem_id,ccus_id,csup_id,cname,"
    "cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,"
    "cdefine13,cdefine14,cdefine15,cdefine16,iperiod",
    "curYear"};

inline constexpr Sql deleteUnmerged{"multi_auxiliary_totals.delete_unmerged",
                                    "delete from gl_accmultiass where iyear={curYear}", "curYear"};

inline constexpr Sql insertMerged{
    "multi_auxiliary_totals.insert_merged",
    "insert into gl_accmultiass(iyear,[ccode], [cexch_name], [cdept_id], [cperson_id], [ccus_id], [csup_id], "
    "[citem_class], [citem_id],cname,cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,"
    "cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,cdefine14,cdefine15,cdefine16, [iperiod], [mb], [md], [mc], "
    "[me], [mb_f], [md_f], [mc_f], [me_f], [nb_s], [nd_s], [nc_s], [ne_s],addmd,addmd_f,addnd_s,addmc,addmc_f,"
    "addnc_s) select {curYear},#gl_accmultiass.[ccode],#gl_accmultiass.cexch_name, [cdept_id], [cperson_id], "
    "[ccus_id], [csup_id], [citem_class], [citem_id],cname,cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,"
    "cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,cdefine14,cdefine15,cdefine16, [iperiod], "
    "[mb], [md], [mc],[me], [mb_f], [md_f], [mc_f], [me_f], [nb_s], [nd_s], [nc_s], [ne_s],addmd,addmd_f,addnd_s,"
    "addmc,addmc_f,addnc_s  from #gl_accmultiass inner join code on #gl_accmultiass.iYear=code.iYear and  "
    "#gl_accmultiass.ccode=code.ccode",
    "curYear"};

inline constexpr const SqlText* all[] = {&selectBalances, &deleteYear,      &selectTarget,
                                         &insertPeriod,   &selectDuplicate, &dropWorkTable,
                                         &collectSums,    &deleteUnmerged,  &insertMerged};

}  // namespace gljz::multi_auxiliary_totals_sql
