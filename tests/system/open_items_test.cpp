#include "detail/open_items.h"

#include "detail/jz_data.h"
#include "detail/open_item_lookups.h"
#include "dialogs/frm_jzsn.h"
#include "system/open_items_fixture.h"

namespace gljz::test {
namespace {

using platform::RunTimeError;

class OpenItemsTest : public OpenItems<LedgerTest> {};
class SharedOpenItemsTest : public OpenItems<SharedLedgerTest> {};

// --- What moves

TEST_F(OpenItemsTest, AnItemMovesLineByLineIntoPeriodZeroOfTheNewYear) {
  vouchers(closing, {"ccode | ccus_id | csign | ino_id | md | mc | cdigest", "1131 | C1 | 记 | 12 | 100.25 | | 销售",
                     "1131 | C1 | 记 | 13 | | 40 | 收款"});
  carry();
  expectOpening("iyear,iperiod,csign,ino_id,ccode,ccus_id,md,mc,cdigest,ibook,iflagperson",
                {"2006 | 0 | 记 | 12 | 1131 | C1 | 100.25 | 0 | 销售 | 1 | Null",
                 "2006 | 0 | 记 | 13 | 1131 | C1 | 0 | 40 | 收款 | 1 | Null"});
}

TEST_F(OpenItemsTest, ARowThatIsNotClearedOrMarkedWithZeroIsOpen) {
  vouchers(closing, {"ccode | ccus_id | md | iflagPerson | wllqPeriod", "1131 | C1 | 1 | | ", "1131 | C1 | 2 | 0 | ",
                     "1131 | C1 | 3 | 0 | 200512"});
  carry();
  expectOpening("md", {"1", "2", "3"});
}

TEST_F(OpenItemsTest, AnItemClearedBeforeTheYearsEndStaysBehindAndOneClearedAfterItIsOpenAgain) {
  vouchers(closing,
           {"ccode | ccus_id | md | iflagPerson | wllqPeriod | wllqDate", "1131 | C1 | 1 | 1 | 200512 | 2005-12-31",
            "1131 | C1 | 2 | 1 | 200601 | 2006-01-04", "1131 | C1 | 3 | 2 | 200600 | ", "1131 | C1 | 4 | 1 | | "});
  carry();
  expectOpening("md,iflagperson,wllqperiod,wllqdate", {"2 | Null | Null | Null", "3 | Null | Null | Null"});
}

TEST_F(OpenItemsTest, AMarkedVoucherDoesNotCount) {
  vouchers(closing, {"ccode | ccus_id | md | iflag", "1131 | C1 | 1 | 1", "1131 | C1 | 2 | 0", "1131 | C1 | 3 | "});
  carry();
  expectOpening("md", {"3"});
}

TEST_F(OpenItemsTest, AllYearsFromTheLastInitialisedOneToTheClosingOneCount) {
  run.m_strInitYear = "2003";
  for (const int year : {2002, 2003, 2004}) {
    account(yearOf(year), "1131", {"bcus", "1"});
    vouchers(yearOf(year), {"ccode | ccus_id | md", "1131 | C1 | " + std::to_string(year)});
  }
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 2005"});
  carry();
  expectOpening("iyear,md", {"2006 | 2003", "2006 | 2004", "2006 | 2005"});
}

TEST_F(OpenItemsTest, ALineCountsByTheAccountOfItsOwnYear) {
  run.m_strInitYear = "2004";
  account(yearOf(2004), "1131", {"bcus", "0"});
  vouchers(yearOf(2004), {"ccode | ccus_id | md", "1131 | C1 | 1", "2121 | C1 | 2"});
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 3", "9999 | C1 | 4"});
  carry();
  expectOpening("md", {"3"});
}

TEST_F(OpenItemsTest, TheLineKeepsItsOldAccountWhenTheAccountWasRenumbered) {
  account("1132", {"bcus", "1", "cmeasure", "吨"});
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1131 | 1132"});
  vouchers(closing, {"ccode | ccus_id | md | nd_s", "1131 | C1 | 5 | 1.5"});
  carry();
  expectOpening("ccode,ccus_id,md,nd_s", {"1131 | C1 | 5 | 1.5"});
}

// --- Persons, customers, suppliers

TEST_F(OpenItemsTest, APersonItemTakesDepartmentPersonAndItemFromTheLine) {
  vouchers(closing, {"ccode | cdept_id | cperson_id | ccus_id | citem_id | citem_class | cname | md",
                     "1133 | 01 | P1 | C1 | I1 | 98 | 赵 | 1", "113398 | 02 | P2 | | I1 | 98 | 赵 | 2",
                     "1133 | | P1 | | | | | 3", "1133 | 01 | | | | | | 4"});
  carry();
  expectOpening("ccode,cdept_id,cperson_id,ccus_id,citem_id,citem_class,cname,md",
                {"1133 | 01 | P1 | Null | Null | Null | Null | 1", "113398 | 02 | P2 | Null | I1 | 98 | Null | 2"});
}

TEST_F(OpenItemsTest, ACustomerItemTakesTheKeysOfItsKindOfAccount) {
  vouchers(closing, {"ccode | ccus_id | cdept_id | cperson_id | csup_id | citem_id | citem_class | cname | md",
                     "1131 | C1 | 01 | P1 | V1 | I1 | 98 | 赵 | 1", "113101 | C1 | 01 | P1 | V1 | I1 | 98 | 赵 | 2",
                     "113102 | C1 | 01 | P1 | V1 | I1 | 98 | 赵 | 3", "113103 | C1 | 01 | P1 | V1 | I1 | 98 | 赵 | 4"});
  run.m_iSupMode = 0;
  carry();
  expectOpening(
      "ccode,ccus_id,cdept_id,cperson_id,csup_id,citem_id,citem_class,cname,md",
      {"1131 | C1 | Null | Null | Null | Null | Null | 赵 | 1", "113101 | C1 | 01 | Null | Null | Null | Null | 赵 | 2",
       "113102 | C1 | Null | Null | Null | I1 | 98 | 赵 | 3", "113103 | C1 | 01 | Null | Null | I1 | 98 | 赵 | 4"});
}

TEST_F(OpenItemsTest, ASupplierItemTakesTheKeysOfItsKindOfAccount) {
  vouchers(closing, {"ccode | csup_id | cdept_id | cperson_id | citem_id | citem_class | cname | mc",
                     "2121 | V1 | 01 | P1 | I1 | 98 | 赵 | 1", "212101 | V1 | 01 | P1 | I1 | 98 | 赵 | 2",
                     "212102 | V1 | 01 | P1 | I1 | 98 | 赵 | 3"});
  carry();
  expectOpening("ccode,csup_id,cdept_id,cperson_id,citem_id,citem_class,cname,mc",
                {"2121 | V1 | Null | Null | Null | Null | 赵 | 1", "212101 | V1 | 01 | Null | Null | Null | 赵 | 2",
                 "212102 | V1 | Null | Null | I1 | 98 | 赵 | 3"});
}

TEST_F(OpenItemsTest, OnAnAccountOfSuppliersDepartmentsAndItemsTheSupplierIsLostAndNotLookedFor) {
  vouchers(closing, {"ccode | csup_id | cdept_id | citem_id | citem_class | mc", "212103 | V9 | 01 | I1 | 98 | 5"});
  carry();
  expectOpening("ccode,csup_id,ccus_id,cdept_id,citem_id,citem_class,mc", {"212103 | Null | Null | 01 | I1 | 98 | 5"});
  EXPECT_FALSE(wasRun("select cVenCode from Vendor"));
}

TEST_F(OpenItemsTest, ALineThatTheRulesRefuseVanishesWithoutAReport) {
  watch();
  vouchers(closing, {"ccode | ccus_id | csup_id | cdept_id | citem_id | citem_class | md",
                     "113101 | C1 | | | | | 1",           // no department
                     "113102 | C1 | | | | 98 | 2",        // no item
                     "113102 | C1 | | | I1 | | 3",        // no item class
                     "113103 | C1 | | 01 | I1 | 97 | 4",  // another item class
                     "113103 | C1 | | | I1 | 98 | 5",     //
                     "212101 | | V1 | | | | 6",           //
                     "212102 | | V1 | | I1 | 97 | 7",     //
                     "212103 | | V1 | 01 | | 98 | 8"});
  carry();
  expectOpening("md", {});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(OpenItemsTest, AnAccountThatHasNoPartnerInEitherYearTakesNoKeys) {
  account("1132", {});
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1131 | 1132"});
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C9 | 5"});
  carry();
  expectOpening("ccode,ccus_id,md", {"1131 | Null | 5"});
}

// --- Modes

TEST_F(OpenItemsTest, InModeThreeTheChosenAccountsMoveAlone) {
  run.m_iCusMode = run.m_iSupMode = 3;
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "1 | 2 | 1131", "1 | 1 | 113101", "2 | 2 | 212101"});
  vouchers(closing, {"ccode | ccus_id | csup_id | cdept_id | md", "1131 | C1 | | | 1", "113101 | C1 | | 01 | 2",
                     "2121 | | V1 | | 3", "212101 | | V1 | 01 | 4"});
  carry();
  expectOpening("md", {"1", "4"});
}

TEST_F(OpenItemsTest, InModeThreeWithoutAChosenAccountNothingMoves) {
  run.m_iCusMode = 3;
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 1"});
  carry();
  expectOpening("md", {});
  EXPECT_TRUE(wasRun("gl_accvouch.iflag is null and code.ccode in ('') and gl_accvouch.i_id <200000 "));
}

TEST_F(OpenItemsTest, TheChosenAccountsAreAskedForEveryBand) {
  run.m_iCusMode = 3, run.m_iPersonMode = run.m_iSupMode = 0;
  carry();
  int asked = 0;
  for (const auto& s : statements()) asked += s.text.starts_with("Select ccode from GL_YeMxSel") ? 1 : 0;
  EXPECT_EQ(asked, 11);
}

TEST_F(OpenItemsTest, PersonsKnowNoSelectionByAccount) {
  run.m_iPersonMode = 3, run.m_iCusMode = run.m_iSupMode = 0;
  vouchers(closing, {"ccode | cdept_id | cperson_id | md", "1133 | 01 | P1 | 1"});
  JzData();
  expectOpening("md", {});
  EXPECT_FALSE(wasRun("code.bperson=1 and not gl_accvouch.ccode is null"));
}

class ModeTest : public OpenItemsTest, public ::testing::WithParamInterface<int> {};

TEST_P(ModeTest, DecidesWhoseItemsMove) {
  const int mode = GetParam();
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = static_cast<std::uint8_t>(mode);
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "1 | 2 | 1131", "2 | 2 | 2121"});
  vouchers(closing, {"ccode | cdept_id | cperson_id | ccus_id | csup_id | md", "1133 | 01 | P1 | | | 1",
                     "1131 | | | C1 | | 2", "2121 | | | | V1 | 3"});
  JzData();
  const std::vector<std::string> all{"1", "2", "3"}, chosen{"2", "3"}, none;
  expectOpening("md", mode == 2 ? all : mode == 3 ? chosen : none);
}
INSTANTIATE_TEST_SUITE_P(Modes, ModeTest, ::testing::Values(0, 1, 2, 3));

// --- Bands

TEST_F(OpenItemsTest, EveryIdentityFallsIntoExactlyOneBand) {
  run.m_iPersonMode = run.m_iSupMode = 0;
  std::string batch = "set identity_insert gl_accvouch on\n";
  // both sides of every edge
  const std::vector<int> ids{1,       199999,  200000,  399999,  400000,  599999,  600000,  799999,
                             800000,  999999,  1000000, 1199999, 1200000, 1399999, 1400000, 1599999,
                             1600000, 1799999, 1800000, 1999999, 2000000, 9000000};
  std::vector<std::string> expected;
  for (const int id : ids) {
    batch += "insert into gl_accvouch(i_id,iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md) values(" +
             std::to_string(id) + ",2005,6,1,0,'2005-06-06',N'1131',N'C1'," + std::to_string(id) + ")\n";
    expected.push_back(std::to_string(id));
  }
  sql(closing, batch + "set identity_insert gl_accvouch off");
  carry();
  expectOpening("md", expected);
}

TEST_F(OpenItemsTest, TheEdgesOfABandFallIntoTwoPasses) {
  sql(closing,
      "set identity_insert gl_accvouch on\n"
      "insert into gl_accvouch(i_id,iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md) "
      "values(199999,2005,6,1,0,'2005-06-06',N'1131',N'C1',1)\n"
      "insert into gl_accvouch(i_id,iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md) "
      "values(200000,2005,6,1,0,'2005-06-06',N'1131',N'C1',2)\n"
      "set identity_insert gl_accvouch off");
  run.m_iPersonMode = run.m_iSupMode = 0;
  carry();
  std::vector<std::string> sequence;  // passes and the lines that are written between them
  for (const auto& s : statements()) {
    if (s.text.starts_with("select gl_accvouch.*")) sequence.push_back("pass");
    if (s.text.starts_with("insert into gl_accvouch")) sequence.push_back("line");
  }
  ASSERT_EQ(sequence.size(), 13u);
  EXPECT_EQ(std::vector<std::string>(sequence.begin(), sequence.begin() + 5),
            (std::vector<std::string>{"pass", "line", "pass", "line", "pass"}));
}

TEST_F(OpenItemsTest, CustomersAreReadInElevenBandsPersonsAndSuppliersInOne) {
  carry();
  std::vector<std::string> selections;
  for (const auto& s : statements())
    if (s.text.starts_with("select gl_accvouch.*,code.ccode_name")) selections.push_back(s.text);
  ASSERT_EQ(selections.size(), 13u);
  EXPECT_EQ(selections.front(),
            "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode = gl_accvouch.ccode  "
            "and code.iyear=gl_accvouch.iyear where code.bend=1 and code.bperson=1 and not gl_accvouch.ccode is null "
            "and not gl_accvouch.cdept_id is null and not gl_accvouch.cperson_id is null  and gl_accvouch.iyear >=2005 "
            "and  gl_accvouch.iyear<=2005    and ( ( gl_accvouch.iflagperson is null or gl_accvouch.iflagperson =0 ) "
            "or  (  not ( gl_accvouch.iflagperson is null or gl_accvouch.iflagperson=0 )  and wllqperiod >=200600 ) ) "
            "and gl_accvouch.iflag is null");
  EXPECT_EQ(selections[1],
            "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode = gl_accvouch.ccode  "
            "and code.iyear=gl_accvouch.iyear where code.bend=1 and code.bcus=1 and not gl_accvouch.ccode is null and "
            "not gl_accvouch.ccus_id is null  and gl_accvouch.iyear >=2005 and  gl_accvouch.iyear<=2005    and ( ( "
            "gl_accvouch.iflagperson is null or gl_accvouch.iflagperson =0 ) or  (  not ( gl_accvouch.iflagperson is "
            "null or gl_accvouch.iflagperson=0 )  and wllqperiod >=200600 ) ) and gl_accvouch.iflag is null and "
            "gl_accvouch.i_id <200000 ");
  const std::string customers = selections[1].substr(0, selections[1].size() - std::string("<200000 ").size());
  const std::vector<std::string> bands{
      "<200000 ",
      ">=200000 and gl_accvouch.i_id <400000 ",
      ">=400000 and gl_accvouch.i_id <600000 ",
      ">=600000 and gl_accvouch.i_id <800000 ",
      ">=800000 and gl_accvouch.i_id <1000000 ",
      ">=1000000 and gl_accvouch.i_id <1200000 ",
      ">=1200000 and gl_accvouch.i_id <1400000 ",
      ">=1400000 and gl_accvouch.i_id <1600000 ",
      ">=1600000 and gl_accvouch.i_id <1800000 ",
      ">=1800000 and gl_accvouch.i_id <2000000 ",
      ">=2000000 ",
  };
  ASSERT_EQ(bands.size(), 11u);
  for (std::size_t i = 0; i < bands.size(); ++i) EXPECT_EQ(selections[1 + i], customers + bands[i]);
  EXPECT_TRUE(selections.back().ends_with("and gl_accvouch.iflag is null"));
  EXPECT_EQ(run.m_strLastSql, selections.back());
}

TEST_F(OpenItemsTest, TheNewYearIsProbedBesideEachSelection) {
  carry();
  std::vector<std::string> probes;
  for (const auto& s : statements())
    if (s.text.find("top 1 * from gl_accvouch") != std::string::npos) probes.push_back(s.database + ": " + s.text);
  ASSERT_EQ(probes.size(), 13u);
  EXPECT_EQ(probes[0], opening.database + ": select  top 1 * from gl_accvouch where iyear=2006");
  for (std::size_t i = 1; i < probes.size(); ++i)
    EXPECT_EQ(probes[i], opening.database + ": select top 1 * from gl_accvouch where iyear=2006");
}

// --- Settlement styles

TEST_F(OpenItemsTest, AnItemWithoutASettlementStyleTakesThatOfTheLineBeforeIt) {
  vouchers(closing,
           {"ccode | ccus_id | csup_id | cdept_id | cperson_id | csettle | md", "1133 | | | 01 | P1 | | 1",
            "1133 | | | 01 | P1 | 2 | 2", "1131 | C1 | | | | | 3", "1131 | C1 | | | | 1 | 4", "2121 | | V1 | | | | 5"});
  carry();
  expectOpening("md,csettle", {"1 | Null", "2 | 2", "3 | 2", "4 | 1", "5 | 1"});
}

TEST_F(OpenItemsTest, ASettlementStyleSurvivesTheChangeOfTheBand) {
  sql(closing,
      "set identity_insert gl_accvouch on\n"
      "insert into gl_accvouch(i_id,iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md,csettle) "
      "values(7,2005,6,1,0,'2005-06-06',N'1131',N'C1',1,N'2')\n"
      "insert into gl_accvouch(i_id,iyear,iperiod,inid,idoc,dbill_date,ccode,ccus_id,md) "
      "values(700000,2005,6,1,0,'2005-06-06',N'1131',N'C1',2)\n"
      "set identity_insert gl_accvouch off");
  carry();
  expectOpening("md,csettle", {"1 | 2", "2 | 2"});
}

TEST_F(OpenItemsTest, AnUnknownStyleInAnUnwatchedRunLeavesTheStyleOfTheLineBefore) {
  vouchers(closing, {"ccode | ccus_id | csettle | md", "1131 | C1 | 2 | 1", "1131 | C1 | 9 | 2"});
  carry();
  expectOpening("md,csettle", {"1 | 2", "2 | 2"});
}

TEST_F(OpenItemsTest, AnUnknownStyleInAWatchedRunIsReportedAndTakenOff) {
  watch();
  fill(closing, "settlestyle", {"csscode | cssname | bssend", "9 | 信用证 | 1", "8 | 票据 | 0"});
  vouchers(closing, {"ccode | ccus_id | csettle | md", "1131 | C1 | 2 | 1", "1131 | C1 | 9 | 2", "1131 | C1 | | 3",
                     "1131 | C1 | 8 | 4"});
  carry();
  expectOpening("md,csettle", {"1 | 2", "2 | Null", "3 | Null", "4 | Null"});
  const std::vector<std::string> expected{
      "结算方式|9|信用证|客户往来：新年度没有此结算方式，已去掉结算方式结转",
      "结算方式|8||客户往来：新年度没有此结算方式，已去掉结算方式结转"};  // a parent style has no name here
  EXPECT_EQ(notCarried(), expected);
}

TEST_F(OpenItemsTest, AStyleOfTheNewYearCountsWhetherOrNotItIsLastLevel) {
  fill(opening, "settlestyle", {"csscode | cssname | bssend", "8 | 票据 | 0"});
  vouchers(closing, {"ccode | ccus_id | csettle | md", "1131 | C1 | 8 | 1"});
  carry();
  expectOpening("md,csettle", {"1 | 8"});
}

// --- Currencies

TEST_F(OpenItemsTest, WithOneCurrencyAnAccountTheLineTakesTheCurrencyOfItsAccount) {
  account("113104", {"bcus", "1", "cexch_name", "美元"});
  vouchers(closing, {"ccode | ccus_id | cexch_name | md | md_f | nfrat", "113104 | C1 | 美元 | 80 | 10 | 8",
                     "1131 | C1 | 美元 | 80 | 10 | 8", "113104 | C1 | | 80 | 10 | 8"});
  carry();
  expectOpening("ccode,cexch_name,md,md_f,nfrat",
                {"113104 | 美元 | 80 | 10 | 8", "1131 | Null | 80 | 0 | 0", "113104 | Null | 80 | 0 | 0"});
}

TEST_F(OpenItemsTest, WithSeveralCurrenciesTheLineKeepsItsOwn) {
  option("bMultiCurrency", "True");
  vouchers(closing, {"ccode | ccus_id | cexch_name | md | md_f | nfrat", "1131 | C1 | 美元 | 80 | 10 | 8",
                     "1131 | C1 | | 80 | 0 | 0"});
  carry();
  expectOpening("cexch_name,md,md_f,nfrat", {"美元 | 80 | 10 | 8", "Null | 80 | 0 | 0"});
}

TEST_F(OpenItemsTest, AForeignLineWithoutForeignMoneyStaysBehindWhereTheAccountHasNone) {
  option("bMultiCurrency", "True");
  watch();
  vouchers(closing, {"ccode | ccus_id | cexch_name | md | md_f", "1131 | C1 | 美元 | 80 | 0"});
  carry();
  expectOpening("md", {});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(OpenItemsTest, AForeignLineWithoutForeignMoneyMovesWhereTheAccountHasSome) {
  option("bMultiCurrency", "True");
  vouchers(closing,
           {"ccode | ccus_id | cexch_name | md | md_f", "1131 | C1 | 美元 | 80 | 0", "1131 | C2 | 美元 | 1 | 5"});
  carry();
  expectOpening("cexch_name,md,md_f", {"美元 | 80 | 0", "美元 | 1 | 5"});
}

TEST_F(OpenItemsTest, AForeignLineWithoutForeignMoneyInPeriodTwentyMovesAnyway) {
  option("bMultiCurrency", "True");
  vouchers(closing, {"ccode | ccus_id | cexch_name | md | iperiod", "1131 | C1 | 美元 | 80 | 20"});
  carry();
  expectOpening("iperiod,cexch_name,md", {"0 | 美元 | 80"});
  EXPECT_FALSE(wasRun("(md_f<>0 or mc_f<>0)"));
}

TEST_F(OpenItemsTest, ALineInTheMainCurrencyNeedsNoForeignMoney) {
  option("bMultiCurrency", "True");
  vouchers(closing, {"ccode | ccus_id | cexch_name | md", "1131 | C1 | 人民币 | 80"});
  carry();
  expectOpening("cexch_name,md", {"人民币 | 80"});
  EXPECT_FALSE(wasRun("(md_f<>0 or mc_f<>0)"));
}

TEST_F(OpenItemsTest, ForeignMoneyOfAnyYearCounts) {
  vouchers(yearOf(1999), {"ccode | md_f | iflagPerson | bdelete", "1131 | 5 | | 1", "1133 | 5 | 1 | 0"});
  EXPECT_FALSE(HasNoForeignAmounts("1131", ""));
  EXPECT_TRUE(HasNoForeignAmounts("1131", "yh"));  // a deleted line does not count for a bank
  EXPECT_TRUE(HasNoForeignAmounts("1133", ""));    // a cleared one not for a partner
  EXPECT_FALSE(HasNoForeignAmounts("1133", "yh"));
  EXPECT_TRUE(HasNoForeignAmounts("2121", ""));
}

// --- What the new year lacks

class MissingTest : public OpenItemsTest {
protected:
  // A watched run and an unwatched one lose the same lines; only the first one says so.
  void expectLost(const std::vector<std::string>& report) {
    carry();
    expectOpening("md", {});
    EXPECT_TRUE(notCarried().empty());
    watch();
    carry();
    expectOpening("md", {});
    EXPECT_EQ(notCarried(), report);
  }
  void lines() {
    vouchers(closing,
             {"ccode | cdept_id | cperson_id | ccus_id | csup_id | citem_id | citem_class | md",
              "1133 | 01 | P1 | | | | | 1", "113103 | 01 | | C1 | | I1 | 98 | 2", "212101 | 01 | | | V1 | | | 3"});
  }
};

TEST_F(MissingTest, AnAccountWithoutACounterpartLosesItsLines) {
  lines();
  sql(opening, "delete from code where iyear=2006");
  expectLost({"科目|1133|科目1133|个人往来：新年度中不存在", "科目|113103|科目113103|客户往来：新年度没有此科目",
              "科目|212101|科目212101|供应商往来：新年度没有此科目"});
}

TEST_F(MissingTest, AnAccountThatIsNoLongerLastLevelLosesItsLines) {
  lines();
  sql(opening, "update code set bend=0,ccode_name=N'新名' where iyear=2006");
  expectLost({"科目|1133|新名|个人往来：新年度不是末级科目", "科目|113103|新名|客户往来：新年度不是末级科目",
              "科目|212101|新名|供应商往来：新年度不是末级科目"});
}

TEST_F(MissingTest, AnAccountWhoseAuxiliariesChangedLosesItsLines) {
  lines();
  sql(opening, "update code set bperson=0,bitem=0,bdept=1-bdept where iyear=2006");
  expectLost({"科目|1133|科目1133|个人往来：新年度不是个人往来科目",
              "科目|113103|科目113103|客户往来：新旧年度的辅助核算不同",
              "科目|212101|科目212101|供应商往来：新旧年度的辅助核算不同"});
}

TEST_F(MissingTest, ADepartmentThatIsMissing) {
  lines();
  sql(opening, "delete from Department where cDepCode=N'01'");
  expectLost({"部门|01|财务部|个人往来：新年度中不存在", "部门|01|财务部|客户往来：新年度没有此部门",
              "部门|01|财务部|供应商往来：新年度没有此部门"});
}

TEST_F(MissingTest, APartnerThatIsMissing) {
  lines();
  sql(opening, "delete from Person\ndelete from Customer\ndelete from Vendor");
  expectLost({"个人|P1|张三|个人往来：新年度没有此人", "客户|C1|北一|客户往来：新年度中不存在",
              "供应商|V1|唐钢|供应商往来：新年度中不存在"});
}

TEST_F(MissingTest, AnItemThatIsMissing) {
  vouchers(closing, {"ccode | ccus_id | csup_id | cdept_id | citem_id | citem_class | md",
                     "113102 | C1 | | | I1 | 98 | 1", "212103 | | V1 | 01 | I1 | 98 | 2"});
  sql(opening, "delete from fitemss98");
  expectLost({"项目|I1|工程一|客户往来：新年度中不存在", "项目|I1|工程一|供应商往来：新年度中不存在"});
}

TEST_F(OpenItemsTest, AChangeOfAuxiliariesThatDoesNotTouchThePartnerIsPassedOver) {
  sql(opening, "update code set bperson=1 where iyear=2006 and ccode=N'1131'");
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 1"});
  carry();
  expectOpening("md", {"1"});
}

TEST_F(OpenItemsTest, AWatchedRunShowsTheAccountOfEachLine) {
  watch();
  vouchers(closing, {"ccode | csup_id | md", "2121 | V1 | 1"});
  carry();
  EXPECT_EQ(frmJZSN().Label3(), "正在结转供应商往来明细 2121");
}

// --- Failures

TEST_F(OpenItemsTest, AFailedInsertEndsTheLoopAndTheLinesBeforeItStand) {
  vouchers(closing,
           {"ccode | ccus_id | cdigest | md", "1131 | C1 | 一 | 1", "1131 | C1 | it's | 2", "1131 | C1 | 三 | 3"});
  EXPECT_THROW(carry(), RunTimeError);
  expectOpening("md", {"1"});
  EXPECT_TRUE(run.m_strLastSql.starts_with("select gl_accvouch.*,code.ccode_name"));  // not the insert
}

TEST_F(OpenItemsTest, AFailedSelectionIsTheLastStatement) {
  failAt("code.bsup=1");
  EXPECT_THROW(carry(), RunTimeError);
  EXPECT_NE(run.m_strLastSql.find("code.bsup=1"), std::string::npos);
}

// --- One database

TEST_F(SharedOpenItemsTest, InTheFirstYearsNeighbourOfASharedDatabaseNothingMoves) {
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 1"});
  vouchers(opening, {"ccode | ccus_id | md | iperiod", "1131 | C1 | 9 | 0"});
  JzData();
  expectOpening("md", {});
  expectRows(closing, "select md from gl_accvouch where iyear=2005", {"1"});
}

TEST_F(SharedOpenItemsTest, InTheFirstYearOfASpanTheItemsMoveWithinTheDatabase) {
  sql("TqSystem", "update UA_AccountDatabase set iBeginYear=2006 where cAcc_Id=N'001'");
  vouchers(closing, {"ccode | ccus_id | md | iflagPerson | wllqPeriod", "1131 | C1 | 1 | | ",
                     "1131 | C1 | 2 | 1 | 200512", "1131 | C2 | 3 | 1 | 200602"});
  newConn().BeginTrans();
  JzData();
  newConn().CommitTrans();
  expectOpening("ccus_id,md", {"C1 | 1", "C2 | 3"});
}

TEST_F(SharedOpenItemsTest, TheLinesThatAreWrittenAreNotReadAgain) {
  for (int i = 0; i < 300; ++i) vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 1"});
  newConn().BeginTrans();
  carry();
  newConn().CommitTrans();
  expectRows(opening, "select count(*),sum(md) from gl_accvouch where iyear=2006", {"300 | 300"});
}

TEST_F(OpenItemsTest, ARepeatedRunDoesNotDoubleTheItems) {
  vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 1"});
  JzData();
  JzData();
  expectOpening("md", {"1"});
}

}  // namespace
}  // namespace gljz::test
