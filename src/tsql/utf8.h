#pragma once
// Walking over UTF-8, inline because the hot paths of comparing and matching are built of it.

#include <cstddef>
#include <string>
#include <string_view>

namespace tsql {

// The code point at byte `at`, which moves behind it. A broken sequence is U+FFFD for one byte.
inline char32_t nextCodePoint(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto tail = [&](std::size_t i) { return i < text.size() && (byte(i) & 0xC0) == 0x80; };
  const char32_t first = byte(at);
  if (first < 0x80) {
    ++at;
    return first;
  }
  if (first >= 0xE0 && first < 0xF0 && tail(at + 1) && tail(at + 2)) {  // most Chinese texts
    const char32_t c = (first & 0x0F) << 12 | (byte(at + 1) & 0x3Fu) << 6 | (byte(at + 2) & 0x3Fu);
    if (c >= 0x800 && (c < 0xD800 || c > 0xDFFF)) {
      at += 3;
      return c;
    }
  } else if (first >= 0xC2 && first < 0xE0 && tail(at + 1)) {
    const char32_t c = (first & 0x1F) << 6 | (byte(at + 1) & 0x3Fu);
    at += 2;
    return c;
  } else if (first >= 0xF0 && first < 0xF5 && tail(at + 1) && tail(at + 2) && tail(at + 3)) {
    const char32_t c =
        (first & 0x07) << 18 | (byte(at + 1) & 0x3Fu) << 12 | (byte(at + 2) & 0x3Fu) << 6 | (byte(at + 3) & 0x3Fu);
    if (c >= 0x10000 && c <= 0x10FFFF) {
      at += 4;
      return c;
    }
  }
  ++at;
  return 0xFFFD;
}

inline void appendCodePoint(std::string& text, char32_t c) {
  const auto put = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6), put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18), put(0x80 | (c >> 12 & 0x3F)), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
  }
}

inline bool isAscii(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

inline std::size_t countCodePoints(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) nextCodePoint(text, at);
  return count;
}

// The bytes of the first `count` code points.
inline std::size_t bytesOf(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; count > 0 && at < text.size(); --count) nextCodePoint(text, at);
  return at;
}

}  // namespace tsql
