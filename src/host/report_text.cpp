// The report as lines of text. The outcome comes last: that is what a terminal shows when the rest has scrolled away.

#include <algorithm>
#include <cstdio>
#include <utility>

#include "host/amount_text.h"
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
      if (table.headings < table.columns.size())
        underHeadings(table);
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

  static std::string shown(const ReportTable& table, const Row& row, std::size_t column) {
    return isNumber(table.columns[column].kind) ? grouped(row[column]) : row[column];
  }

  void grid(const ReportTable& table) {
    std::vector<std::size_t> widths;
    for (const ReportColumn& c : table.columns) widths.push_back(displayWidth(c.title));
    for (const Row& row : table.rows)
      for (std::size_t i = 0; i < widths.size(); ++i)
        widths[i] = std::max(widths[i], displayWidth(shown(table, row, i)));
    const auto gridLine = [&](const auto& cell) {
      std::string text;
      for (std::size_t i = 0; i < widths.size(); ++i)
        text += "  " + paddedToWidth(cell(i), widths[i], isNumber(table.columns[i].kind));
      text.resize(text.find_last_not_of(' ') + 1);
      line(text);
    };
    gridLine([&](std::size_t i) -> const std::string& { return table.columns[i].title; });
    for (const Row& row : table.rows) gridLine([&](std::size_t i) { return shown(table, row, i); });
  }

  // Cells: kind, code, name, reason, times, and perhaps a balance.
  void underHeadings(const ReportTable& table) {
    constexpr std::size_t times = 4, balance = 5;
    const std::string* last = nullptr;
    for (const Row& row : table.rows) {
      const std::string& heading = row[table.headings];
      if (!heading.empty() && (last == nullptr || *last != heading)) line("  " + heading);
      last = &heading;
      std::string record;
      for (std::size_t i = 0; i < table.headings; ++i)
        if (!row[i].empty()) record += (record.empty() ? "" : " ") + row[i];
      if (row[times] != "1") record = own("LeftOut.Times", {record, row[times]});
      if (row.size() > balance && !row[balance].empty())
        record = own("Failure.Line", {record, shown(table, row, balance)});
      line("    " + record);
    }
  }

  // Cells: stage, failure, statement.
  void failures(const ReportTable& table) {
    for (const Row& row : table.rows) {
      line("  " + own("Failure.Line", {row[0], row[1]}));
      if (!row[2].empty()) line("    " + oneLine(row[2], 160));
    }
  }

  void outcome() {
    const RunResult& r = result_;
    heading(model_.grade == Grade::attention ? own("Outcome.NotWholly") : model_.headline);
    for (const std::string& sentence : model_.sentences) line(sentence);
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
