#pragma once
// The entries of clsGLJZ, called by slot.

#include <gmock/gmock.h>

#include <string>

#include "component_host.h"

namespace com::test {

// What a call answered, and what it left in its texts by reference; they hold "before" when the call begins.
struct Answer {
  HRESULT code = S_OK;
  bool returned = false;
  std::string message;
  std::string parameters;  // of Transfer
};

// The call succeeded, the entry returned this and left this message.
inline auto says(bool returned, const std::string& message) {
  using testing::Field;
  return testing::AllOf(Field("code", &Answer::code, S_OK), Field("returned", &Answer::returned, returned),
                        Field("message", &Answer::message, message));
}

struct Years {
  std::string account = "001", last = "2005", current = "2006";
};
Answer transfer(_clsGLJZ* gljz, const Pointer<IDispatch>& login, const std::string& parameters = {},
                const Years& years = {});

// Without account ids, as most hosts call it.
struct Databases {
  std::string last = "TqData_001_2005", current = "TqData_001_2006";
};
Answer transGL(_clsGLJZ* gljz, const Pointer<IDispatch>& login, const Databases& databases = {});

Answer startJz(_clsGLJZ* gljz);  // it has no text
Answer transferMsg(_clsGLJZ* gljz);

// The numbers of the platform as codes of failed calls.
inline constexpr auto objectNotSet = static_cast<HRESULT>(0x800A005B),
                      invalidUseOfNull = static_cast<HRESULT>(0x800A005E),
                      serverSaid = static_cast<HRESULT>(0x80040E14);

}  // namespace com::test
