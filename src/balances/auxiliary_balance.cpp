#include "balances/auxiliary_balance.h"

#include <algorithm>
#include <initializer_list>

#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "driver/progress.h"

namespace gljz {
namespace {

using platform::CodeRecord;
using platform::Recordset;
using platform::Value;

void reportNotCarried(const char* captionKey, const std::string& code, const std::string& name, const char* reasonKey) {
  AddImbalanceRow(reportRow({GetResString(captionKey), code, name, GetResString(reasonKey)}));
}

void reportAccount(const Recordset& balance, const char* reasonKey) {
  if (!run.m_bManual) return;
  reportNotCarried("Orvo.GL.TqGLJZ.00112", balance.Field("ccode").displayText(),
                   balance.Field("ccode_name").displayText(), reasonKey);
}

// A column of the balance and where it goes.
struct Column {
  const char* name;
  Value Auxiliaries::*picked;
};
constexpr Column dept{"cdept_id", &Auxiliaries::dept};
constexpr Column person{"cperson_id", &Auxiliaries::person};
constexpr Column cus{"ccus_id", &Auxiliaries::cus};
constexpr Column sup{"csup_id", &Auxiliaries::sup};
constexpr Column item{"citem_id", &Auxiliaries::item};
constexpr Column itemClass{"citem_class", &Auxiliaries::itemClass};

class Picker {
public:
  Picker(const Recordset& balance, Auxiliaries& picked) : balance_(balance), picked_(picked) {}

  // Takes all of the columns, or none when one of them is Null.
  bool take(std::initializer_list<Column> columns) {
    const auto isNull = [this](const Column& column) { return balance_.Field(column.name).isNull(); };
    if (std::any_of(columns.begin(), columns.end(), isNull)) return false;
    for (const Column& column : columns) picked_.*column.picked = balance_.Field(column.name);
    return true;
  }

private:
  const Recordset& balance_;
  Auxiliaries& picked_;
};

// A reference that the new year must have.
struct Reference {
  Value Auxiliaries::*code;
  bool (*exists)(const Auxiliaries& a);
  const char* captionKey;
  std::string (*closingName)(const Auxiliaries& a);
  const char* reasonKey;
};

template <class Record>
std::string closingYearName(void (*load)(platform::Connection&, const std::string&, Record&), const Value& code,
                            std::string Record::*name) {
  Record record;
  load(lastConn(), code.asText(), record);
  return record.*name;
}

std::string closingYearItemName(const Auxiliaries& a) {
  ItemRecord record;
  LoadItem(lastConn(), a.itemClass.asText(), a.item.asText(), record);
  return record.citemname;
}

// In the order in which they are tested.
constexpr Reference references[] = {
    {&Auxiliaries::dept, [](const Auxiliaries& a) { return !DepExists(a.dept.asText()).empty(); },
     "Orvo.GL.TqGLJZ.00114",
     [](const Auxiliaries& a) { return closingYearName(LoadDepartment, a.dept, &DepartmentRecord::cDepName); },
     "Orvo.GL.TqGLJZ.00115"},
    {&Auxiliaries::person, [](const Auxiliaries& a) { return !PersonExists(a.person.asText()).empty(); },
     "Orvo.GL.TqGLJZ.00116",
     [](const Auxiliaries& a) { return closingYearName(LoadPerson, a.person, &PersonRecord::cPersonName); },
     "Orvo.GL.TqGLJZ.00115"},
    {&Auxiliaries::cus, [](const Auxiliaries& a) { return !CusExists(a.cus.asText()).empty(); }, "Orvo.GL.TqGLJZ.00118",
     [](const Auxiliaries& a) { return closingYearName(LoadCustomer, a.cus, &CustomerRecord::cCusAbbName); },
     "Orvo.GL.TqGLJZ.00115"},
    {&Auxiliaries::sup, [](const Auxiliaries& a) { return !VenExists(a.sup.asText()).empty(); }, "Orvo.GL.TqGLJZ.00120",
     [](const Auxiliaries& a) { return closingYearName(LoadVendor, a.sup, &VendorRecord::cVenAbbName); },
     "Orvo.GL.TqGLJZ.00121"},
    {&Auxiliaries::item,
     [](const Auxiliaries& a) { return !pubCls().MatchItem(a.item.asText(), a.itemClass.asText()).empty(); },
     "Orvo.GL.TqGLJZ.00122", closingYearItemName, "Orvo.GL.TqGLJZ.00123"},
};

}  // namespace

bool Auxiliaries::none() const {
  return dept.isNull() && person.isNull() && cus.isNull() && sup.isNull() && item.isNull() && itemClass.isNull();
}

std::string effectiveCurrency(const Recordset& balance, const CodeRecord& target) {
  const platform::AccountOptions options = pubCls().AccountOptions();
  if (!options.bMultiCurrency) return target.Cexch_name;
  const std::string currency = balance.Field("cexch_name").asText();
  if (currency.empty() && !target.Cexch_name.empty()) return options.cDefaultCurrency;
  return currency;
}

bool findTarget(const Recordset& balance, TargetAccount& target) {
  target.newCode = pubCls().MatchCode(balance.Field("ccode").asText(), 2, true);
  if (target.newCode.empty()) {
    reportAccount(balance, "Orvo.GL.TqGLJZ.00129");
    return false;
  }
  pubCls().GetCodeRecord(target.newCode, target.newRec);
  LoadCode(lastConn(), target.newCode, target.lastRec);
  if (!target.newRec.bEnd) {
    reportAccount(balance, "Orvo.GL.TqGLJZ.00127");
    return false;
  }
  target.cExch = effectiveCurrency(balance, target.newRec);
  return true;
}

void reportTypeDiffers(const Recordset& balance) {
  reportAccount(balance, "Orvo.GL.TqGLJZ.00113");
}

bool pickAuxiliaries(const Recordset& balance, const CodeRecord& newRec, Auxiliaries& picked) {
  const platform::AccountOptions options = pubCls().AccountOptions();
  picked = {};
  Picker picker(balance, picked);
  if (newRec.bPersonOnly && !picker.take({dept, person}) && newRec.cItemClass.empty()) return false;
  if (newRec.bCus && options.bCusAccount && !picker.take({cus})) return false;
  if (newRec.bSup && options.bSupAccount && !picker.take({sup})) return false;
  if (newRec.bDept && !picker.take({dept})) return false;
  if (!newRec.cItemClass.empty() && !picker.take({item, itemClass}) && picked.person.isNull()) return false;
  if (!newRec.cPersonItemClass.empty() && !picker.take({dept, person, item, itemClass})) return false;
  if (!newRec.cCusDeptItemClass.empty() && !picker.take({dept, cus, item, itemClass})) return false;
  if (!newRec.cSupDeptItemClass.empty() && !picker.take({dept, sup, item, itemClass})) return false;
  return true;
}

bool auxiliariesExist(const Auxiliaries& auxiliaries) {
  for (const Reference& reference : references) {
    const Value& code = auxiliaries.*reference.code;
    if (code.isNull() || reference.exists(auxiliaries)) continue;
    if (run.m_bManual) {
      reportNotCarried(reference.captionKey, code.displayText(), reference.closingName(auxiliaries),
                       reference.reasonKey);
    }
    return false;
  }
  return true;
}

std::string currencyValue(const TargetAccount& target) {
  return SqlValue(target.cExch.empty() ? Value() : Value(target.cExch));
}

std::string auxiliaryValues(const Auxiliaries& a) {
  return SqlValue(a.dept) + SqlValue(a.person) + SqlValue(a.cus) + SqlValue(a.sup) + SqlValue(a.item) +
         SqlValue(a.itemClass);
}

Value foreignAmount(const Recordset& balance, const TargetAccount& target) {
  return target.cExch.empty() ? Value(0) : balance.Field("me_f");
}

Value quantity(const Recordset& balance, const TargetAccount& target) {
  return target.newRec.cMeasure.empty() ? Value(0) : balance.Field("ne_s");
}

}  // namespace gljz
