#include "host/carry_forward.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>

#include "core/cls_gljz.h"
#include "core/run_state.h"
#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "embedded/server.h"
#include "host/account_directory.h"
#include "host/components.h"
#include "host/journal_connection.h"
#include "host/login.h"
#include "host/messages.h"
#include "host/program_folder.h"
#include "host/services.h"
#include "host/usage_error.h"
#include "platform/surroundings.h"
#include "xml/xml_reader.h"

namespace host {
namespace {

using platform::Connection;
using platform::DateTime;
using platform::RunTimeError;

DateTime machineDate() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  return DateTime::fromDate(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday);
}

class JournalDebugOutput final : public platform::DebugOutput {
public:
  explicit JournalDebugOutput(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}
  void Write(const std::string& line) override { journal_->debugLine(line); }

private:
  std::shared_ptr<Journal> journal_;
};

// Everything that a run stands on. The surroundings are the process's while it lives.
class Stage {
public:
  explicit Stage(const CarryForwardOptions& options)
      : options_(options),
        today_(options.today.value_or(machineDate())),
        server_(openServer(options)),
        journal_(std::make_shared<Journal>()),
        messages_(std::make_shared<Messages>(options.language)),
        xml_(xml::newXmlReader()),
        components_(makeComponents(journal_)),
        debug_(journal_),
        answers_(options.choices),
        forms_(formAnswers()) {
    if (!options.traceFile.empty()) journal_->traceTo(options.traceFile);
    surroundings_.newConnection = [this] { return observedConnection(); };
    surroundings_.newServices = [this] { return newServices(); };
    surroundings_.xml = xml_.get();
    surroundings_.forms = &forms_;
    surroundings_.components = components_.get();
    surroundings_.debug = &debug_;
    surroundings_.today = [this] { return today_; };
    platform::setSurroundings(&surroundings_);
  }
  ~Stage() {
    closeForms();
    gljz::run.m_pubCls = nullptr;
    gljz::run.m_login = nullptr;
    gljz::run.m_conn = nullptr;
    platform::setSurroundings(nullptr);
  }
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  RunResult run() {
    prepare();
    RunResult result;
    result.language = options_.language;
    const auto start = std::chrono::steady_clock::now();
    try {
      if (options_.entry == Entry::transfer)
        transfer(result);
      else
        transGL(result);
    } catch (const UsageError&) {
      undo();  // the conditions were refused: nothing has run yet
      throw;
    } catch (const std::exception& e) {
      result.uncaught = e.what();
      undo();
    }
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    collect(result);
    return result;
  }

private:
  static std::shared_ptr<embedded::Server> openServer(const CarryForwardOptions& options) {
    requireFolder(options.server);
    auto server = embedded::Server::open(options.server.folder);
    if (options.today) server->setClock([ticks = options.today->ticks()] { return ticks; });
    return server;
  }

  FormAnswers formAnswers() {
    FormAnswers answers;
    if (options_.parameters) answers.conditions = [this] { gljz::run.m_strCondXml = *options_.parameters; };
    answers.progress = options_.progress;
    answers.programFolder = programFolder_.text();
    answers.dialogs = options_.dialogs ? options_.dialogs : &answers_;
    return answers;
  }

  std::shared_ptr<Connection> plainConnection() { return embedded::makeConnection(); }
  std::shared_ptr<Connection> observedConnection() { return journalConnection(journal_, plainConnection(), false); }
  std::shared_ptr<platform::ZwPubCls> newServices() {
    return makeServices({[this] { return plainConnection(); }, journal_, messages_, options_.language,
                         options_.operatorName, programFolder_.file("format.db")});
  }

  void requireDatabase(const std::string& name, const std::string& what) const {
    if (!server_->hasDatabase(name))
      throw UsageError("server " + options_.server.text + " has no database " + name + what);
  }
  std::string place() const { return "TqSystem.dbo.UA_AccountDatabase of server " + options_.server.text; }

  // What a run cannot start without. Failures up to here are the caller's: nothing has run.
  void prepare() {
    try {
      requireDatabase(systemDatabase, "; gljz account create makes it");
      auto system = plainConnection();
      system->ConnectionOpen(connectionText(systemDatabase, options_.server));
      if (options_.entry == Entry::transfer)
        prepareTransfer(*system);
      else
        prepareTransGL(*system);
      LoginSettings settings{
          options_.server,      account_, std::to_string(options_.newYear), options_.language, options_.operatorName,
          options_.subsystemGF, today_};
      login_ = makeLogin(
          settings, [this] { return plainConnection(); }, journal_);
      if (options_.entry == Entry::transfer) openServices();
    } catch (const RunTimeError& e) {
      throw UsageError(e.description());
    }
  }
  void prepareTransfer(Connection& system) {
    account_ = options_.account;
    const auto span = spanOfYear(system, account_, options_.newYear);
    if (!span)
      throw UsageError("account " + account_ + " has no database for " + std::to_string(options_.newYear) + " in " +
                       place());
    newDatabase_ = span->database;
    requireDatabase(span->database, ", which " + place() + " names");
    if (const auto closing = spanOfYear(system, account_, options_.closingYear))
      requireDatabase(closing->database, ", which " + place() + " names");
  }
  void prepareTransGL(Connection& system) {
    newDatabase_ = options_.newDatabase;
    requireDatabase(options_.newDatabase, "");
    requireDatabase(options_.closingDatabase, "");
    account_ = options_.account;
    if (!account_.empty()) return;
    const auto span = spanOfDatabase(system, options_.newDatabase);
    if (!span) throw UsageError("database " + options_.newDatabase + " is not registered in " + place());
    account_ = span->account;
  }
  void openServices() {
    services_ = newServices();
    services_->SetLogin(login_);
    services_->SetYear(options_.newYear);
    services_->InitServices({}, connectionText(newDatabase_, options_.server), account_, options_.newYear,
                            login_->LoginOperator(), login_->LoginDate());
  }

  void transfer(RunResult& result) {
    gljz::clsGLJZ entry;
    entry.ZwPubCls = services_;
    result.parameters = options_.parameters.value_or("");
    result.returned = entry.Transfer(account_, std::to_string(options_.closingYear), std::to_string(options_.newYear),
                                     result.parameters, login_, result.errMsg, nullptr);
  }
  void transGL(RunResult& result) {
    gljz::clsGLJZ entry;
    result.returned = entry.TransGL(std::to_string(options_.closingYear), std::to_string(options_.newYear), login_,
                                    result.errMsg, options_.closingDatabase, options_.newDatabase, account_, account_);
    result.parameters = gljz::run.m_strCondXml;
  }

  // After a failure that nothing caught: the open transaction goes, and so does what the run had open.
  void undo() noexcept {
    try {
      if (journal_->inTransaction() && gljz::run.m_pubCls) gljz::run.m_pubCls->NewYearConn()->RollbackTrans();
    } catch (const std::exception& e) {
      journal_->note(std::string("the open transaction could not be undone: ") + e.what());
    }
    gljz::run.m_bManual = false;
    gljz::run.m_conn = nullptr;
  }
  static void closeForms() {
    gljz::frmJZSN.unload();
    gljz::frmTranCond.unload();
    gljz::frmSyKmSel.unload();
    gljz::frmNBalance.unload();
    gljz::frmJZBG.unload();
  }

  void collect(RunResult& result) {
    result.success = gljz::run.m_bSuccess;
    result.message = gljz::run.m_strMsg;
    result.transactionBegun = journal_->sawTransaction();
    if (!result.success && !result.uncaught) result.stop = stopOf(result);
    result.steps = forms_.steps();
    result.report = forms_.report();
    if (gljz::frmNBalance.isLoaded()) {
      const auto& rows = gljz::frmNBalance().Grid1.rows;
      if (rows.size() > 1) result.notCarried.assign(rows.begin() + 1, rows.end());
    }
    result.tables = journal_->tables();
    result.stages = journal_->stages();
    result.failures = journal_->failures();
    result.notes = journal_->notes();
    for (const auto& prompt : journal_->prompts()) result.notes.push_back(prompt.text);
    result.statements = journal_->statementCount();
  }
  Stop stopOf(const RunResult& result) const {
    if (const auto& silent = journal_->silentStop()) return {platform::trim(silent->stage), silent->text};
    Stop stop{platform::trim(gljz::run.m_strFuncDesc), result.errMsg.empty() ? result.message : result.errMsg};
    return stop;
  }

  const CarryForwardOptions& options_;
  DateTime today_;
  std::shared_ptr<embedded::Server> server_;
  std::shared_ptr<Journal> journal_;
  std::shared_ptr<const Messages> messages_;
  std::unique_ptr<platform::XmlReader> xml_;
  std::shared_ptr<platform::ComponentFactory> components_;
  JournalDebugOutput debug_;
  ProgramFolder programFolder_;
  ConditionAnswers answers_;
  FormHost forms_;
  platform::Surroundings surroundings_;
  std::string account_, newDatabase_;
  std::shared_ptr<platform::Login> login_;
  std::shared_ptr<platform::ZwPubCls> services_;
};

}  // namespace

RunResult carryForward(const CarryForwardOptions& options) {
  std::unique_ptr<Stage> stage;
  try {
    stage = std::make_unique<Stage>(options);
  } catch (const RunTimeError& e) {
    throw UsageError(e.description());
  } catch (const std::filesystem::filesystem_error& e) {
    throw UsageError(e.what());
  }
  return stage->run();
}

int exitCode(const RunResult& result) {
  if (result.uncaught) return 5;
  if (!result.returned) return 1;
  if (!result.success) return 3;
  if (!result.failures.empty()) return 4;
  if (result.report && result.report->wrong != "0" && !result.report->wrong.empty()) return 4;
  return 0;
}

}  // namespace host
