#pragma once
// `gljz sql` on a terminal: batches are typed, run at GO, and answered.

#include <memory>
#include <string>

#include "embedded/server.h"

namespace cli {

// Reads until the person leaves. format: of the results. Returns the exit code: leaving is no failure, whatever failed
// on the way was seen.
int runSqlShell(const std::shared_ptr<embedded::Server>& server, embedded::Session& session, const std::string& format);

}  // namespace cli
