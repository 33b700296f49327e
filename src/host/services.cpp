#include "host/services.h"

#include <array>
#include <optional>
#include <utility>

#include "balances/code_classification.h"
#include "host/account_directory.h"
#include "host/connection_text.h"
#include "host/form_captions.h"
#include "host/format_database.h"
#include "host/journal_connection.h"
#include "host/journal_services.h"

namespace host {
namespace {

using platform::CodeRecord;
using platform::Connection;
using platform::DateTime;
using platform::Recordset;
using platform::RunTimeError;
using platform::SignRecord;
using platform::Value;

// Stands where a print service would bring its database of page layouts.
class NoFormatDatabase final : public platform::FormatDatabase {
public:
  std::string Name() const override { return {}; }
  void Execute(const std::string&) override { fail(); }
  std::unique_ptr<Recordset> OpenTable(const std::string&) override { fail(); }

private:
  [[noreturn]] static void fail() {
    throw RunTimeError(RunTimeError::objectNotSet, "This program has no format database");
  }
};

// A direction word as each language shows it; the tables hold the Chinese and the English form.
struct DirectionWord {
  const char *simplified, *traditional, *english;
};
constexpr std::array<DirectionWord, 3> directionWords{{{"借", "借", "Dr"}, {"贷", "貸", "Cr"}, {"平", "平", "-"}}};

class Services final : public platform::ZwPubCls {
public:
  explicit Services(const ServicesSettings& settings) : settings_(settings) {
    if (!settings.formatDatabase.empty()) formatDatabase_ = openFormatDatabase(settings.formatDatabase);
  }

  std::shared_ptr<Connection> NewYearConn() override { return observed_; }

  void SetLogin(std::shared_ptr<platform::Login> login) override { login_ = std::move(login); }
  void SetYear(int year) override { year_ = year; }
  void InitServices(const Value&, const std::string& connectionText, const std::string& accountId, int year,
                    const Value&, const Value&) override {
    account_ = accountId;
    year_ = year;
    connection_ = settings_.newConnection();
    observed_ = settings_.journal ? journalConnection(settings_.journal, connection_, true) : connection_;
    observed_->ConnectionOpen(connectionText);
    startYear_.reset();
    firstYear_.reset();
    firstDay_.reset();
    options_.reset();
    hasCodeMatches_.reset();
  }

  std::string ResText(const std::string& key, const std::vector<Value>* args) override {
    return args ? settings_.messages->text(key, *args) : settings_.messages->text(key);
  }
  int ServiceMsgBox(const std::string&, int, const std::string&, const std::string&, int) override { return 0; }
  bool ServiceLocalize(platform::Form& form, const std::string& prefix, const std::string&,
                       const std::string&) override {
    localizeForm(form, *settings_.messages, prefix);
    return true;
  }

  int CurrentYearInfo() override { return year_; }
  int AccountYearInfo() override {
    if (!firstYear_) firstYear_ = firstYear(connection(), account_).value_or(0);
    return *firstYear_;
  }
  int iStartYear() override {
    if (!startYear_) {
      const auto span = spanOfYear(connection(), account_, year_);
      startYear_ = span ? span->beginYear : year_;  // an account that is not registered has a database a year
    }
    return *startYear_;
  }
  DateTime CalendarInfo(int, int) override {
    if (!firstDay_) firstDay_ = firstDayOfYear(connection(), account_, year_);
    return *firstDay_;
  }
  DateTime YearCalendar(int a, int b) override { return CalendarInfo(a, b); }

  std::string OptionText(const std::string& group, const std::string& name) override {
    std::string text;
    readFirst(
        connection(),
        "select cvalue, cdefault from accinformation where cSysID=" + quoted(group) + " and cName=" + quoted(name),
        [&](const Recordset& r) {
          const Value value = r.Field(std::size_t{0});
          text = (value.isNull() ? r.Field(std::size_t{1}) : value).displayText();
        });
    return text;
  }
  platform::AccountOptions AccountOptions() override {
    if (!options_) {
      const auto isTrue = [this](const char* name) {
        return platform::equalsIgnoreCase(platform::trim(OptionText("GL", name)), "True");
      };
      options_ = {isTrue("bMultiCurrency"), OptionText("GL", "cDefaultCurrency"), isTrue("bCusAccount"),
                  isTrue("bSupAccount"), OptionText("AA", "cCompanyName")};
    }
    return *options_;
  }
  std::string OperatorName() override { return settings_.operatorName; }

  void GetCodeRecord(const std::string& code, CodeRecord& record, const std::vector<int>& selectors) override {
    record = {};
    readFirst(connection(), "select * from code where iyear=" + std::to_string(year_) + " and ccode=" + quoted(code),
              [&](const Recordset& r) {
                gljz::classifyCode(
                    r, selectors,
                    [this](const std::string& currency, bool bySelector) { return currencyCode(currency, bySelector); },
                    record);
              });
  }

  std::string MatchCode(const std::string& code, int, bool) override {
    const std::string year = std::to_string(year_);
    if (hasCodeMatches()) {
      std::string renamed;
      readFirst(
          connection(),
          "select m.cNewCode from GL_CodeMatch m inner join code c on c.ccode=m.cNewCode and c.iyear=m.iyear where "
          "m.iyear=" +
              year + " and m.cOldCode=" + quoted(code),
          [&](const Recordset& r) { renamed = r.Field(std::size_t{0}).displayText(); });
      if (!renamed.empty()) return renamed;
    }
    return sameIf("select ccode from code where iyear=" + year + " and ccode=", code);
  }
  std::string MatchDepartment(const std::string& code, int, bool) override {
    return sameIf("select cDepCode from Department where cDepCode=", code);
  }
  std::string MatchPerson(const std::string& code, int, bool) override {
    return sameIf("select cPersonCode from Person where cPersonCode=", code);
  }
  std::string MatchCustomer(const std::string& code, int, bool) override {
    return sameIf("select cCusCode from Customer where cCusCode=", code);
  }
  std::string MatchVendor(const std::string& code, int, bool) override {
    return sameIf("select cVenCode from Vendor where cVenCode=", code);
  }
  // Class "ch" is the inventory; every other class has an item table of its own.
  std::string MatchItem(const std::string& item, const std::string& itemClass, int, bool) override {
    try {
      if (platform::equalsIgnoreCase(platform::trim(itemClass), "ch"))
        return sameIf("select cInvCode from inventory where cInvCode=", item);
      return sameIf("select citemcode from " + bracketed("fitemss" + platform::trim(itemClass)) + " where citemcode=",
                    item);
    } catch (const RunTimeError& e) {
      if (!isMissingTable(e)) throw;
      return {};  // the new year does not have the class
    }
  }

  bool GetSignRecord(const std::string& csign, SignRecord& record) override {
    record = {};
    return readFirst(connection(), "select csign, ctext, isignseq from dsign where csign=" + quoted(csign),
                     [&](const Recordset& r) {
                       record.csign = r.Field(std::size_t{0}).displayText();
                       record.ctext = r.Field(std::size_t{1}).displayText();
                       const Value sequence = r.Field(std::size_t{2});
                       if (!sequence.isNull()) record.iSignSeq = static_cast<int>(sequence.asInteger());
                     });
  }
  bool SignExists(const std::string& csign) override {
    return !sameIf("select csign from dsign where csign=", csign).empty();
  }
  bool SettleStyleExists(const std::string& csettle) override {
    return !sameIf("select csscode from settlestyle where csscode=", csettle).empty();
  }
  std::string TranslateWord(const std::string& word) override {
    const std::string wanted = platform::trim(word);
    for (const DirectionWord& w : directionWords) {
      if (wanted != w.simplified && wanted != w.traditional && !platform::equalsIgnoreCase(wanted, w.english)) continue;
      if (platform::equalsIgnoreCase(settings_.language, "en-US")) return w.english;
      return platform::equalsIgnoreCase(settings_.language, "zh-TW") ? w.traditional : w.simplified;
    }
    return word;
  }

  platform::FormatDatabase& FormatDb() override { return *formatDatabase_; }

private:
  Connection& connection() {
    if (!connection_) throw RunTimeError(RunTimeError::objectNotSet, "The services object has no year yet");
    return *connection_;
  }
  // The code itself when the selection with it has a row, else empty.
  std::string sameIf(const std::string& selection, const std::string& code) {
    if (code.empty()) return {};
    return readFirst(connection(), selection + quoted(code), [](const Recordset&) {}) ? code : std::string();
  }
  // Renamed accounts are rare; whether there are any decides if each account costs one question or two.
  bool hasCodeMatches() {
    if (!hasCodeMatches_) try {
        hasCodeMatches_ =
            readFirst(connection(), "select top 1 cOldCode from GL_CodeMatch where iyear=" + std::to_string(year_),
                      [](const Recordset&) {});
      } catch (const RunTimeError& e) {
        if (!isMissingTable(e)) throw;
        hasCodeMatches_ = false;
      }
    return *hasCodeMatches_;
  }
  std::string currencyCode(const std::string& currency, bool bySelector) {
    std::string code;
    readFirst(connection(),
              bySelector
                  ? "select cexch_code from foreigncurrency,code where foreigncurrency.cexch_name=code.cexch_name "
                    "and code.cexch_name=" +
                        quoted(currency)
                  : "select * from foreigncurrency where cexch_name=" + quoted(currency),
              [&](const Recordset& r) { code = r.Field("cexch_code").displayText(); });
    return code;
  }

  ServicesSettings settings_;
  std::shared_ptr<platform::Login> login_;
  std::shared_ptr<Connection> connection_, observed_;  // one connection; the run sees it through the journal
  std::string account_;
  int year_ = 0;
  std::optional<int> startYear_, firstYear_;
  std::optional<DateTime> firstDay_;
  std::optional<platform::AccountOptions> options_;
  std::optional<bool> hasCodeMatches_;
  std::unique_ptr<platform::FormatDatabase> formatDatabase_ = std::make_unique<NoFormatDatabase>();
};

}  // namespace

std::shared_ptr<platform::ZwPubCls> makeServices(const ServicesSettings& settings) {
  auto services = std::make_shared<Services>(settings);
  if (!settings.journal) return services;
  return journalServices(settings.journal, std::move(services));
}

}  // namespace host
