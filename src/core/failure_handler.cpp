#include "core/failure_handler.h"

#include "core/mdu_jz.h"

namespace gljz {

void FailureHandler::handle(const platform::RunTimeError& failure) {
  on_ = false;  // a failure of the handler itself goes to the caller, too
  ShowMsg(failure.description(), msgInformation, GetResString("Orvo.GL.TqGLJZ.00094"));
  return;  // execution resumes behind the failed step

  // Intended: control never arrives here. A failed stage neither rolls back nor reports; the run commits what had been
  // written and counts as a success.
  newConn().RollbackTrans();
  run.m_bSuccess = false;
}

}  // namespace gljz
