#include "property_bag.h"

namespace com {
namespace {

using platform::AccountOptions;
using platform::CodeRecord;
using platform::DateTime;
using platform::SignRecord;
using platform::Value;

// One list of fields for all ways: a CodeRecord or a constant one, and what is to be done with each field.
template <class Record, class Visit>
void fieldsOfCode(Record& r, const Visit& visit) {
  visit(L"i_id", r.i_id);
  visit(L"cClass", r.cClass);
  visit(L"cClassAny", r.cClassAny);
  visit(L"ccode", r.ccode);
  visit(L"cCode_name", r.cCode_name);
  visit(L"ccode_engl", r.ccode_engl);
  visit(L"iGrade", r.iGrade);
  visit(L"bProperty", r.bProperty);
  visit(L"cbook_type", r.cbook_type);
  visit(L"chelp", r.chelp);
  visit(L"Cexch_name", r.Cexch_name);
  visit(L"cexch_code", r.cexch_code);
  visit(L"cMeasure", r.cMeasure);
  visit(L"bAss", r.bAss);
  visit(L"bPersonOnly", r.bPersonOnly);
  visit(L"bCus", r.bCus);
  visit(L"bSup", r.bSup);
  visit(L"bDept", r.bDept);
  visit(L"cItemClass", r.cItemClass);
  visit(L"cItemClassCopy", r.cItemClassCopy);
  visit(L"cCusItemClass", r.cCusItemClass);
  visit(L"cSupItemClass", r.cSupItemClass);
  visit(L"cDeptItemClass", r.cDeptItemClass);
  visit(L"bCusDept", r.bCusDept);
  visit(L"bSupDept", r.bSupDept);
  visit(L"bCusOnly", r.bCusOnly);
  visit(L"bSupOnly", r.bSupOnly);
  visit(L"bDeptOnly", r.bDeptOnly);
  visit(L"bItemOnly", r.bItemOnly);
  visit(L"br", r.br);
  visit(L"be", r.be);
  visit(L"bEnd", r.bEnd);
  visit(L"cgather", r.cgather);
  visit(L"bexchange", r.bexchange);
  visit(L"bCashBank", r.bCashBank);
  visit(L"bcash", r.bcash);
  visit(L"bbank", r.bbank);
  visit(L"bused", r.bused);
  visit(L"bd_c", r.bd_c);
  visit(L"dbegin", r.dbegin);
  visit(L"dend", r.dend);
  visit(L"itrans", r.itrans);
  visit(L"cOther", r.cOther);
  visit(L"bclose", r.bclose);
  static constexpr const wchar_t* defines[16] = {L"bcDefine1",  L"bcDefine2",  L"bcDefine3",  L"bcDefine4",
                                                 L"bcDefine5",  L"bcDefine6",  L"bcDefine7",  L"bcDefine8",
                                                 L"bcDefine9",  L"bcDefine10", L"bcDefine11", L"bcDefine12",
                                                 L"bcDefine13", L"bcDefine14", L"bcDefine15", L"bcDefine16"};
  for (std::size_t i = 0; i < r.bcDefine.size(); ++i) visit(defines[i], r.bcDefine[i]);
  visit(L"cPersonItemClass", r.cPersonItemClass);
  visit(L"cCusDeptItemClass", r.cCusDeptItemClass);
  visit(L"cSupDeptItemClass", r.cSupDeptItemClass);
}

template <class Record, class Visit>
void fieldsOfSign(Record& r, const Visit& visit) {
  visit(L"csign", r.csign);
  visit(L"ctext", r.ctext);
  visit(L"iSignSeq", r.iSignSeq);
}

template <class Record, class Visit>
void fieldsOfOptions(Record& r, const Visit& visit) {
  visit(L"bMultiCurrency", r.bMultiCurrency);
  visit(L"cDefaultCurrency", r.cDefaultCurrency);
  visit(L"bCusAccount", r.bCusAccount);
  visit(L"bSupAccount", r.bSupAccount);
  visit(L"cCompanyName", r.cCompanyName);
}

Value valueOfField(const std::optional<DateTime>& date) {
  return date ? Value(*date) : Value();
}
template <class T>
Value valueOfField(const T& field) {
  return Value(field);
}

// A field that was never set reads as Empty: it leaves the record's field empty or false.
void take(const Value& value, std::string& field) {
  field = value.displayText();
}
void take(const Value& value, bool& field) {
  field = !value.isNull() && value.asBool();
}
void take(const Value& value, int& field) {
  field = value.isNull() ? 0 : static_cast<int>(value.asInteger());
}
void take(const Value& value, std::int64_t& field) {
  field = value.isNull() ? 0 : value.asInteger();
}
void take(const Value& value, std::optional<DateTime>& field) {
  field = value.isNull() ? std::nullopt : std::optional(value.asDateTime());
}

class Collect {
public:
  explicit Collect(std::vector<std::pair<const wchar_t*, Value>>& values) : values_(values) {}
  template <class T>
  void operator()(const wchar_t* name, const T& field) const {
    values_.emplace_back(name, valueOfField(field));
  }

private:
  std::vector<std::pair<const wchar_t*, Value>>& values_;
};

class Read {
public:
  explicit Read(const Automation& object) : object_(object) {}
  template <class T>
  void operator()(const wchar_t* name, T& field) const {
    if (object_.has(name)) take(object_.get(name), field);
  }

private:
  const Automation& object_;
};

class Write {
public:
  explicit Write(const Automation& object) : object_(object) {}
  template <class T>
  void operator()(const wchar_t* name, const T& field) const {
    if (object_.has(name)) object_.put(name, valueOfField(field));
  }

private:
  const Automation& object_;
};

using Values = std::vector<std::pair<const wchar_t*, Value>>;

Pointer<PropertyBag> bag(Values values) {
  return adopt(new PropertyBag(std::move(values)));
}

}  // namespace

PropertyBag::PropertyBag(Values values) {
  DISPID id = 1;
  for (auto& [name, value] : values) {
    shapes_.push_back({name, id++, property, {}, 0});
    values_.push_back(std::move(value));
  }
}

Variant PropertyBag::answer(std::size_t member, const Invocation& call) {
  if (!call.writes()) return Variant(values_[member]);
  values_[member] = valueOf(call.newValue());
  return {};
}

Pointer<PropertyBag> bagOf(const CodeRecord& record) {
  Values values;
  fieldsOfCode(record, Collect(values));
  return bag(std::move(values));
}
Pointer<PropertyBag> bagOf(const SignRecord& record) {
  Values values;
  fieldsOfSign(record, Collect(values));
  return bag(std::move(values));
}
Pointer<PropertyBag> bagOf(const AccountOptions& options) {
  Values values;
  fieldsOfOptions(options, Collect(values));
  return bag(std::move(values));
}

void read(const Automation& object, CodeRecord& record) {
  fieldsOfCode(record, Read(object));
}
void read(const Automation& object, SignRecord& record) {
  fieldsOfSign(record, Read(object));
}
void read(const Automation& object, AccountOptions& options) {
  fieldsOfOptions(options, Read(object));
}
void write(const CodeRecord& record, const Automation& object) {
  fieldsOfCode(record, Write(object));
}
void write(const SignRecord& record, const Automation& object) {
  fieldsOfSign(record, Write(object));
}

}  // namespace com
