#pragma once

#include "core/sql.h"

namespace gljz::other_tables_sql {

// both years: the rows of a settings table
inline constexpr Sql selectAll{"other_tables.select_all", "select * from {table}", "table"};

// new year: the copy of a settings table begins with an empty one
inline constexpr Sql deleteAll{"other_tables.delete_all", "Delete From {table}", "table"};

inline constexpr const SqlText* all[] = {&selectAll, &deleteAll};

}  // namespace gljz::other_tables_sql
