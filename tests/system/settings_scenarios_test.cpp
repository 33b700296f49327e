// All fifteen settings tables of both years, row by row: what a run makes of an empty new year, of one that somebody
// has configured already, and of one that was carried before.

#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

struct Contents {
  const char* query;
  std::vector<std::string> rows;
};
using Year = std::vector<Contents>;

// The rows of a table take those of another year's place.
Year with(Year year, const Year& others) {
  for (const Contents& other : others)
    for (Contents& contents : year)
      if (std::string(contents.query) == other.query) contents = other;
  return year;
}

constexpr const char* definitions =
    "select itype,ctran_id,inid,ctext,ccode,bd_c,cformula,bAuto from gl_bautotran order by itype,ctran_id,inid";
constexpr const char* multi = "select * from GL_bmulti";
constexpr const char* digests = "select * from GL_btext";
constexpr const char* printing = "select * from GL_cvprintinfset";
constexpr const char* accountRights = "select * from GL_mcodeauth";
constexpr const char* accountUses = "select * from GL_mcodeused";
constexpr const char* itemUses = "select * from GL_mitemused";
constexpr const char* bookTypes = "select * from GL_mybooktype";
constexpr const char* outputs = "select * from GL_myoutput";
constexpr const char* units = "select * from GL_DzDwSet";
constexpr const char* reports = "select * from GL_MRReport_Main";
constexpr const char* reportItems = "select * from GL_MRShowItem_Main";
constexpr const char* reportOptions = "select * from GL_MRReportOption";
constexpr const char* reportColumns = "select * from GL_MRColumnDic_Set";
constexpr const char* formats = "select * from GL_PRN_Format";

class SettingsScenarioTest : public LedgerTest {
protected:
  SettingsScenarioTest() {
    account("1001"), account("5502"), account(closing, "1901");
    fill(closing, "gl_bautotran",
         {"itype | ctran_id | inid | ctext | ccode | bd_c | cformula | bAuto",
          "1 | 0001 | 1 | 计提 | 5502 | 1 | QM() | 1", "1 | 0001 | 2 | 计提 | 1001 | 0 | JG() | 1",
          "1 | 0002 | 1 | 摊销 | 1901 | 1 | QM() | 0"});
    fill(closing, "GL_bmulti", {"cname | ctext", "删除 | 不留", "管理费用 | 按部门", "销售费用 | 按地区"});
    fill(closing, "GL_btext", {"ctext", "删除", "购办公用品", "付水电费"});
    fill(closing, "GL_cvprintinfset", {"cname | bprint", "删除 | 0", "凭证 | 1", "账簿 | 0"});
    fill(closing, "GL_mcodeauth", {"cid | ctext | tqguid", "A1 | 查询科目 | g-1", "A2 | 制单科目 | g-2"});
    fill(closing, "GL_mcodeused", {"cid | ctext | tqguid", "U1 | 常用科目 | g-3"});
    fill(closing, "GL_mitemused", {"cid | ctext | tqguid", "I1 | 常用项目 | g-4"});
    fill(closing, "GL_mybooktype", {"cid | ctext | tqguid", "B1 | 三栏账 | g-5"});
    fill(closing, "GL_myoutput", {"cid | ctext | tqguid", "O0 | 删除 | g-6", "O1 | 输出表 | g-7"});
    fill(closing, "GL_DzDwSet", {"cid | ctext | tqguid", "D0 | 删除 | g-8", "D1 | 对账单位 | g-9"});
    fill(closing, "GL_MRReport_Main", {"cid | ctext | tqguid", "R1 | 部门费用表 | g-10"});
    fill(closing, "GL_MRShowItem_Main", {"cid | ctext | tqguid", "S1 | 期初余额 | g-11"});
    fill(closing, "GL_MRReportOption", {"cid | ctext | tqguid", "P1 | 含未记账 | g-12"});
    fill(closing, "GL_MRColumnDic_Set", {"cid | ctext | tqguid", "C1 | Null | g-13"});
    fill(closing, "GL_PRN_Format", {"cid | ctext | tqguid", "F1 | 金额式 | g-14"});
    for (const char* table :
         {"GL_bmulti where cname=N'删除'", "GL_btext where ctext=N'删除'", "GL_cvprintinfset where cname=N'删除'",
          "GL_myoutput where ctext=N'删除'", "GL_DzDwSet where ctext=N'删除'"})
      sql(closing, std::string("delete from ") + table);
  }

  // What somebody has entered in the new year before the run.
  void configureNewYear() {
    fill(opening, "gl_bautotran",
         {"itype | ctran_id | inid | ctext | ccode | bd_c | cformula", "2 | 0009 | 1 | 自定 | 1001 | 1 | FS()"});
    fill(opening, "GL_bmulti", {"cname | ctext", "制造费用 | 按车间"});
    fill(opening, "GL_btext", {"ctext", "提现"});
    fill(opening, "GL_cvprintinfset", {"cname | bprint", "套打 | 1"});
    for (const char* table :
         {"GL_mcodeauth", "GL_mcodeused", "GL_mitemused", "GL_mybooktype", "GL_myoutput", "GL_DzDwSet",
          "GL_MRReport_Main", "GL_MRShowItem_Main", "GL_MRReportOption", "GL_MRColumnDic_Set", "GL_PRN_Format"})
      fill(opening, table, {"cid | ctext | tqguid", "N1 | 新年度设置 | n-1"});
  }

  // Identity columns are numbered by the new year, row guids stay empty, and the definition with an account that the
  // new year does not have stays behind.
  const Year carried = {
      {definitions, {"1 | 0001 | 1 | 计提 | 5502 | 1 | QM() | 1", "1 | 0001 | 2 | 计提 | 1001 | 0 | JG() | 1"}},
      {multi, {"1 | 管理费用 | 按部门", "2 | 销售费用 | 按地区"}},
      {digests, {"1 | 购办公用品", "2 | 付水电费"}},
      {printing, {"1 | 凭证 | 1", "2 | 账簿 | 0"}},
      {accountRights, {"A1 | 查询科目 | Null", "A2 | 制单科目 | Null"}},
      {accountUses, {"U1 | 常用科目 | Null"}},
      {itemUses, {"I1 | 常用项目 | Null"}},
      {bookTypes, {"B1 | 三栏账 | Null"}},
      {outputs, {"1 | O1 | 输出表 | Null"}},
      {units, {"1 | D1 | 对账单位 | Null"}},
      {reports, {"R1 | 部门费用表 | Null"}},
      {reportItems, {"S1 | 期初余额 | Null"}},
      {reportOptions, {"P1 | 含未记账 | Null"}},
      {reportColumns, {"C1 | Null | Null"}},
      {formats, {"F1 | 金额式 | Null"}}};

  void run2005(bool cover) { ASSERT_TRUE(transfer({{"GL*m_bCoverData", cover}}).success); }
  void expectNewYear(const Year& expected) {
    ASSERT_EQ(expected.size(), 15u);
    for (const Contents& contents : expected) expectRows(opening, contents.query, contents.rows);
  }
};

TEST_F(SettingsScenarioTest, AnEmptyNewYearTakesEverything) {
  run2005(false);
  expectNewYear(carried);
}

// The four guarded tables stay as they were entered; the others are replaced.
TEST_F(SettingsScenarioTest, AConfiguredNewYearWithoutTheSwitch) {
  configureNewYear();
  run2005(false);
  expectNewYear(with(carried, {{definitions, {"2 | 0009 | 1 | 自定 | 1001 | 1 | FS() | 0"}},
                               {multi, {"1 | 制造费用 | 按车间"}},
                               {digests, {"1 | 提现"}},
                               {printing, {"1 | 套打 | 1"}},
                               {outputs, {"2 | O1 | 输出表 | Null"}},
                               {units, {"2 | D1 | 对账单位 | Null"}}}));
}

// Everything is replaced; identity columns go on counting.
TEST_F(SettingsScenarioTest, AConfiguredNewYearWithTheSwitch) {
  configureNewYear();
  run2005(true);
  expectNewYear(with(carried, {{multi, {"2 | 管理费用 | 按部门", "3 | 销售费用 | 按地区"}},
                               {digests, {"2 | 购办公用品", "3 | 付水电费"}},
                               {printing, {"2 | 凭证 | 1", "3 | 账簿 | 0"}},
                               {outputs, {"2 | O1 | 输出表 | Null"}},
                               {units, {"2 | D1 | 对账单位 | Null"}}}));
}

// A digest alone stands in the new year: it guards its own table, and the three empty ones are filled.
TEST_F(SettingsScenarioTest, ANewYearWithOneGuardedTableWithoutTheSwitch) {
  fill(opening, "GL_btext", {"ctext", "提现"});
  run2005(false);
  expectNewYear(with(carried, {{digests, {"1 | 提现"}}}));
}

// A second run without the switch keeps what was changed in the guarded tables since the first, and nothing else.
TEST_F(SettingsScenarioTest, ASecondRunWithoutTheSwitch) {
  run2005(true);
  sql(opening, "update GL_btext set ctext=N'付房租' where id=2 delete from GL_bmulti where i_id=1");
  sql(opening, "update GL_mcodeused set ctext=N'改过' delete from GL_PRN_Format");
  sql(closing, "update GL_mybooktype set ctext=N'多栏账' update GL_cvprintinfset set bprint=1");
  run2005(false);
  expectNewYear(with(carried, {{multi, {"2 | 销售费用 | 按地区"}},
                               {digests, {"1 | 购办公用品", "2 | 付房租"}},
                               {bookTypes, {"B1 | 多栏账 | Null"}},
                               {outputs, {"2 | O1 | 输出表 | Null"}},
                               {units, {"2 | D1 | 对账单位 | Null"}}}));
}

// A second run with the switch makes the new year what the closing year is by then.
TEST_F(SettingsScenarioTest, ASecondRunWithTheSwitch) {
  run2005(true);
  sql(opening, "update GL_btext set ctext=N'付房租' where id=2 delete from GL_bmulti where i_id=1");
  account(opening, "1901");
  run2005(true);
  expectNewYear(
      with(carried, {{definitions,
                      {"1 | 0001 | 1 | 计提 | 5502 | 1 | QM() | 1", "1 | 0001 | 2 | 计提 | 1001 | 0 | JG() | 1",
                       "1 | 0002 | 1 | 摊销 | 1901 | 1 | QM() | 0"}},
                     {multi, {"3 | 管理费用 | 按部门", "4 | 销售费用 | 按地区"}},
                     {digests, {"3 | 购办公用品", "4 | 付水电费"}},
                     {printing, {"3 | 凭证 | 1", "4 | 账簿 | 0"}},
                     {outputs, {"2 | O1 | 输出表 | Null"}},
                     {units, {"2 | D1 | 对账单位 | Null"}}}));
}

// Columns at other positions are lost without a word, table by table; the run goes on.
TEST_F(SettingsScenarioTest, TablesWhoseColumnsStandElsewhere) {
  sql(opening,
      "drop table GL_bmulti create table GL_bmulti(i_id int identity(1,1), ctext nvarchar(60), cname nvarchar(20))");
  sql(opening,
      "drop table GL_DzDwSet create table GL_DzDwSet(cid nvarchar(20), i_id int identity(1,1), ctext nvarchar(60))");
  sql(opening, "drop table GL_PRN_Format create table GL_PRN_Format(cid nvarchar(20), CTEXT nvarchar(60))");
  run2005(true);
  expectNewYear(with(
      carried,
      {{multi, {"1 | Null | Null", "2 | Null | Null"}}, {units, {"Null | 1 | 对账单位"}}, {formats, {"F1 | Null"}}}));
}

}  // namespace
}  // namespace gljz::test
