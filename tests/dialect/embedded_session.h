#pragma once
// The corpus runner's connection over the embedded server.

#include <filesystem>
#include <memory>
#include <string>

#include "dialect/runner.h"
#include "embedded/server.h"

namespace dialect {

// How the sessions of a run are set: answers must not depend on it.
struct Setting {
  // Through what a batch that is one selection is read; any other batch goes to the session itself.
  enum class Read { session, clientCursor, serverCursor };
  std::string name;  // "plain"
  bool statementCache = true;
  Read read = Read::session;
  std::size_t fetchBlock = 0;  // rows that a server cursor fetches at a time; 0 leaves the server's own
};

// A server in a folder of its own with the empty databases d1 and d2. The folder goes with the object.
class TemporaryServer {
public:
  TemporaryServer();
  ~TemporaryServer();
  TemporaryServer(const TemporaryServer&) = delete;
  TemporaryServer& operator=(const TemporaryServer&) = delete;

  std::unique_ptr<Session> open(const std::string& database, const Setting& setting);

private:
  std::filesystem::path folder_;
  std::shared_ptr<embedded::Server> server_;
};

}  // namespace dialect
