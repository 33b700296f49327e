#include "reference_host.h"

#include <utility>

#include "component_process.h"
#include "dispatch_object.h"
#include "exposed.h"
#include "host/demo.h"
#include "host/login.h"
#include "host/messages.h"
#include "host/program_folder.h"
#include "host/services.h"
#include "host/usage_error.h"

namespace com {
namespace {

using platform::RunTimeError;
using platform::Value;

class ReferenceHost final : public TableObject<ReferenceHost> {
public:
  ReferenceHost() { prepareProcess(); }
  // Ids and parameters are those of the type library.
  static const MemberTable<ReferenceHost>& members() {
    using H = ReferenceHost;
    static const MemberTable<H> table = {
        {L"Language", 1, property, {}, 0, &H::language},
        {L"Operator", 2, property, {}, 0, &H::operatorName},
        {L"IsGFLogin", 3, property, {}, 0, &H::isGFLogin},
        {L"Today", 4, property, {}, 0, &H::day},
        {L"Interactive", 11, property, {}, 0, &H::interactive},
        {L"Open", 5, method, {L"server", L"create"}, 1, &H::open},
        {L"CreateDemo", 6, method, {}, 0, &H::createDemo},
        {L"Services", 7, method, {L"account", L"year"}, 2, &H::services},
        {L"Login", 8, method, {L"account", L"year"}, 0, &H::login},
        {L"Connection", 9, method, {L"database"}, 1, &H::connection},
        {L"Close", 10, method, {}, 0, &H::close},
    };
    return table;
  }

private:
  Variant language(const Invocation& call) {
    if (!call.writes()) return Variant(Value(language_));
    const std::string wanted = textOf(call.newValue());
    for (const std::string& known : host::Messages::languages())
      if (platform::equalsIgnoreCase(known, wanted)) {
        language_ = known;
        return {};
      }
    throw RunTimeError(RunTimeError::invalidCall, "No language " + wanted + ": zh-CN, zh-TW and en-US are known");
  }
  Variant operatorName(const Invocation& call) {
    if (!call.writes()) return Variant(Value(operator_));
    operator_ = textOf(call.newValue());
    return {};
  }
  Variant isGFLogin(const Invocation& call) {
    if (!call.writes()) return Variant(Value(subsystemGF_));
    subsystemGF_ = valueOf(call.newValue()).asBool();
    return {};
  }
  Variant day(const Invocation& call) {
    if (!call.writes()) return Variant(Value(today()));
    today_ = valueOf(call.newValue()).asDateTime();
    setToday(today_);
    if (open_) applyClock();
    return {};
  }

  Variant interactive(const Invocation& call) {
    if (!call.writes()) return Variant(Value(showsWindows()));
    showWindows(valueOf(call.newValue()).asBool());
    return {};
  }

  Variant open(const Invocation& call) {
    const bool create = call.has(1) && call.boolean(1);
    open_ = openServer(call.text(0), create);
    applyClock();
    return {};
  }
  Variant createDemo(const Invocation&) {
    host::createDemo(server().server);
    return {};
  }
  Variant services(const Invocation& call) {
    const std::string account = call.text(0);
    const int year = call.integer(1);
    auto login = newLogin(account, std::to_string(year));
    std::string connectionText = account + std::to_string(year);
    constexpr int openForServices = 10;
    if (!login->LoginOpenAccount(openForServices, connectionText))
      throw RunTimeError(RunTimeError::invalidCall, "Account " + account + " has no database for " +
                                                        std::to_string(year) + " on server " + server().address.text);
    auto services = host::makeServices({newConnection, nullptr, std::make_shared<host::Messages>(language_), language_,
                                        operator_, files().file("format.db")});
    services->SetLogin(login);
    services->SetYear(year);
    services->InitServices({}, connectionText, account, year, login->LoginOperator(), login->LoginDate());
    return Variant(expose(std::move(services)).get());
  }
  Variant login(const Invocation& call) {
    const std::string year = call.has(1) ? std::to_string(call.integer(1)) : std::string();
    return Variant(expose(newLogin(call.text(0), year)).get());
  }
  Variant connection(const Invocation& call) {
    auto connection = newConnection();
    connection->ConnectionOpen(host::connectionText(call.text(0), server().address));
    return Variant(expose(std::move(connection)).get());
  }
  // Connections that were made go on until they are closed themselves.
  Variant close(const Invocation&) {
    open_ = nullptr;
    return {};
  }

  const OpenServer& server() const {
    if (!open_) throw RunTimeError(RunTimeError::objectNotSet, "No server is open: call Open first");
    return *open_;
  }
  void applyClock() const {
    if (today_) host::ServerPtr(open_->server)->setClock([ticks = today_->ticks()] { return ticks; });
  }
  std::shared_ptr<platform::Login> newLogin(const std::string& account, const std::string& year) const {
    host::LoginSettings settings{server().address, account, year, language_, operator_, subsystemGF_, today()};
    return host::makeLogin(std::move(settings), newConnection, nullptr);
  }
  // Where the print service keeps its tables, for the life of the process.
  static const host::ProgramFolder& files() {
    static const host::ProgramFolder folder;
    return folder;
  }

  std::shared_ptr<const OpenServer> open_;
  std::string language_ = "zh-CN", operator_ = "gljz";
  bool subsystemGF_ = false;
  std::optional<platform::DateTime> today_;
};

}  // namespace

Pointer<IDispatch> newReferenceHost() {
  return adopt<IDispatch>(new ReferenceHost);
}

}  // namespace com
