#pragma once

#include "core/sql.h"

namespace gljz::user_defined_openings_sql {

// new year: everything that stands for the year goes
inline constexpr Sql deleteYear{"user_defined_openings.delete_year", "Delete From GL_qcuserdef where iyear={curYear}",
                                "curYear"};

// new year: openings by user-defined columns, from the year's own multi-auxiliary totals. Amounts are magnitudes on the
// side that the sum of mb gives; a sum of 0 is a debit, as the first branch takes it. A row whose only user-defined
// value stands in cDefine4 or cDefine6, the dates, is left out. Both are intended.
inline constexpr Sql selectOpenings{
    "user_defined_openings.select_openings",
    "Select "
    "cCode,cDept_ID,cPerson_ID,cCus_ID,cSup_ID,cItem_ID,cItem_Class,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,"
    "cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16,"
    "(case when Sum(mb)>=0 then '借' when Sum(mb)=0 then '平' else '贷' end) as cDirec,"
    "(case when Sum(nb_s)>0 then Sum(nb_s) else -Sum(nb_s) end) as nb_s,"
    "(case when Sum(mb_f)>=0 then Sum(mb_f) else -Sum(mb_f) end) as mb_f,"
    "(case when Sum(mb)>=0 then Sum(mb) else -Sum(mb) end) as mb "
    "From GL_AccMultiAss Where iPeriod=1 And (mb<>0 or mb_f <>0 Or nb_s<>0) and iyear={curYear} "
    "And (cDefine1 Is not Null Or cDefine2 Is not Null Or cDefine3 Is not Null Or cDefine5 Is not Null "
    "Or cDefine7 Is not Null Or cDefine8 Is not Null Or cDefine9 Is not Null Or cDefine10 Is not Null "
    "Or cDefine11 Is not Null Or cDefine12 Is not Null Or cDefine13 Is not Null Or cDefine14 Is not Null "
    "Or cDefine15 Is not Null Or cDefine16 Is not Null) "
    "Group by cCode,cDept_ID,cPerson_ID,cCus_ID,cSup_ID,cItem_ID,cItem_Class,cDefine1,cDefine2,cDefine3,cDefine4,"
    "cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,"
    "cDefine16",
    "curYear"};

// new year: the rows are added through this
inline constexpr Sql selectTarget{"user_defined_openings.select_target",
                                  "Select * from GL_QcUserDef where iyear={curYear}", "curYear"};

inline constexpr const SqlText* all[] = {&deleteYear, &selectOpenings, &selectTarget};

}  // namespace gljz::user_defined_openings_sql
