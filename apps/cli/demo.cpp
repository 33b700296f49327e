// gljz demo: a small company's two years, and their carry-forward.

#include "host/demo.h"

#include <cstdio>
#include <filesystem>
#include <string>

#include "commands.h"
#include "host/account.h"
#include "host/database_server.h"
#include "host/usage_error.h"
#include "run_options.h"
#include "server_option.h"

namespace cli {

namespace {

// A folder that is not there yet: gljz-demo, gljz-demo-2, ... A demo is never made over what somebody may have looked
// into.
std::string freeFolder() {
  std::string folder = "./gljz-demo";
  for (int n = 2; std::filesystem::exists(folder); ++n) folder = "./gljz-demo-" + std::to_string(n);
  return folder;
}

// The conditions that show most: open items line by line, of persons and suppliers all, of customers but for the notes,
// which are carried by balance.
const Words conditions{"--check",           "GL*PersonMXJZ=True",
                       "--check",           "GL*CusMXJZ=True",
                       "--customer-detail", "113101,113102,2131",
                       "--check",           "GL*SupMXJZ=True",
                       "--supplier-detail", "all"};

Arguments withConditions(const Words& words) {
  const Arguments a(words, withRunOptions(withServerOptions({})), 1);
  for (const char* own : {"--params", "--check", "--customer-detail", "--supplier-detail", "--clear"})
    if (a.has(own)) return a;
  Words all = words;
  all.insert(all.end(), conditions.begin(), conditions.end());
  return Arguments(all, withRunOptions(withServerOptions({})), 1);
}

// The folder that is named, a server that is named, or a new folder.
host::ServerAddress demoServer(const Arguments& a) {
  if (!a.has("--server"))
    return host::parseServer("embedded:" + (a.positional().empty() ? freeFolder() : a.positional().front()));
  if (!a.positional().empty()) throw host::UsageError("demo: a folder and --server exclude each other");
  return serverAddress(a);
}

}  // namespace

int runDemo(const Words& words) {
  const Arguments a = withConditions(words);
  checkRunOptions(a);
  host::CarryForwardOptions forward;
  forward.server = demoServer(a);
  {
    const auto server = host::openAnyServer(forward.server, true);
    host::createDemo(server);
    const host::ServerAddress& where = forward.server;
    if (!a.has("--quiet"))
      std::fprintf(stderr, "demo account set in %s\n", (where.folder.empty() ? where.text : where.folder).c_str());
  }
  forward.account = host::demoAccount;
  forward.closingYear = host::demoClosingYear;
  forward.newYear = host::demoNewYear;
  // The demo's faults are there to be seen in the report: a run that tells of them is a demo that worked.
  constexpr int carriedWithFindings = 4;
  const int code = runAndReport(a, std::move(forward), Dialogs::fromOptions);
  return code == carriedWithFindings ? 0 : code;
}

}  // namespace cli
