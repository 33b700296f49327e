#include "core/all_statements.h"

#include "balances/account_totals_sql.h"
#include "balances/auxiliary_totals_sql.h"
#include "balances/multi_auxiliary_totals_sql.h"
#include "balances/opening_row_sql.h"
#include "balances/reference_records_sql.h"
#include "balances/roll_up_sql.h"
#include "balances/user_defined_openings_sql.h"
#include "core/exec_jz_sql.h"
#include "core/mdu_jz_sql.h"
#include "detail/bank_account_sql.h"
#include "detail/bank_ledger_sql.h"
#include "detail/bank_statements_sql.h"
#include "detail/cheque_register_sql.h"
#include "detail/jz_data_sql.h"
#include "detail/open_items_sql.h"
#include "detail/voucher_row_sql.h"
#include "dialogs/frm_sy_km_sel_sql.h"
#include "dialogs/frm_ye_mx_sel_sql.h"
#include "driver/current_account_checks_sql.h"
#include "driver/precondition_checks_sql.h"
#include "driver/small_stages_sql.h"
#include "settings/models_sql.h"
#include "settings/other_tables_sql.h"
#include "settings/transfer_definitions_sql.h"
#include "settings/view_items_sql.h"
#include "verify/opening_balance_sql.h"

namespace gljz {

std::vector<const SqlText*> all_statements() {
  std::vector<const SqlText*> result;
  const auto add = [&result](const auto& statements) {
    result.insert(result.end(), std::begin(statements), std::end(statements));
  };
  add(mdu_jz_sql::all);
  add(precondition_checks_sql::all);
  add(current_account_checks_sql::all);
  add(exec_jz_sql::all);
  add(jz_data_sql::all);
  add(view_items_sql::all);
  add(models_sql::all);
  add(small_stages_sql::all);
  add(account_totals_sql::all);
  add(roll_up_sql::all);
  add(reference_records_sql::all);
  add(auxiliary_totals_sql::all);
  add(multi_auxiliary_totals_sql::all);
  add(opening_row_sql::all);
  add(user_defined_openings_sql::all);
  add(open_items_sql::all);
  add(voucher_row_sql::all);
  add(bank_ledger_sql::all);
  add(bank_account_sql::all);
  add(bank_statements_sql::all);
  add(cheque_register_sql::all);
  add(other_tables_sql::all);
  add(transfer_definitions_sql::all);
  add(opening_balance_sql::all);
  add(frm_ye_mx_sel_sql::all);
  add(frm_sy_km_sel_sql::all);
  return result;
}

}  // namespace gljz
