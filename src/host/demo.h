#pragma once
// The demo account set: a small trading company with two years, ready for a carry-forward from 2005 to 2006.

#include <memory>

#include "host/database_server.h"

namespace host {

inline constexpr const char* demoAccount = "001";
inline constexpr int demoClosingYear = 2005, demoNewYear = 2006;

// Fills the server from the built-in scripts. UsageError when one of its databases exists already; on any failure
// nothing of it stays.
void createDemo(const ServerPtr& server);

}  // namespace host
