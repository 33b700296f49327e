#include "dialect/runner.h"

#include <algorithm>
#include <exception>

namespace dialect {

namespace {

constexpr const char* firstConnection = "main";
constexpr const char* firstDatabase = "d1";

std::string failureText(const std::vector<Failure>& failures) {
  std::string text;
  for (const Failure& f : failures) {
    text += (text.empty() ? "" : "; ") + std::to_string(f.number) + " " + f.message;
  }
  return text;
}

std::string rowsText(std::size_t columns, const std::vector<std::string>& rows) {
  constexpr std::size_t shown = 20;
  std::string text = std::to_string(columns) + (columns == 1 ? " column, " : " columns, ") +
                     std::to_string(rows.size()) + (rows.size() == 1 ? " row" : " rows");
  for (std::size_t i = 0; i < std::min(rows.size(), shown); ++i) text += "\n      " + rows[i];
  if (rows.size() > shown) text += "\n      ...";
  return text;
}

std::string sqlText(const std::string& sql) {
  constexpr std::size_t shown = 600;
  std::string text = "\n  sent:\n      ";
  for (const char c : sql.substr(0, shown)) text += c == '\n' ? std::string("\n      ") : std::string(1, c);
  return text + (sql.size() > shown ? "..." : "");
}

}  // namespace

Outcome Runner::run(const std::vector<Block>& blocks) {
  outcome_ = {};
  sessions_.clear();
  connection_ = firstConnection;
  database_ = firstDatabase;
  affected_ = -1;
  lastDeclined_ = statementDeclined_ = false;
  for (const Block& block : blocks) {
    try {
      runBlock(block);
    } catch (const std::exception& e) {
      fail(block, std::string("  the runner was stopped: ") + e.what());
    }
  }
  sessions_.clear();
  return std::move(outcome_);
}

void Runner::runBlock(const Block& block) {
  switch (block.kind) {
    case BlockKind::statement:
      return runStatement(block);
    case BlockKind::query:
      return runQuery(block);
    case BlockKind::count:
      return checkCount(block);
    case BlockKind::connection:
      return changeConnection(block);
    case BlockKind::script:
      return runScript(block);
    case BlockKind::database:
      database_ = block.name;
      sessions_.erase(connection_);
      return;
  }
}

void Runner::runStatement(const Block& block) {
  const Answer answer = send(block.sql);
  const bool failed = !answer.failures.empty();
  if (block.error.empty()) {
    if (!failed) return pass();
    if (!block.optional) return fail(block, "  expected: runs\n  got:      " + failureText(answer.failures));
    statementDeclined_ = true;
    return decline();
  }
  // The first failure is the one that a client is told.
  if (failed && isExpected(block.error, answer.failures.front())) return pass();
  if (block.optional && statementDeclined_) return decline();
  fail(block, "  expected: failure " + block.error +
                  "\n  got:      " + (failed ? failureText(answer.failures) : "no failure"));
}

void Runner::runQuery(const Block& block) {
  Answer answer = send(block.sql);
  if (!answer.failures.empty()) {
    if (block.optional) return decline();
    return fail(block,
                "  expected: " + rowsText(block.columns, block.rows) + "\n  got:      " + failureText(answer.failures));
  }
  std::vector<std::string> want = block.rows;
  if (block.anyOrder) {
    std::sort(want.begin(), want.end());
    std::sort(answer.rows.begin(), answer.rows.end());
  }
  if (block.onlyRowCount) {
    // The number of columns counts only where their contents do: a server may show more of its own tables.
    answer.rows = {std::to_string(answer.rows.size())};
    answer.columns = block.columns;
  }
  if (answer.columns == block.columns && sameRows(want, answer.rows)) return pass();
  if (block.optional && statementDeclined_) return decline();
  fail(block,
       "  expected: " + rowsText(block.columns, want) + "\n  got:      " + rowsText(answer.columns, answer.rows));
}

void Runner::runScript(const Block& block) {
  int number = 0;
  for (const std::string& batch : scriptBatches(readFile(folder_ / block.name))) {
    ++number;
    const Answer answer = send(batch);
    if (answer.failures.empty()) continue;
    return fail(block, "  batch " + std::to_string(number) + " of " + block.name +
                           " failed: " + failureText(answer.failures) + sqlText(batch));
  }
}

void Runner::checkCount(const Block& block) {
  if (affected_ == block.affected) return pass();
  if (lastDeclined_) return decline();
  fail(block,
       "  expected: " + std::to_string(block.affected) + " rows affected\n  got:      " + std::to_string(affected_));
}

void Runner::changeConnection(const Block& block) {
  connection_ = block.name;
  if (!block.close) return;
  sessions_.erase(connection_);
  connection_ = firstConnection;
}

Session& Runner::session() {
  auto& found = sessions_[connection_];
  if (!found) found = open_(database_);
  return *found;
}

Answer Runner::send(const std::string& batch) {
  affected_ = -1;
  lastDeclined_ = false;
  Answer answer = session().run(batch);
  if (answer.failures.empty()) affected_ = answer.affected;
  return answer;
}

void Runner::pass() {
  ++outcome_.passed;
}

void Runner::decline() {
  ++outcome_.declined;
  lastDeclined_ = true;
}

void Runner::fail(const Block& block, const std::string& what) {
  outcome_.failed.push_back({block.line, what + (block.sql.empty() ? "" : sqlText(block.sql))});
}

}  // namespace dialect
