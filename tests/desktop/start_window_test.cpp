#include <gmock/gmock.h>

#include <QLineEdit>
#include <QTest>
#include <fstream>

#include "demo_desktop.h"
#include "host/account.h"
#include "host/usage_error.h"
#include "host/year_readiness.h"

namespace desktop::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class DesktopStart : public DemoDesktop {};

TEST_F(DesktopStart, ListsAccountsAndYearsAndSaysThatTheyAreReady) {
  EXPECT_EQ(textOf(start(), "connection"), "连接成功，账套数：1");
  EXPECT_EQ(utf8(child<QComboBox>(start(), "account").currentText()), "001  临江商贸有限公司");
  EXPECT_EQ(utf8(child<QComboBox>(start(), "closingYear").currentText()), "2005");
  EXPECT_EQ(utf8(child<QComboBox>(start(), "newYear").currentText()), "2006");
  EXPECT_EQ(textOf(start(), "summary"), "可以将 2005 年结转到 2006 年。");
  EXPECT_TRUE(start().ready());
  EXPECT_TRUE(child<QPushButton>(start(), "transfer").isDefault());
}

TEST_F(DesktopStart, SwitchesItsLanguageAtOnce) {
  auto& languages = child<QComboBox>(start(), "language");
  languages.setCurrentIndex(languages.findData("en-US"));
  EXPECT_EQ(utf8(start().windowTitle()), "Year-end carry-forward");
  EXPECT_EQ(textOf(start(), "summary"), "2005 can be carried into 2006.");
  EXPECT_EQ(utf8(child<QPushButton>(start(), "browse").text()), "&Browse...");
  languages.setCurrentIndex(languages.findData("zh-TW"));
  EXPECT_EQ(textOf(start(), "summary"), "可以將 2005 年結轉到 2006 年。");
}

TEST_F(DesktopStart, RemembersTheLastChoiceWithoutThePassword) {
  auto& languages = child<QComboBox>(start(), "language");
  languages.setCurrentIndex(languages.findData("en-US"));
  child<QLineEdit>(start(), "operator").setText("qian");
  child<QLineEdit>(start(), "odbc").setText("DSN=ledger;UID=sa;PWD=secret");
  child<QLineEdit>(start(), "password").setText("secret");
  start().close();
  for (const QString& key : settings_.allKeys()) EXPECT_FALSE(settings_.value(key).toString().contains("secret"));
  window_.reset();
  StartWindow again(settings_);
  EXPECT_EQ(utf8(again.windowTitle()), "Year-end carry-forward");
  EXPECT_EQ(utf8(child<QLineEdit>(again, "operator").text()), "qian");
  EXPECT_EQ(utf8(child<QLineEdit>(again, "folder").text()), serverFolder());
  EXPECT_EQ(utf8(child<QLineEdit>(again, "odbc").text()), "DSN=ledger;UID=sa");
  EXPECT_TRUE(again.ready());
}

TEST_F(DesktopStart, SaysWhatIsWrongWithAServer) {
  auto& folder = child<QLineEdit>(start(), "folder");
  folder.clear();
  QTest::keyClicks(&folder, shown(folder_.file("nothing-there")));
  EXPECT_FALSE(child<QPushButton>(start(), "transfer").isEnabled()) << "the years shown were another server's";
  QTest::keyClick(&folder, Qt::Key_Return);
  EXPECT_EQ(textOf(start(), "connection"), "连接失败：文件夹 " + folder_.file("nothing-there") + " 不存在。");
  EXPECT_FALSE(start().ready());
  EXPECT_FALSE(child<QPushButton>(start(), "preview").isEnabled());
  const auto connected = [&](const std::string& place) {
    folder.setText(shown(place));
    press(start(), "connect");
    return textOf(start(), "connection");
  };
  EXPECT_EQ(connected(""), "连接失败：请填写存放账套数据库的文件夹。");
  std::ofstream(folder_.file("file")) << "no folder";
  EXPECT_EQ(connected(folder_.file("file")), "连接失败：" + folder_.file("file") + " 不是文件夹。");
  std::filesystem::create_directory(folder_.file("empty"));
  EXPECT_EQ(connected(folder_.file("empty")), "连接失败：服务器上没有数据库 TqSystem。");
}

// What stood on the screen while the server was asked.
class Watcher final : public QObject {
public:
  std::vector<std::string> painted;
  bool eventFilter(QObject* watched, QEvent* event) override {
    const QCursor* pointer = QApplication::overrideCursor();
    if (event->type() == QEvent::Paint && pointer && pointer->shape() == Qt::WaitCursor)
      painted.push_back(utf8(static_cast<QLabel*>(watched)->text()));
    return false;
  }
};

TEST_F(DesktopStart, SaysThatItConnectsWhileItDoes) {
  auto& label = child<QLabel>(start(), "connection");
  QApplication::processEvents();
  Watcher watcher;
  label.installEventFilter(&watcher);
  press(start(), "connect");
  EXPECT_THAT(watcher.painted, testing::Contains("正在连接……"));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(textOf(start(), "connection"), "连接成功，账套数：1");
}

TEST_F(DesktopStart, TheToolkitSpeaksTheLanguageOfTheWindows) {
  const auto cancel = [] { return utf8(QCoreApplication::translate("QPlatformTheme", "Cancel")); };
  EXPECT_EQ(utf8(start().windowTitle()), "总账上年结转");
  EXPECT_EQ(cancel(), "取消");
  start().setLanguage("en-US");
  EXPECT_EQ(cancel(), "Cancel");
  start().setLanguage("zh-TW");
  EXPECT_EQ(cancel(), "取消");
  EXPECT_EQ(utf8(QCoreApplication::translate("QPlatformTheme", "Save All")), "全部儲存");
}

TEST_F(DesktopStart, TransGLIsNotOfferedWithinOneDatabase) {
  host::createAccount(server(), {"007", "Long", 2001, 2004});
  EXPECT_TRUE(child<QPushButton>(start(), "transGL").isEnabled());
  auto& accounts = child<QComboBox>(start(), "account");
  accounts.setCurrentIndex(accounts.findData("007"));
  EXPECT_EQ(utf8(child<QComboBox>(start(), "newYear").currentText()), "2004");
  EXPECT_FALSE(child<QPushButton>(start(), "transGL").isEnabled());
  EXPECT_TRUE(child<QPushButton>(start(), "transfer").isEnabled());
  EXPECT_THAT(utf8(child<QPushButton>(start(), "transGL").toolTip()), HasSubstr("同一个数据库"));
  accounts.setCurrentIndex(accounts.findData("001"));
  EXPECT_TRUE(child<QPushButton>(start(), "transGL").isEnabled());
  EXPECT_THAT(utf8(child<QPushButton>(start(), "transGL").toolTip()), testing::StartsWith("TransGL"));
}

TEST_F(DesktopStart, TakesTheFolderThatIsBrowsedFor) {
  const std::string folder = choice_.folder;
  choice_.folder.clear();
  EXPECT_EQ(textOf(start(), "connection"), "尚未连接");
  person_.file = folder;
  press(start(), "browse");
  EXPECT_EQ(textOf(start(), "connection"), "连接成功，账套数：1");
  EXPECT_TRUE(start().ready());
}

TEST_F(DesktopStart, TellsAnOdbcServerThatCannotBeReached) {
  auto& kind = child<QComboBox>(start(), "kind");
  kind.setCurrentIndex(1);
  EXPECT_TRUE(child<QLineEdit>(start(), "odbc").isVisible());
  EXPECT_TRUE(child<QLineEdit>(start(), "password").isVisible());
  EXPECT_FALSE(child<QLineEdit>(start(), "folder").isVisible());
  child<QLineEdit>(start(), "odbc").setText("Server=nowhere");
  press(start(), "connect");
  EXPECT_THAT(textOf(start(), "connection"), HasSubstr("没有指定驱动程序"));
  const auto connected = [&](const char* text) {
    child<QLineEdit>(start(), "odbc").setText(text);
    press(start(), "connect");
    return textOf(start(), "connection");
  };
  EXPECT_EQ(connected(""), "连接失败：请填写连接字符串。");
  EXPECT_THAT(connected("PWD={secret"), AllOf(HasSubstr("格式不对"), Not(HasSubstr("secret"))));
}

TEST_F(DesktopStart, OpensTheReportOfAnEarlierStart) {
  EXPECT_FALSE(child<QPushButton>(start(), "report").isEnabled());
  QDir().mkpath(QFileInfo(StartWindow::reportFile()).path());
  QFile file(StartWindow::reportFile());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("<html></html>");
  file.close();
  press(start(), "look");
  press(start(), "report");
  EXPECT_THAT(person_.opened, ElementsAre(utf8(StartWindow::reportFile())));
}

TEST_F(DesktopStart, EveryFieldAndButtonIsReachedByTheKeyboard) {
  start().activateWindow();
  child<QComboBox>(start(), "language").setFocus();
  std::vector<std::string> reached;
  for (int i = 0; i < 30; ++i) {
    QWidget* focus = start().focusWidget();
    const std::string name = utf8(focus->objectName());
    if (std::find(reached.begin(), reached.end(), name) != reached.end()) break;
    reached.push_back(name);
    QTest::keyClick(focus, Qt::Key_Tab);
  }
  EXPECT_THAT(reached, ElementsAre("language", "kind", "folder", "browse", "connect", "account", "closingYear",
                                   "newYear", "operator", "look", "preview", "transGL", "transfer"));
}

class Readiness : public DemoDesktop {
protected:
  std::vector<std::string> faults(const host::YearPair& years = {"001", 2005, 2006}) const {
    const auto address = host::parseServer("embedded:" + serverFolder());
    std::vector<std::string> texts;
    for (const auto& finding : host::yearReadiness(server(), address, years, host::Messages("en-US")))
      if (!finding.good) texts.push_back(finding.text);
    return texts;
  }
};

TEST_F(Readiness, NamesEachThingThatIsMissing) {
  EXPECT_THAT(faults(), ElementsAre());
  run("TqData_001_2006",
      "insert gl_accvouch(iyear,iperiod,inid,dbill_date,ibook,ccode) values(2006,1,1,'2006-01-31',1,N'1001')");
  EXPECT_THAT(faults(), ElementsAre("2006 has posted vouchers: it can no longer be carried into."));
  run("TqData_001_2006", "delete from dsign");
  run("TqData_001_2006", "delete from code where iyear=2006");
  EXPECT_THAT(faults(), ElementsAre("2006 has no chart of accounts.", "There are no voucher categories.",
                                    "2006 has posted vouchers: it can no longer be carried into."));
}

TEST_F(Readiness, KnowsTheStateOfTheClosingYear) {
  run("TqData_001_2005", "update AccInformation set cvalue='True' where cName='bAdjust'");
  run("TqData_001_2005", "insert AccInformation(cSysID,cName,cvalue) values('GL','bAdjust','True')");
  run("TqData_001_2005", "update gl_mend set bflag_GLGZ=0 where iperiod=12 and iyear=2005");
  EXPECT_THAT(faults(), ElementsAre("2005 has adjustment periods, and its second closing is missing."));
  run("TqData_001_2005", "update gl_mend set bflag=0 where iperiod=12 and iyear=2005");
  EXPECT_THAT(faults(), ElementsAre("Period 12 of 2005 is not closed: close the year first."));
  run("TqData_001_2005", "drop table gl_yearstate");
  EXPECT_THAT(faults(), ElementsAre("The data of 2005 was not upgraded, or its tables are not as they should be."));
}

TEST_F(Readiness, KnowsYearsThatCannotBeCarried) {
  EXPECT_THAT(faults({"001", 2006, 2005}),
              testing::Contains("2005 is the account set's first year: there is nothing before it to carry."));
  EXPECT_THAT(faults({"001", 2006, 2006}), testing::Contains("2006 is not behind 2006."));
  EXPECT_THAT(faults({"002", 2005, 2006}),
              ElementsAre("No database was found for 2005.", "No database was found for 2006: open the year first."));
}

TEST_F(Readiness, ListsSpansOfYears) {
  host::createAccount(server(), {"007", "Long", 2001, 2004});
  const auto address = host::parseServer("embedded:" + serverFolder());
  const auto sets = host::accountSets(*host::openSystem(server(), address));
  ASSERT_EQ(sets.size(), 2u);
  EXPECT_EQ(sets[1].account, "007");
  EXPECT_EQ(sets[1].name, "Long");
  EXPECT_THAT(sets[1].years(), ElementsAre(2001, 2002, 2003, 2004));
  EXPECT_EQ(sets[1].databaseOf(2003), "TqData_007_2001");
  EXPECT_EQ(sets[0].databaseOf(2004), "");
}

TEST_F(Readiness, TheLastSpanWithoutAnEndReachesToTheLastYearOfItsAccounts) {
  run("TqSystem", "update UA_AccountDatabase set iEndYear=null");
  const auto address = host::parseServer("embedded:" + serverFolder());
  const auto years = [&] { return host::accountSets(*host::openSystem(server(), address)).at(0).years(); };
  EXPECT_THAT(years(), ElementsAre(2005, 2006));
  run("TqData_001_2006", "insert into code(iyear, ccode, ccode_name) values(2008, N'1001', N'现金')");
  EXPECT_THAT(years(), ElementsAre(2005, 2006, 2007, 2008));
  run("TqData_001_2006", "delete from code");
  EXPECT_THAT(years(), ElementsAre(2005, 2006)) << "the year that the span begins with, at least";
  run("TqSystem", "update UA_AccountDatabase set cDatabase='gone' where iBeginYear=2006");
  EXPECT_THAT(years(), ElementsAre(2005, 2006)) << "what is gone is told where it is needed";
}

}  // namespace
}  // namespace desktop::test
