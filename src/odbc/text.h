#pragma once
// UTF-8 inside, UTF-16 at the drivers.

#include <string>
#include <string_view>

namespace odbc {

// RunTimeError 5 for bytes that are no UTF-8: a statement must not reach the server changed.
std::u16string toUtf16(std::string_view text);

// A lone surrogate, which a server's column may hold, becomes U+FFFD.
std::string toUtf8(std::u16string_view text);
void appendUtf8(std::string& out, std::u16string_view text);

}  // namespace odbc
