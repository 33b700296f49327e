#include "failure.h"

#include <new>
#include <string>

#include "automation.h"
#include "pointer.h"
#include "variant.h"
#include "windows/wide_text.h"

namespace com {
namespace {

using platform::RunTimeError;

constexpr unsigned runTimeErrors = 0x800A0000u;  // FACILITY_CONTROL, where the numbers of script languages live
constexpr int mostNumber = 0xFFFF;

HRESULT codeOf(int number) {
  if (number > 0 && number <= mostNumber) return static_cast<HRESULT>(runTimeErrors | static_cast<unsigned>(number));
  return number < 0 ? static_cast<HRESULT>(number) : E_FAIL;
}

int numberOf(HRESULT code) {
  if ((static_cast<unsigned>(code) & 0xFFFF0000u) == runTimeErrors)
    return static_cast<int>(static_cast<unsigned>(code) & 0xFFFFu);
  switch (code) {
    case DISP_E_TYPEMISMATCH:
      return RunTimeError::typeMismatch;
    case DISP_E_OVERFLOW:
      return RunTimeError::overflow;
    case DISP_E_PARAMNOTOPTIONAL:
      return argumentMissing;
    case DISP_E_BADPARAMCOUNT:
      return wrongArgumentCount;
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME:
      return noSuchMember;
    case CO_E_CLASSSTRING:
    case REGDB_E_CLASSNOTREG:
      return RunTimeError::cannotCreate;
    default:
      return static_cast<int>(code);
  }
}

std::string codeText(HRESULT code) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) text += digits[static_cast<unsigned>(code) >> shift & 0xFu];
  return text;
}

}  // namespace

Failure currentFailure() noexcept {
  try {
    try {
      throw;
    } catch (const RunTimeError& e) {
      return {codeOf(e.number()), windows::wide(e.description())};
    } catch (const std::bad_alloc&) {
      return {E_OUTOFMEMORY, L"Out of memory"};
    } catch (const std::exception& e) {
      return {E_FAIL, windows::wide(e.what())};
    } catch (...) {
      return {E_UNEXPECTED, L"Unexpected failure"};
    }
  } catch (...) {
    return {E_OUTOFMEMORY, {}};
  }
}

HRESULT reportCurrent(REFIID interfaceId) noexcept {
  const Failure failure = currentFailure();
  Pointer<ICreateErrorInfo> made;
  if (FAILED(CreateErrorInfo(made.receive()))) return failure.code;
  made->SetGUID(interfaceId);
  made->SetSource(const_cast<LPOLESTR>(errorSource));
  made->SetDescription(const_cast<LPOLESTR>(failure.description.c_str()));
  if (const auto error = query<IErrorInfo>(made.get())) SetErrorInfo(0, error.get());
  return failure.code;
}

HRESULT reportCurrent(EXCEPINFO* information) noexcept {
  const Failure failure = currentFailure();
  if (information == nullptr) return failure.code;
  *information = {};
  information->scode = failure.code;
  information->bstrSource = SysAllocString(errorSource);
  information->bstrDescription = SysAllocString(failure.description.c_str());
  return DISP_E_EXCEPTION;
}

void throwAnswered(HRESULT code, EXCEPINFO* information, const std::string& what) {
  std::string description;
  if (code == DISP_E_EXCEPTION && information != nullptr) {
    if (information->pfnDeferredFillIn != nullptr) information->pfnDeferredFillIn(information);
    description = textOf(information->bstrDescription);
    if (information->scode != 0)
      code = information->scode;
    else if (information->wCode != 0)
      code = codeOf(information->wCode);
    SysFreeString(information->bstrSource);
    SysFreeString(information->bstrDescription);
    SysFreeString(information->bstrHelpFile);
    *information = {};
  }
  // An engine of scripts tells its own host first, and the caller nothing but that.
  constexpr auto scriptHasReported = static_cast<HRESULT>(0x80020101);
  if (code == scriptHasReported) description = what + " failed in a script, whose host was told why";
  if (description.empty()) description = what + " failed (" + codeText(code) + ")";
  throw RunTimeError(numberOf(code), description);
}

void require(HRESULT code, const char* what) {
  if (FAILED(code)) throwAnswered(code, nullptr, what);
}

}  // namespace com
