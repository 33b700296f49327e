#pragma once
// A session on a server for the host's own work: the first failure of a batch is thrown.
//
//   DatabaseDesk desk(server, "TqSystem");
//   desk.run("delete from UA_Mark");
//   if (desk.any("select 1 from UA_Account")) ...

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/database_server.h"

namespace host {

class DatabaseDesk {
public:
  using Rows = std::vector<std::vector<platform::Value>>;

  DatabaseDesk(const ServerPtr& server, const std::string& database) : session_(server->openSession(database)) {}

  void run(const std::string& batch, const std::vector<platform::Value>& parameters = {});
  void runScript(std::string_view script);
  Rows rows(const std::string& batch);  // of all result sets
  bool any(const std::string& batch) { return !rows(batch).empty(); }

  // What work does either stands as a whole or not at all.
  template <class Work>
  void transaction(const Work& work) {
    session_->begin();
    try {
      work();
      session_->commit();
    } catch (...) {
      undo();
      throw;
    }
  }

private:
  void undo() noexcept;
  std::unique_ptr<DatabaseSession> session_;
};

}  // namespace host
