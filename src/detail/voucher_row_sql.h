#pragma once

#include "core/sql.h"

namespace gljz::voucher_row_sql {

// new year: one opening detail. The values stand in the order of the columns; i_id is the server's, and the clearing
// period and date of a line are not carried.
inline constexpr Sql insertVoucher{
    "voucher_row.insert_voucher",
    "insert into gl_accvouch(iyear,iPeriod,csign,iSignSeq,cexch_name,md_f,mc_f,nfrat,nd_s,nc_s,"
    "cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,cname,iflagperson,csettle,"
    "iNo_id,inid,dbill_date,idoc,cbill,ccheck,cbook,ibook,ccashier,iflag,"
    "ctext1,ctext2,cDigest,cCode,md,mc,cn_id,dt_date,ccode_equal,iflagbank,bDelete,"
    "coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign,"
    "doutdate,coutbillsign,coutid,bvouchedit,bvouchaddordele,bvouchmoneyhold,bvalueedit,ccodecontrol,"
    "bpcsedit,bdeptedit,bitemedit,bcussupinput,"
    "cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,"
    "cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,cdefine14,cdefine15,cdefine16) Values({values})",
    "values"};

inline constexpr const SqlText* all[] = {&insertVoucher};

}  // namespace gljz::voucher_row_sql
