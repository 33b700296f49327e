// The report as CSV (RFC 4180, UTF-8 with the mark that spreadsheets look for): one file of all tables, a row's first
// cell names its section. A section begins with its titles. Cells are the report's own texts, untouched: a spreadsheet
// that is to keep leading zeros gets the .xlsx.

#include "host/report_file.h"

namespace host {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

void cell(std::string& out, std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += c;
    out += c;
  }
  out += '"';
}

void line(std::string& out, std::string_view section, const std::vector<std::string>& cells) {
  cell(out, section);
  for (const std::string& text : cells) {
    out += ',';
    cell(out, text);
  }
  out += "\r\n";
}

}  // namespace

std::string reportCsv(const ReportModel& model) {
  std::string out(byteOrderMark);
  line(out, "outcome", {model.title});
  line(out, "outcome", {model.headline});
  for (const std::string& sentence : model.sentences) line(out, "outcome", {sentence});
  for (const ReportFact& fact : model.facts) line(out, "outcome", {fact.label, fact.value});
  for (const ReportFigure& figure : model.figures) line(out, "outcome", {figure.label, figure.value});
  for (const ReportTable& table : model.tables) {
    std::vector<std::string> titles;
    for (const ReportColumn& column : table.columns) titles.push_back(column.title);
    line(out, table.id, titles);
    for (const auto& row : table.rows) line(out, table.id, row);
  }
  return out;
}

}  // namespace host
