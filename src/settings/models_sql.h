#pragma once

#include "core/sql.h"

namespace gljz::models_sql {

// new year: there are models already
inline constexpr Sql selectModels{"models.select_models", "select modelId from GL_ModelMain"};

// new year: they go
inline constexpr Sql deleteMain{"models.delete_main", "Delete from GL_ModelMain"};

inline constexpr Sql deletePreplace{"models.delete_preplace", "Delete from GL_modelpreplace"};

inline constexpr Sql deleteSub1{"models.delete_sub1", "Delete from GL_ModelSub1"};

inline constexpr Sql deleteSub2{"models.delete_sub2", "Delete from GL_ModelSub2"};

// new year: those of the closing year, by position: the columns have to be the same in both years
inline constexpr Sql copyMain{"models.copy_main", "Insert into GL_ModelMain select * from {lastDB}..GL_ModelMain",
                              "lastDB"};

inline constexpr Sql copyPreplace{"models.copy_preplace",
                                  "Insert into GL_modelpreplace select * from {lastDB}..GL_modelpreplace", "lastDB"};

inline constexpr Sql copySub1{"models.copy_sub1", "Insert into GL_ModelSub1 select * from {lastDB}..GL_ModelSub1",
                              "lastDB"};

inline constexpr Sql copySub2{"models.copy_sub2", "Insert into GL_ModelSub2 select * from {lastDB}..GL_ModelSub2",
                              "lastDB"};

inline constexpr const SqlText* all[] = {&selectModels, &deleteMain,   &deletePreplace, &deleteSub1, &deleteSub2,
                                         &copyMain,     &copyPreplace, &copySub1,       &copySub2};

}  // namespace gljz::models_sql
