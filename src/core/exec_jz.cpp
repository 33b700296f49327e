#include "core/exec_jz.h"

#include <string>

#include "core/exec_jz_sql.h"
#include "core/failure_handler.h"
#include "core/mdu_jz.h"
#include "detail/jz_data.h"
#include "driver/current_account_checks.h"
#include "driver/precondition_checks.h"
#include "driver/progress.h"
#include "driver/small_stages.h"
#include "platform/surroundings.h"
#include "verify/opening_balance.h"

namespace gljz {
namespace {

namespace sql = exec_jz_sql;

void writeDebugLine(const std::string& line) {
  if (auto* debug = platform::surroundings().debug) debug->Write(line);
}

// The stages in their transaction, and the verification behind it. Each step stands on its own under the handler: when
// one fails, the next one follows.
void carryForward(FailureHandler& handler) {
  handler.step([] { newConn().BeginTrans(); });
  handler.step(JzData);
  run.m_strFuncDesc = "结转函数--现金流量项目对应关系";
  handler.step([] { JzCashItemDataSource(run.m_strLastDB, run.m_strCurDB); });
  if (run.bClear) handler.step(ClearSyKm);

  bool gfLogin = false;
  handler.step([&] { gfLogin = login().IsGFLogin(); });
  if (gfLogin) {
    handler.step([] { newConn().ExecuteSql(sql::clearDeleteYe()); });
    handler.step([] { newConn().ExecuteSql(sql::clearImportEnd()); });
  }
  handler.step([] { newConn().ExecuteSql(sql::markUnloaded(run.m_strCurYear)); });
  handler.step([] { newConn().ExecuteSql(sql::rebuildItemNames()); });
  handler.step([] { newConn().ExecuteSql(sql::rebuildItemView()); });
  handler.step([] { newConn().CommitTrans(); });

  run.m_bSuccess = true;  // also when a stage failed: that is intended
  handler.step([] { writeDebugLine("ExecJZ m_strMsg:" + run.m_strMsg); });
  handler.step(CheckOpeningBalance);
}

// Closes the closing year's connection when it is the run's own.
void leave(FailureHandler& handler) {
  platform::RawConnection* raw = nullptr;
  handler.step([&] { raw = &lastConn().RawConnection(); });

  bool ownAndOpen = false;
  handler.step([&] {
    if (raw == nullptr) throw platform::RunTimeError(platform::RunTimeError::objectNotSet, "Object not set");
    ownAndOpen = raw->State() == platform::RawConnection::open && separateDatabases();
  });
  if (!ownAndOpen) return;
  handler.step([] { lastConn().ConnectionClose(); });
  run.m_conn = nullptr;
}

}  // namespace

void ExecJZ() {
  CheckOutcome outcome = CheckPreconditions();
  if (outcome == CheckOutcome::leaveAtOnce) return;
  if (outcome == CheckOutcome::goOn) outcome = CheckCurrentAccounts();

  FailureHandler handler;  // off: a failure on the way out of a stop is uncaught
  if (outcome == CheckOutcome::goOn) {
    run.m_strFuncDesc = "结转函数--条件判断-确定是否结转转帐定义";  // names a decision that is made no more
    advanceFrom(Step::checks);
    showHourglass();
    handler.switchOn();
    carryForward(handler);
  }
  leave(handler);
}

}  // namespace gljz
