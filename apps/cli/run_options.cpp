#include "run_options.h"

#include <cstdio>
#include <iostream>

#include "dialog_prompt.h"
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

enum class ReportKind { json, text };
ReportKind reportKind(const std::string& path) {
  const std::string lower = platform::toLowerAscii(path);
  if (lower.ends_with(".json")) return ReportKind::json;
  if (lower.ends_with(".txt")) return ReportKind::text;
  throw UsageError("--report \"" + path + "\": the file name ends in neither .json nor .txt");
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
    reportKind(*path);
    OutputFile{*path};
  }
}

int runAndReport(const Arguments& a, host::CarryForwardOptions forward, Dialogs dialogs) {
  fill(a, forward);
  const bool json = a.oneOf("--format", {"text", "json"}) == "json";
  std::optional<OutputFile> report;
  ReportKind kind = ReportKind::text;
  if (const auto path = a.text("--report")) {
    kind = reportKind(*path);
    report.emplace(*path);
  }
  const auto progress = makeProgress(a.has("--quiet"));
  forward.progress = progress.get();
  DialogPrompt prompt(std::cin, std::cerr);
  if (dialogs == Dialogs::asked && !forward.parameters && !forward.choices.any() && !a.has("--quiet") &&
      inputIsTerminal() && errorIsTerminal())
    forward.dialogs = &prompt;

  const host::RunResult result = host::carryForward(forward);
  if (json)
    std::fputs(host::runReportJson(result).c_str(), stdout);
  else if (!a.has("--quiet"))
    std::fputs(host::runReportText(result).c_str(), stdout);
  std::fflush(stdout);
  if (report) report->write(kind == ReportKind::json ? host::runReportJson(result) : host::runReportText(result));
  return host::exitCode(result);
}

}  // namespace cli
