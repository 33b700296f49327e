#include "host/login.h"

#include <charconv>
#include <utility>

#include "host/account_directory.h"

namespace host {
namespace {

using platform::Connection;
using platform::RunTimeError;
using platform::Value;

class HostLogin final : public platform::Login {
public:
  HostLogin(LoginSettings settings, std::function<std::shared_ptr<Connection>()> newConnection,
            std::shared_ptr<Journal> journal)
      : settings_(std::move(settings)), newConnection_(std::move(newConnection)), journal_(std::move(journal)) {}

  std::string LoginConnText() const override { return connectionText(systemDatabase, settings_.server); }
  std::string LoginAccId() const override { return settings_.account; }
  std::string LoginYear() const override { return settings_.year; }
  std::string LoginLanguage() const override { return settings_.language; }
  bool IsGFLogin() const override { return settings_.subsystemGF; }
  Value LoginHandle() const override { return Value(); }
  Value LoginOperator() const override { return settings_.operatorName; }
  Value LoginDate() const override { return settings_.today; }

  // text: account digits and year in one run, "0012006".
  bool LoginOpenAccount(int, std::string& text) override {
    constexpr std::size_t yearDigits = 4;
    if (text.size() <= yearDigits) return false;
    const std::string account = text.substr(0, text.size() - yearDigits);
    const std::string digits = text.substr(text.size() - yearDigits);
    int year = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), year);
    if (failure != std::errc() || end != digits.data() + digits.size()) return false;
    const auto span = spanOfYear(*systemConnection(), account, year);
    if (!span) return false;
    text = connectionText(span->database, settings_.server);
    return true;
  }

  void LoginMarkDone(int number, const std::string& systemId, int year, bool done) override {
    const std::string sql = "insert into UA_Mark(cAcc_Id, iNumber, cSysID, iYear, bDone, dTime) values(" +
                            quoted(settings_.account) + ", " + std::to_string(number) + ", " + quoted(systemId) + ", " +
                            std::to_string(year) + ", " + (done ? "1" : "0") + ", getdate())";
    try {
      systemConnection()->ExecuteSql(sql);
    } catch (const RunTimeError& e) {
      if (!isMissingTable(e)) throw;
      if (journal_) journal_->note("TqSystem has no table UA_Mark: the end of the carry-forward is not recorded there");
    }
  }

private:
  std::shared_ptr<Connection> systemConnection() {
    auto connection = newConnection_();
    connection->ConnectionOpen(LoginConnText());
    return connection;
  }

  LoginSettings settings_;
  std::function<std::shared_ptr<Connection>()> newConnection_;
  std::shared_ptr<Journal> journal_;
};

}  // namespace

std::shared_ptr<platform::Login> makeLogin(LoginSettings settings,
                                           std::function<std::shared_ptr<Connection>()> newConnection,
                                           std::shared_ptr<Journal> journal) {
  return std::make_shared<HostLogin>(std::move(settings), std::move(newConnection), std::move(journal));
}

}  // namespace host
