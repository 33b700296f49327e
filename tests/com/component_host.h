#pragma once
// A host in C++ as any other program would be one: it sees the component through COM alone.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "TqGLJZ.h"
#include "automation.h"
#include "pointer.h"
#include "text_by_reference.h"
#include "variant.h"

namespace com::test {

// A folder for one test's server, in the prefix; it goes away with the object.
class ServerFolder {
public:
  ServerFolder();
  ~ServerFolder();
  ServerFolder(const ServerFolder&) = delete;
  ServerFolder& operator=(const ServerFolder&) = delete;
  std::string address() const;  // "embedded:C:/..."

private:
  std::filesystem::path path_;
};

// The run holds its last connections until the process ends, and Windows removes no file that is open: what the test
// programs before this one have left behind goes now.
void removeFoldersOfEarlierPrograms();

// Creates objects by program id, as a host does.
Pointer<IDispatch> create(const wchar_t* programId);

// The error object of the thread, after a call by slot has failed.
struct ComError {
  std::string source, description;
};
ComError lastError();

// A reference host with a server of its own, its clock at 2006-01-15.
class ReferenceServer {
public:
  enum class Content { none, demo };
  explicit ReferenceServer(Content content = Content::demo);

  Automation host;
  Pointer<IDispatch> services(const std::string& account = "001", int year = 2006) const;
  Pointer<IDispatch> login(const std::string& account = "001", const std::string& year = "2006") const;
  void execute(const std::string& database, const std::string& sql) const;
  // The first cell of a selection; Null without a row.
  platform::Value cell(const std::string& database, const std::string& sql) const;
  std::string address() const { return folder_.address(); }

private:
  ServerFolder folder_;
};

// The first cell of a selection over a connection; Null without a row.
platform::Value cellOf(const Automation& connection, const std::string& sql);

// The message text of a key in zh-CN.
std::string message(const std::string& key);

Pointer<_clsGLJZ> newGljz();

}  // namespace com::test
