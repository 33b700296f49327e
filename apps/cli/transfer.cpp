// gljz transfer, gljz transgl: the carry-forward through its two entries.

#include "commands.h"
#include "run_options.h"
#include "server_option.h"

namespace cli {
namespace {

host::CarryForwardOptions years(const Arguments& a) {
  host::CarryForwardOptions forward;
  forward.closingYear = a.year("--from");
  forward.newYear = a.year("--to");
  return forward;
}

}  // namespace

int runTransfer(const Words& words) {
  const Arguments a(words, withRunOptions(withServerOptions({{"--account"}, {"--from"}, {"--to"}})));
  host::CarryForwardOptions forward = years(a);
  forward.account = a.required("--account");
  forward.server = serverAddress(a);
  return runAndReport(a, std::move(forward), Dialogs::asked);
}

int runTransGL(const Words& words) {
  const Arguments a(
      words, withRunOptions(withServerOptions({{"--account"}, {"--from"}, {"--to"}, {"--from-db"}, {"--to-db"}})));
  host::CarryForwardOptions forward = years(a);
  forward.entry = host::Entry::transGL;
  forward.account = a.text("--account", "");
  forward.closingDatabase = a.required("--from-db");
  forward.newDatabase = a.required("--to-db");
  forward.server = serverAddress(a);
  return runAndReport(a, std::move(forward), Dialogs::asked);
}

}  // namespace cli
