#include "host/display_width.h"

#include <algorithm>
#include <cstdint>

namespace host {
namespace {

// The code point at the head of the text; a byte that begins none stands for itself.
std::uint32_t codePoint(std::string_view text, std::size_t& length) {
  const auto byte = [&](std::size_t i) -> std::uint32_t {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
  };
  const std::uint32_t first = byte(0);
  length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  length = std::min(length, text.size());
  switch (length) {
    case 2:
      return (first & 0x1F) << 6 | (byte(1) & 0x3F);
    case 3:
      return (first & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    case 4:
      return (first & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
    default:
      return first;
  }
}

std::size_t widthOf(std::uint32_t c) {
  if (c < 0x20 || c == 0x7F || (c >= 0x300 && c <= 0x36F) || c == 0x200B || c == 0xFEFF) return 0;
  const bool wide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) || (c >= 0x3041 && c <= 0xA4CF) ||
                    (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE6F) ||
                    (c >= 0xFF00 && c <= 0xFF60) || (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1FAFF) ||
                    (c >= 0x20000 && c <= 0x3FFFD);
  return wide ? 2 : 1;
}

}  // namespace

std::size_t displayWidth(std::string_view utf8) {
  std::size_t width = 0;
  for (std::size_t i = 0, length = 0; i < utf8.size(); i += length) width += widthOf(codePoint(utf8.substr(i), length));
  return width;
}

std::string paddedToWidth(std::string_view utf8, std::size_t width, bool right) {
  const std::size_t own = displayWidth(utf8);
  const std::string blanks(own < width ? width - own : 0, ' ');
  return right ? blanks + std::string(utf8) : std::string(utf8) + blanks;
}

std::string fittedToWidth(std::string_view utf8, std::size_t width) {
  if (displayWidth(utf8) <= width) return std::string(utf8);
  const std::size_t room = width > 3 ? width - 3 : 0;
  std::size_t used = 0, i = 0;
  for (std::size_t length = 0; i < utf8.size(); i += length) {
    const std::size_t w = widthOf(codePoint(utf8.substr(i), length));
    if (used + w > room) break;
    used += w;
  }
  return std::string(utf8.substr(0, i)) + "...";
}

}  // namespace host
