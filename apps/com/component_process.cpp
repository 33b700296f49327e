#include "component_process.h"

#include <atomic>
#include <ctime>
#include <exception>
#include <filesystem>
#include <utility>
#include <vector>

#include "adapters.h"
#include "component_factory.h"
#include "core/run_state.h"
#include "dialogs/frm_jzsn.h"
#include "host/messages.h"
#include "host/program_folder.h"
#include "host/services.h"
#include "platform/surroundings.h"
#include "windows/form_windows.h"
#include "windows/wide_text.h"
#include "xml/xml_reader.h"

namespace com {
namespace {

using platform::Connection;
using platform::CursorLocation;
using platform::DateTime;
using platform::RunTimeError;

std::vector<std::weak_ptr<const OpenServer>>& openServers() {
  static std::vector<std::weak_ptr<const OpenServer>> servers;
  return servers;
}

// The address of a server that a connection text names; nothing for the database client's texts. That of an ODBC server
// is the last part, since it has semicolons of its own; one more ends the text.
std::optional<std::string> serverOf(const std::string& text) {
  constexpr std::string_view key = "Server=";
  for (const std::string_view kind : {"embedded:", "odbc:"})
    if (const auto at = text.find(std::string(key) + std::string(kind)); at != std::string::npos) {
      std::string address = text.substr(at + key.size());
      if (kind == "embedded:") return address.substr(0, address.find(';'));
      if (address.ends_with(';')) address.pop_back();
      return address;
    }
  return std::nullopt;
}

// The server that was opened last under the address knows its credentials, which no connection text holds.
std::shared_ptr<Connection> connectionFor(const std::string& text) {
  const auto address = serverOf(text);
  if (!address) return clientConnection();
  for (auto known = openServers().rbegin(); known != openServers().rend(); ++known)
    if (const auto open = known->lock(); open && open->address.text == *address) return open->server->newConnection();
  return host::openAnyServer(host::parseServer(*address))->newConnection();
}

// A connection object that has not been opened yet knows nothing of where it will lead.
class NewConnection final : public Connection {
public:
  void ConnectionOpen(const std::string& text) override {
    auto connection = connectionFor(text);
    connection->ConnectionOpen(text);
    connection_ = std::move(connection);
  }
  void ConnectionClose() override {
    if (connection_) connection_->ConnectionClose();
  }
  std::string ConnectionText() const override { return connection_ ? connection_->ConnectionText() : std::string(); }
  platform::RawConnection& RawConnection() override {
    if (connection_) return connection_->RawConnection();
    return closed_;
  }
  void BeginTrans() override { open().BeginTrans(); }
  void CommitTrans() override { open().CommitTrans(); }
  void RollbackTrans() override { open().RollbackTrans(); }
  std::int64_t ExecuteSql(const std::string& sql) override { return open().ExecuteSql(sql); }
  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql, int options,
                                                     CursorLocation location) override {
    return open().OpenRecordset(sql, options, location);
  }

private:
  class Closed final : public platform::RawConnection {
  public:
    int State() const override { return closed; }
    std::unique_ptr<platform::Recordset> Open(const std::string&) override { throw notOpen(); }
    std::unique_ptr<platform::Recordset> OpenCommand(const std::string&, const std::vector<platform::TextParameter>&,
                                                     int) override {
      throw notOpen();
    }
  };
  static RunTimeError notOpen() { return {RunTimeError::connectionClosed, "The connection is closed"}; }
  Connection& open() const {
    if (!connection_) throw notOpen();
    return *connection_;
  }

  std::shared_ptr<Connection> connection_;
  Closed closed_;
};

// The debug output channel takes the system's ANSI code page.
class SystemDebugOutput final : public platform::DebugOutput {
public:
  void Write(const std::string& line) override {
    const std::wstring text = windows::wide(line);
    const int length = static_cast<int>(text.size());
    std::string ansi(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, ansi.data(), static_cast<int>(ansi.size()), nullptr, nullptr);
    OutputDebugStringA(ansi.c_str());
  }
};

DateTime machineDate() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  return DateTime::fromDate(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday);
}

std::string languageOfRun() {
  return gljz::run.m_login ? gljz::run.m_login->LoginLanguage() : "zh-CN";
}

std::filesystem::path folderOfModule(HMODULE module) {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) {
      name.resize(length);
      return std::filesystem::path(name).parent_path();
    }
    name.resize(name.size() * 2);
  }
}

// Everything stays until the process ends: forms and run state live as long.
class Process {
public:
  Process() : xml_(xml::newXmlReader()), components_(makeComponentFactory()) {
    showWindows(windows::desktopIsThere());
    surroundings_.newConnection = newConnection;
    // The services that TransGL makes for itself.
    surroundings_.newServices = [this] {
      const std::string language = languageOfRun();
      std::string operatorName = gljz::run.m_login ? gljz::run.m_login->LoginOperator().displayText() : std::string();
      return host::makeServices({newConnection, nullptr, std::make_shared<host::Messages>(language), language,
                                 std::move(operatorName), programFolder_.file("format.db")});
    };
    surroundings_.xml = xml_.get();
    surroundings_.components = components_.get();
    surroundings_.debug = &debug_;
    surroundings_.today = today;
    surroundings_.text = [](const std::string& key) { return host::Messages(languageOfRun()).text(key); };
    platform::setSurroundings(&surroundings_);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  bool showsWindows() { return forms_->dialogs() != nullptr; }
  void showWindows(bool show) {
    forms_.emplace(windows::FormWindows::Settings{dataFolder(), languageOfRun, show, nullptr, nullptr});
    surroundings_.forms = &*forms_;
    surroundings_.print = &forms_->print();
  }

private:
  // The conditions and the report layouts lie beside the host's program. A script host has none: there the component's
  // own serve.
  std::string dataFolder() const {
    const std::filesystem::path beside = folderOfModule(nullptr);
    std::error_code ignored;
    if (std::filesystem::exists(beside / "TransferParameter.xml", ignored)) return beside.generic_string();
    return programFolder_.text();
  }

  host::ProgramFolder programFolder_;
  std::unique_ptr<platform::XmlReader> xml_;
  std::shared_ptr<platform::ComponentFactory> components_;
  SystemDebugOutput debug_;
  std::optional<windows::FormWindows> forms_;
  platform::Surroundings surroundings_;
};

std::optional<DateTime>& fixedToday() {
  static std::optional<DateTime> day;
  return day;
}

int runsUnderWay = 0;
std::atomic<bool> runState{false};

Process& process() {
  static Process instance;
  return instance;
}

}  // namespace

bool showsWindows() {
  return process().showsWindows();
}

void showWindows(bool show) {
  if (runsUnderWay > 0) throw RunTimeError(RunTimeError::invalidCall, "A carry-forward is on its way");
  if (show && !windows::desktopIsThere())
    throw RunTimeError(RunTimeError::invalidCall, "There is no desktop to show a dialog on");
  if (show != showsWindows()) process().showWindows(show);
}

RunUnderWay::RunUnderWay() : failures_(std::uncaught_exceptions()) {
  ++runsUnderWay;
}

RunUnderWay::~RunUnderWay() {
  --runsUnderWay;
  if (std::uncaught_exceptions() > failures_) gljz::frmJZSN.unload();
}

void prepareProcess() {
  process();
}

void beginRunState() {
  runState = true;
}

bool runStateBegan() {
  return runState;
}

void abandonRun() {
  new gljz::RunState(std::move(gljz::run));
  gljz::run = {};
}

std::shared_ptr<const OpenServer> openServer(const std::string& address, bool create) {
  const host::ServerAddress parsed = host::parseServer(address);
  auto open = std::make_shared<const OpenServer>(OpenServer{parsed, host::openAnyServer(parsed, create)});
  std::erase_if(openServers(), [](const auto& known) { return known.expired(); });
  openServers().push_back(open);
  return open;
}

std::shared_ptr<Connection> newConnection() {
  return std::make_shared<NewConnection>();
}

void setToday(std::optional<DateTime> today) {
  fixedToday() = today;
}

DateTime today() {
  return fixedToday().value_or(machineDate());
}

}  // namespace com
