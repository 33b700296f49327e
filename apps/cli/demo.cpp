// gljz demo: a small company's two years, and their carry-forward.

#include "host/demo.h"

#include <cstdio>
#include <filesystem>
#include <string>

#include "commands.h"
#include "host/account.h"
#include "run_options.h"

namespace cli {

namespace {

// A folder that is not there yet: gljz-demo, gljz-demo-2, ... A demo is never made over what somebody may have looked
// into.
std::string freeFolder() {
  std::string folder = "./gljz-demo";
  for (int n = 2; std::filesystem::exists(folder); ++n) folder = "./gljz-demo-" + std::to_string(n);
  return folder;
}

}  // namespace

int runDemo(const Words& words) {
  const Arguments a(words, withRunOptions({}), 1);
  checkRunOptions(a);
  const std::string folder = a.positional().empty() ? freeFolder() : a.positional().front();
  host::CarryForwardOptions forward;
  forward.server = host::parseServer("embedded:" + folder);
  {
    const auto server = host::openServer(forward.server, true);
    host::createDemo(server);
  }
  if (!a.has("--quiet")) std::fprintf(stderr, "demo account set in %s\n", folder.c_str());
  forward.account = host::demoAccount;
  forward.closingYear = host::demoClosingYear;
  forward.newYear = host::demoNewYear;
  // The demo's faults are there to be seen in the report: a run that tells of them is a demo that worked.
  constexpr int carriedWithFindings = 4;
  const int code = runAndReport(a, std::move(forward), Dialogs::fromOptions);
  return code == carriedWithFindings ? 0 : code;
}

}  // namespace cli
