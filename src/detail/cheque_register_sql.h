#pragma once

#include "core/sql.h"

namespace gljz::cheque_register_sql {

// new year: the register that takes the cheques
inline constexpr Sql selectTarget{"cheque_register.select_target", "select top 1 * from rp_cheque "};

// new year: all cheques go, whatever their origin
inline constexpr Sql deleteAll{"cheque_register.delete_all", "delete from rp_cheque "};

// both years, over the new year's connection: the closing year's cheques of bank accounts that have not been used up
// and that the new register does not have
inline constexpr Sql selectCheques{
    "cheque_register.select_cheques",
    "select A.*,C.ccode_name from {lastDB}..code  C inner join {lastDB}..rp_cheque A on C.ccode=A.ccode and c.iyear= "
    "{lastYear} Where C.bEnd = 1 And C.be = 1 And Not A.ccode Is Null And A.dout Is Null  and A.ccheque_id not in "
    "( select ccheque_id from {curDB}..rp_cheque B )",
    "lastDB", "lastYear", "curDB"};

inline constexpr const SqlText* all[] = {&selectTarget, &deleteAll, &selectCheques};

}  // namespace gljz::cheque_register_sql
