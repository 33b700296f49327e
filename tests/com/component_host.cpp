#include "component_host.h"

#include <atomic>

#include "host/messages.h"
#include "windows/wide_text.h"

namespace com::test {

using platform::Value;

ServerFolder::ServerFolder() {
  static std::atomic<int> count{0};
  path_ = std::filesystem::temp_directory_path() /
          ("gljz-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count));
  std::filesystem::create_directories(path_);
}

ServerFolder::~ServerFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void removeFoldersOfEarlierPrograms() {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path()))
    if (entry.path().filename().generic_string().starts_with("gljz-test-"))
      std::filesystem::remove_all(entry.path(), ignored);
}

std::string ServerFolder::address() const {
  return "embedded:" + path_.generic_string();
}

Pointer<IDispatch> create(const wchar_t* programId) {
  CLSID id{};
  Pointer<IDispatch> object;
  if (FAILED(CLSIDFromProgID(programId, &id))) return nullptr;
  CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(object.receive()));
  return object;
}

ComError lastError() {
  Pointer<IErrorInfo> information;
  ComError error;
  if (GetErrorInfo(0, information.receive()) != S_OK) return error;
  BSTR text = nullptr;
  if (SUCCEEDED(information->GetSource(&text))) error.source = textOf(text);
  SysFreeString(text);
  text = nullptr;
  if (SUCCEEDED(information->GetDescription(&text))) error.description = textOf(text);
  SysFreeString(text);
  return error;
}

ReferenceServer::ReferenceServer(Content content) : host(create(L"TqGLJZ.ReferenceHost")) {
  host.put(L"Today", platform::DateTime::fromDate(2006, 1, 15));
  host.put(L"Interactive", Value(false));
  host.call(L"Open", {Argument(Value(address())), Argument(Value(true))});
  if (content == Content::demo) host.call(L"CreateDemo");
}

Pointer<IDispatch> ReferenceServer::services(const std::string& account, int year) const {
  return objectOf(host.call(L"Services", {Argument(Value(account)), Argument(Value(year))}).get());
}

Pointer<IDispatch> ReferenceServer::login(const std::string& account, const std::string& year) const {
  return objectOf(host.call(L"Login", {Argument(Value(account)), Argument(Value(year))}).get());
}

void ReferenceServer::execute(const std::string& database, const std::string& sql) const {
  const Automation connection(objectOf(host.call(L"Connection", {Argument(Value(database))}).get()));
  connection.call(L"ExecuteSql", {Argument(Value(sql))});
  connection.call(L"ConnectionClose");
}

Value ReferenceServer::cell(const std::string& database, const std::string& sql) const {
  const Automation connection(objectOf(host.call(L"Connection", {Argument(Value(database))}).get()));
  return cellOf(connection, sql);
}

Value cellOf(const Automation& connection, const std::string& sql) {
  const Automation rows(objectOf(connection.call(L"OpenRecordset", {Argument(Value(sql)), Argument(Value(2))}).get()));
  if (rows.get(L"EOF").asBool()) return {};
  return Automation(objectOf(rows.call(L"Fields", {Argument(Value(0))}).get())).get(L"Value");
}

std::string message(const std::string& key) {
  return host::Messages("zh-CN").text(key);
}

Pointer<_clsGLJZ> newGljz() {
  return query<_clsGLJZ>(create(L"TqGLJZ.clsGLJZ").get(), IID__clsGLJZ);
}

}  // namespace com::test
