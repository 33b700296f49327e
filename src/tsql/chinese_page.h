#pragma once
// The Chinese code page (GBK, 936) in which the dialect counts and holds char, varchar and text.

#include <string>
#include <string_view>

namespace tsql {

// Bytes a code point takes in the page: 1 or 2. A character that the page lacks is held as '?': 1.
int pageWidth(char32_t c);
bool inPage(char32_t c);

// Bytes that the text takes in the page.
std::size_t pageLength(std::string_view utf8);
// The text with '?' for every character that the page lacks.
std::string throughPage(std::string_view utf8);

std::string toPage(std::string_view utf8);     // the page's bytes
std::string fromPage(std::string_view bytes);  // broken sequences become U+FFFD

}  // namespace tsql
