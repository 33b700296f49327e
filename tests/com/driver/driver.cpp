// A host in C++ that was built against the type library: it calls the entries by slot. scripts_test.py starts it, each
// time in a process of its own, and reads what it says.
//
//   driver ENTRY FOLDER     ENTRY: transfer, transgl, fresh for the entries of a process that has run nothing, or
//                           unloading for what keeps the component loaded
//
// The last line says that it came to its end. Texts are UTF-8.

#include <initguid.h>

#include <cstdio>
#include <string>

#include "TqGLJZ.h"
#include "automation.h"
#include "com/text_by_reference.h"
#include "pointer.h"

namespace {

using com::Argument;
using com::Automation;
using com::Pointer;
using com::test::Text;
using platform::Value;

void say(const std::string& line) {
  std::printf("%s\n", line.c_str());
}

void say(const std::string& entry, HRESULT code, VARIANT_BOOL returned) {
  if (SUCCEEDED(code)) {
    say(entry + (returned != VARIANT_FALSE ? " returned true" : " returned false"));
    return;
  }
  char number[16];
  std::snprintf(number, sizeof number, "0x%08lX", static_cast<unsigned long>(code));
  say(entry + " failed with " + number);
  Pointer<IErrorInfo> error;
  if (GetErrorInfo(0, error.receive()) != S_OK) return;
  BSTR source = nullptr, description = nullptr;
  error->GetSource(&source);
  error->GetDescription(&description);
  say("source " + com::textOf(source));
  say("description " + com::textOf(description));
  SysFreeString(source);
  SysFreeString(description);
}

template <class I>
Pointer<I> create(const CLSID& id, const IID& interfaceId) {
  Pointer<I> object;
  const HRESULT code =
      CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, interfaceId, reinterpret_cast<void**>(object.receive()));
  if (FAILED(code)) say("the component cannot be created");
  return object;
}

class Driver {
public:
  explicit Driver(const std::string& folder)
      : gljz_(create<_clsGLJZ>(CLSID_clsGLJZ, IID__clsGLJZ)),
        host_(create<IDispatch>(CLSID_ReferenceHost, IID_IDispatch)) {
    host_.put(L"Today", platform::DateTime::fromDate(2006, 1, 15));
    host_.put(L"Interactive", Value(false));
    host_.call(L"Open", {Argument(Value("embedded:" + folder))});
    services_ = com::objectOf(host_.call(L"Services", {Argument(Value("001")), Argument(Value(2006))}).get());
    login_ = com::objectOf(host_.call(L"Login", {Argument(Value("001")), Argument(Value(2006))}).get());
  }

  void transfer() {
    gljz_->putref_ZwPubCls(services_.get());
    callTransfer();
    askMessage();
  }

  void transGL() {
    Text last("2005"), current("2006"), message("before"), lastDb("TqData_001_2005"), thisDb("TqData_001_2006");
    VARIANT_BOOL returned = VARIANT_FALSE;
    const HRESULT code =
        gljz_->TransGL(&last, &current, login_.get(), &message, &lastDb, &thisDb, nullptr, nullptr, &returned);
    say("TransGL", code, returned);
    say("message " + message.value());
    askMessage();
  }

  // What an entry finds where no other one has been before it.
  void fresh() {
    askMessage();
    callStartJz();  // without services
    askMessage();
    callTransfer();  // the same
    askMessage();
    gljz_->putref_ZwPubCls(services_.get());
    callStartJz();  // without a login
    gljz_->putref_m_loginCls(login_.get());
    callStartJz();  // without years and databases
    askMessage();
  }

private:
  void callTransfer() {
    Text account("001"), last("2005"), current("2006"), parameters, message("before");
    VARIANT_BOOL returned = VARIANT_TRUE;
    const HRESULT code =
        gljz_->Transfer(&account, &last, &current, &parameters, login_.get(), &message, nullptr, &returned);
    say("Transfer", code, returned);
    say("message " + message.value());
    say(parameters.value().find("<Account") != std::string::npos ? "parameters came back" : "no parameters");
  }
  void callStartJz() {
    VARIANT_BOOL returned = VARIANT_TRUE;
    const HRESULT code = gljz_->StartJz(&returned);
    say("StartJz", code, returned);
  }
  void askMessage() {
    Text message("before");
    VARIANT_BOOL returned = VARIANT_TRUE;
    const HRESULT code = gljz_->getTransferMsg(&message, &returned);
    say("getTransferMsg", code, returned);
    say("it says " + message.value());
  }

  Pointer<_clsGLJZ> gljz_;
  Automation host_;
  Pointer<IDispatch> services_, login_;
};

// When the system may unload the component.
class Unloading {
public:
  static void walk() {
    auto factory = classFactory();
    tell("a class factory is held");
    factory = nullptr;
    tell("nothing is held");
    auto host = create<IDispatch>(CLSID_ReferenceHost, IID_IDispatch);
    tell("a reference host lives");
    host = nullptr;
    tell("nothing lives");
    auto gljz = create<_clsGLJZ>(CLSID_clsGLJZ, IID__clsGLJZ);
    gljz = nullptr;
    tell("a clsGLJZ has lived");
  }

private:
  static Pointer<IClassFactory> classFactory() {
    Pointer<IClassFactory> factory;
    CoGetClassObject(CLSID_ReferenceHost, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                     reinterpret_cast<void**>(factory.receive()));
    return factory;
  }
  static void tell(const std::string& when) {
    using CanUnloadNow = HRESULT(WINAPI*)();
    const auto canUnloadNow = reinterpret_cast<CanUnloadNow>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"TqGLJZ.dll"), "DllCanUnloadNow")));
    say(when + (canUnloadNow() == S_OK ? ": it may go" : ": it stays"));
  }
};

int run(const std::string& entry, const std::string& folder) {
  if (entry == "unloading") {
    Unloading::walk();
  } else {
    Driver driver(folder);
    if (entry == "transfer")
      driver.transfer();
    else if (entry == "transgl")
      driver.transGL();
    else if (entry == "fresh")
      driver.fresh();
    else
      return 2;
  }
  say("end of " + entry);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: driver transfer|transgl|fresh|unloading FOLDER\n");
    return 2;
  }
  CoInitialize(nullptr);
  int code = 1;
  try {
    code = run(argv[1], argv[2]);
  } catch (const std::exception& e) {
    say(std::string("failed: ") + e.what());
  }
  CoUninitialize();
  return code;
}
