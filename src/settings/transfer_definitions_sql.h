#pragma once

#include "core/sql.h"

namespace gljz::transfer_definitions_sql {

// new year: what was carried before goes. Amortisations and accruals (80, 81) stay until they are replaced, and so does
// the part of their run log that belongs to the new year.
inline constexpr Sql deleteOrdinary{"transfer_definitions.delete_ordinary",
                                    "delete from gl_bautotran where not (itype=80 or itype=81) "};

inline constexpr Sql deleteOtherYearsLog{"transfer_definitions.delete_other_years_log",
                                         "delete from gl_tranreport where  vouchyear<>{curYear}", "curYear"};

// Intended: the inner itype is the outer row's. A definition of type 80 or 81 stays when any row of the log has its
// ctran_id, whatever type that row has.
inline constexpr Sql deleteWithoutLog{
    "transfer_definitions.delete_without_log",
    "delete from gl_bautotran where  gl_bautotran.itype in (80,81) and  cast(gl_bautotran.itype as nvarchar(4))+'  "
    "'+ gl_bautotran.ctran_id  not in (select cast(gl_bautotran.itype as nvarchar(4))+'  '+ gl_tranreport.ctran_id "
    "from gl_tranreport)"};

// closing year: the keys of the definitions, and the rows of one with the names of their accounts, of whatever year.
// A row whose account is missing from the chart does not show up. The blank in front of the type is part of the text.
inline constexpr Sql selectKeys{"transfer_definitions.select_keys",
                                "select gl_bautotran.itype,gl_bautotran.ctran_id from gl_bautotran "
                                "group by gl_bautotran.itype,gl_bautotran.ctran_id"};

inline constexpr Sql selectRows{
    "transfer_definitions.select_rows",
    "select code.ccode,code.ccode_name,gl_bautotran.itype,gl_bautotran.ctran_id,gl_bautotran.inid,gl_bautotran.csign,"
    "gl_bautotran.ctext,gl_bautotran.idoc,gl_bautotran.ccode,gl_bautotran.cexch_name,gl_bautotran.cdigest,"
    "gl_bautotran.ccus_id,gl_bautotran.csup_id,gl_bautotran.cperson_id, gl_bautotran.cdept_id,"
    "gl_bautotran.citem_class,gl_bautotran.citem_id,gl_bautotran.bd_c,gl_bautotran.cformula,gl_bautotran.cformula_s,"
    "gl_bautotran.cformula_f from code ,gl_bautotran where code.ccode=gl_bautotran.ccode "
    "and gl_bautotran.itype=' {itype}' and gl_bautotran.ctran_id= '{ctran_id}' "
    "order by gl_bautotran.ccode",
    "itype", "ctran_id"};

// new year: an earlier copy of an amortisation or accrual
inline constexpr Sql selectEarlierCopy{"transfer_definitions.select_earlier_copy",
                                       "select * from gl_bautotran where itype= {itype} and ctran_id=N'{ctran_id}'",
                                       "itype", "ctran_id"};

inline constexpr Sql deleteEarlierCopy{"transfer_definitions.delete_earlier_copy",
                                       "delete from gl_bautotran where itype={itype} and ctran_id= N'{ctran_id}'",
                                       "itype", "ctran_id"};

// new year: all rows of one definition, their codes as they stand in the closing year
inline constexpr Sql copyDefinition{
    "transfer_definitions.copy_definition",
    "insert into gl_bautotran ([itype],[ctran_id],[inid],[csign],[ctext],[idoc],[ccode],[cexch_name],[cdigest],"
    "[ccus_id] ,[csup_id] ,[cperson_id],[cdept_id],[citem_class] ,[citem_id],[bd_c],[cformula],[cformula_s] ,"
    "[cformula_f], cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,"
    "cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16,RefVouchYear,[RefVouchPeriod],[RefVouchSign],"
    "[RefVouchNo],cplan,RefJe,[RefJe_f],[RefSL], [iCount],[Je],[Rate],[operater],[bAuto]  ) select [itype],"
    "[ctran_id],[inid],[csign],[ctext],[idoc],[ccode],[cexch_name],[cdigest],[ccus_id] ,[csup_id] ,[cperson_id],"
    "[cdept_id],[citem_class] ,[citem_id],[bd_c],[cformula],[cformula_s] ,[cformula_f],cDefine1,cDefine2,cDefine3,"
    "cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,"
    "cDefine15,cDefine16,RefVouchYear,[RefVouchPeriod],[RefVouchSign],[RefVouchNo],cplan,RefJe,[RefJe_f],[RefSL], "
    "[iCount],[Je],[Rate],[operater],[bAuto]   from [{lastDB}]..[gl_bautotran] "
    "where [{lastDB}]..[gl_bautotran].itype= {itype} and [{lastDB}]..[gl_bautotran].ctran_id= N'{ctran_id}' ",
    "lastDB", "itype", "ctran_id"};

// new year: the amount of the voucher that an amortisation or accrual starts from, when it is one of the closing year:
// the net of the voucher lines that fit its first row, in foreign money when the account has a currency. Intended: the
// join with code has no year.
inline constexpr Sql setReferencedAmount{
    "transfer_definitions.set_referenced_amount",
    "update gl_bautotran set RefJe_f=isum from gl_bautotran, (select B.itype,B.ctran_id,code.cexch_name,case when "
    "code.cexch_name is null then abs(sum(A.md-A.mc)) else abs(sum(A.md_f-A.mc_f)) end as isum  "
    "From [{lastDB}]..gl_bautotran B  inner join [{lastDB}]..GL_accvouch A on A.ccode=B.ccode   "
    "and (  B.cdept_id is null or  A.cdept_id=B.cdept_id  )      "
    "and (  B.cperson_id is null or A.cperson_id=B.cperson_id  )   "
    "and (  B.ccus_id is null or A.ccus_id=B.ccus_id )           "
    "and (  B.csup_id is null or A.csup_id=B.csup_id )   "
    "and (  B.cDefine1 is null or  A.cDefine1=B.cDefine1  )      "
    "and (  B.cDefine2 is null or  A.cDefine2=B.cDefine2  )   "
    "and (  B.cDefine3 is null or  A.cDefine3=B.cDefine3  )      "
    "and (  B.cDefine4 is null or  A.cDefine4=B.cDefine4  )    "
    "and (  B.cDefine5 is null or  A.cDefine5=B.cDefine5  )      "
    "and (  B.cDefine6 is null or  A.cDefine6=B.cDefine6  )    "
    "and (  B.cDefine7 is null or  A.cDefine7=B.cDefine7  )      "
    "and (  B.cDefine8 is null or  A.cDefine8=B.cDefine8  )   "
    "and (  B.cDefine9 is null or  A.cDefine9=B.cDefine9  )      "
    "and (  B.cDefine10 is null or  A.cDefine10=B.cDefine10  )  "
    "and (  B.cDefine11 is null or  A.cDefine11=B.cDefine11  )   "
    "and (  B.cDefine12 is null or  A.cDefine12=B.cDefine12  )  "
    "and (  B.cDefine13 is null or  A.cDefine13=B.cDefine13  )   "
    "and (  B.cDefine14 is null or  A.cDefine14=B.cDefine14  )  "
    "and (  B.cDefine15 is null or  A.cDefine15=B.cDefine15  )   "
    "and (  B.cDefine16 is null or  A.cDefine16=B.cDefine16  )  "
    "and  A.iPeriod=B.RefVouchPeriod and A.ino_id=B.RefVouchNo   and A.csign=B.RefVouchSign "
    "and  B.inid=1  and B.itype in(80,81) and B.RefVouchYear is null  "
    "inner join code on A.ccode=code.ccode group  by  B.itype,B.ctran_id,code.cexch_name) data  "
    "where gl_bautotran.itype=data.itype and gl_bautotran.ctran_id=data.ctran_id",
    "lastDB"};

// new year: the run log. Rows of the closing year are computed anew from its vouchers, older ones are kept as they
// stand, and one without a year counts as one of the closing year. Whether a definition was carried does not matter.
inline constexpr Sql deleteOlderLog{"transfer_definitions.delete_older_log",
                                    "delete from [GL_TranReport] where vouchYear<{curYear}", "curYear"};

inline constexpr Sql mergeLog{
    "transfer_definitions.merge_log",
    "insert into [GL_TranReport]  ([itype],[ctran_id], [vouchYear], [vouchPeriod], [vouchSign], [vouchNo],"
    "[dbill_date], [sumJe], [sumJe_f], [sumSL], [cbill], [bAuto], [iFlag])  select rep.[itype],rep.[ctran_id], case "
    "when rep.[vouchYear] is null then {lastYear}  else rep.[vouchYear] end as vouchYear, rep.[vouchPeriod], "
    "rep.[vouchSign], rep.[vouchNo],case when rep.[vouchYear] ={lastYear} then A.dbill_date else rep.[dbill_date] "
    "end as dbill_date,sum(case when rep.[vouchYear] ={lastYear} then A.md-A.mc else rep.sumJe end) as [sumJe],"
    "sum(case when rep.[vouchYear]  ={lastYear}  then A.md_f-A.mc_f else rep.sumJe_f end) as [sumJe_f], sum(case "
    "when rep.[vouchYear]  ={lastYear} then A.nd_s-A.nc_s else rep.sumSL end) as [sumSL],case when rep.[vouchYear]  "
    "={lastYear} then A.[cbill] else rep.cbill end as cbill, rep.[bAuto],case when rep.[vouchYear] ={lastYear} then "
    "A.[iFlag] else rep.iFlag end  from [{lastDB}]..[GL_TranReport] rep "
    "inner join [{lastDB}]..[gl_bautotran] settbl on rep.itype=settbl.itype "
    "and rep.ctran_id=settbl.ctran_id and settbl.inid=1  left join [{lastDB}]..GL_accvouch A on settbl.ccode=A.ccode "
    "and rep.[vouchYear] ={lastYear} and rep.VouchPeriod=A.iperiod and rep.VouchSign=A.csign "
    "and rep.VouchNo=A.ino_id  group by  rep.[itype],rep.[ctran_id], rep.[vouchYear], rep.[vouchPeriod], "
    "rep.[vouchSign], rep.[vouchNo], rep.[cbill], rep.[bAuto], rep.[iFlag],rep.dbill_date,A.cBill,A.iFlag,"
    "A.dbill_date ",
    "lastYear", "lastDB"};

inline constexpr const SqlText* all[] = {
    &deleteOrdinary,    &deleteOtherYearsLog, &deleteWithoutLog,    &selectKeys,     &selectRows, &selectEarlierCopy,
    &deleteEarlierCopy, &copyDefinition,      &setReferencedAmount, &deleteOlderLog, &mergeLog};

}  // namespace gljz::transfer_definitions_sql
