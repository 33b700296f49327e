#pragma once
// --server and --credentials: which server a command works on, and who it is there.

#include <vector>

#include "arguments.h"
#include "host/connection_text.h"

namespace cli {

// The command's own options and those two.
std::vector<Option> withServerOptions(std::vector<Option> options);

// The address of --server, with what --credentials adds. A password is asked for on the terminal when a user is named,
// no data source is, and nothing else gives one. UsageError for an address or a file that cannot be used.
host::ServerAddress serverAddress(const Arguments& arguments);

}  // namespace cli
