// clsGLJZ by name: what script languages and other late-bound hosts pass, and what comes back to them.

#include <gmock/gmock.h>

#include "component_host.h"

namespace com::test {
namespace {

using platform::Value;
using testing::HasSubstr;

constexpr DISPID idZwPubCls = 1, idLoginCls = 2, idTransfer = 4, idTransGL = 5, idGetTransferMsg = 6;

struct Late {
  HRESULT code = S_OK;
  Variant result;
  EXCEPINFO failure{};
  ~Late() {
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrDescription);
  }
};

// Arguments in the order of Invoke: the last one first, named ones in front of all.
void invoke(IDispatch* object, DISPID id, std::vector<VARIANT> arguments, Late& answer, std::vector<DISPID> named = {},
            WORD kind = DISPATCH_METHOD) {
  DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                        static_cast<UINT>(named.size())};
  UINT wrong = 0;
  answer.code =
      object->Invoke(id, IID_NULL, LOCALE_NEUTRAL, kind, &parameters, answer.result.receive(), &answer.failure, &wrong);
}

VARIANT byTypedReference(BSTR* text) {
  VARIANT v{};
  v.vt = VT_BYREF | VT_BSTR;
  v.pbstrVal = text;
  return v;
}

VARIANT byVariable(Variant& variable) {
  VARIANT v{};
  v.vt = VT_BYREF | VT_VARIANT;
  v.pvarVal = variable.get();
  return v;
}

VARIANT object(const Pointer<IDispatch>& object) {
  VARIANT v{};
  v.vt = VT_DISPATCH;
  v.pdispVal = object.get();
  return v;
}

class LateBindingTest : public testing::Test {
protected:
  void SetUp() override {
    gljz_ = create(L"TqGLJZ.clsGLJZ");
    ASSERT_TRUE(gljz_);
    services_ = server_.services();
    Late set;
    invoke(gljz_.get(), idZwPubCls, {object(services_)}, set, {DISPID_PROPERTYPUT}, DISPATCH_PROPERTYPUTREF);
    ASSERT_EQ(set.code, S_OK);
  }

  ReferenceServer server_;
  Pointer<IDispatch> gljz_, services_, login_ = server_.login();
  Variant account_{Value("001")}, last_{Value("2005")}, current_{Value("2006")};
};

TEST_F(LateBindingTest, TextsByTypedReferenceComeBack) {
  Text parameters, message("before");
  Late answer;
  invoke(gljz_.get(), idTransfer,
         {object(nullptr), byTypedReference(&message), object(login_), byTypedReference(&parameters), *current_.get(),
          *last_.get(), *account_.get()},
         answer);
  ASSERT_EQ(answer.code, S_OK) << textOf(answer.failure.bstrDescription);
  EXPECT_EQ(valueOf(answer.result.get()), Value(true));
  EXPECT_EQ(message.value(), test::message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_THAT(parameters.value(), HasSubstr("<Account"));
}

TEST_F(LateBindingTest, TextsByVariableComeBack) {
  Variant parameters, message{Value(7)};  // an empty variable, and one that holds a number
  Late answer;
  invoke(gljz_.get(), idTransfer,
         {object(nullptr), byVariable(message), object(login_), byVariable(parameters), byVariable(current_),
          byVariable(last_), byVariable(account_)},
         answer);
  ASSERT_EQ(answer.code, S_OK) << textOf(answer.failure.bstrDescription);
  EXPECT_EQ(message.get()->vt, VT_BSTR);
  EXPECT_EQ(textOf(message.get()), test::message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_THAT(textOf(parameters.get()), HasSubstr("<Account"));
}

TEST_F(LateBindingTest, TextsByValueAreTakenAndYearsMayBeNumbers) {
  Variant empty{Value("")}, last{Value(2005)}, current{Value(2006)};
  Late answer;
  invoke(gljz_.get(), idTransfer,
         {object(nullptr), *empty.get(), object(login_), *empty.get(), *current.get(), *last.get(), *account_.get()},
         answer);
  ASSERT_EQ(answer.code, S_OK) << textOf(answer.failure.bstrDescription);
  EXPECT_EQ(valueOf(answer.result.get()), Value(true));
  EXPECT_EQ(textOf(empty.get()), "");
}

TEST_F(LateBindingTest, NamedArgumentsFindTheirPlace) {
  Variant message, parameters;
  Late answer;
  // Transfer's parameters by their positions: oView 6, cErrMsg 5, oLogin 4; the first four stand in their order.
  invoke(gljz_.get(), idTransfer,
         {byVariable(message), object(login_), object(nullptr), byVariable(parameters), *current_.get(), *last_.get(),
          *account_.get()},
         answer, {5, 4, 6});
  ASSERT_EQ(answer.code, S_OK) << textOf(answer.failure.bstrDescription);
  EXPECT_EQ(textOf(message.get()), test::message("Orvo.GL.TqGLJZ.00310"));
  std::wstring names[] = {L"transfer", L"CERRMSG", L"oView"};
  LPOLESTR list[] = {names[0].data(), names[1].data(), names[2].data()};
  DISPID ids[3] = {};
  ASSERT_EQ(gljz_->GetIDsOfNames(IID_NULL, list, 3, LOCALE_NEUTRAL, ids), S_OK);
  EXPECT_EQ(ids[1], 5);
  EXPECT_EQ(ids[2], 6);
}

TEST_F(LateBindingTest, AllOfTransfersArgumentsAreRequired) {
  Late answer;
  invoke(gljz_.get(), idTransfer, {*current_.get(), *last_.get(), *account_.get()}, answer);
  EXPECT_EQ(answer.code, DISP_E_BADPARAMCOUNT);
  Variant text{Value("")}, missing = Variant::missing();
  Late left;
  invoke(gljz_.get(), idTransfer,
         {*missing.get(), *text.get(), object(login_), *text.get(), *current_.get(), *last_.get(), *account_.get()},
         left);
  EXPECT_EQ(left.code, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(LateBindingTest, TheAccountIdsOfTransGLMayBeLeftOut) {
  Variant message, lastDb{Value("TqData_001_2005")}, thisDb{Value("TqData_001_2006")}, missing = Variant::missing();
  Late answer;
  invoke(gljz_.get(), idTransGL,
         {*thisDb.get(), *lastDb.get(), byVariable(message), object(login_), *current_.get(), *last_.get()}, answer);
  ASSERT_EQ(answer.code, S_OK) << textOf(answer.failure.bstrDescription);
  EXPECT_EQ(valueOf(answer.result.get()), Value(true));
  Late withMissing;
  invoke(gljz_.get(), idTransGL,
         {*missing.get(), *missing.get(), *thisDb.get(), *lastDb.get(), byVariable(message), object(login_),
          *current_.get(), *last_.get()},
         withMissing);
  EXPECT_EQ(withMissing.code, S_OK) << textOf(withMissing.failure.bstrDescription);
}

TEST_F(LateBindingTest, AFailureIsAnExceptionWithDescriptionAndSource) {
  Variant message, lastDb{Value("TqData_001_1999")}, thisDb{Value("TqData_001_2006")};
  Late answer;
  invoke(gljz_.get(), idTransGL,
         {*thisDb.get(), *lastDb.get(), byVariable(message), object(login_), *current_.get(), *last_.get()}, answer);
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(textOf(answer.failure.bstrSource), "TqGLJZ");
  EXPECT_THAT(textOf(answer.failure.bstrDescription), HasSubstr("TqData_001_1999"));
  EXPECT_TRUE(FAILED(answer.failure.scode));
}

TEST_F(LateBindingTest, AFailingCallWritesItsTextsBackAllTheSame) {
  Variant lastDb{Value("TqData_001_1999")}, thisDb{Value("TqData_001_2006")}, variable{Value("before")};
  Text typed("before");
  for (const VARIANT& text : {byTypedReference(&typed), byVariable(variable)}) {
    Late answer;
    invoke(gljz_.get(), idTransGL, {*thisDb.get(), *lastDb.get(), text, object(login_), *current_.get(), *last_.get()},
           answer);
    ASSERT_EQ(answer.code, DISP_E_EXCEPTION);
  }
  EXPECT_EQ(typed.value(), "");
  EXPECT_EQ(variable.get()->vt, VT_BSTR);
  EXPECT_EQ(textOf(variable.get()), "");
}

TEST_F(LateBindingTest, AFailingTransferHandsTheDialogsParametersBack) {
  server_.execute("TqData_001_2005", "update gl_mend set bflag=null where iyear=2005 and iperiod=12");
  Text parameters, message("before");
  Late answer;
  invoke(gljz_.get(), idTransfer,
         {object(nullptr), byTypedReference(&message), object(login_), byTypedReference(&parameters), *current_.get(),
          *last_.get(), *account_.get()},
         answer);
  ASSERT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(answer.failure.scode), 0x800A005Eu) << "94, invalid use of Null";
  EXPECT_EQ(message.value(), "");
  EXPECT_THAT(parameters.value(), HasSubstr("<Account"));
}

// Set assigns by reference and Let by value; script languages that know one of them alone mean the object, too.
TEST_F(LateBindingTest, ObjectsAreSetByReferenceAndByValue) {
  struct Property {
    DISPID id;
    Pointer<IDispatch> value;
  };
  for (const Property& property : {Property{idZwPubCls, services_}, Property{idLoginCls, login_}})
    for (const WORD kind : {WORD{DISPATCH_PROPERTYPUTREF}, WORD{DISPATCH_PROPERTYPUT}}) {
      Late taken, none, given, got;
      invoke(gljz_.get(), property.id, {object(nullptr)}, taken, {DISPID_PROPERTYPUT}, kind);
      ASSERT_EQ(taken.code, S_OK);
      invoke(gljz_.get(), property.id, {}, none, {}, DISPATCH_PROPERTYGET);
      ASSERT_EQ(none.code, S_OK);
      EXPECT_EQ(none.result.get()->vt, VT_DISPATCH);
      EXPECT_EQ(none.result.get()->pdispVal, nullptr);
      invoke(gljz_.get(), property.id, {object(property.value)}, given, {DISPID_PROPERTYPUT}, kind);
      ASSERT_EQ(given.code, S_OK);
      invoke(gljz_.get(), property.id, {}, got, {}, DISPATCH_PROPERTYGET);
      ASSERT_EQ(got.code, S_OK);
      ASSERT_EQ(got.result.get()->vt, VT_DISPATCH);
      EXPECT_EQ(got.result.get()->pdispVal, property.value.get());
    }
}

TEST_F(LateBindingTest, WhatIsNoObjectIsNotSet) {
  Variant text{Value("a text")};
  for (const DISPID property : {idZwPubCls, idLoginCls}) {
    Late answer;
    invoke(gljz_.get(), property, {*text.get()}, answer, {DISPID_PROPERTYPUT}, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
    EXPECT_EQ(static_cast<unsigned>(answer.failure.scode), 0x800A000Du);
  }
  Late still;
  invoke(gljz_.get(), idZwPubCls, {}, still, {}, DISPATCH_PROPERTYGET);
  EXPECT_EQ(still.result.get()->pdispVal, services_.get());
}

TEST_F(LateBindingTest, AnArgumentOfTheWrongKindIsAMismatch) {
  Variant text{Value("a text where an object belongs")}, slot;
  Late answer;
  invoke(gljz_.get(), idTransfer,
         {object(nullptr), byVariable(slot), *text.get(), byVariable(slot), *current_.get(), *last_.get(),
          *account_.get()},
         answer);
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(answer.failure.scode), 0x800A000Du);
}

TEST_F(LateBindingTest, UnknownMembersAndKindsAreRefused) {
  Late answer;
  invoke(gljz_.get(), 99, {}, answer);
  EXPECT_EQ(answer.code, DISP_E_MEMBERNOTFOUND);
  Late written;
  Variant value{Value(1)};
  invoke(gljz_.get(), idGetTransferMsg, {*value.get()}, written, {DISPID_PROPERTYPUT}, DISPATCH_PROPERTYPUT);
  EXPECT_EQ(written.code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBindingTest, TheReferenceHostsObjectsAnswerByName) {
  const Automation services(services_), login(login_);
  EXPECT_EQ(services.get(L"currentyearinfo"), Value(2006));
  EXPECT_EQ(login.get(L"LoginAccId"), Value("001"));
  EXPECT_EQ(valueOf(services.call(L"MatchCode", {Argument(Value("1001"))}).get()), Value("1001"));
  EXPECT_EQ(valueOf(services.call(L"MatchCode", {Argument(Value("no such code"))}).get()), Value(""));
  const Automation code(objectOf(services.call(L"GetCodeRecord", {Argument(Value("1001"))}).get()));
  EXPECT_EQ(code.get(L"ccode"), Value("1001"));
  EXPECT_EQ(code.get(L"bEnd"), Value(true));
  Variant text{Value("0012005")};
  EXPECT_EQ(valueOf(login.call(L"LoginOpenAccount", {Argument(Value(10)), Argument::reference(text)}).get()),
            Value(true));
  EXPECT_THAT(textOf(text.get()), HasSubstr("Database=TqData_001_2005;"));
  try {
    services.call(L"NoSuchMember");
    FAIL();
  } catch (const platform::RunTimeError& e) {
    EXPECT_EQ(e.number(), noSuchMember);
  }
}

TEST_F(LateBindingTest, ResultSetsAnswerAsTheDatabaseClientsDo) {
  const Automation connection(objectOf(Automation(services_).call(L"NewYearConn").get()));
  const Automation rows(objectOf(
      connection
          .call(L"OpenRecordset", {Argument(Value("select ccode, ccode_name from code where ccode in ('1001','1002') "
                                                  "order by ccode")),
                                   Argument(Value(2))})
          .get()));
  const Automation fields(objectOf(rows.call(L"Fields").get()));
  EXPECT_EQ(fields.get(L"Count"), Value(2));
  const Automation first(objectOf(rows.call(L"Fields", {Argument(Value("CCODE"))}).get()));
  EXPECT_EQ(first.get(L"Value"), Value("1001"));
  rows.call(L"MoveNext");
  EXPECT_EQ(first.get(L"Value"), Value("1002")) << "a field shows the current row";
  rows.call(L"MoveNext");
  EXPECT_EQ(rows.get(L"EOF"), Value(true));
  try {
    connection.call(L"ExecuteSql", {Argument(Value("select * from no_such_table"))});
    FAIL();
  } catch (const platform::RunTimeError& e) {
    EXPECT_EQ(e.number(), platform::RunTimeError::serverError);
    EXPECT_THAT(e.description(), HasSubstr("no_such_table"));
  }
}

}  // namespace
}  // namespace com::test
