#include "host/run_report.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <tuple>

#include "host/journal_texts.h"
#include "host/messages.h"
#include "host/report_model.h"
#include "host/text_count.h"

namespace host {
namespace {

using test::count;

// A run that gives every part of the report something to say.
RunResult fullRun(const std::string& language) {
  RunResult r;
  r.language = language;
  r.returned = r.success = r.transactionBegun = true;
  r.errMsg = "E1", r.message = "M1";
  r.report = ClosingReport{"50", "2", {{"1001", "Cash", "Cash", "", "D", "23070.00", "", "", "", "", "Y"}}};
  r.notCarried = {{"K", "1901", "Rent", "reason one"},
                  {"K", "1151", "Paid", "reason two"},
                  {"K", "1901", "Rent", "reason one"},
                  {"C", "C006", "", "reason one"}};
  r.tables = {{"gl_accsum", 53, 1624, 0, 0}, {"code", 0, 0, 6, 0}, {"Customer", 12, 0, 0, 0}, {"gl_mend", 0, 0, 0, 7}};
  r.stages = {{"run--totals", 8, 53, 626, 19.4}};
  r.failures = {{"run--totals", "exec\nsomething", "the stage ended early"}};
  r.notes = {"component Some.Thing is not installed", "a text of the system"};
  r.statements = 425, r.seconds = 1.5;
  return r;
}

bool hasLine(const std::string& text, const std::string& pattern) {
  return std::regex_search(text, std::regex("(^|\n) *" + pattern + "(\n|$)"));
}

TEST(RunReportTest, SpeaksEachLanguageWithoutAKeyLeft) {
  std::string other;
  for (const std::string& language : Messages::languages()) {
    RunResult stopped = fullRun(language);
    stopped.success = false, stopped.stop = Stop{"checks", "no styles"};
    RunResult failed = fullRun(language);
    failed.uncaught = "overflow";
    RunResult refused = fullRun(language);
    refused.returned = false;
    RunResult clean = fullRun(language);
    clean.failures.clear(), clean.report.reset();
    RunResult empty;
    empty.language = language;
    for (const RunResult& r : {fullRun(language), stopped, failed, refused, clean, empty}) {
      const std::string text = runReportText(r);
      EXPECT_EQ(text.find("Gljz.Host"), std::string::npos) << text;
      EXPECT_EQ(text.find("Orvo."), std::string::npos) << text;
      for (const auto& t : r.tables)
        EXPECT_EQ(text.find("  " + t.name) != std::string::npos, t.written() > 0 || t.deleted > 0) << text;
    }
    EXPECT_NE(runReportText(fullRun(language)), other);
    other = runReportText(fullRun(language));
  }
}

TEST(RunReportTest, ALineOfATableHasReadNewChangedAndRemoved) {
  const std::string text = runReportText(fullRun("en-US"));
  EXPECT_TRUE(hasLine(text, "Table +Name +Rows read +New +Changed +Removed")) << text;
  EXPECT_TRUE(hasLine(text, "gl_accsum +Account totals +53 +1,624 +0 +0")) << text;
  EXPECT_TRUE(hasLine(text, "code +Chart of accounts +- +0 +6 +0")) << text;
  EXPECT_TRUE(hasLine(text, "gl_mend +State of the periods +- +0 +0 +7")) << text;
}

TEST(RunReportTest, WhatWasLeftOutStandsUnderItsReason) {
  const std::string text = runReportText(fullRun("en-US"));
  EXPECT_NE(text.find("Records that were not carried, with the reason (4)\n"
                      "  reason one\n    K 1901 Rent (2 times)\n    C C006\n"
                      "  reason two\n    K 1151 Paid\n"),
            std::string::npos)
      << text;
}

TEST(RunReportTest, PartnersOutOfBalanceStandInATable) {
  RunResult r = fullRun("en-US");
  r.notCarried = {{"1131", "Receivables", "C001", "CNY", "10.00", "7.00"}};
  const std::string text = runReportText(r);
  EXPECT_TRUE(hasLine(text, "Account +Account name +Partner +Currency +Debit total +Credit total")) << text;
  EXPECT_TRUE(hasLine(text, "1131 +Receivables +C001 +CNY +10.00 +7.00")) << text;
}

TEST(RunReportTest, TheOutcomeComesLast) {
  const std::string text = runReportText(fullRun("zh-CN"));
  const std::string last =
      "\n结转完成，但有遗留问题：请查看以上所列内容。\n期初余额与辅助账合计不一致的科目数：2，核对栏标为“X”。\n"
      "未结转的记录数：4，原因见列表。\n结转中跳过的错误数：1，出错环节当时尚未写入的数据缺失。\n提示：E1\n提示：M1\n"
      "共执行 425 条语句，用时 1.50 秒。\n";
  EXPECT_TRUE(text.ends_with(last)) << text;
  EXPECT_EQ(count(text, "  totals：该环节提前结束\n    exec something\n"), 1u) << text;
}

// A stop's reason and the message of the entry are one text.
TEST(RunReportTest, AStopsReasonIsToldOnce) {
  RunResult r = fullRun("en-US");
  r.returned = r.success = false;
  r.errMsg = r.message = "no chart", r.stop = Stop{"checks", "no chart"};
  EXPECT_EQ(count(runReportText(r), "no chart"), 1u) << runReportText(r);
}

TEST(RunReportTest, APersonWhoLeftTheConditionsIsToldSo) {
  RunResult r;
  r.conditionsLeft = true;
  r.errMsg = r.message = "Object variable or With block variable not set", r.stop = Stop{"接口函数", r.errMsg};
  for (const auto& [language, headline] : {std::pair("zh-CN", "您退出了结转条件，没有结转任何数据。"),
                                           {"zh-TW", "您退出了結轉條件，沒有結轉任何資料。"},
                                           {"en-US", "You left the conditions; nothing was carried."}}) {
    r.language = language;
    const ReportModel model = reportModel(r);
    EXPECT_EQ(model.headline, headline);
    EXPECT_EQ(model.grade, Grade::stopped);
    const std::string text = runReportText(r);
    EXPECT_NE(text.find(std::string("\n") + headline + "\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Object variable"), std::string::npos) << text;
  }
  const std::string json = runReportJson(r);
  EXPECT_NE(json.find("\"message\": \"Object variable or With block variable not set\""), std::string::npos) << json;
  EXPECT_NE(json.find("\"conditionsLeft\": true"), std::string::npos) << json;
  EXPECT_EQ(exitCode(r), 1);
}

TEST(RunReportTest, StagesAreNamedInTheLanguage) {
  const auto stages = [](const std::string& language) {
    RunResult r = fullRun(language);
    r.stages = {
        {"结转函数--结转未核销银行账 ", 1, 0, 0, 0}, {"Settings tables", 1, 0, 0, 0}, {"f--某一环节", 1, 0, 0, 0}};
    r.failures = {{"结转函数--结转未核销银行账 ", "", "no"}};
    r.returned = r.success = false, r.stop = Stop{"结转函数--条件判断", "w"};
    return runReportText(r);
  };
  for (const auto& [language, bank, settings, stop] :
       {std::tuple("en-US", "Unreconciled bank ledger", "Settings tables", "Stopped at: Checks\n"),
        {"zh-TW", "結轉未沖銷銀行帳", "設定表", "條件判斷\n"},
        {"zh-CN", "结转未核销银行账", "设置表", "条件判断\n"}}) {
    const std::string text = stages(language);
    EXPECT_TRUE(hasLine(text, std::string(bank) + " +1 +0 +0 +0")) << text;
    EXPECT_TRUE(hasLine(text, std::string(settings) + " +1 +0 +0 +0")) << text;
    EXPECT_TRUE(hasLine(text, "某一环节 +1 +0 +0 +0")) << text;
    EXPECT_NE(text.find(std::string("  ") + bank), std::string::npos) << text;
    EXPECT_NE(text.find(stop), std::string::npos) << text;
  }
  RunResult r = fullRun("en-US");
  r.failures = {{"结转函数--结转未核销银行账 ", "", "no"}};
  EXPECT_NE(runReportJson(r).find("\"stage\": \"结转函数--结转未核销银行账 \""), std::string::npos);
}

TEST(RunReportTest, OnlyTheTextForAPersonIsTranslated) {
  RunResult r = fullRun("zh-CN");
  EXPECT_NE(runReportText(r).find("  组件 Some.Thing 没有安装\n  a text of the system\n"), std::string::npos);
  EXPECT_NE(runReportJson(r).find("\"component Some.Thing is not installed\""), std::string::npos);
  EXPECT_NE(runReportJson(r).find("\"tables\": {\"gl_accsum\": 1624, \"code\": 6, \"gl_mend\": 0}"), std::string::npos);
}

TEST(JournalTextsTest, TranslatesItsOwnTextsAndNoOthers) {
  const Messages chinese("zh-CN");
  const JournalTexts texts(chinese);
  EXPECT_EQ(
      texts.translated("automatic clearing: 12 open lines of suppliers cancel exactly and were marked as cleared"),
      "自动核销：供应商往来有 12 条未核销明细完全相抵，已标为已核销");
  EXPECT_EQ(texts.translated("the open transaction could not be undone: it is gone {0}"),
            "未结束的事务没有能够撤销：it is gone {0}");
  for (const char* foreign : {"", "component X", "component X is not installed yet", "结转完成"})
    EXPECT_EQ(texts.translated(foreign), foreign);
  const Messages english("en-US");
  for (const auto& [key, text] : english.all())
    if (key.starts_with("Gljz.Host.Note.")) {
      EXPECT_NE(texts.translated(text), text) << key;
    }
}

}  // namespace
}  // namespace host
