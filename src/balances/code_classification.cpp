#include "balances/code_classification.h"

#include <array>
#include <iterator>

namespace gljz {
namespace {

using platform::CodeRecord;
using platform::Value;

// Columns of `code`, in no particular order.
enum Column {
  i_id,
  cclass,
  cclassany,
  ccode,
  ccode_name,
  ccode_engl,
  igrade,
  bproperty,
  cbook_type,
  chelp,
  cexch_name,
  cmeasure,
  bperson,
  bcus,
  bsup,
  bdept,
  bitem,
  cass_item,
  br,
  be,
  bend,
  cgather,
  bexchange,
  bcash,
  bbank,
  bused,
  bd_c,
  dbegin,
  dend,
  itrans,
  cother,
  bclose,
  define1,
  define16 = define1 + 15,
  columnCount
};
// cclass, cclassany and cbook_type: the English columns are always taken. The choice hangs on a language that is never
// set, which is intended.
constexpr std::array<const char*, columnCount> columnNames{
    "i_id",       "cclass_engl",     "cclassany_engl", "ccode",      "ccode_name", "ccode_engl", "igrade",
    "bproperty",  "cbook_type_engl", "chelp",          "cexch_name", "cmeasure",   "bperson",    "bcus",
    "bsup",       "bdept",           "bitem",          "cass_item",  "br",         "be",         "bend",
    "cgather",    "bexchange",       "bcash",          "bbank",      "bused",      "bd_c",       "dbegin",
    "dend",       "itrans",          "cother",         "bclose",     "bcdefine1",  "bcdefine2",  "bcdefine3",
    "bcdefine4",  "bcdefine5",       "bcdefine6",      "bcdefine7",  "bcdefine8",  "bcdefine9",  "bcdefine10",
    "bcdefine11", "bcdefine12",      "bcdefine13",     "bcdefine14", "bcdefine15", "bcdefine16"};

// A row of `code` with its columns found by name.
class Row {
public:
  explicit Row(const platform::Recordset& row) : row_(row) {}

  Value field(Column column) const { return row_.Field(columnNames[column]); }

  void text(Column column, std::string& to) const {
    const Value v = field(column);
    if (!v.isNull()) to = v.asText();
  }
  void flag(Column column, bool& to) const {
    const Value v = field(column);
    if (!v.isNull()) to = v.asBool();
  }
  bool flag(Column column) const {
    bool set = false;
    flag(column, set);
    return set;
  }
  template <class Integer>
  void number(Column column, Integer& to) const {
    const Value v = field(column);
    if (!isEmpty(v)) to = static_cast<Integer>(v.asInteger());
  }
  void date(Column column, std::optional<platform::DateTime>& to) const {
    const Value v = field(column);
    if (!isEmpty(v)) to = v.asDateTime();
  }

  // The account's auxiliaries. An account whose bitem is set but whose cAss_Item is Null has no item class.
  bool hasItemClass() const { return flag(bitem) && !field(cass_item).isNull(); }
  std::string itemClass() const {
    std::string c;
    if (flag(bitem)) text(cass_item, c);
    return c;
  }
  std::string itemClassIf(bool holds) const { return holds ? itemClass() : std::string(); }
  bool hasAuxiliary() const { return flag(bperson) || flag(bcus) || flag(bsup) || flag(bdept) || hasItemClass(); }

private:
  static bool isEmpty(const Value& v) {
    return v.isNull() || (v.kind() == Value::Kind::text && platform::trim(v.asText()).empty());
  }
  const platform::Recordset& row_;
};

void loadCurrencyCode(const Row& row, const CurrencyCode& currencyCode, bool bySelector, CodeRecord& record) {
  std::string currency;
  row.text(cexch_name, currency);
  if (!currency.empty()) record.cexch_code = currencyCode(currency, bySelector);
}

struct Selector {
  int number;
  void (*load)(const Row& row, CodeRecord& record);
};

// One field each, derived without regard to the others. Selector 11, the currency's code, stands apart: it asks the
// database. Selectors 45 to 60 are the flags bcDefine1 to bcDefine16.
constexpr Selector selectorTable[] = {
    {0, [](const Row& r, CodeRecord& c) { r.text(cclass, c.cClass); }},
    {1, [](const Row& r, CodeRecord& c) { r.text(cclassany, c.cClassAny); }},
    {3,
     [](const Row& r, CodeRecord& c) {
       r.text(ccode_name, c.cCode_name);
       r.text(ccode_engl, c.ccode_engl);
     }},
    {6, [](const Row& r, CodeRecord& c) { r.number(igrade, c.iGrade); }},
    {7, [](const Row& r, CodeRecord& c) { r.flag(bproperty, c.bProperty); }},
    {8, [](const Row& r, CodeRecord& c) { r.text(cbook_type, c.cbook_type); }},
    {9, [](const Row& r, CodeRecord& c) { r.text(chelp, c.chelp); }},
    {10, [](const Row& r, CodeRecord& c) { r.text(cexch_name, c.Cexch_name); }},
    {12, [](const Row& r, CodeRecord& c) { r.text(cmeasure, c.cMeasure); }},
    {13, [](const Row& r, CodeRecord& c) { c.bAss = r.hasAuxiliary(); }},
    {14, [](const Row& r, CodeRecord& c) { r.flag(bperson, c.bPersonOnly); }},
    {15, [](const Row& r, CodeRecord& c) { r.flag(bcus, c.bCus); }},
    {16, [](const Row& r, CodeRecord& c) { r.flag(bsup, c.bSup); }},
    {17, [](const Row& r, CodeRecord& c) { r.flag(bdept, c.bDept); }},
    {18, [](const Row& r, CodeRecord& c) { c.cItemClass = r.itemClass(); }},
    {19, [](const Row& r, CodeRecord& c) { c.cItemClassCopy = r.itemClass(); }},
    {20, [](const Row& r, CodeRecord& c) { c.cCusItemClass = r.itemClassIf(r.flag(bcus)); }},
    {21, [](const Row& r, CodeRecord& c) { c.cSupItemClass = r.itemClassIf(r.flag(bsup)); }},
    {22, [](const Row& r, CodeRecord& c) { c.cDeptItemClass = r.itemClassIf(r.flag(bdept)); }},
    {23, [](const Row& r, CodeRecord& c) { c.bCusDept = r.flag(bcus) && r.flag(bdept); }},
    {24, [](const Row& r, CodeRecord& c) { c.bSupDept = r.flag(bsup) && r.flag(bdept); }},
    {25, [](const Row& r, CodeRecord& c) { c.bCusOnly = r.flag(bcus) && !r.flag(bdept) && !r.flag(bitem); }},
    {26, [](const Row& r, CodeRecord& c) { c.bSupOnly = r.flag(bsup) && !r.flag(bdept) && !r.flag(bitem); }},
    {27, [](const Row& r,
            CodeRecord& c) { c.bDeptOnly = r.flag(bdept) && !r.flag(bcus) && !r.flag(bsup) && !r.flag(bitem); }},
    {28, [](const Row& r,
            CodeRecord& c) { c.bItemOnly = r.hasItemClass() && !r.flag(bdept) && !r.flag(bcus) && !r.flag(bsup); }},
    {29, [](const Row& r, CodeRecord& c) { r.flag(bend, c.bEnd); }},
    {30, [](const Row& r, CodeRecord& c) { r.text(cgather, c.cgather); }},
    {31, [](const Row& r, CodeRecord& c) { r.flag(bexchange, c.bexchange); }},
    {32, [](const Row& r, CodeRecord& c) { c.bCashBank = r.flag(bcash) || r.flag(bbank); }},
    {33, [](const Row& r, CodeRecord& c) { r.flag(bcash, c.bcash); }},
    {34, [](const Row& r, CodeRecord& c) { r.flag(bbank, c.bbank); }},
    {35, [](const Row& r, CodeRecord& c) { r.flag(br, c.br); }},
    {36, [](const Row& r, CodeRecord& c) { r.flag(be, c.be); }},
    {37, [](const Row& r, CodeRecord& c) { r.flag(bused, c.bused); }},
    {38, [](const Row& r, CodeRecord& c) { r.flag(bd_c, c.bd_c); }},
    {39, [](const Row& r, CodeRecord& c) { r.date(dbegin, c.dbegin); }},
    {40, [](const Row& r, CodeRecord& c) { r.date(dend, c.dend); }},
    {41, [](const Row& r, CodeRecord& c) { r.number(itrans, c.itrans); }},
    {42, [](const Row& r, CodeRecord& c) { r.text(cother, c.cOther); }},
    {43, [](const Row& r, CodeRecord& c) { r.flag(bclose, c.bclose); }},
    {61, [](const Row& r, CodeRecord& c) { c.cPersonItemClass = r.itemClassIf(r.flag(bdept) && r.flag(bperson)); }},
    {62, [](const Row& r, CodeRecord& c) { c.cCusDeptItemClass = r.itemClassIf(r.flag(bdept) && r.flag(bcus)); }},
    {63, [](const Row& r, CodeRecord& c) { c.cSupDeptItemClass = r.itemClassIf(r.flag(bdept) && r.flag(bsup)); }},
};
constexpr int currencySelector = 11, firstDefineSelector = 45, lastDefineSelector = 60;

void loadSelected(const Row& row, int selector, const CurrencyCode& currencyCode, CodeRecord& record) {
  if (selector == currencySelector) return loadCurrencyCode(row, currencyCode, true, record);
  if (selector >= firstDefineSelector && selector <= lastDefineSelector) {
    const int index = selector - firstDefineSelector;
    return row.flag(static_cast<Column>(define1 + index), record.bcDefine[static_cast<std::size_t>(index)]);
  }
  for (const Selector& s : selectorTable)
    if (s.number == selector) return s.load(row, record);
}

// The exclusive classification: which one combination of department, customer, supplier and item the account keeps.
// A combination that no line has (all three of bdept, bcus and bsup, say) leaves every field empty.
struct Combination {
  bool dept, cus, sup, item;
  void (*set)(CodeRecord& record);
};
constexpr Combination combinations[] = {
    {true, false, false, false, [](CodeRecord& c) { c.bDeptOnly = true; }},
    {true, true, false, false, [](CodeRecord& c) { c.bCusDept = true; }},
    {true, false, true, false, [](CodeRecord& c) { c.bSupDept = true; }},
    {true, false, false, true, [](CodeRecord& c) { c.cDeptItemClass = c.cItemClass; }},
    {false, true, false, false, [](CodeRecord& c) { c.bCusOnly = true; }},
    {false, true, false, true, [](CodeRecord& c) { c.cCusItemClass = c.cItemClass; }},
    {true, true, false, true, [](CodeRecord& c) { c.cCusDeptItemClass = c.cItemClass; }},
    {true, false, true, true, [](CodeRecord& c) { c.cSupDeptItemClass = c.cItemClass; }},
    {false, false, true, false, [](CodeRecord& c) { c.bSupOnly = true; }},
    {false, false, true, true, [](CodeRecord& c) { c.cSupItemClass = c.cItemClass; }},
};

void resetNine(CodeRecord& c) {
  c.bDeptOnly = c.bCusOnly = c.bItemOnly = c.bSupOnly = c.bCusDept = c.bSupDept = false;
  c.cCusItemClass.clear();
  c.cSupItemClass.clear();
  c.cDeptItemClass.clear();
}

void classifyExclusively(const Row& row, CodeRecord& record) {
  const bool dept = row.flag(bdept), cus = row.flag(bcus), sup = row.flag(bsup), item = row.flag(bitem);
  const bool person = row.flag(bperson);
  for (const Combination& c : combinations) {
    if (c.dept != dept || c.cus != cus || c.sup != sup || c.item != item) continue;
    resetNine(record);
    c.set(record);
  }
  if (item && !dept && !cus && !sup && !person) {
    resetNine(record);
    record.bItemOnly = true;
  }
}

void loadAll(const Row& row, const CurrencyCode& currencyCode, CodeRecord& c) {
  row.number(i_id, c.i_id);
  row.text(cclass, c.cClass);
  row.text(cclassany, c.cClassAny);
  row.text(ccode, c.ccode);
  row.text(ccode_name, c.cCode_name);
  row.text(ccode_engl, c.ccode_engl);
  row.number(igrade, c.iGrade);
  row.flag(bproperty, c.bProperty);
  row.text(cbook_type, c.cbook_type);
  row.text(chelp, c.chelp);
  row.text(cexch_name, c.Cexch_name);
  loadCurrencyCode(row, currencyCode, false, c);
  row.text(cmeasure, c.cMeasure);
  // An account of persons and items is told by its item class alone.
  if (row.flag(bperson) && row.flag(bitem))
    row.text(cass_item, c.cPersonItemClass);
  else
    row.flag(bperson, c.bPersonOnly);
  row.flag(bcus, c.bCus);
  row.flag(bsup, c.bSup);
  row.flag(bdept, c.bDept);
  c.cItemClass = row.itemClass();
  c.cItemClassCopy = c.cItemClass;
  c.bAss = row.hasAuxiliary();
  classifyExclusively(row, c);
  row.flag(br, c.br);
  row.flag(be, c.be);
  row.flag(bend, c.bEnd);
  row.text(cgather, c.cgather);
  row.flag(bexchange, c.bexchange);
  row.flag(bcash, c.bcash);
  row.flag(bbank, c.bbank);
  c.bCashBank = c.bcash || c.bbank;
  row.flag(bused, c.bused);
  row.flag(bd_c, c.bd_c);
  row.date(dbegin, c.dbegin);
  row.date(dend, c.dend);
  row.number(itrans, c.itrans);
  row.text(cother, c.cOther);
  row.flag(bclose, c.bclose);
  for (std::size_t i = 0; i < c.bcDefine.size(); ++i)
    row.flag(static_cast<Column>(define1 + static_cast<int>(i)), c.bcDefine[i]);
}

}  // namespace

void classifyCode(const platform::Recordset& row, const std::vector<int>& selectors, const CurrencyCode& currencyCode,
                  platform::CodeRecord& record) {
  const Row columns(row);
  if (selectors.empty()) return loadAll(columns, currencyCode, record);
  for (const int selector : selectors) loadSelected(columns, selector, currencyCode, record);
}

}  // namespace gljz
