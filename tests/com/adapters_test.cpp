// The host's objects as the system sees them: what scripts answer, and objects of ours that come back inside them.

#include "adapters.h"

#include <gmock/gmock.h>

#include "component_factory.h"
#include "component_host.h"
#include "component_process.h"
#include "dialogs/frm_two.h"
#include "exposed.h"
#include "host/connection_text.h"
#include "host/messages.h"
#include "host/services.h"
#include "host/temporary_folder.h"
#include "offered_class.h"

namespace com::test {
namespace {

using platform::RunTimeError;
using platform::Value;
using testing::ElementsAre;

int failureOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const RunTimeError& e) {
    return e.number();
  }
  return 0;
}

// A host's object whose every question has the same answer.
class Oracle final : public TableObject<Oracle> {
public:
  explicit Oracle(Variant answer) : answer_(std::move(answer)) {}
  static const MemberTable<Oracle>& members() {
    using O = Oracle;
    static const MemberTable<O> table = {
        {L"IsGFLogin", 1, method | propertyGet, {}, 0, &O::answers},
        {L"LoginOpenAccount", 2, method, {L"purpose", L"text"}, 2, &O::answers},
        {L"SignExists", 3, method, {L"csign"}, 1, &O::answers},
        {L"SettleStyleExists", 4, method, {L"csettle"}, 1, &O::answers},
        {L"CurrentYearInfo", 5, propertyGet, {}, 0, &O::answers},
        {L"ServiceMsgBox", 6, method, {L"a", L"b", L"c", L"d", L"e"}, 5, &O::answers},
        {L"MatchCode", 7, method, {L"a", L"b", L"c"}, 3, &O::answers},
        {L"ServiceLocalize", 8, method, {L"form", L"a", L"b", L"c"}, 4, &O::localize},
        {L"ResText", 9, method, {L"key", L"args"}, 0, &O::resText},
        {L"GetCodeRecord",
         10,
         method,
         {L"code", L"record", L"s1", L"s2", L"s3", L"s4", L"s5", L"s6", L"s7"},
         0,
         &O::codeRecord},
        {L"YearCalendar", 11, method, {L"a", L"b"}, 0, &O::calendar},
    };
    return table;
  }

  Pointer<IDispatch> form;         // of the last ServiceLocalize
  std::vector<std::string> given;  // arguments of the last ResText or GetCodeRecord
  int calendars = 0;               // how often the calendar was asked
  int calendarFailure = RunTimeError::serverError;

private:
  Variant answers(const Invocation&) { return answer_; }
  Variant localize(const Invocation& call) {
    form = call.object(0);
    return answer_;
  }
  Variant resText(const Invocation& call) { return list(call, 2); }
  Variant codeRecord(const Invocation& call) { return list(call, 9); }
  Variant calendar(const Invocation& call) {
    ++calendars;
    if (calendarFailure == wrongArgumentCount && call.has(1))
      return Variant(Value(platform::DateTime::fromDate(2006, 1, 1)));
    throw RunTimeError(calendarFailure, "the calendar is closed");
  }

  // A text, "left out" for what stands for nothing, "-" for what is not there at all.
  Variant list(const Invocation& call, std::size_t count) {
    given.clear();
    for (std::size_t i = 0; i < count; ++i)
      given.push_back(call.at(i) == nullptr                                ? "-"
                      : isMissing(call.at(i))                              ? "left out"
                      : isObject(call.at(i))                               ? "an object"
                      : (behindReferences(call.at(i))->vt & VT_ARRAY) != 0 ? "a list"
                                                                           : call.text(i));
    return Variant(Value("text"));
  }

  Variant answer_;
};

struct Host {
  explicit Host(Variant answer) : oracle(adopt(new Oracle(std::move(answer)))) {}
  Pointer<Oracle> oracle;
  std::shared_ptr<platform::ZwPubCls> services = servicesOf(share<IDispatch>(oracle.get()));
  std::shared_ptr<platform::Login> login = loginOf(share<IDispatch>(oracle.get()));
};

TEST(AdaptersTest, WhatAScriptNeverAssignedIsFalseZeroAndAnEmptyText) {
  const Host host{Variant()};
  std::string text = "0012005";
  EXPECT_FALSE(host.login->IsGFLogin());
  EXPECT_FALSE(host.login->LoginOpenAccount(10, text));
  EXPECT_FALSE(host.services->SignExists("记"));
  EXPECT_FALSE(host.services->SettleStyleExists("1"));
  EXPECT_EQ(host.services->CurrentYearInfo(), 0);
  EXPECT_EQ(host.services->ServiceMsgBox("", 0, "", "", 0), 0);
  EXPECT_EQ(host.services->MatchCode("1001", 2, true), "");
}

TEST(AdaptersTest, NullIsNeitherTrueNorFalse) {
  const Host host{Variant(Value())};
  EXPECT_EQ(failureOf([&] { host.login->IsGFLogin(); }), RunTimeError::invalidUseOfNull);
  EXPECT_EQ(failureOf([&] { host.services->SignExists("记"); }), RunTimeError::invalidUseOfNull);
}

TEST(AdaptersTest, OptionalArgumentsArePassedAsLeftOut) {
  const Host host{Variant()};
  EXPECT_EQ(host.services->ResText("Orvo.GL.TqGLJZ.00001", nullptr), "text");
  EXPECT_THAT(host.oracle->given, ElementsAre("Orvo.GL.TqGLJZ.00001", "left out"));
  const std::vector<Value> values = {Value("GL")};
  host.services->ResText("Orvo.GL.TqGLJZ.00297", &values);
  EXPECT_THAT(host.oracle->given, ElementsAre("Orvo.GL.TqGLJZ.00297", "a list"));
  platform::CodeRecord record;
  host.services->GetCodeRecord("1001", record, {29});
  EXPECT_THAT(host.oracle->given, ElementsAre("1001", "an object", "29", "left out", "left out", "left out", "left out",
                                              "left out", "left out"));
}

TEST(AdaptersTest, ACalendarThatFailsIsAskedOnce) {
  const Host host{Variant()};
  try {
    host.services->YearCalendar(0, 0);
    FAIL();
  } catch (const RunTimeError& e) {
    EXPECT_EQ(e.description(), "the calendar is closed");
  }
  EXPECT_EQ(host.oracle->calendars, 1);
}

TEST(AdaptersTest, ACalendarThatWantsArgumentsGetsThem) {
  const Host host{Variant()};
  host.oracle->calendarFailure = wrongArgumentCount;
  EXPECT_EQ(host.services->YearCalendar(0, 0), platform::DateTime::fromDate(2006, 1, 1));
  EXPECT_EQ(host.oracle->calendars, 2);
}

TEST(AdaptersTest, ADialogThatAHostKeepsAnswersNoMore) {
  const Host host{Variant(Value(true))};
  {
    gljz::FrmTwo form;
    EXPECT_TRUE(host.services->ServiceLocalize(form, "Orvo.GL.TsGLJZ.", "", ""));
    ASSERT_TRUE(host.oracle->form);
  }
  EXPECT_EQ(failureOf([&] { Automation(host.oracle->form).get(L"Name"); }), RunTimeError::objectNotSet);
}

// A connection of ours inside one of the host's own.
class Wrapper final : public TableObject<Wrapper> {
public:
  explicit Wrapper(Pointer<IDispatch> inner) : inner_(std::move(inner)) {}
  static const MemberTable<Wrapper>& members() {
    static const MemberTable<Wrapper> table = {{L"RawConnection", 1, propertyGet, {}, 0, &Wrapper::raw},
                                               {L"FormatDb", 2, propertyGet, {}, 0, &Wrapper::formatDatabase}};
    return table;
  }

private:
  Variant raw(const Invocation&) { return inner_.call(L"RawConnection"); }
  Variant formatDatabase(const Invocation&) { return inner_.call(L"FormatDb"); }
  Automation inner_;
};

TEST(AdaptersTest, AConnectionOfOursInsideAHostsOwnIsItself) {
  const ServerFolder folder;
  prepareProcess();
  const auto server = openServer(folder.address(), true);
  server->server->createDatabase("Ledger");
  const std::shared_ptr<platform::Connection> inner = newConnection();
  inner->ConnectionOpen(host::connectionText("Ledger", server->address));
  inner->ExecuteSql("create table code(iyear int, ccode nvarchar(20)) insert into code values(2005, N'1001')");
  const auto outer = connectionOf(adopt<IDispatch>(new Wrapper(expose(inner))));
  EXPECT_EQ(outer->RawConnection().State(), 1);
  const auto row = outer->RawConnection().OpenCommand("select * from code where iyear=? and ccode=? ",
                                                      {{"2005", 8}, {"1001", 60}}, 600);
  ASSERT_FALSE(row->Eof());
  EXPECT_EQ(row->Field("ccode"), Value("1001"));
  row->Close();
  inner->ConnectionClose();
  EXPECT_EQ(outer->RawConnection().State(), 0);
}

TEST(AdaptersTest, TheFormatDatabaseOfOursInsideAHostsOwnIsReadAndWritten) {
  const host::test::TemporaryFolder folder;
  const auto inner = host::makeServices(
      {newConnection, nullptr, std::make_shared<host::Messages>("zh-CN"), "zh-CN", "", folder.file("format.db")});
  const auto outer = servicesOf(adopt<IDispatch>(new Wrapper(expose(inner))));
  platform::FormatDatabase& tables = outer->FormatDb();
  EXPECT_EQ(tables.Name(), inner->FormatDb().Name());
  tables.Execute("CREATE TABLE ZPDJ_Head (P1 String,P2 String)");
  const auto rows = tables.OpenTable("ZPDJ_Head");
  rows->AddNew();
  rows->SetField("P1", Value("2005年结转"));
  rows->Update();
  rows->Close();
  EXPECT_EQ(inner->FormatDb().OpenTable("ZPDJ_Head")->Field("P1"), Value("2005年结转"));
}

// A component that answers with lists, as an answer and in its argument.
class Lists final : public TableObject<Lists> {
public:
  static const MemberTable<Lists>& members() {
    static const MemberTable<Lists> table = {{L"AutoClear4Task", 1, method, {L"task", L"failure"}, 2, &Lists::clear}};
    return table;
  }

private:
  Variant clear(const Invocation& call) {
    if (call.at(1)->vt != (VT_BYREF | VT_VARIANT)) throw RunTimeError(RunTimeError::typeMismatch, "no variable");
    VARIANT* variable = call.at(1)->pvarVal;
    VariantClear(variable);
    Variant::list({Value(1)}).moveTo(variable);
    return Variant::list({Value(2)});
  }
};

TEST(OfferedClassTest, LeavesTheRegistryAsItWas) {
  const std::wstring key = L"Test.Offered\\CLSID", before = L"{00000000-0000-0000-0000-0000000000AB}";
  RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, before.c_str(),
                  static_cast<DWORD>((before.size() + 1) * sizeof(wchar_t)));
  const auto registered = [&key] {
    std::array<wchar_t, 64> value{};
    DWORD size = sizeof value;
    const auto status =
        RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &size);
    return status == ERROR_SUCCESS ? std::wstring(value.data()) : std::wstring();
  };
  constexpr CLSID id = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x22}};
  {
    const OfferedClass<Lists> offered(id, L"Test.Offered");
    EXPECT_NE(registered(), before);
  }
  EXPECT_EQ(registered(), before);
  RegDeleteTreeW(HKEY_CLASSES_ROOT, L"Test.Offered");
  { const OfferedClass<Lists> offered(id, L"Test.Offered"); }
  HKEY left = nullptr;
  EXPECT_NE(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"Test.Offered", 0, KEY_READ, &left), ERROR_SUCCESS);
}

TEST(AdaptersTest, AComponentsAnswerThatIsNoValueIsNull) {
  constexpr CLSID id = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x21}};
  const OfferedClass<Lists> offered(id, L"Test.Lists");
  const auto component = makeComponentFactory()->Create("Test.Lists");
  std::vector<platform::Component::Argument> arguments(2);
  arguments[0].value = Value("qcjz");
  arguments[1].value = Value();  // so it goes as a variable, which may take anything
  EXPECT_EQ(component->Call("AutoClear4Task", arguments), Value());
  EXPECT_EQ(arguments[0].value, Value("qcjz"));
  EXPECT_EQ(arguments[1].value, Value());
}

}  // namespace
}  // namespace com::test
