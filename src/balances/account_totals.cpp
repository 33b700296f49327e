#include "balances/account_totals.h"

#include <string>

#include "balances/account_totals_sql.h"
#include "balances/auxiliary_balance.h"
#include "balances/roll_up.h"
#include "core/mdu_jz.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = account_totals_sql;
using platform::CodeRecord;
using platform::Recordset;

constexpr int onlyBEnd = 29;  // the field of an account that says whether it is last-level

void reportLeftOut(const Recordset& balance, const char* reasonKey) {
  if (!run.m_bManual) return;
  AddImbalanceRow(reportRow({GetResString("Orvo.GL.TqGLJZ.00017"), balance.Field("ccode").displayText(),
                             balance.Field("ccode_name").displayText(), GetResString(reasonKey)}));
}

// The account of the new year that takes the balance, with its record; empty when there is none.
std::string findTarget(const Recordset& balance, CodeRecord& target) {
  const std::string newCode = pubCls().MatchCode(balance.Field("ccode").asText(), 2, true);
  if (newCode.empty()) {
    reportLeftOut(balance, "Orvo.GL.TqGLJZ.00109");
    return {};
  }
  pubCls().GetCodeRecord(newCode, target);
  if (target.bEnd) return newCode;

  // Intended: the account is asked once more, and only one that has become last-level since is reported. So parents of
  // the closing year pass without a word.
  pubCls().GetCodeRecord(newCode, target, {onlyBEnd});
  if (target.bEnd) reportLeftOut(balance, "Orvo.GL.TqGLJZ.00106");
  return {};
}

void writePeriods(const Recordset& balance, const std::string& newCode, const CodeRecord& target,
                  const std::string& currency) {
  std::string columns, values;
  if (!currency.empty()) {
    columns += sql::foreignColumns();
    values += sql::foreignValues(numberLiteral(balance.Field("me_f")));
  }
  if (!target.cMeasure.empty()) {
    columns += sql::quantityColumns();
    values += sql::quantityValues(numberLiteral(balance.Field("ne_s")));
  }
  const std::string code = textLiteral(newCode);
  const std::string exchange = currency.empty() ? "Null" : textLiteral(currency);
  const std::string direction = textLiteral(balance.Field("cendd_c"));
  const std::string directionEngl = textLiteral(balance.Field("cendd_c_engl"));
  const std::string me = numberLiteral(balance.Field("me"));
  for (int iPeriod = 1; iPeriod <= 12; ++iPeriod) {
    newConn().ExecuteSql(
        sql::insertPeriod(columns, run.m_strCurYear, code, exchange, iPeriod, direction, directionEngl, me, values));
    DoEvents();
  }
}

void carry(const Recordset& balance, CodeRecord& target) {
  showProgress("Orvo.GL.TqGLJZ.00099", {balance.Field("ccode")});
  DoEvents();
  const std::string newCode = findTarget(balance, target);
  if (newCode.empty()) return;
  writePeriods(balance, newCode, target, effectiveCurrency(balance, target));
}

}  // namespace

void JzAccSum() {
  const std::string selection = sql::selectBalances(run.m_strLastYear);
  auto balances = lastConn().OpenRecordset(selection, 2);
  run.m_strLastSql = selection;
  newConn().ExecuteSql(sql::deleteYear(run.m_strCurYear));
  if (run.m_bManual) SetupImbalanceGrid(4);

  CodeRecord target;
  for (; !balances->Eof(); balances->MoveNext()) carry(*balances, target);
  balances->Close();

  RollUpAccSum(newConn(), yearNumber(run.m_strCurYear));
}

}  // namespace gljz
