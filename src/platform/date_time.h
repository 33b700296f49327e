#pragma once
// DateTime: a point in time without a zone, as the server's datetime has it.
//
// Unit: 1/300 second since 1900-01-01 00:00:00. Range 1753-01-01 to 9999-12-31 23:59:59.997. The default text is
// "yyyy-mm-dd", with " hh:mm:ss" only when there is a time of day.

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

class DateTime {
public:
  static constexpr std::int64_t ticksPerSecond = 300;
  static constexpr std::int64_t ticksPerDay = 86400 * ticksPerSecond;

  constexpr DateTime() = default;
  static constexpr DateTime fromTicks(std::int64_t ticks) { return DateTime{ticks}; }
  // month 1 to 12, day 1 to 31 of that month, proleptic Gregorian. Throws RunTimeError 5 for a day that is not.
  static DateTime fromDate(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  // "yyyy-mm-dd" with an optional " hh:mm[:ss]" ('-', '/' and '.' separate alike). Throws RunTimeError 13 otherwise.
  static DateTime parse(std::string_view text);

  constexpr std::int64_t ticks() const { return ticks_; }
  struct Parts {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, millisecond = 0;
  };
  Parts parts() const;
  std::string text() const;      // the default text, see above
  std::string dateText() const;  // "yyyy-mm-dd", whatever the time of day
  constexpr auto operator<=>(const DateTime&) const = default;

private:
  constexpr explicit DateTime(std::int64_t ticks) : ticks_(ticks) {}
  std::int64_t ticks_ = 0;
};

}  // namespace platform
