// gljz sql: batches in the server's dialect, all in one session; from a text, from a file or from a person.

#include "arguments.h"
#include "commands.h"
#include "files.h"
#include "host/account.h"
#include "host/sql_script.h"
#include "host/usage_error.h"
#include "platform/run_time_error.h"
#include "result_writer.h"
#include "server_option.h"
#include "sql_odbc.h"
#include "sql_shell.h"
#include "terminal.h"

namespace cli {
namespace {

using host::UsageError;

std::unique_ptr<embedded::Session> openSession(const std::shared_ptr<embedded::Server>& server,
                                               const std::string& database) {
  if (!database.empty() && !server->hasDatabase(database))
    throw UsageError("server folder " + server->folder() + " has no database " + database);
  try {
    return std::make_unique<embedded::Session>(server, database);
  } catch (const platform::RunTimeError& e) {
    throw UsageError(e.description());
  }
}

}  // namespace

int runSql(const Words& words) {
  const Arguments a(words, withServerOptions({{"--database"}, {"-q"}, {"-f"}, {"--format"}}));
  const std::string format = a.oneOf("--format", {"table", "csv", "json"});
  const bool typed = !a.has("-q") && !a.has("-f") && inputIsTerminal();
  if (!typed && a.has("-q") == a.has("-f")) throw UsageError("sql: either -q TEXT or -f FILE is expected");
  const std::string script = typed ? "" : a.has("-q") ? a.required("-q") : readFile(a.required("-f"));

  const auto address = serverAddress(a);
  if (address.kind == host::ServerAddress::Kind::odbc) {
    if (typed) throw UsageError("sql: the shell works on embedded servers only; -q TEXT or -f FILE is expected");
    const auto writer = makeResultWriter(format, {outputWidth(), false});
    runScript(address, a.text("--database", ""), script, *writer);
    return writer->anyFailure() ? 1 : 0;
  }
  const auto server = host::openServer(address);
  const auto session = openSession(server, a.text("--database", ""));
  if (typed) return runSqlShell(server, *session, format);
  const auto writer = makeResultWriter(format, {outputWidth(), false});
  for (const std::string& batch : host::splitBatches(script)) session->execute(batch, *writer);
  return writer->anyFailure() ? 1 : 0;
}

}  // namespace cli
