// The report as lines of text. The outcome comes last: that is what a terminal shows when the rest has scrolled away.

#include <algorithm>
#include <cstdio>
#include <utility>

#include "host/display_width.h"
#include "host/messages.h"
#include "host/report_model.h"
#include "host/run_report.h"

namespace host {
namespace {

using Row = std::vector<std::string>;

std::string oneLine(std::string_view s, std::size_t limit) {
  std::string out;
  for (const char c : s) out += c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
  return fittedToWidth(out, limit);
}

class TextReport {
public:
  explicit TextReport(const RunResult& result)
      : result_(result), model_(reportModel(result)), messages_(result.language) {}

  std::string text() {
    if (!model_.table("data")) heading(own("Heading.Nothing"));
    for (const ReportTable& table : model_.tables) {
      heading(table.title);
      if (table.id == "leftOut" && table.columns.size() == 5)
        byReason(table);
      else if (table.id == "failures")
        failures(table);
      else if (table.columns.size() == 1)
        for (const Row& row : table.rows) line("  " + row.front());
      else if (!table.rows.empty())
        grid(table);
      for (const std::string& remark : table.remarks) line("  " + remark);
    }
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

  void grid(const ReportTable& table) {
    std::vector<std::size_t> widths;
    for (const ReportColumn& c : table.columns) widths.push_back(displayWidth(c.title));
    for (const Row& row : table.rows)
      for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], displayWidth(row[i]));
    const auto gridLine = [&](const auto& cell) {
      std::string text;
      for (std::size_t i = 0; i < widths.size(); ++i)
        text += "  " + paddedToWidth(cell(i), widths[i], isNumber(table.columns[i].kind));
      text.resize(text.find_last_not_of(' ') + 1);
      line(text);
    };
    gridLine([&](std::size_t i) -> const std::string& { return table.columns[i].title; });
    for (const Row& row : table.rows) gridLine([&](std::size_t i) -> const std::string& { return row[i]; });
  }

  // Cells: kind, code, name, reason, times.
  void byReason(const ReportTable& table) {
    const std::string* last = nullptr;
    for (const Row& row : table.rows) {
      if (!row[3].empty() && (last == nullptr || *last != row[3])) line("  " + row[3]);
      last = &row[3];
      std::string record;
      for (std::size_t i = 0; i < 3; ++i)
        if (!row[i].empty()) record += (record.empty() ? "" : " ") + row[i];
      line("    " + (row[4] == "1" ? record : own("LeftOut.Times", {record, row[4]})));
    }
  }

  // Cells: stage, failure, statement.
  void failures(const ReportTable& table) {
    for (const Row& row : table.rows) {
      line("  " + own("Failure.Line", {row[0], row[1]}));
      if (!row[2].empty()) line("    " + oneLine(row[2], 160));
    }
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
  ReportModel model_;
  Messages messages_;
  std::string out_;
};

}  // namespace

std::string runReportText(const RunResult& r) {
  return TextReport(r).text();
}

}  // namespace host
