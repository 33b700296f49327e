#pragma once
// One run of the carry-forward as the reference host makes it: surroundings, login, services, journal, and the whole
// truth afterwards.
//
//   CarryForwardOptions o;
//   o.server = parseServer("embedded:gljz-data");
//   o.account = "001", o.closingYear = 2005, o.newYear = 2006;
//   RunResult r = carryForward(o);        // UsageError before anything has run, never for what the run meets
//
// The run state is the process's: one run at a time.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/bank_carry.h"
#include "host/condition_answers.h"
#include "host/connection_text.h"
#include "host/form_host.h"
#include "host/journal.h"
#include "host/printing.h"
#include "host/year_balance.h"

namespace host {

enum class Entry { transfer, transGL };

struct CarryForwardOptions {
  Entry entry = Entry::transfer;
  ServerAddress server;
  std::string account;  // TransGL may leave it empty: it is then the account that the new database is registered for
  int closingYear = 0, newYear = 0;
  std::string closingDatabase, newDatabase;  // TransGL only

  std::optional<std::string> parameters;  // parameter text; without one the conditions are answered from choices
  ConditionChoices choices;
  DialogView* dialogs = nullptr;  // a person who answers the dialogs in place of the choices

  std::string language = "zh-CN";
  std::string operatorName = "gljz";
  bool subsystemGF = false;
  std::optional<platform::DateTime> today;  // the host's and the server's clock; the machine's date when not set
  std::string traceFile;                    // empty: none
  ProgressSink* progress = nullptr;
  PrintWishes print;  // of the closing dialogs
};

// How a check ended a run before its transaction.
struct Stop {
  std::string where, why;
};

struct RunResult {
  std::string language;          // of the texts below, and of the report for a person
  std::string account, company;  // the company may be unknown, the account too for TransGL
  int closingYear = 0, newYear = 0;
  std::string operatorName;
  std::string day;           // yyyy-mm-dd, by the host's clock
  bool returned = false;     // the entry's result; False after an uncaught failure
  bool success = false;      // what getTransferMsg gives
  std::string message;       // what getTransferMsg gives
  std::string errMsg;        // the entry's message slot
  std::string parameters;    // the parameter text that was used
  std::optional<Stop> stop;  // a check ended the run
  bool conditionsLeft =
      false;  // a person left the conditions; message, errMsg and stop are what the system makes of it
  std::optional<std::string> uncaught;
  std::vector<Step> steps;
  std::optional<ClosingReport> report;
  std::vector<std::vector<std::string>> notCarried;  // rows of the imbalance grid without the header
  std::vector<Journal::Table> tables;
  std::optional<YearBalance> balance;          // nothing when the year was not carried or it cannot be read
  std::optional<std::vector<BankCarry>> bank;  // nothing when the run did not come to the bank or it cannot be read
  std::vector<Journal::Stage> stages;
  std::vector<Journal::Failure> failures;
  std::vector<std::string> notes;
  std::vector<PrintOutcome> prints;
  bool transactionBegun = false;
  std::int64_t statements = 0;
  double seconds = 0;
};

RunResult carryForward(const CarryForwardOptions& options);

// The switches that the conditions dialog would offer to such a run, as it ticks them at first, and the parameter text
// that confirming it at once would give. Nothing runs and nothing is written. Transfer only; UsageError as above,
// RunTimeError for what the dialog's load meets.
struct ConditionPreview {
  struct Switch {
    std::string key, text;
    bool checked = false;
  };
  std::vector<Switch> switches;
  std::string parameters;
};
ConditionPreview previewConditions(const CarryForwardOptions& options);

// 0 carried and verified, 1 the entry returned False, 3 stopped at a check though it returned True, 4 carried with a
// swallowed failure or a wrong account in the report, 5 a failure that reached the host.
int exitCode(const RunResult& result);

}  // namespace host
