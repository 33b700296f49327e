#include "odbc/text.h"

#include <array>

#include "platform/run_time_error.h"

namespace odbc {
namespace {

using platform::RunTimeError;

constexpr char32_t replacement = 0xFFFD, lastOfPlane0 = 0xFFFF, lastCharacter = 0x10FFFF;

constexpr bool isHighSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

[[noreturn]] void badText(std::size_t at) {
  throw RunTimeError(RunTimeError::invalidCall, "The text is no UTF-8 at byte " + std::to_string(at + 1));
}

// The character at `at`, which moves behind it.
char32_t decode(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t start = at;
  const unsigned char first = byte(at++);
  if (first < 0x80) return first;
  const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first > 0xF4) badText(start);
  char32_t c = first & (0x3Fu >> more);
  for (int i = 0; i < more; ++i, ++at) {
    if (at >= text.size() || (byte(at) & 0xC0) != 0x80) badText(start);
    c = c << 6 | (byte(at) & 0x3Fu);
  }
  constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  if (c < smallest[more] || c > lastCharacter || isHighSurrogate(c) || isLowSurrogate(c)) badText(start);
  return c;
}

}  // namespace

std::u16string toUtf16(std::string_view text) {
  std::u16string out(text.size(), u'\0');  // never more units than bytes
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) {
    if (const auto c = static_cast<unsigned char>(text[at]); c < 0x80) {
      out[units++] = c;
      ++at;
      continue;
    }
    const char32_t c = decode(text, at);
    if (c > lastOfPlane0) {
      out[units++] = static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      out[units++] = static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      out[units++] = static_cast<char16_t>(c);
    }
  }
  out.resize(units);
  return out;
}

namespace {

// Writes the text behind `to`, which has room for three bytes a unit; gives its end.
char* writeUtf8(char* to, std::u16string_view text) {
  const auto put = [&to](char32_t bits) { *to++ = static_cast<char>(bits); };
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (isHighSurrogate(c) && i + 1 < text.size() && isLowSurrogate(text[i + 1]))
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
    else if (isHighSurrogate(c) || isLowSurrogate(c))
      c = replacement;
    if (c < 0x80) {
      put(c);
    } else if (c < 0x800) {
      put(0xC0 | c >> 6), put(0x80 | (c & 0x3F));
    } else if (c <= lastOfPlane0) {
      put(0xE0 | c >> 12), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
    } else {
      put(0xF0 | c >> 18), put(0x80 | (c >> 12 & 0x3F)), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
    }
  }
  return to;
}

}  // namespace

void appendUtf8(std::string& out, std::u16string_view text) {
  constexpr std::size_t bytesPerUnit = 3, fewUnits = 256;
  if (text.size() <= fewUnits) {  // nearly every cell of a ledger: one allocation of the right size, or none
    std::array<char, bytesPerUnit * fewUnits> bytes;
    out.append(bytes.data(), static_cast<std::size_t>(writeUtf8(bytes.data(), text) - bytes.data()));
    return;
  }
  const std::size_t before = out.size();
  out.resize(before + bytesPerUnit * text.size());
  out.resize(static_cast<std::size_t>(writeUtf8(out.data() + before, text) - out.data()));
}

std::string toUtf8(std::u16string_view text) {
  std::string out;
  appendUtf8(out, text);
  return out;
}

}  // namespace odbc
