// Which open items move: the comparison of the account's two years field by field, accounts that were renumbered, the
// settlement style that lines pass on to each other, foreign money that the run itself has written.

#include "detail/jz_data.h"
#include "dialogs/frm_nbalance.h"
#include "system/open_items_fixture.h"
#include "system/progress_observer.h"

namespace gljz::test {
namespace {

class OpenItemRulesTest : public OpenItems<LedgerTest> {};
class SharedOpenItemRulesTest : public OpenItems<SharedLedgerTest> {};

// --- The account in the closing and in the new year

// A change of the new year's account after which exactly one of the four fields differs. Without its comparison the
// line would move, by the next rule or without keys.
struct FieldChange {
  const char *field, *ccode, *change, *reason;
};
void PrintTo(const FieldChange& change, std::ostream* out) {
  *out << change.field;
}

class FieldChangeTest : public OpenItemRulesTest, public ::testing::WithParamInterface<FieldChange> {
protected:
  FieldChangeTest() {
    const std::string ccode = GetParam().ccode;
    const std::string partners = ccode.starts_with("1131") ? "| C1 | " : "| | V1";
    vouchers(closing, {"ccode | ccus_id | csup_id | cdept_id | citem_id | citem_class | md",
                       ccode + partners + "| 01 | I1 | 98 | 5"});
  }
  void change() {
    sql(opening, std::string("update code set ") + GetParam().change + " where iyear=2006 and ccode=N'" +
                     GetParam().ccode + "'");
  }
};

TEST_P(FieldChangeTest, KeepsTheLineBackWithAReason) {
  change();
  watch();
  carry();
  expectOpening("md", {});
  const std::string ccode = GetParam().ccode;
  EXPECT_EQ(notCarried(), std::vector<std::string>{"科目|" + ccode + "|科目" + ccode + "|" + GetParam().reason});
}

TEST_P(FieldChangeTest, KeepsItBackInSilenceWhenNobodyWatches) {
  change();
  carry();
  expectOpening("md", {});
  EXPECT_TRUE(notCarried().empty());
}

TEST_P(FieldChangeTest, IsAllThatKeepsItBack) {
  carry();
  expectOpening("ccode,md", {std::string(GetParam().ccode) + "| 5"});
}

constexpr const char* customersDiffer = "客户往来：新旧年度的辅助核算不同";
constexpr const char* suppliersDiffer = "供应商往来：新旧年度的辅助核算不同";

INSTANTIATE_TEST_SUITE_P(Customers, FieldChangeTest,
                         ::testing::Values(FieldChange{"bCus", "1131", "bcus=0", customersDiffer},
                                           FieldChange{"bCusDept", "113101", "bdept=0", customersDiffer},
                                           FieldChange{"cCusItemClass", "113102", "bitem=0", customersDiffer},
                                           FieldChange{"cCusDeptItemClass", "113103", "bitem=0,bdept=0",
                                                       customersDiffer}));
INSTANTIATE_TEST_SUITE_P(Suppliers, FieldChangeTest,
                         ::testing::Values(FieldChange{"bSup", "2121", "bsup=0", suppliersDiffer},
                                           FieldChange{"bSupDept", "212101", "bdept=0", suppliersDiffer},
                                           FieldChange{"cSupItemClass", "212102", "bitem=0", suppliersDiffer},
                                           FieldChange{"cSupDeptItemClass", "212103", "bitem=0,bdept=0",
                                                       suppliersDiffer}));

// --- Accounts that were renumbered to a code that the closing year does not have

TEST_F(OpenItemRulesTest, ACustomerAccountUnderACodeThatIsNewCountsAsChanged) {
  account("1132", {"bcus", "1"});
  account(opening, "1139", {"bcus", "1"});
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1131 | 1139"});
  // The line before it was on an account of the same kind, which is not taken for this one's closing year.
  vouchers(closing, {"ccode | ccus_id | md", "1132 | C1 | 1", "1131 | C1 | 2"});
  watch();
  carry();
  expectOpening("md", {"1"});
  EXPECT_EQ(notCarried(), std::vector<std::string>{std::string("科目|1139|科目1139|") + customersDiffer});
}

TEST_F(OpenItemRulesTest, ASupplierAccountUnderACodeThatIsNewCountsAsChanged) {
  account("2122", {"bsup", "1"});
  account(opening, "2129", {"bsup", "1"});
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "2121 | 2129"});
  vouchers(closing, {"ccode | csup_id | md", "2122 | V1 | 1", "2121 | V1 | 2"});
  watch();
  carry();
  expectOpening("md", {"1"});
  EXPECT_EQ(notCarried(), std::vector<std::string>{std::string("科目|2129|科目2129|") + suppliersDiffer});
}

// Neither year's account is one of the party, so nothing has changed and no rule asks for a key.
TEST_F(OpenItemRulesTest, AnAccountWithoutPartnersUnderACodeThatIsNewTakesNoKeys) {
  account(opening, "1139");
  account(opening, "2129");
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1131 | 1139", "2121 | 2129"});
  vouchers(closing, {"ccode | ccus_id | csup_id | cdept_id | md", "113101 | C1 | | 01 | 1", "1131 | C9 | | 01 | 2",
                     "2121 | | V9 | 01 | 3"});
  watch();
  carry();
  expectOpening("ccode,ccus_id,csup_id,cdept_id,md",
                {"113101 | C1 | Null | 01 | 1", "1131 | Null | Null | Null | 2", "2121 | Null | Null | Null | 3"});
  EXPECT_TRUE(notCarried().empty());
}

// --- Settlement styles

// The words of the two keys are alike in every language, so it is the keys that are looked at.
TEST_F(OpenItemRulesTest, AnUnknownStyleIsReportedForEachPartyInItsOwnWords) {
  run.m_pubCls = std::make_shared<KeyedServices>(run.m_pubCls);
  watch();
  fill(closing, "settlestyle", {"csscode | cssname | bssend", "9 | 信用证 | 1"});
  vouchers(closing, {"ccode | cdept_id | cperson_id | ccus_id | csup_id | csettle | md", "1133 | 01 | P1 | | | 2 | 1",
                     "1133 | 01 | P1 | | | 9 | 2", "1131 | | | C1 | | 9 | 3", "2121 | | | | V1 | 9 | 4"});
  carry();
  expectOpening("md,csettle", {"1 | 2", "2 | Null", "3 | Null", "4 | Null"});
  EXPECT_EQ(notCarried(), (std::vector<std::string>{"Orvo.GL.TqGLJZ.00138|9|信用证|Orvo.GL.TqGLJZ.00139",
                                                    "Orvo.GL.TqGLJZ.00154|9|信用证|Orvo.GL.TqGLJZ.00155",
                                                    "Orvo.GL.TqGLJZ.00154|9|信用证|Orvo.GL.TqGLJZ.00171"}));
}

TEST_F(OpenItemRulesTest, ALineThatStaysBehindForItsForeignMoneyHasPassedOnItsStyle) {
  option("bMultiCurrency", "True");
  vouchers(closing, {"ccode | ccus_id | cexch_name | csettle | md", "1131 | C1 | | 1 | 1", "1131 | C1 | 美元 | 2 | 2",
                     "1131 | C1 | | | 3"});
  carry();
  expectOpening("md,csettle", {"1 | 1", "3 | 2"});
}

TEST_F(OpenItemRulesTest, ALineThatIsRefusedBeforeHasNot) {
  fill(closing, "Customer", {"cCusCode | cCusName | cCusAbbName", "C9 | 旧客户公司 | 旧客户"});
  fill(closing, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V9 | 旧供应商公司 | 旧供应商"});
  fill(closing, "Person", {"cPersonCode | cPersonName", "P9 | 旧人"});
  vouchers(closing, {"ccode | cdept_id | cperson_id | ccus_id | csup_id | csettle | md",
                     "1133 | 01 | P1 | | | 1 | 1",  //
                     "1133 | 01 | P9 | | | 2 | 2",  // no such person
                     "1133 | 01 | P1 | | | | 3",    //
                     "1131 | | | C9 | | 2 | 4",     // no such customer
                     "113101 | | | C1 | | 2 | 5",   // no department
                     "1131 | | | C1 | | | 6",       //
                     "2121 | | | | V9 | 2 | 7",     // no such supplier
                     "212101 | | | | V1 | 2 | 8",   // no department
                     "2121 | | | | V1 | | 9"});
  carry();
  expectOpening("md,csettle", {"1 | 1", "3 | 1", "6 | 1", "9 | 1"});
}

// --- Foreign money that the run itself has written

// 1131 has foreign money on one line only, and that one was cleared in the new year: it is open there again. The
// question for foreign money knows no year, so in one database the carried line answers it.
constexpr const char* foreignHead = "ccode | ccus_id | cexch_name | md | md_f | iflagPerson | wllqPeriod";
constexpr const char* withMoney = "1131 | C1 | 美元 | 80 | 10 | 1 | 200601";
constexpr const char* withoutMoney = "1131 | C2 | 美元 | 5 | 0 | |";

TEST_F(OpenItemRulesTest, BetweenTwoDatabasesTheClosingYearAloneHasForeignMoney) {
  option("bMultiCurrency", "True");
  vouchers(closing, {foreignHead, withMoney, withoutMoney});
  newConn().BeginTrans();
  JzData();
  newConn().CommitTrans();
  expectOpening("ccus_id,md,md_f", {"C1 | 80 | 10"});
}

class FirstYearOfSharedSpanTest : public SharedOpenItemRulesTest {
protected:
  FirstYearOfSharedSpanTest() {
    sql("TqSystem", "update UA_AccountDatabase set iBeginYear=2006 where cAcc_Id=N'001'");
    option("bMultiCurrency", "True");
  }
  void runStages() {
    newConn().BeginTrans();
    JzData();
    newConn().CommitTrans();
  }
};

TEST_F(FirstYearOfSharedSpanTest, InOneDatabaseALineCarriedBeforeIsForeignMoneyToo) {
  vouchers(closing, {foreignHead, withMoney, withoutMoney});
  runStages();
  expectOpening("ccus_id,md,md_f", {"C1 | 80 | 10", "C2 | 5 | 0"});
}

TEST_F(FirstYearOfSharedSpanTest, ALineCarriedAfterIsNot) {
  vouchers(closing, {foreignHead, withoutMoney, withMoney});
  runStages();
  expectOpening("ccus_id,md,md_f", {"C1 | 80 | 10"});
}

}  // namespace
}  // namespace gljz::test
