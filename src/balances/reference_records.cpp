#include "balances/reference_records.h"

#include <cstddef>
#include <memory>

#include "balances/code_classification.h"
#include "balances/reference_records_sql.h"
#include "core/mdu_jz.h"

namespace gljz {
namespace {

namespace sql = reference_records_sql;
using platform::CodeRecord;
using platform::Connection;
using platform::Recordset;
using platform::RunTimeError;
using platform::Value;

// Hands the first row of a selection to read; without one calls otherwise.
template <class Read, class Otherwise>
void firstRow(Connection& connection, const std::string& statement, Read read, Otherwise otherwise) {
  auto rs = connection.OpenRecordset(statement, 2);
  if (rs->Eof()) {
    otherwise();
  } else {
    read(*rs);
  }
  rs->Close();
}
template <class Read>
void firstRow(Connection& connection, const std::string& statement, Read read) {
  firstRow(connection, statement, read, [] {});
}

int wholeNumber(const Value& value) {
  return static_cast<int>(value.asInteger());
}
std::string textOrEmpty(const Value& value) {
  return value.isNull() ? std::string() : value.asText();
}
double numberOrZero(const Value& value) {
  return value.isNull() ? 0 : value.asDouble();
}

std::string currencyCode(Connection& connection, const std::string& currency, bool bySelector) {
  std::string code;
  const auto read = [&](const Recordset& row) { code = textOrEmpty(row.Field("cexch_code")); };
  firstRow(connection, bySelector ? sql::selectCurrencyOfAccounts(currency) : sql::selectCurrency(currency), read);
  return code;
}

void readDepartment(const Recordset& row, PersonRecord& record) {
  record.cDepName = row.Field("cDepName").asText();
  record.iDepGrade = wholeNumber(row.Field("iDepGrade"));
  record.bDepEnd = row.Field("bDepEnd").asBool();
}

void emptyDepartment(PersonRecord& record) {
  record.cDepName.clear();
  record.iDepGrade = 0;
  record.bDepEnd = false;
}

// The class of a customer or supplier. Without a code all its fields are emptied, at no further statement; a code
// without a class keeps the code.
void loadPartnerClass(Connection& connection, const Value& classCode, const Sql<1>& selectClass, const char* nameField,
                      const char* gradeField, std::string& code, std::string& name, int& grade) {
  code = textOrEmpty(classCode);
  const auto emptied = [&] {
    name.clear();
    grade = 0;
  };
  if (code.empty()) return emptied();
  const auto read = [&](const Recordset& row) {
    name = row.Field(nameField).asText();
    grade = wholeNumber(row.Field(gradeField));
  };
  firstRow(connection, selectClass(code), read, emptied);
}

bool isInventory(const std::string& itemClass) {
  return itemClass == "ch";
}

void readFitem(const Recordset& row, FitemRecord& record) {
  record.i_id = row.Field("i_id").asInteger();
  record.citem_class = row.Field("citem_class").asText();
  record.cItem_Name = row.Field("cItem_Name").asText();
  record.cItem_Text = row.Field("cItem_Text").asText();
  record.crule = row.Field("crule").asText();
  record.grades = static_cast<int>(record.crule.size());
}

// "322" gives 3, 5, 7.
std::vector<int> codeLengthsOf(const std::string& crule) {
  std::vector<int> lengths;
  int length = 0;
  for (const char digit : platform::trim(crule)) {
    length += wholeNumber(Value(std::string(1, digit)));
    lengths.push_back(length);
  }
  return lengths;
}

// One step of LoadItem: its failure is passed over.
template <class Step>
void attempt(Step step) {
  try {
    step();
  } catch (const RunTimeError&) {
    return;
  }
}

// Where an item stands: in the tables of its class, or in the inventory, which has no identity and no closed mark.
struct ItemSource {
  const Sql<2>& selectItem;
  const Sql<2>& selectClass;
  const char *code, *name, *classCode, *className, *classGrade;
  bool hasIdentity;
};
constexpr ItemSource itemTables{sql::selectItem, sql::selectItemClass, "citemcode",   "citemname",
                                "citemccode",    "cItemCname",         "iItemCGrade", true};
constexpr ItemSource inventory{sql::selectInventory, sql::selectInventoryClass,
                               "cInvCode",           "cInvName",
                               "cInvCcode",          "cInvCname",
                               "iInvCGrade",         false};

void readItem(const Recordset& row, const ItemSource& source, ItemRecord& record) {
  if (source.hasIdentity) attempt([&] { record.i_id = row.Field("i_id").asInteger(); });
  attempt([&] { record.citemcode = row.Field(source.code).asText(); });
  attempt([&] { record.citemname = row.Field(source.name).asText(); });
  if (source.hasIdentity) attempt([&] { record.bclose = row.Field("bclose").asBool(); });
  attempt([&] { record.citemccode = row.Field(source.classCode).asText(); });
}

void readItemClass(const Recordset& row, const ItemSource& source, ItemRecord& record) {
  attempt([&] { record.cItemCname = row.Field(source.className).asText(); });
  attempt([&] { record.iItemCGrade = wholeNumber(row.Field(source.classGrade)); });
}

std::string codeIfAny(const std::string& statement) {
  std::string found;
  firstRow(newConn(), statement, [&](const Recordset& row) { found = SqlValue(row.Field(std::size_t{0})); });
  return found;
}

}  // namespace

void LoadCode(Connection& connection, const std::string& code, CodeRecord& record, const std::vector<int>& selectors) {
  record = {};
  const auto currency = [&](const std::string& name, bool bySelector) {
    return currencyCode(connection, name, bySelector);
  };
  try {
    firstRow(connection, sql::selectCode(run.m_strLastYear, code),
             [&](const Recordset& row) { classifyCode(row, selectors, currency, record); });
  } catch (const RunTimeError& failure) {
    ShowMsg(std::to_string(failure.number()) + " " + failure.description(), msgPlain, "");
  }
}

void LoadDepartment(Connection& connection, const std::string& code, DepartmentRecord& record) {
  firstRow(connection, sql::selectDepartment(platform::trim(code)), [&](const Recordset& row) {
    record.cDepCode = row.Field("cDepCode").asText();
    record.cDepName = row.Field("cDepName").asText();
    record.iDepGrade = wholeNumber(row.Field("iDepGrade"));
    record.bDepEnd = row.Field("bDepEnd").asBool();
  });
}

void LoadPerson(Connection& connection, const std::string& code, PersonRecord& record) {
  firstRow(connection, sql::selectPerson(platform::trim(code)), [&](const Recordset& row) {
    record.cDepCode = textOrEmpty(row.Field("cDepCode"));
    if (record.cDepCode.empty()) {
      emptyDepartment(record);
    } else {
      firstRow(
          connection, sql::selectPersonDepartment(record.cDepCode),
          [&](const Recordset& department) { readDepartment(department, record); }, [&] { emptyDepartment(record); });
    }
    record.cPersonCode = row.Field("cPersonCode").asText();
    record.cPersonName = row.Field("cPersonName").asText();
  });
}

void LoadCustomer(Connection& connection, const std::string& code, CustomerRecord& record) {
  firstRow(connection, sql::selectCustomer(platform::trim(code)), [&](const Recordset& row) {
    loadPartnerClass(connection, row.Field("cCCCode"), sql::selectCustomerClass, "cCCName", "iCCGrade", record.cCCCode,
                     record.cCCName, record.iCCGrade);
    record.cCusCode = row.Field("cCusCode").asText();
    record.cCusName = textOrEmpty(row.Field("cCusName"));
    record.cCusAbbName = row.Field("cCusAbbName").asText();
    record.iCusCreLine = numberOrZero(row.Field("iCusCreLine"));
  });
}

void LoadVendor(Connection& connection, const std::string& code, VendorRecord& record) {
  firstRow(connection, sql::selectVendor(platform::trim(code)), [&](const Recordset& row) {
    loadPartnerClass(connection, row.Field("cVCCode"), sql::selectVendorClass, "cvCName", "ivCGrade", record.cVCCode,
                     record.cvCName, record.ivCGrade);
    record.cVenCode = row.Field("cVenCode").asText();
    record.cVenName = textOrEmpty(row.Field("cVenName"));
    record.cVenAbbName = row.Field("cVenAbbName").asText();
    record.iVenCreLine = numberOrZero(row.Field("iVenCreLine"));
  });
}

void LoadFitem(Connection& connection, const std::string& itemClass, FitemRecord& record) {
  auto fields = connection.OpenRecordset(sql::selectItemFields(itemClass), 2);
  for (std::size_t i = 0; i < record.fieldNames.size() && !fields->Eof(); ++i, fields->MoveNext()) {
    record.fieldNames[i] = fields->Field("cfield_name").asText();
  }
  fields->Close();
  firstRow(connection, sql::selectFitem(itemClass), [&](const Recordset& row) { readFitem(row, record); });
  record.codeLengths = codeLengthsOf(record.crule);
  record.itemTable = isInventory(itemClass) ? "inventory" : "fitemss" + itemClass;
  record.itemClassTable = record.itemTable + "class";
}

void LoadItem(Connection& connection, const std::string& itemClass, const std::string& item, ItemRecord& record) {
  FitemRecord tables;
  attempt([&] { LoadFitem(connection, itemClass, tables); });
  const ItemSource& source = isInventory(itemClass) ? inventory : itemTables;
  attempt([&] {
    firstRow(connection, source.selectItem(tables.itemTable, item), [&](const Recordset& row) {
      readItem(row, source, record);
      firstRow(connection, source.selectClass(tables.itemTable, record.citemccode),
               [&](const Recordset& classRow) { readItemClass(classRow, source, record); });
    });
  });
}

std::string CusExists(const std::string& code) {
  return codeIfAny(sql::customerExists(code));
}
std::string VenExists(const std::string& code) {
  return codeIfAny(sql::vendorExists(code));
}
std::string DepExists(const std::string& code) {
  return codeIfAny(sql::departmentExists(code));
}
std::string PersonExists(const std::string& code) {
  return codeIfAny(sql::personExists(code));
}

bool sameAuxiliaryType(const CodeRecord& a, const CodeRecord& b) {
  return a.bPersonOnly == b.bPersonOnly && a.cPersonItemClass == b.cPersonItemClass &&
         a.cCusDeptItemClass == b.cCusDeptItemClass && a.cSupDeptItemClass == b.cSupDeptItemClass &&
         a.cCusItemClass == b.cCusItemClass && a.cSupItemClass == b.cSupItemClass &&
         a.cDeptItemClass == b.cDeptItemClass && a.bCusDept == b.bCusDept && a.bSupDept == b.bSupDept &&
         a.bCusOnly == b.bCusOnly && a.bDeptOnly == b.bDeptOnly && a.bItemOnly == b.bItemOnly &&
         a.bSupOnly == b.bSupOnly;
}

}  // namespace gljz
