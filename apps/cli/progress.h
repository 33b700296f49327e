#pragma once
// Progress of a run on standard error: one live line on a terminal, a line for each finished step elsewhere.

#include <memory>

#include "host/form_host.h"

namespace cli {

// Null when quiet.
std::unique_ptr<host::ProgressSink> makeProgress(bool quiet);

}  // namespace cli
