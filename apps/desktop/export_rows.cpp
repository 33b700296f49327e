#include "export_rows.h"

#include <QFile>
#include <QSaveFile>
#include <QWidget>
#include <stdexcept>

#include "ask.h"
#include "host/report_file.h"
#include "texts.h"

namespace desktop {
namespace {

using host::ReportFormat;

// A table of the report files' model, and nothing around it.
host::ReportModel modelOf(const ExportedRows& rows, const std::string& language) {
  host::ReportModel model;
  model.language = language;
  model.title = utf8(rows.title);
  host::ReportTable table{"rows", model.title, utf8(rows.title.left(31)), {}, {}, {}, {}};
  if (!rows.rows.empty()) {
    for (std::size_t i = 0; i < rows.rows.front().size(); ++i) {
      const bool right = i < rows.alignments.size() && rows.alignments[i] == gljz::Alignment::right;
      table.columns.push_back({rows.rows.front()[i], right    ? host::CellKind::amount
                                                     : i == 0 ? host::CellKind::code
                                                              : host::CellKind::text});
    }
    table.rows.assign(rows.rows.begin() + 1, rows.rows.end());
    for (auto& row : table.rows) row.resize(table.columns.size());
  }
  model.tables.push_back(std::move(table));
  return model;
}

std::string csvCell(const std::string& cell) {
  if (cell.find_first_of(",\"\r\n") == std::string::npos) return cell;
  std::string quoted = "\"";
  for (const char c : cell) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  return quoted + '"';
}

// What a spreadsheet opens: UTF-8 with a byte order mark.
std::string csv(const ExportedRows& rows) {
  std::string text = "\xEF\xBB\xBF";
  for (const auto& row : rows.rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) text += ',';
      text += csvCell(row[i]);
    }
    text += "\r\n";
  }
  return text;
}

[[noreturn]] void cannotWrite(const std::string& file, const std::string& why, const Texts& texts) {
  throw std::runtime_error(utf8(texts("Export.Failed", {file, why})));
}

void writeWhole(const std::string& file, const std::string& text, const Texts& texts) {
  QSaveFile out(shown(file));
  if (!out.open(QIODevice::WriteOnly) || out.write(text.data(), static_cast<qint64>(text.size())) < 0 || !out.commit())
    cannotWrite(file, utf8(out.errorString()), texts);
}

}  // namespace

void exportRows(const std::string& file, const ExportedRows& rows, const Texts& texts) {
  const auto format = host::reportFormat(file);
  // The libraries of these formats write files themselves.
  const auto beside = [&](const auto& write) {
    const std::string part = file + ".part";
    try {
      write(part, modelOf(rows, texts.language()));
    } catch (...) {
      QFile::remove(shown(part));
      throw;
    }
    QFile::remove(shown(file));
    QFile whole(shown(part));
    if (!whole.rename(shown(file))) cannotWrite(file, utf8(whole.errorString()), texts);
  };
  switch (format.value_or(ReportFormat::text)) {
    case ReportFormat::csv:
      return writeWhole(file, csv(rows), texts);
    case ReportFormat::html:
      return writeWhole(file, host::reportHtml(modelOf(rows, texts.language())), texts);
    case ReportFormat::pdf:
      return beside([](const std::string& to, const host::ReportModel& model) { host::writeReportPdf(to, model); });
    case ReportFormat::xlsx:
      return beside([](const std::string& to, const host::ReportModel& model) { host::writeReportXlsx(to, model); });
    case ReportFormat::json:
    case ReportFormat::text:
      break;
  }
  throw std::runtime_error(utf8(texts("Export.Ending", {file, ".csv, .html, .pdf, .xlsx"})));
}

QString exportFilters() {
  QString filters = "CSV (*.csv);;HTML (*.html)";
  if (host::canWrite(ReportFormat::pdf)) filters += ";;PDF (*.pdf)";
  if (host::canWrite(ReportFormat::xlsx)) filters += ";;Excel (*.xlsx)";
  return filters;
}

void askAndExport(QWidget* parent, const Texts& texts, const ExportedRows& rows) {
  const std::string file = ask().saveFile(parent, texts("Export"), rows.fileName + ".csv", exportFilters());
  if (file.empty()) return;
  try {
    exportRows(file, rows, texts);
  } catch (const std::exception& e) {
    ask().complain(parent, texts("Export"), shown(e.what()));
  }
}

}  // namespace desktop
