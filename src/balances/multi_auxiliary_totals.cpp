#include "balances/multi_auxiliary_totals.h"

#include <algorithm>
#include <array>
#include <string>

#include "balances/auxiliary_balance.h"
#include "balances/multi_auxiliary_totals_sql.h"
#include "balances/opening_row.h"
#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = multi_auxiliary_totals_sql;
using platform::CodeRecord;
using platform::Recordset;
using platform::Value;

// What a balance is told apart by, beside account and currency.
struct Keys {
  Auxiliaries auxiliaries;
  Value name;
  std::array<Value, 16> define;

  // The name does not count: alone it carries nothing.
  bool none() const {
    return auxiliaries.none() && std::all_of(define.begin(), define.end(), [](const Value& v) { return v.isNull(); });
  }
  std::string values() const {
    std::string text = auxiliaryValues(auxiliaries) + SqlValue(name);
    for (const Value& value : define) text += SqlValue(value);
    return text;
  }
};

bool isSameKind(const TargetAccount& target) {
  return sameAuxiliaryType(target.newRec, target.lastRec) && target.newRec.bcDefine == target.lastRec.bcDefine;
}

// The free name belongs to lines of customers and suppliers.
bool hasNames(const CodeRecord& newRec) {
  const platform::AccountOptions options = pubCls().AccountOptions();
  return (newRec.bCus && options.bCusAccount) || (newRec.bSup && options.bSupAccount) ||
         !newRec.cCusDeptItemClass.empty() || !newRec.cSupDeptItemClass.empty();
}

// False: there is nothing to carry. A name or a user-defined column may be Null.
bool pickKeys(const Recordset& balance, const CodeRecord& newRec, Keys& keys) {
  if (!pickAuxiliaries(balance, newRec, keys.auxiliaries)) return false;
  if (hasNames(newRec)) keys.name = balance.Field("cname");
  for (std::size_t i = 0; i < keys.define.size(); ++i) {
    if (newRec.bcDefine[i]) keys.define[i] = balance.Field("cdefine" + std::to_string(i + 1));
  }
  return !keys.none();
}

void writePeriods(const Recordset& balance, const TargetAccount& target, const std::string& keys) {
  const std::string currency = currencyValue(target);
  const std::string me = numberLiteral(balance.Field("me"));
  const std::string foreign = numberLiteral(foreignAmount(balance, target));
  const std::string ne = numberLiteral(quantity(balance, target));
  std::string batch;
  for (int iPeriod = 1; iPeriod <= 12; ++iPeriod) {
    sql::insertPeriod.append(batch, run.m_strCurYear, target.newCode, currency, keys, iPeriod, me, foreign, ne);
  }
  newConn().ExecuteSql(batch);
}

void carry(const Recordset& balance, TargetAccount& target) {
  showProgress("Orvo.GL.TqGLJZ.00110", {balance.Field("ccode")});
  DoEvents();
  if (!findTarget(balance, target)) return;
  if (!isSameKind(target)) {
    reportTypeDiffers(balance);
    return;
  }
  DoEvents();
  Keys keys;
  if (!pickKeys(balance, target.newRec, keys)) return;
  if (!auxiliariesExist(keys.auxiliaries)) return;
  const std::string values = keys.values();
  writePeriods(balance, target, values);
  if (openingRowIsDue(target, keys.auxiliaries)) writeOpeningRow(balance, target, values);
}

// Two balances can have become one key, since columns that the account is not entitled to were dropped. They are
// merged.
void mergeDuplicates() {
  run.m_strLastSql = sql::selectDuplicate(run.m_strCurYear);
  auto duplicate = newConn().OpenRecordset(run.m_strLastSql, 2);
  if (!duplicate->Eof()) {
    newConn().ExecuteSql(sql::dropWorkTable());
    newConn().ExecuteSql(sql::collectSums(run.m_strCurYear));
    newConn().ExecuteSql(sql::deleteUnmerged(run.m_strCurYear));
    newConn().ExecuteSql(sql::insertMerged(run.m_strCurYear));
  }
  duplicate->Close();
}

}  // namespace

void JzAccMultiAss() {
  const std::string selection = sql::selectBalances(run.m_strLastYear);
  auto balances = lastConn().OpenRecordset(selection, 2);
  run.m_strLastSql = selection;
  newConn().ExecuteSql(sql::deleteYear(run.m_strCurYear));
  auto written = newConn().OpenRecordset(sql::selectTarget(run.m_strCurYear), 2);

  TargetAccount target;
  for (; !balances->Eof(); balances->MoveNext()) carry(*balances, target);
  balances->Close();
  written->Close();

  mergeDuplicates();
}

}  // namespace gljz
