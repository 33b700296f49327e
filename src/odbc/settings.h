#pragma once
// What a connection needs beside its connection text.

#include <string>

#include "odbc/connection_string.h"

namespace odbc {

// How a result set with a server cursor is read while other statements run on the same connection.
//
//   activeResults  the driver keeps several result sets open at a time: rows stream as the server produces them
//   staticCursor   the driver has one open result set at a time: the server keeps the rows of the selection and gives
//                  them out block by block
//   automatic      activeResults where the driver says that it can, else staticCursor
enum class ServerCursor { automatic, activeResults, staticCursor };

struct Settings {
  // Keywords that are added to what a connection text has: user, password. They never appear in a connection text or in
  // a message.
  ConnectionString credentials;
  int loginTimeoutSeconds = 15;
  // How long a statement waits for what another session has locked; then it fails with 1222. Without a limit a run
  // whose two connections stand in each other's way would wait for ever. 0: the server's own setting.
  int lockTimeoutSeconds = 60;
  ServerCursor serverCursor = ServerCursor::automatic;
  // The server's type of amounts. A driver that does not hand on all digits of one is refused when connecting. Empty:
  // money on a server of the dialect, no question elsewhere.
  std::string amountType;
  // A selection of how many transactions are open, put behind a failure inside one: some failures (a deadlock, a
  // conversion) make the server undo the transaction by itself. Empty: @@trancount on a server of the dialect, no
  // question elsewhere.
  std::string transactionCount;
};

}  // namespace odbc
