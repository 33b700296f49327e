// Reference records of the closing year, and whether the new year still has them.

#include "balances/reference_records.h"

#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

using platform::CodeRecord;
using platform::RunTimeError;

class ReferenceRecordsTest : public LedgerTest {
protected:
  CodeRecord load(const std::string& ccode, const std::vector<int>& selectors = {}) {
    CodeRecord record;
    LoadCode(lastConn(), ccode, record, selectors);
    return record;
  }
};

// --- accounts

TEST_F(ReferenceRecordsTest, AnAccountIsTheClosingYears) {
  account(closing, "1001",
          {"ccode_name", "现金", "cclass", "资产", "cclass_engl", "Assets", "igrade", "2", "cmeasure", "吨", "bend",
           "1", "bcash", "1", "bcDefine3", "1", "bcDefine16", "1"});
  account(opening, "1001", {"ccode_name", "新"});
  const CodeRecord record = load("1001");
  EXPECT_EQ(record.ccode, "1001");
  EXPECT_EQ(record.cCode_name, "现金");
  EXPECT_EQ(record.cClass, "Assets");  // the English column, whatever the language
  EXPECT_EQ(record.iGrade, 2);
  EXPECT_EQ(record.cMeasure, "吨");
  EXPECT_TRUE(record.bEnd);
  EXPECT_TRUE(record.bCashBank);
  EXPECT_TRUE(record.bcDefine[2]);
  EXPECT_TRUE(record.bcDefine[15]);
  EXPECT_FALSE(record.bcDefine[0]);
}

TEST_F(ReferenceRecordsTest, ASelectorLoadsItsFieldAlone) {
  account(closing, "1001", {"cmeasure", "吨", "bend", "1", "bcus", "1"});
  CodeRecord expected;
  expected.bEnd = true;
  EXPECT_EQ(load("1001", {29}), expected);
  expected.cMeasure = "吨";
  EXPECT_EQ(load("1001", {29, 12}), expected);
  EXPECT_EQ(load("1001", {2, 4, 5, 44, 99}), CodeRecord());  // they name no field
}

TEST_F(ReferenceRecordsTest, AMissingAccountReadsAsOneWithoutFlags) {
  CodeRecord record;
  record.bEnd = true;  // replaced
  LoadCode(lastConn(), "9999", record);
  EXPECT_EQ(record, CodeRecord());
}

TEST_F(ReferenceRecordsTest, AQuoteInTheCodeGivesAnEmptyRecord) {
  EXPECT_EQ(load("10'01"), CodeRecord());
  DepartmentRecord department;
  EXPECT_THROW(LoadDepartment(lastConn(), "0'1", department), RunTimeError);
  PersonRecord person;
  EXPECT_THROW(LoadPerson(lastConn(), "0'1", person), RunTimeError);
  CustomerRecord customer;
  EXPECT_THROW(LoadCustomer(lastConn(), "0'1", customer), RunTimeError);
  VendorRecord vendor;
  EXPECT_THROW(LoadVendor(lastConn(), "0'1", vendor), RunTimeError);
  FitemRecord fitem;
  EXPECT_THROW(LoadFitem(lastConn(), "9'8", fitem), RunTimeError);
  ItemRecord item;
  EXPECT_NO_THROW(LoadItem(lastConn(), "98", "I'1", item));
}

TEST_F(ReferenceRecordsTest, WhatWasFilledBeforeAFailureStays) {
  account(closing, "1002", {"cexch_name", "美元", "bcus", "1"});
  failAt("foreigncurrency");
  const CodeRecord record = load("1002");
  EXPECT_EQ(record.Cexch_name, "美元");
  EXPECT_FALSE(record.bCus);
}

TEST_F(ReferenceRecordsTest, TheCurrencysCodeIsLookedUpInTwoWays) {
  account(closing, "1002", {"cexch_name", "美元"});
  fill(closing, "foreigncurrency", {"cexch_name | cexch_code", "美元 | USD"});
  EXPECT_EQ(load("1002").cexch_code, "USD");
  EXPECT_TRUE(wasRun("select * from foreigncurrency where cexch_name=N'美元'"));
  EXPECT_EQ(load("1002", {11}).cexch_code, "USD");
  EXPECT_TRUE(
      wasRun("select cexch_code from foreigncurrency,code where foreigncurrency.cexch_name=code.cexch_name and "
             "code.cexch_name=N'美元'"));
}

TEST_F(ReferenceRecordsTest, AnItemAccountWithoutAClassHasNoAuxiliary) {
  account(closing, "4105", {"bitem", "1"});
  const CodeRecord record = load("4105");
  EXPECT_EQ(record.cItemClass, "");
  EXPECT_FALSE(record.bAss);
  EXPECT_TRUE(load("4105").bItemOnly);  // the combination looks at the flag alone
}

TEST_F(ReferenceRecordsTest, PersonsWithItemsAreToldByTheItemClass) {
  account(closing, "1133", {"bperson", "1", "bitem", "1", "cass_item", "98"});
  const CodeRecord record = load("1133");
  EXPECT_FALSE(record.bPersonOnly);
  EXPECT_EQ(record.cPersonItemClass, "98");
  EXPECT_FALSE(record.bItemOnly);
}

// What an account with these flags is classified as.
struct Classified {
  const char* name;
  bool dept, cus, sup, item;
  void (*expect)(CodeRecord& record);
};
void PrintTo(const Classified& c, std::ostream* out) {
  *out << c.name;
}

class ClassificationTest : public ReferenceRecordsTest, public ::testing::WithParamInterface<Classified> {};

TEST_P(ClassificationTest, ExactlyOneKindHolds) {
  const Classified& c = GetParam();
  const auto flag = [](bool set) { return std::string(set ? "1" : "0"); };
  account(closing, "1131",
          {"bdept", flag(c.dept), "bcus", flag(c.cus), "bsup", flag(c.sup), "bitem", flag(c.item), "cass_item",
           c.item ? "98" : "Null"});
  CodeRecord expected;
  c.expect(expected);
  EXPECT_TRUE(sameAuxiliaryType(load("1131"), expected));
}

INSTANTIATE_TEST_SUITE_P(
    Combinations, ClassificationTest,
    ::testing::Values(
        Classified{"Nothing", false, false, false, false, [](CodeRecord&) {}},
        Classified{"Dept", true, false, false, false, [](CodeRecord& r) { r.bDeptOnly = true; }},
        Classified{"DeptCus", true, true, false, false, [](CodeRecord& r) { r.bCusDept = true; }},
        Classified{"DeptSup", true, false, true, false, [](CodeRecord& r) { r.bSupDept = true; }},
        Classified{"DeptItem", true, false, false, true, [](CodeRecord& r) { r.cDeptItemClass = "98"; }},
        Classified{"Cus", false, true, false, false, [](CodeRecord& r) { r.bCusOnly = true; }},
        Classified{"CusItem", false, true, false, true, [](CodeRecord& r) { r.cCusItemClass = "98"; }},
        Classified{"DeptCusItem", true, true, false, true, [](CodeRecord& r) { r.cCusDeptItemClass = "98"; }},
        Classified{"DeptSupItem", true, false, true, true, [](CodeRecord& r) { r.cSupDeptItemClass = "98"; }},
        Classified{"Sup", false, false, true, false, [](CodeRecord& r) { r.bSupOnly = true; }},
        Classified{"SupItem", false, false, true, true, [](CodeRecord& r) { r.cSupItemClass = "98"; }},
        Classified{"Item", false, false, false, true, [](CodeRecord& r) { r.bItemOnly = true; }},
        Classified{"DeptCusSup", true, true, true, false, [](CodeRecord&) {}},
        Classified{"CusSup", false, true, true, false, [](CodeRecord&) {}}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(AuxiliaryTypeTest, EachOfTheThirteenFieldsTellsAccountsApart) {
  using Change = void (*)(CodeRecord&);
  const Change changes[] = {
      [](CodeRecord& r) { r.bPersonOnly = true; },       [](CodeRecord& r) { r.cPersonItemClass = "98"; },
      [](CodeRecord& r) { r.cCusDeptItemClass = "98"; }, [](CodeRecord& r) { r.cSupDeptItemClass = "98"; },
      [](CodeRecord& r) { r.cCusItemClass = "98"; },     [](CodeRecord& r) { r.cSupItemClass = "98"; },
      [](CodeRecord& r) { r.cDeptItemClass = "98"; },    [](CodeRecord& r) { r.bCusDept = true; },
      [](CodeRecord& r) { r.bSupDept = true; },          [](CodeRecord& r) { r.bCusOnly = true; },
      [](CodeRecord& r) { r.bDeptOnly = true; },         [](CodeRecord& r) { r.bItemOnly = true; },
      [](CodeRecord& r) { r.bSupOnly = true; }};
  for (const Change change : changes) {
    CodeRecord changed;
    change(changed);
    EXPECT_FALSE(sameAuxiliaryType(changed, CodeRecord()));
    EXPECT_TRUE(sameAuxiliaryType(changed, changed));
  }
  CodeRecord renamed;
  renamed.cCode_name = "x";
  renamed.bEnd = renamed.bCus = true;
  renamed.cItemClass = "98";
  EXPECT_TRUE(sameAuxiliaryType(renamed, CodeRecord()));
}

// --- departments, persons, partners

TEST_F(ReferenceRecordsTest, ADepartment) {
  fill(closing, "Department", {"cDepCode | cDepName | iDepGrade | bDepEnd", "0101 | 出纳 | 2 | 1"});
  DepartmentRecord record;
  LoadDepartment(lastConn(), " 0101 ", record);
  EXPECT_EQ(record.cDepCode, "0101");
  EXPECT_EQ(record.cDepName, "出纳");
  EXPECT_EQ(record.iDepGrade, 2);
  EXPECT_TRUE(record.bDepEnd);
  LoadDepartment(lastConn(), "09", record);  // missing: as it was
  EXPECT_EQ(record.cDepName, "出纳");
}

TEST_F(ReferenceRecordsTest, APersonBringsTheDepartment) {
  fill(closing, "Department", {"cDepCode | cDepName | iDepGrade | bDepEnd", "01 | 财务部 | 1 | 1"});
  fill(closing, "Person", {"cPersonCode | cPersonName | cDepCode", "P1 | 张三 | 01", "P2 | 李四 | 09"});
  PersonRecord record;
  LoadPerson(lastConn(), "P1", record);
  EXPECT_EQ(record.cPersonName, "张三");
  EXPECT_EQ(record.cDepCode, "01");
  EXPECT_EQ(record.cDepName, "财务部");
  EXPECT_EQ(record.iDepGrade, 1);
  EXPECT_TRUE(record.bDepEnd);
  LoadPerson(lastConn(), "P2", record);  // of a department that is not there
  EXPECT_EQ(record.cPersonCode, "P2");
  EXPECT_EQ(record.cDepCode, "09");
  EXPECT_EQ(record.cDepName, "");
  EXPECT_EQ(record.iDepGrade, 0);
  EXPECT_FALSE(record.bDepEnd);
}

TEST_F(ReferenceRecordsTest, APersonWithoutADepartmentCostsNoSecondStatement) {
  sql(closing, "insert into Person(cPersonCode, cPersonName, cDepCode) values(N'P1', N'张三', N'')");
  PersonRecord record;
  record.cDepCode = record.cDepName = "old";
  forgetStatements();
  LoadPerson(lastConn(), "P1", record);
  EXPECT_EQ(statements().size(), 1u);
  EXPECT_EQ(record.cPersonName, "张三");
  EXPECT_EQ(record.cDepCode, "");
  EXPECT_EQ(record.cDepName, "");
}

TEST_F(ReferenceRecordsTest, APersonOfNoDepartmentEmptiesThatOfTheRecord) {
  fill(closing, "Person", {"cPersonCode | cPersonName | cDepCode", "P1 | 张三 | Null"});
  PersonRecord record;
  record.cDepCode = record.cDepName = "old";
  record.iDepGrade = 2;
  record.bDepEnd = true;
  forgetStatements();
  LoadPerson(lastConn(), " P1 ", record);
  ASSERT_EQ(statements().size(), 1u);
  EXPECT_EQ(statements().front().text, "select * from Person where cPersonCode='P1'");
  EXPECT_EQ(record.cPersonCode, "P1");
  EXPECT_EQ(record.cDepCode + record.cDepName, "");
  EXPECT_EQ(record.iDepGrade, 0);
  EXPECT_FALSE(record.bDepEnd);
  record.cDepName = "old";
  LoadPerson(lastConn(), "P9", record);  // missing: as it was
  EXPECT_EQ(record.cPersonName, "张三");
  EXPECT_EQ(record.cDepName, "old");
}

TEST_F(ReferenceRecordsTest, ACustomerBringsTheClass) {
  fill(closing, "customerclass", {"cCCCode | cCCName | iCCGrade", "01 | 华北 | 1"});
  fill(closing, "Customer",
       {"cCusCode | cCusName | cCusAbbName | cCCCode | iCusCreLine", "C1 | 北京一公司 | 北一 | 01 | 5000.5",
        "C2 | Null | 北二 | 09 | Null", "C3 | x | 北三 | Null | 1", "C4 | x | Null | Null | 1"});
  CustomerRecord record;
  LoadCustomer(lastConn(), "C1", record);
  EXPECT_EQ(record.cCusName, "北京一公司");
  EXPECT_EQ(record.cCusAbbName, "北一");
  EXPECT_EQ(record.cCCName, "华北");
  EXPECT_EQ(record.iCCGrade, 1);
  EXPECT_EQ(record.iCusCreLine, 5000.5);
  LoadCustomer(lastConn(), "C2", record);
  EXPECT_EQ(record.cCusName, "");
  EXPECT_EQ(record.cCCCode, "09");
  EXPECT_EQ(record.cCCName, "");
  EXPECT_EQ(record.iCusCreLine, 0);
  LoadCustomer(lastConn(), "C3", record);
  EXPECT_EQ(record.cCCCode, "");
  EXPECT_THROW(LoadCustomer(lastConn(), "C4", record), RunTimeError);  // a Null that is not said to be borne
}

TEST_F(ReferenceRecordsTest, ASupplierBringsTheClass) {
  fill(closing, "vendorclass", {"cVCCode | cVCName | iVCGrade", "01 | 华北 | 1"});
  fill(closing, "Vendor",
       {"cVenCode | cVenName | cVenAbbName | cVCCode | iVenCreLine", "V1 | 唐山钢厂 | 唐钢 | 01 | 7",
        "V2 | Null | 鞍钢 | Null | Null"});
  VendorRecord record;
  LoadVendor(lastConn(), "V1", record);
  EXPECT_EQ(record.cVenName, "唐山钢厂");
  EXPECT_EQ(record.cVenAbbName, "唐钢");
  EXPECT_EQ(record.cvCName, "华北");
  EXPECT_EQ(record.ivCGrade, 1);
  EXPECT_EQ(record.iVenCreLine, 7);
  LoadVendor(lastConn(), "V2", record);
  EXPECT_EQ(record.cVenName, "");
  EXPECT_EQ(record.cVCCode, "");
  EXPECT_EQ(record.cvCName, "");
  EXPECT_EQ(record.iVenCreLine, 0);
}

// --- items

TEST_F(ReferenceRecordsTest, AnItemClassNamesItsTablesAndFields) {
  fill(closing, "fitem", {"citem_class | cItem_Name | cItem_Text | crule", "98 | 现金流量 | 现金流量项目 | 322"});
  fill(closing, "fitemstructure",
       {"citem_class | cfield_name | imode", "98 | bclose | 5", "98 | citemname | 4", "98 | memo | 3",
        "98 | citemcode | 1", "98 | citemccode | 2"});
  FitemRecord record;
  LoadFitem(lastConn(), "98", record);
  EXPECT_EQ(record.cItem_Text, "现金流量项目");
  EXPECT_EQ(record.grades, 3);
  EXPECT_EQ(record.codeLengths, (std::vector<int>{3, 5, 7}));
  EXPECT_EQ(record.itemTable, "fitemss98");
  EXPECT_EQ(record.itemClassTable, "fitemss98class");
  EXPECT_EQ(record.fieldNames, (std::array<std::string, 4>{"citemcode", "citemccode", "citemname", "bclose"}));
  FitemRecord inventory;
  LoadFitem(lastConn(), "ch", inventory);
  EXPECT_EQ(inventory.itemTable, "inventory");
  EXPECT_EQ(inventory.itemClassTable, "inventoryclass");
  EXPECT_EQ(inventory.grades, 0);
}

// Neither text nor rule may be Null; an item of such a class is not looked for, since its table is not known.
TEST_F(ReferenceRecordsTest, AnItemClassWithANullIsReadUpToIt) {
  fill(closing, "fitem",
       {"citem_class | cItem_Name | cItem_Text | crule", "98 | 现金流量 | Null | 322", "97 | 工程 | 工程项目 | Null"});
  fill(closing, "fitemss98", {"citemcode | citemname", "0101 | 销售"});
  FitemRecord record;
  EXPECT_THROW(LoadFitem(lastConn(), "98", record), RunTimeError);
  EXPECT_EQ(record.cItem_Name, "现金流量");
  EXPECT_EQ(record.cItem_Text, "");
  EXPECT_EQ(record.itemTable, "");
  EXPECT_THROW(LoadFitem(lastConn(), "97", record), RunTimeError);
  EXPECT_EQ(record.cItem_Text, "工程项目");
  EXPECT_EQ(record.crule, "");
  ItemRecord item;
  EXPECT_NO_THROW(LoadItem(lastConn(), "98", "0101", item));
  EXPECT_EQ(item.citemname, "");
}

TEST_F(ReferenceRecordsTest, AnItemOfAClassBringsItsItemClass) {
  fill(closing, "fitemss98", {"citemcode | citemname | bclose | citemccode", "0101 | 销售 | 1 | 01"});
  fill(closing, "fitemss98class", {"citemccode | cItemCname | iItemCGrade", "01 | 经营 | 1"});
  ItemRecord record;
  LoadItem(lastConn(), "98", "0101", record);
  EXPECT_GT(record.i_id, 0);
  EXPECT_EQ(record.citemcode, "0101");
  EXPECT_EQ(record.citemname, "销售");
  EXPECT_TRUE(record.bclose);
  EXPECT_EQ(record.cItemCname, "经营");
  EXPECT_EQ(record.iItemCGrade, 1);
}

TEST_F(ReferenceRecordsTest, AnInventoryItemComesFromTheInventory) {
  fill(closing, "inventory", {"cInvCode | cInvName | cInvCCode", "S1 | 钢 | 01"});
  fill(closing, "inventoryclass", {"cInvCCode | cInvCName | iInvCGrade", "01 | 原料 | 1"});
  ItemRecord record;
  LoadItem(lastConn(), "ch", "S1", record);
  EXPECT_EQ(record.citemcode, "S1");
  EXPECT_EQ(record.citemname, "钢");
  EXPECT_EQ(record.citemccode, "01");
  EXPECT_EQ(record.cItemCname, "原料");
  EXPECT_EQ(record.iItemCGrade, 1);
}

TEST_F(ReferenceRecordsTest, AnItemIsFilledAsFarAsItCanBeRead) {
  fill(closing, "fitemss98", {"citemcode | citemname | citemccode", "0101 | Null | 01", "0102 | 采购 | Null"});
  fill(closing, "fitemss98class", {"citemccode | cItemCname | iItemCGrade", "01 | 经营 | Null"});
  ItemRecord record;
  LoadItem(lastConn(), "98", "0101", record);
  EXPECT_EQ(record.citemcode, "0101");
  EXPECT_EQ(record.citemname, "");
  EXPECT_EQ(record.cItemCname, "经营");
  ItemRecord second;
  LoadItem(lastConn(), "98", "0102", second);
  EXPECT_EQ(second.citemname, "采购");
  ItemRecord none;
  LoadItem(lastConn(), "77", "0101", none);  // no such table
  EXPECT_EQ(none.citemcode, "");
}

// --- the new year

TEST_F(ReferenceRecordsTest, TheNewYearIsAskedWhatItStillHas) {
  fill(opening, "Customer", {"cCusCode | cCusName", "C1 | 北一"});
  fill(opening, "Vendor", {"cVenCode | cVenName", "V1 | 唐钢"});
  fill(opening, "Department", {"cDepCode | cDepName", "01 | 财务部"});
  fill(opening, "Person", {"cPersonCode | cPersonName", "P1 | 张三"});
  fill(closing, "Customer", {"cCusCode | cCusName", "C2 | 北二"});
  EXPECT_EQ(CusExists("c1"), "N'C1',");  // as the new year spells it
  EXPECT_EQ(CusExists("C2"), "");
  EXPECT_EQ(VenExists("V1"), "N'V1',");
  EXPECT_EQ(VenExists("V2"), "");
  EXPECT_EQ(DepExists("01"), "N'01',");
  EXPECT_EQ(DepExists("02"), "");
  EXPECT_EQ(PersonExists("P1"), "N'P1',");
  EXPECT_EQ(PersonExists("P2"), "");
  EXPECT_THROW(CusExists("C'1"), RunTimeError);
}

}  // namespace
}  // namespace gljz::test
