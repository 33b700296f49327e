#include "host/run_report.h"

#include <algorithm>
#include <cstdio>

#include "host/display_width.h"
#include "host/journal_texts.h"
#include "host/json_text.h"
#include "host/messages.h"

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

using Row = std::vector<std::string>;

struct Column {
  const char* titleKey;
  bool right = false;
};

class TextReport {
public:
  explicit TextReport(const RunResult& result)
      : result_(result), messages_(result.language), journalTexts_(messages_) {}

  std::string text() {
    data();
    leftOut();
    failures();
    notes();
    openingBalances();
    stages();
    outcome();
    return std::move(out_);
  }

private:
  std::string own(const char* key, const std::vector<platform::Value>& arguments = {}) const {
    return messages_.text(std::string("Gljz.Host.") + key, arguments);
  }
  void line(const std::string& s) { out_ += s + "\n"; }
  void heading(const std::string& s) {
    if (!out_.empty()) out_ += '\n';
    line(s);
  }

  void table(const std::vector<Column>& columns, std::vector<Row> rows) {
    Row titles;
    for (const Column& c : columns) titles.push_back(messages_.text(c.titleKey));
    rows.insert(rows.begin(), std::move(titles));
    std::vector<std::size_t> widths(columns.size());
    for (const Row& row : rows)
      for (std::size_t i = 0; i < widths.size() && i < row.size(); ++i)
        widths[i] = std::max(widths[i], displayWidth(row[i]));
    for (const Row& row : rows) {
      std::string text;
      for (std::size_t i = 0; i < widths.size() && i < row.size(); ++i)
        text += "  " + paddedToWidth(row[i], widths[i], columns[i].right);
      text.resize(text.find_last_not_of(' ') + 1);
      line(text);
    }
  }

  void data() {
    std::vector<Row> rows;
    bool unread = false;
    for (const auto& t : result_.tables) {
      if (t.written() == 0 && t.deleted == 0) continue;
      unread = unread || t.read == 0;
      rows.push_back({t.name, t.read == 0 ? "-" : std::to_string(t.read), std::to_string(t.inserted),
                      std::to_string(t.updated), std::to_string(t.deleted)});
    }
    if (rows.empty()) return heading(own("Heading.Nothing"));
    heading(own("Heading.Data"));
    table({{"Gljz.Host.Column.Table"},
           {"Gljz.Host.Column.RowsRead", true},
           {"Gljz.Host.Column.RowsNew", true},
           {"Gljz.Host.Column.RowsChanged", true},
           {"Gljz.Host.Column.RowsRemoved", true}},
          std::move(rows));
    if (unread) line("  " + own("Data.InsideServer"));
  }

  // The imbalance grid has four columns for records that were left out, six or seven for partners and persons whose
  // details do not make up the account's balance.
  void leftOut() {
    const auto& rows = result_.notCarried;
    if (rows.empty()) return;
    heading(own("Heading.LeftOut", {std::to_string(rows.size())}));
    const std::size_t cells = rows.front().size();
    if (cells == 6)
      table({{"Orvo.GL.TqGLJZ.00062"},
             {"Orvo.GL.TqGLJZ.00063"},
             {"Orvo.GL.TqGLJZ.00075"},
             {"Orvo.GL.TqGLJZ.00066"},
             {"Orvo.GL.TqGLJZ.00067", true},
             {"Orvo.GL.TqGLJZ.00068", true}},
            rows);
    else if (cells == 7)
      table({{"Orvo.GL.TqGLJZ.00062"},
             {"Orvo.GL.TqGLJZ.00063"},
             {"Orvo.GL.TqGLJZ.00064"},
             {"Orvo.GL.TqGLJZ.00065"},
             {"Orvo.GL.TqGLJZ.00066"},
             {"Orvo.GL.TqGLJZ.00067", true},
             {"Orvo.GL.TqGLJZ.00068", true}},
            rows);
    else
      byReason(rows);
  }
  // Cells: kind, code, name, reason. A record stands once under its reason, with the number of its rows.
  void byReason(const std::vector<Row>& rows) {
    using Record = std::pair<std::string, std::size_t>;
    std::vector<std::pair<std::string, std::vector<Record>>> reasons;
    const auto entry = [](auto& list, const std::string& name) -> auto& {
      const auto found = std::find_if(list.begin(), list.end(), [&](const auto& e) { return e.first == name; });
      if (found != list.end()) return *found;
      list.push_back({name, {}});
      return list.back();
    };
    for (const Row& row : rows) {
      std::string record;
      for (std::size_t i = 0; i < row.size() && i < 3; ++i)
        if (!row[i].empty()) record += (record.empty() ? "" : " ") + row[i];
      ++entry(entry(reasons, row.size() > 3 ? row[3] : std::string()).second, record).second;
    }
    for (const auto& [reason, records] : reasons) {
      if (!reason.empty()) line("  " + reason);
      for (const auto& [record, times] : records)
        line("    " + (times == 1 ? record : own("LeftOut.Times", {record, std::to_string(times)})));
    }
  }

  void failures() {
    if (result_.failures.empty()) return;
    heading(own("Heading.Failures", {std::to_string(result_.failures.size())}));
    for (const auto& f : result_.failures) {
      const std::string description = journalTexts_.translated(f.description);
      line("  " + own("Failure.Line", {std::string(shortStage(f.stage)), description}));
      if (!f.statement.empty()) line("    " + oneLine(f.statement, 160));
    }
  }

  void notes() {
    if (result_.notes.empty()) return;
    heading(own("Heading.Notes"));
    for (const auto& n : result_.notes) line("  " + journalTexts_.translated(n));
  }

  // The closing report, in the words of its own form.
  void openingBalances() {
    if (!result_.report) return;
    heading(messages_.text("Orvo.GL.TqGLJZ.00018"));
    if (!result_.report->rows.empty())
      table({{"Orvo.GL.TqGLJZ.00062"},
             {"Orvo.GL.TqGLJZ.00231"},
             {"Orvo.GL.TqGLJZ.00232"},
             {"Orvo.GL.TqGLJZ.00233"},
             {"Orvo.GL.TqGLJZ.00234"},
             {"Orvo.GL.TqGLJZ.00235", true},
             {"Orvo.GL.TqGLJZ.00236", true},
             {"Orvo.GL.ZWSQL.PERSONACC.00973"},
             {"Orvo.GL.TqGLJZ.00238", true},
             {"Orvo.GL.TqGLJZ.00239"},
             {"Orvo.GL.TqGLJZ.00240"}},
            result_.report->rows);
    line("  " + messages_.text("Orvo.GL.TqGLJZ.00016", {result_.report->right, result_.report->wrong}));
  }

  void stages() {
    if (result_.stages.empty()) return;
    std::vector<Row> rows;
    for (const auto& s : result_.stages)
      rows.push_back({std::string(shortStage(s.name)), std::to_string(s.statements), std::to_string(s.rowsRead),
                      std::to_string(s.rowsWritten), std::to_string(static_cast<std::int64_t>(s.milliseconds + 0.5))});
    heading(own("Heading.Stages"));
    table({{"Gljz.Host.Column.Stage"},
           {"Gljz.Host.Column.Statements", true},
           {"Gljz.Host.Column.RowsRead", true},
           {"Gljz.Host.Column.RowsWritten", true},
           {"Gljz.Host.Column.Milliseconds", true}},
          std::move(rows));
  }

  const char* outcomeKey() const {
    switch (exitCode(result_)) {
      case 0:
        return "Outcome.Carried";
      case 1:
        return "Outcome.NotCarried";
      case 3:
        return "Outcome.StoppedAtCheck";
      case 4:
        return "Outcome.NotWholly";
      default:
        return "Outcome.Failed";
    }
  }
  void outcome() {
    const RunResult& r = result_;
    heading(own(outcomeKey()));
    if (!r.errMsg.empty()) line(own("Outcome.Message", {r.errMsg}));
    if (!r.message.empty() && r.message != r.errMsg) line(own("Outcome.Message", {r.message}));
    if (r.uncaught) line(own("Outcome.Failure", {*r.uncaught}));
    if (r.uncaught && r.transactionBegun) line(own("Outcome.Undone"));
    if (r.stop) {
      line(own("Outcome.StopWhere", {r.stop->where}));
      line(own("Outcome.StopWhy", {r.stop->why}));
    }
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.2f", r.seconds);
    line(own("Outcome.Total", {std::to_string(r.statements), std::string(seconds)}));
  }

  const RunResult& result_;
  Messages messages_;
  JournalTexts journalTexts_;
  std::string out_;
};

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
  return TextReport(r).text();
}

}  // namespace host
