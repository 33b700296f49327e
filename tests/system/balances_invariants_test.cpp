// What holds for the balances of any account set: whole runs over generated ones.

#include <algorithm>
#include <tuple>

#include "host/generate.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

using Lines = std::vector<std::string>;

const char* const periods = ",iperiod";
const char* const totalKeys = "iyear,ccode,cexch_name";
const char* const auxiliaryKeys = "iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class";
const char* const multiKeys =
    "iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname,cDefine1,cDefine2,cDefine3,"
    "cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,"
    "cDefine16";
const char* const directions = ",cbegind_c,cbegind_c_engl,cendd_c,cendd_c_engl";
const char* const amounts = ",mb,me,mb_f,me_f,nb_s,ne_s,md,mc,md_f,mc_f,nd_s,nc_s";
const char* const balanceTables[] = {"gl_accsum", "gl_accass", "gl_accMultiass"};

// Size and seed of an account set.
using Generated = std::tuple<host::GeneratedSize, std::uint64_t>;

class BalancesInvariantsTest : public LedgerTest, public ::testing::WithParamInterface<Generated> {
protected:
  BalancesInvariantsTest() : LedgerTest(Layout::unmade) {
    const auto& [size, seed] = GetParam();
    host::generateAccountSet(server(), "001", closing.year, opening.year, size, seed);
  }

  void run2006() {
    const Outcome outcome = transfer();
    ASSERT_TRUE(outcome.success) << outcome.errMsg;
  }

  // All columns but the identity, in an order that does not hang on it.
  Lines sorted(const std::string& table, const std::string& where) {
    std::string columns;
    for (const std::string& column :
         rows(opening, "select name from syscolumns where id=object_id(N'" + table + "') order by colid"))
      if (!platform::equalsIgnoreCase(column, "i_id")) columns += (columns.empty() ? "" : ",") + column;
    Lines found = rows(opening, "select " + columns + " from " + table + " where " + where);
    std::sort(found.begin(), found.end());
    return found;
  }

  // In every group that is equal in all but the period, each period stands equally often; and the opening is the
  // closing in each row.
  void expectTwelveEqualPeriods(const std::string& table, const std::string& keys, const std::string& columns) {
    const std::string group = keys + columns;
    const Lines groups = rows(opening, "select " + group + " from " + table + " where iyear=2006 group by " + group);
    EXPECT_FALSE(groups.empty()) << table;
    const std::string counted = "select count(*) as n,min(iperiod) as first,max(iperiod) as last from " + table +
                                " where iyear=2006 group by " + group;
    EXPECT_EQ(rows(opening, "select x.n from (" + counted + ") x where x.n%12<>0 or x.first<>1 or x.last<>12"), Lines{})
        << table;
    const std::string ofPeriod = "select count(*) as n from " + table + " where iyear=2006 group by " + group + periods;
    EXPECT_EQ(rows(opening, "select x.n from (" + ofPeriod + ") x where x.n<>1"), Lines{}) << table;
    EXPECT_EQ(
        rows(opening, "select ccode from " + table + " where iyear=2006 and (mb<>me or mb_f<>me_f or nb_s<>ne_s)"),
        Lines{})
        << table;
  }

  // Signed totals of accounts, debit positive.
  Lines signedTotals(const Side& side, const std::string& word, const std::string& amount, int period,
                     const std::string& accounts) {
    return rows(side, "select s.ccode,sum(case when s." + word + "='贷' then -s." + amount + " else s." + amount +
                          " end) from gl_accsum s inner join code c on s.ccode=c.ccode and s.iyear=c.iyear where "
                          "s.iyear=" +
                          std::to_string(side.year) + " and s.iperiod=" + std::to_string(period) + " and s.me<>0 and " +
                          accounts + " group by s.ccode order by s.ccode");
  }

  void everyBalanceStandsTwelveTimes() {
    expectTwelveEqualPeriods("gl_accsum", totalKeys, std::string(directions) + amounts);
    expectTwelveEqualPeriods("gl_accass", auxiliaryKeys, std::string(directions) + amounts);
    expectTwelveEqualPeriods("gl_accMultiass", multiKeys, amounts);
  }

  void everyLastLevelAccountOpensAsItClosed() {
    const Lines closed = signedTotals(closing, "cendd_c", "me", 12, "c.bend=1");
    EXPECT_FALSE(closed.empty());
    EXPECT_EQ(signedTotals(opening, "cbegind_c", "mb", 1, "c.bend=1"), closed);
  }

  void auxiliariesOpenAsTheyClosed() {
    const std::string multi = ",sum(me) from gl_accMultiass where iperiod=12 and me<>0 and iyear=";
    const std::string keys = "ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cDefine1";
    const Lines closed = rows(closing, "select " + keys + multi + "2005 group by " + keys + " order by " + keys);
    EXPECT_FALSE(closed.empty());
    EXPECT_EQ(rows(opening, "select " + keys + multi + "2006 group by " + keys + " order by " + keys), closed);
  }

  void parentsAreTheSignedSumsOfTheirLastLevelAccounts() {
    const std::string balance = "sum(case when s.cendd_c='贷' then -s.me else s.me end)";
    const Lines ofParents = rows(
        opening, "select p.ccode,s.iperiod," + balance +
                     " from code p inner join gl_accsum s on s.ccode=p.ccode and s.iyear=p.iyear where p.bend=0 and "
                     "p.iyear=2006 group by p.ccode,s.iperiod order by p.ccode,s.iperiod");
    EXPECT_FALSE(ofParents.empty());
    EXPECT_EQ(rows(opening, "select p.ccode,s.iperiod," + balance +
                                " from code p inner join code c on c.ccode like p.ccode+'%' and c.iyear=p.iyear and "
                                "c.bend=1 inner join gl_accsum s on s.ccode=c.ccode and s.iyear=c.iyear where p.bend=0 "
                                "and p.iyear=2006 group by p.ccode,s.iperiod order by p.ccode,s.iperiod"),
              ofParents);
  }
};

// One run for all looks, as making an account set takes most of the time.
TEST_P(BalancesInvariantsTest, TheNewYearOpensAsTheClosingYearClosed) {
  run2006();
  everyBalanceStandsTwelveTimes();
  everyLastLevelAccountOpensAsItClosed();
  auxiliariesOpenAsTheyClosed();
  parentsAreTheSignedSumsOfTheirLastLevelAccounts();
}

TEST_P(BalancesInvariantsTest, OtherYearsStayAndASecondRunGivesTheSameRows) {
  const std::string ccode = text(closing, "select top 1 ccode from gl_accass order by ccode");
  for (const std::string year : {"2004", "2007"}) {
    fill(opening, "code", {"iyear | ccode | ccode_name | bend", year + "|" + ccode + "|科目|1"});
    for (const std::string table : balanceTables)
      fill(opening, table, {"iyear | ccode | iperiod | me", year + "|" + ccode + "|12|5", year + "|" + ccode + "|3|7"});
    fill(opening, "gl_accvouch",
         {"iyear | iperiod | inid | dbill_date | ccode | md", year + "|0|1|2004-12-31|" + ccode + "|5"});
    fill(opening, "GL_QcUserDef", {"iyear | ccode | cdefine1 | mb", year + "|" + ccode + "|甲|5"});
  }
  const auto others = [&] {
    std::vector<Lines> all;
    for (const std::string table : {"gl_accsum", "gl_accass", "gl_accMultiass", "gl_accvouch", "GL_QcUserDef"})
      all.push_back(sorted(table, "iyear<>2006"));
    return all;
  };
  const std::vector<Lines> before = others();
  EXPECT_EQ(before[0].size(), 4u);
  run2006();
  EXPECT_EQ(others(), before);
  const auto carried = [&] {
    std::vector<Lines> all;
    for (const std::string table : {"gl_accsum", "gl_accass", "gl_accMultiass", "gl_accvouch", "GL_QcUserDef"})
      all.push_back(sorted(table, "iyear=2006"));
    return all;
  };
  const std::vector<Lines> first = carried();
  for (const Lines& table : first) EXPECT_FALSE(table.empty());
  run2006();
  EXPECT_EQ(carried(), first);
  EXPECT_EQ(others(), before);
}

INSTANTIATE_TEST_SUITE_P(Sets, BalancesInvariantsTest,
                         ::testing::Values(Generated{{20, 20, 0, 0}, 1}, Generated{{60, 40, 30, 10}, 2},
                                           Generated{{150, 110, 60, 20}, 3}),
                         [](const auto& tested) { return "Seed" + std::to_string(std::get<1>(tested.param)); });

}  // namespace
}  // namespace gljz::test
