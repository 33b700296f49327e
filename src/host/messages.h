#pragma once
// Message texts by key, one table per language.
//
//   Messages m("zh-CN");
//   m.text("Orvo.GL.TqGLJZ.00300", {"True"});

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace host {

class Messages {
public:
  // A language that has no table falls back to zh-CN. Throws std::runtime_error when a table is not well-formed.
  explicit Messages(std::string_view language);
  // From a table of its own, for tests.
  explicit Messages(std::map<std::string, std::string, std::less<>> texts) : texts_(std::move(texts)) {}

  // The text of a key with {0}, {1}, ... filled in. A placeholder without an argument, and a Null argument, render as
  // nothing. A key without a text gives the key itself.
  std::string text(std::string_view key, const std::vector<platform::Value>& arguments = {}) const;
  const std::map<std::string, std::string, std::less<>>& all() const { return texts_; }

  static std::vector<std::string> languages();  // those that have a table

private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace host
