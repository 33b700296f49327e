#include "host/report_file.h"

#include <array>
#include <fstream>
#include <stdexcept>

#include "host/print/page_canvas.h"
#include "host/run_report.h"
#include "host/utf8_path.h"
#include "host/whole_file.h"
#include "platform/value.h"

namespace host {
namespace {

constexpr std::array<std::pair<std::string_view, ReportFormat>, 6> endings = {{{".html", ReportFormat::html},
                                                                               {".pdf", ReportFormat::pdf},
                                                                               {".xlsx", ReportFormat::xlsx},
                                                                               {".csv", ReportFormat::csv},
                                                                               {".json", ReportFormat::json},
                                                                               {".txt", ReportFormat::text}}};

void writeText(const std::string& file, const std::string& text) {
  std::ofstream out(pathOf(file), std::ios::binary | std::ios::trunc);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.close();
  if (!out) throw std::runtime_error("file " + file + " cannot be written");
}

void writeTo(const std::string& file, ReportFormat format, const RunResult& result) {
  switch (format) {
    case ReportFormat::html:
      return writeText(file, reportHtml(reportModel(result)));
    case ReportFormat::pdf:
      return writeReportPdf(file, reportModel(result));
    case ReportFormat::xlsx:
      return writeReportXlsx(file, reportModel(result));
    case ReportFormat::csv:
      return writeText(file, reportCsv(reportModel(result)));
    case ReportFormat::json:
      return writeText(file, runReportJson(result));
    case ReportFormat::text:
      return writeText(file, runReportText(result));
  }
}

}  // namespace

std::optional<ReportFormat> reportFormat(std::string_view fileName) {
  const std::string lower = platform::toLowerAscii(std::string(fileName));
  for (const auto& [ending, format] : endings)
    if (lower.ends_with(ending)) return format;
  return std::nullopt;
}

std::string_view reportEndings() {
  return ".html, .pdf, .xlsx, .csv, .json, .txt";
}

bool canWrite(ReportFormat format) {
  if (format == ReportFormat::pdf) return canMakePdf();
  if (format == ReportFormat::xlsx) return canMakeWorkbooks();
  return true;
}

void writeReport(const std::string& fileName, ReportFormat format, const RunResult& result) {
  try {
    writeWhole(fileName, [&](const std::string& path) { writeTo(path, format, result); });
  } catch (const std::exception& e) {
    throw std::runtime_error("report file " + fileName + ": " + e.what());
  }
}

}  // namespace host
