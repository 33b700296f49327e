#include "host/database_server.h"

#include "host/account.h"
#include "host/connection_text.h"
#include "host/odbc_server.h"

namespace host {

ServerPtr openAnyServer(const ServerAddress& address, bool create) {
  if (address.kind == ServerAddress::Kind::odbc) return odbcServer(address);
  return openServer(address, create);
}

}  // namespace host
