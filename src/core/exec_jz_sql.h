#pragma once

#include "core/sql.h"

namespace gljz::exec_jz_sql {

// new year, inside the transaction, behind the stages

// subsystem GF only
inline constexpr Sql clearDeleteYe{"exec_jz.clear_delete_ye",
                                   "update AccInformation set cValue='False' where cSysID='GF' and cName='bDeleteYe'"};
inline constexpr Sql clearImportEnd{"exec_jz.clear_import_end", "update  GF_ImportSet set dSuccessEndDate=null"};

// the new year has taken over its balances
inline constexpr Sql markUnloaded{"exec_jz.mark_unloaded", "update gl_yearstate set iIsUnload=1 where iyear={curYear}",
                                  "curYear"};

// the database's own procedures rebuild what depends on items
inline constexpr Sql rebuildItemNames{"exec_jz.rebuild_item_names", "exec GL_P_AllItemName"};
inline constexpr Sql rebuildItemView{"exec_jz.rebuild_item_view", "exec NE_UpdateItemView_Proc"};

inline constexpr const SqlText* all[] = {&clearDeleteYe, &clearImportEnd, &markUnloaded, &rebuildItemNames,
                                         &rebuildItemView};

}  // namespace gljz::exec_jz_sql
