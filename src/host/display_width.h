#pragma once
// Widths of text on a terminal: a Chinese character takes two columns.

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

std::size_t displayWidth(std::string_view utf8);
std::string paddedToWidth(std::string_view utf8, std::size_t width, bool right = false);
// The text, or as much of it as fits with "..." behind it.
std::string fittedToWidth(std::string_view utf8, std::size_t width);

}  // namespace host
