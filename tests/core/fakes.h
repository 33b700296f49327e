#pragma once
// A small world without a server: connections that record what is sent to them and answer from a list, and services,
// login and forms in memory. Tests of what the system writes use a real server; these are for what it sends, in which
// order, and what follows when a call fails.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/surroundings.h"

namespace fakes {

using platform::Value;

// Everything that the world was asked, in order: "new: BeginTrans", "last: select ...", "login: done 205 GL 2005 True".
// Connections that the system makes itself are named "made".
using Log = std::vector<std::string>;

struct Table {
  std::vector<std::string> columns;
  std::vector<std::vector<Value>> rows;
};

// A table of one row and one column.
Table oneCell(Value value);

class FakeRecordset : public platform::Recordset {
public:
  explicit FakeRecordset(Table table) : table_(std::move(table)) {}
  bool IsOpen() const override { return open_; }
  bool Bof() const override { return table_.rows.empty(); }
  bool Eof() const override { return at_ >= table_.rows.size(); }
  std::size_t FieldCount() const override { return table_.columns.size(); }
  const std::string& FieldName(std::size_t index) const override { return table_.columns.at(index); }
  Value Field(std::string_view name) const override;
  Value Field(std::size_t index) const override;
  void MoveFirst() override { at_ = 0; }
  void MoveNext() override { ++at_; }
  void MovePrevious() override { --at_; }
  void AddNew() override { refuse(); }
  void SetField(std::string_view, const Value&) override { refuse(); }
  void SetField(std::size_t, const Value&) override { refuse(); }
  void Update() override { refuse(); }
  void Close() override { open_ = false; }

private:
  [[noreturn]] static void refuse() { throw platform::RunTimeError(platform::RunTimeError::invalidCall, "read only"); }

  Table table_;
  std::size_t at_ = 0;
  bool open_ = true;
};

// What the databases behind the connections answer, and where they fail.
struct Server {
  Log log;
  // An operation or statement that contains the text gives the table; the newest entry counts. Everything else gives
  // no row.
  std::vector<std::pair<std::string, Table>> answers;
  // An operation or statement that contains one of the texts fails.
  std::vector<std::string> failures;
  // Sees each entry as it is recorded, before it fails: what the system's state was when a statement was sent.
  std::function<void(const std::string& entry)> watch;

  void answer(const std::string& containing, Table table) { answers.emplace_back(containing, std::move(table)); }
  void record(const std::string& who, const std::string& what);  // and fails when it is to fail
  Table tableFor(const std::string& statement) const;
};

class FakeConnection : public platform::Connection, public platform::RawConnection {
public:
  FakeConnection(Server& server, std::string name) : server_(server), name_(std::move(name)) {}

  void ConnectionOpen(const std::string& text) override;
  void ConnectionClose() override;
  std::string ConnectionText() const override { return text_; }
  platform::RawConnection& RawConnection() override { return *this; }
  void BeginTrans() override { server_.record(name_, "BeginTrans"); }
  void CommitTrans() override { server_.record(name_, "CommitTrans"); }
  void RollbackTrans() override { server_.record(name_, "RollbackTrans"); }
  std::int64_t ExecuteSql(const std::string& sql) override;
  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql, int options,
                                                     platform::CursorLocation location) override;
  int State() const override { return open_ ? RawConnection::open : RawConnection::closed; }
  std::unique_ptr<platform::Recordset> Open(const std::string& sql) override;
  std::unique_ptr<platform::Recordset> OpenCommand(const std::string& sql,
                                                   const std::vector<platform::TextParameter>& parameters,
                                                   int timeoutSeconds) override;

  void setOpen(std::string text) {
    text_ = std::move(text);
    open_ = true;
  }

private:
  Server& server_;
  std::string name_;
  std::string text_;
  bool open_ = false;
};

class FakeLogin : public platform::Login {
public:
  explicit FakeLogin(Server& server) : server_(server) {}
  std::string connText = "Database=TqSystem;Server=s", accId = "001", year = "2006";
  bool gf = false, opens = true;
  std::string openedWith;

  std::string LoginConnText() const override { return connText; }
  std::string LoginAccId() const override { return accId; }
  std::string LoginYear() const override { return year; }
  std::string LoginLanguage() const override { return "zh-CN"; }
  bool IsGFLogin() const override { return gf; }
  bool LoginOpenAccount(int purpose, std::string& text) override;
  void LoginMarkDone(int number, const std::string& systemId, int doneYear, bool done) override;
  Value LoginHandle() const override { return "handle"; }
  Value LoginOperator() const override { return "operator"; }
  Value LoginDate() const override { return "date"; }

private:
  Server& server_;
};

class FakeServices : public platform::ZwPubCls {
public:
  FakeServices(Server& server, std::shared_ptr<platform::Connection> newYear)
      : server_(server), newYear_(std::move(newYear)) {}
  int currentYear = 2006, accountYear = 2000, startYear = 2006;
  platform::AccountOptions options;
  std::map<std::string, platform::CodeRecord> chart;  // the new year's; bEnd of `becomesLastLevel` reads true later
  std::string becomesLastLevel;
  // Reads of the chart, in order: the code and the fields that were asked for, none for all.
  std::vector<std::pair<std::string, std::vector<int>>> codeReads;
  struct Box {
    std::string prompt, title;
    int style;
  };
  std::vector<Box> boxes;                    // boxes that really came up
  std::vector<std::string> asked;            // texts that were asked for, as ResText gave them
  std::map<std::string, std::string> moved;  // old code to new code; other codes match themselves when in the chart

  std::shared_ptr<platform::Connection> NewYearConn() override { return newYear_; }
  void SetLogin(std::shared_ptr<platform::Login>) override { server_.record("services", "SetLogin"); }
  void SetYear(int year) override { server_.record("services", "SetYear " + std::to_string(year)); }
  void InitServices(const Value& loginHandle, const std::string& connectionText, const std::string& accountId, int year,
                    const Value& loginOperator, const Value& loginDate) override;
  // "key" or "key(a,b)"
  std::string ResText(const std::string& key, const std::vector<Value>* args) override;
  int ServiceMsgBox(const std::string& prompt, int, const std::string&, const std::string&, int) override;
  bool ServiceLocalize(platform::Form& form, const std::string& prefix, const std::string&,
                       const std::string&) override;
  int CurrentYearInfo() override { return currentYear; }
  int AccountYearInfo() override { return accountYear; }
  int iStartYear() override { return startYear; }
  platform::DateTime CalendarInfo(int, int) override { return platform::DateTime::fromDate(currentYear, 1, 1); }
  platform::DateTime YearCalendar(int, int) override { return platform::DateTime::fromDate(currentYear, 1, 1); }
  std::string OptionText(const std::string&, const std::string&) override { return "0"; }
  platform::AccountOptions AccountOptions() override { return options; }
  std::string OperatorName() override { return "demo"; }
  void GetCodeRecord(const std::string& code, platform::CodeRecord& record, const std::vector<int>& selectors) override;
  std::string MatchCode(const std::string& code, int option, bool flag) override;
  std::string MatchDepartment(const std::string& code, int, bool) override { return code; }
  std::string MatchPerson(const std::string& code, int, bool) override { return code; }
  std::string MatchCustomer(const std::string& code, int, bool) override { return code; }
  std::string MatchVendor(const std::string& code, int, bool) override { return code; }
  std::string MatchItem(const std::string& item, const std::string&, int, bool) override { return item; }
  bool GetSignRecord(const std::string&, platform::SignRecord&) override { return false; }
  bool SignExists(const std::string&) override { return true; }
  bool SettleStyleExists(const std::string&) override { return true; }
  std::string TranslateWord(const std::string& word) override { return word; }
  platform::FormatDatabase& FormatDb() override;

private:
  Server& server_;
  std::shared_ptr<platform::Connection> newYear_;
};

class FakeForms : public platform::FormHost {
public:
  explicit FakeForms(Server& server) : server_(server) {}
  std::function<void()> conditions;  // answers frmTranCond
  std::function<void()> duringRun;   // called when frmJZSN shows, before its timer fires
  std::function<void(platform::Form&)> whenChanged;
  int changes = 0, eventRounds = 0;

  void ShowModal(platform::Form& form) override;
  void Changed(platform::Form& form) override {
    ++changes;
    if (whenChanged) whenChanged(form);
  }
  void DoEvents() override { ++eventRounds; }
  void ScreenPointer(int shape) override { server_.record("forms", "pointer " + std::to_string(shape)); }
  std::string ProgramFolder() const override { return "."; }

private:
  Server& server_;
};

class FakeComponents : public platform::ComponentFactory {
public:
  std::shared_ptr<platform::Component> Create(const std::string&) override {
    throw platform::RunTimeError(platform::RunTimeError::cannotCreate, "component cannot be created");
  }
};

class FakeDebug : public platform::DebugOutput {
public:
  explicit FakeDebug(Server& server) : server_(server) {}
  void Write(const std::string& line) override { server_.record("debug", line); }

private:
  Server& server_;
};

// A fresh process with everything in place: account 001, 2005 closed in TqData_001_2005, 2006 in TqData_001_2006, all
// checks pass, no rows to carry. One at a time.
class World {
public:
  World();
  ~World();

  Server server;
  std::shared_ptr<FakeConnection> newYear, lastYear;
  std::shared_ptr<FakeLogin> login;
  std::shared_ptr<FakeServices> services;
  FakeForms forms{server};

  // The state that Transfer leaves before ExecJZ, without a person who watches.
  void connectRun();
  void answerDatabases(const std::string& last, const std::string& current);
  // The log's entries that contain one of the texts, in order.
  Log logOf(const std::vector<std::string>& texts) const;

private:
  FakeComponents components_;
  FakeDebug debug_{server};
  std::unique_ptr<platform::XmlReader> xml_;
  platform::Surroundings surroundings_;
};

}  // namespace fakes
