#pragma once
// Every statement text of the system, so that a test can parse and bind each one against the schema and a trace of a
// run can be read by statement name. Stage by stage; within a stage in the order of its header.

#include <vector>

#include "core/sql.h"

namespace gljz {

std::vector<const SqlText*> all_statements();

}  // namespace gljz
