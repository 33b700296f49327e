// The command line from end to end.
#include <gtest/gtest.h>

#include <map>
#include <regex>

#include "host/program.h"

namespace host::test {
namespace {

class CliTest : public ::testing::Test {
protected:
  std::string server() const { return "embedded:" + folder_.text(); }
  Answer sql(const std::string& database, const std::string& text, const std::string& format = "json") const {
    std::vector<std::string> words{"sql", "--server", server(), "-q", text, "--format", format};
    if (!database.empty()) words.insert(words.end(), {"--database", database});
    return gljz(words);
  }
  // First value of the first row.
  std::string value(const std::string& database, const std::string& text) const {
    const Answer a = sql(database, text, "csv");
    EXPECT_EQ(a.code, 0) << text << "\n" << a.err;
    const std::size_t at = a.out.find('\n');
    const std::string line = at == std::string::npos ? "" : a.out.substr(at + 1);
    return line.substr(0, line.find('\n'));
  }
  Answer transfer(std::vector<std::string> more = {}) const {
    std::vector<std::string> words{"transfer", "--server", server(), "--account", "001",
                                   "--from",   "2005",     "--to",   "2006"};
    words.insert(words.end(), more.begin(), more.end());
    return gljz(words);
  }
  TemporaryFolder folder_;
};

TEST_F(CliTest, SqlWritesJsonWithAllDigitsAndAllColumns) {
  ASSERT_EQ(sql("", "create database d").code, 0);
  const Answer a = sql("d",
                       "create table t(m money, b bit, f float, d datetime, n nvarchar(9), x decimal(20,3))\nGO\n"
                       "insert into t values(922337203685477.5807, 1, 0.1, '2005-01-02 03:04:05', N'中\"', "
                       "12345678901234567.125)\nGO\n"
                       "insert into t values(null, null, null, null, null, null)\nGO\n"
                       "select m, b, f, d, n, x, 1, 2 as m from t order by f desc");
  EXPECT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(
      a.out,
      "[\n {\"m\": 922337203685477.5807, \"b\": 1, \"f\": 0.1, \"d\": \"2005-01-02 03:04:05\", \"n\": \"中\\\"\", "
      "\"x\": 12345678901234567.125, \"\": 1, \"m\": 2},\n"
      " {\"m\": null, \"b\": null, \"f\": null, \"d\": null, \"n\": null, \"x\": null, \"\": 1, \"m\": 2}\n]\n");
}

TEST_F(CliTest, SqlGoesOnBehindAFailedBatch) {
  ASSERT_EQ(sql("", "create database d").code, 0);
  const Answer a = sql("d", "select 1 as a\nGO\nselect * from missing\ngo\nselect 2 as a where 1=0");
  EXPECT_EQ(a.code, 1);
  EXPECT_EQ(a.out, "[\n {\"a\": 1}\n]\n[]\n");
  EXPECT_EQ(a.line(), "Msg 208: Invalid object name 'missing'.");
}

TEST_F(CliTest, SqlKeepsOneSessionOverItsBatches) {
  ASSERT_EQ(sql("", "create database d").code, 0);
  const Answer a = gljz({"sql", "--server", server(), "--database", "d", "-f", "-", "--format", "csv"},
                        "create table #t(a int, b nvarchar(5))\nGO\ninsert into #t values(1, N'x,\"y')\nGO\n"
                        "insert into #t values(null, N'')\nGO\nselect a, b from #t order by a desc\n");
  EXPECT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(csv(a), "a,b\n1,\"x,\"\"y\"\n,\"\"\n");
}

TEST_F(CliTest, SqlTablesKnowTheWidthOfChineseCharacters) {
  const Answer a = sql("", "select N'结转' as a, 1.5 as n union all select N'x', 20", "table");
  if (a.code != 0) GTEST_SKIP() << a.err;
  EXPECT_EQ(a.out,
            "a       n\n"
            "----  ---\n"
            "结转  1.5\n"
            "x      20\n"
            "(2 rows)\n");
}

TEST_F(CliTest, AccountCreateMakesTheServerAndRegistersTheYears) {
  const std::string place = "embedded:" + folder_.file("new");
  const Answer a = gljz({"account", "create", "--server", place, "--account", "001", "--year", "2005", "--through",
                         "2006", "--name", "青石"});
  ASSERT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(a.out, "account 001: database TqData_001_2005\n");
  const Answer rows = gljz({"sql", "--server", place, "--database", "TqSystem", "--format", "csv", "-q",
                            "select cAcc_Id, iBeginYear, iEndYear, cDatabase from UA_AccountDatabase"});
  EXPECT_EQ(csv(rows), "cAcc_Id,iBeginYear,iEndYear,cDatabase\n001,2005,2006,TqData_001_2005\n");
}

TEST_F(CliTest, OpenYearCopiesChartAndReferencesIntoTheNextDatabase) {
  ASSERT_EQ(gljz({"account", "create", "--server", server(), "--account", "001", "--year", "2005"}).code, 0);
  ASSERT_EQ(sql("TqData_001_2005",
                "insert into code(iyear, ccode, ccode_name, bd_c) values(2005, N'1001', N'现金', 1)\n"
                "insert into Department(cDepCode, cDepName) values(N'01', N'财务')\n"
                "select * into fitemss55 from fitemss98\ninsert into fitemss55(citemcode, bclose) values(N'7', 0)")
                .code,
            0);
  const Answer a = gljz({"account", "open-year", "--server", server(), "--account", "001"});
  ASSERT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(a.out, "account 001: year 2006 in database TqData_001_2006\n");
  EXPECT_EQ(value("TqData_001_2006", "select ccode from code where iyear=2006"), "1001");
  EXPECT_EQ(value("TqData_001_2006", "select cDepName from Department"), "财务");
  EXPECT_EQ(value("TqData_001_2006", "select citemcode from fitemss55"), "7");
  EXPECT_EQ(value("TqData_001_2006", "select count(*) as n from gl_mend where iyear=2006 and bflag=0"), "12");
  EXPECT_EQ(value("TqSystem", "select cDatabase from UA_AccountDatabase where iBeginYear=2006"), "TqData_001_2006");
}

TEST_F(CliTest, OpenYearInsideASpanStaysInTheDatabase) {
  ASSERT_EQ(
      gljz({"account", "create", "--server", server(), "--account", "001", "--year", "2005", "--through", "2006"}).code,
      0);
  sql("TqData_001_2005", "insert into code(iyear, ccode, ccode_name, bd_c) values(2005, N'1001', N'现金', 1)");
  const Answer a = gljz({"account", "open-year", "--server", server(), "--account", "001", "--year", "2006"});
  ASSERT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(a.out, "account 001: year 2006 in database TqData_001_2005\n");
  EXPECT_EQ(value("TqData_001_2005", "select count(*) as n from code"), "2");
  EXPECT_EQ(value("TqData_001_2005", "select count(*) as n from gl_yearstate"), "2");
}

TEST_F(CliTest, CloseYearClosesPeriodTwelve) {
  ASSERT_EQ(gljz({"account", "create", "--server", server(), "--account", "001", "--year", "2005"}).code, 0);
  EXPECT_EQ(value("TqData_001_2005", "select bflag from gl_mend where iyear=2005 and iperiod=12"), "0");
  const Answer a = gljz({"account", "close-year", "--server", server(), "--account", "001", "--year", "2005"});
  ASSERT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(value("TqData_001_2005", "select bflag from gl_mend where iyear=2005 and iperiod=12"), "1");
}

class GeneratedTest : public CliTest {
protected:
  void SetUp() override {
    const Answer a = gljz({"generate", "--server", server(), "--account", "001", "--from", "2005", "--to", "2006",
                           "--accounts", "120", "--items", "40", "--bank", "20", "--seed", "3"});
    ASSERT_EQ(a.code, 0) << a.err;
  }
};

TEST_F(GeneratedTest, TheSameSeedGivesTheSameRows) {
  const std::string query = "select ccode, me, me_f, ne_s, cendd_c from gl_accsum order by i_id";
  const Answer first = sql("TqData_001_2005", query);
  ASSERT_EQ(gljz({"generate", "--server", server(), "--account", "002", "--from", "2005", "--to", "2006", "--accounts",
                  "120", "--items", "40", "--bank", "20", "--seed", "3"})
                .code,
            0);
  EXPECT_EQ(sql("TqData_002_2005", query).out, first.out);
  EXPECT_GT(first.out.size(), 1000u);
}

TEST_F(GeneratedTest, BothYearsHaveTheChartAndTheClosingYearIsClosed) {
  EXPECT_EQ(value("TqData_001_2005", "select count(*) as n from code where iyear=2005"), "120");
  EXPECT_EQ(value("TqData_001_2006", "select count(*) as n from code where iyear=2006"), "120");
  EXPECT_EQ(value("TqData_001_2005", "select bflag from gl_mend where iyear=2005 and iperiod=12"), "1");
}

TEST_F(GeneratedTest, ARunIsOneJsonObjectAndNothingElse) {
  const Answer a = transfer({"--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 0) << a.out << a.err;
  EXPECT_EQ(a.err, "");
  EXPECT_TRUE(a.out.starts_with("{\"returned\": true, \"success\": true, \"message\": \"\", \"errMsg\": \"")) << a.out;
  for (const char* name :
       {"parameters", "stop", "steps", "report", "notCarried", "tables", "failures", "notes", "seconds"})
    EXPECT_NE(a.out.find("\"" + std::string(name) + "\": "), std::string::npos) << name;
  EXPECT_NE(a.out.find("\"stop\": null"), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("\"failures\": []"), std::string::npos) << a.out;
}

TEST_F(GeneratedTest, AFinishedRunIsMarkedAndUnloaded) {
  ASSERT_EQ(transfer({"--today", "2006-01-05", "--quiet"}).code, 0);
  EXPECT_EQ(value("TqSystem", "select cSysID, iNumber, iYear, dTime from UA_Mark"), "GL,205,2005,2006-01-05");
  EXPECT_EQ(value("TqData_001_2006", "select iIsUnload from gl_yearstate where iyear=2006"), "1");
}

TEST_F(GeneratedTest, AnOpenClosingYearIsAFalseReturn) {
  sql("TqData_001_2005", "update gl_mend set bflag=0");
  const Answer a = transfer({"--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 1);
  EXPECT_NE(a.out.find("\"returned\": false, \"success\": false"), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("\"stop\": {\"where\": \"结转函数--条件判断\""), std::string::npos) << a.out;
}

TEST_F(GeneratedTest, ASilentStopIsToldWithItsReason) {
  sql("TqData_001_2006", "delete from settlestyle");
  const Answer a = transfer({"--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 3);
  EXPECT_NE(a.out.find("\"returned\": true, \"success\": false, \"message\": \"\""), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("结算方式"), std::string::npos) << a.out;
  const Answer forced = transfer({"--check", "GL*BalTypeIsNull=True", "--quiet"});
  EXPECT_EQ(forced.code, 0) << forced.out << forced.err;
}

TEST_F(GeneratedTest, APostedVoucherInTheNewYearIsASilentStop) {
  sql("TqData_001_2006",
      "insert into gl_accvouch(iyear, iperiod, ibook, inid, dbill_date, ccode) values(2006, 1, 1, 1, '2006-01-02', "
      "N'1001')");
  const Answer a = transfer({"--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 3);
  EXPECT_NE(a.out.find("\"stop\": {"), std::string::npos) << a.out;
}

TEST_F(GeneratedTest, ASwallowedFailureIsTold) {
  sql("TqData_001_2006", "drop procedure GL_P_AllItemName");
  const Answer a = transfer({"--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 4) << a.out << a.err;
  EXPECT_NE(a.out.find("\"success\": true"), std::string::npos);
  EXPECT_NE(a.out.find("\"failures\": [{\"stage\": \"结转函数--现金流量项目对应关系\", \"statement\": \"exec "
                       "GL_P_AllItemName\""),
            std::string::npos)
      << a.out;
}

TEST_F(GeneratedTest, ASecondFailureReachesTheHostAndUndoesTheTransaction) {
  sql("TqData_001_2006", "drop procedure GL_P_AllItemName\nGO\ndrop procedure NE_UpdateItemView_Proc");
  const std::string before = value("TqData_001_2006", "select iIsUnload from gl_yearstate where iyear=2006");
  const Answer a = transfer({"--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 5) << a.out << a.err;
  EXPECT_NE(a.out.find("\"returned\": false"), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("\"uncaught\": \""), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("\"tables\": {}"), std::string::npos) << a.out;  // what was counted is undone
  EXPECT_EQ(value("TqData_001_2006", "select iIsUnload from gl_yearstate where iyear=2006"), before);
  EXPECT_EQ(value("TqSystem", "select count(*) as n from UA_Mark"), "0");
}

TEST_F(GeneratedTest, AParameterFileIsHandedOverAndJudgedByTheSystem) {
  const std::string good =
      folder_.write("p.xml", "<Account><Parameter ID=\"GL*m_bCoverData\" Check=\"True\"/></Account>");
  const Answer a = transfer({"--params", good, "--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 0) << a.out << a.err;
  EXPECT_NE(a.out.find("\"parameters\": \"<Account><Parameter ID=\\\"GL*m_bCoverData\\\""), std::string::npos) << a.out;
  const std::string bad = folder_.write("bad.xml", "<Account><Parameter");
  const Answer b = transfer({"--params", bad, "--format", "json", "--quiet"});
  EXPECT_EQ(b.code, 1) << b.out << b.err;
  EXPECT_NE(b.out.find("\"returned\": false"), std::string::npos);
}

TEST_F(GeneratedTest, TransGLTakesTheAccountFromTheNewDatabase) {
  const Answer a = gljz({"transgl", "--server", server(), "--from", "2005", "--to", "2006", "--from-db",
                         "TqData_001_2005", "--to-db", "TqData_001_2006", "--format", "json", "--quiet"});
  EXPECT_EQ(a.code, 0) << a.out << a.err;
  EXPECT_NE(a.out.find("\"steps\": []"), std::string::npos) << a.out;
  EXPECT_EQ(value("TqSystem", "select count(*) as n from UA_Mark"), "0");  // TransGL marks nothing
}

TEST_F(GeneratedTest, TheTraceHasAnObjectForEachStatement) {
  ASSERT_EQ(transfer({"--trace", folder_.file("t.jsonl"), "--quiet"}).code, 0);
  const std::string trace = contentOf(folder_.file("t.jsonl"));
  EXPECT_NE(trace.find("\"connection\":\"closing\""), std::string::npos);
  EXPECT_NE(trace.find("\"connection\":\"new\""), std::string::npos);
  EXPECT_NE(trace.find("\"operation\":\"commit\""), std::string::npos);
  EXPECT_NE(trace.find("select bflag from gl_mend where iperiod=12 and iyear=2005"), std::string::npos);
}

TEST_F(GeneratedTest, TheReportFileIsWrittenByItsEnding) {
  ASSERT_EQ(transfer({"--report", folder_.file("r.json"), "--quiet"}).code, 0);
  EXPECT_TRUE(contentOf(folder_.file("r.json")).starts_with("{\"returned\": true"));
  ASSERT_EQ(transfer({"--report", folder_.file("r.txt"), "--quiet"}).code, 0);
  EXPECT_NE(contentOf(folder_.file("r.txt")).find("\n结转完成。\n"), std::string::npos);
}

TEST_F(GeneratedTest, APipeGetsALineForEachFinishedStep) {
  const Answer a = transfer();
  EXPECT_EQ(a.code, 0) << a.err;
  EXPECT_TRUE(a.err.starts_with("结转上年之前的检查... Y\n")) << a.err;
  EXPECT_EQ(a.err.find('\x1b'), std::string::npos);
}

TEST_F(CliTest, TheDemoCarriesForward) {
  const Answer a = gljz({"demo", folder_.file("demo"), "--quiet", "--format", "json"});
  // Its new year lacks a customer, and an account has another auxiliary kind there: the report has two wrong accounts.
  EXPECT_EQ(a.code, 0) << a.out << a.err;  // its findings are part of the show
  EXPECT_NE(a.out.find("\"success\": true"), std::string::npos);
  EXPECT_NE(a.out.find("\"report\": {\"right\": \"50\", \"wrong\": \"2\""), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("\"failures\": []"), std::string::npos) << a.out;
  EXPECT_EQ(gljz({"demo", folder_.file("demo")}).code, 2);  // it is there already
}

// Its own conditions show most: 20 open items line by line, six rows of the bank ledger. An option replaces them all.
TEST_F(CliTest, TheDemoCarriesOpenItemsUnlessItIsToldOtherwise) {
  const Answer own = gljz({"demo", folder_.file("own"), "--quiet", "--format", "json"});
  EXPECT_NE(own.out.find("\"gl_accvouch\": 26"), std::string::npos) << own.out;
  EXPECT_NE(own.out.find("客户往来：新年度没有此结算方式"), std::string::npos) << own.out;
  const Answer told = gljz({"demo", folder_.file("told"), "--quiet", "--format", "json", "--check", "GL*Clear=False"});
  EXPECT_EQ(told.code, 0) << told.out << told.err;
  EXPECT_EQ(told.out.find("客户往来：新年度没有此结算方式"), std::string::npos) << told.out;
}

TEST_F(CliTest, TheDemosBankAccountsAgree) {
  const Answer a = gljz({"demo", folder_.file("demo"), "--quiet", "--format", "json"});
  for (const char* account :
       {"\"10020101\", \"name\": \"工行基本户\", \"currency\": \"\", \"closingBalance\": 180355",
        "\"10020102\", \"name\": \"工行一般户\", \"currency\": \"\", \"closingBalance\": 24600",
        "\"10020201\", \"name\": \"中行美元户\", \"currency\": \"美元\", \"closingBalance\": 59000"})
    EXPECT_NE(a.out.find("{\"account\": " + std::string(account)), std::string::npos) << a.out;
  EXPECT_EQ(a.out.find("\"agrees\": false"), std::string::npos) << a.out;
  EXPECT_NE(gljz({"demo", folder_.file("text")}).out.find("银行账的结转"), std::string::npos);
}

TEST_F(CliTest, TheDemoReportNamesEveryWrittenTableInEachLanguage) {
  ASSERT_EQ(gljz({"demo", folder_.file("json"), "--quiet", "--report", folder_.file("r.json")}).err, "");
  const std::string json = contentOf(folder_.file("r.json"));
  const std::size_t begin = json.find("\"tables\": {"), end = json.find('}', begin);
  ASSERT_NE(begin, std::string::npos) << json;
  const std::string tables = json.substr(begin + 11, end - begin - 11);
  const std::regex name("\"([^\"]+)\": [0-9]+");
  // Twelve periods of the accounts that were carried, and of the accounts above them.
  EXPECT_NE(tables.find("\"gl_accsum\": 624"), std::string::npos) << tables;
  for (const char* language : {"zh-CN", "zh-TW", "en-US"}) {
    const Answer a = gljz({"demo", folder_.file(language), "--language", language});
    EXPECT_EQ(a.out.find("Gljz.Host"), std::string::npos) << a.out;
    std::size_t named = 0;
    for (auto t = std::sregex_iterator(tables.begin(), tables.end(), name); t != std::sregex_iterator(); ++t, ++named)
      EXPECT_NE(a.out.find("\n  " + t->str(1) + " "), std::string::npos) << language << " lacks " << t->str(1);
    EXPECT_GT(named, 10u);
  }
}

}  // namespace
}  // namespace host::test
