#pragma once
// Fills a CodeRecord from a row of `code`: the plain columns, and the classification of the account's auxiliaries.
// Closing-year and new-year records are compared field by field, so both come from here.

#include <functional>
#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/records.h"

namespace gljz {

// The code of a currency by its name, empty when there is none. bySelector tells the two statements apart that the
// callers run for it.
using CurrencyCode = std::function<std::string(const std::string& currency, bool bySelector)>;

// Without selectors: all fields, and the exclusive classification (at most one kind holds). With selectors: only the
// fields that they name, each derived on its own; numbers that name no field are passed over. A Null column leaves its
// field as it is, empty in a new record. The fields are filled in their order, so that those before a failure stand:
// RunTimeError 3265 for a missing column, whatever currencyCode throws.
void classifyCode(const platform::Recordset& row, const std::vector<int>& selectors, const CurrencyCode& currencyCode,
                  platform::CodeRecord& record);

}  // namespace gljz
