#include "driver/small_stages.h"

#include "core/mdu_jz.h"
#include "dialogs/frm_sy_km_sel.h"
#include "driver/small_stages_sql.h"

namespace gljz {
namespace {

namespace sql = small_stages_sql;

// The new year has the item table.
bool newYearHas(const std::string& selection) {
  auto table = newConn().RawConnection().Open(selection);
  const bool found = !table->Eof();
  table->Close();
  return found;
}

// What the cleared accounts have in common.
struct Clearing {
  std::string loginYear;  // as the login gives it
  std::string date;       // first day of the new year, default text
  int startYear = 0;      // first year of this database
};

// An account and all below it: the code is a prefix.
void clearAccount(const std::string& code, const Clearing& clearing) {
  const std::string &db = run.m_strCurDB, &year = run.m_strCurYear;
  const auto& [loginYear, date, startYear] = clearing;
  for (const auto& statement :
       {sql::clearAccSum(db, code, year), sql::clearAccAss(db, code, year), sql::clearAccMultiAss(db, code, year),
        sql::clearOpeningDetails(db, code, year), sql::clearQcUserDef(db, code, year),
        sql::insertCancelling(loginYear, date, code, startYear), sql::markCleared(loginYear, date, code, startYear)})
    newConn().ExecuteSql(statement);
}

}  // namespace

void JzCashItemDataSource(std::string lastDb, std::string curDb) {
  const std::string &lastYear = run.m_strLastYear, &curYear = run.m_strCurYear;
  newConn().ExecuteSql(sql::deleteCashItems(curDb, curYear));
  if (newYearHas(sql::selectClass98())) newConn().ExecuteSql(sql::copyClass98(curDb, curYear, lastDb, lastYear));
  if (newYearHas(sql::selectClassZF())) newConn().ExecuteSql(sql::copyClassZF(curDb, curYear, lastDb, lastYear));
}

void JzBmultiGroup() {
  newConn().ExecuteSql(sql::deleteGroups(run.m_strCurYear));
  newConn().ExecuteSql(sql::copyGroups(run.m_strCurYear, run.m_strLastDB, run.m_strLastYear));
}

void ClearSyKm() {
  // A dialog that nobody opened loads now, with nothing chosen.
  for (const std::string& entry : frmSyKmSel().CtlSelList1.right()) {
    const Clearing clearing{login().LoginYear(), pubCls().CalendarInfo(0, 0).text(), pubCls().iStartYear()};
    clearAccount(accountOf(entry), clearing);
  }
  frmSyKmSel.unload();
}

}  // namespace gljz
