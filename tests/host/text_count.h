#pragma once
#include <cstddef>
#include <string>

namespace host::test {

// How often a part stands in a text.
inline std::size_t count(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++n;
  return n;
}

}  // namespace host::test
