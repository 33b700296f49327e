#include "host/run_report.h"

#include <algorithm>
#include <cstdio>

#include "host/display_width.h"
#include "host/json_text.h"

namespace host {
namespace {

// --- JSON

void key(std::string& out, std::string_view name) {
  if (out.back() != '{') out += ", ";
  appendJsonString(out, name);
  out += ": ";
}
void text(std::string& out, std::string_view name, std::string_view value) {
  key(out, name);
  appendJsonString(out, value);
}
void flag(std::string& out, std::string_view name, bool value) {
  key(out, name);
  out += value ? "true" : "false";
}

template <class Items, class Write>
void array(std::string& out, const Items& items, const Write& write) {
  out += '[';
  bool first = true;
  for (const auto& item : items) {
    if (!first) out += ", ";
    first = false;
    write(item);
  }
  out += ']';
}
void texts(std::string& out, const std::vector<std::string>& items) {
  array(out, items, [&](const std::string& s) { appendJsonString(out, s); });
}
void grid(std::string& out, const std::vector<std::vector<std::string>>& rows) {
  array(out, rows, [&](const std::vector<std::string>& row) { texts(out, row); });
}

// --- text

const char* outcomeText(const RunResult& r) {
  switch (exitCode(r)) {
    case 0:
      return "Carried.";
    case 1:
      return "Not carried.";
    case 3:
      return "Stopped at a check; nothing was carried, although the call reported success.";
    case 4:
      return "Carried, but not wholly: see below.";
    default:
      return "Failed.";
  }
}

// Stage texts of the system read "function--step"; the last part is what a person wants.
std::string_view shortStage(std::string_view stage) {
  const std::size_t at = stage.rfind("--");
  return at == std::string_view::npos ? stage : stage.substr(at + 2);
}

std::string oneLine(std::string_view s, std::size_t limit) {
  std::string out;
  for (const char c : s) out += c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
  return fittedToWidth(out, limit);
}

void rightNumber(std::string& out, std::int64_t n, std::size_t width) {
  const std::string digits = std::to_string(n);
  if (digits.size() < width) out.append(width - digits.size(), ' ');
  out += digits;
}

void tablesText(std::string& out, const RunResult& r) {
  std::vector<const Journal::Table*> touched;
  std::size_t width = 5;
  for (const auto& t : r.tables) {
    if (t.written() == 0 && t.deleted == 0) continue;
    touched.push_back(&t);
    width = std::max(width, displayWidth(t.name));
  }
  if (touched.empty()) return;
  out += "\n" + paddedToWidth("Table", width) + "   inserted    updated    deleted\n";
  for (const auto* t : touched) {
    out += paddedToWidth(t->name, width);
    for (const std::int64_t n : {t->inserted, t->updated, t->deleted}) rightNumber(out, n, 11);
    out += '\n';
  }
}

void stagesText(std::string& out, const RunResult& r) {
  std::size_t width = 5;
  for (const auto& s : r.stages) width = std::max(width, displayWidth(shortStage(s.name)));
  out += "\n" + paddedToWidth("Stage", width) + " statements  rows read    written      ms\n";
  for (const auto& s : r.stages) {
    out += paddedToWidth(shortStage(s.name), width);
    for (const std::int64_t n : {s.statements, s.rowsRead, s.rowsWritten}) rightNumber(out, n, 11);
    rightNumber(out, static_cast<std::int64_t>(s.milliseconds + 0.5), 8);
    out += '\n';
  }
}

void gridText(std::string& out, const std::vector<std::vector<std::string>>& rows) {
  for (const auto& row : rows) {
    std::string line = " ";
    for (const auto& cell : row) line += " " + cell + " |";
    if (line.ends_with(" |")) line.resize(line.size() - 2);
    out += line + "\n";
  }
}

}  // namespace

std::string runReportJson(const RunResult& r) {
  std::string out = "{";
  flag(out, "returned", r.returned);
  flag(out, "success", r.success);
  text(out, "message", r.message);
  text(out, "errMsg", r.errMsg);
  text(out, "parameters", r.parameters);
  key(out, "stop");
  if (r.stop) {
    out += '{';
    text(out, "where", r.stop->where);
    text(out, "why", r.stop->why);
    out += '}';
  } else {
    out += "null";
  }
  key(out, "steps");
  array(out, r.steps, [&](const Step& s) {
    out += '{';
    text(out, "text", s.text);
    text(out, "mark", s.mark);
    out += '}';
  });
  key(out, "report");
  if (r.report) {
    out += '{';
    text(out, "right", r.report->right);
    text(out, "wrong", r.report->wrong);
    key(out, "rows");
    grid(out, r.report->rows);
    out += '}';
  } else {
    out += "null";
  }
  key(out, "notCarried");
  grid(out, r.notCarried);
  key(out, "tables");
  out += '{';
  for (const auto& t : r.tables) {
    if (t.written() == 0 && t.deleted == 0) continue;
    key(out, t.name);
    out += std::to_string(t.written());
  }
  out += '}';
  key(out, "failures");
  array(out, r.failures, [&](const Journal::Failure& f) {
    out += '{';
    text(out, "stage", f.stage);
    text(out, "statement", f.statement);
    text(out, "description", f.description);
    out += '}';
  });
  key(out, "notes");
  texts(out, r.notes);
  if (r.uncaught) text(out, "uncaught", *r.uncaught);
  key(out, "seconds");
  out += jsonMilli(r.seconds);
  out += "}\n";
  return out;
}

std::string runReportText(const RunResult& r) {
  std::string out = outcomeText(r);
  out += '\n';
  if (!r.errMsg.empty()) out += "Message: " + r.errMsg + "\n";
  if (!r.message.empty() && r.message != r.errMsg) out += "Message: " + r.message + "\n";
  if (r.uncaught) out += "Failure: " + *r.uncaught + "\n";
  if (r.uncaught && r.transactionBegun) out += "The transaction was undone.\n";
  if (r.stop) out += "Stopped at: " + r.stop->where + "\nBecause:    " + r.stop->why + "\n";
  if (r.report) {
    out += "\nAccounts carried right: " + r.report->right + ", wrong: " + r.report->wrong + "\n";
    gridText(out, r.report->rows);
  }
  if (!r.notCarried.empty()) {
    out += "\nNot carried (" + std::to_string(r.notCarried.size()) + "):\n";
    gridText(out, r.notCarried);
  }
  if (!r.failures.empty()) {
    out += "\nFailures (" + std::to_string(r.failures.size()) + "); what a stage had not written yet is missing:\n";
    for (const auto& f : r.failures)
      out +=
          "  " + std::string(shortStage(f.stage)) + ": " + f.description + "\n    " + oneLine(f.statement, 160) + "\n";
  }
  for (const auto& n : r.notes) out += "Note: " + n + "\n";
  tablesText(out, r);
  stagesText(out, r);
  char line[96];
  std::snprintf(line, sizeof line, "\n%lld statements, %.2f s\n", static_cast<long long>(r.statements), r.seconds);
  return out + line;
}

}  // namespace host
