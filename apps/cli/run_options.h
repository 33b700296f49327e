#pragma once
// The options that every carry-forward takes, and what is written when it has ended.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "arguments.h"
#include "files.h"
#include "host/carry_forward.h"

namespace cli {

// Options of the command itself come first.
std::vector<Option> withRunOptions(std::vector<Option> options);

// Who answers the dialogs of a run: the options alone, or a person, when there is a terminal and no option answers.
enum class Dialogs { fromOptions, asked };

// Runs and reports: the result on standard output, the file of --report, the exit code. Fills the run options of
// `forward` from the arguments; the caller has set entry, server, account and years.
int runAndReport(const Arguments& arguments, host::CarryForwardOptions forward, Dialogs dialogs);

// Checks the run options of a command that does other work before the run, so that a wrong one is refused first.
void checkRunOptions(const Arguments& arguments);

}  // namespace cli
