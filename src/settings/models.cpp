#include "settings/models.h"

#include "core/mdu_jz.h"
#include "platform/run_time_error.h"
#include "settings/models_sql.h"

namespace gljz {
namespace {

namespace sql = models_sql;

constexpr int msgYesNoInformation = 68;
constexpr int answerYes = 6;

// Nobody is ever asked as things stand (ShowMsg answers 0), so a watched run keeps the models of the new year whatever
// the option says. That is intended.
bool mayReplace() {
  if (!run.m_bManual) return run.CoverBankModalData;
  return ShowMsg(GetResString("Orvo.GL.TqGLJZ.00295"), msgYesNoInformation, "") == answerYes;
}

void deleteModels() {
  for (const auto& statement : {sql::deleteMain(), sql::deletePreplace(), sql::deleteSub1(), sql::deleteSub2()})
    newConn().ExecuteSql(statement);
}

void copyModels() {
  const std::string& lastDB = run.m_strLastDB;
  for (const auto& statement :
       {sql::copyMain(lastDB), sql::copyPreplace(lastDB), sql::copySub1(lastDB), sql::copySub2(lastDB)})
    newConn().ExecuteSql(statement);
}

void carryModels() {
  if (hasRow(newConn(), sql::selectModels())) {
    if (!mayReplace()) return;
    deleteModels();
  }
  // Intended: replacements are cleared a second time, and without models too; an unattended run that may replace
  // nothing leaves them, and the copy may then collide with what it finds.
  if (run.m_bManual || run.CoverBankModalData) newConn().ExecuteSql(sql::deletePreplace());
  copyModels();
}

}  // namespace

bool JzModel() {
  try {
    carryModels();
    return true;
  } catch (const platform::RunTimeError&) {
    return false;
  }
}

}  // namespace gljz
