#include "balances/roll_up.h"

#include <string>

#include "balances/roll_up_sql.h"
#include "core/mdu_jz.h"

namespace gljz {
namespace {

namespace sql = roll_up_sql;

std::string rebuildStatement(std::int32_t year, const platform::AccountOptions& options) {
  if (options.bMultiCurrency) {
    return sql::rebuildParents(year, sql::severalColumn(options.cDefaultCurrency), sql::severalOther(),
                               sql::severalGroup(options.cDefaultCurrency));
  }
  return sql::rebuildParents(year, sql::oneColumn(), sql::oneOther(), sql::oneGroup());
}

}  // namespace

void RollUpAccSum(platform::Connection& connection, std::int32_t year) {
  connection.ExecuteSql(sql::dropWorkTable());
  connection.ExecuteSql(rebuildStatement(year, pubCls().AccountOptions()));
  connection.ExecuteSql(sql::dropWorkTable());
}

}  // namespace gljz
