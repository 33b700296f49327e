#pragma once

#include "core/sql.h"

namespace gljz::bank_statements_sql {

// fragment of the selections: only lines that have not been reconciled
inline constexpr Sql openLines{"bank_statements.open_lines", " and rp_bankrecp.iflag is null "};

// new year: nothing reads it
inline constexpr Sql probeNewYear{"bank_statements.probe_new_year", "select * from rp_bankrecp where iyear={curYear}",
                                  "curYear"};

// new year: everything, or everything but the protected rows
inline constexpr Sql deleteYear{"bank_statements.delete_year", "delete from rp_bankrecp where iyear={curYear}",
                                "curYear"};
inline constexpr Sql deleteUnprotected{"bank_statements.delete_unprotected",
                                       "delete from rp_bankrecp where iyear={curYear} and ibegin<>2", "curYear"};

// closing year: the accounts that have a line
inline constexpr Sql selectAccounts{
    "bank_statements.select_accounts",
    "select distinct rp_bankrecp.ccode,code.ccode_name from code inner join rp_bankrecp on "
    "code.ccode=rp_bankrecp.ccode "
    " and code.iyear=rp_bankrecp.iyear where code.bend=1 and code.be=1 and not rp_bankrecp.ccode is null "
    "and code.iyear={lastYear} {filter}",
    "lastYear", "filter"};

// closing year: an account's opening rows, whatever their currency
inline constexpr Sql selectOpening{"bank_statements.select_opening",
                                   "select * from rp_bankrecp where ccode='{ccode}' and ibegin=0 and iyear={lastYear}",
                                   "ccode", "lastYear"};

// new year: the account's normal side
inline constexpr Sql selectSide{"bank_statements.select_side",
                                "select bd_c from code where iyear={curYear} and ccode='{ccode}' order by ccode",
                                "curYear", "ccode"};

// closing year: all opening rows of the account but one
inline constexpr Sql deleteOtherOpenings{
    "bank_statements.delete_other_openings",
    "delete rp_bankrecp where ccode='{ccode}' and ibegin=0 and iyear={lastYear} and i_id<>{i_id}", "ccode", "lastYear",
    "i_id"};

// closing year: the lines, an account's and a currency's together
inline constexpr Sql selectLines{
    "bank_statements.select_lines",
    "select rp_bankrecp.*,code.ccode_name from code inner join rp_bankrecp on code.ccode=rp_bankrecp.ccode "
    " and code.iyear=rp_bankrecp.iyear where code.bend=1 and code.be=1 and not rp_bankrecp.ccode is null "
    "and not rp_bankrecp.bdelete=1 and code.iyear={lastYear} {filter} order by code.ccode,rp_bankrecp.cexch_name ",
    "lastYear", "filter"};

// new year: the account whose reconciliation begins anew
inline constexpr Sql selectCode{"bank_statements.select_code",
                                "select * from code where iyear={curYear} and ccode='{ccode}'", "curYear", "ccode"};

// closing year: the account's lines since its reconciliation began, debit plus and credit minus
inline constexpr Sql sumLines{
    "bank_statements.sum_lines",
    "select sum(case when bd_c=1 then mmoney else -mmoney end) as zd1 from RP_bankrecp where iyear={lastYear} "
    "and ccode= '{ccode}' and ibegin<>0 and ddate>='{dbegin}'  {currency}",
    "lastYear",
    "ccode",
    "dbegin",
    "currency"};

// new year: one line
inline constexpr Sql insertLine{"bank_statements.insert_line",
                                "insert into RP_bankrecp(iyear,ibegin,ddate,mmoney,mbalance,ccode,csettle,cn_id,bd_c,"
                                "iflag,bdelete,cBankReconNo,cexch_name,cdigest) Values({values})",
                                "values"};

inline constexpr const SqlText* all[] = {&probeNewYear,  &deleteYear, &deleteUnprotected,   &selectAccounts,
                                         &selectOpening, &selectSide, &deleteOtherOpenings, &selectLines,
                                         &selectCode,    &sumLines,   &insertLine};

}  // namespace gljz::bank_statements_sql
