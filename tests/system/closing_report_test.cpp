#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_nbalance.h"
#include "driver/progress.h"
#include "host/format_database.h"
#include "host/print/page_print.h"
#include "host/resources.h"
#include "host/services.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

using platform::RunTimeError;
using platform::Value;
using Texts = std::vector<std::string>;

struct PrintSpy final : platform::PrintControl {
  int Print(const Job& job) override {
    jobs.push_back(job);
    if (job.grid) grids.push_back(*job.grid);
    return answer;
  }
  std::vector<Job> jobs;
  std::vector<std::vector<std::vector<std::string>>> grids;
  int answer = 0;
};

class ClosingReportTest : public LedgerTest {
protected:
  ClosingReportTest() {
    surroundings_.newServices = [this] {
      return host::makeServices({[] { return embedded::makeConnection(); }, nullptr,
                                 std::make_shared<host::Messages>(language_), language_, operatorName_,
                                 folder_.file("format.db")});
    };
    surroundings_.print = &print_;
    prepareRun();
    option("cCompanyName", "青石商贸", "AA");
  }
  // The single row of a table of the format database, cells joined by '|'.
  std::string printed(const char* table) {
    const auto rows = pubCls().FormatDb().OpenTable(table);
    std::string text;
    for (std::size_t i = 0; i < rows->FieldCount(); ++i) text += (i == 0 ? "" : "|") + rows->Field(i).asText();
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    return text;
  }
  void reject(const std::string& row) {
    SetupImbalanceGrid(4);
    AddImbalanceRow(row);
  }

  host::test::TemporaryFolder folder_;
  PrintSpy print_;
};

TEST_F(ClosingReportTest, CaptionsOfTheReport) {
  const FrmJZBG& form = frmJZBG();
  EXPECT_EQ(form.Caption, "结转报告");
  EXPECT_EQ(form.Label1.Caption, "正确结转科目数：");
  EXPECT_EQ(form.Label3.Caption, "错误结转科目数：");
  EXPECT_EQ(form.Command1.Caption, "无对应记录");
  EXPECT_EQ(form.command2.Caption, "打印");
  EXPECT_EQ(form.Command3.Caption, "确认");
  EXPECT_EQ(form.Grid1.shadeColour, platform::rgb(247, 237, 236));
  EXPECT_EQ(form.Grid1.borderStyle, 0);
}

TEST_F(ClosingReportTest, TheCountsAreEmptyUntilTheyAreCounted) {
  EXPECT_EQ(frmJZBG().Label2.Caption, "");
  EXPECT_EQ(frmJZBG().Label4.Caption, "");
}

TEST_F(ClosingReportTest, ConfirmingClosesTheReport) {
  frmJZBG().Command3_Click();
  EXPECT_FALSE(frmJZBG.isLoaded());
}

TEST_F(ClosingReportTest, TheReportShowsWhatHasNoCounterpart) {
  reject("a\tb\tc\td");
  frmJZBG().Command1_Click();
  EXPECT_EQ(forms().shown(), Texts{"frmNBalance"});
  EXPECT_EQ(frmNBalance().Caption, "无对应记录");
  EXPECT_FALSE(frmNBalance().Command1.Visible);
  EXPECT_EQ(frmNBalance().Command2.Caption, "关闭");
  EXPECT_FALSE(frmNBalance().continueChosen);
  EXPECT_EQ(notCarried(), Texts{"a|b|c|d"});
}

TEST_F(ClosingReportTest, WithoutRejectedRowsAnEmptyGridOpensAndPrintingDoesNothing) {
  frmJZBG().Command1_Click();
  EXPECT_TRUE(frmNBalance().Grid1.rows.empty());
  frmNBalance().Command3_Click();
  SetupImbalanceGrid(4);  // a header row alone is nothing, too
  frmNBalance().Command3_Click();
  EXPECT_TRUE(print_.jobs.empty());
}

TEST_F(ClosingReportTest, GoingOnAndGivingUpHideTheImbalances) {
  struct Presser final : platform::FormHost {
    std::function<void(FrmNBalance&)> press;
    void ShowModal(platform::Form& form) override { press(dynamic_cast<FrmNBalance&>(form)); }
    void Changed(platform::Form&) override {}
    void DoEvents() override {}
    void ScreenPointer(int) override {}
    std::string ProgramFolder() const override { return ""; }
  } presser;
  surroundings_.forms = &presser;
  presser.press = [](FrmNBalance& form) {
    form.Command1_Click();
    EXPECT_FALSE(form.visible());
  };
  frmNBalance().ShowModal();
  EXPECT_TRUE(frmNBalance().continueChosen);
  presser.press = [](FrmNBalance& form) {
    form.Command2_Click();
    EXPECT_FALSE(form.visible());
  };
  frmNBalance().ShowModal();
  EXPECT_FALSE(frmNBalance().continueChosen);

  frmNBalance().continueChosen = true;
  presser.press = [](FrmNBalance& form) { EXPECT_TRUE(form.Form_QueryUnload()); };
  frmNBalance().ShowModal();
  EXPECT_FALSE(frmNBalance().continueChosen);
  EXPECT_TRUE(frmNBalance.isLoaded());  // hidden, not destroyed
  EXPECT_FALSE(frmNBalance().Form_QueryUnload());
  surroundings_.forms = &forms();
}

TEST_F(ClosingReportTest, ImbalanceGridsByKind) {
  SetupImbalanceGrid(4);
  EXPECT_EQ(frmNBalance().Grid1.columnWidths, (std::vector<int>{800, 800, 800, 2200}));
  SetupImbalanceGrid(5);  // no such kind
  EXPECT_EQ(frmNBalance().Grid1.columnWidths.size(), 4u);
  SetupImbalanceGrid(6);
  EXPECT_EQ(frmNBalance().Grid1.columnWidths, (std::vector<int>{800, 800, 800, 600, 1200, 1200}));
  AddImbalanceRow("x");
  SetupImbalanceGrid(7);
  EXPECT_EQ(frmNBalance().Grid1.columnWidths, (std::vector<int>{800, 800, 800, 800, 600, 1200, 1200}));
  EXPECT_EQ(frmNBalance().Grid1.rows.size(), 1u);
}

TEST_F(ClosingReportTest, PrintingTheReportFillsHeadAndFoot) {
  frmJZBG().Label2.Caption = "12";
  frmJZBG().Label4.Caption = "3";
  frmJZBG().Grid1.rows = {{"h"}, {"1001"}};
  frmJZBG().command2_Click();
  EXPECT_EQ(printed("ZPDJ_Head"),
            "上年余额结转报告（2005年结转至2006年）||||正确结转科目数：12    错误结转科目数：3||新年度期初余额核对");
  EXPECT_EQ(printed("ZPDJ_Tail"), "|||核算单位：青石商贸|制表人：赵六|打印日期：2006.01.10");
}

TEST_F(ClosingReportTest, PrintingTheImbalancesFillsHeadAndFoot) {
  reject("a\tb\tc\td");
  frmNBalance().Command3_Click();
  EXPECT_EQ(printed("ZPDJ_Head"), "无对应记录（2005年结转至2006年）||||||未结转的记录及原因");
  EXPECT_EQ(printed("ZPDJ_Tail"), "|||核算单位：青石商贸|制表人：赵六|打印日期：2006.01.10");
  ASSERT_EQ(print_.grids.size(), 1u);
  EXPECT_EQ(print_.grids[0].size(), 2u);
}

TEST_F(ClosingReportTest, ThePrintControlGetsLayoutsTablesAndTheGridAsItStands) {
  frmJZBG().Grid1.rows = {{"h", "i"}, {"1001", "x"}};
  frmJZBG().Grid1.columnWidths = {800, 500};
  frmJZBG().Grid1.alignments = {Alignment::right, Alignment::centred};
  frmJZBG().command2_Click();
  ASSERT_EQ(print_.jobs.size(), 1u);
  const auto& job = print_.jobs[0];
  EXPECT_EQ(job.owner, &frmJZBG());
  EXPECT_EQ(job.formatDatabase, folder_.file("format.db"));
  EXPECT_EQ(job.headLayout, forms().ProgramFolder() + "/glrep/zh-CN/dzerru.rep");
  EXPECT_EQ(job.footLayout, forms().ProgramFolder() + "/glrep/zh-CN/dzerrd.rep");
  EXPECT_EQ(job.headTable, "ZPDJ_Head");
  EXPECT_EQ(job.footTable, "ZPDJ_Tail");
  EXPECT_EQ(print_.grids[0], frmJZBG().Grid1.rows);
  EXPECT_EQ(job.columnWidths, (std::vector<int>{800, 500}));
  EXPECT_EQ(job.alignments, (std::vector<int>{1, 2}));
  EXPECT_EQ(job.settings.first, 9);
  EXPECT_EQ(job.settings.second, 1);
  EXPECT_EQ(job.settings.third, false);
  EXPECT_EQ(job.settings.fourth, 1);
  EXPECT_EQ(job.settings.fifth, 30);
  EXPECT_EQ(job.settings.sixth, true);
}

TEST_F(ClosingReportTest, ASecondPrintReplacesTheFirst) {
  frmJZBG().Label2.Caption = "1";
  frmJZBG().command2_Click();
  frmJZBG().Label2.Caption = "2";
  frmJZBG().command2_Click();
  EXPECT_NE(printed("ZPDJ_Head").find("正确结转科目数：2 "), std::string::npos);
}

// Prompts that would be shown if a run ever allowed them.
class PrintPromptTest : public ClosingReportTest {
protected:
  std::vector<std::string> promptsAfter(int answer) {
    print_.answer = answer;
    run.m_bManual = run.m_bCancelable = true;
    auto journal = std::make_shared<host::Journal>();
    run.m_pubCls = host::makeServices({[] { return embedded::makeConnection(); }, journal,
                                       std::make_shared<host::Messages>(language_), language_, operatorName_,
                                       folder_.file("format.db")});
    run.m_pubCls->SetYear(2006);
    run.m_pubCls->InitServices(
        {}, host::connectionText(opening.database, host::parseServer("embedded:" + server()->folder())), "001", 2006,
        {}, {});
    frmJZBG().command2_Click();
    std::vector<std::string> texts;
    for (const auto& prompt : journal->prompts()) texts.push_back(prompt.text);
    return texts;
  }
};

TEST_F(PrintPromptTest, AnErrorOfThePrintControlIsTold) {
  EXPECT_EQ(promptsAfter(17), Texts{"Error No:17"});
}

TEST_F(PrintPromptTest, DoneAndLeftAreNoErrors) {
  EXPECT_EQ(promptsAfter(0), Texts{});
  EXPECT_EQ(promptsAfter(1003), Texts{});
}

TEST_F(ClosingReportTest, WithoutAPrintServicePrintingFails) {
  surroundings_.print = nullptr;
  EXPECT_THROW(frmJZBG().command2_Click(), RunTimeError);
}

// The reference print control behind the dialogs' buttons, with the program's own layouts.
class PagePrintTest : public ClosingReportTest {
protected:
  struct Forms final : platform::FormHost {
    std::string folder;
    void ShowModal(platform::Form&) override {}
    void Changed(platform::Form&) override {}
    void DoEvents() override {}
    void ScreenPointer(int) override {}
    std::string ProgramFolder() const override { return folder; }
  };
  PagePrintTest() {
    for (const host::Resource& resource : host::resourcesUnder("glrep/")) {
      const std::filesystem::path path = folder_.file(std::string(resource.name));
      std::filesystem::create_directories(path.parent_path());
      std::ofstream(path, std::ios::binary) << resource.text;
    }
    shown_.folder = folder_.text();
    surroundings_.forms = &shown_;
    surroundings_.print = &pages_;
    pages_.printTo(folder_.file("page.txt"));
  }
  ~PagePrintTest() override { surroundings_.forms = &forms(); }
  std::string page() const {
    std::ifstream in(folder_.file("page.txt"), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  Forms shown_;
  host::PagePrint pages_{"zh-CN"};
};

TEST_F(PagePrintTest, APageHasHeadGridAndFoot) {
  frmJZBG().Label2.Caption = "1";
  frmJZBG().Label4.Caption = "0";
  frmJZBG().Grid1.rows = {{"科目", "金额"}, {"1001", "5.00"}, {"100201", "12.50"}};
  frmJZBG().Grid1.alignments = {Alignment::left, Alignment::right};
  frmJZBG().command2_Click();
  EXPECT_EQ(pages_.failure(), "");
  EXPECT_EQ(page(),
            "                    上年余额结转报告（2005年结转至2006年）\n"
            "新年度期初余额核对                      正确结转科目数：1    错误结转科目数：0\n"
            "\n"
            "科目     金额\n"
            "------  -----\n"
            "1001     5.00\n"
            "100201  12.50\n"
            "\n"
            "------------------------------------------------------------------------------\n"
            "核算单位：青石商贸                                            第 1 页，共 1 页\n"
            "制表人：赵六                                              打印日期：2006.01.10\n");
}

TEST_F(PagePrintTest, EachLanguageHasItsLayouts) {
  for (const std::string& language : host::Messages::languages()) {
    language_ = language;
    prepareRun();
    frmJZBG().Grid1.rows = {{"h"}, {"1001"}};
    frmJZBG().command2_Click();
    EXPECT_EQ(pages_.failure(), "") << language;
    EXPECT_NE(page().find("1001"), std::string::npos);
    EXPECT_EQ(page().find("Page 1 of 1") != std::string::npos, language == "en-US") << page();
    EXPECT_EQ(page().find("第 1 頁，共 1 頁") != std::string::npos, language == "zh-TW") << page();
  }
}

TEST_F(PagePrintTest, ABadLayoutIsAnErrorNumberOfTheControl) {
  std::ofstream(folder_.file("glrep/zh-CN/dzerrd.rep"), std::ios::binary) << "row\ntxt \"{P4}\"\n";
  frmJZBG().Grid1.rows = {{"h"}, {"1001"}};
  frmJZBG().command2_Click();
  EXPECT_EQ(pages_.failure(), shown_.folder + "/glrep/zh-CN/dzerrd.rep:2: \"txt\" is no directive");
  EXPECT_FALSE(std::filesystem::exists(folder_.file("page.txt")));
}

TEST(FormatDatabaseTest, TextsThatLookLikeNumbersStayTexts) {
  const host::test::TemporaryFolder folder;
  const auto database = host::openFormatDatabase(folder.file("f.db"));
  database->Execute("CREATE TABLE t (P1 String,P2 String)");
  auto rows = database->OpenTable("T");
  EXPECT_TRUE(rows->Eof());
  rows->AddNew();
  rows->SetField("p1", "007.50");
  rows->Update();
  rows->Close();
  rows = database->OpenTable("t");
  EXPECT_EQ(rows->Field("P1"), Value("007.50"));
  EXPECT_TRUE(rows->Field("P2").isNull());
  rows->SetField("P2", "b");
  rows->Update();
  EXPECT_EQ(database->OpenTable("t")->Field("P2"), Value("b"));
  EXPECT_THROW(rows->Field("P3"), RunTimeError);
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_THROW(rows->MoveNext(), RunTimeError);
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("P2"), Value("b"));
}

TEST(FormatDatabaseTest, FailuresAreThePlatforms) {
  const host::test::TemporaryFolder folder;
  const auto database = host::openFormatDatabase(folder.file("f.db"));
  EXPECT_THROW(database->Execute("DROP TABLE missing"), RunTimeError);
  EXPECT_THROW(database->OpenTable("missing"), RunTimeError);
  const auto nowhere = host::openFormatDatabase(folder.file("no/such/folder.db"));
  EXPECT_THROW(nowhere->Execute("CREATE TABLE t (P1 String)"), RunTimeError);
}

}  // namespace
}  // namespace gljz::test
