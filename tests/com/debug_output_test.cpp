#include <gmock/gmock.h>

#include "component_host.h"

namespace com::test {
namespace {

using testing::Contains;

std::vector<std::string>* heard = nullptr;

// The debug output channel tells a debugger by an exception of this code, with the length and the text.
LONG CALLBACK listen(EXCEPTION_POINTERS* pointers) {
  constexpr DWORD debugPrint = 0x40010006;
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  if (record.ExceptionCode == debugPrint && record.NumberParameters >= 2 && heard != nullptr)
    heard->emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
  return EXCEPTION_CONTINUE_SEARCH;
}

TEST(DebugOutputTest, ARunWritesItsTwoLines) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  std::vector<std::string> lines;
  heard = &lines;
  void* listener = AddVectoredExceptionHandler(1, listen);
  Text account("001"), last("2005"), current("2006"), parameters, message;
  VARIANT_BOOL carried = VARIANT_FALSE;
  const HRESULT code =
      gljz->Transfer(&account, &last, &current, &parameters, server.login().get(), &message, nullptr, &carried);
  RemoveVectoredExceptionHandler(listener);
  heard = nullptr;
  ASSERT_EQ(code, S_OK);
  EXPECT_THAT(lines, Contains("ExecJZ m_strMsg:"));
  EXPECT_THAT(lines, Contains("Transfer m_strMsg:"));
}

}  // namespace
}  // namespace com::test
