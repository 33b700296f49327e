#pragma once

#include "core/sql.h"

namespace gljz::jz_data_sql {

// new year, one database, later year of its span: no opening details
inline constexpr Sql deleteOpeningDetails{"jz_data.delete_opening_details",
                                          " delete  from gl_accvouch  where iyear={curYear} and iperiod=0 ", "curYear"};

inline constexpr const SqlText* all[] = {&deleteOpeningDetails};

}  // namespace gljz::jz_data_sql
