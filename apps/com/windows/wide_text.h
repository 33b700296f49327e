#pragma once
// The way between the models' UTF-8 and the window system's UTF-16. Whatever is well-formed comes back unchanged,
// supplementary characters included; a byte that is no UTF-8 becomes U+FFFD.

#include <string>
#include <string_view>

namespace windows {

std::wstring wide(std::string_view utf8);
std::string narrow(std::wstring_view utf16);

}  // namespace windows
