#pragma once
// Pieces of JSON text.

#include <cstdint>
#include <string>
#include <string_view>

namespace host {

// Appends a JSON string with its quotes. Bytes that are no UTF-8 become U+FFFD.
void appendJsonString(std::string& out, std::string_view text);
std::string jsonString(std::string_view text);
// A number with at most three decimals.
std::string jsonMilli(double value);

}  // namespace host
