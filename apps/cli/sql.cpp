// gljz sql: batches in the server's dialect, all in one session.

#include "arguments.h"
#include "commands.h"
#include "files.h"
#include "host/account.h"
#include "host/sql_script.h"
#include "host/usage_error.h"
#include "platform/run_time_error.h"
#include "result_writer.h"

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
  const Arguments a(words, {{"--server"}, {"--database"}, {"-q"}, {"-f"}, {"--format"}});
  const auto address = host::parseServer(a.text("--server", host::defaultServer));
  host::requireEmbedded(address);
  const std::string format = a.oneOf("--format", {"table", "csv", "json"});
  if (a.has("-q") == a.has("-f")) throw UsageError("sql: either -q TEXT or -f FILE is expected");
  const std::string script = a.has("-q") ? a.required("-q") : readFile(a.required("-f"));

  const auto session = openSession(host::openServer(address), a.text("--database", ""));
  const auto writer = makeResultWriter(format);
  for (const std::string& batch : host::splitBatches(script)) session->execute(batch, *writer);
  return writer->anyFailure() ? 1 : 0;
}

}  // namespace cli
