#include "run_options.h"

#include <cstdio>
#include <exception>
#include <iostream>

#include "dialog_prompt.h"
#include "host/report_file.h"
#include "host/run_report.h"
#include "host/usage_error.h"
#include "platform/value.h"
#include "progress.h"
#include "terminal.h"

namespace cli {
namespace {

using host::UsageError;

std::pair<std::string, bool> parseCheck(const std::string& text) {
  const std::size_t equals = text.rfind('=');
  const std::string value = equals == std::string::npos ? "" : text.substr(equals + 1);
  const bool isTrue = platform::equalsIgnoreCase(value, "True");
  if (equals == 0 || equals == std::string::npos || (!isTrue && !platform::equalsIgnoreCase(value, "False")))
    throw UsageError("--check \"" + text + "\": KEY=True or KEY=False is expected");
  return {text.substr(0, equals), isTrue};
}

std::optional<host::AccountChoice> accountChoice(const Arguments& a, const char* option) {
  const auto text = a.text(option);
  if (!text) return std::nullopt;
  return host::AccountChoice::parse(option, *text);
}

host::ReportFormat reportFormat(const std::string& path) {
  const auto format = host::reportFormat(path);
  if (!format)
    throw UsageError("--report \"" + path + "\": the file name has to end in one of " +
                     std::string(host::reportEndings()));
  if (!host::canWrite(*format))
    throw UsageError("--report \"" + path + "\": this program was built without that format");
  return *format;
}

std::string printFile(const Arguments& a, const char* option) {
  if (!a.has(option)) return {};
  const std::string path = a.required(option);
  if (!host::PagePrint::canPrint(path))
    throw UsageError(std::string(option) + " \"" + path + "\": the file name has to end in one of " +
                     std::string(host::PagePrint::endings()));
  requireWritable(path);
  return path;
}

void fill(const Arguments& a, host::CarryForwardOptions& forward) {
  if (const auto path = a.text("--params")) {
    for (const char* other : {"--check", "--customer-detail", "--supplier-detail", "--clear"})
      if (a.has(other)) throw UsageError("--params and " + std::string(other) + " exclude each other");
    forward.parameters = readFile(*path);
    if (forward.parameters->empty()) throw UsageError("--params: file " + *path + " is empty");
  }
  for (const std::string& check : a.all("--check")) forward.choices.checks.push_back(parseCheck(check));
  forward.choices.customerDetail = accountChoice(a, "--customer-detail");
  forward.choices.supplierDetail = accountChoice(a, "--supplier-detail");
  forward.choices.clear = accountChoice(a, "--clear");
  forward.language = a.oneOf("--language", {"zh-CN", "zh-TW", "en-US"});
  forward.operatorName = a.text("--operator", "gljz");
  forward.subsystemGF = a.oneOf("--subsystem", {"GL", "GF"}) == "GF";
  forward.today = a.date("--today");
  if (a.has("--trace")) forward.traceFile = a.required("--trace");
  forward.print.report = printFile(a, "--print");
  forward.print.leftOut = printFile(a, "--print-left-out");
  if (!forward.print.report.empty() && forward.print.report == forward.print.leftOut)
    throw UsageError("--print and --print-left-out name the same file");
}

// The result has been told; a file beside it that could not be written is told too, and changes no exit code.
void complain(const std::string& what) {
  std::fprintf(stderr, "gljz: %s\n", what.c_str());
}

void tellPrints(const host::PrintWishes& wishes, const host::RunResult& result) {
  for (const host::PrintOutcome& print : result.prints) {
    if (!print.failure.empty()) complain("print into " + print.file + ": " + print.failure);
    if (print.unknownCharacters > 0)
      complain("print into " + print.file + ": no font is installed for " + std::to_string(print.unknownCharacters) +
               " characters");
  }
  const auto missing = [&](const std::string& file, const char* why) {
    if (file.empty()) return;
    for (const host::PrintOutcome& print : result.prints)
      if (print.file == file) return;
    complain("nothing was printed into " + file + ": " + why);
  };
  const char* noReport = "the run ended before its report";
  missing(wishes.report, noReport);
  missing(wishes.leftOut, result.report ? "no record was left out" : noReport);
}

}  // namespace

std::vector<Option> withRunOptions(std::vector<Option> options) {
  const Option shared[] = {
      {"--params"},
      {"--check", OptionKind::repeated},
      {"--language"},
      {"--customer-detail"},
      {"--operator"},
      {"--supplier-detail"},
      {"--today"},
      {"--clear"},
      {"--trace"},
      {"--subsystem"},
      {"--report"},
      {"--print"},
      {"--print-left-out"},
      {"--format"},
      {"--quiet", OptionKind::flag},
  };
  options.insert(options.end(), std::begin(shared), std::end(shared));
  return options;
}

void checkRunOptions(const Arguments& a) {
  host::CarryForwardOptions forward;
  fill(a, forward);
  a.oneOf("--format", {"text", "json"});
  if (const auto path = a.text("--report")) {
    reportFormat(*path);
    requireWritable(*path);
  }
}

int runAndReport(const Arguments& a, host::CarryForwardOptions forward, Dialogs dialogs) {
  fill(a, forward);
  const bool json = a.oneOf("--format", {"text", "json"}) == "json";
  const auto report = a.text("--report");
  const auto format = report ? reportFormat(*report) : host::ReportFormat::text;
  if (report) requireWritable(*report);
  const auto progress = makeProgress(a.has("--quiet"), forward.language);
  forward.progress = progress.get();
  DialogPrompt prompt(std::cin, std::cerr, forward.language);
  if (dialogs == Dialogs::asked && !forward.parameters && !forward.choices.any() && !a.has("--quiet") &&
      inputIsTerminal() && errorIsTerminal())
    forward.dialogs = &prompt;

  const host::RunResult result = host::carryForward(forward);
  prompt.endIfInterrupted();
  if (json)
    std::fputs(host::runReportJson(result).c_str(), stdout);
  else if (!a.has("--quiet"))
    std::fputs(host::runReportText(result).c_str(), stdout);
  std::fflush(stdout);
  if (report) try {
      host::writeReport(*report, format, result);
    } catch (const std::exception& e) {
      complain(e.what());
    }
  tellPrints(forward.print, result);
  return host::exitCode(result);
}

}  // namespace cli
