// Dates, in ticks of 1/300 second since 1900-01-01. Date parts come as their codes.

#include <optional>

#include "embedded/function_support.h"
#include "tsql/calendar.h"

namespace embedded {
namespace {

using namespace tsql;

enum class Part : std::int64_t {
  year = 1,
  quarter,
  month,
  dayOfYear,
  day,
  week,
  weekday,
  hour,
  minute,
  second,
  millisecond
};

Part partOf(const Call& c) {
  const std::int64_t code = c.integer(0);
  if (code < 1 || code > 11) throw SqlError(155, "'" + std::to_string(code) + "' is not a recognized datepart option.");
  return static_cast<Part>(code);
}

std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}

[[noreturn]] void throwDateOverflow() {
  throw SqlError(517, "Adding a value to a 'datetime' column caused an overflow.");
}

std::int64_t checkDate(Int128 ticks) {
  if (ticks < firstTick || ticks > lastTick) throwDateOverflow();
  return static_cast<std::int64_t>(ticks);
}

std::int64_t part(Part code, std::int64_t ticks) {
  const std::int64_t day = dayOf(ticks);
  const CivilDate date = civilFromDays(day);
  const TimeOfDay time = timeOfDay(ticks);
  const std::int64_t newYear = daysFromCivil({date.year, 1, 1});
  switch (code) {
    case Part::year:
      return date.year;
    case Part::quarter:
      return (date.month + 2) / 3;
    case Part::month:
      return date.month;
    case Part::dayOfYear:
      return day - newYear + 1;
    case Part::day:
      return date.day;
    // Weeks begin on Sunday; 1 January stands in week 1.
    case Part::week:
      return (day - newYear + weekdayOf(newYear)) / 7 + 1;
    case Part::weekday:
      return weekdayOf(day) + 1;
    case Part::hour:
      return time.hour;
    case Part::minute:
      return time.minute;
    case Part::second:
      return time.second;
    case Part::millisecond:
      return time.millisecond;
  }
  return 0;
}

void datePart(Call& c) {
  c.result(part(partOf(c), c.integer(1)));
}

void dateName(Call& c) {
  const Part code = partOf(c);
  const std::int64_t value = part(code, c.integer(1));
  if (code == Part::month) return c.result(std::string_view(monthNames[value - 1]));
  if (code == Part::weekday) return c.result(std::string_view(weekdayNames[value - 1]));
  c.result(std::to_string(value));
}

// A day that the target month does not have becomes its last one.
std::int64_t addMonths(std::int64_t ticks, std::int64_t months) {
  const std::int64_t day = dayOf(ticks);
  CivilDate date = civilFromDays(day);
  const std::int64_t month = std::int64_t{date.year} * 12 + date.month - 1 + months;
  if (month < firstYear * 12 || month >= (lastYear + 1) * 12) throwDateOverflow();
  date.year = static_cast<int>(month / 12);
  date.month = static_cast<int>(month % 12) + 1;
  date.day = std::min(date.day, daysInMonth(date.year, date.month));
  return daysFromCivil(date) * ticksPerDay + (ticks - day * ticksPerDay);
}

// code, number, date. The number is cut to an integer.
void dateAdd(Call& c) {
  const Part code = partOf(c);
  const std::int64_t n = c.integer(1), ticks = c.integer(2);
  if (n > INT32_MAX || n < INT32_MIN) throwOverflow("int");
  const auto plus = [&](std::int64_t unit) { return checkDate(Int128{ticks} + Int128{n} * unit); };
  switch (code) {
    case Part::year:
      return c.result(addMonths(ticks, n * 12));
    case Part::quarter:
      return c.result(addMonths(ticks, n * 3));
    case Part::month:
      return c.result(addMonths(ticks, n));
    case Part::dayOfYear:
    case Part::weekday:
    case Part::day:
      return c.result(plus(ticksPerDay));
    case Part::week:
      return c.result(plus(7 * ticksPerDay));
    case Part::hour:
      return c.result(plus(ticksPerHour));
    case Part::minute:
      return c.result(plus(ticksPerMinute));
    case Part::second:
      return c.result(plus(ticksPerSecond));
    case Part::millisecond:
      return c.result(checkDate(ticks + rescale(Int128{n} * 3, 1, 0)));
  }
}

std::int64_t milliseconds(std::int64_t ticks) {
  const std::int64_t seconds = floorDivide(ticks, ticksPerSecond);
  return seconds * 1000 + timeOfDay(ticks).millisecond;
}

// The number of the part's border that lies before the point in time, counted from any fixed one.
std::int64_t border(Part code, std::int64_t ticks) {
  const std::int64_t day = dayOf(ticks);
  switch (code) {
    case Part::year:
      return civilFromDays(day).year;
    case Part::quarter:
    case Part::month: {
      const CivilDate date = civilFromDays(day);
      const std::int64_t month = date.year * 12 + date.month - 1;
      return code == Part::month ? month : month / 3;
    }
    case Part::dayOfYear:
    case Part::weekday:
    case Part::day:
      return day;
    case Part::week:
      return floorDivide(day + 1, 7);  // day 0 was a Monday, weeks begin on Sunday
    case Part::hour:
      return floorDivide(ticks, ticksPerHour);
    case Part::minute:
      return floorDivide(ticks, ticksPerMinute);
    case Part::second:
      return floorDivide(ticks, ticksPerSecond);
    case Part::millisecond:
      return milliseconds(ticks);
  }
  return 0;
}

// How many borders of the part lie between two points in time, not how much time.
void dateDiff(Call& c) {
  const Part code = partOf(c);
  const std::int64_t difference = border(code, c.integer(2)) - border(code, c.integer(1));
  if (difference > INT32_MAX || difference < INT32_MIN)
    throw SqlError(535,
                   "The datediff function resulted in an overflow. The number of dateparts separating two date/time "
                   "instances is too large. Try to use datediff with a less precise datepart.");
  c.result(difference);
}

// A date and a number of days, which may have a fraction and be negative.
void dateTimeAdd(Call& c) {
  const double ticks = std::round(c.real(1) * static_cast<double>(ticksPerDay));
  if (!(std::fabs(ticks) < 1e15)) throwDateOverflow();
  c.result(checkDate(Int128{c.integer(0)} + static_cast<std::int64_t>(ticks)));
}

// One time for the whole statement, whatever the number of rows.
void getDate(Call& c) {
  auto& context = c.context();
  if (!context.now) throw SqlError(50000, "The clock is not set.");
  if (!context.statementTime) context.statementTime = context.now();
  c.result(*context.statementTime);
}

// A sum or difference of dates: what no date can be is a failure.
void dateResult(Call& c) {
  if (sqlite3_value_type(c.value(0)) == SQLITE_FLOAT)
    return c.result(checkDate(static_cast<Int128>(std::clamp(std::round(c.real(0)), -1e15, 1e15))));
  c.result(checkDate(Int128{c.integer(0)}));
}

void isDate(Call& c) {
  try {
    const auto from = tsql::typeOf(tsql::TypeKind::varchar, 8000);
    tsql::convert(std::string(c.text(0)), from, tsql::typeOf(tsql::TypeKind::datetime));
    c.result(std::int64_t{c.text(0).find_first_not_of(' ') != std::string_view::npos});
  } catch (const SqlError&) {
    c.result(std::int64_t{0});
  }
}
void isDateOrNull(Call& c) {
  if (c.isNull(0)) return c.result(std::int64_t{0});
  isDate(c);
}

}  // namespace

void registerDateFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {
      {"ts_datepart", 2, runNullToNull<datePart>},        {"ts_datename", 2, runNullToNull<dateName>},
      {"ts_dateadd", 3, runNullToNull<dateAdd>},          {"ts_datediff", 3, runNullToNull<dateDiff>},
      {"ts_datetime_add", 2, runNullToNull<dateTimeAdd>}, {"ts_getdate", 0, runAlways<getDate>, false},
      {"ts_date", 1, runNullToNull<dateResult>},          {"ts_isdate", 1, runAlways<isDateOrNull>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
