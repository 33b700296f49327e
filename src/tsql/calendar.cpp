#include "tsql/calendar.h"

namespace tsql {

const char* const monthNames[12] = {"January", "February", "March",     "April",   "May",      "June",
                                    "July",    "August",   "September", "October", "November", "December"};
const char* const weekdayNames[7] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

namespace {

// Days from 0000-03-01 to 1900-01-01. Years are counted from March so that the leap day is a year's last.
constexpr std::int64_t daysToEpoch = 693901;
constexpr std::int64_t daysPerEra = 146097;  // 400 years

}  // namespace

int daysInMonth(int year, int month) {
  static constexpr int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return month == 2 && leap ? 29 : days[month - 1];
}

std::int64_t daysFromCivil(const CivilDate& date) {
  const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t yearOfEra = year - era * 400;
  const std::int64_t dayOfYear = (153 * (date.month + (date.month > 2 ? -3 : 9)) + 2) / 5 + date.day - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * daysPerEra + dayOfEra - daysToEpoch;
}

CivilDate civilFromDays(std::int64_t days) {
  days += daysToEpoch;
  const std::int64_t era = (days >= 0 ? days : days - daysPerEra + 1) / daysPerEra;
  const std::int64_t dayOfEra = days - era * daysPerEra;
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
  CivilDate date;
  date.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
  date.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  date.year = static_cast<int>(yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0));
  return date;
}

TimeOfDay timeOfDay(std::int64_t ticks) {
  const std::int64_t rest = ticks - dayOf(ticks) * ticksPerDay;
  TimeOfDay time;
  time.hour = static_cast<int>(rest / ticksPerHour);
  time.minute = static_cast<int>(rest % ticksPerHour / ticksPerMinute);
  time.second = static_cast<int>(rest % ticksPerMinute / ticksPerSecond);
  time.millisecond = static_cast<int>((rest % ticksPerSecond * 10 + 1) / 3);
  return time;
}

std::int64_t ticksOfTime(const TimeOfDay& time) {
  return time.hour * ticksPerHour + time.minute * ticksPerMinute + time.second * ticksPerSecond +
         (time.millisecond * 3 + 5) / 10;
}

std::int64_t roundToMinute(std::int64_t ticks) {
  const std::int64_t day = dayOf(ticks);
  const std::int64_t rest = ticks - day * ticksPerDay;
  return day * ticksPerDay + (rest + ticksPerMinute / 2) / ticksPerMinute * ticksPerMinute;
}

int weekdayOf(std::int64_t day) {
  // 1900-01-01 was a Monday.
  return static_cast<int>(((day + 1) % 7 + 7) % 7);
}

}  // namespace tsql
