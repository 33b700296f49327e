#include "detail/cheque_register.h"

#include "core/mdu_jz.h"
#include "detail/bank_account.h"
#include "detail/cheque_register_sql.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = cheque_register_sql;
using platform::DateTime;
using platform::Recordset;
using platform::Value;

const BankAccount::Reasons reasons{"Orvo.GL.TqGLJZ.00222", "Orvo.GL.TqGLJZ.00220", "Orvo.GL.TqGLJZ.00218"};

void addCheque(Recordset& target, const Recordset& cheque, const BankAccount& account) {
  const auto copy = [&](const char* field) { target.SetField(field, cheque.Field(field)); };
  const auto copyDate = [&](const char* field, auto&& text) {
    const Value date = cheque.Field(field);
    target.SetField(field, date.isNull() ? Value() : Value(text(date.asDateTime())));
  };

  target.AddNew();
  copy("cCode");  // the closing year's code, also when the account has another one now
  target.SetField("cexch_name", account.currency().empty() ? Value() : Value(account.currency()));
  copy("ccheque_id");
  copyDate("dbill_date", [](DateTime date) { return date.dateText(); });
  for (const char* field : {"cdept", "cname", "mmoney", "ctext"}) copy(field);
  copyDate("dout", usedUpText);
  for (const char* field :
       {"cdesp", "cget", "ccode_equal", "cbankname", "cbankid", "dsetdate", "mmoneyfact", "cpassword"})
    copy(field);
  target.Update();
}

void carryCheques() {
  auto target = newConn().OpenRecordset(sql::selectTarget(), 2);
  if (run.m_bCoverChequeData) newConn().ExecuteSql(sql::deleteAll());

  run.m_strLastSql = sql::selectCheques(run.m_strLastDB, run.m_strLastYear, run.m_strCurDB);
  auto cheques = newConn().OpenRecordset(run.m_strLastSql, 2);
  if (cheques->Eof()) return;
  BankAccount account(reasons);  // no line is ever marked as written: the look-ups are made for every cheque
  for (cheques->MoveFirst(); !cheques->Eof(); cheques->MoveNext()) {
    showProgress("Orvo.GL.TqGLJZ.00215", {cheques->Field("ccode")});
    DoEvents();
    if (account.find(*cheques)) addCheque(*target, *cheques, account);
  }
  cheques->Close();
  target->Close();
}

}  // namespace

void CarryChequeRegister() {
  run.m_strFuncDesc = "结转函数--结转支票登记簿RP_cheque";
  if (separateDatabases()) carryCheques();
  finishStep(Step::cheques);
}

// Intended: three letters y in the format "yyy-mm-dd". They are the year in two digits and the day of the year.
std::string usedUpText(DateTime date) {
  const std::string text = date.dateText();
  const auto firstOfYear = DateTime::fromDate(date.parts().year, 1, 1);
  const auto dayOfYear = (date.ticks() - firstOfYear.ticks()) / DateTime::ticksPerDay + 1;
  return text.substr(2, 2) + std::to_string(dayOfYear) + text.substr(4);
}

}  // namespace gljz
