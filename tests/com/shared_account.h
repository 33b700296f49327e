#pragma once
// The demo account set with both years in the closing year's database.

#include <string>

#include "component_host.h"

namespace com::test {

inline constexpr const char* sharedDatabase = "TqData_001_2005";

// The new year's chart and state move there, and the account's span takes the new year in.
void putBothYearsIntoOneDatabase(const ReferenceServer& server);
// The opening balance of account 1001 in the new year.
platform::Money openingCash(const ReferenceServer& server);

}  // namespace com::test
