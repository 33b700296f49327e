#include "core/cls_gljz.h"

#include "core/exec_jz.h"
#include "core/mdu_jz.h"
#include "core/transfer_parameters.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_tran_cond.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

using platform::surroundings;

// Constants of the login service.
constexpr int openForTransfer = 10;
constexpr int carryForwardDone = 205;

constexpr int pointerDefault = 0, pointerHourglass = 11;

std::string subsystemOfLogin() {
  return login().IsGFLogin() ? "GF" : "GL";
}

void markDone() {
  const std::string subsystem = subsystemOfLogin();
  login().LoginMarkDone(carryForwardDone, subsystem, pubCls().CurrentYearInfo() - 1, true);
}

std::string successText() {
  return GetResString(login().IsGFLogin() ? "Orvo.GL.TqGLJZ.00309" : "Orvo.GL.TqGLJZ.00310");
}

std::string replaceAll(std::string text, const std::string& what, const std::string& with) {
  if (what.empty()) return text;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
    text.replace(at, what.size(), with);
  }
  return text;
}

// A database name ends in account and year, behind a prefix of seven characters: TqData_001_2006 gives 0012006.
std::string accountAndYear(const std::string& database) {
  constexpr int prefixCharacters = 7;
  std::size_t at = 0;
  for (int i = 0; i < prefixCharacters && at < database.size(); ++i) {
    ++at;
    const auto continues = [&] { return (static_cast<unsigned char>(database[at]) & 0xC0) == 0x80; };
    while (at < database.size() && continues()) ++at;
  }
  return replaceAll(database.substr(at), "_", "");
}

// The new year's connection text, from that of the login.
std::string newYearConnectionText(const std::string& text, const std::string& lastDb, const std::string& thisDb) {
  const std::string systemDb = "TQSYSTEM";
  if (thisDb.empty()) return text;
  const std::string upper = platform::toUpperAscii(text);
  if (const auto at = upper.find(systemDb); at != std::string::npos) {
    return text.substr(0, at) + thisDb + text.substr(at + systemDb.size());
  }
  // The name is looked for as given in the upper-cased text: a name with small letters is never found. Intended.
  if (upper.find(lastDb) != std::string::npos) return replaceAll(text, lastDb, thisDb);
  return text;
}

void showConditions() {
  frmTranCond().ShowModal();
}

// What StartJz adds to the message of a run that did not reach its end.
std::string failureText() {
  return "  失败所在函数：" + run.m_strFuncName + "  该函数的功能 :" + run.m_strFuncDesc + "  最后执行的 sql 语句：" +
         run.m_strLastSql;
}

// Opens or adopts the closing year's connection. False: there is no database for it, or it cannot be opened.
bool connectLastYear() {
  run.m_strLastDB = GetDatabaseName(run.m_strLastYear);
  run.m_strCurDB = GetDatabaseName(run.m_strCurYear);
  if (platform::trim(run.m_strLastDB).empty()) return false;
  if (!separateDatabases()) {
    run.m_conn = pubCls().NewYearConn();
    return true;
  }
  std::string text = accountAndYear(run.m_strLastDB);
  if (!login().LoginOpenAccount(openForTransfer, text)) return false;
  lastConn().ConnectionOpen(text);
  return true;
}

void initServices(const std::string& connectionText, const std::string& currentYear, const std::string& accountId) {
  const std::string loginAccount = login().LoginAccId();
  const std::string loginYear = login().LoginYear();
  pubCls().InitServices(login().LoginHandle(), connectionText, loginAccount.empty() ? accountId : loginAccount,
                        yearNumber(loginYear.empty() ? currentYear : loginYear), login().LoginOperator(),
                        login().LoginDate());
}

}  // namespace

clsGLJZ::clsGLJZ() {
  run.m_lWhite = platform::rgb(255, 255, 255);
  run.m_lGridHead = platform::rgb(205, 208, 215);
  run.m_lGridShade = platform::rgb(247, 237, 236);
  run.m_lReportRow = platform::rgb(238, 238, 214);
  run.m_pubCls = nullptr;
  run.m_login = nullptr;
}

bool clsGLJZ::StartJz() {
  run.m_bManual = true;
  run.m_bSuccess = false;
  run.m_strFuncName = "TqGLJZ.clsGLJZ.StartJz()";
  run.m_strFuncDesc = "手工结转接口函数";
  if (!ZwPubCls) {
    ShowMsg(GetResString("Orvo.GL.TqGLJZ.00001"), msgWarning, GetResString("Orvo.GL.TqGLJZ.00002"));
    return false;
  }
  if (!m_loginCls) {
    ShowMsg(GetResString("Orvo.GL.TqGLJZ.00003"), msgWarning, GetResString("Orvo.GL.TqGLJZ.00002"));
    return false;
  }
  run.m_pubCls = ZwPubCls;
  run.m_login = m_loginCls;

  frmJZSN().ShowModal();

  if (run.m_bSuccess) {
    markDone();
  } else {
    run.m_strMsg += failureText();
  }
  return run.m_bSuccess;
}

bool clsGLJZ::Transfer(const std::string& cAccID, const std::string& cLastYear, const std::string& cCurrentYear,
                       std::string& cParameterInfo, const std::shared_ptr<platform::Login>& oLogin,
                       std::string& cErrMsg, const std::shared_ptr<void>& /*oView*/) {
  cErrMsg.clear();
  run.m_strMsg.clear();
  run.m_bManual = false;
  run.m_strFuncName = "TqGLJZ.clsGLJZ.Transfer";
  run.m_strFuncDesc = "接口函数";
  if (!ZwPubCls) {
    run.m_strMsg = GetResString("Orvo.GL.TqGLJZ.00001");
    return false;
  }
  if (!oLogin) {
    run.m_strMsg = GetResString("Orvo.GL.TqGLJZ.00003");
    return false;
  }
  run.m_pubCls = ZwPubCls;
  run.m_login = oLogin;
  run.m_strLastYear = cLastYear;
  run.m_strCurYear = cCurrentYear;
  run.m_strLastAccId = cAccID;
  run.m_strCurAccId = cAccID;
  run.m_conn = surroundings().newConnection();
  if (!connectLastYear()) {
    cErrMsg = GetResString("Orvo.GL.TqGLJZ.00030");
    return false;
  }

  if (cParameterInfo.empty()) {
    showConditions();
    cParameterInfo = run.m_strCondXml;  // of an earlier run, when the dialog was cancelled
  }
  if (!ParseTransferParameters(cParameterInfo)) return false;

  run.m_bManual = true;
  frmJZSN().enableTimer1();
  frmJZSN().ShowModal();
  run.m_bManual = false;
  if (auto* debug = surroundings().debug) debug->Write("Transfer m_strMsg:" + run.m_strMsg);

  // Success means that nothing was reported; m_bSuccess is not looked at. A stop without a word counts as success.
  if (!platform::trim(run.m_strMsg).empty()) {
    cErrMsg = run.m_strMsg;
    return false;
  }
  cErrMsg = successText();
  markDone();
  return true;
}

bool clsGLJZ::TransGL(const std::string& cLastYear, const std::string& cCurrentYear,
                      const std::shared_ptr<platform::Login>& oLogin, std::string& cErrMsg,
                      const std::string& sLastyeardb, const std::string& sThisyeardb, const std::string& slastAccid,
                      const std::string& scurAccid) {
  cErrMsg.clear();
  run.m_strMsg.clear();
  run.m_bManual = false;
  run.m_login = oLogin;
  run.m_pubCls = surroundings().newServices();
  pubCls().SetLogin(oLogin);
  const std::string connectionText = newYearConnectionText(login().LoginConnText(), sLastyeardb, sThisyeardb);
  pubCls().SetYear(yearNumber(cCurrentYear));
  initServices(connectionText, cCurrentYear, scurAccid);

  run.m_strLastYear = cLastYear;
  run.m_strCurYear = cCurrentYear;
  run.m_strLastAccId = slastAccid;
  run.m_strCurAccId = scurAccid;
  run.m_strLastDB = sLastyeardb;
  run.m_strCurDB = sThisyeardb;
  run.m_conn = surroundings().newConnection();
  if (run.m_strLastDB.empty()) {
    cErrMsg = GetResString("Orvo.GL.TqGLJZ.00030");
    return false;
  }
  // A connection of its own, also when both years lie in one database.
  lastConn().ConnectionOpen(replaceAll(connectionText, sThisyeardb, sLastyeardb));

  surroundings().forms->ScreenPointer(pointerDefault);
  showConditions();
  surroundings().forms->ScreenPointer(pointerHourglass);
  if (!ParseTransferParameters(run.m_strCondXml)) {
    cErrMsg = GetResString("Orvo.GL.TqGLJZ.OrvoV100.013");
    return false;
  }

  ExecJZ();

  if (!platform::trim(run.m_strMsg).empty()) {
    cErrMsg = run.m_strMsg;
    return false;
  }
  cErrMsg = successText();
  return true;
}

bool clsGLJZ::getTransferMsg(std::string& strMsg) {
  strMsg = run.m_strMsg;
  return run.m_bSuccess;
}

}  // namespace gljz
