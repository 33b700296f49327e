#pragma once
// Reading of the one JSON shape that message files have: an object whose values are texts.

#include <map>
#include <string>
#include <string_view>

namespace host {

// Throws std::runtime_error with the line when the text is anything else, a repeated key included.
std::map<std::string, std::string, std::less<>> parseFlatJson(std::string_view text);

}  // namespace host
