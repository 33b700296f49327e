#include "verify/opening_balance.h"

#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

// Columns of the report.
enum Column {
  code,
  closingName,
  openingName,
  auxiliaries,
  side,
  amount,
  foreign,
  currency,
  quantity,
  measure,
  verdict
};

class OpeningBalanceTest : public LedgerTest {
protected:
  // First-period balances of the new year, as the stages write them.
  void total(const std::string& ccode, const std::string& direction, const std::string& mb,
             const std::string& cexch_name = "Null", const std::string& mb_f = "0", const std::string& nb_s = "0") {
    fill(opening, "gl_accsum",
         {"ccode | iperiod | cbegind_c | mb | cexch_name | mb_f | nb_s",
          ccode + "|1|" + direction + "|" + mb + "|" + cexch_name + "|" + mb_f + "|" + nb_s});
  }
  // Signed, debit positive.
  void multi(const std::string& ccode, const std::string& mb, const std::string& cexch_name = "Null",
             const std::string& mb_f = "0", const std::string& nb_s = "0", const std::string& ccus_id = "Null",
             const std::string& csup_id = "Null") {
    fill(opening, "gl_accMultiass",
         {"ccode | iperiod | mb | cexch_name | mb_f | nb_s | ccus_id | csup_id",
          ccode + "|1|" + mb + "|" + cexch_name + "|" + mb_f + "|" + nb_s + "|" + ccus_id + "|" + csup_id});
  }
  // A last-level account whose balances lie on departments, in both years.
  void departmentAccount(const std::string& ccode) { account(ccode, {"bdept", "1"}); }

  using Rows = std::vector<std::vector<std::string>>;
  // Runs the verification; the report's rows without their header.
  Rows check() {
    CheckOpeningBalance();
    EXPECT_TRUE(forms().report().has_value());
    report_ = forms().report().value_or(host::ClosingReport{});
    return report_.rows;
  }
  std::string cell(std::size_t row, Column column) {
    return row < report_.rows.size() && static_cast<std::size_t>(column) < report_.rows[row].size()
               ? report_.rows[row][column]
               : "(no such cell)";
  }
  std::vector<std::string> verdicts() {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < report_.rows.size(); ++i) all.push_back(cell(i, verdict));
    return all;
  }
  using Texts = std::vector<std::string>;

  host::ClosingReport report_;
};

TEST_F(OpeningBalanceTest, WithoutAnyBalanceTheReportIsEmptyAndStillShown) {
  EXPECT_EQ(check(), Rows{});
  EXPECT_EQ(report_.right, "0");
  EXPECT_EQ(report_.wrong, "0");
  EXPECT_EQ(forms().shown(), Texts{"frmJZBG"});
  EXPECT_TRUE(frmJZBG().Grid1.rows.empty());  // not laid out
}

TEST_F(OpeningBalanceTest, AMatchedAccountGivesTwoRowsOfWhichOneCounts) {
  departmentAccount("5501");
  total("5501", "借", "100.5");
  multi("5501", "60.5");
  multi("5501", "40");
  EXPECT_EQ(check(), (Rows{{"5501", "科目5501", "科目5501", "部门核算", "借", "100.50", " ", "", "", "", "Y"},
                           {"", "", "", "辅助账合计", "借", "100.50", " ", "", "", "", ""}}));
  EXPECT_EQ(report_.right, "1");
  EXPECT_EQ(report_.wrong, "0");
}

TEST_F(OpeningBalanceTest, HeadersWidthsAndAlignments) {
  struct Keeper final : platform::FormHost {
    void ShowModal(platform::Form& form) override { grid = dynamic_cast<FrmJZBG&>(form).Grid1; }
    void Changed(platform::Form&) override {}
    void DoEvents() override {}
    void ScreenPointer(int) override {}
    std::string ProgramFolder() const override { return ""; }
    Grid grid;
  } keeper;
  account("1001");
  total("1001", "借", "1");
  surroundings_.forms = &keeper;
  CheckOpeningBalance();
  surroundings_.forms = &forms();
  ASSERT_EQ(keeper.grid.rows.size(), 2u);
  EXPECT_EQ(keeper.grid.rows[0], (Texts{"科目编码", "上年科目名称", "本年科目名称", "辅助核算", "方向", "期初余额",
                                        "外币期初", "币种", "数量期初", "计量单位", "核对"}));
  EXPECT_EQ(keeper.grid.columnWidths, (std::vector<int>{800, 1200, 1200, 800, 500, 800, 800, 800, 800, 800, 500}));
  constexpr auto l = Alignment::left, r = Alignment::right, c = Alignment::centred;
  EXPECT_EQ(keeper.grid.alignments, (std::vector<Alignment>{l, l, l, l, l, r, r, l, l, l, c}));
  EXPECT_EQ(keeper.grid.shadeColour, platform::rgb(247, 237, 236));
}

TEST_F(OpeningBalanceTest, AnAuxiliaryBalanceWithoutATotalIsWrong) {
  departmentAccount("5501");
  multi("5501", "12");
  EXPECT_EQ(check(), (Rows{{"5501", "科目5501", "科目5501", "辅助账合计", "借", "12.00", " ", "", "", "", "X"}}));
  EXPECT_EQ(report_.wrong, "1");
}

TEST_F(OpeningBalanceTest, TheLastRowOfTheTableInheritsItsPredecessorsVerdict) {
  account("1001");
  total("1001", "借", "5");  // no auxiliary: right
  departmentAccount("5501");
  total("5501", "借", "7");
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "Y"}));
  EXPECT_EQ(report_.right, "2");
}

TEST_F(OpeningBalanceTest, AnInheritedVerdictMayBeWrongOrEmpty) {
  departmentAccount("5501");
  departmentAccount("5502");
  departmentAccount("5503");
  departmentAccount("5504");
  total("5501", "借", "1");  // the next row is of another account
  total("5502", "借", "2");
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "X"}));

  multi("5501", "1");
  multi("5502", "2");
  total("5503", "借", "7");  // behind the sum of 5502, whose verdict is empty
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "", "Y", "", ""}));
  EXPECT_EQ(report_.right, "2");
  EXPECT_EQ(report_.wrong, "0");
}

TEST_F(OpeningBalanceTest, ATableOfOneRowHasNoVerdict) {
  departmentAccount("5501");
  total("5501", "借", "7");
  check();
  EXPECT_EQ(verdicts(), Texts{""});
  EXPECT_EQ(report_.right, "0");
  EXPECT_EQ(report_.wrong, "0");
}

TEST_F(OpeningBalanceTest, ATotalWithoutAnAuxiliaryBalanceIsWrong) {
  departmentAccount("5501");
  departmentAccount("5502");
  total("5501", "借", "7");
  total("5502", "借", "8");
  multi("5502", "8");
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "Y", ""}));
}

TEST_F(OpeningBalanceTest, ASumOfAnotherAccountIsNotCompared) {
  departmentAccount("5501");
  departmentAccount("5502");
  total("5501", "借", "7");
  multi("5502", "7");
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "X"}));
  EXPECT_EQ(report_.wrong, "2");
}

TEST_F(OpeningBalanceTest, AParentAccountPassesUnchecked) {
  account("55", {"bend", "0", "bdept", "1"});
  departmentAccount("5501");
  total("55", "借", "7");
  total("5501", "借", "7");
  multi("5501", "7");
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "Y", ""}));
}

TEST_F(OpeningBalanceTest, AnAccountWithoutAuxiliariesPassesUnchecked) {
  account("1001");
  account("1002");
  total("1001", "借", "7");
  total("1002", "借", "7");
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "Y"}));
}

TEST_F(OpeningBalanceTest, CustomerAccountsPassUncheckedWhenCustomersWereNotCarried) {
  account("1131", {"bcus", "1"});
  departmentAccount("5501");
  total("1131", "借", "7");
  total("5501", "借", "7");
  multi("5501", "7");
  run.m_bCusPresent = false;
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "Y", ""}));
  run.m_bCusPresent = true;
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "Y", ""}));
}

TEST_F(OpeningBalanceTest, SupplierAccountsPassUncheckedWhenSuppliersWereNotCarried) {
  account("2121", {"bsup", "1"});
  departmentAccount("5501");
  total("2121", "贷", "7");
  total("5501", "借", "7");
  multi("5501", "7");
  run.m_bSupPresent = false;
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "Y", ""}));
  run.m_bSupPresent = true;
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "Y", ""}));
}

TEST_F(OpeningBalanceTest, RowsOfPartnersThatWereNotCarriedDoNotCount) {
  departmentAccount("5501");
  total("5501", "借", "7");
  multi("5501", "7");
  multi("5501", "1", "Null", "0", "0", "C01");
  multi("5501", "2", "Null", "0", "0", "Null", "V01");
  check();
  EXPECT_EQ(cell(1, amount), "10.00");
  run.m_bCusPresent = false;
  check();
  EXPECT_EQ(cell(1, amount), "9.00");
  run.m_bSupPresent = false;
  check();
  EXPECT_EQ(cell(1, amount), "7.00");
  EXPECT_EQ(verdicts(), (Texts{"Y", ""}));
}

TEST_F(OpeningBalanceTest, AmountsThatDifferByACentAreWrong) {
  departmentAccount("5501");
  departmentAccount("5502");
  total("5501", "借", "100.01");
  multi("5501", "100");
  total("5502", "借", "100.0099");
  multi("5502", "100");
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "", "Y", ""}));
}

TEST_F(OpeningBalanceTest, ForeignAmountsThatDifferByACentAreWrong) {
  departmentAccount("5501");
  departmentAccount("5502");
  total("5501", "借", "800", "美元", "100.01");
  multi("5501", "800", "美元", "100");
  total("5502", "借", "800", "美元", "100.0099");
  multi("5502", "800", "美元", "100");
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", "", "Y", ""}));
}

TEST_F(OpeningBalanceTest, QuantitiesMayDifferByLessThanAThousandth) {
  departmentAccount("5501");
  departmentAccount("5502");
  total("5501", "借", "10", "Null", "0", "1.5009");
  multi("5501", "10", "Null", "0", "1.5");
  total("5502", "借", "10", "Null", "0", "1.502");
  multi("5502", "10", "Null", "0", "1.5");
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "", "X", ""}));
}

// Differences that a double holds to the last bit: 1/1024 is too little to count, a thousandth is not.
TEST_F(OpeningBalanceTest, AQuantityThatDiffersByAThousandthIsWrong) {
  const char* quantities[][2] = {
      {"1.0009765625", "1"}, {"0.001", "0"}, {"0.0010000000000000002", "0"}, {"0.00099999999999999980", "0"}};
  int code = 5501;
  for (const auto& [mine, theirs] : quantities) {
    const std::string ccode = std::to_string(code++);
    departmentAccount(ccode);
    total(ccode, "借", "10", "Null", "0", mine);
    multi(ccode, "10", "Null", "0", theirs);
  }
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "", "X", "", "X", "", "Y", ""}));
}

TEST_F(OpeningBalanceTest, ACreditBalanceMatchesANegativeSum) {
  departmentAccount("2121");
  total("2121", "贷", "100", "Null", "0", "3");
  multi("2121", "-100", "Null", "0", "-3");
  EXPECT_EQ(check(), (Rows{{"2121", "科目2121", "科目2121", "部门核算", "贷", "100.00", " ", "", "3", "", "Y"},
                           {"", "", "", "辅助账合计", "贷", "100.00", " ", "", "3", "", ""}}));
}

TEST_F(OpeningBalanceTest, OnlyTheWordForCreditNegates) {
  departmentAccount("5501");
  total("5501", "平", "0", "Null", "5");
  multi("5501", "0", "Null", "5");
  EXPECT_EQ(check(), (Rows{{"5501", "科目5501", "科目5501", "部门核算", "平", " ", "5.00", "", "", "", "Y"},
                           {"", "", "", "辅助账合计", "平", " ", "5.00", "", "", "", ""}}));
}

TEST_F(OpeningBalanceTest, ForeignAmountAndQuantityOfASumAreShownOnItsSide) {
  departmentAccount("5501");
  multi("5501", "-10", "美元", "2", "-1.25");
  check();
  EXPECT_EQ(cell(0, amount), "10.00");
  EXPECT_EQ(cell(0, foreign), "-2.00");
  EXPECT_EQ(cell(0, quantity), "1.25");
  EXPECT_EQ(cell(0, side), "贷");
}

TEST_F(OpeningBalanceTest, ATinyQuantityIsNotShown) {
  account("1001");
  account("1002");
  total("1001", "借", "1", "Null", "0", "0.0000009");
  total("1002", "借", "1", "Null", "0", "0.000001");
  check();
  EXPECT_EQ(cell(0, quantity), "");
  EXPECT_NE(cell(1, quantity), "");
}

TEST_F(OpeningBalanceTest, EachCurrencyOfAnAccountIsItsOwnTotal) {
  departmentAccount("1002");
  total("1002", "借", "800", "美元", "100");
  total("1002", "借", "50", "日元", "5000");
  multi("1002", "800", "美元", "100");
  multi("1002", "50", "日元", "5000");
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "", "Y", ""}));
  EXPECT_EQ(cell(1, currency), "");  // a row that introduces no account shows no currency
  EXPECT_EQ(report_.right, "2");
}

TEST_F(OpeningBalanceTest, ASumInAnotherCurrencyBehindItsAccountIsNotJudged) {
  departmentAccount("1002");
  total("1002", "借", "800", "USD", "100");
  multi("1002", "800", "USD", "100");
  multi("1002", "50", "YEN", "5000");
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", "", ""}));
  EXPECT_EQ(cell(2, code), "");
}

TEST_F(OpeningBalanceTest, TotalsOfOneAccountAndCurrencyComeInTheOrderOfTheirRows) {
  account("1001");
  for (const char* mb : {"3", "1", "2", "9", "4"}) total("1001", "借", mb);
  check();
  Texts amounts;
  for (std::size_t i = 0; i < report_.rows.size(); ++i) amounts.push_back(cell(i, amount));
  EXPECT_EQ(amounts, (Texts{"3.00", "1.00", "2.00", "9.00", "4.00"}));
}

TEST_F(OpeningBalanceTest, SubsystemGFComparesWithTheAuxiliaryTotals) {
  subsystemGF_ = true;
  prepareRun();
  departmentAccount("5501");
  total("5501", "贷", "7", "Null", "0", "2");
  fill(opening, "gl_accass",
       {"ccode | iperiod | cbegind_c | mb | nb_s | ccus_id | csup_id", "5501|1|借|3|0|Null|Null",
        "5501|1|贷|10|2|Null|Null", "5501|1|贷|50|0|C01|Null", "5501|1|贷|60|0|Null|V01"});
  multi("5501", "99");
  run.m_bCusPresent = run.m_bSupPresent = false;
  check();
  EXPECT_EQ(verdicts(), (Texts{"Y", ""}));
  run.m_bCusPresent = true;
  check();
  EXPECT_EQ(cell(1, amount), "57.00");
  run.m_bSupPresent = true;
  check();
  EXPECT_EQ(cell(1, amount), "117.00");
}

TEST_F(OpeningBalanceTest, OtherYearsAndPeriodsAreNotLookedAt) {
  account("1001");
  fill(opening, "gl_accsum",
       {"iyear | ccode | iperiod | cbegind_c | mb", "2007 | 1001 | 1 | 借 | 5", "2006 | 1001 | 2 | 借 | 6"});
  fill(opening, "gl_accMultiass", {"iyear | ccode | iperiod | mb", "2007 | 1001 | 1 | 5", "2006 | 1001 | 2 | 6"});
  EXPECT_EQ(check(), Rows{});
}

TEST_F(OpeningBalanceTest, NamesComeFromBothYears) {
  account(closing, "1001", {"ccode_name", "旧名"});
  account(opening, "1001", {"ccode_name", "新名", "cmeasure", "吨"});
  total("1001", "借", "1", "美元", "2", "0.5");
  EXPECT_EQ(check(), (Rows{{"1001", "旧名", "新名", "", "借", "1.00", "2.00", "美元", "0.5", "吨", "Y"}}));
}

TEST_F(OpeningBalanceTest, AnAccountThatTheClosingYearDoesNotHaveHasNoNameThere) {
  account("1001");
  account(opening, "1002");
  total("1001", "借", "1");
  total("1002", "借", "1");
  check();
  EXPECT_EQ(cell(0, closingName), "科目1001");
  EXPECT_EQ(cell(1, closingName), "");
  EXPECT_EQ(cell(1, openingName), "科目1002");
}

// --- The label of the auxiliary kind: the last one that applies.

class AuxiliaryLabelTest : public OpeningBalanceTest {
protected:
  std::string labelOf(const Columns& columns) {
    account("1001", columns);
    total("1001", "借", "1");
    check();
    return cell(0, auxiliaries);
  }
};

TEST_F(AuxiliaryLabelTest, Nothing) {
  EXPECT_EQ(labelOf({}), "");
}
TEST_F(AuxiliaryLabelTest, Persons) {
  EXPECT_EQ(labelOf({"bperson", "1"}), "个人往来");
}
TEST_F(AuxiliaryLabelTest, Suppliers) {
  EXPECT_EQ(labelOf({"bsup", "1"}), "供应商往来");
}
TEST_F(AuxiliaryLabelTest, Customers) {
  EXPECT_EQ(labelOf({"bcus", "1"}), "客户往来");
}
TEST_F(AuxiliaryLabelTest, CustomersOfDepartments) {
  EXPECT_EQ(labelOf({"bcus", "1", "bdept", "1"}), "客户部门");
}
TEST_F(AuxiliaryLabelTest, SuppliersOfDepartments) {
  EXPECT_EQ(labelOf({"bsup", "1", "bdept", "1"}), "供应商部门");
}
TEST_F(AuxiliaryLabelTest, Items) {
  EXPECT_EQ(labelOf({"bitem", "1", "cass_item", "98"}), "项目核算");
}
TEST_F(AuxiliaryLabelTest, ItemsOfPersons) {
  EXPECT_EQ(labelOf({"bperson", "1", "bitem", "1", "cass_item", "98"}), "个人项目");
}
TEST_F(AuxiliaryLabelTest, ItemsOfCustomers) {
  EXPECT_EQ(labelOf({"bcus", "1", "bitem", "1", "cass_item", "98"}), "客户项目");
}
TEST_F(AuxiliaryLabelTest, ItemsOfSuppliers) {
  EXPECT_EQ(labelOf({"bsup", "1", "bitem", "1", "cass_item", "98"}), "供应商项目");
}
TEST_F(AuxiliaryLabelTest, ItemsOfDepartments) {
  EXPECT_EQ(labelOf({"bdept", "1", "bitem", "1", "cass_item", "98"}), "部门项目");
}
TEST_F(AuxiliaryLabelTest, ItemsOfCustomersOfDepartments) {
  EXPECT_EQ(labelOf({"bcus", "1", "bdept", "1", "bitem", "1", "cass_item", "98"}), "客户部门项目");
}
TEST_F(AuxiliaryLabelTest, ItemsOfSuppliersOfDepartments) {
  EXPECT_EQ(labelOf({"bsup", "1", "bdept", "1", "bitem", "1", "cass_item", "98"}), "供应商部门项目");
}
TEST_F(AuxiliaryLabelTest, AUserDefinedColumnIsAppended) {
  EXPECT_EQ(labelOf({"bdept", "1", "bcDefine7", "1"}), "部门核算（含自定义项）");
}
TEST_F(AuxiliaryLabelTest, TheFourthAndSixthUserDefinedColumnDoNotCount) {
  EXPECT_EQ(labelOf({"bdept", "1", "bcDefine4", "1", "bcDefine6", "1"}), "部门核算");
}

// --- The work table and failures.

TEST_F(OpeningBalanceTest, AWorkTableThatAnEarlierRunLeftIsReplaced) {
  account("1001");
  total("1001", "借", "1");
  sql(opening, "create table tempdb..jztmp (a int)");
  check();
  EXPECT_EQ(verdicts(), Texts{"Y"});
  EXPECT_EQ(text(opening, "select count(*) from tempdb..sysobjects where name='jztmp'"), "0");
}

TEST_F(OpeningBalanceTest, AFailureToDropTheWorkTableIsPassedOver) {
  account("1001");
  total("1001", "借", "1");
  failAt("DROP TABLE tempdb..jztmp");
  check();
  EXPECT_EQ(verdicts(), Texts{"Y"});
}

TEST_F(OpeningBalanceTest, TheWorkTableSurvivesAFailure) {
  account("1001");
  total("1001", "借", "1");
  failAt("select * from tempdb..jztmp");
  EXPECT_THROW(CheckOpeningBalance(), platform::RunTimeError);
  EXPECT_EQ(text(opening, "select count(*) from tempdb..jztmp"), "1");
  EXPECT_FALSE(forms().report().has_value());
  check();  // the next run clears it
  EXPECT_EQ(verdicts(), Texts{"Y"});
}

TEST_F(OpeningBalanceTest, ANullQuantityStopsTheVerification) {
  sql(opening, "drop table gl_accsum");
  sql(opening,
      "create table gl_accsum(iyear int, iperiod int, ccode nvarchar(40), cexch_name nvarchar(8) null, "
      "cbegind_c nvarchar(12), mb money, mb_f money, nb_s float null)");
  account("1001");
  total("1001", "借", "1", "Null", "0", "Null");
  try {
    CheckOpeningBalance();
    ADD_FAILURE() << "a Null was read as a number";
  } catch (const platform::RunTimeError& failure) {
    EXPECT_EQ(failure.number(), platform::RunTimeError::invalidUseOfNull);
  }
  EXPECT_TRUE(forms().shown().empty());
}

TEST_F(OpeningBalanceTest, ANullAmountIsNeverEqualAndShowsNothing) {
  sql(opening, "drop table gl_accsum");
  sql(opening,
      "create table gl_accsum(iyear int, iperiod int, ccode nvarchar(40), cexch_name nvarchar(8) null, "
      "cbegind_c nvarchar(12), mb money, mb_f money null, nb_s float null)");
  departmentAccount("5501");
  total("5501", "借", "1", "Null", "Null");
  multi("5501", "1");
  check();
  EXPECT_EQ(verdicts(), (Texts{"X", ""}));
  EXPECT_EQ(cell(0, foreign), "");
}

TEST_F(OpeningBalanceTest, NoStepOfTheRunIsNamed) {
  run.m_strFuncDesc = "step before";
  run.m_strLastSql = "statement before";
  run.m_strFuncName = "procedure before";
  account("1001");
  total("1001", "借", "1");
  check();
  EXPECT_EQ(run.m_strFuncDesc, "step before");
  EXPECT_EQ(run.m_strLastSql, "statement before");
  EXPECT_EQ(run.m_strFuncName, "procedure before");
}

TEST_F(OpeningBalanceTest, ProgressIsShownInAWatchedRunOnly) {
  account("1001");
  total("1001", "借", "1");
  check();
  EXPECT_FALSE(frmJZSN.isLoaded());
  run.m_bManual = true;
  check();
  ASSERT_TRUE(frmJZSN.isLoaded());
  EXPECT_EQ(frmJZSN().Label3(), "正在核对期初余额 1001");
}

TEST_F(OpeningBalanceTest, AWrongAccountDoesNotChangeTheOutcomeOfTheRun) {
  account("1131", {"bcus", "1"});
  account("1001");
  fill(closing, "gl_accsum",
       {"ccode | iperiod | cendd_c | cendd_c_engl | me", "1001|12|借|Dr|5", "1131|12|借|Dr|7", "1001|12|借|Dr|6"});
  sql(opening, "insert into customer(cCusCode, cCusName) values(N'C01', N'客户')");
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.returned) << outcome.errMsg;
  EXPECT_TRUE(outcome.success);
  EXPECT_EQ(outcome.message, "");
  ASSERT_TRUE(forms().report().has_value());
}

}  // namespace
}  // namespace gljz::test
