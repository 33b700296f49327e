#pragma once
// What a run did, for a person and for a program.

#include <string>

#include "host/carry_forward.h"

namespace host {

// One JSON object, a line, with the system's own texts and the journal's English ones as they are:
//   returned, success      of the entry and of getTransferMsg
//   message, errMsg        what the system says
//   parameters             the parameter text that was used
//   stop                   {where, why} of the check that ended the run, or null
//   conditionsLeft         true: a person left the conditions, and stop and the messages come of that
//   steps                  [{text, mark}] of the list of steps
//   report                 {right, wrong, rows: [[cell]]} of the closing report, or null
//   notCarried             [[cell]] of the grid of records left out
//   tables                 {name: rows inserted and updated}
//   balance                debits and credits of both years (opening_page.h), or null
//   bank                   the bank accounts (bank_page.h), or null
//   failures               [{stage, statement, description}] that were passed over
//   notes                  [text]
//   uncaught               the failure that reached the host; only then
//   seconds
std::string runReportJson(const RunResult& result);
// Several lines of text in the language of the run: the tables that were written, what was left out and why, failures
// that were passed over, notes, the closing report, the stages, and last the outcome.
std::string runReportText(const RunResult& result);

}  // namespace host
