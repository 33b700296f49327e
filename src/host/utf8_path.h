#pragma once
// The way between texts and names of files. Texts are UTF-8; what a name is, the operating system says.

#include <filesystem>
#include <string>
#include <string_view>

namespace host {

inline std::filesystem::path pathOf(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string textOf(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

}  // namespace host
