#pragma once
// A server that is reached through ODBC, as a DatabaseServer.

#include <memory>

#include "host/connection_text.h"
#include "host/database_server.h"

namespace host {

// Connects when it is first asked. The credentials of the address stay with it: connection texts have none.
std::shared_ptr<DatabaseServer> odbcServer(const ServerAddress& address);

}  // namespace host
