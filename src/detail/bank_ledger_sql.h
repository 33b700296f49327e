#pragma once

#include "core/sql.h"

namespace gljz::bank_ledger_sql {

// Fragments of the statements below: which marks of the bank reconciliation still count. Open lines only, or also those
// marked 1 to 24; a mark above 24 never does.
inline constexpr Sql openLines{"bank_ledger.open_lines",
                               " and (gl_accvouch.iFlagBank Is NULL Or gl_accvouch.iFlagBank = 0) "};
inline constexpr Sql openAndMarkedLines{
    "bank_ledger.open_and_marked_lines",
    " and (gl_accvouch.iFlagBank Is NULL Or gl_accvouch.iFlagBank = 0 Or gl_accvouch.iFlagBank >= 1 "
    "And gl_accvouch.iFlagBank <= 24) "};

// closing year: a zero balance row of period 20 for every bank account that has a line but no such row yet, one for
// each currency of its lines. The defaults of the columns that are not named make the next run find it.
inline constexpr Sql insertMarkers{
    "bank_ledger.insert_markers",
    " insert into gl_accvouch(iperiod,iyear,inid,dbill_date,idoc,iBook,cDIgest,ccode,md,mc,md_f,mc_f,nd_s,nc_s,nfrat,"
    "cbankreconno,cexch_name)  select distinct 20,{lastYear},0,'{today}',0,1,' ',code.ccode,0,0,0,0,0,0,0,Null,"
    "gl_accvouch.cexch_name from code inner join gl_accvouch on code.ccode=gl_accvouch.ccode and "
    "code.iyear=gl_accvouch.iyear  where code.bend=1 and code.be=1 and not gl_accvouch.ccode is null  and "
    "code.iyear={lastYear} {bankFilter} and gl_accvouch.iflag is null   and code.ccode not in ( select ccode  from "
    "gl_accvouch  where ( not bdelete=1 ) and iflag is null and iperiod=20 and iyear={lastYear} {bankFilter} ) ",
    "lastYear", "today", "bankFilter"};

// new year: nothing reads it
inline constexpr Sql probeNewYear{"bank_ledger.probe_new_year", "select top 1 * from gl_accvouch where iyear={curYear}",
                                  "curYear"};

// new year, although it asks for the closing year's lines: how many there are decides on the cursor
inline constexpr Sql countLines{
    "bank_ledger.count_lines",
    "select count(1) from code inner join gl_accvouch on code.ccode=gl_accvouch.ccode and "
    "code.iyear=gl_accvouch.iyear  where code.bend=1 and code.be=1 and not gl_accvouch.ccode is null and "
    "not gl_accvouch.bdelete=1  and code.iyear={lastYear} {bankFilter} and gl_accvouch.iflag is null",
    "lastYear", "bankFilter"};

// closing year: the lines of any period, an account's and a currency's together
inline constexpr Sql selectLines{
    "bank_ledger.select_lines",
    "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode=gl_accvouch.ccode  and "
    "code.iyear=gl_accvouch.iyear where code.bend=1 and code.be=1 and not gl_accvouch.ccode is null and "
    "not gl_accvouch.bdelete=1  and code.iyear={lastYear} {bankFilter} and gl_accvouch.iflag is null "
    "order by gl_accvouch.ccode,gl_accvouch.cexch_name",
    "lastYear", "bankFilter"};

// new year, once an account: its reconciliation begins with the year and ends as in the closing year
inline constexpr Sql updateBegin{"bank_ledger.update_begin",
                                 "update code set dbegin='{startDate}' where iyear={curYear}   and  ccode='{ccode}'",
                                 "startDate", "curYear", "ccode"};
inline constexpr Sql updateEnd{
    "bank_ledger.update_end",
    "update code set dend=b.dend from code inner join code b on code.ccode=b.ccode where code.ccode='{ccode}' and "
    "code.iyear={curYear} and b.iyear={lastYear}",
    "ccode", "curYear", "lastYear"};

// closing year: the account's movement since its reconciliation began, in amounts or ("_f") foreign amounts
inline constexpr Sql sumMovement{
    "bank_ledger.sum_movement",
    "select sum(md{f}) as zd1, sum(mc{f}) as zd2 from GL_AccVouch where iyear={lastYear}  and ccode= '{ccode}' and "
    "iperiod<>20 and iperiod<>21 and dbill_date>='{dbegin}' and gl_accvouch.iflag is null {currency}",
    "f",
    "lastYear",
    "ccode",
    "dbegin",
    "currency"};

// new year: one line
inline constexpr Sql insertLine{
    "bank_ledger.insert_line",
    "insert into gl_accvouch(iyear,iPeriod,csign,iSignSeq,cexch_name,md_f,mc_f,nfrat,nd_s,nc_s,"
    "cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,cname,iflagperson,csettle,"
    "iNo_id,inid,dbill_date,idoc,cbill,ccheck,cbook,ibook,ccashier,iflag,cbankreconno,"
    "ctext1,ctext2,cDigest,cCode,md,mc,cn_id,dt_date,ccode_equal,iflagbank,bDelete,"
    "coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign,"
    "doutdate,coutbillsign,coutid,bvouchedit,bvouchaddordele,bvouchmoneyhold,bvalueedit,ccodecontrol,"
    "bpcsedit,bdeptedit,bitemedit,bcussupinput,"
    "cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,"
    "cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,cdefine14,cdefine15,cdefine16) Values({values})",
    "values"};

inline constexpr const SqlText* all[] = {&insertMarkers, &probeNewYear, &countLines,  &selectLines,
                                         &updateBegin,   &updateEnd,    &sumMovement, &insertLine};

}  // namespace gljz::bank_ledger_sql
