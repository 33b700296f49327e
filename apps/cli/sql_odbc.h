#pragma once
// gljz sql on a server that is reached through ODBC.

#include <string>

#include "host/connection_text.h"
#include "result_writer.h"

namespace cli {

// Runs the batches of a script in one session. UsageError when the session cannot be opened, RunTimeError when it is
// lost.
void runScript(const host::ServerAddress& address, const std::string& database, const std::string& script,
               ResultWriter& writer);

}  // namespace cli
