// gljz transfer, gljz transgl: the carry-forward through its two entries.

#include "commands.h"
#include "run_options.h"

namespace cli {
namespace {

host::CarryForwardOptions years(const Arguments& a) {
  host::CarryForwardOptions forward;
  forward.server = host::parseServer(a.text("--server", host::defaultServer));
  forward.closingYear = a.year("--from");
  forward.newYear = a.year("--to");
  return forward;
}

}  // namespace

int runTransfer(const Words& words) {
  const Arguments a(words, withRunOptions({{"--server"}, {"--account"}, {"--from"}, {"--to"}}));
  host::CarryForwardOptions forward = years(a);
  forward.account = a.required("--account");
  return runAndReport(a, std::move(forward), Dialogs::asked);
}

int runTransGL(const Words& words) {
  const Arguments a(words,
                    withRunOptions({{"--server"}, {"--account"}, {"--from"}, {"--to"}, {"--from-db"}, {"--to-db"}}));
  host::CarryForwardOptions forward = years(a);
  forward.entry = host::Entry::transGL;
  forward.account = a.text("--account", "");
  forward.closingDatabase = a.required("--from-db");
  forward.newDatabase = a.required("--to-db");
  return runAndReport(a, std::move(forward), Dialogs::asked);
}

}  // namespace cli
