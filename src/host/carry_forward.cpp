#include "host/carry_forward.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>

#include "core/cls_gljz.h"
#include "core/mdu_jz.h"
#include "core/run_state.h"
#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "host/account_directory.h"
#include "host/account_division.h"
#include "host/components.h"
#include "host/database_server.h"
#include "host/journal_connection.h"
#include "host/left_out.h"
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
        printing_(options.language, options.print, options.dialogs),
        forms_(formAnswers()) {
    if (!options.traceFile.empty()) journal_->traceTo(options.traceFile);
    surroundings_.newConnection = [this] { return observedConnection(); };
    surroundings_.newServices = [this] { return newServices(); };
    surroundings_.xml = xml_.get();
    surroundings_.forms = &forms_;
    surroundings_.print = printing_.control();
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
    result.account = account_;
    result.company = companyName();
    result.closingYear = options_.closingYear;
    result.newYear = options_.newYear;
    result.operatorName = options_.operatorName;
    result.day = today_.dateText();
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

  ConditionPreview preview() {
    prepare();
    gljz::RunState& state = gljz::run;
    // A cancelled dialog falls back on the parameter text of an earlier run, which this is not.
    struct Restored {
      gljz::RunState before = gljz::run;
      ~Restored() { gljz::run = before; }
    } restored;
    state.m_pubCls = services_;
    state.m_login = login_;
    state.m_strLastYear = std::to_string(options_.closingYear);
    state.m_strCurYear = std::to_string(options_.newYear);
    state.m_strLastDB = gljz::GetDatabaseName(state.m_strLastYear);
    state.m_strCurDB = gljz::GetDatabaseName(state.m_strCurYear);
    ConditionPreview preview;
    gljz::FrmTranCond& form = gljz::frmTranCond();
    for (const auto& item : form.lvCond) preview.switches.push_back({item.key, item.text, item.checked});
    form.cmdOk_Click();
    preview.parameters = state.m_strCondXml;
    return preview;
  }

private:
  static ServerPtr openServer(const CarryForwardOptions& options) {
    ServerPtr server = openAnyServer(options.server);
    if (options.today) server->setClock([ticks = options.today->ticks()] { return ticks; });
    return server;
  }

  FormAnswers formAnswers() {
    FormAnswers answers;
    if (options_.parameters) answers.conditions = [this] { gljz::run.m_strCondXml = *options_.parameters; };
    answers.progress = options_.progress;
    answers.programFolder = programFolder_.text();
    answers.dialogs = options_.dialogs ? options_.dialogs : &answers_;
    answers.printing = &printing_;
    answers.rowsWritten = [this] { return journal_->rowsWritten(); };
    answers.conditionsBegin = [this] { rememberDivision(); };
    answers.conditionsLeft = [this](bool interrupted) { settleDivision(interrupted); };
    return answers;
  }

  // Intended: an account set without the table, which cannot be remembered, can be asked all the same.
  void rememberDivision() noexcept {
    try {
      division_.emplace(server_, newDatabase_);
    } catch (const std::exception&) {
      division_.reset();
    }
  }
  // Who interrupts the program expects that nothing has happened. Who leaves the conditions has confirmed the division
  // in a dialog of its own, and the system keeps it.
  void settleDivision(bool interrupted) noexcept {
    try {
      if (!division_ || !division_->hasChanged()) return;
      if (!interrupted) return journal_->note("the division of accounts that was confirmed stays stored");
      division_->putBack();
    } catch (const std::exception& e) {
      journal_->note(std::string("the division of accounts could not be put back as it was: ") + e.what());
    }
  }

  std::shared_ptr<Connection> plainConnection() { return server_->newConnection(); }
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
      if (const std::string note = server_->note(); !note.empty()) journal_->note(note);
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

  // For the reports' heads alone: a run does not depend on it.
  std::string companyName() noexcept {
    try {
      auto connection = plainConnection();
      connection->ConnectionOpen(connectionText(newDatabase_, options_.server));
      std::string name;
      readFirst(*connection, "select cvalue, cdefault from accinformation where cSysID=N'AA' and cName=N'cCompanyName'",
                [&](const platform::Recordset& r) {
                  name = r.Field(r.Field(std::size_t{0}).isNull() ? 1 : 0).displayText();
                });
      return name;
    } catch (const std::exception&) {
      return {};
    }
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
    result.conditionsLeft = forms_.conditionsLeft() && !result.uncaught;
    result.prints = printing_.outcomes();
    if (gljz::frmNBalance.isLoaded()) {
      const auto& rows = gljz::frmNBalance().Grid1.rows;
      if (rows.size() > 1) result.notCarried.assign(rows.begin() + 1, rows.end());
    }
    const bool carried = result.success && !result.uncaught;
    if (carried) {
      noteUndivided(result.parameters);
      result.balance = yearBalance(result.notCarried);
    }
    journal_->finish();
    result.tables = journal_->tables();
    result.stages = journal_->stages();
    result.failures = journal_->failures();
    result.notes = journal_->notes();
    if (carried) result.bank = bankCarry();
    for (const auto& prompt : journal_->prompts()) result.notes.push_back(prompt.text);
    result.statements = journal_->statementCount();
  }

  bool isTicked(const std::string& parameters, const std::string& key) const {
    const auto document = xml_->NewDocument();
    const auto root = document->LoadText(parameters) ? document->Root() : nullptr;
    if (!root) return false;
    const auto rows = root->Select("Parameter");
    return std::any_of(rows.begin(), rows.end(), [&](const auto& row) {
      return row->Attribute("ID") == key && row->Attribute("Check") == "True";
    });
  }
  // The tick alone carries no detail of customers and suppliers: how they are carried is what their dialog decides,
  // and a run that was not asked for it carries neither detail nor says a word.
  void noteUndivided(const std::string& parameters) {
    const gljz::RunState& run = gljz::run;
    const auto note = [&](const char* who, const char* option) {
      journal_->note(
          std::string("accounts were not divided: no open items of ") + who +
          " were carried, though they were ticked; the selection button of the conditions divides them, or " + option);
    };
    if (run.m_bCusPresent && run.m_iCusMode == 0 && !forms_.divided(true) && isTicked(parameters, "GL*CusMXJZ"))
      note("customers", "--customer-detail");
    if (run.m_bSupPresent && run.m_iSupMode == 0 && !forms_.divided(false) && isTicked(parameters, "GL*SupMXJZ"))
      note("suppliers", "--supplier-detail");
  }

  // As the bank below.
  std::optional<YearBalance> yearBalance(const std::vector<std::vector<std::string>>& notCarried) {
    const gljz::RunState& run = gljz::run;
    YearBalanceQuestion question{run.m_strLastDB, options_.closingYear, options_.newYear, {}};
    for (const auto& row : notCarried)
      if (isAccountLeftOut(row, *messages_)) question.leftOut.insert(row[1]);
    try {
      const auto connection = plainConnection();
      connection->ConnectionOpen(connectionText(run.m_strCurDB, options_.server));
      return readYearBalance(*connection, question);
    } catch (const RunTimeError&) {
      return std::nullopt;
    }
  }
  // For the report alone, on a connection that the journal does not see. The stage is known by what it calls itself.
  std::optional<std::vector<BankCarry>> bankCarry() {
    const auto& stages = journal_->stages();
    const bool ran = std::any_of(stages.begin(), stages.end(), [](const Journal::Stage& stage) {
      return platform::trim(stage.name).ends_with(Journal::bankLedgerStage);
    });
    if (!ran) return std::nullopt;
    const gljz::RunState& run = gljz::run;
    constexpr std::uint8_t openLinesOnly = 2;
    try {
      auto services = makeServices(
          {[this] { return plainConnection(); }, nullptr, messages_, options_.language, options_.operatorName, {}});
      services->InitServices({}, connectionText(run.m_strCurDB, options_.server), account_, options_.newYear, {}, {});
      return readBankCarry(*services, {run.m_strLastDB, run.m_strCurDB, run.m_strLastYear, run.m_strCurYear,
                                       run.m_bBankTransfer != openLinesOnly});
    } catch (const RunTimeError&) {
      return std::nullopt;  // the years were carried; what cannot be read is not told
    }
  }
  Stop stopOf(const RunResult& result) const {
    if (const auto& silent = journal_->silentStop()) return {platform::trim(silent->stage), silent->text};
    Stop stop{platform::trim(gljz::run.m_strFuncDesc), result.errMsg.empty() ? result.message : result.errMsg};
    // An entry that stops before its first step may not have named one.
    if (stop.where.empty()) stop.where = options_.entry == Entry::transfer ? "Transfer" : "TransGL";
    return stop;
  }

  const CarryForwardOptions& options_;
  DateTime today_;
  ServerPtr server_;
  std::shared_ptr<Journal> journal_;
  std::shared_ptr<const Messages> messages_;
  std::unique_ptr<platform::XmlReader> xml_;
  std::shared_ptr<platform::ComponentFactory> components_;
  JournalDebugOutput debug_;
  ProgramFolder programFolder_;
  ConditionAnswers answers_;
  Printing printing_;
  FormHost forms_;
  platform::Surroundings surroundings_;
  std::string account_, newDatabase_;
  std::optional<AccountDivision> division_;
  std::shared_ptr<platform::Login> login_;
  std::shared_ptr<platform::ZwPubCls> services_;
};

std::unique_ptr<Stage> makeStage(const CarryForwardOptions& options) {
  try {
    return std::make_unique<Stage>(options);
  } catch (const RunTimeError& e) {
    throw UsageError(e.description());
  } catch (const std::filesystem::filesystem_error& e) {
    throw UsageError(e.what());
  }
}

}  // namespace

ConditionPreview previewConditions(const CarryForwardOptions& options) {
  return makeStage(options)->preview();
}

RunResult carryForward(const CarryForwardOptions& options) {
  return makeStage(options)->run();
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
