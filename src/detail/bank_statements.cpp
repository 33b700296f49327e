#include "detail/bank_statements.h"

#include "core/mdu_jz.h"
#include "detail/bank_account.h"
#include "detail/bank_statements_sql.h"
#include "detail/open_item_lookups.h"
#include "detail/voucher_values.h"
#include "driver/progress.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

namespace sql = bank_statements_sql;
using platform::DateTime;
using platform::Money;
using platform::Recordset;
using platform::Value;

constexpr int openingRow = 0, statementLine = 1;  // ibegin

const BankAccount::Reasons reasons{"Orvo.GL.TqGLJZ.00210", "Orvo.GL.TqGLJZ.00212", "Orvo.GL.TqGLJZ.00208"};

std::string statementFilter() {
  return run.m_bBankTransfer == 2 ? sql::openLines() : std::string();
}

void clearNewYear() {
  newConn().ExecuteSql(run.m_bCoverBankData ? sql::deleteYear(run.m_strCurYear)
                                            : sql::deleteUnprotected(run.m_strCurYear));
}

void reportMissingAccount() {
  ShowMsg(GetResString("Orvo.GL.TqGLJZ.00223"), msgPlain, GetResString("Orvo.GL.TqGLJZ.00094"));
}

// Whether debit is the account's normal side in the new year; false when that year does not have it.
bool GetCodeBdc(const std::string& ccode) {
  auto codeRow = newConn().OpenRecordset(sql::selectSide(run.m_strCurYear, ccode), 2);
  if (codeRow->Eof()) {
    reportMissingAccount();
    return false;
  }
  return codeRow->Field("bd_c").asBool();
}

void SetCodeBegin(const std::string& ccode, DateTime date) {
  auto codeRow = newConn().OpenRecordset(sql::selectCode(run.m_strCurYear, ccode), 2);
  if (codeRow->Eof()) {
    reportMissingAccount();
    return;
  }
  codeRow->SetField("dbegin", date);
  codeRow->Update();
}

void addOpeningRow(Recordset& openings, const std::string& ccode) {
  const bool debitSide = GetCodeBdc(ccode);
  openings.AddNew();
  openings.SetField("iyear", run.m_strLastYear);
  openings.SetField("ibegin", openingRow);
  openings.SetField("bd_c", debitSide ? 1 : 0);
  openings.SetField("ccode", ccode);
  openings.SetField("ddate", platform::surroundings().today());
  openings.SetField("mmoney", 0);
  openings.SetField("mbalance", 0);
  openings.SetField("bdelete", 0);
  openings.SetField("cBankReconNo", Value());
  openings.Update();
}

// Afterwards the account has exactly one opening row in the closing year; of several the one that came first stays.
void settleOpeningRow(const std::string& ccode) {
  auto openings = lastConn().OpenRecordset(sql::selectOpening(ccode, run.m_strLastYear), 2);
  if (openings->Eof()) {
    addOpeningRow(*openings, ccode);
  } else {
    const std::string first = openings->Field("i_id").asText();
    lastConn().ExecuteSql(sql::deleteOtherOpenings(ccode, run.m_strLastYear, first));
  }
  openings->Close();
}

// Stays in the closing year, outside the transaction when that year has a database of its own.
void settleOpeningRows() {
  run.m_strLastSql = sql::selectAccounts(run.m_strLastYear, statementFilter());
  auto accounts = lastConn().OpenRecordset(run.m_strLastSql, 2, platform::CursorLocation::client);
  for (; !accounts->Eof(); accounts->MoveNext()) settleOpeningRow(accounts->Field("ccode").asText());
  accounts->Close();
}

// A line without a settlement style, or with one that the new year knows. In the bank ledger an unknown style passes;
// here it costs the line, which is intended.
bool hasKnownSettleStyle(const Recordset& line) {
  const std::string csettle = line.Field("csettle").displayText();
  if (csettle.empty() || pubCls().SettleStyleExists(csettle)) return true;
  if (run.m_bManual) {
    SettleStyleRecord style;
    LoadSettleStyle(csettle, style);
    reportBankLine("Orvo.GL.TqGLJZ.00154", csettle, style.cssname, reasons.noCounterpart);
  }
  return false;
}

// The closing year's opening amount and what the account's lines in that currency have moved since its reconciliation
// began: on a debit account debit raises it, on a credit account credit does.
Money openingAmount(const Recordset& line, const BankAccount& account) {
  const std::string ccode = line.Field("ccode").asText();
  Money balance = line.Field("mmoney").asMoney();

  auto codeRow = GetLastCodeRow(ccode, run.m_strLastYear);
  const bool debitSide = codeRow->Field("bd_c").asBool();
  const std::string begin = reconciliationBegin(*codeRow);
  codeRow->Close();

  SetCodeBegin(ccode, GetYearStartDate());

  auto movement = lastConn().OpenRecordset(
      sql::sumLines(run.m_strLastYear, ccode, begin, currencyCondition(account.currency())), 2);
  if (!movement->Eof()) {
    if (const Value moved = movement->Field("zd1"); !moved.isNull())
      balance = debitSide ? balance + moved.asMoney() : balance - moved.asMoney();
  }
  movement->Close();
  return balance;
}

std::string lineValues(const Recordset& line, const BankAccount& account) {
  VoucherValues values(line);
  values.constant(run.m_strCurYear);
  if (line.Field("ibegin").asInteger() == openingRow) {
    const Money balance = openingAmount(line, account);
    values.constant(std::to_string(openingRow)).constant("'" + GetYearStartDate().text() + "'");
    values.constant(balance.text());
  } else {
    values.constant(std::to_string(statementLine)).date("ddate").bare("mmoney");
  }
  values.bare("mbalance").text("ccode").text("csettle").text("cn_id");
  values.flag("bd_c").number("iflag").flag("bdelete").text("cBankReconNo");
  values.text("cexch_name").text("cdigest");  // the line's own currency, whatever the account's is
  return std::string(values.list());
}

// False when the line is left out.
bool carry(const Recordset& line, BankAccount& account) {
  if (!account.find(line) || !hasKnownSettleStyle(line)) return false;
  newConn().ExecuteSql(sql::insertLine(lineValues(line, account)));
  return true;
}

}  // namespace

void CarryBankStatements(std::string& idText) {
  run.m_strFuncDesc = "结转函数--结转银行对账单RP_bankrecp";
  const auto probe = newConn().OpenRecordset(sql::probeNewYear(run.m_strCurYear), 2);
  clearNewYear();
  settleOpeningRows();

  run.m_strLastSql = sql::selectLines(run.m_strLastYear, statementFilter());
  auto lines = lastConn().OpenRecordset(run.m_strLastSql, 2);
  BankAccount account(reasons);
  for (; !lines->Eof(); lines->MoveNext()) {
    showProgress("Orvo.GL.TqGLJZ.00205", {lines->Field("ccode")});
    DoEvents();
    idText = lines->Field("i_id").asText();
    if (carry(*lines, account)) account.lineWritten();
  }
  lines->Close();
  advanceFrom(Step::bankStatements);
}

}  // namespace gljz
