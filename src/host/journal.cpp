#include "host/journal.h"

#include <algorithm>
#include <fstream>

#include "core/run_state.h"
#include "host/expected_failures.h"
#include "host/json_text.h"
#include "host/usage_error.h"
#include "host/utf8_path.h"
#include "platform/value.h"

namespace host {
namespace {

// A run with a failure in each of a million rows must not fill the memory.
constexpr std::size_t maxFailures = 1000, maxPrompts = 1000;
constexpr std::size_t maxStatementText = 4000;

// Texts of the checks that end a run without a word: the box that they ask for is never shown, and nothing else fetches
// these texts. In order: the new year is the account set's first; settlement styles, departments, customers,
// suppliers, persons are missing; the new year has posted vouchers.
constexpr std::string_view silentStopKeys[] = {"Orvo.GL.TqGLJZ.00028",        "Orvo.GL.TqGLJZ.cancel.00038",
                                               "Orvo.GL.TqGLJZ.cancel.00040", "Orvo.GL.TqGLJZ.cancel.00042",
                                               "Orvo.GL.TqGLJZ.cancel.00044", "Orvo.GL.TqGLJZ.cancel.00046",
                                               "Orvo.GL.TqGLJZ.00050"};

const char* roleName(Role role) {
  switch (role) {
    case Role::newYear:
      return "new";
    case Role::closingYear:
      return "closing";
    case Role::privateConnection:
      return "private";
  }
  return "";
}

// Rows of a batch whose last statement changed `last` rows: the driver tells of that one alone. The batches of the
// system are rows of the same single-row insert, a line each.
std::int64_t rowsOfBatch(std::string_view text, std::int64_t last) {
  std::int64_t rows = last;
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) {
    const std::string_view line = text.substr(at + 1, 6);
    if (platform::equalsIgnoreCase(line, "insert")) ++rows;
  }
  return rows;
}

double millisecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool Journal::LessNoCase::operator()(std::string_view a, std::string_view b) const {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return lower(x) < lower(y); });
}

Journal::Journal() = default;
Journal::~Journal() = default;

void Journal::traceTo(const std::string& file) {
  auto out = std::make_unique<std::ofstream>(pathOf(file), std::ios::binary);
  if (!*out) throw UsageError("trace file " + file + " cannot be written");
  trace_ = std::move(out);
}

// A step has one text, so that comparing it with the last one is enough nearly always.
std::size_t Journal::currentStage() {
  const std::string_view name = stageWatch_.stage(gljz::run.m_strFuncDesc);
  if (stage_ < stages_.size() && stages_[stage_].name == name) return stage_;
  for (stage_ = 0; stage_ < stages_.size(); ++stage_)
    if (stages_[stage_].name == name) return stage_;
  stages_.push_back({std::string(name)});
  return stage_;
}

Journal::Table& Journal::table(std::string_view name) {
  if (lastTable_ && lastTable_->name == name) return *lastTable_;
  auto found = tables_.find(name);
  if (found == tables_.end()) found = tables_.emplace(std::string(name), Table{std::string(name)}).first;
  lastTable_ = &found->second;
  return *lastTable_;
}

Journal::Statement Journal::begin(Role role, const char* operation, std::string_view text) {
  stageWatch_.statement(role, text, gljz::run.m_strFuncDesc);
  return {role, operation, ++count_, currentStage(), std::chrono::steady_clock::now()};
}

void Journal::end(const Statement& statement, std::string_view text, std::int64_t rows) {
  const double milliseconds = millisecondsSince(statement.start);
  Stage& stage = stages_[statement.stage];
  ++stage.statements;
  stage.milliseconds += milliseconds;
  if (!text.empty()) lastStatement_.assign(text.substr(0, maxStatementText));
  settings_.statement(statement.role, text, failures_.size());
  if (rows > 0) {
    StatementHead head = statementHead(text);
    if (head.kind == StatementHead::Kind::insert)
      rows = rowsOfBatch(text, rows);
    else
      head = lastChangeHead(text);
    if (!head.table.empty() && !head.temporary) {  // work tables are no result: neither here nor of the stage
      Table& t = table(head.table);
      if (head.kind == StatementHead::Kind::insert || head.kind == StatementHead::Kind::update)
        stage.rowsWritten += rows;
      if (head.kind == StatementHead::Kind::insert) t.inserted += rows;
      if (head.kind == StatementHead::Kind::update) t.updated += rows;
      if (head.kind == StatementHead::Kind::erase) t.deleted += rows;
    }
  }
  if (trace_) traceLine(statement, text, rows, milliseconds, nullptr);
}

void Journal::opened(Statement& statement, std::string_view text) {
  statement.milliseconds = millisecondsSince(statement.start);
  Stage& stage = stages_[statement.stage];
  ++stage.statements;
  stage.milliseconds += statement.milliseconds;
  lastStatement_.assign(text.substr(0, maxStatementText));
  settings_.statement(statement.role, text, failures_.size());
}

void Journal::fail(const Statement& statement, std::string_view text, const std::exception& failure) {
  const double milliseconds = millisecondsSince(statement.start);
  Stage& stage = stages_[statement.stage];
  ++stage.statements;
  stage.milliseconds += milliseconds;
  if (!text.empty()) lastStatement_.assign(text.substr(0, maxStatementText));
  settings_.statement(statement.role, text, failures_.size());
  // Unless the system's own handler reports it.
  if (const auto meaning = expectedFailure(statement.role, text, failure)) {
    if (!meaning->empty()) note(std::string(*meaning));
  } else {
    addFailure(stage.name, text, failure.what());
    pendingFailure_ = failure.what();
  }
  if (trace_) traceLine(statement, text, -1, milliseconds, &failure);
}

// The stage of the settings tables keeps its failures to itself, and one that no statement is to blame for (a column
// that the closing year lacks) is seen by nobody. That the stage did not come to its end shows all the same.
void Journal::finish() {
  if (const auto text = settings_.brokeOff()) {
    if (failures_.size() == settings_.failuresBefore())
      addFailure(std::string(StageWatch::settingsTables), "", *text);
    else
      note(*text);
  }
  for (std::string& text : missing_.notes()) note(std::move(text));
}

void Journal::siblingAsked() {
  settings_.ended();
}

void Journal::missing(MissingCodes::Kind kind, std::string_view code, std::string_view itemClass) {
  if (!gljz::run.m_bManual) missing_.add(kind, code, itemClass);
}

void Journal::selectionWasEmpty(const Statement& statement, std::string_view text) {
  settings_.selectionWasEmpty(statement.role, text);
  if (gljz::run.m_bManual || statement.role != Role::newYear) return;
  // Lines of bank accounts keep the codes that the new year lacks.
  const bool bank = platform::trim(gljz::run.m_strFuncDesc).ends_with(bankLedgerStage);
  missing_.selectionWasEmpty(text, bank ? MissingCodes::Named::carried : MissingCodes::Named::leftOut);
}

void Journal::rowsRead(const Statement& statement, std::string_view text, std::string_view tableName, std::int64_t rows,
                       bool carried) {
  stages_[statement.stage].rowsRead += rows;
  if (!tableName.empty() && rows > 0) table(tableName).read += carried ? rows : 0;
  if (trace_) traceLine(statement, text, rows, statement.milliseconds, nullptr);
}

void Journal::rowWritten(std::size_t stage, std::string_view tableName, bool inserted) {
  if (tableName.empty()) return;
  ++stages_[stage].rowsWritten;
  Table& t = table(tableName);
  ++(inserted ? t.inserted : t.updated);
}

void Journal::transactionBegun() {
  sawTransaction_ = inTransaction_ = true;
  tablesBefore_ = tables_;
  rowsBefore_.clear();
  for (const Stage& stage : stages_) rowsBefore_.push_back(stage.rowsWritten);
}

void Journal::transactionEnded(bool committed) {
  if (inTransaction_ && !committed) {
    for (auto& [name, t] : tables_) {
      const auto before = tablesBefore_.find(name);
      const Table old = before == tablesBefore_.end() ? Table{} : before->second;
      t.inserted = old.inserted, t.updated = old.updated, t.deleted = old.deleted;
    }
    for (std::size_t i = 0; i < stages_.size(); ++i)
      stages_[i].rowsWritten = i < rowsBefore_.size() ? rowsBefore_[i] : 0;
  }
  inTransaction_ = false;
}

void Journal::addFailure(const std::string& stage, std::string_view statement, const std::string& description) {
  if (failures_.size() < maxFailures)
    failures_.push_back({stage, std::string(statement.substr(0, maxStatementText)), description});
  else
    note("more than " + std::to_string(maxFailures) + " failures; the others are not listed");
}

void Journal::serviceFailed(const char* operation, std::string_view argument, const std::exception& failure) {
  addFailure(currentStageName(), std::string(operation) + "(" + std::string(argument) + ")", failure.what());
  pendingFailure_ = failure.what();
}

void Journal::messageAsked(std::string_view key, const std::string& text) {
  if (std::find(std::begin(silentStopKeys), std::end(silentStopKeys), key) != std::end(silentStopKeys))
    silentStop_ = Prompt{gljz::run.m_strFuncDesc, text};
}

void Journal::prompted(const std::string& text) {
  if (prompts_.size() < maxPrompts) prompts_.push_back({gljz::run.m_strFuncDesc, text});
}

void Journal::handled(const std::exception& failure) {
  // A statement's failure was written down when it was thrown; the handler is told of the same one later.
  if (pendingFailure_ == failure.what()) return pendingFailure_.clear();
  addFailure(currentStageName(), gljz::run.m_strLastSql, failure.what());
}

void Journal::stageFailed() {
  if (!pendingFailure_.empty()) return pendingFailure_.clear();
  addFailure(currentStageName(), gljz::run.m_strLastSql, "the stage ended early");
}

void Journal::note(std::string text) {
  if (std::find(notes_.begin(), notes_.end(), text) == notes_.end()) notes_.push_back(std::move(text));
}

std::int64_t Journal::rowsWritten() const {
  std::int64_t rows = 0;
  for (const Stage& stage : stages_) rows += stage.rowsWritten;
  return rows;
}

std::vector<Journal::Table> Journal::tables() const {
  std::vector<Table> all;
  for (const auto& [name, t] : tables_) all.push_back(t);
  return all;
}

void Journal::traceService(const char* operation, std::string_view argument) {
  if (!trace_) return;
  std::string line = "{\"connection\":\"services\",\"stage\":";
  appendJsonString(line, gljz::run.m_strFuncDesc);
  line += ",\"operation\":";
  appendJsonString(line, operation);
  line += ",\"text\":";
  appendJsonString(line, argument);
  line += "}\n";
  *trace_ << line;
}

void Journal::traceLine(const Statement& statement, std::string_view text, std::int64_t rows, double milliseconds,
                        const std::exception* failure) {
  std::string line =
      "{\"n\":" + std::to_string(statement.number) + ",\"connection\":\"" + roleName(statement.role) + "\",\"stage\":";
  appendJsonString(line, stages_[statement.stage].name);
  line += ",\"operation\":\"";
  line += statement.operation;
  line += "\",\"text\":";
  appendJsonString(line, text);
  line += ",\"rows\":" + (rows < 0 ? std::string("null") : std::to_string(rows)) +
          ",\"milliseconds\":" + jsonMilli(milliseconds) + ",\"failure\":";
  if (failure)
    appendJsonString(line, failure->what());
  else
    line += "null";
  line += "}\n";
  *trace_ << line;
}

}  // namespace host
