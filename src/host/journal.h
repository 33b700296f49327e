#pragma once
// The run journal: what really happened in a run, stage by stage, beside what the system reports about itself.
//
//   Journal journal;
//   auto connection = journalConnection(journal, embedded::makeConnection(), Role::other);
//
// The decorators (journal_connection.h, journal_services.h) tell it of every statement; it changes nothing. A stage is
// what the run variable m_strFuncDesc says at the time of a statement, but for the work that it does not name: what
// runs before it says anything, the settings tables and the verification have stages of the journal's own
// (stage_watch.h). One journal belongs to one run and one thread.

#include <chrono>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/missing_codes.h"
#include "host/settings_watch.h"
#include "host/stage_watch.h"
#include "host/statement_head.h"
#include "platform/value.h"

namespace host {

class Journal {
public:
  struct Stage {
    std::string name;
    std::int64_t statements = 0, rowsRead = 0, rowsWritten = 0;
    double milliseconds = 0;  // in the database
  };
  struct Table {
    std::string name;  // as its first statement spells it
    // read: rows fetched one by one to be carried. What a statement moves inside the server is not read.
    std::int64_t read = 0, inserted = 0, updated = 0, deleted = 0;
    std::int64_t written() const { return inserted + updated; }
  };
  struct Failure {
    std::string stage, statement, description;
  };
  struct Prompt {
    std::string stage, text;
  };

  Journal();
  ~Journal();

  // Every statement goes to the file from now on, one JSON object a line. UsageError when it cannot be written.
  void traceTo(const std::string& file);
  bool tracing() const { return trace_ != nullptr; }

  // From the connections' decorators. A statement begins, and ends well or with a failure.
  struct Statement {
    Role role = Role::newYear;
    const char* operation = "";  // "execute", "open", "begin", ...
    std::int64_t number = 0;     // from 1, in the order of beginning
    std::size_t stage = 0;
    std::chrono::steady_clock::time_point start;
    double milliseconds = 0;  // that an open took, without the walk through the rows
  };
  Statement begin(Role role, const char* operation, std::string_view text);
  // rows: changed by an execute, -1 unknown.
  void end(const Statement& statement, std::string_view text, std::int64_t rows);
  void opened(Statement& statement, std::string_view text);  // its trace line is written by rowsRead
  void fail(const Statement& statement, std::string_view text, const std::exception& failure);
  void selectionWasEmpty(const Statement& statement, std::string_view text);
  // A result set was closed after so many rows were walked. carried: they are rows of the table, fetched to be carried.
  void rowsRead(const Statement& statement, std::string_view text, std::string_view table, std::int64_t rows,
                bool carried);
  void rowWritten(std::size_t stage, std::string_view table, bool inserted);

  // The transaction of the run: the rows that were counted as written in it go when it is undone.
  void transactionBegun();
  void transactionEnded(bool committed);
  bool sawTransaction() const { return sawTransaction_; }
  bool inTransaction() const { return inTransaction_; }

  // From the services' decorator.
  void serviceFailed(const char* operation, std::string_view argument, const std::exception& failure);
  void traceService(const char* operation, std::string_view argument);
  void messageAsked(std::string_view key, const std::string& text);  // a resource text was fetched
  void prompted(const std::string& text);                            // a box that the run would have shown
  // A handler of the system has caught this failure. One that no statement reported before (a Null that was read as a
  // number, say) is a failure of its own.
  void handled(const std::exception& failure);
  // A stage told the system that it failed, and caught the failure itself.
  void stageFailed();
  // The new year has no such record: a note at the end of a run that nobody watches.
  // How the name of the bank ledger's stage ends.
  static constexpr std::string_view bankLedgerStage = "--结转未核销银行账";
  void missing(MissingCodes::Kind kind, std::string_view code, std::string_view itemClass = {});
  void siblingAsked();  // the component that ends the stage of the settings tables
  // This failure is told otherwise (in a note): it is not counted when a handler reports it.
  void expected(const std::exception& failure) { pendingFailure_ = failure.what(); }

  void debugLine(std::string line) { debug_.push_back(std::move(line)); }
  void note(std::string text);  // each text once
  void finish();                // the run is over: what only its end can tell is written down

  const std::vector<Stage>& stages() const { return stages_; }
  std::vector<Table> tables() const;  // without temporary ones, by name
  const std::vector<Failure>& failures() const { return failures_; }
  const std::vector<Prompt>& prompts() const { return prompts_; }
  const std::vector<std::string>& notes() const { return notes_; }
  const std::vector<std::string>& debugLines() const { return debug_; }
  // The step and the text of a check that ends a run without a word; nullopt while none has.
  const std::optional<Prompt>& silentStop() const { return silentStop_; }
  const std::string& lastStatement() const { return lastStatement_; }
  std::int64_t statementCount() const { return count_; }
  std::int64_t rowsWritten() const;  // so far, of all stages

private:
  struct LessNoCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
  };
  using Tables = std::map<std::string, Table, LessNoCase>;

  std::size_t currentStage();
  const std::string& currentStageName() { return stages_[currentStage()].name; }
  Table& table(std::string_view name);
  void addFailure(const std::string& stage, std::string_view statement, const std::string& description);
  void traceLine(const Statement& statement, std::string_view text, std::int64_t rows, double milliseconds,
                 const std::exception* failure);

  std::vector<Stage> stages_;
  std::size_t stage_ = 0;
  StageWatch stageWatch_;
  std::vector<std::int64_t> rowsBefore_;  // written by each stage when the transaction began
  Tables tables_, tablesBefore_;
  Table* lastTable_ = nullptr;
  std::vector<Failure> failures_;
  std::vector<Prompt> prompts_;
  std::vector<std::string> notes_, debug_;
  std::string lastStatement_, pendingFailure_;
  std::optional<Prompt> silentStop_;
  SettingsWatch settings_;
  MissingCodes missing_;
  std::int64_t count_ = 0;
  bool sawTransaction_ = false, inTransaction_ = false;
  std::unique_ptr<std::ostream> trace_;
};

}  // namespace host
