#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "dialogs/frm_two.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

using Entries = DoubleList::Entries;

// Shows dialogs as a test wants them answered.
struct Operator final : platform::FormHost {
  std::function<void(platform::Form&)> answer;
  std::vector<std::string> shown;

  void ShowModal(platform::Form& form) override {
    shown.emplace_back(form.Name());
    if (answer) answer(form);
  }
  void Changed(platform::Form&) override {}
  void DoEvents() override {}
  void ScreenPointer(int) override {}
  std::string ProgramFolder() const override { return GLJZ_SOURCE_DIR "/data"; }
};

class AccountSelectionTest : public LedgerTest {
protected:
  AccountSelectionTest() {
    surroundings_.forms = &operator_;
    account("1131", {"bcus", "1", "ccode_name", "应收账款"});
    account("1133", {"bcus", "1", "ccode_name", "其他应收"});
    account("11", {"bcus", "1", "bend", "0"});
    account(opening, "1139", {"bcus", "1"});
    account("2121", {"bsup", "1", "ccode_name", "应付账款"});
  }
  ~AccountSelectionTest() override { surroundings_.forms = &forms(); }

  // Opens frmYeMxSel, does what the operator does, and returns the mode.
  int choose(std::uint8_t type, const std::function<void(FrmYeMxSel&)>& work) {
    operator_.answer = [&](platform::Form& form) { work(dynamic_cast<FrmYeMxSel&>(form)); };
    return ChooseSelectionMode(type);
  }
  int confirm(std::uint8_t type) {
    return choose(type, [](FrmYeMxSel& form) { form.cmdOK_Click(); });
  }
  void expectStored(const std::vector<std::string>& expected) {
    expectRows(opening, "select iCusSupType, ccode, iYeMxType from GL_YeMxSel order by iid", expected);
  }

  static constexpr auto customers = FrmYeMxSel::customers, suppliers = FrmYeMxSel::suppliers;
  Operator operator_;
};

TEST_F(AccountSelectionTest, WithoutAStoredChoiceAllAccountsAreOfferedByBalance) {
  choose(customers, [](FrmYeMxSel& form) {
    EXPECT_EQ(form.CtlSelList1.left(), (Entries{"1131 应收账款", "1133 其他应收"}));
    EXPECT_EQ(form.CtlSelList1.right(), Entries{});
    form.cmdOK_Click();
  });
  choose(suppliers, [](FrmYeMxSel& form) {
    EXPECT_EQ(form.CtlSelList1.left(), Entries{"2121 应付账款"});
    form.cmdOK_Click();
  });
}

TEST_F(AccountSelectionTest, OnlyTheLeftListIsAllByBalance) {
  EXPECT_EQ(confirm(customers), 1);
  expectStored({"1 | 1131 | 1", "1 | 1133 | 1"});
}

TEST_F(AccountSelectionTest, OnlyTheRightListIsAllByDetail) {
  EXPECT_EQ(choose(customers,
                   [](FrmYeMxSel& form) {
                     form.CtlSelList1.moveAllRight();
                     form.cmdOK_Click();
                   }),
            2);
  expectStored({"1 | 1131 | 2", "1 | 1133 | 2"});
}

TEST_F(AccountSelectionTest, BothListsAreByAccount) {
  EXPECT_EQ(choose(customers,
                   [](FrmYeMxSel& form) {
                     form.CtlSelList1.moveRight(0);
                     form.cmdOK_Click();
                   }),
            3);
  expectStored({"1 | 1133 | 1", "1 | 1131 | 2"});
}

TEST_F(AccountSelectionTest, NeitherListIsAllByDetailAndStoresNothing) {
  sql(closing, "update code set bcus=0");
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'9999', 1)");
  EXPECT_EQ(confirm(customers), 2);
  expectStored({});
}

TEST_F(AccountSelectionTest, AnythingButCustomersMeansSuppliers) {
  EXPECT_EQ(confirm(7), 1);
  expectStored({"2 | 2121 | 1"});
}

TEST_F(AccountSelectionTest, ReopeningShowsTheEarlierChoice) {
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1133', 2)");
  EXPECT_EQ(choose(customers,
                   [](FrmYeMxSel& form) {
                     EXPECT_EQ(form.CtlSelList1.left(), Entries{});
                     EXPECT_EQ(form.CtlSelList1.right(), Entries{"1133 其他应收"});
                     form.cmdOK_Click();
                   }),
            2);
  expectStored({"1 | 1133 | 2"});
}

TEST_F(AccountSelectionTest, AStoredAccountThatTheClosingYearLacksIsDroppedInSilence) {
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1139', 1)");
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1131', 2)");
  choose(customers, [](FrmYeMxSel& form) {
    EXPECT_EQ(form.CtlSelList1.left(), Entries{});
    EXPECT_EQ(form.CtlSelList1.right(), Entries{"1131 应收账款"});
    form.cmdOK_Click();
  });
  expectStored({"1 | 1131 | 2"});
}

TEST_F(AccountSelectionTest, EachKindKeepsItsRowsWhenTheOtherIsConfirmed) {
  EXPECT_EQ(confirm(customers), 1);
  EXPECT_EQ(confirm(suppliers), 1);
  expectStored({"1 | 1131 | 1", "1 | 1133 | 1", "2 | 2121 | 1"});
  confirm(customers);
  expectStored({"2 | 2121 | 1", "1 | 1131 | 1", "1 | 1133 | 1"});
}

TEST_F(AccountSelectionTest, RefreshOffersAllAccountsByBalanceAgain) {
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1133', 2)");
  choose(customers, [](FrmYeMxSel& form) {
    form.cmdRefresh_Click();
    EXPECT_EQ(form.CtlSelList1.left(), (Entries{"1131 应收账款", "1133 其他应收"}));
    EXPECT_EQ(form.CtlSelList1.right(), Entries{});
    form.cmdOK_Click();
  });
}

TEST_F(AccountSelectionTest, TheCloseBoxActsAsOkAndIsCancelled) {
  EXPECT_EQ(choose(customers,
                   [](FrmYeMxSel& form) {
                     EXPECT_TRUE(form.Form_QueryUnload());
                     EXPECT_FALSE(form.visible());
                     EXPECT_FALSE(form.Form_QueryUnload());  // hidden: closes
                   }),
            1);
  expectStored({"1 | 1131 | 1", "1 | 1133 | 1"});
}

TEST_F(AccountSelectionTest, CaptionsNameTheKind) {
  choose(customers, [](FrmYeMxSel& form) {
    EXPECT_EQ(form.Frame1.Caption, "请选择客户往来科目的结转方式");
    EXPECT_EQ(form.Label1.Caption, "按余额结转科目：");
    EXPECT_EQ(form.Label2.Caption, "按明细结转科目：");
    EXPECT_EQ(form.lblNote.Caption,
              GetResString("Orvo.GL.TqGLJZ.Orvo90.00001") + "\r\n\r\n" + GetResString("Orvo.GL.TqGLJZ.Orvo90.00002"));
    form.cmdOK_Click();
  });
  choose(suppliers, [](FrmYeMxSel& form) {
    EXPECT_EQ(form.Frame1.Caption, "请选择供应商往来科目的结转方式");
    form.cmdOK_Click();
  });
}

TEST_F(AccountSelectionTest, TheButtonsOfTheConditionsSetTheModes) {
  FrmTranCond& conditions = frmTranCond();
  operator_.answer = [](platform::Form& form) {
    auto& division = dynamic_cast<FrmYeMxSel&>(form);
    if (division.iType == FrmYeMxSel::customers) division.CtlSelList1.moveRight(0);
    division.cmdOK_Click();
  };
  conditions.cmdCustomerTran_Click();
  conditions.cmdSupTran_Click();
  EXPECT_EQ(run.m_iCusMode, 3);
  EXPECT_EQ(run.m_iSupMode, 1);
  EXPECT_EQ(operator_.shown, (std::vector<std::string>{"frmYeMxSel", "frmYeMxSel"}));
}

// --- frmSyKmSel

class ClearingSelectionTest : public AccountSelectionTest {
protected:
  ClearingSelectionTest() {
    for (const char* code : {"5101", "5501", "5601"})
      account(code, {"cclass", "损益", "igrade", "1", "ccode_name", std::string("损益") + code});
    account("510101", {"cclass", "损益", "igrade", "2"});
    account("1001", {"cclass", "资产", "igrade", "1"});
  }
  void closingBalance(const std::string& ccode, const std::string& me) {
    fill(closing, "gl_accsum", {"ccode | iperiod | me", ccode + "|12|" + me});
  }
  void openingBalance(const std::string& ccode, const std::string& mb, int year = 2006) {
    fill(opening, "gl_accsum", {"iyear | ccode | iperiod | mb", std::to_string(year) + "|" + ccode + "|1|" + mb});
  }
};

TEST_F(ClearingSelectionTest, OffersProfitAndLossAccountsWithAClosingBalanceInThemselvesOrBelow) {
  closingBalance("510101", "7");
  closingBalance("5501", "-3");
  closingBalance("5601", "0");
  closingBalance("1001", "9");
  GetSyKmList();
  EXPECT_EQ(frmSyKmSel().CtlSelList1.left(), (Entries{"5101 损益5101", "5501 损益5501"}));
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right(), Entries{});
  EXPECT_EQ(operator_.shown, std::vector<std::string>{"frmSyKmSel"});
}

TEST_F(ClearingSelectionTest, WithoutAClosingBalanceItIsShownAsItsLoadEventFilledIt) {
  openingBalance("5601", "1");
  GetSyKmList();
  EXPECT_EQ(frmSyKmSel().CtlSelList1.left(), Entries{"5601 损益5601"});
  EXPECT_EQ(operator_.shown, std::vector<std::string>{"frmSyKmSel"});
}

TEST_F(ClearingSelectionTest, LoadedByItselfItOffersOpeningBalancesOfEveryYear) {
  closingBalance("5101", "7");
  openingBalance("510101", "1", 2007);
  openingBalance("1001", "1");
  EXPECT_EQ(frmSyKmSel().CtlSelList1.left(), Entries{"5101 损益5101"});
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right(), Entries{});
  EXPECT_TRUE(operator_.shown.empty());
}

TEST_F(ClearingSelectionTest, OkKeepsTheChoiceInTheDialogsRightList) {
  closingBalance("5501", "3");
  operator_.answer = [](platform::Form& form) {
    auto& dialog = dynamic_cast<FrmSyKmSel&>(form);
    dialog.CtlSelList1.moveAllRight();
    dialog.cmdOK_Click();
    EXPECT_FALSE(dialog.visible());
  };
  frmTranCond().cmdSyKmSel_Click();
  EXPECT_TRUE(frmSyKmSel.isLoaded());
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right(), Entries{"5501 损益5501"});
}

TEST_F(ClearingSelectionTest, ReopeningWithAnOfferForgetsTheChoiceAndWithoutOneKeepsIt) {
  closingBalance("5501", "3");
  operator_.answer = [](platform::Form& form) { dynamic_cast<FrmSyKmSel&>(form).CtlSelList1.moveAllRight(); };
  GetSyKmList();
  operator_.answer = nullptr;
  GetSyKmList();
  EXPECT_EQ(frmSyKmSel().CtlSelList1.left(), Entries{"5501 损益5501"});
  frmSyKmSel().CtlSelList1.moveAllRight();
  sql(closing, "delete from gl_accsum");
  GetSyKmList();
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right(), Entries{"5501 损益5501"});
}

// --- The double list and frmTwo

TEST(DoubleListTest, MovedEntriesBecomeTheLastOfTheOtherList) {
  DoubleList list;
  for (const char* entry : {"1 a", "2 b", "3 c"}) list.addLeft(entry);
  list.moveRight(2);
  list.moveRight(0);
  EXPECT_EQ(list.left(), Entries{"2 b"});
  EXPECT_EQ(list.right(), (Entries{"3 c", "1 a"}));
  list.moveLeft(0);
  EXPECT_EQ(list.left(), (Entries{"2 b", "3 c"}));
  list.moveAllRight();
  EXPECT_EQ(list.right(), (Entries{"1 a", "2 b", "3 c"}));
  list.moveAllLeft();
  EXPECT_EQ(list.right(), Entries{});
  EXPECT_THROW(list.moveLeft(0), std::out_of_range);
}

TEST(DoubleListTest, TheCodeOfAnEntryStandsBeforeItsFirstBlank) {
  EXPECT_EQ(accountEntry("1131", "应收 账款"), "1131 应收 账款");
  EXPECT_EQ(accountOf("1131 应收 账款"), "1131");
}

class TwoChoiceTest : public LedgerTest {
protected:
  ~TwoChoiceTest() override { frmTwo.unload(); }
};

TEST_F(TwoChoiceTest, TheNoteStandsInCaptionAndToolTip) {
  const std::string note =
      GetResString("Orvo.GL.TqGLJZ.Orvo90.00001") + "\r\n\r\n" + GetResString("Orvo.GL.TqGLJZ.Orvo90.00002");
  EXPECT_EQ(frmTwo().lblNote.Caption, note);
  EXPECT_EQ(frmTwo().lblNote.ToolTipText, note);
  EXPECT_EQ(frmTwo().answer, 0);
}

TEST_F(TwoChoiceTest, EachButtonIsAnAnswerAndHidesTheDialog) {
  Operator person;
  surroundings_.forms = &person;
  person.answer = [](platform::Form& form) { dynamic_cast<FrmTwo&>(form).Command1_Click(); };
  frmTwo().ShowModal();
  EXPECT_EQ(frmTwo().answer, 1);
  person.answer = [](platform::Form& form) {
    auto& dialog = dynamic_cast<FrmTwo&>(form);
    EXPECT_TRUE(dialog.visible());
    dialog.Command2_Click();
    EXPECT_FALSE(dialog.visible());
  };
  frmTwo().ShowModal();
  EXPECT_EQ(frmTwo().answer, 2);
  surroundings_.forms = &forms();
}

}  // namespace
}  // namespace gljz::test
