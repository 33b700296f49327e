// The reference host's services and login for scripts, and a dialog for services that localize it.

#include <utility>

#include "adapters.h"
#include "dialogs/dialog.h"
#include "dispatch_object.h"
#include "exposed.h"
#include "native.h"
#include "property_bag.h"

namespace com {
namespace {

using platform::CodeRecord;
using platform::RunTimeError;
using platform::SignRecord;
using platform::Value;
using platform::ZwPubCls;

// An argument that is an array of values, or a single one.
std::vector<Value> listOf(const VARIANT* v) {
  v = behindReferences(v);
  SAFEARRAY* array = nullptr;
  if (v->vt == (VT_ARRAY | VT_VARIANT)) array = v->parray;
  if (v->vt == (VT_BYREF | VT_ARRAY | VT_VARIANT)) array = *v->pparray;
  if (array == nullptr) return {valueOf(v)};
  std::vector<Value> values;
  LONG first = 0, last = -1;
  SafeArrayGetLBound(array, 1, &first);
  SafeArrayGetUBound(array, 1, &last);
  for (LONG i = first; i <= last; ++i) {
    Variant element;
    require(SafeArrayGetElement(array, &i, element.receive()), "reading an array");
    values.push_back(valueOf(element.get()));
  }
  return values;
}

class ExposedLogin final : public TableObject<ExposedLogin> {
public:
  explicit ExposedLogin(std::shared_ptr<platform::Login> login) : native_{nullptr, nullptr, std::move(login)} {}
  static const MemberTable<ExposedLogin>& members() {
    using L = ExposedLogin;
    static const MemberTable<L> table = {
        {L"LoginConnText", 1, propertyGet, {}, 0, &L::connText},
        {L"LoginAccId", 2, propertyGet, {}, 0, &L::accId},
        {L"LoginYear", 3, propertyGet, {}, 0, &L::year},
        {L"LoginLanguage", 4, propertyGet, {}, 0, &L::language},
        {L"IsGFLogin", 5, propertyGet, {}, 0, &L::isGF},
        {L"LoginOpenAccount", 6, method, {L"purpose", L"text"}, 2, &L::openAccount},
        {L"LoginMarkDone", 7, method, {L"number", L"systemId", L"year", L"done"}, 4, &L::markDone},
        {L"LoginHandle", 8, propertyGet, {}, 0, &L::handle},
        {L"LoginOperator", 9, propertyGet, {}, 0, &L::operatorName},
        {L"LoginDate", 10, propertyGet, {}, 0, &L::date},
    };
    return table;
  }

private:
  void* interfaceOf(REFIID id) override { return IsEqualIID(id, nativeInterface) ? &native_ : nullptr; }
  platform::Login& login() const { return *native_.login; }

  Variant connText(const Invocation&) { return Variant(Value(login().LoginConnText())); }
  Variant accId(const Invocation&) { return Variant(Value(login().LoginAccId())); }
  Variant year(const Invocation&) { return Variant(Value(login().LoginYear())); }
  Variant language(const Invocation&) { return Variant(Value(login().LoginLanguage())); }
  Variant isGF(const Invocation&) { return Variant(Value(login().IsGFLogin())); }
  Variant openAccount(const Invocation& call) {
    std::string text = call.text(1);
    const bool opened = login().LoginOpenAccount(call.integer(0), text);
    call.setText(1, text);
    return Variant(Value(opened));
  }
  Variant markDone(const Invocation& call) {
    login().LoginMarkDone(call.integer(0), call.text(1), call.integer(2), call.boolean(3));
    return {};
  }
  Variant handle(const Invocation&) { return Variant(login().LoginHandle()); }
  Variant operatorName(const Invocation&) { return Variant(login().LoginOperator()); }
  Variant date(const Invocation&) { return Variant(login().LoginDate()); }

  Native native_;
};

// The print service's tables. They live with the services.
class ExposedFormatDatabase final : public TableObject<ExposedFormatDatabase> {
public:
  explicit ExposedFormatDatabase(std::shared_ptr<ZwPubCls> services) : services_(std::move(services)) {}
  static const MemberTable<ExposedFormatDatabase>& members() {
    using D = ExposedFormatDatabase;
    static const MemberTable<D> table = {
        {L"Name", 1, propertyGet, {}, 0, &D::name},
        {L"Execute", 2, method, {L"sql"}, 1, &D::execute},
        {L"OpenRecordset", 3, method, {L"table"}, 1, &D::openRecordset},
    };
    return table;
  }

private:
  Variant name(const Invocation&) { return Variant(Value(services_->FormatDb().Name())); }
  Variant execute(const Invocation& call) {
    services_->FormatDb().Execute(call.text(0));
    return {};
  }
  Variant openRecordset(const Invocation& call) {
    return Variant(expose(services_->FormatDb().OpenTable(call.text(0))).get());
  }

  std::shared_ptr<ZwPubCls> services_;
};

class ExposedServices final : public TableObject<ExposedServices> {
public:
  explicit ExposedServices(std::shared_ptr<ZwPubCls> services) : native_{nullptr, std::move(services), nullptr} {}
  static const MemberTable<ExposedServices>& members() {
    using S = ExposedServices;
    static const MemberTable<S> table = {
        {L"NewYearConn", 1, propertyGet, {}, 0, &S::newYearConn},
        {L"SetLogin", 2, method, {L"login"}, 1, &S::setLogin},
        {L"SetYear", 3, method, {L"year"}, 1, &S::setYear},
        {L"InitServices",
         4,
         method,
         {L"loginHandle", L"connectionText", L"accountId", L"year", L"loginOperator", L"loginDate", L"a", L"b"},
         4,
         &S::initServices},
        {L"ResText", 5, method, {L"key", L"args"}, 1, &S::resText},
        {L"ServiceMsgBox", 6, method, {L"prompt", L"style", L"title", L"helpFile", L"context"}, 1, &S::msgBox},
        {L"ServiceLocalize", 7, method, {L"form", L"prefix", L"second", L"third"}, 2, &S::localize},
        {L"CurrentYearInfo", 8, propertyGet, {}, 0, &S::currentYear},
        {L"AccountYearInfo", 9, propertyGet, {}, 0, &S::accountYear},
        {L"iStartYear", 10, propertyGet, {}, 0, &S::startYear},
        {L"CalendarInfo", 11, method | propertyGet, {L"a", L"b"}, 2, &S::calendar},
        {L"YearCalendar", 12, method | propertyGet, {L"a", L"b"}, 2, &S::calendar},
        {L"OptionText", 13, method | propertyGet, {L"group", L"name"}, 2, &S::optionText},
        {L"AccountOptions", 14, propertyGet, {}, 0, &S::accountOptions},
        {L"OperatorName", 15, propertyGet, {}, 0, &S::operatorName},
        {L"GetCodeRecord",
         16,
         method,
         {L"code", L"record", L"s1", L"s2", L"s3", L"s4", L"s5", L"s6", L"s7"},
         1,
         &S::codeRecord},
        {L"MatchCode", 17, method, {L"code", L"option", L"flag"}, 1, &S::matchCode},
        {L"MatchDepartment", 18, method, {L"code", L"option", L"flag"}, 1, &S::matchDepartment},
        {L"MatchPerson", 19, method, {L"code", L"option", L"flag"}, 1, &S::matchPerson},
        {L"MatchCustomer", 20, method, {L"code", L"option", L"flag"}, 1, &S::matchCustomer},
        {L"MatchVendor", 21, method, {L"code", L"option", L"flag"}, 1, &S::matchVendor},
        {L"MatchItem", 22, method, {L"item", L"itemClass", L"option", L"flag"}, 2, &S::matchItem},
        {L"GetSignRecord", 23, method, {L"csign", L"record"}, 2, &S::signRecord},
        {L"SignExists", 24, method, {L"csign"}, 1, &S::signExists},
        {L"SettleStyleExists", 25, method, {L"csettle"}, 1, &S::settleStyleExists},
        {L"TranslateWord", 26, method, {L"word"}, 1, &S::translateWord},
        {L"FormatDb", 27, propertyGet, {}, 0, &S::formatDatabase},
    };
    return table;
  }

private:
  void* interfaceOf(REFIID id) override { return IsEqualIID(id, nativeInterface) ? &native_ : nullptr; }
  ZwPubCls& services() const { return *native_.services; }

  static Variant text(const std::string& text) { return Variant(Value(text)); }
  static int option(const Invocation& call, std::size_t i, int otherwise) {
    return call.has(i) ? call.integer(i) : otherwise;
  }
  static bool flag(const Invocation& call, std::size_t i) { return call.has(i) ? call.boolean(i) : true; }

  Variant newYearConn(const Invocation&) { return Variant(automationOf(services().NewYearConn()).get()); }
  Variant setLogin(const Invocation& call) {
    services().SetLogin(loginOf(call.object(0)));
    return {};
  }
  Variant setYear(const Invocation& call) {
    services().SetYear(call.integer(0));
    return {};
  }
  Variant initServices(const Invocation& call) {
    services().InitServices(call.value(0), call.text(1), call.text(2), call.integer(3), call.value(4), call.value(5));
    return {};
  }
  Variant resText(const Invocation& call) {
    if (!call.has(1)) return text(services().ResText(call.text(0), nullptr));
    const std::vector<Value> list = listOf(call.at(1));
    return text(services().ResText(call.text(0), &list));
  }
  Variant msgBox(const Invocation& call) {
    return Variant(Value(
        services().ServiceMsgBox(call.text(0), option(call, 1, 0), call.text(2), call.text(3), option(call, 4, 0))));
  }
  // A form that comes through a host's own services object and is passed on by it.
  Variant localize(const Invocation& call);

  Variant currentYear(const Invocation&) { return Variant(Value(services().CurrentYearInfo())); }
  Variant accountYear(const Invocation&) { return Variant(Value(services().AccountYearInfo())); }
  Variant startYear(const Invocation&) { return Variant(Value(services().iStartYear())); }
  Variant calendar(const Invocation& call) {
    return Variant(Value(services().CalendarInfo(call.integer(0), call.integer(1))));
  }
  Variant optionText(const Invocation& call) { return text(services().OptionText(call.text(0), call.text(1))); }
  Variant accountOptions(const Invocation&) { return Variant(bagOf(services().AccountOptions()).get()); }
  Variant operatorName(const Invocation&) { return text(services().OperatorName()); }

  // Fills the object that is given, or answers one.
  Variant codeRecord(const Invocation& call) {
    std::vector<int> selectors;
    constexpr std::size_t firstSelector = 2, mostSelectors = 7;
    for (std::size_t i = firstSelector; i < firstSelector + mostSelectors && call.has(i); ++i)
      selectors.push_back(call.integer(i));
    CodeRecord record;
    services().GetCodeRecord(call.text(0), record, selectors);
    const Pointer<IDispatch> target = call.object(1);
    if (!target) return Variant(bagOf(record).get());
    write(record, Automation(target));
    return {};
  }

  Variant matchCode(const Invocation& c) { return text(services().MatchCode(c.text(0), option(c, 1, 2), flag(c, 2))); }
  Variant matchDepartment(const Invocation& c) {
    return text(services().MatchDepartment(c.text(0), option(c, 1, 0), flag(c, 2)));
  }
  Variant matchPerson(const Invocation& c) {
    return text(services().MatchPerson(c.text(0), option(c, 1, 0), flag(c, 2)));
  }
  Variant matchCustomer(const Invocation& c) {
    return text(services().MatchCustomer(c.text(0), option(c, 1, 0), flag(c, 2)));
  }
  Variant matchVendor(const Invocation& c) {
    return text(services().MatchVendor(c.text(0), option(c, 1, 0), flag(c, 2)));
  }
  Variant matchItem(const Invocation& c) {
    return text(services().MatchItem(c.text(0), c.text(1), option(c, 2, 0), flag(c, 3)));
  }
  Variant signRecord(const Invocation& call) {
    SignRecord record;
    const bool found = services().GetSignRecord(call.text(0), record);
    const Pointer<IDispatch> target = call.object(1);
    if (!target) throw RunTimeError(RunTimeError::objectNotSet, "GetSignRecord fills an object");
    write(record, Automation(target));
    return Variant(Value(found));
  }
  Variant signExists(const Invocation& call) { return Variant(Value(services().SignExists(call.text(0)))); }
  Variant settleStyleExists(const Invocation& call) {
    return Variant(Value(services().SettleStyleExists(call.text(0))));
  }
  Variant translateWord(const Invocation& call) { return text(services().TranslateWord(call.text(0))); }
  Variant formatDatabase(const Invocation&) {
    if (!formatDatabase_) formatDatabase_ = adopt<IDispatch>(new ExposedFormatDatabase(native_.services));
    return Variant(formatDatabase_.get());
  }

  Native native_;
  Pointer<IDispatch> formatDatabase_;
};

// The dialog's name, and its captions by the names of its controls; an empty name is the dialog's own. The object may
// be kept for longer than the call that it was made for, the dialog not.
class ExposedForm final : public TableObject<ExposedForm> {
public:
  explicit ExposedForm(platform::Form& form) : form_(&form) {}
  static const MemberTable<ExposedForm>& members() {
    using F = ExposedForm;
    static const MemberTable<F> table = {
        {L"Name", 1, propertyGet, {}, 0, &F::name},
        {L"Caption", 2, method | property, {L"control"}, 0, &F::caption},
    };
    return table;
  }
  platform::Form& form() const {
    if (form_ == nullptr) throw RunTimeError(RunTimeError::objectNotSet, "The dialog has gone");
    return *form_;
  }
  void letGo() { form_ = nullptr; }

private:
  void* interfaceOf(REFIID id) override { return IsEqualIID(id, formInterface) ? this : nullptr; }

  Variant name(const Invocation&) { return Variant(Value(form().Name())); }
  Variant caption(const Invocation& call) {
    const std::string wanted = call.text(0);
    Variant result;
    bool found = false;
    const auto look = [&](std::string_view control, std::string& caption) {
      if (!platform::equalsIgnoreCase(control, wanted)) return;
      found = true;
      if (call.writes())
        caption = textOf(call.newValue());
      else
        result = Variant(Value(caption));
    };
    if (auto* dialog = dynamic_cast<gljz::Dialog*>(&form())) dialog->visitCaptions(look);
    if (!found) throw RunTimeError(RunTimeError::invalidCall, "The dialog has no control " + wanted);
    return result;
  }

public:
  static constexpr GUID formInterface = {0x63f6d6c9, 0xeef5, 0x495a, {0xb9, 0x1a, 0x84, 0xcd, 0x47, 0x94, 0xd3, 0xc4}};

private:
  platform::Form* form_;
};

Variant ExposedServices::localize(const Invocation& call) {
  const Pointer<IDispatch> object = call.object(0);
  void* found = nullptr;
  if (!object || FAILED(object->QueryInterface(ExposedForm::formInterface, &found)))
    throw RunTimeError(RunTimeError::typeMismatch, "Only a dialog of the carry-forward can be localized");
  auto* form = static_cast<ExposedForm*>(found);
  const Pointer<DispatchObject> counted = adopt<DispatchObject>(form);
  return Variant(Value(services().ServiceLocalize(form->form(), call.text(1), call.text(2), call.text(3))));
}

}  // namespace

Pointer<IDispatch> expose(std::shared_ptr<ZwPubCls> services) {
  return adopt<IDispatch>(new ExposedServices(std::move(services)));
}

Pointer<IDispatch> expose(std::shared_ptr<platform::Login> login) {
  return adopt<IDispatch>(new ExposedLogin(std::move(login)));
}

ExposedDialog::ExposedDialog(platform::Form& form) : object_(adopt<IDispatch>(new ExposedForm(form))) {}

ExposedDialog::~ExposedDialog() {
  static_cast<ExposedForm*>(object_.get())->letGo();
}

}  // namespace com
