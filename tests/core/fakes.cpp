#include "core/fakes.h"

#include <algorithm>
#include <utility>

#include "core/run_state.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "xml/xml_reader.h"

namespace fakes {

using platform::RunTimeError;

Table oneCell(Value value) {
  return {{"value"}, {{std::move(value)}}};
}

Value FakeRecordset::Field(std::string_view name) const {
  for (std::size_t i = 0; i < table_.columns.size(); ++i) {
    if (platform::equalsIgnoreCase(table_.columns[i], name)) return Field(i);
  }
  throw RunTimeError(RunTimeError::noSuchField, "no field " + std::string(name));
}

Value FakeRecordset::Field(std::size_t index) const {
  if (Eof()) throw RunTimeError(RunTimeError::noCurrentRecord, "no current record");
  return table_.rows[at_].at(index);
}

void Server::record(const std::string& who, const std::string& what) {
  const std::string entry = who + ": " + what;  // the watcher may cause further entries
  log.push_back(entry);
  if (watch) watch(entry);
  for (const std::string& failure : failures) {
    if (entry.find(failure) != std::string::npos) {
      throw RunTimeError(platform::ServerFailure{50000, 16, 1, "broken: " + failure, what});
    }
  }
}

Table Server::tableFor(const std::string& statement) const {
  const auto found = std::find_if(answers.rbegin(), answers.rend(),
                                  [&](const auto& entry) { return statement.find(entry.first) != std::string::npos; });
  return found == answers.rend() ? Table{} : found->second;
}

void FakeConnection::ConnectionOpen(const std::string& text) {
  server_.record(name_, "ConnectionOpen " + text);
  setOpen(text);
}

void FakeConnection::ConnectionClose() {
  server_.record(name_, "ConnectionClose");
  open_ = false;
}

std::int64_t FakeConnection::ExecuteSql(const std::string& sql) {
  server_.record(name_, sql);
  return 0;
}

std::unique_ptr<platform::Recordset> FakeConnection::OpenRecordset(const std::string& sql, int options,
                                                                   platform::CursorLocation) {
  if (options != 2) throw RunTimeError(RunTimeError::invalidCall, "the system opens with option 2");
  return Open(sql);
}

std::unique_ptr<platform::Recordset> FakeConnection::Open(const std::string& sql) {
  server_.record(name_, sql);
  return std::make_unique<FakeRecordset>(server_.tableFor(sql));
}

std::unique_ptr<platform::Recordset> FakeConnection::OpenCommand(const std::string& sql,
                                                                 const std::vector<platform::TextParameter>&, int) {
  return Open(sql);
}

bool FakeLogin::LoginOpenAccount(int purpose, std::string& text) {
  openedWith = std::to_string(purpose) + " " + text;
  if (opens) text = "Database=of " + text;
  return opens;
}

void FakeLogin::LoginMarkDone(int number, const std::string& systemId, int doneYear, bool done) {
  server_.record("login", "done " + std::to_string(number) + " " + systemId + " " + std::to_string(doneYear) +
                              (done ? " True" : " False"));
}

void FakeServices::InitServices(const Value& loginHandle, const std::string& connectionText,
                                const std::string& accountId, int year, const Value& loginOperator,
                                const Value& loginDate) {
  server_.record("services", "InitServices " + loginHandle.asText() + "|" + connectionText + "|" + accountId + "|" +
                                 std::to_string(year) + "|" + loginOperator.asText() + "|" + loginDate.asText());
}

std::string FakeServices::ResText(const std::string& key, const std::vector<Value>* args) {
  std::string text;
  if (args != nullptr) {
    for (const Value& arg : *args) text += "," + arg.displayText();
  }
  asked.push_back(args == nullptr ? key : key + "(" + text.substr(1) + ")");
  return asked.back();
}

int FakeServices::ServiceMsgBox(const std::string& prompt, int style, const std::string& title, const std::string&,
                                int) {
  boxes.push_back({prompt, title, style});
  server_.record("box", prompt);
  return 7;
}

bool FakeServices::ServiceLocalize(platform::Form& form, const std::string& prefix, const std::string&,
                                   const std::string&) {
  server_.record("localize", std::string(form.Name()) + " " + prefix);
  return true;
}

void FakeServices::GetCodeRecord(const std::string& code, platform::CodeRecord& record,
                                 const std::vector<int>& selectors) {
  codeReads.emplace_back(code, selectors);
  if (selectors.empty()) {
    record = chart.at(code);
  } else {
    record = {};
    record.bEnd = chart.at(code).bEnd || code == becomesLastLevel;
  }
}

std::string FakeServices::MatchCode(const std::string& code, int, bool) {
  if (const auto found = moved.find(code); found != moved.end()) return found->second;
  return chart.count(code) ? code : "";
}

platform::FormatDatabase& FakeServices::FormatDb() {
  throw RunTimeError(RunTimeError::objectNotSet, "no format database here");
}

void FakeForms::ShowModal(platform::Form& form) {
  server_.record("forms", "show " + std::string(form.Name()));
  if (auto* progress = dynamic_cast<gljz::FrmJZSN*>(&form)) {
    if (duringRun) duringRun();
    if (progress->Timer1_Enabled()) progress->Timer1_Timer();
  } else if (dynamic_cast<gljz::FrmTranCond*>(&form) && conditions) {
    conditions();
  }
}

World::World()
    : newYear(std::make_shared<FakeConnection>(server, "new")),
      lastYear(std::make_shared<FakeConnection>(server, "last")),
      login(std::make_shared<FakeLogin>(server)),
      services(std::make_shared<FakeServices>(server, newYear)),
      xml_(xml::newXmlReader()) {
  gljz::run = {};
  surroundings_.newServices = [this] { return services; };
  surroundings_.newConnection = [this] { return std::make_shared<FakeConnection>(server, "made"); };
  surroundings_.xml = xml_.get();
  surroundings_.forms = &forms;
  surroundings_.components = &components_;
  surroundings_.debug = &debug_;
  surroundings_.today = [] { return platform::DateTime::fromDate(2006, 1, 5); };
  platform::setSurroundings(&surroundings_);
  gljz::frmJZSN.unload();
  gljz::frmNBalance.unload();
  gljz::frmTranCond.unload();
  gljz::frmSyKmSel.unload();
  forms.changes = 0;

  newYear->setOpen("Database=TqData_001_2006;");
  answerDatabases("TqData_001_2005", "TqData_001_2006");
  server.answer("from gl_yearstate where iinitflag", {{"iyear"}, {{2005}}});
  server.answer("object_id(N'gl_yearstate')", oneCell(1));
  server.answer("select bflag from gl_mend", oneCell(true));
  server.answer("select top 1 * from code", oneCell("1001"));
  server.answer("select top 1 * from dsign", oneCell("J"));
}

World::~World() {
  gljz::frmJZSN.unload();
  gljz::frmNBalance.unload();
  gljz::frmTranCond.unload();
  gljz::frmSyKmSel.unload();
  gljz::run = {};
  platform::setSurroundings(nullptr);
}

void World::connectRun() {
  using gljz::run;
  run.m_pubCls = services;
  run.m_login = login;
  run.m_conn = lastYear;
  lastYear->setOpen("Database=TqData_001_2005;");
  run.m_strLastDB = "TqData_001_2005";
  run.m_strCurDB = "TqData_001_2006";
  run.m_strLastYear = "2005";
  run.m_strCurYear = "2006";
}

void World::answerDatabases(const std::string& last, const std::string& current) {
  const auto answer = [this](const std::string& year, const std::string& database) {
    server.answer("iBeginYear<=" + year, database.empty() ? Table{} : Table{{"cDatabase"}, {{database}}});
  };
  answer("2005", last);
  answer("2006", current);
}

Log World::logOf(const std::vector<std::string>& texts) const {
  Log result;
  for (const std::string& entry : server.log) {
    const bool wanted = std::any_of(texts.begin(), texts.end(),
                                    [&](const std::string& text) { return entry.find(text) != std::string::npos; });
    if (wanted) result.push_back(entry);
  }
  return result;
}

}  // namespace fakes
