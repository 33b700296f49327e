#include "core/all_statements.h"

#include "balances/account_totals_sql.h"
#include "balances/roll_up_sql.h"
#include "core/exec_jz_sql.h"
#include "core/mdu_jz_sql.h"
#include "detail/jz_data_sql.h"
#include "driver/precondition_checks_sql.h"

namespace gljz {

std::vector<const SqlText*> all_statements() {
  std::vector<const SqlText*> result;
  const auto add = [&result](const auto& statements) {
    result.insert(result.end(), std::begin(statements), std::end(statements));
  };
  add(mdu_jz_sql::all);
  add(precondition_checks_sql::all);
  add(exec_jz_sql::all);
  add(jz_data_sql::all);
  add(account_totals_sql::all);
  add(roll_up_sql::all);
  return result;
}

}  // namespace gljz
