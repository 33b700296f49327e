#pragma once
// Failures on their way across the component's border: RunTimeError inside, COM errors with description and source
// outside.
//
// A number of the platform becomes 0x800A0000 + number, as script languages and their hosts show it; a failure that the
// server reported keeps its own code, 0x80040E14.

#include <oaidl.h>
#include <windows.h>

#include <exception>

#include "platform/run_time_error.h"

namespace com {

inline constexpr const wchar_t* errorSource = L"TqGLJZ";

// To be called in a catch block: what is being handled, as a COM error. No failure leaves it.
struct Failure {
  HRESULT code = E_FAIL;
  std::wstring description;
};
Failure currentFailure() noexcept;

// The failure that is being handled becomes the thread's error object, and its code is answered. For members of a
// virtual table.
HRESULT reportCurrent(REFIID interfaceId) noexcept;
// The same for IDispatch::Invoke.
HRESULT reportCurrent(EXCEPINFO* information) noexcept;

// The failure that a callee answered. information: what Invoke filled in for DISP_E_EXCEPTION, else null; what it
// describes is freed. what: the member that was called.
[[noreturn]] void throwAnswered(HRESULT code, EXCEPINFO* information, const std::string& what);

// The failure of a function of the system; success is nothing.
void require(HRESULT code, const char* what);

}  // namespace com
