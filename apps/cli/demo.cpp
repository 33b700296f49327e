// gljz demo: a small company's two years, and their carry-forward.

#include "host/demo.h"

#include <cstdio>

#include "commands.h"
#include "host/account.h"
#include "run_options.h"

namespace cli {

int runDemo(const Words& words) {
  const Arguments a(words, withRunOptions({}), 1);
  checkRunOptions(a);
  const std::string folder = a.positional().empty() ? "./gljz-demo" : a.positional().front();
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
  return runAndReport(a, std::move(forward), Dialogs::fromOptions);
}

}  // namespace cli
