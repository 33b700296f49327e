// Whole runs over open items: persons, customers and suppliers in every mode, cleared before and after the year's end,
// over the years from the last initialised one, in databases of their own and in a shared one.

#include "host/usage_error.h"
#include "system/account_set.h"

namespace gljz::test {
namespace {

using host::AccountChoice;
using host::ConditionChoices;

enum class Mode { notAsked, balance, detail, byAccount };  // 0 to 3

// 2003 to 2005 in one database; the account set was initialised anew in 2004.
class OpenItemRuns : public AccountSet {
protected:
  explicit OpenItemRuns(Databases databases) : AccountSet(databases, 2003, 2005) {
    sql(year(2005), "update gl_yearstate set iinitflag=1 where iyear=2004");
    references();
    for (const int y : {2003, 2004, 2005}) chart(year(y));
    items();
    turn(2005);
  }

  void references() {
    const Side side = year(2003);
    fill(side, "dsign", {"csign | isignseq", "记 | 1", "转 | 3"});
    fill(side, "settlestyle", {"csscode | cssname", "1 | 支票", "2 | 汇款"});
    fill(side, "foreigncurrency", {"cexch_name | cexch_code", "美元 | USD"});
    fill(side, "Department", {"cDepCode | cDepName", "01 | 财务部", "02 | 销售部"});
    fill(side, "Person", {"cPersonCode | cPersonName", "P1 | 张三", "P2 | 李四"});
    fill(side, "Customer", {"cCusCode | cCusName | cCusAbbName", "C1 | 北一公司 | 北一", "C2 | 东方公司 | 东方"});
    fill(side, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V1 | 唐钢公司 | 唐钢", "V2 | 宝钢公司 | 宝钢"});
    fill(side, "fitem", {"citem_class | cItem_Name | cItem_Text | crule", "98 | 项目 | 项目 | 22"});
    fill(side, "fitemss98", {"citemcode | citemname", "I1 | 工程一"});
  }
  void chart(const Side& side) {
    account(side, "1133", {"bperson", "1"});
    account(side, "113398", {"bperson", "1", "bitem", "1", "cass_item", "98"});
    account(side, "1131", {"bcus", "1"});
    account(side, "113101", {"bcus", "1", "bdept", "1"});
    account(side, "113102", {"bcus", "1", "cexch_name", "美元"});
    account(side, "2121", {"bsup", "1", "cmeasure", "吨"});
    account(side, "212103", {"bsup", "1", "bdept", "1", "bitem", "1", "cass_item", "98"});
  }

  void items() {
    const std::string head =
        "iperiod | csign | isignseq | ino_id | inid | idoc | dbill_date | cdigest | ccode | cexch_name | md | mc | "
        "md_f | mc_f | nfrat | nd_s | nc_s | csettle | cdept_id | cperson_id | ccus_id | csup_id | citem_id | "
        "citem_class | cname | iflagPerson | wllqPeriod";
    const auto line = [&](int ofYear, const std::string& cells) { fill(year(ofYear), "gl_accvouch", {head, cells}); };
    // Before the initialised year nothing counts.
    line(2003, "5|记|1|1|1|0|2003-05-05|旧借款|1133||11|0|0|0|0|0|0||01|P1||||||Null|Null");
    line(2003, "5|记|1|1|2|0|2003-05-05|旧销售|1131||12|0|0|0|0|0|0||||C1|||||Null|Null");
    line(2003, "5|记|1|1|3|0|2003-05-05|旧购货|2121||0|13|0|0|0|0|0|||||V1||||Null|Null");
    // Persons: open in both years, cleared in 2005, cleared in 2006.
    line(2004, "3|记|1|7|1|0|2004-03-03|借款|1133||100|0|0|0|0|0|0||01|P1||||||Null|Null");
    line(2005, "2|转|3|8|1|0|2005-02-02|项目借款|113398||200|0|0|0|0|0|0|2|02|P2|||I1|98||0|Null");
    line(2005, "3|记|1|9|1|0|2005-03-03|借款|1133||300|0|0|0|0|0|0||01|P1||||||1|200505");
    line(2005, "5|记|1|9|2|0|2005-05-05|还款|1133||0|300|0|0|0|0|0||01|P1||||||1|200505");
    line(2005, "12|记|1|10|1|0|2005-12-12|借款|1133||400|0|0|0|0|0|0||01|P2||||||1|200601");
    // Customers, the same, with a department, with dollars, with a settlement style.
    line(2004, "4|记|1|11|1|0|2004-04-04|销售|1131||1000|0|0|0|0|0|0||||C1||||王五|Null|Null");
    line(2005, "4|记|1|12|1|0|2005-04-04|销售|113101||2000|0|0|0|0|0|0||02||C2|||||Null|Null");
    line(2005, "6|记|1|13|1|0|2005-06-06|出口|113102|美元|8000|0|1000|0|8|0|0||||C1|||||Null|Null");
    line(2005, "7|记|1|14|1|0|2005-07-07|销售|1131||3000|0|0|0|0|0|0||||C2|||||1|200512");
    line(2005, "12|记|1|14|2|0|2005-12-07|收款|1131||0|3000|0|0|0|0|0|1|||C2|||||1|200512");
    line(2005, "12|记|1|15|1|0|2005-12-20|收款|1131||0|600|0|0|0|0|0|1|||C1|||||1|200601");
    // Suppliers, the same, with quantities; and on an account by supplier, department and item.
    line(2004, "8|记|1|21|1|0|2004-08-08|购货|2121||0|5000|0|0|0|0|2.5|||||V1||||Null|Null");
    line(2005, "8|记|1|22|1|0|2005-08-08|分包|212103||0|6000|0|0|0|0|0||01|||V2|I1|98||Null|Null");
    line(2005, "9|记|1|23|1|0|2005-09-09|购货|2121||0|7000|0|0|0|0|3|||||V2||||1|200511");
    line(2005, "11|记|1|23|2|0|2005-11-09|付款|2121||7000|0|0|0|0|0|0|2||||V2||||1|200511");
    line(2005, "12|记|1|24|1|0|2005-12-24|付款|2121||900|0|0|0|0|0|0|2||||V1||||1|200602");
  }

  // The dialog's own way to each mode. 3: of customers 1131 alone by detail, of suppliers 212103.
  static ConditionChoices choices(Mode mode) {
    ConditionChoices c;
    if (mode == Mode::notAsked) return c;
    const auto chosen = [mode](const char* account) {
      AccountChoice choice;
      choice.all = mode == Mode::detail;
      if (mode == Mode::byAccount) choice.codes = {account};
      return choice;
    };
    c.checks = {{"GL*CusMXJZ", true}, {"GL*SupMXJZ", true}};
    if (mode != Mode::balance) c.checks.emplace_back("GL*PersonMXJZ", true);
    c.customerDetail = chosen("1131");
    c.supplierDetail = chosen("212103");
    return c;
  }

  void expectOpeningDetails(const std::vector<std::string>& expected) {
    expectRows(year(2006),
               "select iperiod,csign,isignseq,ino_id,dbill_date,cdigest,ccode,cexch_name,md,mc,md_f,mc_f,nfrat,nd_s,"
               "nc_s,csettle,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname from gl_accvouch where "
               "iyear=2006 order by i_id",
               expected);
    expectRows(year(2006),
               "select count(*) from gl_accvouch where iyear=2006 and (ibook<>1 or not iflagperson is null or not "
               "wllqperiod is null or not wllqdate is null)",
               {"0"});
  }
  std::vector<std::string> closingYears() {
    return rows(year(2005), "select * from gl_accvouch where iyear<=2005 order by i_id");
  }

  const std::vector<std::string> persons{
      "0 | 记 | 1 | 7 | 2004-03-03 | 借款 | 1133 | Null | 100 | 0 | 0 | 0 | 0 | 0 | 0 | Null | 01 | P1 | Null | Null | "
      "Null | Null | Null",
      "0 | 转 | 3 | 8 | 2005-02-02 | 项目借款 | 113398 | Null | 200 | 0 | 0 | 0 | 0 | 0 | 0 | 2 | 02 | P2 | Null | "
      "Null | I1 | 98 | Null",
      "0 | 记 | 1 | 10 | 2005-12-12 | 借款 | 1133 | Null | 400 | 0 | 0 | 0 | 0 | 0 | 0 | 2 | 01 | P2 | Null | Null | "
      "Null | Null | Null"};  // the settlement style of the line before it
};

class OpenItemRunsTest : public OpenItemRuns {
protected:
  OpenItemRunsTest() : OpenItemRuns(Databases::separate) {}
};

TEST_F(OpenItemRunsTest, NobodyAskedForDetailNothingMoves) {
  const auto before = closingYears();
  expectClean(carry(2005, choices(Mode::notAsked)));
  expectOpeningDetails({});
  EXPECT_EQ(closingYears(), before);
}

TEST_F(OpenItemRunsTest, ByBalanceNothingMoves) {
  expectClean(carry(2005, choices(Mode::balance)));
  expectOpeningDetails({});
  expectRows(year(2006), "select ccode,iYeMxType from GL_YeMxSel order by ccode",
             {"1131 | 1", "113101 | 1", "113102 | 1", "2121 | 1", "212103 | 1"});
}

TEST_F(OpenItemRunsTest, ByDetailEveryOpenItemMoves) {
  const auto before = closingYears();
  expectClean(carry(2005, choices(Mode::detail)));
  std::vector<std::string> expected = persons;
  for (const char* line :
       {"0 | 记 | 1 | 11 | 2004-04-04 | 销售 | 1131 | Null | 1000 | 0 | 0 | 0 | 0 | 0 | 0 | 2 | Null | Null | C1 | "
        "Null | Null | Null | 王五",
        "0 | 记 | 1 | 12 | 2005-04-04 | 销售 | 113101 | Null | 2000 | 0 | 0 | 0 | 0 | 0 | 0 | 2 | 02 | Null | C2 | "
        "Null | Null | Null | Null",
        "0 | 记 | 1 | 13 | 2005-06-06 | 出口 | 113102 | 美元 | 8000 | 0 | 1000 | 0 | 8 | 0 | 0 | 2 | Null | Null | C1 "
        "| Null | Null | Null | Null",
        "0 | 记 | 1 | 15 | 2005-12-20 | 收款 | 1131 | Null | 0 | 600 | 0 | 0 | 0 | 0 | 0 | 1 | Null | Null | C1 | "
        "Null | Null | Null | Null",
        "0 | 记 | 1 | 21 | 2004-08-08 | 购货 | 2121 | Null | 0 | 5000 | 0 | 0 | 0 | 0 | 2.5 | 1 | Null | Null | Null "
        "| V1 | Null | Null | Null",
        "0 | 记 | 1 | 22 | 2005-08-08 | 分包 | 212103 | Null | 0 | 6000 | 0 | 0 | 0 | 0 | 0 | 1 | 01 | Null | Null | "
        "Null | I1 | 98 | Null",
        "0 | 记 | 1 | 24 | 2005-12-24 | 付款 | 2121 | Null | 900 | 0 | 0 | 0 | 0 | 0 | 0 | 2 | Null | Null | Null | "
        "V1 | Null | Null | Null"})
    expected.push_back(line);
  expectOpeningDetails(expected);
  EXPECT_EQ(closingYears(), before);
}

TEST_F(OpenItemRunsTest, ByAccountTheChosenOnesMoveAndAllPersons) {
  expectClean(carry(2005, choices(Mode::byAccount)));
  std::vector<std::string> expected = persons;
  for (const char* line :
       {"0 | 记 | 1 | 11 | 2004-04-04 | 销售 | 1131 | Null | 1000 | 0 | 0 | 0 | 0 | 0 | 0 | 2 | Null | Null | C1 | "
        "Null | Null | Null | 王五",
        "0 | 记 | 1 | 15 | 2005-12-20 | 收款 | 1131 | Null | 0 | 600 | 0 | 0 | 0 | 0 | 0 | 1 | Null | Null | C1 | "
        "Null | Null | Null | Null",
        "0 | 记 | 1 | 22 | 2005-08-08 | 分包 | 212103 | Null | 0 | 6000 | 0 | 0 | 0 | 0 | 0 | 1 | 01 | Null | Null | "
        "Null | I1 | 98 | Null"})
    expected.push_back(line);
  expectOpeningDetails(expected);
}

TEST_F(OpenItemRunsTest, ASecondRunReplacesTheFirst) {
  expectClean(carry(2005, choices(Mode::detail)));
  const std::string query = "select count(*),sum(md),sum(mc) from gl_accvouch where iyear=2006";
  const auto first = rows(year(2006), query);
  expectClean(carry(2005, choices(Mode::detail)));
  EXPECT_EQ(rows(year(2006), query), first);
  expectClean(carry(2005, choices(Mode::balance)));
  expectOpeningDetails({});
}

TEST_F(OpenItemRunsTest, WhatIsOpenInTheNewYearMovesOnWithIt) {
  expectClean(carry(2005, choices(Mode::detail)));
  // The new year clears the dollars with a receipt and leaves the rest open; then it is closed itself.
  sql(year(2006), "update gl_accvouch set iflagPerson=1,wllqPeriod=200603 where iyear=2006 and ccode=N'113102'");
  fill(year(2006), "gl_accvouch",
       {"iperiod | inid | idoc | dbill_date | cdigest | ccode | cexch_name | mc | mc_f | nfrat | ccus_id | iflagPerson "
        "| wllqPeriod",
        "3 | 1 | 0 | 2006-03-03 | 收汇 | 113102 | 美元 | 8000 | 1000 | 8 | C1 | 1 | 200603"});
  turn(2006);
  ConditionChoices again;
  again.checks = {{"GL*CusMXJZ", true}, {"GL*PersonMXJZ", true}};
  again.customerDetail = AccountChoice{true, {}};
  expectClean(carry(2006, again));
  expectRows(year(2007), "select iperiod,dbill_date,ccode,md,mc,cperson_id,ccus_id from gl_accvouch order by i_id",
             {"0 | 2004-03-03 | 1133 | 100 | 0 | P1 | Null", "0 | 2005-02-02 | 113398 | 200 | 0 | P2 | Null",
              "0 | 2005-12-12 | 1133 | 400 | 0 | P2 | Null", "0 | 2004-04-04 | 1131 | 1000 | 0 | Null | C1",
              "0 | 2005-04-04 | 113101 | 2000 | 0 | Null | C2", "0 | 2005-12-20 | 1131 | 0 | 600 | Null | C1"});
}

TEST_F(OpenItemRunsTest, ClearedItemsThatDoNotCancelStopTheRun) {
  sql(year(2005), "update gl_accvouch set mc=2999 where ino_id=14 and mc=3000");
  const host::RunResult result = carry(2005, choices(Mode::detail));
  EXPECT_FALSE(result.returned);
  EXPECT_EQ(result.errMsg, "客户借贷两清不平衡!不能继续结转！");
  EXPECT_FALSE(result.transactionBegun);
  expectOpeningDetails({});
}

// --- One database for all years

class SharedOpenItemRunsTest : public OpenItemRuns {
protected:
  SharedOpenItemRunsTest() : OpenItemRuns(Databases::shared) {}
};

// The details of a later year of a span are there already; what an earlier run brought as opening details goes. The
// dialog does not even offer to carry details there.
TEST_F(SharedOpenItemRunsTest, InALaterYearOfTheSpanNothingMoves) {
  fill(year(2006), "gl_accvouch",
       {"iperiod | inid | dbill_date | ccode | md | ccus_id", "0 | 1 | 2005-04-04 | 1131 | 9 | C1"});
  const auto before = closingYears();
  EXPECT_THROW(carry(2005, choices(Mode::detail)), host::UsageError);
  expectClean(carry(2005));
  expectOpeningDetails({});
  EXPECT_EQ(closingYears(), before);
}

TEST_F(SharedOpenItemRunsTest, InTheFirstYearOfASpanTheyMoveWithinTheDatabase) {
  sql("TqSystem",
      "insert into UA_AccountDatabase(cAcc_Id,iBeginYear,iEndYear,cDatabase) "
      "values(N'001',2006,2006,N'TqData_001_2003')");
  const auto before = closingYears();
  expectClean(carry(2005, choices(Mode::detail)));
  expectRows(year(2006),
             "select ccode,count(*),sum(md),sum(mc) from gl_accvouch where iyear=2006 group by ccode order by ccode",
             {"1131 | 2 | 1000 | 600", "113101 | 1 | 2000 | 0", "113102 | 1 | 8000 | 0", "1133 | 2 | 500 | 0",
              "113398 | 1 | 200 | 0", "2121 | 2 | 900 | 5000", "212103 | 1 | 0 | 6000"});
  EXPECT_EQ(closingYears(), before);
}

}  // namespace
}  // namespace gljz::test
