#pragma once
// A demo account set, the dialogs of its carry-forward as windows, and a person who answers what the window system
// would ask.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "com/windows/ask.h"
#include "com/windows/dialog_windows.h"
#include "com/windows/pilot.h"
#include "core/run_state.h"
#include "host/account_directory.h"
#include "host/carry_forward.h"
#include "host/database_server.h"
#include "host/demo.h"
#include "host/temporary_folder.h"

namespace windows::test {

// Answers beforehand, and what was told.
class Person final : public Ask {
public:
  std::string file;                 // the answer to every question for a file; empty: leaves
  std::shared_ptr<Printer> chosen;  // null with printers there: leaves
  bool printers = false;
  std::vector<std::string> offered, complaints;

  std::string printFile(HWND, const std::string&, const std::string& name) override {
    offered.push_back(name);
    return file;
  }
  bool hasPrinters() override { return printers; }
  std::shared_ptr<Printer> printer(HWND) override { return chosen; }
  void complain(HWND, const std::string&, const std::string& text) override { complaints.push_back(text); }
};

class DemoWindows : public testing::Test {
protected:
  DemoWindows() {
    freshProcess();
    std::filesystem::copy(freshDemo(), serverFolder(), std::filesystem::copy_options::recursive);
    options_.server = host::parseServer("embedded:" + serverFolder());
    options_.account = host::demoAccount;
    options_.closingYear = host::demoClosingYear;
    options_.newYear = host::demoNewYear;
    options_.operatorName = "zhao";
    options_.dialogs = &windows_;
  }

  // Conditions that are left fall back on the parameter text of an earlier run of the process.
  static void freshProcess() { gljz::run = {}; }
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
  std::unique_ptr<platform::Recordset> query(const std::string& database, const std::string& sql) {
    connection_ = host::openAnyServer(options_.server, true)->newConnection();
    connection_->ConnectionOpen(host::connectionText(database, options_.server));
    return connection_->OpenRecordset(sql, 2);
  }
  std::int64_t number(const std::string& sql) {
    return query("TqData_001_2006", sql)->Field(std::size_t{0}).asInteger();
  }
  void execute(const std::string& database, const std::string& sql) {
    const auto connection = host::openAnyServer(options_.server, true)->newConnection();
    connection->ConnectionOpen(host::connectionText(database, options_.server));
    connection->ExecuteSql(sql);
  }

  // The carry-forward, with every step walked and nothing wrong on the way.
  host::RunResult carry() {
    const host::RunResult result = host::carryForward(options_);
    EXPECT_EQ(pilot_.left(), std::vector<std::string>{}) << "windows that did not come";
    EXPECT_EQ(pilot_.failures(), std::vector<std::string>{});
    EXPECT_TRUE(windows_.standing().empty());
    return result;
  }

  host::test::TemporaryFolder folder_;
  Person person_;
  DialogWindows windows_{{nullptr, [this] { return options_.language; }, &person_}};
  Pilot pilot_{windows_};
  host::CarryForwardOptions options_;
  std::shared_ptr<platform::Connection> connection_;
};

}  // namespace windows::test
