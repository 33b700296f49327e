#pragma once
// Dates as text: what the server reads as a date, and the numbered styles in which it writes one.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tsql {

struct ReadDate {
  enum class Status {
    ok,
    syntax,  // no date
    range,   // a date's form with a day or time that does not exist, or a year outside 1753 to 9999
  } status = Status::syntax;
  std::int64_t ticks = 0;
};

// Reads, with blanks wherever they make sense:
//   2006-01-05  2006/1/5  2006.01.05  01/05/2006  1-5-06  20060105  060105  2006
//   Jan 5 2006  January 5, 2006  5 January 2006  2006 Jan 5  5-Jan-06  Jan 2006 (its first day)
//   2006-01-05T08:09:10[.123][Z]
// and a time before or behind the date, or alone (then of 1900-01-01): 8:09  8:09:10  8:09:10.5  8:09:10:500, with AM
// or PM behind it, 8 PM. A year of two digits is 1950 to 2049. The empty text is 1900-01-01. style is convert's third
// argument: it decides the order of three numbers without a year of four digits in front; month, day, year when it
// names no other order.
ReadDate readDate(std::string_view text, int style);

// nullopt for a number that is no style.
std::optional<std::string> dateText(std::int64_t ticks, int style);

}  // namespace tsql
