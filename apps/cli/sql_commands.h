#pragma once
// The commands of `gljz sql` on a terminal: lines that begin with a colon.

#include <string>
#include <string_view>
#include <vector>

#include "embedded/server.h"
#include "text_table.h"

namespace cli {

class SqlCommands {
public:
  SqlCommands(embedded::Server& server, embedded::Session& session) : server_(server), session_(session) {}

  struct Answer {
    std::string text;  // lines
    bool leave = false;
  };
  // line: ":name argument". batch: what :plan explains when it has no argument. Throws tsql::SqlError, and UsageError
  // for a command that there is not.
  Answer run(std::string_view line, const std::string& batch, const TableLook& look);

  static const std::vector<std::string>& names();  // ":help", ...

private:
  static std::string help();
  std::string tables(const std::string& pattern, const TableLook& look);
  std::string describe(const std::string& table, const TableLook& look);
  std::string databases(const TableLook& look);
  std::string plan(const std::string& batch, bool typed);

  embedded::Server& server_;
  embedded::Session& session_;
};

}  // namespace cli
