#include "verify/opening_balance.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "dialogs/frm_jzbg.h"
#include "driver/progress.h"
#include "verify/amount_format.h"
#include "verify/auxiliary_label.h"
#include "verify/opening_balance_sql.h"

namespace gljz {
namespace {

namespace sql = opening_balance_sql;
using platform::CodeRecord;
using platform::Money;
using platform::Recordset;
using platform::Value;

constexpr const char *debit = "借", *credit = "贷", *balanced = "平";
constexpr const char *ok = "Ok", *no = "No";  // verdicts; an empty one counts for nothing

// --- The work table

void dropWorkTable() {
  try {
    newConn().ExecuteSql(sql::dropWorkTable());
  } catch (const platform::RunTimeError&) {
    // At the start of a run there is ordinarily none; whatever else fails will fail again.
  }
}

std::string sumOfAuxiliaries() {
  const std::string all = sql::everyPartner();
  if (login().IsGFLogin()) {
    return sql::insertAuxiliaryTotals(run.m_strCurYear, run.m_bCusPresent ? all : sql::noCustomer(),
                                      run.m_bSupPresent ? all : sql::noSupplier());
  }
  return sql::insertMultiAuxiliaryTotals(run.m_strCurYear, run.m_bCusPresent ? all : sql::noCustomerMulti(),
                                         run.m_bSupPresent ? all : sql::noSupplierMulti());
}

std::unique_ptr<Recordset> openWorkTable() {
  dropWorkTable();
  newConn().ExecuteSql(sql::createWorkTable());
  newConn().ExecuteSql(sql::insertAccountTotals(run.m_strCurYear));
  newConn().ExecuteSql(sumOfAuxiliaries());
  return newConn().OpenRecordset(sql::selectWorkTable(), 2);
}

// --- The grid

void layOut(Grid& grid) {
  struct Column {
    const char* headerKey;
    Alignment alignment;
    int width;  // twips
  };
  constexpr Column columns[] = {
      {"Orvo.GL.TqGLJZ.00062", Alignment::left, 800},    {"Orvo.GL.TqGLJZ.00231", Alignment::left, 1200},
      {"Orvo.GL.TqGLJZ.00232", Alignment::left, 1200},   {"Orvo.GL.TqGLJZ.00233", Alignment::left, 800},
      {"Orvo.GL.TqGLJZ.00234", Alignment::left, 500},    {"Orvo.GL.TqGLJZ.00235", Alignment::right, 800},
      {"Orvo.GL.TqGLJZ.00236", Alignment::right, 800},   {"Orvo.GL.ZWSQL.PERSONACC.00973", Alignment::left, 800},
      {"Orvo.GL.TqGLJZ.00238", Alignment::left, 800},    {"Orvo.GL.TqGLJZ.00239", Alignment::left, 800},
      {"Orvo.GL.TqGLJZ.00240", Alignment::centred, 500},
  };
  grid.rows.assign(1, {});
  grid.columnWidths.clear();
  grid.alignments.clear();
  for (const Column& column : columns) {
    grid.rows.front().push_back(GetResString(column.headerKey));
    grid.columnWidths.push_back(column.width);
    grid.alignments.push_back(column.alignment);
  }
}

// --- Values, with Null as the server has it: what is computed from Null is Null, and no comparison with it holds.

Value signedAmount(const Value& amount, bool negative) {
  if (amount.isNull() || !negative) return amount;
  return -amount.asMoney();
}

Value signedQuantity(const Value& quantity, bool negative) {
  if (quantity.isNull() || !negative) return quantity;
  return -quantity.asDouble();
}

// Both tolerances are strict: a difference that equals it is too large.
bool sameAmount(const Value& a, const Value& b) {
  constexpr Money tolerance = Money::fromUnits(100);  // 0.01
  if (a.isNull() || b.isNull()) return false;
  return (a.asMoney() - b.asMoney()).abs() < tolerance;
}

bool sameQuantity(const Value& a, const Value& b) {
  constexpr double tolerance = 0.001;
  if (a.isNull() || b.isNull()) return false;
  return std::fabs(a.asDouble() - b.asDouble()) < tolerance;
}

bool isNegative(const Value& amount) {
  return !amount.isNull() && amount.asMoney() < Money();
}

// --- The rows

class Verification {
public:
  Verification(Recordset& rows, Grid& grid) : rows_(rows), grid_(grid) {}

  void checkAll();
  std::int32_t rightCount() const { return rightCount_; }
  std::int32_t wrongCount() const { return wrongCount_; }

private:
  bool isType(const char* type) const { return rows_.Field("type").displayText() == type; }
  void introduce();
  void decide();
  std::string verdictOfNextRow();
  std::string rowText() const;

  Recordset& rows_;
  Grid& grid_;
  std::string cCode_;     // the account that the row introduces; empty on a "B" row behind a row of its account
  std::string lastCode_;  // the account that was introduced last
  std::string aux_;
  // Not reset between rows: that is intended. An account that is compared with the row behind it and is itself the last
  // row of the table has its predecessor's verdict.
  std::string state_;
  CodeRecord current_, closing_;  // the account introduced last, in the new and in the closing year
  std::int32_t rightCount_ = 0, wrongCount_ = 0;
};

void Verification::checkAll() {
  for (; !rows_.Eof(); rows_.MoveNext()) {
    showProgress("Orvo.GL.TqGLJZ.00241", {rows_.Field("ccode")});
    introduce();
    decide();
    if (!cCode_.empty()) LoadCode(lastConn(), cCode_, closing_);
    const std::string text = rowText();
    if (state_ == ok) ++rightCount_;
    if (state_ == no) ++wrongCount_;
    grid_.addRow(text);
  }
}

void Verification::introduce() {
  const std::string ccode = rows_.Field("ccode").asText();
  const bool introduces = isType("A") || ccode != lastCode_;
  cCode_ = introduces ? ccode : "";
  if (introduces) lastCode_ = ccode;
  if (isType("A")) aux_.clear();
  if (cCode_.empty()) return;
  pubCls().GetCodeRecord(cCode_, current_);
  aux_ = auxiliaryLabel(current_, aux_);
}

void Verification::decide() {
  if (!isType("A")) {
    // An auxiliary balance without an account total is wrong; one behind its account's row was judged there.
    state_ = cCode_.empty() ? "" : no;
    return;
  }
  // An account whose partners were not carried passes unchecked: its auxiliary sum is incomplete by design.
  const bool unchecked = !current_.bEnd || !current_.bAss || (current_.bCus && !run.m_bCusPresent) ||
                         (current_.bSup && !run.m_bSupPresent);
  state_ = unchecked ? ok : verdictOfNextRow();
}

std::string Verification::verdictOfNextRow() {
  const bool negative = rows_.Field("cbegind_c").asText() == credit;
  const Value mb = signedAmount(rows_.Field("mb"), negative);
  const Value quantity = signedQuantity(rows_.Field("nb_s"), negative);
  const Value foreign = signedAmount(rows_.Field("mb_f"), negative);

  std::string verdict = state_;  // stays when there is no next row
  rows_.MoveNext();
  if (!rows_.Eof()) {
    const bool right = isType("B") && rows_.Field("ccode").asText() == cCode_ && sameAmount(rows_.Field("mb"), mb) &&
                       sameQuantity(rows_.Field("nb_s"), quantity) && sameAmount(rows_.Field("mb_f"), foreign);
    verdict = right ? ok : no;
  }
  rows_.MovePrevious();
  return verdict;
}

// The word that stands for the sign of a net amount.
std::string directionOf(const Value& net) {
  if (isNegative(net)) return credit;
  return !net.isNull() && Money() < net.asMoney() ? debit : balanced;
}

std::string auxText(bool isA, bool isB, const std::string& aux) {
  if (isA) return aux;
  return GetResString(isB ? "Orvo.GL.TqGLJZ.00260" : "Orvo.GL.TqGLJZ.00261");
}

std::string Verification::rowText() const {
  const bool isA = isType("A");
  const Value mb = rows_.Field("mb");
  const bool negative = !isA && isNegative(mb);  // a net amount is shown as a magnitude with its direction
  const double quantity = negative ? -rows_.Field("nb_s").asDouble() : rows_.Field("nb_s").asDouble();
  const bool introduces = !cCode_.empty();
  const auto ifIntroduces = [&](const std::string& text) { return introduces ? text : std::string(); };
  constexpr double smallestShown = 0.000001;
  return reportRow(
      {cCode_, ifIntroduces(closing_.cCode_name), ifIntroduces(current_.cCode_name), auxText(isA, isType("B"), aux_),
       pubCls().TranslateWord(isA ? rows_.Field("cbegind_c").asText() : directionOf(mb)),
       formatAmount(signedAmount(mb, negative)), formatAmount(signedAmount(rows_.Field("mb_f"), negative)),
       ifIntroduces(rows_.Field("cexch_name").displayText()),
       std::fabs(quantity) < smallestShown ? "" : platform::numberText(quantity), ifIntroduces(current_.cMeasure),
       state_ == ok   ? "Y"
       : state_ == no ? "X"
                      : ""});
}

}  // namespace

void CheckOpeningBalance() {
  showProgress("Orvo.GL.TqGLJZ.00226");
  auto rows = openWorkTable();
  FrmJZBG& report = frmJZBG();
  Verification verification(*rows, report.Grid1);
  if (!rows->Eof()) {
    layOut(report.Grid1);
    verification.checkAll();
  }
  rows->Close();
  dropWorkTable();
  report.Label2.Caption = std::to_string(verification.rightCount());
  report.Label4.Caption = std::to_string(verification.wrongCount());
  report.ShowModal();
}

}  // namespace gljz
