#include <gmock/gmock.h>

#include <functional>

#include "entry_calls.h"
#include "relay.h"
#include "windows/wide_text.h"

namespace com::test {
namespace {

using platform::Value;
using testing::ElementsAre;

std::vector<std::string>* heard = nullptr;

// The debug output channel tells a debugger by an exception of this code, with the length and the text.
LONG CALLBACK listen(EXCEPTION_POINTERS* pointers) {
  constexpr DWORD debugPrint = 0x40010006;
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  if (record.ExceptionCode == debugPrint && record.NumberParameters >= 2 && heard != nullptr)
    heard->emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
  return EXCEPTION_CONTINUE_SEARCH;
}

std::vector<std::string> linesOf(const std::function<void()>& call) {
  std::vector<std::string> lines;
  heard = &lines;
  void* listener = AddVectoredExceptionHandler(1, listen);
  call();
  RemoveVectoredExceptionHandler(listener);
  heard = nullptr;
  return lines;
}

// The text in the system's ANSI code page.
std::string ansi(const std::string& text) {
  const std::wstring wide = windows::wide(text);
  const auto length = static_cast<int>(wide.size());
  std::string bytes(8 * wide.size(), '\0');
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                                       nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

class DebugOutputTest : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK); }

  const ReferenceServer server;
  const Pointer<IDispatch> login = server.login();
  const Pointer<_clsGLJZ> gljz = newGljz();
};

TEST_F(DebugOutputTest, ATransferWritesItsTwoLines) {
  Answer answer;
  EXPECT_THAT(linesOf([&] { answer = transfer(gljz.get(), login); }),
              ElementsAre("ExecJZ m_strMsg:", "Transfer m_strMsg:"));
  EXPECT_TRUE(answer.returned);
}

TEST_F(DebugOutputTest, OfTransGLTheStagesAloneWriteTheirs) {
  Answer answer;
  EXPECT_THAT(linesOf([&] { answer = transGL(gljz.get(), login); }), ElementsAre("ExecJZ m_strMsg:"));
  EXPECT_TRUE(answer.returned);
}

TEST_F(DebugOutputTest, AStopWritesItsMessageInTheAnsiCodePage) {
  server.execute("TqData_001_2005", "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  Answer answer;
  const std::vector<std::string> lines = linesOf([&] { answer = transfer(gljz.get(), login); });
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00032"));
  EXPECT_THAT(lines, ElementsAre(ansi("Transfer m_strMsg:" + answer.message))) << "the stages never committed";
}

TEST_F(DebugOutputTest, TheCodePagesOwnLettersArriveAsTheirBytes) {
  server.execute("TqData_001_2005", "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  const Pointer<Relay> services = adopt(new Relay(server.services()));
  services->answer(L"ResText", Variant(Value("non clôturé")));
  ASSERT_EQ(gljz->putref_ZwPubCls(dispatchOf(services).get()), S_OK);
  const std::vector<std::string> lines = linesOf([&] { transfer(gljz.get(), login); });
  EXPECT_THAT(lines, ElementsAre(ansi("Transfer m_strMsg:non clôturé")));
  if (GetACP() == 1252) {
    EXPECT_THAT(lines, ElementsAre("Transfer m_strMsg:non cl\xF4tur\xE9"));
  }
}

}  // namespace
}  // namespace com::test
