#include "detail/partner_keys.h"

#include <span>

namespace gljz {
namespace {

using platform::CodeRecord;
using platform::Recordset;
using platform::Value;

// A rule fits an account by an item class that is not empty (it then takes the item along), or by a flag.
struct Rule {
  std::string CodeRecord::*itemClass;
  bool CodeRecord::*flag;
  bool takesDept;
  Value AuxiliaryKeys::*partner;  // where the line's partner goes

  bool fits(const CodeRecord& account) const {
    return itemClass != nullptr ? !(account.*itemClass).empty() : account.*flag;
  }
};

constexpr Rule customerRules[] = {
    {&CodeRecord::cCusDeptItemClass, nullptr, true, &AuxiliaryKeys::cus},
    {&CodeRecord::cCusItemClass, nullptr, false, &AuxiliaryKeys::cus},
    {&CodeRecord::cCusItemClass, nullptr, false, &AuxiliaryKeys::cus},  // intended: stands twice, changes nothing
    {nullptr, &CodeRecord::bCusDept, true, &AuxiliaryKeys::cus},
    {nullptr, &CodeRecord::bCus, false, &AuxiliaryKeys::cus},
};

constexpr Rule supplierRules[] = {
    // Intended: the supplier goes where a customer would. Nobody asks whether it exists, and the line reaches the new
    // year without it.
    {&CodeRecord::cSupDeptItemClass, nullptr, true, &AuxiliaryKeys::cus},
    {&CodeRecord::cSupItemClass, nullptr, false, &AuxiliaryKeys::sup},
    {nullptr, &CodeRecord::bSupDept, true, &AuxiliaryKeys::sup},
    {nullptr, &CodeRecord::bSup, false, &AuxiliaryKeys::sup},
};

bool belongsTo(const Recordset& line, const std::string& itemClass) {
  const Value own = line.Field("citem_class");
  return !own.isNull() && own.asText() == itemClass;
}

std::optional<AuxiliaryKeys> keysBy(const Rule& rule, const CodeRecord& account, const Value& partner,
                                    const Recordset& line) {
  AuxiliaryKeys keys;
  if (partner.isNull()) return std::nullopt;
  keys.*rule.partner = partner;
  if (rule.takesDept) {
    keys.dept = line.Field("cdept_ID");
    if (keys.dept.isNull()) return std::nullopt;
  }
  if (rule.itemClass != nullptr) {
    keys.item = line.Field("cItem_id");
    if (keys.item.isNull() || !belongsTo(line, account.*rule.itemClass)) return std::nullopt;
    keys.citem_class = line.Field("citem_class");
  }
  return keys;
}

std::optional<AuxiliaryKeys> keysBy(std::span<const Rule> rules, const CodeRecord& account, const Value& partner,
                                    const Recordset& line) {
  for (const Rule& rule : rules) {
    if (rule.fits(account)) return keysBy(rule, account, partner, line);
  }
  return AuxiliaryKeys{};
}

}  // namespace

bool sameCustomerAuxiliaries(const CodeRecord& newRec, const CodeRecord& lastRec) {
  return newRec.cCusItemClass == lastRec.cCusItemClass && newRec.cCusDeptItemClass == lastRec.cCusDeptItemClass &&
         newRec.bCusDept == lastRec.bCusDept && newRec.bCus == lastRec.bCus;
}

bool sameSupplierAuxiliaries(const CodeRecord& newRec, const CodeRecord& lastRec) {
  return newRec.cSupItemClass == lastRec.cSupItemClass && newRec.cSupDeptItemClass == lastRec.cSupDeptItemClass &&
         newRec.bSupDept == lastRec.bSupDept && newRec.bSup == lastRec.bSup;
}

std::optional<AuxiliaryKeys> customerKeys(const CodeRecord& account, const Recordset& line) {
  return keysBy(customerRules, account, line.Field("ccus_id"), line);
}

std::optional<AuxiliaryKeys> supplierKeys(const CodeRecord& account, const Recordset& line) {
  return keysBy(supplierRules, account, line.Field("csup_id"), line);
}

}  // namespace gljz
