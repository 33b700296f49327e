#include "balances/opening_row.h"

#include "balances/opening_row_sql.h"
#include "core/mdu_jz.h"

namespace gljz {
namespace {

namespace sql = opening_row_sql;
using platform::CodeRecord;
using platform::DateTime;
using platform::Money;
using platform::Recordset;
using platform::Value;

// Values of m_iPersonMode, m_iCusMode and m_iSupMode; 2 carries items.
constexpr int nothing = 0, byBalance = 1, byAccount = 3;
// Types of GL_YeMxSel.
constexpr int customers = 1, suppliers = 2, balances = 1;

// In one database with the closing year, only the first year of its span takes opening rows.
bool yearTakesOpeningRows() {
  return separateDatabases() || yearNumber(run.m_strCurYear) == pubCls().iStartYear();
}

bool partnerIsCarriedByBalance(int mode, int cusSup, const std::string& newCode) {
  if (mode == byAccount) return IsYeMxSelCode(cusSup, balances, newCode);
  return mode == nothing || mode == byBalance;
}

bool isCarriedByBalance(const TargetAccount& target) {
  const CodeRecord& account = target.newRec;
  if (run.m_iPersonMode == byBalance && (!account.cPersonItemClass.empty() || account.bPersonOnly)) return true;
  if (account.bSup && partnerIsCarriedByBalance(run.m_iSupMode, suppliers, target.newCode)) return true;
  return account.bCus && partnerIsCarriedByBalance(run.m_iCusMode, customers, target.newCode);
}

std::string openDate() {
  const DateTime firstDay = pubCls().YearCalendar(0, 0);
  return DateTime::fromTicks(firstDay.ticks() - DateTime::ticksPerDay).dateText();
}

// The signed balance on its side: a foreign amount and a quantity go where the amount goes, a balance of 0 is a debit.
std::string amounts(const Recordset& balance, const TargetAccount& target) {
  const Money me = balance.Field("me").asMoney();
  const Money foreign = foreignAmount(balance, target).asMoney();
  const double ne = quantity(balance, target).asDouble();
  const auto side = [](Money amount, Money foreignPart, double number) {
    return amount.text() + "," + foreignPart.text() + "," + platform::numberText(number) + ",";
  };
  if (me >= Money()) return side(me, foreign, ne) + "0,0,0,";
  return "0,0,0," + side(-me, -foreign, 0 - ne);
}

}  // namespace

bool openingRowIsDue(const TargetAccount& target, const Auxiliaries& auxiliaries) {
  if (!yearTakesOpeningRows() || !isCarriedByBalance(target)) return false;
  return !target.newRec.bPersonOnly || !auxiliaries.person.isNull();
}

void writeOpeningRow(const Recordset& balance, const TargetAccount& target, const std::string& keys) {
  const std::string withoutLastComma = keys.substr(0, keys.size() - 1);
  newConn().ExecuteSql(sql::insertOpeningRow(run.m_strCurYear, openDate(), pubCls().OperatorName(),
                                             GetResString("Orvo.GL.TqGLJZ.00124"), target.newCode,
                                             currencyValue(target), amounts(balance, target), withoutLastComma));
}

}  // namespace gljz
