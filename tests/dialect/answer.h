#pragma once
// What a server answers to a batch, as text, and when such an answer is the expected one.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace dialect {

struct Failure {
  int number = 0;
  std::string message;
};

struct Answer {
  std::size_t columns = 0;        // of the last result set
  std::vector<std::string> rows;  // of all result sets, columns separated by tabs
  std::int64_t affected = -1;     // by the last insert, update or delete; -1 when there was none
  std::vector<Failure> failures;  // in the order in which they came
};

// The text of a cell as the corpus writes it: Null is "NULL", the empty text "(empty)", flags 0 and 1, numbers plain
// without trailing zeros or exponent, dates with a time only when there is one, bytes "0x" and hexadecimal digits.
std::string cellText(const platform::Value& value);

// A decimal number's text without trailing zeros: "12.50" is "12.5", "-0.00" is "0".
std::string plainNumber(std::string text);

// Equal texts, or numbers of twelve and more significant digits that differ in the last place only.
bool sameCell(std::string_view want, std::string_view got);
bool sameRow(std::string_view want, std::string_view got);
bool sameRows(const std::vector<std::string>& want, const std::vector<std::string>& got);

// want: numbers and words with | between them. One of them has to be the number, or stand in the message (without
// regard to case); "any" is every failure.
bool isExpected(std::string_view want, const Failure& failure);

}  // namespace dialect
