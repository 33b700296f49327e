#include "detail/jz_data.h"

#include "balances/account_totals.h"
#include "balances/auxiliary_totals.h"
#include "balances/multi_auxiliary_totals.h"
#include "balances/user_defined_openings.h"
#include "core/mdu_jz.h"
#include "detail/bank_ledger.h"
#include "detail/jz_data_sql.h"
#include "detail/open_items.h"
#include "driver/progress.h"
#include "driver/small_stages.h"
#include "settings/models.h"
#include "settings/other_tables.h"
#include "settings/view_items.h"

namespace gljz {
namespace {

namespace sql = jz_data_sql;

bool viewItemsAreWanted() {
  return platform::toUpperAscii(pubCls().OptionText("GL", "iZBMsg")) == "1";
}

void carryVoucherModels() {
  if (JzModel()) return;
  ShowMsg(GetResString("Orvo.GL.TqGLJZ.00093"), msgInformation, GetResString("Orvo.GL.TqGLJZ.00094"));
}

void carryTotals() {
  run.m_strFuncDesc = "结转函数--结转科目总账GL_accsum";
  JzBmultiGroup();
  JzAccSum();
  advanceFrom(Step::accountTotals);

  run.m_strFuncDesc = "结转函数--结转辅助总账GL_accass";
  JzAccAss();
  advanceFrom(Step::auxiliaryTotals);

  // Intended: the text names the other table, and the same step is finished a second time.
  run.m_strFuncDesc = "结转函数--结转多辅助总账GL_accass";
  JzAccMultiAss();
  advanceFrom(Step::auxiliaryTotals);
}

void carryOpenItems() {
  OpenItemState state;
  run.m_strFuncDesc = "结转函数--结转明细账GL_accvouch";
  if (run.m_iPersonMode == 2) CarryPersonItems(state);  // persons know no selection by account

  run.m_strFuncDesc = "结转函数--结转未达客户往来账 ";
  if (run.m_iCusMode == 2 || run.m_iCusMode == 3) CarryCustomerItems(state);

  run.m_strFuncDesc = "结转函数--结转未达供应商往来账 ";
  if (run.m_iSupMode == 2 || run.m_iSupMode == 3) CarrySupplierItems(state);

  advanceFrom(Step::details);
}

// In one database with the closing year, the detail of a later year of the span is there already: only the opening
// details go, and the step keeps its place on the progress form.
void carryDetails() {
  const int startYear = pubCls().iStartYear();
  const bool laterYearOfSpan = yearNumber(run.m_strCurYear) != startYear && !separateDatabases();
  if (laterYearOfSpan) {
    newConn().ExecuteSql(sql::deleteOpeningDetails(run.m_strCurYear));
  } else {
    carryOpenItems();
  }
}

}  // namespace

void JzData() {
  run.m_strFuncName = "TqGLJZ.mdlZDJZ.JzData";
  run.m_strFuncDesc = "结转函数--结转科目总账与辅助账等";
  if (viewItemsAreWanted()) JzViewItem();
  if (separateDatabases()) carryVoucherModels();

  carryTotals();
  carryDetails();
  JzYhData();

  showProgress("Orvo.GL.TqGLJZ.00176");
  DoEvents();
  if (separateDatabases()) JzOtherTables();

  run.m_strFuncDesc = "结转函数--自定义项结转";
  JzQcUserDef();
}

}  // namespace gljz
