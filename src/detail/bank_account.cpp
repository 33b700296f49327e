#include "detail/bank_account.h"

#include "core/mdu_jz.h"
#include "detail/bank_account_sql.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = bank_account_sql;
using platform::CodeRecord;
using platform::Recordset;
using platform::Value;

constexpr const char* accountCaption = "Orvo.GL.TqGLJZ.00112";
constexpr int commandTimeout = 600;  // seconds
constexpr int yearSize = 8, codeSize = 60;

// Only a line with a currency of its own has one in the new year: that currency, or with one currency an account the
// account's.
std::string currencyOf(const Recordset& line, const CodeRecord& target) {
  const Value currency = line.Field("Cexch_name");
  if (currency.isNull()) return {};
  return pubCls().AccountOptions().bMultiCurrency ? currency.asText() : target.Cexch_name;
}

}  // namespace

bool BankAccount::find(const Recordset& line) {
  // Intended: the line's own code is compared with the new code that was written last. So an account that changed its
  // code is matched at every line; and one whose code is the new code of the account before it is taken for that one.
  code_ = line.Field("ccode").asText();
  if (changed()) code_ = pubCls().MatchCode(code_, 2, true);
  if (code_.empty()) {
    reportBankLine(accountCaption, line.Field("ccode").displayText(), line.Field("cCode_name").displayText(),
                   reasons_.noCounterpart);
    return false;
  }
  if (changed()) pubCls().GetCodeRecord(code_, record_);
  if (!record_.bEnd) {
    reportBankLine(accountCaption, record_.ccode, record_.cCode_name, reasons_.notLastLevel);
    return false;
  }
  currency_ = currencyOf(line, record_);
  if (!record_.be) {
    reportBankLine(accountCaption, record_.ccode, record_.cCode_name, reasons_.noBankAccount);
    return false;
  }
  return true;
}

bool BankAccount::inForeignCurrency() const {
  return !currency_.empty() && currency_ != pubCls().AccountOptions().cDefaultCurrency;
}

std::unique_ptr<Recordset> GetLastCodeRow(const std::string& ccode, const std::string& year) {
  return lastConn().RawConnection().OpenCommand(sql::selectLastCode(), {{year, yearSize}, {ccode, codeSize}},
                                                commandTimeout);
}

std::string reconciliationBegin(const Recordset& codeRow) {
  const Value begin = codeRow.Field("dbegin");
  return begin.isNull() ? std::string() : begin.asDateTime().dateText();
}

std::string currencyCondition(const std::string& currency) {
  return currency.empty() ? sql::noCurrency() : sql::ofCurrency(currency);
}

platform::DateTime GetYearStartDate() {
  return pubCls().YearCalendar(0, 0);
}

void reportBankLine(const char* kindKey, const std::string& code, const std::string& name, const char* reasonKey) {
  if (!run.m_bManual) return;
  AddImbalanceRow(GetResString(kindKey, {"\t" + code + "\t" + name}) + "\t" + GetResString(reasonKey));
}

}  // namespace gljz
