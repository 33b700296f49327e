#pragma once
// Progress of a run on standard error: on a terminal the list of steps, drawn anew as it changes, with the moving
// caption and the rows written so far below it; elsewhere a line for each finished step.

#include <memory>
#include <string>

#include "host/form_host.h"

namespace cli {

// Null when quiet. language: of the words beside the form's own.
std::unique_ptr<host::ProgressSink> makeProgress(bool quiet, const std::string& language);

}  // namespace cli
