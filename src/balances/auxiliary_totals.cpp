#include "balances/auxiliary_totals.h"

#include <string>

#include "balances/auxiliary_balance.h"
#include "balances/auxiliary_totals_sql.h"
#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = auxiliary_totals_sql;
using platform::Recordset;

void writePeriods(const Recordset& balance, const TargetAccount& target, const Auxiliaries& auxiliaries) {
  const std::string currency = currencyValue(target);
  const std::string references = auxiliaryValues(auxiliaries);
  const std::string direction = SqlValue(balance.Field("cendd_c"));
  const std::string directionEngl = SqlValue(balance.Field("cendd_c_engl"));
  const std::string me = numberLiteral(balance.Field("me"));
  const std::string foreign = numberLiteral(foreignAmount(balance, target));
  const std::string ne = numberLiteral(quantity(balance, target));
  std::string batch;
  for (int iPeriod = 1; iPeriod <= 12; ++iPeriod) {
    sql::insertPeriod.append(batch, run.m_strCurYear, target.newCode, currency, references, iPeriod, direction,
                             directionEngl, me, foreign, ne);
  }
  newConn().ExecuteSql(batch);
}

void carry(const Recordset& balance, TargetAccount& target) {
  showProgress("Orvo.GL.TqGLJZ.00110", {balance.Field("ccode")});
  DoEvents();
  if (!findTarget(balance, target)) return;
  if (!sameAuxiliaryType(target.newRec, target.lastRec)) {
    reportTypeDiffers(balance);
    return;
  }
  DoEvents();
  Auxiliaries auxiliaries;
  if (!pickAuxiliaries(balance, target.newRec, auxiliaries) || auxiliaries.none()) return;
  if (!auxiliariesExist(auxiliaries)) return;
  writePeriods(balance, target, auxiliaries);
}

}  // namespace

void JzAccAss() {
  run.m_strLastSql = sql::selectBalances(run.m_strLastYear);
  auto balances = lastConn().OpenRecordset(run.m_strLastSql, 2);
  newConn().ExecuteSql(sql::deleteYear(run.m_strCurYear));
  newConn().ExecuteSql(sql::deleteOpeningRows(run.m_strCurYear));
  auto written = newConn().OpenRecordset(sql::selectTarget(run.m_strCurYear), 2);

  TargetAccount target;
  for (; !balances->Eof(); balances->MoveNext()) carry(*balances, target);
  balances->Close();
  written->Close();
}

}  // namespace gljz
