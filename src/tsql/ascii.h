#pragma once
// Letter case of the words of the dialect, which are ASCII: other bytes stay as they are.

#include <algorithm>
#include <string>
#include <string_view>

namespace tsql {

constexpr char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

inline std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lowered);
  return result;
}

// Whether a text is the word, which is given in lower case.
inline bool isSpelled(std::string_view text, std::string_view lowerWord) {
  return text.size() == lowerWord.size() && std::equal(text.begin(), text.end(), lowerWord.begin(),
                                                       [](char c, char lower) { return lowered(c) == lower; });
}

}  // namespace tsql
