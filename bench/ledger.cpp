#include "bench/ledger.h"

#include <chrono>
#include <filesystem>

#include "core/mdu_jz.h"
#include "core/run_state.h"
#include "embedded/server.h"
#include "host/account.h"
#include "host/connection_text.h"
#include "host/database_desk.h"
#include "host/form_host.h"
#include "host/login.h"
#include "host/messages.h"
#include "host/services.h"
#include "platform/surroundings.h"
#include "xml/xml_reader.h"

namespace bench {

namespace fs = std::filesystem;

struct Ledger::Impl {
  fs::path folder;
  host::ServerAddress address;
  std::shared_ptr<embedded::Server> server;
  std::unique_ptr<platform::XmlReader> xml;
  host::FormHost forms{host::FormAnswers{[] {}, nullptr, "."}};
  platform::Surroundings surroundings;
  std::shared_ptr<platform::Login> login;

  std::shared_ptr<platform::Connection> connect(const std::string& database) const {
    auto c = embedded::makeConnection();
    c->ConnectionOpen(host::connectionText(database, address));
    return c;
  }
};

Ledger::Ledger() : impl_(std::make_unique<Impl>()) {
  auto& i = *impl_;
  i.folder = fs::temp_directory_path() /
             ("gljz-bench-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
  fs::create_directories(i.folder);
  i.address = host::parseServer("embedded:" + i.folder.string());
  i.server = host::openServer(i.address);
  host::NewAccount wanted;
  wanted.account = "900";
  wanted.name = "bench";
  wanted.year = wanted.through = 2005;
  host::createAccount(i.server, wanted);
  host::createAccountDatabase(i.server, opening);
  sql(opening, "insert into accinformation select * from " + closing + "..accinformation");
  sql("TqSystem",
      "insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(N'900', 2006, 2006, N'" +
          opening + "')");

  i.xml = xml::newXmlReader();
  i.surroundings.newConnection = [] { return embedded::makeConnection(); };
  i.surroundings.newServices = [] {
    return host::makeServices({[] { return embedded::makeConnection(); }, nullptr,
                               std::make_shared<host::Messages>("zh-CN"), "zh-CN", "bench"});
  };
  i.surroundings.xml = i.xml.get();
  i.surroundings.forms = &i.forms;
  i.surroundings.today = [] { return platform::DateTime::fromDate(2006, 1, 10); };
  platform::setSurroundings(&i.surroundings);

  host::LoginSettings settings;
  settings.server = i.address;
  settings.account = "900";
  settings.year = "2006";
  settings.language = "zh-CN";
  settings.operatorName = "bench";
  settings.today = i.surroundings.today();
  i.login = host::makeLogin(
      settings, [] { return embedded::makeConnection(); }, nullptr);
  auto& run = gljz::run;
  run = {};
  run.m_login = i.login;
  run.m_pubCls = i.surroundings.newServices();
  run.m_pubCls->SetLogin(i.login);
  run.m_pubCls->SetYear(2006);
  run.m_pubCls->InitServices({}, host::connectionText(opening, i.address), "900", 2006, {}, {});
  run.m_conn = i.connect(closing);
  run.m_strLastDB = closing;
  run.m_strCurDB = opening;
  run.m_strLastYear = "2005";
  run.m_strCurYear = "2006";
  run.m_strInitYear = "2005";
}

Ledger::~Ledger() {
  gljz::run = {};
  platform::setSurroundings(nullptr);
  const auto folder = impl_->folder;
  impl_.reset();
  std::error_code ignored;
  fs::remove_all(folder, ignored);
}

void Ledger::sql(const std::string& database, const std::string& batch) {
  host::DatabaseDesk(impl_->server, database).run(batch);
}

void Ledger::fill(const std::string& database, const std::string& table, const std::vector<std::string>& columns,
                  int count, const std::function<void(int, Row&)>& row) {
  const auto c = impl_->connect(database);
  c->BeginTrans();
  auto target = c->OpenRecordset("select * from " + table + " where 1=0", 2);
  Row values(columns.size());
  for (int n = 0; n < count; ++n) {
    row(n, values);
    target->AddNew();
    for (std::size_t i = 0; i < columns.size(); ++i) target->SetField(columns[i], values[i]);
    target->Update();
  }
  target->Close();
  c->CommitTrans();
}

void Ledger::inRun(const std::function<void()>& stage) {
  auto& connection = gljz::newConn();
  connection.BeginTrans();
  stage();
  connection.CommitTrans();
}

std::int64_t Ledger::number(const std::string& database, const std::string& query) {
  return impl_->connect(database)->OpenRecordset(query, 2)->Field(std::size_t{0}).asInteger();
}

std::string Ledger::file(const std::string& name) const {
  return (impl_->folder / name).string();
}

}  // namespace bench
