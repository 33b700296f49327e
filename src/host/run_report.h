#pragma once
// What a run did, for a person and for a program.

#include <string>

#include "host/carry_forward.h"

namespace host {

// One JSON object, a line.
std::string runReportJson(const RunResult& result);
// Several lines of text in the language of the run: the tables that were written, what was left out and why, failures
// that were passed over, notes, the closing report, the stages, and last the outcome.
std::string runReportText(const RunResult& result);

}  // namespace host
