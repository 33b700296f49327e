#pragma once
// A demo account set with a start window on it, and a person who answers what the window system would ask.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPrinter>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "desktop/ask.h"
#include "desktop/autopilot.h"
#include "desktop/start_window.h"
#include "desktop/texts.h"
#include "dialogs/frm_tran_cond.h"
#include "host/account_directory.h"
#include "host/database_server.h"
#include "host/demo.h"
#include "host/temporary_folder.h"

namespace desktop::test {

// Answers beforehand, and what was told.
class Person final : public Ask {
public:
  Person() { setAsk(this); }
  ~Person() override { setAsk(nullptr); }

  std::string file;            // the answer to every question for a file; empty: leaves
  std::string printerFile;     // a printer that writes into this file; empty: there is no printer
  bool leavesPrinter = false;  // the print dialog
  std::vector<std::string> complaints, opened;
  std::vector<std::string> proposed;  // names of files

  std::string saveFile(QWidget*, const QString&, const QString& name, const QString&) override {
    proposed.push_back(utf8(name));
    return file;
  }
  std::string folder(QWidget*, const QString&, const QString&) override { return file; }
  bool hasPrinters() override { return !printerFile.empty(); }
  std::unique_ptr<QPrinter> printer(QWidget*, const QString&) override {
    if (leavesPrinter) return nullptr;
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(shown(printerFile));
    return printer;
  }
  void complain(QWidget*, const QString&, const QString& text) override { complaints.push_back(utf8(text)); }
  bool open(const QString& name) override {
    opened.push_back(utf8(name));
    return true;
  }
};

class DemoDesktop : public testing::Test {
protected:
  DemoDesktop() {
    QStandardPaths::setTestModeEnabled(true);
    std::filesystem::copy(freshDemo(), serverFolder(), std::filesystem::copy_options::recursive);
    choice_.folder = serverFolder();
    choice_.account = host::demoAccount;
    choice_.closingYear = host::demoClosingYear;
    choice_.newYear = host::demoNewYear;
    choice_.operatorName = "zhao";
    choice_.language = "zh-CN";
  }
  ~DemoDesktop() override {
    window_.reset();
    QFile::remove(StartWindow::reportFile());
  }

  // Made once: each test has a copy.
  static std::string freshDemo() {
    static const host::test::TemporaryFolder folder;
    static const bool made = [] {
      host::createDemo(host::openAnyServer(host::parseServer("embedded:" + folder.file("server")), true));
      return true;
    }();
    return made ? folder.file("server") : std::string();
  }
  std::string serverFolder() const { return folder_.file("server"); }
  host::ServerPtr server() const { return host::openAnyServer(host::parseServer("embedded:" + serverFolder()), true); }
  // Numbers of the new year's database.
  std::int64_t number(const std::string& sql) const {
    const auto connection = server()->newConnection();
    connection->ConnectionOpen(
        host::connectionText("TqData_001_2006", host::parseServer("embedded:" + serverFolder())));
    std::int64_t value = -1;
    host::readFirst(*connection, sql,
                    [&](const platform::Recordset& r) { value = r.Field(std::size_t{0}).asInteger(); });
    return value;
  }
  void run(const std::string& database, const std::string& sql) const {
    const auto connection = server()->newConnection();
    connection->ConnectionOpen(host::connectionText(database, host::parseServer("embedded:" + serverFolder())));
    connection->ExecuteSql(sql);
  }

  StartWindow& start() {
    if (!window_) {
      saveChoice(settings_, choice_);
      window_ = std::make_unique<StartWindow>(settings_);
      window_->show();
    }
    return *window_;
  }

  // The road that every step was walked and nothing went wrong on it.
  void expectWalked(const Autopilot& pilot) {
    EXPECT_EQ(pilot.left(), std::vector<std::string>{}) << "windows that did not come";
    EXPECT_EQ(pilot.failures(), std::vector<std::string>{});
    EXPECT_EQ(person_.complaints, std::vector<std::string>{});
  }

  host::test::TemporaryFolder folder_;
  QSettings settings_{shown(folder_.file("settings.ini")), QSettings::IniFormat};
  StartChoice choice_;
  Person person_;
  std::unique_ptr<StartWindow> window_;
};

template <class Widget>
Widget& child(const QWidget& window, const char* name) {
  auto* found = window.findChild<Widget*>(name);
  if (!found) throw std::logic_error(utf8(window.objectName()) + " has no " + name);
  return *found;
}

inline std::string textOf(const QWidget& window, const char* label) {
  return utf8(child<QLabel>(window, label).text());
}

inline QListWidgetItem& lineOf(const QWidget& window, const std::string& key) {
  const auto index = gljz::frmTranCond().indexOf(key);
  if (!index) throw std::logic_error(key + " is not offered");
  return *child<QListWidget>(window, "lvCond").item(static_cast<int>(*index));
}

inline void tick(const QWidget& window, const std::string& key, bool checked = true) {
  lineOf(window, key).setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

inline std::vector<std::string> entries(const QWidget& window, const char* list) {
  const auto& widget = child<QListWidget>(window, list);
  std::vector<std::string> texts;
  for (int i = 0; i < widget.count(); ++i) texts.push_back(utf8(widget.item(i)->text()));
  return texts;
}

}  // namespace desktop::test
