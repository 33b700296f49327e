#pragma once
// Which auxiliary keys the item of a customer or supplier takes along, by the kind of its account.

#include <optional>

#include "platform/database.h"
#include "platform/records.h"
#include "platform/value.h"

namespace gljz {

struct AuxiliaryKeys {
  platform::Value dept, person, cus, sup, item, citem_class;
};

// The two years' records of an account agree on how it runs the partner's auxiliaries.
bool sameCustomerAuxiliaries(const platform::CodeRecord& newRec, const platform::CodeRecord& lastRec);
bool sameSupplierAuxiliaries(const platform::CodeRecord& newRec, const platform::CodeRecord& lastRec);

// The keys of a line by the first rule that fits its account; all Null when none does. Nothing when the line lacks a
// key that its rule needs or belongs to another item class.
std::optional<AuxiliaryKeys> customerKeys(const platform::CodeRecord& account, const platform::Recordset& line);
std::optional<AuxiliaryKeys> supplierKeys(const platform::CodeRecord& account, const platform::Recordset& line);

}  // namespace gljz
