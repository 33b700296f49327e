#pragma once

#include "core/sql.h"

namespace gljz::opening_row_sql {

// new year: the opening row of a balance among the vouchers. cexch and amounts bring their commas; amounts are debit
// and credit side, each amount, foreign amount and quantity. keys are the auxiliaries, the name and the user-defined
// columns.
inline constexpr Sql insertOpeningRow{
    "opening_row.insert_opening_row",
    "insert into gl_accvouch(iyear,iPeriod,inid,dbill_date,idoc,cbook,ibook,cDigest,cCode,cexch_name,md,md_f,nd_s,mc,"
    "mc_f,nc_s,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,cName,cDefine1,cDefine2,cDefine3,cDefine4,"
    "cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,"
    "cDefine16) values({curYear},0,1,'{openDate}',0,N'{operator}',1,N'{digest}',N'{newCode}',{cexch}{amounts}{keys})",
    "curYear",
    "openDate",
    "operator",
    "digest",
    "newCode",
    "cexch",
    "amounts",
    "keys"};

inline constexpr const SqlText* all[] = {&insertOpeningRow};

}  // namespace gljz::opening_row_sql
