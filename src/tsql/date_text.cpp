#include "tsql/date_text.h"

#include <array>
#include <cstdio>

#include "tsql/calendar.h"

namespace tsql {
namespace {

struct Writer {
  CivilDate date;
  TimeOfDay time;

  template <class... Args>
  std::string print(const char* format, Args... args) const {
    std::array<char, 64> buffer{};
    const int size = std::snprintf(buffer.data(), buffer.size(), format, args...);
    return std::string(buffer.data(), static_cast<std::size_t>(size));
  }
  int shortYear() const { return date.year % 100; }
  int hour12() const { return time.hour % 12 == 0 ? 12 : time.hour % 12; }
  const char* half() const { return time.hour < 12 ? "AM" : "PM"; }
  std::string month() const { return std::string(monthNames[date.month - 1], 3); }

  std::string clock() const { return print("%02d:%02d:%02d", time.hour, time.minute, time.second); }
  std::string isoDate() const { return print("%04d-%02d-%02d", date.year, date.month, date.day); }
  std::string milliseconds(char separator) const { return print("%c%03d", separator, time.millisecond); }
  std::string longDate() const { return month() + print(" %2d %04d ", date.day, date.year); }
  std::string dayMonth() const { return print("%02d ", date.day) + month(); }
  std::string triple(int a, int b, int c, char separator) const {
    return print("%02d%c%02d%c%02d", a, separator, b, separator, c);
  }
};

}  // namespace

std::optional<std::string> dateText(std::int64_t ticks, int style) {
  const Writer w{civilFromDays(dayOf(ticks)), timeOfDay(ticks)};
  // A style below 100 writes the year with two digits where its companion above 100 writes four.
  const int year = style < 100 ? w.shortYear() : w.date.year;
  const int month = w.date.month, day = w.date.day;
  switch (style) {
    case 0:
    case 100:
      return w.longDate() + w.print("%2d:%02d%s", w.hour12(), w.time.minute, w.half());
    case 1:
    case 101:
      return w.triple(month, day, year, '/');
    case 2:
    case 102:
      return w.triple(year, month, day, '.');
    case 3:
    case 103:
      return w.triple(day, month, year, '/');
    case 4:
    case 104:
      return w.triple(day, month, year, '.');
    case 5:
    case 105:
      return w.triple(day, month, year, '-');
    case 6:
    case 106:
      return w.dayMonth() + w.print(" %02d", year);
    case 7:
    case 107:
      return w.month() + w.print(" %02d, %02d", day, year);
    case 8:
    case 24:
    case 108:
      return w.clock();
    case 9:
    case 109:
      return w.longDate() +
             w.print("%2d:%02d:%02d:%03d%s", w.hour12(), w.time.minute, w.time.second, w.time.millisecond, w.half());
    case 10:
    case 110:
      return w.triple(month, day, year, '-');
    case 11:
    case 111:
      return w.triple(year, month, day, '/');
    case 12:
    case 112:
      return w.print("%02d%02d%02d", year, month, day);
    case 13:
    case 113:
      return w.dayMonth() + w.print(" %04d ", w.date.year) + w.clock() + w.milliseconds(':');
    case 14:
    case 114:
      return w.clock() + w.milliseconds(':');
    case 20:
    case 120:
      return w.isoDate() + ' ' + w.clock();
    case 21:
    case 25:
    case 121:
      return w.isoDate() + ' ' + w.clock() + w.milliseconds('.');
    case 22:
      return w.triple(month, day, year, '/') +
             w.print(" %2d:%02d:%02d %s", w.hour12(), w.time.minute, w.time.second, w.half());
    case 23:
      return w.isoDate();
    case 126:
    case 127:
      return w.isoDate() + 'T' + w.clock() + (w.time.millisecond == 0 ? "" : w.milliseconds('.')) +
             (style == 127 ? "Z" : "");
    default:
      return std::nullopt;
  }
}

}  // namespace tsql
