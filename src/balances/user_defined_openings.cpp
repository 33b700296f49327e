#include "balances/user_defined_openings.h"

#include <string>

#include "balances/user_defined_openings_sql.h"
#include "core/mdu_jz.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = user_defined_openings_sql;
using platform::Recordset;
using platform::Value;

// Copied only when they are not Null; the target keeps its defaults otherwise.
constexpr const char* keyColumns[] = {"cdept_id",  "cperson_id", "ccus_id",   "csup_id",   "citem_id",  "citem_class",
                                      "cdefine1",  "cdefine2",   "cdefine3",  "cdefine4",  "cdefine5",  "cdefine6",
                                      "cdefine7",  "cdefine8",   "cdefine9",  "cdefine10", "cdefine11", "cdefine12",
                                      "cdefine13", "cdefine14",  "cdefine15", "cdefine16"};

void write(const Recordset& opening, Recordset& target) {
  target.AddNew();
  target.SetField("iyear", Value(yearNumber(run.m_strCurYear)));
  target.SetField("ccode", opening.Field("ccode"));
  for (const char* column : keyColumns) {
    const Value key = opening.Field(column);
    if (!key.isNull()) target.SetField(column, key);
  }
  for (const char* column : {"cDirec", "mb", "mb_f", "nb_s"}) target.SetField(column, opening.Field(column));
  target.Update();
}

}  // namespace

void JzQcUserDef() {
  newConn().ExecuteSql(sql::deleteYear(run.m_strCurYear));
  const std::string selection = sql::selectOpenings(run.m_strCurYear);
  auto openings = newConn().OpenRecordset(selection, 2);
  run.m_strLastSql = selection;
  auto target = newConn().OpenRecordset(sql::selectTarget(run.m_strCurYear), 2);

  for (; !openings->Eof(); openings->MoveNext()) {
    showProgress("Orvo.GL.TqGLJZ.00180", {openings->Field("ccode")});
    DoEvents();
    write(*openings, *target);
  }
  openings->Close();
  target->Close();
}

}  // namespace gljz
