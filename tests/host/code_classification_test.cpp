#include "balances/code_classification.h"

#include <gtest/gtest.h>

#include "host/fake_code_row.h"

namespace host::test {
namespace {

using platform::CodeRecord;
using platform::DateTime;
using platform::Value;

std::string noCurrency(const std::string&, bool) {
  ADD_FAILURE() << "no currency is to be asked for";
  return {};
}
CodeRecord classified(const FakeCodeRow& row, const std::vector<int>& selectors = {},
                      const gljz::CurrencyCode& currency = noCurrency) {
  CodeRecord record;
  gljz::classifyCode(row, selectors, currency, record);
  return record;
}
FakeCodeRow flags(bool dept, bool cus, bool sup, bool item, bool person = false, Value itemClass = Value("98")) {
  FakeCodeRow row;
  row.set("bdept", dept).set("bcus", cus).set("bsup", sup).set("bitem", item).set("bperson", person);
  if (item) row.set("cass_item", std::move(itemClass));
  return row;
}

// The thirteen fields by which two accounts are compared, as one text.
std::string kind(const CodeRecord& c) {
  std::string out;
  const auto flag = [&](const char* name, bool set) {
    if (set) out += std::string(name) + " ";
  };
  const auto text = [&](const char* name, const std::string& value) {
    if (!value.empty()) out += std::string(name) + "=" + value + " ";
  };
  flag("bPersonOnly", c.bPersonOnly);
  text("cPersonItemClass", c.cPersonItemClass);
  text("cCusDeptItemClass", c.cCusDeptItemClass);
  text("cSupDeptItemClass", c.cSupDeptItemClass);
  text("cCusItemClass", c.cCusItemClass);
  text("cSupItemClass", c.cSupItemClass);
  text("cDeptItemClass", c.cDeptItemClass);
  flag("bCusDept", c.bCusDept);
  flag("bSupDept", c.bSupDept);
  flag("bCusOnly", c.bCusOnly);
  flag("bDeptOnly", c.bDeptOnly);
  flag("bItemOnly", c.bItemOnly);
  flag("bSupOnly", c.bSupOnly);
  if (!out.empty()) out.pop_back();
  return out;
}

TEST(CodeClassificationTest, EachCombinationKeepsItsOneField) {
  struct Case {
    bool dept, cus, sup, item;
    const char* kind;
  };
  const Case cases[] = {
      {false, false, false, false, ""},
      {true, false, false, false, "bDeptOnly"},
      {true, true, false, false, "bCusDept"},
      {true, false, true, false, "bSupDept"},
      {true, false, false, true, "cDeptItemClass=98"},
      {false, true, false, false, "bCusOnly"},
      {false, true, false, true, "cCusItemClass=98"},
      {true, true, false, true, "cCusDeptItemClass=98"},
      {true, false, true, true, "cSupDeptItemClass=98"},
      {false, false, true, false, "bSupOnly"},
      {false, false, true, true, "cSupItemClass=98"},
      {false, false, false, true, "bItemOnly"},
      // Combinations that no test of the cascade has.
      {true, true, true, false, ""},
      {true, true, true, true, ""},
      {false, true, true, false, ""},
      {false, true, true, true, ""},
  };
  for (const Case& c : cases)
    EXPECT_EQ(kind(classified(flags(c.dept, c.cus, c.sup, c.item))), c.kind) << c.dept << c.cus << c.sup << c.item;
}

TEST(CodeClassificationTest, PersonsAloneArePersonOnly) {
  EXPECT_EQ(kind(classified(flags(false, false, false, false, true))), "bPersonOnly");
}

TEST(CodeClassificationTest, PersonsWithItemsKeepTheirItemClassInstead) {
  EXPECT_EQ(kind(classified(flags(false, false, false, true, true))), "cPersonItemClass=98");
}

TEST(CodeClassificationTest, AnItemAccountWithoutAClassHasNoItemClass) {
  const CodeRecord c = classified(flags(false, false, false, true, false, Value()));
  EXPECT_EQ(c.cItemClass, "");
  EXPECT_EQ(c.cItemClassCopy, "");
  EXPECT_FALSE(c.bAss);
  EXPECT_TRUE(c.bItemOnly);
}

TEST(CodeClassificationTest, AnAuxiliaryOfAnyKindSetsBAss) {
  EXPECT_TRUE(classified(flags(true, false, false, false)).bAss);
  EXPECT_TRUE(classified(flags(false, true, false, false)).bAss);
  EXPECT_TRUE(classified(flags(false, false, true, false)).bAss);
  EXPECT_TRUE(classified(flags(false, false, false, true)).bAss);
  EXPECT_TRUE(classified(flags(false, false, false, false, true)).bAss);
  EXPECT_FALSE(classified(flags(false, false, false, false)).bAss);
}

TEST(CodeClassificationTest, NullColumnsLeaveTheRecordEmpty) {
  EXPECT_EQ(classified(FakeCodeRow()), CodeRecord());
}

TEST(CodeClassificationTest, EnglishColumnsAreTakenAlways) {
  FakeCodeRow row;
  row.set("cclass", "资产").set("cclass_engl", "Asset").set("cclassany", "流动").set("cclassany_engl", "Current");
  row.set("cbook_type", "三栏").set("cbook_type_engl", "Three");
  const CodeRecord c = classified(row);
  EXPECT_EQ(c.cClass, "Asset");
  EXPECT_EQ(c.cClassAny, "Current");
  EXPECT_EQ(c.cbook_type, "Three");
}

TEST(CodeClassificationTest, PlainColumnsAreTakenAsTheyStand) {
  FakeCodeRow row;
  row.set("i_id", 17).set("ccode", "100201").set("ccode_name", "工行").set("ccode_engl", "Bank").set("igrade", 2);
  row.set("bproperty", true).set("chelp", "GH").set("cmeasure", "吨").set("br", true).set("be", true);
  row.set("bend", true).set("cgather", "1002").set("bexchange", true).set("bcash", false).set("bbank", true);
  row.set("bused", true).set("bd_c", true).set("dbegin", DateTime::fromDate(2005, 1, 1)).set("itrans", 3);
  row.set("cother", "x").set("bclose", true).set("bcDefine1", true).set("bcDefine16", true);
  const CodeRecord c = classified(row);
  EXPECT_EQ(c.i_id, 17);
  EXPECT_EQ(c.ccode, "100201");
  EXPECT_EQ(c.cCode_name, "工行");
  EXPECT_EQ(c.ccode_engl, "Bank");
  EXPECT_EQ(c.iGrade, 2);
  EXPECT_TRUE(c.bProperty && c.br && c.be && c.bEnd && c.bexchange && c.bbank && c.bCashBank && c.bused && c.bd_c);
  EXPECT_FALSE(c.bcash);
  EXPECT_EQ(c.chelp, "GH");
  EXPECT_EQ(c.cMeasure, "吨");
  EXPECT_EQ(c.cgather, "1002");
  EXPECT_EQ(c.dbegin, DateTime::fromDate(2005, 1, 1));
  EXPECT_FALSE(c.dend);
  EXPECT_EQ(c.itrans, 3);
  EXPECT_EQ(c.cOther, "x");
  EXPECT_TRUE(c.bclose);
  EXPECT_TRUE(c.bcDefine[0] && c.bcDefine[15]);
  EXPECT_FALSE(c.bcDefine[1]);
}

TEST(CodeClassificationTest, ASelectorLoadsItsFieldAlone) {
  FakeCodeRow row;
  row.set("ccode", "1001").set("ccode_name", "现金").set("bend", true).set("bdept", true).set("igrade", 1);
  CodeRecord expected;
  expected.bEnd = true;
  EXPECT_EQ(classified(row, {29}), expected);
}

TEST(CodeClassificationTest, ASelectedFieldIsDerivedOnItsOwn) {
  // The cascade would keep cCusDeptItemClass alone.
  const FakeCodeRow row = flags(true, true, false, true);
  EXPECT_EQ(kind(classified(row, {20, 22, 23, 62})),
            "cCusDeptItemClass=98 cCusItemClass=98 cDeptItemClass=98 bCusDept");
  EXPECT_EQ(kind(classified(row, {25})), "");
  EXPECT_EQ(kind(classified(row, {27})), "");
  EXPECT_EQ(kind(classified(row, {28})), "");
}

TEST(CodeClassificationTest, SelectedPersonFieldsNeedNoCascade) {
  const FakeCodeRow row = flags(true, false, false, true, true);
  EXPECT_EQ(kind(classified(row, {14})), "bPersonOnly");
  EXPECT_EQ(kind(classified(row, {61})), "cPersonItemClass=98");
  EXPECT_EQ(kind(classified(flags(false, false, false, true, true), {61})), "");  // persons without departments
}

TEST(CodeClassificationTest, SelectedItemOnlyNeedsAnItemClass) {
  EXPECT_EQ(kind(classified(flags(false, false, false, true), {28})), "bItemOnly");
  EXPECT_EQ(kind(classified(flags(false, false, false, true, false, Value()), {28})), "");
}

TEST(CodeClassificationTest, SelectorsOfUserDefinedFlags) {
  FakeCodeRow row;
  for (int i = 1; i <= 16; ++i) row.set("bcDefine" + std::to_string(i), true);
  const CodeRecord c = classified(row, {45, 60});
  for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(c.bcDefine[i], i == 0 || i == 15) << i;
}

TEST(CodeClassificationTest, SelectorsThatNameNoFieldArePassedOver) {
  EXPECT_EQ(classified(flags(true, true, true, true, true), {2, 4, 5, 44, 64, -1}), CodeRecord());
}

TEST(CodeClassificationTest, TheCurrencysCodeIsAskedForTheWayTheFieldIsLoaded) {
  FakeCodeRow row;
  row.set("cexch_name", "美元");
  std::vector<bool> asked;
  const auto currency = [&](const std::string& name, bool bySelector) {
    EXPECT_EQ(name, "美元");
    asked.push_back(bySelector);
    return std::string("USD");
  };
  EXPECT_EQ(classified(row, {}, currency).cexch_code, "USD");
  EXPECT_EQ(classified(row, {}, currency).Cexch_name, "美元");
  EXPECT_EQ(classified(row, {11}, currency).cexch_code, "USD");
  EXPECT_EQ(classified(row, {11}, currency).Cexch_name, "");
  EXPECT_EQ(asked, (std::vector<bool>{false, false, true, true}));
  classified(row, {10});  // must not ask
}

TEST(CodeClassificationTest, AMissingColumnFailsAndKeepsTheFieldsBeforeIt) {
  FakeCodeRow row;
  row.set("ccode", "1001").set("ccode_name", "现金").set("bend", true);
  row.remove("igrade");
  CodeRecord record;
  EXPECT_THROW(gljz::classifyCode(row, {}, noCurrency, record), platform::RunTimeError);
  EXPECT_EQ(record.cCode_name, "现金");
  EXPECT_FALSE(record.bEnd);
}

TEST(CodeClassificationTest, ColumnsAreFoundWhateverTheirOrder) {
  FakeCodeRow first;
  first.set("ccode", "1001");
  EXPECT_EQ(classified(first).ccode, "1001");
  FakeCodeRow shifted;
  shifted.remove("i_id");
  shifted.remove("iyear");
  shifted.set("ccode", "1002");
  CodeRecord record;
  gljz::classifyCode(shifted, {3, 29}, noCurrency, record);
  EXPECT_EQ(record.cCode_name, "");
  shifted.set("bend", true);
  gljz::classifyCode(shifted, {29}, noCurrency, record);
  EXPECT_TRUE(record.bEnd);
}

}  // namespace
}  // namespace host::test
