#include "host/messages.h"

#include <stdexcept>

#include "host/flat_json.h"
#include "host/resources.h"

namespace host {
namespace {

constexpr std::string_view folder = "messages/", extension = ".json", fallback = "zh-CN";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

Messages::Messages(std::string_view language) {
  const auto named = [](std::string_view l) {
    return resource(std::string(folder) + std::string(l) + std::string(extension));
  };
  auto text = named(language);
  if (!text) text = named(fallback);
  if (!text) return;  // a program built without texts: every key reads as itself
  try {
    texts_ = parseFlatJson(*text);
  } catch (const std::runtime_error& e) {
    throw std::runtime_error("message texts of " + std::string(language) + ": " + e.what());
  }
}

std::string Messages::text(std::string_view key, const std::vector<platform::Value>& arguments) const {
  const auto found = texts_.find(key);
  if (found == texts_.end()) return std::string(key);
  const std::string& pattern = found->second;
  std::string out;
  out.reserve(pattern.size() + 32);
  for (std::size_t i = 0; i < pattern.size();) {
    std::size_t end = i + 1, index = 0;
    if (pattern[i] == '{')
      for (; end < pattern.size() && end < i + 4 && isDigit(pattern[end]); ++end)
        index = index * 10 + static_cast<std::size_t>(pattern[end] - '0');
    if (pattern[i] != '{' || end == i + 1 || end >= pattern.size() || pattern[end] != '}') {
      out += pattern[i++];
      continue;
    }
    if (index < arguments.size()) out += arguments[index].displayText();
    i = end + 1;
  }
  return out;
}

std::vector<std::string> Messages::languages() {
  std::vector<std::string> found;
  for (const Resource& r : resourcesUnder(folder))
    if (r.name.ends_with(extension))
      found.emplace_back(r.name.substr(folder.size(), r.name.size() - folder.size() - extension.size()));
  return found;
}

}  // namespace host
