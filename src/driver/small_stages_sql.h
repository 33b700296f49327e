#pragma once

#include "core/sql.h"

namespace gljz::small_stages_sql {

// Cash-flow item mappings. The kind of item has to exist in the new year, while the items are looked up in the closing
// year; the two kinds, 0 the items of class 98 and 1 those of class ZF, do not need each other.
inline constexpr Sql deleteCashItems{"small_stages.delete_cash_items",
                                     "delete from {curDB}..GL_CashItemDataSource where iyear={curYear}", "curDB",
                                     "curYear"};

inline constexpr Sql selectClass98{
    "small_stages.select_class_98",
    "select 1 from sysobjects where id=object_id('fitemss98') and OBJECTPROPERTY(id, N'IsUserTable') = 1 "};

inline constexpr Sql copyClass98{
    "small_stages.copy_class_98",
    "insert into {curDB}..GL_CashItemDataSource(cItemCode,bDataStyle,cDataSource,bDir,bRelation,dStartDate,dEndDate,"
    "iyear)  select a.cItemCode,a.bDataStyle,a.cDataSource,a.bDir,a.bRelation,a.dStartDate,a.dEndDate,{curYear}  "
    "from {lastDB}..GL_CashItemDataSource a inner join {lastDB}..fitemss98 b  on a.cItemCode=b.citemcode "
    "and a.bDataStyle=0 and a.iyear={lastYear}",
    "curDB",
    "curYear",
    "lastDB",
    "lastYear"};

inline constexpr Sql selectClassZF{
    "small_stages.select_class_zf",
    "select 1 from sysobjects where id=object_id('fitemssZF') and OBJECTPROPERTY(id, N'IsUserTable') = 1 "};

inline constexpr Sql copyClassZF{
    "small_stages.copy_class_zf",
    "insert into {curDB}..GL_CashItemDataSource(cItemCode,bDataStyle,cDataSource,bDir,bRelation,dStartDate,dEndDate,"
    "iyear)  select a.cItemCode,a.bDataStyle,a.cDataSource,a.bDir,a.bRelation,a.dStartDate,a.dEndDate,{curYear}  "
    "from {lastDB}..GL_CashItemDataSource a inner join {lastDB}..fitemssZF b  on a.cItemCode=b.citemcode "
    "and a.bDataStyle=1 and a.iyear={lastYear}",
    "curDB",
    "curYear",
    "lastDB",
    "lastYear"};

// Groups of multi-column ledgers, by position: the year stands last.
inline constexpr Sql deleteGroups{"small_stages.delete_groups", "delete from GL_bmultiGroup where iyear={curYear}",
                                  "curYear"};

inline constexpr Sql copyGroups{
    "small_stages.copy_groups",
    "insert into GL_bmultiGroup select [cname],[ctext],[cass],[cclass],[ctype],[igroupnum],[csubname],[ccode],[cdef],"
    "[bye],[isubnum],[bd_c],[ccodes],[cass_code],[cdef_name],[cnames],[is_f],[bsingle],[bdouble],{curYear} "
    "from [{lastDB}]..[GL_bmultiGroup] where iyear={lastYear}",
    "curYear", "lastDB", "lastYear"};

// Clearing of a profit-and-loss account and all accounts below it. First everything that the year has of it goes.
inline constexpr Sql clearAccSum{"small_stages.clear_acc_sum",
                                 "Delete From  {curDB}..GL_accsum Where ccode Like '{code}%' and iyear={curYear}",
                                 "curDB", "code", "curYear"};

inline constexpr Sql clearAccAss{"small_stages.clear_acc_ass",
                                 "Delete From {curDB}..GL_accass Where ccode Like '{code}%' and iyear={curYear}",
                                 "curDB", "code", "curYear"};

inline constexpr Sql clearAccMultiAss{
    "small_stages.clear_acc_multi_ass",
    "Delete From {curDB}..GL_accMultiass Where ccode Like '{code}%' and iyear={curYear}", "curDB", "code", "curYear"};

inline constexpr Sql clearOpeningDetails{"small_stages.clear_opening_details",
                                         "Delete From {curDB}..GL_accvouch Where ccode Like '{code}%' and iperiod=0 "
                                         "and iyear={curYear}",
                                         "curDB", "code", "curYear"};

inline constexpr Sql clearQcUserDef{"small_stages.clear_qc_user_def",
                                    "Delete From {curDB}..GL_QcUserDef Where ccode Like '{code}%' and iyear={curYear}",
                                    "curDB", "code", "curYear"};

// Then each voucher line of the years of this database before the login's year that is open or cleared in that year or
// later gets an opening detail that cancels it. Intended: period 0, the clearing mark is set, the currency is the
// account's own, coutno_id is Null, and only the six amounts change their sign.
inline constexpr Sql insertCancelling{
    "small_stages.insert_cancelling",
    "INSERT INTO [GL_accvouch]([iperiod], [csign], [isignseq], [ino_id], [inid], [dbill_date], [idoc], [cbill], "
    "[ccheck], [cbook], [ibook], [ccashier], [iflag], [ctext1], [ctext2], [cdigest], [ccode], [cexch_name],[md], "
    "[mc], [md_f],[mc_f], [nfrat], [nd_s], [nc_s], [csettle], [cn_id], [dt_date], [cdept_id], [cperson_id], "
    "[ccus_id], [csup_id], [citem_id], [citem_class], [cname], [ccode_equal], [iflagbank], [iflagPerson], [bdelete], "
    "[coutaccset], [ioutyear], [coutsysname], [coutsysver], [doutbilldate], [ioutperiod], [coutsign], [coutno_id], "
    "[doutdate], [coutbillsign], [coutid], [bvouchedit], [bvouchAddordele], [bvouchmoneyhold], [bvalueedit], "
    "[bcodeedit], [ccodecontrol], [bPCSedit], [bDeptedit], [bItemedit], [bCusSupInput], [cDefine1], [cDefine2], "
    "[cDefine3], [cDefine4], [cDefine5], [cDefine6], [cDefine7], [cDefine8], [cDefine9], [cDefine10], [cDefine11], "
    "[cDefine12], [cDefine13], [cDefine14], [cDefine15], [cDefine16], [dReceive], [cWLDZFlag], [dWLDZTime], "
    "[bFlagOut], [iBG_OverFlag], [cBG_Auditor], [dBG_AuditTime], [cBG_AuditOpinion], [bWH_BgFlag], [ssxznum], "
    "[CErrReason], [BG_AuditRemark], [cBudgetBuffer], [iBG_ControlResult], [NCVouchID], [daudit_date], [RowGuid], "
    "[cBankReconNo], [iyear], [iYPeriod], [wllqDate], [wllqPeriod]) select 0, [csign], [isignseq], [ino_id], [inid], "
    "[dbill_date], [idoc], [cbill], [ccheck], [cbook], [ibook], [ccashier], [iflag], [ctext1], [ctext2], [cdigest], "
    "gl_accvouch.[ccode], code.[cexch_name], -[md], -[mc], -[md_f], -[mc_f], [nfrat], -[nd_s], -[nc_s], [csettle], "
    "[cn_id], [dt_date], [cdept_id], [cperson_id], [ccus_id], [csup_id], [citem_id], [citem_class], [cname], "
    "[ccode_equal], [iflagbank], 1, [bdelete], [coutaccset], [ioutyear], [coutsysname], [coutsysver], [doutbilldate],"
    " [ioutperiod], [coutsign], null as [coutno_id], [doutdate], [coutbillsign], [coutid], [bvouchedit], "
    "[bvouchAddordele], [bvouchmoneyhold], [bvalueedit], [bcodeedit], [ccodecontrol], [bPCSedit], [bDeptedit], "
    "[bItemedit], [bCusSupInput], [cDefine1], [cDefine2], [cDefine3], [cDefine4], [cDefine5], [cDefine6], [cDefine7],"
    " [cDefine8], [cDefine9], [cDefine10], [cDefine11], [cDefine12], [cDefine13], [cDefine14], [cDefine15], "
    "[cDefine16], [dReceive], [cWLDZFlag], [dWLDZTime], [bFlagOut], [iBG_OverFlag], [cBG_Auditor], [dBG_AuditTime], "
    "[cBG_AuditOpinion], [bWH_BgFlag], [ssxznum], [CErrReason], [BG_AuditRemark], [cBudgetBuffer], "
    "[iBG_ControlResult], [NCVouchID], [daudit_date], [RowGuid], [cBankReconNo], {loginYear}, {loginYear}00, case "
    "when iflagperson is not null then  [wllqDate] else '{date}'  end  as wllqDate, case when iflagperson is not "
    "null then  [wllqPeriod] else {loginYear}00  end  as wllqPeriod  from gl_accvouch  "
    "inner join code on gl_accvouch.iYear = code.iYear and gl_accvouch.ccode=code.ccode    "
    "where gl_accvouch.ccode like '{code}%'  and gl_accvouch.iperiod<13   "
    "and ( (iflagperson is not null and left(cast(wllqPeriod as  nvarchar(8)),4)>=N'{loginYear}') or iflagperson is "
    "null)  and gl_accvouch.iYear>={startYear} and gl_accvouch.iYear<{loginYear}",
    "loginYear",
    "date",
    "code",
    "startYear"};

// And the lines themselves count as cleared at the opening of the login's year. The same filter, so this comes second.
inline constexpr Sql markCleared{
    "small_stages.mark_cleared",
    "update gl_accvouch set iflagperson=1,wllqPeriod={loginYear}00,wllqDate='{date}' "
    "from gl_accvouch  inner join code on gl_accvouch.iYear = code.iYear "
    "and gl_accvouch.ccode=code.ccode    where gl_accvouch.ccode like '{code}%'  "
    "and gl_accvouch.iperiod<13   and ( (iflagperson is not null and left(cast(wllqPeriod as  nvarchar(8)),"
    "4)>=N'{loginYear}') or iflagperson is null)  and gl_accvouch.iYear>={startYear} "
    "and gl_accvouch.iYear<{loginYear}",
    "loginYear",
    "date",
    "code",
    "startYear"};

inline constexpr const SqlText* all[] = {&deleteCashItems,  &selectClass98,    &copyClass98,         &selectClassZF,
                                         &copyClassZF,      &deleteGroups,     &copyGroups,          &clearAccSum,
                                         &clearAccAss,      &clearAccMultiAss, &clearOpeningDetails, &clearQcUserDef,
                                         &insertCancelling, &markCleared};

}  // namespace gljz::small_stages_sql
