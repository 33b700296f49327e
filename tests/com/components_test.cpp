// The components that the system creates by program id: here they are classes of the test's own.

#include <gmock/gmock.h>

#include "component_host.h"
#include "dispatch_object.h"
#include "host/messages.h"
#include "offered_class.h"
#include "relay.h"

namespace com::test {
namespace {

using platform::Value;
using testing::ElementsAre;

std::vector<std::string> calls;
bool siblingAnswers = true;
IDispatch* replacement = nullptr;  // what a component puts in the place of the first object that it gets

constexpr CLSID siblingId = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x01}};
constexpr CLSID clearingId = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x02}};

class Sibling final : public TableObject<Sibling> {
public:
  static const MemberTable<Sibling>& members() {
    static const MemberTable<Sibling> table = {
        {L"JZ", 1, method, {L"connection", L"services", L"message"}, 3, &Sibling::carry}};
    return table;
  }

private:
  Variant carry(const Invocation& call) {
    const Automation connection(call.object(0)), services(call.object(1));
    calls.push_back("JZ " + connection.get(L"ConnectionText").asText().substr(0, 24) + " " +
                    services.get(L"CurrentYearInfo").asText() + " \"" + call.text(2) + "\"");
    call.setText(2, "the sibling's message");
    if (replacement) call.setObject(0, replacement);
    return Variant(Value(siblingAnswers));
  }
};

class Clearing final : public TableObject<Clearing> {
public:
  static const MemberTable<Clearing>& members() {
    static const MemberTable<Clearing> table = {
        {L"InitZwPub", 1, method, {L"services"}, 1, &Clearing::init},
        {L"SetCusorSup", 2, method, {L"which"}, 1, &Clearing::side},
        {L"AutoClear4Task", 3, method, {L"task", L"failure"}, 2, &Clearing::clear},
    };
    return table;
  }

private:
  Variant init(const Invocation& call) {
    calls.push_back("InitZwPub " + Automation(call.object(0)).get(L"CurrentYearInfo").asText());
    if (replacement) call.setObject(0, replacement);
    return {};
  }
  Variant side(const Invocation& call) {
    calls.push_back("SetCusorSup " + call.text(0));
    return {};
  }
  Variant clear(const Invocation& call) {
    calls.push_back("AutoClear4Task " + call.text(0));
    call.setText(1, "not read");
    return {};
  }
};

class ComponentsTest : public testing::Test {
protected:
  void SetUp() override {
    calls.clear();
    replacement = nullptr;
    siblingAnswers = true;
    ASSERT_EQ(gljz_->putref_ZwPubCls(server_.services().get()), S_OK);
  }
  void TearDown() override { replacement = nullptr; }

  bool transfer(const std::string& parameters = {}) {
    Text account("001"), last("2005"), current("2006"), info(parameters), message;
    VARIANT_BOOL carried = VARIANT_FALSE;
    code_ = gljz_->Transfer(&account, &last, &current, &info, server_.login().get(), &message, nullptr, &carried);
    parameters_ = info.value();
    return carried != VARIANT_FALSE;
  }

  ReferenceServer server_;
  Pointer<_clsGLJZ> gljz_ = newGljz();
  HRESULT code_ = S_OK;
  std::string parameters_;
};

TEST_F(ComponentsTest, TheSiblingGetsTheRunsObjectsByReference) {
  const OfferedClass<Sibling> sibling(siblingId, L"TsGFJZ.clsGFJZ");
  EXPECT_TRUE(transfer());
  EXPECT_THAT(calls, ElementsAre("JZ Database=TqData_001_2005 2006 \"\""));
}

TEST_F(ComponentsTest, ASiblingThatSaysNoEndsItsStageAlone) {
  const OfferedClass<Sibling> sibling(siblingId, L"TsGFJZ.clsGFJZ");
  siblingAnswers = false;
  EXPECT_TRUE(transfer());
  EXPECT_EQ(calls.size(), 1u);
}

TEST_F(ComponentsTest, TheRunGoesOnWithTheConnectionThatTheSiblingHandsBack) {
  const OfferedClass<Sibling> sibling(siblingId, L"TsGFJZ.clsGFJZ");
  const Pointer<Relay> other =
      adopt(new Relay(objectOf(server_.host.call(L"Connection", {Argument(Value("TqData_001_2005"))}).get())));
  const Automation raw(objectOf(Automation(dispatchOf(other)).call(L"RawConnection").get()));
  ASSERT_EQ(raw.get(L"State"), Value(1));
  replacement = other.get();
  EXPECT_TRUE(transfer());
  EXPECT_EQ(calls.size(), 1u);
  EXPECT_EQ(other->heard("ConnectionClose"), 1) << "it is the closing year's from there on";
  EXPECT_EQ(raw.get(L"State"), Value(0));
}

TEST_F(ComponentsTest, TheClearingComponentIsCalledByNameForBothSides) {
  const OfferedClass<Clearing> clearing(clearingId, L"OrvoGLWLClear.clsInterface");
  EXPECT_TRUE(transfer("<Account><Parameter ID=\"GL*m_bAutoWLClear\" Check=\"True\" text=\"\"/></Account>"));
  EXPECT_THAT(calls, ElementsAre("InitZwPub 2006", "SetCusorSup 0", "AutoClear4Task qcjz", "SetCusorSup 1",
                                 "AutoClear4Task qcjz"));
}

TEST_F(ComponentsTest, TheRunGoesOnWithTheServicesThatTheClearingComponentHandsBack) {
  const OfferedClass<Clearing> clearing(clearingId, L"OrvoGLWLClear.clsInterface");
  server_.host.put(L"Language", Value("en-US"));
  const Pointer<IDispatch> others = server_.services();
  replacement = others.get();
  Text account("001"), last("2005"), current("2006"), message,
      info("<Account><Parameter ID=\"GL*m_bAutoWLClear\" Check=\"True\" text=\"\"/></Account>");
  VARIANT_BOOL carried = VARIANT_FALSE;
  ASSERT_EQ(gljz_->Transfer(&account, &last, &current, &info, server_.login().get(), &message, nullptr, &carried),
            S_OK);
  // The success text is asked for at the end: the others speak English.
  EXPECT_EQ(message.value(), host::Messages("en-US").text("Orvo.GL.TqGLJZ.00310"));
}

}  // namespace
}  // namespace com::test
