#include "wide_text.h"

#include <windows.h>

#include <stdexcept>

namespace windows {
namespace {

// The window system counts in int.
int lengthOf(std::size_t size) {
  if (size > 0x3FFFFFFF) throw std::length_error("a text is too long for a window");
  return static_cast<int>(size);
}

}  // namespace

std::wstring wide(std::string_view utf8) {
  const int size = lengthOf(utf8.size());
  std::wstring text(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), static_cast<int>(text.size()));
  return text;
}

std::string narrow(std::wstring_view utf16) {
  const int size = lengthOf(utf16.size());
  const auto convert = [&](char* to, int room) {
    return WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, to, room, nullptr, nullptr);
  };
  std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(text.data(), static_cast<int>(text.size()));
  return text;
}

}  // namespace windows
