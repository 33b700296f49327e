#include "detail/voucher_values.h"

#include "core/mdu_jz.h"

namespace gljz {

using platform::Value;

VoucherValues& VoucherValues::constant(std::string_view rendered) {
  list_ += rendered;
  list_ += ',';
  return *this;
}

VoucherValues& VoucherValues::textValue(const Value& value) {
  if (value.kind() == Value::Kind::text) {  // nearly all: what SqlValue gives, without its text in between
    list_ += "N'";
    list_ += value.textOrEmpty();
    list_ += "',";
  } else {
    list_ += SqlValue(value);
  }
  return *this;
}

VoucherValues& VoucherValues::bareValue(const Value& value) {
  return constant(value.displayText());
}

VoucherValues& VoucherValues::dateValue(const Value& value) {
  return constant(value.isNull() ? "Null" : "'" + value.asDateTime().dateText() + "'");
}

VoucherValues& VoucherValues::numberValue(const Value& value) {
  return constant(numberLiteral(value));
}

VoucherValues& VoucherValues::flag(std::string_view field) {
  const Value value = row_.Field(field);
  return constant(!value.isNull() && value.asBool() ? "1" : "0");
}

VoucherValues& VoucherValues::origin() {
  text("coutaccset").number("ioutyear").text("coutsysname").text("coutsysver").date("doutbilldate");
  return number("ioutperiod").text("coutsign").date("doutdate").text("coutbillsign").text("coutid");
}

VoucherValues& VoucherValues::permissions() {
  flag("bvouchedit").flag("bvouchaddordele").flag("bvouchmoneyhold").flag("bvalueedit").text("ccodecontrol");
  return flag("bpcsedit").flag("bdeptedit").flag("bitemedit").flag("bcussupinput");
}

VoucherValues& VoucherValues::userDefined() {
  text("cdefine1").text("cdefine2").text("cdefine3").date("cdefine4").text("cdefine5").date("cdefine6");
  text("cdefine7").text("cdefine8").text("cdefine9").text("cdefine10").text("cdefine11").text("cdefine12");
  return text("cdefine13").text("cdefine14").text("cdefine15").text("cdefine16");
}

std::string_view VoucherValues::list() const {
  return std::string_view(list_).substr(0, list_.empty() ? 0 : list_.size() - 1);
}

}  // namespace gljz
