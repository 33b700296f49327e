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
using platform::Value;

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

// Twelve equal rows but for their period: opening and closing are the closing year's end. Columns that are not named
// keep their defaults; so the foreign amount of an account without a currency, the quantity without a measure unit, and
// all movements.
void writePeriods(Recordset& totals, const Recordset& balance, const std::string& newCode, const CodeRecord& target,
                  const std::string& currency) {
  const Value year = yearNumber(run.m_strCurYear);
  const Value exchange = currency.empty() ? Value() : Value(currency);
  const Value direction = balance.Field("cendd_c"), directionEngl = balance.Field("cendd_c_engl");
  const Value me = balance.Field("me"), me_f = balance.Field("me_f"), ne_s = balance.Field("ne_s");
  for (int iPeriod = 1; iPeriod <= 12; ++iPeriod) {
    totals.AddNew();
    totals.SetField("iyear", year);
    totals.SetField("cCode", newCode);
    totals.SetField("cexch_name", exchange);
    totals.SetField("iPeriod", iPeriod);
    totals.SetField("cbegind_c", direction);
    totals.SetField("cendd_c", direction);
    totals.SetField("cbegind_c_engl", directionEngl);
    totals.SetField("cendd_c_engl", directionEngl);
    totals.SetField("mb", me);
    totals.SetField("Me", me);
    if (!currency.empty()) {
      totals.SetField("mb_f", me_f);
      totals.SetField("me_f", me_f);
    }
    if (!target.cMeasure.empty()) {
      totals.SetField("nb_s", ne_s);
      totals.SetField("ne_s", ne_s);
    }
    totals.Update();
    DoEvents();
  }
}

void carry(Recordset& totals, const Recordset& balance, CodeRecord& target) {
  showProgress("Orvo.GL.TqGLJZ.00099", {balance.Field("ccode")});
  DoEvents();
  const std::string newCode = findTarget(balance, target);
  if (newCode.empty()) return;
  writePeriods(totals, balance, newCode, target, effectiveCurrency(balance, target));
}

}  // namespace

void JzAccSum() {
  const std::string selection = sql::selectBalances(run.m_strLastYear);
  auto balances = lastConn().OpenRecordset(selection, 2, platform::CursorLocation::server);
  run.m_strLastSql = selection;
  newConn().ExecuteSql(sql::deleteYear(run.m_strCurYear));
  auto totals = newConn().OpenRecordset(sql::openTarget(run.m_strCurYear), 2);
  if (run.m_bManual) SetupImbalanceGrid(4);

  CodeRecord target;
  for (; !balances->Eof(); balances->MoveNext()) carry(*totals, *balances, target);
  balances->Close();
  totals->Close();

  RollUpAccSum(newConn(), yearNumber(run.m_strCurYear));
}

}  // namespace gljz
