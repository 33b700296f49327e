#include "driver/precondition_checks.h"

#include <optional>
#include <string>

#include "core/mdu_jz.h"
#include "driver/precondition_checks_sql.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = precondition_checks_sql;
using platform::Connection;
using platform::Value;

std::string title() {
  return GetResString("Orvo.GL.TqGLJZ.00002");
}

// The first field of the first row as a Boolean, nothing without a row. RunTimeError 94 when it is Null.
std::optional<bool> firstBoolean(Connection& connection, const std::string& statement) {
  auto rs = connection.OpenRecordset(statement, 2);
  std::optional<bool> result;
  if (!rs->Eof()) result = rs->Field(0).asBool();
  rs->Close();
  return result;
}

CheckOutcome stopWith(const std::string& message) {
  run.m_strMsg = message;
  return CheckOutcome::stop;
}

// An operator who watches must not carry into the account set's first year. A run without one is not asked.
bool isFirstYear() {
  return run.m_bManual && pubCls().AccountYearInfo() == pubCls().CurrentYearInfo();
}

bool isShown(const std::string& setting) {
  return GetAccinfo(lastConn(), "GL", setting) == "True";
}

CheckOutcome checkLastYear() {
  if (!hasRow(lastConn(), sql::selectYearStateTable())) return stopWith(" 上年数据未升级,或者表结构不对！");

  const bool closed = firstBoolean(lastConn(), sql::selectClosed(run.m_strLastYear)).value_or(false);
  if (!closed) return stopWith(GetResString("Orvo.GL.TqGLJZ.00032"));

  const bool closedTwice = firstBoolean(lastConn(), sql::selectAdjust()).value_or(false);
  if (closedTwice && !firstBoolean(lastConn(), sql::selectSecondClosing(run.m_strLastYear)).value_or(true)) {
    return stopWith(" 上年年底未关账 不能执行上年结转 ");
  }
  return CheckOutcome::goOn;
}

CheckOutcome checkChartAndCategories() {
  if (!hasRow(newConn(), sql::selectChart(run.m_strCurYear))) return stopWith(GetResString("Orvo.GL.TqGLJZ.00034"));
  if (!hasRow(newConn(), sql::selectVoucherCategories())) {
    return stopWith(separateDatabases() ? GetResString("Orvo.GL.TqGLJZ.00036") : "未设置凭证类别,不能执行上年结转");
  }
  return CheckOutcome::goOn;
}

struct ReferenceTable {
  const Sql<1>& accounts;  // accounts of the new year that need it
  const Sql<0>& rows;
  const char* number;  // of the prompt key; the stop key has it behind "cancel."
  bool RunState::*mayBeEmpty;
};

constexpr ReferenceTable referenceTables[] = {
    {sql::selectBankAccounts, sql::selectSettleStyles, "00038", &RunState::BalTypeIsNull},
    {sql::selectDepartmentAccounts, sql::selectDepartments, "00040", &RunState::DeptIsNull},
    {sql::selectCustomerAccounts, sql::selectCustomers, "00042", &RunState::CusIsNull},
    {sql::selectSupplierAccounts, sql::selectSuppliers, "00044", &RunState::SupIsNull},
    {sql::selectPersonAccounts, sql::selectPersons, "00046", &RunState::PersonIsNull},
};
constexpr ReferenceTable itemClasses{sql::selectItemAccounts, sql::selectItemClasses, "00048", &RunState::ItemIsNull};

bool isMissing(const ReferenceTable& table) {
  return hasRow(newConn(), table.accounts(run.m_strCurYear)) && !hasRow(newConn(), table.rows());
}

CheckOutcome askWhetherToGoOn(const ReferenceTable& table) {
  const std::string prompt = GetResString(std::string("Orvo.GL.TqGLJZ.") + table.number);
  return ShowMsg(prompt, msgYesNoQuestion, title()) == answerNo ? CheckOutcome::stop : CheckOutcome::goOn;
}

// An empty reference table although accounts need it. As no box ever shows, the flag decides, and a stop is silent.
CheckOutcome checkReferenceTable(const ReferenceTable& table) {
  if (!isMissing(table)) return CheckOutcome::goOn;
  if (run.m_bManual && run.m_bCancelable) return askWhetherToGoOn(table);
  if (run.*table.mayBeEmpty) return CheckOutcome::goOn;
  ShowMsg(GetResString(std::string("Orvo.GL.TqGLJZ.cancel.") + table.number), msgPlain, "");
  return CheckOutcome::stop;
}

// Item classes differ, and that is intended: the operator is asked whatever the kind of run, and as the question gets
// no answer the check never stops a run.
CheckOutcome checkItemClasses() {
  if (!isMissing(itemClasses) || run.*itemClasses.mayBeEmpty) return CheckOutcome::goOn;
  return askWhetherToGoOn(itemClasses);
}

CheckOutcome checkReferenceTables() {
  run.m_bCancelable = false;
  for (const ReferenceTable& table : referenceTables) {
    if (checkReferenceTable(table) == CheckOutcome::stop) return CheckOutcome::stop;
  }
  return checkItemClasses();
}

// A new year that is in use already is left alone; the stop is silent.
CheckOutcome checkPostedVouchers() {
  if (!hasRow(newConn(), sql::selectPostedVoucher(run.m_strCurYear))) return CheckOutcome::goOn;
  ShowMsg(GetResString("Orvo.GL.TqGLJZ.00050"), msgWarning, title());
  return CheckOutcome::stop;
}

// Whether the new year holds opening balances is not tested: the stages replace them. Only the marks are set.
void markOpeningBalanceCheck() {
  run.m_strLastSql = sql::labelPostedVoucher;
  run.m_strFuncDesc = "结转函数--条件判断-判断本年数据库中是否已录入期初余额 ";
  run.m_strLastSql = sql::labelOpeningBalances;
}

bool hasVoucher(const Sql<2>& statement) {
  return hasRow(lastConn(), statement(run.m_strInitYear, run.m_strLastYear));
}

// A mode without anything to carry becomes 0. `shown` and `used` are what the settings and the options say.
void settleMode(bool shown, bool used, const Sql<2>& vouchers, const char* differenceKey, bool& present,
                std::uint8_t& mode) {
  present = used && shown;
  if (present) {
    if (!hasVoucher(vouchers)) mode = 0;
    return;
  }
  mode = 0;
  if (shown != used) ShowMsg(GetResString(differenceKey), msgWarning, title());
}

void settleModes(bool bCus, bool bSup) {
  run.m_strFuncDesc = "结转函数--条件判断-判断是否有往来账并确定往来结转方式 ";
  if (!hasVoucher(sql::selectPersonVoucher)) run.m_iPersonMode = 0;
  run.m_strLastSql = sql::labelPersonVoucher;
  settleMode(bCus, pubCls().AccountOptions().bCusAccount, sql::selectCustomerVoucher, "Orvo.GL.TqGLJZ.00058",
             run.m_bCusPresent, run.m_iCusMode);
  settleMode(bSup, pubCls().AccountOptions().bSupAccount, sql::selectSupplierVoucher, "Orvo.GL.TqGLJZ.00060",
             run.m_bSupPresent, run.m_iSupMode);
}

}  // namespace

CheckOutcome CheckPreconditions() {
  run.m_bSuccess = false;
  run.m_strFuncName = "TqGLJZ.mdlZDJZ.ExecJZ";
  run.m_strFuncDesc = "结转函数--条件判断 ";
  startStep(Step::checks);
  if (isFirstYear()) {
    ShowMsg(GetResString("Orvo.GL.TqGLJZ.00028"), msgInformation, title());
    return CheckOutcome::leaveAtOnce;
  }
  run.m_strInitYear = GetLastInitYear();
  const bool bCus = isShown("bCusDisplay");
  const bool bSup = isShown("bSupDisplay");

  for (const auto check : {checkLastYear, checkChartAndCategories, checkReferenceTables, checkPostedVouchers}) {
    if (check() == CheckOutcome::stop) return CheckOutcome::stop;
  }
  markOpeningBalanceCheck();
  settleModes(bCus, bSup);
  return CheckOutcome::goOn;
}

}  // namespace gljz
