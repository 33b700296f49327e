#include "settings/transfer_definitions.h"

#include <string>

#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "driver/progress.h"
#include "settings/transfer_definitions_sql.h"

namespace gljz {
namespace {

namespace sql = transfer_definitions_sql;
using platform::CodeRecord;
using platform::Recordset;

constexpr int mayNameParents = 20;                    // itype whose rows need no last-level account
constexpr int amortisation = 80, accrual = 81;        // itypes with a run log
constexpr const char* gone = "Orvo.GL.TqGLJZ.00281";  // the record is not in the new year

struct DefinitionKey {
  int itype = 0;
  std::string ctran_id;
};

// --- Report of the row that keeps a definition behind: kind, code, name, reason.

void report(const char* kindKey, const std::string& code, const std::string& name, const char* reasonKey) {
  AddImbalanceRow(GetResString(kindKey, {"\t" + code + "\t" + name}) + "\t" + GetResString(reasonKey));
}

void reportAccount(const Recordset& row, const char* reasonKey) {
  if (!run.m_bManual) return;
  report("Orvo.GL.TqGLJZ.00112", row.Field("ccode").displayText(), row.Field("cCode_name").displayText(), reasonKey);
}

// --- Does a row fit? The first test that it fails is reported.

// What makes up the auxiliary shape of an account here. Intended: the item classes of persons, and of customers and
// suppliers by department, are not looked at.
bool sameAuxiliaryShape(const CodeRecord& a, const CodeRecord& b) {
  return a.bPersonOnly == b.bPersonOnly && a.cCusItemClass == b.cCusItemClass && a.cSupItemClass == b.cSupItemClass &&
         a.cDeptItemClass == b.cDeptItemClass && a.bCusDept == b.bCusDept && a.bSupDept == b.bSupDept &&
         a.bCusOnly == b.bCusOnly && a.bSupOnly == b.bSupOnly && a.bDeptOnly == b.bDeptOnly &&
         a.bItemOnly == b.bItemOnly;
}

bool accountFits(const Recordset& row) {
  const std::string newCode = pubCls().MatchCode(row.Field("ccode").asText(), 2, true);
  if (newCode.empty()) {
    reportAccount(row, "Orvo.GL.TqGLJZ.00293");
    return false;
  }
  CodeRecord target, closing;
  pubCls().GetCodeRecord(newCode, target);
  LoadCode(lastConn(), newCode, closing);  // intended: by the new code, also where the account was renumbered
  if (row.Field("iType").asInteger() != mayNameParents && !target.bEnd) {
    reportAccount(row, "Orvo.GL.TqGLJZ.00291");
    return false;
  }
  if (!sameAuxiliaryShape(target, closing)) {
    reportAccount(row, "Orvo.GL.TqGLJZ.00279");
    return false;
  }
  return true;
}

bool departmentFits(const Recordset& row) {
  if (row.Field("cdept_ID").isNull()) return true;
  const std::string code = row.Field("cdept_ID").asText();
  if (!pubCls().MatchDepartment(code, 0, true).empty()) return true;
  if (!run.m_bManual) return false;
  DepartmentRecord department;
  LoadDepartment(lastConn(), code, department);
  report("Orvo.GL.TqGLJZ.00114", code, department.cDepName, "Orvo.GL.TqGLJZ.00283");  // a reason of its own: intended
  return false;
}

bool personFits(const Recordset& row) {
  if (row.Field("cPerson_ID").isNull()) return true;
  const std::string code = row.Field("cPerson_ID").asText();
  if (!pubCls().MatchPerson(code, 0, true).empty()) return true;
  if (!run.m_bManual) return false;
  PersonRecord person;
  LoadPerson(lastConn(), code, person);
  report("Orvo.GL.TqGLJZ.00116", code, person.cPersonName, gone);
  return false;
}

bool customerFits(const Recordset& row) {
  if (row.Field("ccus_id").isNull()) return true;
  const std::string code = row.Field("ccus_id").asText();
  if (!pubCls().MatchCustomer(code, 0, true).empty()) return true;
  if (!run.m_bManual) return false;
  CustomerRecord customer;
  LoadCustomer(lastConn(), code, customer);
  report("Orvo.GL.TqGLJZ.00118", code, customer.cCusAbbName, gone);  // the short name, as in every report row
  return false;
}

bool vendorFits(const Recordset& row) {
  if (row.Field("csup_id").isNull()) return true;
  const std::string code = row.Field("csup_id").asText();
  if (!pubCls().MatchVendor(code, 0, true).empty()) return true;
  if (!run.m_bManual) return false;
  VendorRecord vendor;
  LoadVendor(lastConn(), code, vendor);
  report("Orvo.GL.TqGLJZ.00120", code, vendor.cVenAbbName, gone);
  return false;
}

bool itemFits(const Recordset& row) {
  if (row.Field("cItem_id").isNull()) return true;
  const std::string code = row.Field("cItem_id").asText();
  const std::string itemClass = row.Field("citem_class").displayText();  // Null: a class that no item has
  if (!pubCls().MatchItem(code, itemClass, 0, true).empty()) return true;
  if (!run.m_bManual) return false;
  ItemRecord item;
  LoadItem(lastConn(), itemClass, code, item);
  report("Orvo.GL.TqGLJZ.00122", code, item.citemname, gone);
  return false;
}

bool rowFits(const Recordset& row) {
  showProgress("Orvo.GL.TqGLJZ.00276", {row.Field("ccode")});
  DoEvents();
  return accountFits(row) && departmentFits(row) && personFits(row) && customerFits(row) && vendorFits(row) &&
         itemFits(row);
}

// --- One definition after the other.

bool definitionFits(const DefinitionKey& key) {
  auto rows = lastConn().OpenRecordset(sql::selectRows(key.itype, key.ctran_id), 2);
  bool fits = true;
  for (; fits && !rows->Eof(); rows->MoveNext()) fits = rowFits(*rows);
  rows->Close();
  return fits;
}

void carry(const DefinitionKey& key) {
  if (!definitionFits(key)) return;
  const bool hasRunLog = key.itype == amortisation || key.itype == accrual;
  if (hasRunLog && hasRow(newConn(), sql::selectEarlierCopy(key.itype, key.ctran_id)))
    newConn().ExecuteSql(sql::deleteEarlierCopy(key.itype, key.ctran_id));
  newConn().ExecuteSql(sql::copyDefinition(run.m_strLastDB, key.itype, key.ctran_id));
}

void clearNewYear() {
  newConn().ExecuteSql(sql::deleteOrdinary());
  newConn().ExecuteSql(sql::deleteOtherYearsLog(run.m_strCurYear));
  newConn().ExecuteSql(sql::deleteWithoutLog());
}

void carryDefinitions() {
  auto keys = lastConn().OpenRecordset(sql::selectKeys(), 2);
  for (; !keys->Eof(); keys->MoveNext())
    carry({static_cast<int>(keys->Field("itype").asInteger()), keys->Field("ctran_id").asText()});
  keys->Close();
}

void mergeRunLog() {
  newConn().ExecuteSql(sql::deleteOlderLog(run.m_strCurYear));
  newConn().ExecuteSql(sql::mergeLog(run.m_strLastYear, run.m_strLastDB));
}

}  // namespace

void JzBautotran() {
  run.m_strFuncDesc = "结转函数--结转上年转帐定义GL_bautotran";
  clearNewYear();
  carryDefinitions();
  newConn().ExecuteSql(sql::setReferencedAmount(run.m_strLastDB));
  mergeRunLog();
  finishStep(Step::otherTables);
}

}  // namespace gljz
