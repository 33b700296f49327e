#pragma once

#include "core/sql.h"

namespace gljz::bank_account_sql {

// closing year, a command with two text arguments: year, account
inline constexpr Sql selectLastCode{"bank_account.select_last_code", "select * from code where iyear=? and ccode=? "};

// fragments of the sums over an account's lines: one currency
inline constexpr Sql noCurrency{"bank_account.no_currency", " and cexch_name is Null "};
inline constexpr Sql ofCurrency{"bank_account.of_currency", " and cexch_name ='{cExch}' ", "cExch"};

inline constexpr const SqlText* all[] = {&selectLastCode};

}  // namespace gljz::bank_account_sql
