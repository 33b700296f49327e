#pragma once
// Report files: which format a file name asks for, and the writing of it.
//
//   const auto format = reportFormat("run.html");      // nullopt for an unknown ending
//   writeReport("run.html", *format, result);

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/report_model.h"

namespace host {

enum class ReportFormat { html, pdf, xlsx, csv, json, text };

// By the ending, without regard to case.
std::optional<ReportFormat> reportFormat(std::string_view fileName);
std::string_view reportEndings();  // ".html, .pdf, .xlsx, .csv, .json, .txt"

// Formats of libraries that a build may do without.
bool canWrite(ReportFormat format);

// std::runtime_error that names the file and the reason when it cannot be written. What stood there before is then
// gone or still there, never half of either.
void writeReport(const std::string& fileName, ReportFormat format, const RunResult& result);

// The formats. Text is UTF-8.
std::string reportHtml(const ReportModel& model);  // one page that needs nothing beside it
std::string reportCsv(const ReportModel& model);
bool canMakeWorkbooks();
void writeReportXlsx(const std::string& fileName, const ReportModel& model);
void writeReportPdf(const std::string& fileName, const ReportModel& model);

}  // namespace host
