#pragma once
// The result of a run that gives every part of a report something to say.

#include <cstdio>
#include <string>

#include "host/carry_forward.h"
#include "host/report_file.h"
#include "host/report_model.h"

namespace host::test {

inline RunResult sampleRun(const std::string& language = "en-US") {
  RunResult r;
  r.language = language;
  r.account = "001", r.company = "Greenstone & <Sons>", r.closingYear = 2005, r.newYear = 2006;
  r.operatorName = "zhao", r.day = "2006-01-10";
  r.returned = r.success = r.transactionBegun = true;
  r.errMsg = "E1";
  r.report = ClosingReport{"2",
                           "1",
                           {{"0101", "现金", "现金", "", "借", "1234567.80", " ", "", "", "", "Y"},
                            {"1002", "Bank", "Bank", "", "借", "900.00", "59000.00", "USD", "", "", "Y"},
                            {"1131", "Due", "Due", "Customers", "贷", "100.00", " ", "", "12.5", "kg", "X"},
                            {"", "", "", "Sum", "借", "90.00", " ", "", "", "", ""}}};
  r.notCarried = {{"K", "1901", "Rent", "reason one"},
                  {"K", "1151", "Paid", "reason two"},
                  {"K", "1901", "Rent", "reason one"},
                  {"C", "0006", "=1+1", "reason one"}};
  r.tables = {{"gl_accsum", 53, 444, 180, 12}, {"code", 0, 0, 6, 0}, {"Customer", 12, 0, 0, 0}};
  r.stages = {{"run--checks", 24, 21, 0, 3.2}, {"run--totals", 8, 53, 626, 19.4}};
  r.failures = {{"run--totals", "exec\nsomething </script> & \"more\"", "the stage ended early"}};
  r.notes = {"component Some.Thing is not installed"};
  r.statements = 425, r.seconds = 1.5;
  return r;
}

// The same with so many accounts, every hundredth wrong.
inline RunResult sampleRunOf(std::size_t accounts, const std::string& language = "en-US") {
  RunResult r = sampleRun(language);
  r.report->rows.clear();
  std::size_t wrong = 0;
  for (std::size_t i = 0; i < accounts; ++i) {
    char code[32];
    std::snprintf(code, sizeof code, "%08zu", i + 1);
    const bool bad = i % 100 == 50;
    wrong += bad ? 1 : 0;
    r.report->rows.push_back({code, "Account " + std::to_string(i), "Account", "", "借", std::to_string(i) + ".25", " ",
                              "", "", "", bad ? "X" : "Y"});
  }
  r.report->wrong = std::to_string(wrong);
  r.report->right = std::to_string(accounts - wrong);
  return r;
}

inline std::string page(const RunResult& result) {
  return reportHtml(reportModel(result));
}

}  // namespace host::test
