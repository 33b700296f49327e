// gljz: the carry-forward of a general ledger on the command line.

#include <cstdio>
#include <exception>
#include <string>

#include "commands.h"
#include "host/usage_error.h"
#include "terminal.h"

namespace {

constexpr int exitUsage = 2, exitFailure = 5;

constexpr const char* usage =
    "usage: gljz COMMAND [OPTIONS]\n"
    "\n"
    "  demo [DIR]            make the demo account set in DIR, carry it forward, show the report\n"
    "  account create        --account 001 --year 2005 [--through 2006] [--name TEXT]\n"
    "  account open-year     --account 001 [--year 2006]\n"
    "  account close-year    --account 001 --year 2005\n"
    "  sql                   [--database NAME] [-q TEXT | -f FILE] [--format table|csv|json]\n"
    "                        without -q and -f: batches are typed at a prompt\n"
    "  transfer              --account 001 --from 2005 --to 2006\n"
    "  transgl               --from 2005 --to 2006 --from-db NAME --to-db NAME [--account 001]\n"
    "  generate              --account 900 --from 2005 --to 2006 [--accounts N] [--balances N]\n"
    "                        [--items N] [--bank N] [--seed K]\n"
    "\n"
    "every command:           --server embedded:DIR   (default embedded:./gljz-data)\n"
    "                         --server \"odbc:DSN=NAME\" or \"odbc:Driver=...;Server=...;UID=...\"\n"
    "                         --credentials FILE      (lines UID=... and PWD=..., mode 600; - asks)\n"
    "demo, transfer, transgl: --params FILE | --check KEY=True|False ... with\n"
    "                         --customer-detail, --supplier-detail, --clear all|none|CODE,CODE;\n"
    "                         transfer and transgl ask on a terminal when none is given\n"
    "                         --language zh-CN|zh-TW|en-US, --operator NAME, --subsystem GL|GF,\n"
    "                         --today yyyy-mm-dd, --trace FILE, --format text|json, --quiet,\n"
    "                         --report FILE.html|.pdf|.xlsx|.csv|.json|.txt,\n"
    "                         --print FILE.pdf|.txt (the closing report),\n"
    "                         --print-left-out FILE.pdf|.txt (the records without a counterpart)\n";

struct Command {
  const char* name;
  int (*run)(const cli::Words& words);
};
constexpr Command commands[] = {
    {"demo", cli::runDemo},         {"account", cli::runAccount}, {"sql", cli::runSql},
    {"transfer", cli::runTransfer}, {"transgl", cli::runTransGL}, {"generate", cli::runGenerate},
};

int dispatch(const cli::Words& words) {
  if (words.empty()) {
    std::fputs(usage, stderr);
    return exitUsage;
  }
  for (const std::string& word : words)
    if (word == "--help" || word == "-h" || words[0] == "help") {
      std::fputs(usage, stdout);
      return 0;
    }
  for (const Command& command : commands)
    if (words[0] == command.name) return command.run({words.begin() + 1, words.end()});
  throw host::UsageError("unknown command \"" + words[0] + "\"; gljz --help lists the commands");
}

int complain(const char* text, int code) {
  std::fprintf(stderr, "gljz: %s\n", text);
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  cli::prepareTerminal();
  int code = exitFailure;
  try {
    code = dispatch(cli::programWords(argc, argv));
  } catch (const host::UsageError& e) {
    return complain(e.what(), exitUsage);
  } catch (const std::exception& e) {
    return complain(e.what(), exitFailure);
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
    return complain("standard output cannot be written", exitFailure);
  return code;
}
