#include "host/clearing_component.h"

#include <algorithm>

#include "detail/open_items.h"
#include "host/components.h"
#include "system/voucher_lines.h"

namespace gljz::test {
namespace {

using platform::Component;
using platform::RunTimeError;
using platform::Value;

template <class Ledger>
class Clearing : public VoucherLines<Ledger> {
protected:
  Clearing() {
    this->account("1131", {"bcus", "1"});
    this->account("113101", {"bcus", "1", "bdept", "1"});
    this->account("2121", {"bsup", "1"});
    for (const char* line : {"C1", "C2"})
      this->sql(this->opening, std::string("insert into Customer(cCusCode, cCusName) values(N'") + line + "', N'x')");
  }
  Value call(const std::string& operation, std::vector<Component::Argument> arguments) {
    return component_->Call(operation, arguments);
  }
  void clear(int cusOrSup) {
    call("InitZwPub", {{{}, run.m_pubCls}});
    call("SetCusorSup", {{cusOrSup, nullptr}});
    call("AutoClear4Task", {{"qcjz", nullptr}, {"", nullptr}});
  }
  // md of the lines of the closing years that are still open.
  void expectOpen(const std::vector<std::string>& expected) {
    this->expectRows(this->closing,
                     "select md-mc from gl_accvouch where iflagperson is null and iyear<=2005 order by i_id", expected);
  }

  std::shared_ptr<host::Journal> notes_ = std::make_shared<host::Journal>();
  std::shared_ptr<Component> component_ = host::makeClearingComponent(notes_);
};

class ClearingComponentTest : public Clearing<LedgerTest> {};
class SharedClearingComponentTest : public Clearing<SharedLedgerTest> {};

TEST_F(ClearingComponentTest, LinesThatCancelExactlyAreClearedAtTheEndOfTheClosingYear) {
  vouchers(closing, {"ccode | ccus_id | md | mc", "1131 | C1 | 100 | ", "1131 | C1 | | 100", "1131 | C1 | 30 | "});
  clear(0);
  expectRows(closing, "select md,mc,iflagperson,wllqperiod,wllqdate from gl_accvouch order by i_id",
             {"100 | 0 | 1 | 200512 | 2005-12-31", "0 | 100 | 1 | 200512 | 2005-12-31", "30 | 0 | Null | Null | Null"});
  EXPECT_EQ(notes_->notes(),
            std::vector<std::string>{"automatic clearing: 2 open lines of customers cancel exactly and were marked as "
                                     "cleared"});
}

TEST_F(ClearingComponentTest, TheOldestLinesArePairedFirst) {
  vouchers(closing, {"ccode | ccus_id | md | mc | iperiod | cdigest", "1131 | C1 | 5 | | 9 | 晚",
                     "1131 | C1 | 5 | | 2 | 早", "1131 | C1 | | 5 | 11 | 收"});
  clear(0);
  expectRows(closing, "select cdigest from gl_accvouch where iflagperson is null", {"晚"});
}

TEST_F(ClearingComponentTest, ARedLineCancelsABlackOneOfTheSameSide) {
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 5", "1131 | C1 | -5"});
  clear(0);
  expectOpen({});
}

TEST_F(ClearingComponentTest, OnlyTheSameAccountCurrencyPartnerAndForeignAmountCancel) {
  vouchers(closing, {"ccode | ccus_id | cexch_name | md | mc | md_f | mc_f",           //
                     "1131 | C1 | | 1 | | | ", "1131 | C2 | | | 1 | | ",               // partner
                     "1131 | C1 | 美元 | 2 | | 1 | ", "1131 | C1 | 欧元 | | 2 | | 1",  // currency
                     "1131 | C1 | 美元 | 3 | | 1 | ", "1131 | C1 | 美元 | | 3 | | 2",  // foreign amount
                     "1131 | C1 | | 4 | | | ", "113101 | C1 | | | 4 | | ",             // account
                     "1131 | C1 | | 5 | | | ", "1131 | C1 | | | 5.01 | | "});          // amount
  clear(0);
  expectOpen({"1", "-1", "2", "-2", "3", "-3", "4", "-4", "5", "-5.01"});
  EXPECT_TRUE(notes_->notes().empty());
}

TEST_F(ClearingComponentTest, ForeignAmountsCancelTogetherWithTheMainOnes) {
  vouchers(closing, {"ccode | ccus_id | cexch_name | md | mc | md_f | mc_f", "1131 | C1 | 美元 | 80 | | 10 | ",
                     "1131 | C1 | 美元 | | 80 | | 10"});
  clear(0);
  expectOpen({});
}

TEST_F(ClearingComponentTest, DepartmentAndItemOfALineDoNotMatter) {
  vouchers(closing,
           {"ccode | ccus_id | cdept_id | citem_class | citem_id | md | mc", "113101 | C1 | 01 | 98 | I1 | 4 | ",
            "113101 | C1 | 02 | 98 | I2 | | 4", "113101 | C1 | | | | 6 | ", "113101 | C1 | 01 | | | | 6"});
  clear(0);
  expectOpen({});
}

TEST_F(ClearingComponentTest, LinesOfOtherYearsClearedMarkedAndDeletedOnesAreLeftAlone) {
  vouchers(closing, {"ccode | ccus_id | md | mc | iflagPerson | iflag | bdelete", "1131 | C1 | 1 | | | | ",
                     "1131 | C1 | | 1 | 1 | | ", "1131 | C1 | | 1 | | 1 | ", "1131 | C1 | | 1 | | | 1"});
  vouchers(yearOf(2004), {"ccode | ccus_id | mc", "1131 | C1 | 1"});
  account(yearOf(2004), "1131", {"bcus", "1"});
  vouchers(opening, {"ccode | ccus_id | mc", "1131 | C1 | 1"});
  clear(0);
  expectRows(closing, "select count(*) from gl_accvouch where not wllqperiod is null", {"0"});
  run.m_strInitYear = "2004";
  clear(0);
  expectRows(closing, "select iyear from gl_accvouch where not wllqperiod is null order by iyear", {"2004", "2005"});
}

TEST_F(ClearingComponentTest, CustomersAndSuppliersAreClearedSeparately) {
  vouchers(closing, {"ccode | ccus_id | csup_id | md | mc", "1131 | C1 | | 1 | ", "1131 | C1 | | | 1",
                     "2121 | | V1 | | 2", "2121 | | V1 | 2 | "});
  clear(1);
  expectOpen({"1", "-1"});
  clear(0);
  expectOpen({});
}

TEST_F(ClearingComponentTest, ManyLinesAreClearedInWholePairs) {
  std::string batch;
  for (int i = 0; i < 301; ++i)
    batch +=
        "insert into gl_accvouch(iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md,mc) values(2005,6,1,0,"
        "'2005-06-06',N'1131',N'C1'," +
        std::to_string(i + 1) +
        ",0)\n"
        "insert into gl_accvouch(iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md,mc) values(2005,7,1,0,"
        "'2005-07-06',N'1131',N'C1',0," +
        std::to_string(i + 1) + ")\n";
  sql(closing, batch);
  failAt("update gl_accvouch");
  EXPECT_THROW(clear(0), RunTimeError);
  expectRows(closing, "select sum(md-mc) from gl_accvouch where iflagperson=1", {"Null"});
  clear(0);
  expectOpen({});
}

TEST_F(ClearingComponentTest, WhatWasClearedStaysBehindInACarryForwardByDetail) {
  vouchers(closing, {"ccode | ccus_id | md | mc", "1131 | C1 | 100 | ", "1131 | C1 | | 100", "1131 | C2 | 30 | "});
  clear(0);
  run.m_iCusMode = 2;
  OpenItemState state;
  CarryCustomerItems(state);
  expectOpening("ccus_id,md", {"C2 | 30"});
}

TEST_F(ClearingComponentTest, AWholeRunClearsBeforeItsTransaction) {
  vouchers(closing, {"ccode | ccus_id | md | mc", "1131 | C1 | 100 | ", "1131 | C1 | | 100"});
  fill(opening, "Vendor", {"cVenCode | cVenName", "V1 | 唐钢"});
  fill(opening, "Department", {"cDepCode | cDepName", "01 | 财务部"});
  const Outcome outcome =
      transferWith("<Account><Parameter ID=\"GL*m_bAutoWLClear\" Check=\"True\" text=\"\"/></Account>");
  EXPECT_TRUE(outcome.success) << outcome.errMsg;
  expectOpen({});
  const auto at = [this](const std::string& part) {
    const auto& all = statements();
    return std::find_if(all.begin(), all.end(), [&](const auto& s) { return s.text.starts_with(part); }) - all.begin();
  };
  EXPECT_LT(at("update gl_accvouch set iflagperson=1"), at("begin"));
}

TEST_F(SharedClearingComponentTest, OneDatabaseIsClearedInItsClosingYear) {
  vouchers(closing, {"ccode | ccus_id | md | mc", "1131 | C1 | 100 | ", "1131 | C1 | | 100"});
  vouchers(opening, {"ccode | ccus_id | md | mc", "1131 | C1 | 7 | ", "1131 | C1 | | 7"});
  clear(0);
  expectRows(closing, "select iyear,count(*) from gl_accvouch where iflagperson=1 group by iyear", {"2005 | 2"});
}

TEST_F(ClearingComponentTest, AnswersItsThreeOperationsOnly) {
  EXPECT_THROW(call("Clear", {}), RunTimeError);
  try {
    call("AutoClear4Task", {{"qcjz", nullptr}, {"", nullptr}});
    FAIL() << "cleared without services";
  } catch (const RunTimeError& e) {
    EXPECT_EQ(e.number(), RunTimeError::objectNotSet);
  }
  std::vector<Component::Argument> services{{{}, run.m_pubCls}};
  component_->Call("initzwpub", services);
  EXPECT_EQ(services.front().object, run.m_pubCls);
}

TEST_F(ClearingComponentTest, IsTheComponentThatTheHostOffers) {
  const auto factory = host::makeComponents(notes_);
  EXPECT_NE(factory->Create("OrvoGLWLClear.clsInterface"), nullptr);
  EXPECT_TRUE(notes_->notes().empty());
  EXPECT_THROW(factory->Create("TsGFJZ.clsGFJZ"), RunTimeError);
}

}  // namespace
}  // namespace gljz::test
