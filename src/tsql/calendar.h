#pragma once
// Days and times of day of the dialect: ticks of 1/300 second since 1900-01-01 00:00:00, proleptic Gregorian.

#include <cstdint>

namespace tsql {

inline constexpr std::int64_t ticksPerSecond = 300;
inline constexpr std::int64_t ticksPerMinute = 60 * ticksPerSecond;
inline constexpr std::int64_t ticksPerHour = 60 * ticksPerMinute;
inline constexpr std::int64_t ticksPerDay = 24 * ticksPerHour;

inline constexpr int firstYear = 1753, lastYear = 9999;
inline constexpr std::int64_t firstDay = -53690;  // 1753-01-01
inline constexpr std::int64_t lastDay = 2958463;  // 9999-12-31
inline constexpr std::int64_t firstTick = firstDay * ticksPerDay;
inline constexpr std::int64_t lastTick = (lastDay + 1) * ticksPerDay - 1;
inline constexpr std::int64_t lastSmallDay = 65535;  // 2079-06-06; smalldatetime begins with day 0

struct CivilDate {
  int year = 1900, month = 1, day = 1;
};
struct TimeOfDay {
  int hour = 0, minute = 0, second = 0, millisecond = 0;
};

int daysInMonth(int year, int month);
std::int64_t daysFromCivil(const CivilDate& date);  // since 1900-01-01
CivilDate civilFromDays(std::int64_t days);

// The day of a tick, also before 1900.
constexpr std::int64_t dayOf(std::int64_t ticks) {
  return (ticks >= 0 ? ticks : ticks - ticksPerDay + 1) / ticksPerDay;
}
constexpr bool isDateTime(std::int64_t ticks) {
  return ticks >= firstTick && ticks <= lastTick;
}
// Milliseconds appear in steps of 0, 3 and 7.
TimeOfDay timeOfDay(std::int64_t ticks);
// Rounded to the nearest tick: .001 falls to .000, .002 rises to .003, .999 is the next second.
std::int64_t ticksOfTime(const TimeOfDay& time);
// Rounded to the nearest minute, half a minute up: the value of a smalldatetime.
std::int64_t roundToMinute(std::int64_t ticks);

extern const char* const monthNames[12];
extern const char* const weekdayNames[7];  // Sunday first
int weekdayOf(std::int64_t day);           // 0 is Sunday

}  // namespace tsql
