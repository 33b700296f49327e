#include "settings/transfer_definitions.h"

#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "driver/progress.h"
#include "system/ledger_fixture.h"
#include "system/observers.h"

namespace gljz::test {
namespace {

class TransferDefinitionsTest : public LedgerTest {
protected:
  void definitions(const Side& side, std::initializer_list<std::string> lines) { fill(side, "gl_bautotran", lines); }

  // A run that an operator watches.
  void watch() {
    run.m_bManual = true;
    SetupImbalanceGrid(4);
  }

  void expectDefinitions(const std::vector<std::string>& expected) {
    expectRows(opening, "select itype,ctran_id,inid,ccode from gl_bautotran order by itype,ctran_id,inid", expected);
  }

  // A definition of one row stays behind, and the operator reads this.
  void expectLeftOut(const std::string& reportRow) {
    watch();
    JzBautotran();
    expectDefinitions({});
    EXPECT_EQ(notCarried(), std::vector{reportRow});
  }
};

// --- What is carried.

TEST_F(TransferDefinitionsTest, ADefinitionThatFitsIsCarriedWithAllItsColumns) {
  account("1001");
  account("5502");
  definitions(closing, {"itype | ctran_id | inid | csign | ctext | ccode | cdigest | bd_c | cformula | cDefine1 | "
                        "cDefine4 | cDefine16 | cplan | RefJe | iCount | Je | Rate | operater | bAuto",
                        "1 | 0001 | 1 | 记 | 结转 | 1001 | 摘要 | 1 | QM() | 甲 | 2005-03-01 | 乙 | 按月 | 12.5 | 12 | "
                        "1.25 | 0.5 | 王芳 | 1",
                        "1 | 0001 | 2 | 记 | 结转 | 5502 | 摘要 | 0 | JG() | | | | | | | | | | "});
  JzBautotran();
  expectRows(
      opening,
      "select inid,csign,ctext,ccode,cdigest,bd_c,cformula,cDefine1,cDefine4,cDefine16,cplan,RefJe,iCount,Je,"
      "Rate,operater,bAuto from gl_bautotran order by inid",
      {"1 | 记 | 结转 | 1001 | 摘要 | 1 | QM() | 甲 | 2005-03-01 | 乙 | 按月 | 12.5 | 12 | 1.25 | 0.5 | 王芳 | 1",
       "2 | 记 | 结转 | 5502 | 摘要 | 0 | JG() | Null | Null | Null | Null | Null | Null | Null | Null | Null "
       "| 0"});
}

TEST_F(TransferDefinitionsTest, TheSameNumberUnderAnotherTypeIsAnotherDefinition) {
  account("1001");
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001", "2 | 0001 | 1 | 1001"});
  account(closing, "1901");
  definitions(closing, {"itype | ctran_id | inid | ccode", "2 | 0001 | 2 | 1901"});
  JzBautotran();
  expectDefinitions({"1 | 0001 | 1 | 1001"});
}

TEST_F(TransferDefinitionsTest, OneRowThatDoesNotFitKeepsTheWholeDefinitionBehind) {
  account("1001");
  account(closing, "1901", {"ccode_name", "长期待摊费用"});
  definitions(closing,
              {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001", "1 | 0001 | 2 | 1901", "1 | 0002 | 1 | 1001"});
  watch();
  JzBautotran();
  expectDefinitions({"1 | 0002 | 1 | 1001"});
  EXPECT_EQ(notCarried(), std::vector<std::string>{"科目|1901|长期待摊费用|转账定义：新年度没有此科目"});
}

TEST_F(TransferDefinitionsTest, RowsOnAccountsThatTheClosingChartLacksAreNotCheckedAndCarriedAllTheSame) {
  account("1001");
  definitions(closing, {"itype | ctran_id | inid | ccode | ccus_id", "1 | 0001 | 1 | 9999 | C9",
                        "1 | 0002 | 1 | 1001 | ", "1 | 0002 | 2 | 9999 | C9"});
  JzBautotran();
  expectDefinitions({"1 | 0001 | 1 | 9999", "1 | 0002 | 1 | 1001", "1 | 0002 | 2 | 9999"});
}

TEST_F(TransferDefinitionsTest, TheCodesArriveAsTheyStoodThoughTheAccountWasRenumbered) {
  account(closing, "1001");
  account(opening, "101001");
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1001 | 101001"});
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001"});
  JzBautotran();
  expectDefinitions({"1 | 0001 | 1 | 1001"});
}

TEST_F(TransferDefinitionsTest, TheClosingYearIsAskedForTheNewCodeOfARenumberedAccount) {
  account(closing, "1131", {"bcus", "1"});
  account(opening, "1122", {"bcus", "1"});
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1131 | 1122"});
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1131"});
  expectLeftOut("科目|1131|科目1131|转账定义：新旧年度的辅助核算不同");  // 2005 has no 1122, so no auxiliary there
}

// --- Accounts.

TEST_F(TransferDefinitionsTest, AParentAccountIsRefused) {
  account("5502", {"bend", "0"});
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 5502"});
  expectLeftOut("科目|5502|科目5502|转账定义：新年度不是末级科目");
}

TEST_F(TransferDefinitionsTest, Type20MayNameAParentAccount) {
  account("5502", {"bend", "0"});
  definitions(closing, {"itype | ctran_id | inid | ccode", "20 | 0001 | 1 | 5502"});
  watch();
  JzBautotran();
  expectDefinitions({"20 | 0001 | 1 | 5502"});
  EXPECT_TRUE(notCarried().empty());
}

struct Shape {
  const char* name;
  std::vector<std::string> closing, opening;
  bool fits;
};
void PrintTo(const Shape& shape, std::ostream* out) {
  *out << shape.name;
}
class AuxiliaryShapeTest : public TransferDefinitionsTest, public ::testing::WithParamInterface<Shape> {};

TEST_P(AuxiliaryShapeTest, HasToBeTheSameInBothYears) {
  const Shape& shape = GetParam();
  account(closing, "1131", shape.closing);
  account(opening, "1131", shape.opening);
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1131"});
  if (!shape.fits) return expectLeftOut("科目|1131|科目1131|转账定义：新旧年度的辅助核算不同");
  JzBautotran();
  expectDefinitions({"1 | 0001 | 1 | 1131"});
}

INSTANTIATE_TEST_SUITE_P(
    Accounts, AuxiliaryShapeTest,
    ::testing::Values(Shape{"Person", {"bperson", "1"}, {}, false}, Shape{"Customer", {"bcus", "1"}, {}, false},
                      Shape{"Supplier", {"bsup", "1"}, {}, false}, Shape{"Department", {}, {"bdept", "1"}, false},
                      Shape{"Item", {"bitem", "1", "cass_item", "98"}, {}, false},
                      Shape{"CustomerDepartment", {"bcus", "1"}, {"bcus", "1", "bdept", "1"}, false},
                      Shape{"SupplierDepartment", {"bsup", "1", "bdept", "1"}, {"bsup", "1"}, false},
                      Shape{"ItemClassOfCustomer",
                            {"bcus", "1", "bitem", "1", "cass_item", "98"},
                            {"bcus", "1", "bitem", "1", "cass_item", "97"},
                            false},
                      Shape{"ItemClassOfSupplier",
                            {"bsup", "1", "bitem", "1", "cass_item", "98"},
                            {"bsup", "1", "bitem", "1", "cass_item", "97"},
                            false},
                      Shape{"ItemClassOfDepartment",
                            {"bdept", "1", "bitem", "1", "cass_item", "98"},
                            {"bdept", "1", "bitem", "1", "cass_item", "97"},
                            false},
                      Shape{"Same", {"bcus", "1", "bdept", "1"}, {"bcus", "1", "bdept", "1"}, true},
                      // three combinations are not looked at
                      Shape{"CustomerOrSupplierWithDepartmentAndItem",
                            {"bcus", "1", "bdept", "1", "bitem", "1", "cass_item", "98"},
                            {"bsup", "1", "bdept", "1", "bitem", "1", "cass_item", "98"},
                            true},
                      Shape{"ItemClassOfPerson",
                            {"bperson", "1", "bitem", "1", "cass_item", "98"},
                            {"bperson", "1", "bitem", "1", "cass_item", "97"},
                            true}),
    [](const auto& test) { return test.param.name; });

// --- Reference records.

TEST_F(TransferDefinitionsTest, ADepartmentThatIsGoneHasAReasonOfItsOwn) {
  account("5502");
  fill(closing, "Department", {"cDepCode | cDepName", "0201 | 采购部"});
  definitions(closing, {"itype | ctran_id | inid | ccode | cdept_id", "1 | 0001 | 1 | 5502 | 0201"});
  expectLeftOut("部门|0201|采购部|转账定义：新年度没有此部门");
}

TEST_F(TransferDefinitionsTest, APersonThatIsGoneKeepsTheDefinitionBehind) {
  account("5502");
  fill(closing, "Person", {"cPersonCode | cPersonName", "P1 | 张三"});
  definitions(closing, {"itype | ctran_id | inid | ccode | cperson_id", "1 | 0001 | 1 | 5502 | P1"});
  expectLeftOut("个人|P1|张三|转账定义：新年度中不存在");
}

TEST_F(TransferDefinitionsTest, ACustomerThatIsGoneKeepsTheDefinitionBehind) {
  account("5502");
  fill(closing, "Customer", {"cCusCode | cCusName | cCusAbbName", "C6 | 远图公司 | 远图"});
  definitions(closing, {"itype | ctran_id | inid | ccode | ccus_id", "1 | 0001 | 1 | 5502 | C6"});
  expectLeftOut("客户|C6|远图|转账定义：新年度中不存在");
}

TEST_F(TransferDefinitionsTest, ASupplierThatIsGoneKeepsTheDefinitionBehind) {
  account("5502");
  fill(closing, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V4 | 宝钢公司 | 宝钢"});
  definitions(closing, {"itype | ctran_id | inid | ccode | csup_id", "1 | 0001 | 1 | 5502 | V4"});
  expectLeftOut("供应商|V4|宝钢|转账定义：新年度中不存在");
}

TEST_F(TransferDefinitionsTest, AnItemThatIsGoneKeepsTheDefinitionBehind) {
  account("5502");
  fill(closing, "fitemss98", {"citemcode | citemname", "0101 | 销售商品"});
  definitions(closing, {"itype | ctran_id | inid | ccode | citem_class | citem_id", "1 | 0001 | 1 | 5502 | 98 | 0101"});
  expectLeftOut("项目|0101|销售商品|转账定义：新年度中不存在");
}

TEST_F(TransferDefinitionsTest, AnItemWithoutAClassIsGoneWhateverTheNewYearHas) {
  account("5502");
  fill(opening, "fitemss98", {"citemcode", "0101"});
  definitions(closing, {"itype | ctran_id | inid | ccode | citem_id", "1 | 0001 | 1 | 5502 | 0101"});
  expectLeftOut("项目|0101||转账定义：新年度中不存在");
}

TEST_F(TransferDefinitionsTest, AnItemClassWithoutAnItemIsNotAskedFor) {
  account("5502");
  definitions(closing, {"itype | ctran_id | inid | ccode | citem_class", "1 | 0001 | 1 | 5502 | 98"});
  JzBautotran();
  expectDefinitions({"1 | 0001 | 1 | 5502"});
}

TEST_F(TransferDefinitionsTest, TheNewYearIsAskedForEachRecordInOrder) {
  account("5502");
  fill(opening, "Department", {"cDepCode | cDepName", "0201 | 采购部"});
  fill(opening, "Person", {"cPersonCode | cPersonName", "P1 | 张三"});
  fill(opening, "Customer", {"cCusCode", "C6"});
  fill(opening, "Vendor", {"cVenCode", "V4"});
  definitions(closing, {"itype | ctran_id | inid | ccode | cdept_id | cperson_id | ccus_id | csup_id | citem_class | "
                        "citem_id",
                        "1 | 0001 | 1 | 5502 | 0201 | P1 | C6 | V4 | 98 | 0101"});
  const auto services = std::make_shared<AskingServices>(run.m_pubCls);
  run.m_pubCls = services;
  JzBautotran();
  EXPECT_EQ(services->questions,
            (std::vector<std::string>{"MatchCode 5502 2 true", "MatchDepartment 0201 0 true", "MatchPerson P1 0 true",
                                      "MatchCustomer C6 0 true", "MatchVendor V4 0 true", "MatchItem 0101 98 0 true"}));
  expectDefinitions({});
}

TEST_F(TransferDefinitionsTest, RecordsThatTheNewYearHasPass) {
  account("5502");
  fill(opening, "Department", {"cDepCode | cDepName", "0201 | 采购部"});
  fill(opening, "Person", {"cPersonCode | cPersonName", "P1 | 张三"});
  fill(opening, "Customer", {"cCusCode", "C6"});
  fill(opening, "Vendor", {"cVenCode", "V4"});
  fill(opening, "fitemss98", {"citemcode", "0101"});
  definitions(closing, {"itype | ctran_id | inid | ccode | cdept_id | cperson_id | ccus_id | csup_id | citem_class | "
                        "citem_id",
                        "1 | 0001 | 1 | 5502 | 0201 | P1 | C6 | V4 | 98 | 0101"});
  JzBautotran();
  expectDefinitions({"1 | 0001 | 1 | 5502"});
}

TEST_F(TransferDefinitionsTest, AnEmptyCodeIsARecordThatIsGone) {
  account("5502");
  sql(closing, "insert into gl_bautotran(itype,ctran_id,inid,ccode,ccus_id) values(1,'0001',1,'5502','')");
  expectLeftOut("客户|||转账定义：新年度中不存在");
}

TEST_F(TransferDefinitionsTest, TheChecksRunInOrderAndTheFirstDecides) {
  account("5502", {"bend", "0"});
  definitions(closing, {"itype | ctran_id | inid | ccode | cdept_id | cperson_id", "1 | 0001 | 1 | 5502 | 0201 | P1",
                        "20 | 0001 | 1 | 5502 | 0201 | P1"});
  fill(opening, "Person", {"cPersonCode", "P2"});
  watch();
  JzBautotran();
  EXPECT_EQ(notCarried(), (std::vector<std::string>{"科目|5502|科目5502|转账定义：新年度不是末级科目",
                                                    "部门|0201||转账定义：新年度没有此部门"}));
}

// --- Reports.

TEST_F(TransferDefinitionsTest, TwoRowsOnOneAccountGiveOneReportRow) {
  account(closing, "1901");
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1901", "1 | 0001 | 2 | 1901"});
  expectLeftOut("科目|1901|科目1901|转账定义：新年度没有此科目");
}

TEST_F(TransferDefinitionsTest, TwoRowsOnOneAccountAreBothChecked) {
  account("5502");
  fill(opening, "Department", {"cDepCode | cDepName", "01 | 财务部"});
  definitions(closing,
              {"itype | ctran_id | inid | ccode | cdept_id", "1 | 0001 | 1 | 5502 | 01", "1 | 0001 | 2 | 5502 | 02"});
  expectLeftOut("部门|02||转账定义：新年度没有此部门");
}

TEST_F(TransferDefinitionsTest, UnattendedADroppedDefinitionLeavesNoTrace) {
  account(closing, "1901");
  account("5502");
  definitions(closing,
              {"itype | ctran_id | inid | ccode | ccus_id", "1 | 0001 | 1 | 1901 | ", "1 | 0002 | 1 | 5502 | C6"});
  JzBautotran();
  expectDefinitions({});
  EXPECT_FALSE(frmNBalance.isLoaded());
  EXPECT_FALSE(frmJZSN.isLoaded());
  EXPECT_FALSE(wasRun("select * from Customer"));  // no name is looked up
}

TEST_F(TransferDefinitionsTest, TheOperatorSeesTheAccountAndTheLastStepDone) {
  account("1001");
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001"});
  watch();
  JzBautotran();
  EXPECT_EQ(frmJZSN().Label3(), "正在结转转账定义 1001");
  EXPECT_EQ(frmJZSN().Label2(7), "Y");
  EXPECT_EQ(frmJZSN().Label1(7).ForeColor, black);
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--结转上年转帐定义GL_bautotran");
}

TEST_F(TransferDefinitionsTest, EachRowLetsWindowEventsThroughWatchedOrNot) {
  account("1001");
  account(closing, "1901");
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001", "1 | 0001 | 2 | 1001",
                        "1 | 0002 | 1 | 1901", "1 | 0002 | 2 | 1901", "1 | 0003 | 1 | 9999"});
  CountingForms windows;
  surroundings_.forms = &windows;
  JzBautotran();
  EXPECT_EQ(windows.eventRounds, 3);  // a row behind one that fails is not looked at, nor one without an account
  surroundings_.forms = &forms();
}

TEST_F(TransferDefinitionsTest, ChecksAndCopiesOneDefinitionAfterTheOther) {
  account("1001");
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001", "80 | 0002 | 1 | 1001"});
  definitions(opening, {"itype | ctran_id | inid | ccode", "80 | 0002 | 1 | 1001"});
  fill(opening, "gl_tranreport", {"itype | ctran_id | vouchYear", "80 | 0002 | 2006"});
  forgetStatements();
  JzBautotran();
  const std::vector<std::pair<const Side*, std::string>> expected = {
      {&opening, "delete from gl_bautotran where not (itype=80 or itype=81) "},
      {&opening, "delete from gl_tranreport where  vouchyear<>2006"},
      {&opening, "delete from gl_bautotran where  gl_bautotran.itype in (80,81)"},
      {&closing, "select gl_bautotran.itype,gl_bautotran.ctran_id from gl_bautotran group by"},
      {&closing, "select code.ccode,code.ccode_name,"},
      {&opening, "insert into gl_bautotran ("},
      {&closing, "select code.ccode,code.ccode_name,"},
      {&opening, "select * from gl_bautotran where itype= 80 and ctran_id=N'0002'"},
      {&opening, "delete from gl_bautotran where itype=80 and ctran_id= N'0002'"},
      {&opening, "insert into gl_bautotran ("},
      {&opening, "update gl_bautotran set RefJe_f=isum from gl_bautotran, "},
      {&opening, "delete from [GL_TranReport] where vouchYear<2006"},
      {&opening, "insert into [GL_TranReport]  ("}};
  std::size_t next = 0;
  for (const auto& statement : statements()) {
    const bool ofTheStage =
        statement.text.find("tran") != std::string::npos || statement.text.find("GL_TranReport") != std::string::npos;
    if (!ofTheStage) continue;  // look-ups of accounts
    ASSERT_LT(next, expected.size()) << statement.text;
    EXPECT_TRUE(statement.text.starts_with(expected[next].second)) << statement.text;
    EXPECT_EQ(statement.database, expected[next].first->database) << statement.text;
    ++next;
  }
  EXPECT_EQ(next, expected.size());
}

// --- What the new year has.

TEST_F(TransferDefinitionsTest, OrdinaryDefinitionsOfTheNewYearGo) {
  definitions(opening, {"itype | ctran_id | inid | ccode", "1 | 0009 | 1 | 1001", "20 | 0009 | 1 | 1001"});
  JzBautotran();
  expectDefinitions({});
}

// An inner selection that names its own log row's type would keep only 80/A here.
TEST_F(TransferDefinitionsTest, AnAmortisationStaysWhenAnyLogRowHasItsNumberWhateverTheTypeOfThatRow) {
  definitions(opening, {"itype | ctran_id | inid", "80 | A | 1", "81 | A | 1", "80 | B | 1", "81 | C | 1"});
  fill(opening, "gl_tranreport", {"itype | ctran_id | vouchYear", "80 | A | 2006", "1 | C | 2006"});
  JzBautotran();
  expectDefinitions({"80 | A | 1 | Null", "81 | A | 1 | Null", "81 | C | 1 | Null"});
}

TEST_F(TransferDefinitionsTest, LogRowsOfOtherYearsDoNotKeepADefinition) {
  definitions(opening, {"itype | ctran_id | inid", "80 | A | 1", "80 | B | 1"});
  fill(opening, "gl_tranreport", {"itype | ctran_id | vouchYear", "80 | A | 2005", "80 | B | 2007"});
  JzBautotran();
  expectDefinitions({});
  expectRows(opening, "select ctran_id from gl_tranreport", {});
}

TEST_F(TransferDefinitionsTest, ALogRowWithoutAYearStaysAndKeepsItsDefinition) {
  definitions(opening, {"itype | ctran_id | inid", "80 | A | 1"});
  fill(opening, "gl_tranreport", {"itype | ctran_id", "80 | A"});
  JzBautotran();
  expectDefinitions({"80 | A | 1 | Null"});
  expectRows(opening, "select ctran_id,vouchYear from gl_tranreport", {"A | Null"});
}

TEST_F(TransferDefinitionsTest, AnEarlierAmortisationIsReplacedWhenItPassesAndLeftAloneWhenItFails) {
  account("1301");
  account(closing, "1901");
  definitions(opening,
              {"itype | ctran_id | inid | ccode", "80 | A | 1 | 1111", "80 | A | 2 | 1111", "81 | B | 1 | 2222"});
  fill(opening, "gl_tranreport", {"itype | ctran_id | vouchYear", "80 | A | 2006", "81 | B | 2006"});
  definitions(closing, {"itype | ctran_id | inid | ccode", "80 | A | 1 | 1301", "81 | B | 1 | 1901"});
  JzBautotran();
  expectDefinitions({"80 | A | 1 | 1301", "81 | B | 1 | 2222"});
}

// --- The referenced amount.

class ReferencedAmountTest : public TransferDefinitionsTest {
protected:
  ReferencedAmountTest() { account("1301"); }

  void voucher(const std::string& ccode, const std::string& md, const std::string& mc, const std::string& md_f = "0",
               const std::string& ccus_id = "Null") {
    fill(closing, "gl_accvouch",
         {"iperiod | csign | ino_id | inid | dbill_date | ccode | md | mc | md_f | ccus_id",
          "8 | 记 | 2 | 1 | 2005-08-05 | " + ccode + "|" + md + "|" + mc + "|" + md_f + "|" + ccus_id});
  }
  void expectAmounts(const std::vector<std::string>& expected) {
    expectRows(opening, "select itype,ctran_id,inid,RefJe_f from gl_bautotran order by itype,ctran_id,inid", expected);
  }
  static constexpr const char* head = "itype | ctran_id | inid | ccode | RefVouchPeriod | RefVouchSign | RefVouchNo";
};

TEST_F(ReferencedAmountTest, IsTheNetOfTheVoucherWithoutItsSign) {
  definitions(closing, {head, "80 | A | 1 | 1301 | 8 | 记 | 2", "80 | A | 2 | 1301 | 8 | 记 | 2"});
  voucher("1301", "100", "0");
  voucher("1301", "0", "350.25");
  JzBautotran();
  expectAmounts({"80 | A | 1 | 250.25", "80 | A | 2 | 250.25"});  // all rows of the definition take it
}

TEST_F(ReferencedAmountTest, IsInForeignMoneyForAnAccountWithACurrency) {
  account("1302", {"cexch_name", "美元"});
  definitions(closing, {head, "81 | A | 1 | 1302 | 8 | 记 | 2"});
  voucher("1302", "800", "0", "100");
  JzBautotran();
  expectAmounts({"81 | A | 1 | 100"});
}

TEST_F(ReferencedAmountTest, CountsOnlyLinesThatFitTheFirstRow) {
  account("1131", {"bcus", "1"});
  fill(opening, "Customer", {"cCusCode", "C1"});
  fill(closing, "gl_bautotran",
       {"itype | ctran_id | inid | ccode | ccus_id | RefVouchPeriod | RefVouchSign | RefVouchNo",
        "80 | A | 1 | 1131 | C1 | 8 | 记 | 2"});
  voucher("1131", "100", "0", "0", "C1");
  voucher("1131", "40", "0", "0", "C2");
  JzBautotran();
  expectAmounts({"80 | A | 1 | 100"});
}

TEST_F(ReferencedAmountTest, IsSetForNeitherOrdinaryDefinitionsNorOnesWithAYear) {
  definitions(closing, {head, "1 | A | 1 | 1301 | 8 | 记 | 2", "80 | B | 2 | 1301 | 8 | 记 | 2"});
  fill(closing, "gl_bautotran",
       {"itype | ctran_id | inid | ccode | RefVouchPeriod | RefVouchSign | RefVouchNo | RefVouchYear",
        "80 | C | 1 | 1301 | 8 | 记 | 2 | 2005"});
  voucher("1301", "100", "0");
  JzBautotran();
  expectAmounts({"1 | A | 1 | Null", "80 | B | 2 | Null", "80 | C | 1 | Null"});
}

// The chart is joined without a year: an account that stands in two years of the new database counts its lines twice.
TEST_F(ReferencedAmountTest, DoublesWithEveryFurtherYearOfTheNewChart) {
  account(Side{opening.database, 2007}, "1301");
  definitions(closing, {head, "80 | A | 1 | 1301 | 8 | 记 | 2"});
  voucher("1301", "100", "0");
  JzBautotran();
  expectAmounts({"80 | A | 1 | 200"});
}

// --- The run log.

class RunLogTest : public TransferDefinitionsTest {
protected:
  RunLogTest() { account("1301"); }
  void expectLog(const std::vector<std::string>& expected) {
    expectRows(opening,
               "select itype,ctran_id,vouchYear,vouchPeriod,dbill_date,sumJe,sumJe_f,sumSL,cbill,bAuto,iFlag from "
               "gl_tranreport order by ctran_id,vouchYear,vouchPeriod",
               expected);
  }
  static constexpr const char* head =
      "itype | ctran_id | vouchYear | vouchPeriod | vouchSign | vouchNo | dbill_date | sumJe | sumJe_f | sumSL | cbill "
      "| bAuto | iFlag";
};

TEST_F(RunLogTest, IsComputedAnewForTheClosingYearAndKeptForOlderOnes) {
  definitions(closing, {"itype | ctran_id | inid | ccode", "80 | A | 1 | 1301"});
  fill(closing, "gl_accvouch",
       {"iperiod | csign | ino_id | inid | dbill_date | ccode | md | mc | md_f | mc_f | nd_s | nc_s | cbill | iflag",
        "9 | 记 | 5 | 1 | 2005-09-30 | 1301 | 0 | 70 | 0 | 7 | 0 | 2 | 王芳 | 1",
        "9 | 记 | 5 | 2 | 2005-09-30 | 1301 | 0 | 30 | 0 | 3 | 0 | 1 | 王芳 | 1",
        "9 | 记 | 6 | 1 | 2005-09-30 | 1301 | 0 | 99 | 0 | 0 | 0 | 0 | 王芳 | 1"});
  fill(closing, "gl_tranreport",
       {head, "80 | A | 2005 | 9 | 记 | 5 | 2005-01-01 | 1 | 1 | 1 | 旧 | 1 | ",  //
        "80 | A | 2004 | 9 | 记 | 5 | 2004-09-30 | 11 | 12 | 13 | 李四 | 0 | 2"});
  JzBautotran();
  expectLog({"80 | A | 2004 | 9 | 2004-09-30 | 11 | 12 | 13 | 李四 | 0 | 2",
             "80 | A | 2005 | 9 | 2005-09-30 | -100 | -10 | -3 | 王芳 | 1 | 1"});
}

TEST_F(RunLogTest, ARowWithoutAYearTakesTheClosingYearAndKeepsItsAmounts) {
  definitions(closing, {"itype | ctran_id | inid | ccode", "81 | A | 1 | 1301"});
  fill(closing, "gl_tranreport", {head, "81 | A | Null | 3 | 记 | 7 | 2005-03-31 | -45 | 0 | 0 | 王芳 | 0 | "});
  JzBautotran();
  expectLog({"81 | A | 2005 | 3 | 2005-03-31 | -45 | 0 | 0 | 王芳 | 0 | Null"});
}

TEST_F(RunLogTest, IsMergedForDefinitionsThatStayBehindToo) {
  account(closing, "1901");
  definitions(closing, {"itype | ctran_id | inid | ccode", "80 | A | 1 | 1901"});
  fill(closing, "gl_tranreport",
       {head, "80 | A | 2004 | 9 | 记 | 5 | 2004-09-30 | 11 | 0 | 0 | 李四 | 0 | ",
        "80 | 无定义 | 2004 | 9 | 记 | 5 | 2004-09-30 | 11 | 0 | 0 | 李四 | 0 | "});
  JzBautotran();
  expectDefinitions({});
  expectLog({"80 | A | 2004 | 9 | 2004-09-30 | 11 | 0 | 0 | 李四 | 0 | Null"});
}

TEST_F(RunLogTest, OfTheNewYearStays) {
  definitions(closing, {"itype | ctran_id | inid | ccode", "80 | A | 1 | 1301"});
  fill(opening, "gl_tranreport", {head, "80 | A | 2006 | 1 | 记 | 1 | 2006-01-31 | 5 | 0 | 0 | 王芳 | 1 | "});
  JzBautotran();
  expectLog({"80 | A | 2006 | 1 | 2006-01-31 | 5 | 0 | 0 | 王芳 | 1 | Null"});
}

TEST_F(RunLogTest, ASecondRunDoesNotDoubleIt) {
  definitions(closing, {"itype | ctran_id | inid | ccode", "80 | A | 1 | 1301"});
  fill(closing, "gl_tranreport",
       {head, "80 | A | 2004 | 9 | 记 | 5 | 2004-09-30 | 11 | 0 | 0 | 李四 | 0 | ",
        "80 | A | Null | 9 | 记 | 5 | 2005-09-30 | 12 | 0 | 0 | 李四 | 0 | "});
  JzBautotran();
  const auto first = rows(opening, "select * from gl_tranreport");
  JzBautotran();
  EXPECT_EQ(rows(opening, "select * from gl_tranreport"), first);
  EXPECT_EQ(first.size(), 2u);
}

// --- Failures.

TEST_F(TransferDefinitionsTest, AFailureGoesToTheCallerAndWhatWasWrittenStays) {
  account("1001");
  definitions(closing, {"itype | ctran_id | inid | ccode", "1 | 0001 | 1 | 1001"});
  watch();
  failAt("update gl_bautotran set RefJe_f");
  EXPECT_THROW(JzBautotran(), platform::RunTimeError);
  expectDefinitions({"1 | 0001 | 1 | 1001"});
  EXPECT_EQ(frmJZSN().Label2(7), "");
}

}  // namespace
}  // namespace gljz::test
