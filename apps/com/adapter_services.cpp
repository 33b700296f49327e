// The accounting services object and the login of the host.

#include <utility>

#include "adapter_support.h"
#include "adapters.h"
#include "exposed.h"
#include "property_bag.h"

namespace com {
namespace {

using platform::CodeRecord;
using platform::DateTime;
using platform::RunTimeError;
using platform::SignRecord;
using platform::Value;

// Whether a call that failed so may have failed for want of arguments: some script engines say no more than that it
// did.
bool wantsArguments(int failure) {
  return failure == argumentMissing || failure == wrongArgumentCount || failure == static_cast<int>(E_FAIL);
}

constexpr std::size_t mostSelectors = 7;  // of GetCodeRecord

int intOf(const Variant& answer) {
  return static_cast<int>(integerOf(answer));
}

// The print service's tables, in a database of the older client.
class AutomationFormatDatabase final : public platform::FormatDatabase {
public:
  explicit AutomationFormatDatabase(const Pointer<IDispatch>& object) : database_(object) {}
  std::string Name() const override { return database_.get(L"Name").displayText(); }
  void Execute(const std::string& sql) override { database_.call(L"Execute", {Argument(Value(sql))}); }
  std::unique_ptr<platform::Recordset> OpenTable(const std::string& table) override {
    return recordsetOf(objectOf(database_.call(L"OpenRecordset", {Argument(Value(table))}).get()));
  }

private:
  Automation database_;
};

class AutomationLogin final : public platform::Login, public Adapted {
public:
  explicit AutomationLogin(const Pointer<IDispatch>& object) : login_(object) {}
  IDispatch* object() const override { return login_.object(); }

  std::string LoginConnText() const override { return login_.get(L"LoginConnText").displayText(); }
  std::string LoginAccId() const override { return login_.get(L"LoginAccId").displayText(); }
  std::string LoginYear() const override { return login_.get(L"LoginYear").displayText(); }
  std::string LoginLanguage() const override { return login_.get(L"LoginLanguage").displayText(); }
  bool IsGFLogin() const override { return boolOf(login_.call(L"IsGFLogin")); }
  bool LoginOpenAccount(int purpose, std::string& text) override {
    Variant variable{Value(text)};
    const Variant done = login_.call(L"LoginOpenAccount", {Argument(Value(purpose)), Argument::reference(variable)});
    text = textOf(variable.get());
    return boolOf(done);
  }
  void LoginMarkDone(int number, const std::string& systemId, int year, bool done) override {
    login_.call(L"LoginMarkDone",
                {Argument(Value(number)), Argument(Value(systemId)), Argument(Value(year)), Argument(Value(done))});
  }
  // Values that are passed on unread; a login that has none of a name passes Null on.
  Value LoginHandle() const override { return optional(L"LoginHandle"); }
  Value LoginOperator() const override { return optional(L"LoginOperator"); }
  Value LoginDate() const override { return optional(L"LoginDate"); }

private:
  Value optional(const wchar_t* name) const { return login_.has(name) ? login_.get(name) : Value(); }

  Automation login_;
};

class AutomationServices final : public platform::ZwPubCls, public Adapted {
public:
  explicit AutomationServices(const Pointer<IDispatch>& object) : services_(object) {}
  IDispatch* object() const override { return services_.object(); }

  std::shared_ptr<platform::Connection> NewYearConn() override {
    const Pointer<IDispatch> object = objectOf(services_.call(L"NewYearConn").get());
    if (!object) throw RunTimeError(RunTimeError::objectNotSet, "The services object has no connection");
    if (!connection_ || !sameObject(connectionObject_.get(), object.get())) {
      connection_ = connectionOf(object);
      connectionObject_ = object;
    }
    return connection_;
  }

  void SetLogin(std::shared_ptr<platform::Login> login) override {
    services_.call(L"SetLogin", {Argument::object(automationOf(login).get())});
  }
  void SetYear(int year) override { services_.call(L"SetYear", {Argument(Value(year))}); }
  void InitServices(const Value& loginHandle, const std::string& connectionText, const std::string& accountId, int year,
                    const Value& loginOperator, const Value& loginDate) override {
    services_.call(L"InitServices", {Argument(loginHandle), Argument(Value(connectionText)), Argument(Value(accountId)),
                                     Argument(Value(year)), Argument(loginOperator), Argument(loginDate),
                                     Argument::leftOut(), Argument::leftOut()});
  }

  // Always with both arguments: a script's function may know no optional ones.
  std::string ResText(const std::string& key, const std::vector<Value>* args) override {
    const Argument list = args != nullptr ? Argument(Variant::list(*args)) : Argument::leftOut();
    return value(L"ResText", {Argument(Value(key)), list}).displayText();
  }
  int ServiceMsgBox(const std::string& prompt, int style, const std::string& title, const std::string& helpFile,
                    int context) override {
    return intOf(
        services_.call(L"ServiceMsgBox", {Argument(Value(prompt)), Argument(Value(style)), Argument(Value(title)),
                                          Argument(Value(helpFile)), Argument(Value(context))}));
  }
  bool ServiceLocalize(platform::Form& form, const std::string& prefix, const std::string& second,
                       const std::string& third) override {
    const ExposedDialog dialog(form);
    return boolOf(services_.call(L"ServiceLocalize", {Argument::object(dialog.object()), Argument(Value(prefix)),
                                                      Argument(Value(second)), Argument(Value(third))}));
  }

  int CurrentYearInfo() override { return intOf(services_.call(L"CurrentYearInfo")); }
  int AccountYearInfo() override { return intOf(services_.call(L"AccountYearInfo")); }
  int iStartYear() override { return intOf(services_.call(L"iStartYear")); }
  DateTime CalendarInfo(int a, int b) override {
    return value(L"CalendarInfo", {Argument(Value(a)), Argument(Value(b))}).asDateTime();
  }
  // The calendar is an object that is asked for the year's start; a services object may answer the date itself.
  DateTime YearCalendar(int a, int b) override {
    const Arguments arguments = {Argument(Value(a)), Argument(Value(b))};
    Variant calendar;
    try {
      calendar = services_.call(L"YearCalendar");
    } catch (const RunTimeError& e) {
      if (!wantsArguments(e.number())) throw;
      calendar = services_.call(L"YearCalendar", arguments);
    }
    if (const Pointer<IDispatch> object = objectOf(calendar.get()))
      if (const Automation year(object); year.has(L"GetYearStartDate"))
        return valueOf(year.call(L"GetYearStartDate", arguments).get()).asDateTime();
    return valueOf(calendar.get()).asDateTime();
  }
  std::string OptionText(const std::string& group, const std::string& name) override {
    return value(L"OptionText", {Argument(Value(group)), Argument(Value(name))}).displayText();
  }
  platform::AccountOptions AccountOptions() override {
    const Pointer<IDispatch> object = objectOf(services_.call(L"AccountOptions").get());
    if (!object) throw RunTimeError(RunTimeError::objectNotSet, "The services object has no AccountOptions");
    platform::AccountOptions options;
    read(Automation(object), options);
    return options;
  }
  std::string OperatorName() override { return services_.get(L"OperatorName").displayText(); }

  // Always with all selectors, those that are not asked for left out, for the same reason.
  void GetCodeRecord(const std::string& code, CodeRecord& record, const std::vector<int>& selectors) override {
    const Pointer<PropertyBag> bag = bagOf(CodeRecord{});
    Arguments arguments = {Argument(Value(code)), Argument::object(bag.get())};
    for (std::size_t i = 0; i < mostSelectors; ++i)
      arguments.push_back(i < selectors.size() ? Argument(Value(selectors[i])) : Argument::leftOut());
    services_.call(L"GetCodeRecord", arguments);
    record = {};
    read(Automation(share<IDispatch>(bag.get())), record);
  }

  std::string MatchCode(const std::string& code, int option, bool flag) override {
    return match(L"MatchCode", code, option, flag);
  }
  std::string MatchDepartment(const std::string& code, int option, bool flag) override {
    return match(L"MatchDepartment", code, option, flag);
  }
  std::string MatchPerson(const std::string& code, int option, bool flag) override {
    return match(L"MatchPerson", code, option, flag);
  }
  std::string MatchCustomer(const std::string& code, int option, bool flag) override {
    return match(L"MatchCustomer", code, option, flag);
  }
  std::string MatchVendor(const std::string& code, int option, bool flag) override {
    return match(L"MatchVendor", code, option, flag);
  }
  std::string MatchItem(const std::string& item, const std::string& itemClass, int option, bool flag) override {
    return value(L"MatchItem",
                 {Argument(Value(item)), Argument(Value(itemClass)), Argument(Value(option)), Argument(Value(flag))})
        .displayText();
  }

  bool GetSignRecord(const std::string& csign, SignRecord& record) override {
    const Pointer<PropertyBag> bag = bagOf(SignRecord{});
    const bool found = boolOf(services_.call(L"GetSignRecord", {Argument(Value(csign)), Argument::object(bag.get())}));
    record = {};
    read(Automation(share<IDispatch>(bag.get())), record);
    return found;
  }
  bool SignExists(const std::string& csign) override {
    return boolOf(services_.call(L"SignExists", {Argument(Value(csign))}));
  }
  bool SettleStyleExists(const std::string& csettle) override {
    return boolOf(services_.call(L"SettleStyleExists", {Argument(Value(csettle))}));
  }
  std::string TranslateWord(const std::string& word) override {
    return value(L"TranslateWord", {Argument(Value(word))}).displayText();
  }

  platform::FormatDatabase& FormatDb() override {
    const Pointer<IDispatch> object = objectOf(services_.call(L"FormatDb").get());
    if (!object) throw RunTimeError(RunTimeError::objectNotSet, "The services object has no format database");
    if (!formatDatabase_ || !sameObject(formatDatabaseObject_.get(), object.get())) {
      formatDatabase_ = std::make_unique<AutomationFormatDatabase>(object);
      formatDatabaseObject_ = object;
    }
    return *formatDatabase_;
  }

private:
  Value value(const wchar_t* name, const Arguments& arguments) const {
    return valueOf(services_.call(name, arguments).get());
  }
  std::string match(const wchar_t* name, const std::string& code, int option, bool flag) const {
    return value(name, {Argument(Value(code)), Argument(Value(option)), Argument(Value(flag))}).displayText();
  }

  Automation services_;
  Pointer<IDispatch> connectionObject_;
  std::shared_ptr<platform::Connection> connection_;
  Pointer<IDispatch> formatDatabaseObject_;
  std::unique_ptr<platform::FormatDatabase> formatDatabase_;
};

// An adapter gives what it adapts, everything else a new object that stands for it.
template <class I>
Pointer<IDispatch> backOf(const std::shared_ptr<I>& object) {
  if (!object) return nullptr;
  if (const auto* adapted = dynamic_cast<const Adapted*>(object.get())) return share(adapted->object());
  return expose(object);
}

}  // namespace

bool sameObject(IUnknown* a, IUnknown* b) {
  if (a == b) return true;
  const auto first = query<IUnknown>(a, IID_IUnknown), second = query<IUnknown>(b, IID_IUnknown);
  return first.get() == second.get();
}

Native nativeOf(IUnknown* object) {
  void* found = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(nativeInterface, &found))) return {};
  Native native = *static_cast<const Native*>(found);
  object->Release();
  return native;
}

std::shared_ptr<platform::ZwPubCls> servicesOf(const Pointer<IDispatch>& object) {
  static LastAdapter<platform::ZwPubCls, AutomationServices> last;
  if (!object) return nullptr;
  if (const Native native = nativeOf(object.get()); native.services) return native.services;
  return last.of(object);
}

std::shared_ptr<platform::Login> loginOf(const Pointer<IDispatch>& object) {
  static LastAdapter<platform::Login, AutomationLogin> last;
  if (!object) return nullptr;
  if (const Native native = nativeOf(object.get()); native.login) return native.login;
  return last.of(object);
}

Pointer<IDispatch> automationOf(const std::shared_ptr<platform::Connection>& connection) {
  return backOf(connection);
}
Pointer<IDispatch> automationOf(const std::shared_ptr<platform::ZwPubCls>& services) {
  return backOf(services);
}
Pointer<IDispatch> automationOf(const std::shared_ptr<platform::Login>& login) {
  return backOf(login);
}

}  // namespace com
