#pragma once
// What a run did, for a person and for a program.

#include <string>

#include "host/carry_forward.h"

namespace host {

// One JSON object, a line.
std::string runReportJson(const RunResult& result);
// Several lines of text: outcome, report, what was not carried, failures, tables, stages.
std::string runReportText(const RunResult& result);

}  // namespace host
