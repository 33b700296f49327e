#include "platform/date_time.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <optional>

#include "platform/run_time_error.h"

namespace platform {
namespace {

using namespace std::chrono;

constexpr sys_days firstDay = sys_days{year{1900} / 1 / 1};

// A walk over the text "yyyy-mm-dd hh:mm:ss".
class Scanner {
public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  std::optional<int> number(std::size_t longest) {
    std::size_t count = 0;
    while (count < rest_.size() && count < longest && rest_[count] >= '0' && rest_[count] <= '9') ++count;
    if (count == 0) return std::nullopt;
    int value = 0;
    std::from_chars(rest_.data(), rest_.data() + count, value);
    rest_.remove_prefix(count);
    return value;
  }
  bool oneOf(std::string_view characters) {
    if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool atEnd() const { return rest_.empty(); }

private:
  std::string_view rest_;
};

[[noreturn]] void failMismatch() {
  throw RunTimeError(RunTimeError::typeMismatch, "Type mismatch");
}

int required(std::optional<int> number) {
  if (!number) failMismatch();
  return *number;
}

std::string trimmed(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return std::string(text);
}

std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
  const std::int64_t quotient = a / b;
  return a % b < 0 ? quotient - 1 : quotient;
}

}  // namespace

DateTime DateTime::fromDate(int year, int month, int day, int hour, int minute, int second) {
  const year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                            std::chrono::day{static_cast<unsigned>(day)}};
  const bool timeIsValid = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
  if (year < 1753 || year > 9999 || month < 1 || day < 1 || !date.ok() || !timeIsValid) {
    throw RunTimeError(RunTimeError::invalidCall, "Invalid procedure call or argument");
  }
  const std::int64_t days = (sys_days{date} - firstDay).count();
  return fromTicks(days * ticksPerDay + (hour * 3600 + minute * 60 + second) * ticksPerSecond);
}

DateTime DateTime::parse(std::string_view text) {
  const std::string whole = trimmed(text);
  Scanner scan{whole};
  const int year = required(scan.number(4));
  if (!scan.oneOf("-/.")) failMismatch();
  const int month = required(scan.number(2));
  if (!scan.oneOf("-/.")) failMismatch();
  const int day = required(scan.number(2));
  int hour = 0, minute = 0, second = 0;
  if (scan.oneOf(" ")) {
    hour = required(scan.number(2));
    if (!scan.oneOf(":")) failMismatch();
    minute = required(scan.number(2));
    if (scan.oneOf(":")) second = required(scan.number(2));
  }
  if (!scan.atEnd()) failMismatch();
  try {
    return fromDate(year, month, day, hour, minute, second);
  } catch (const RunTimeError&) {
    failMismatch();
  }
}

DateTime::Parts DateTime::parts() const {
  const std::int64_t days = floorDivide(ticks_, ticksPerDay);
  const std::int64_t ofDay = ticks_ - days * ticksPerDay;
  const year_month_day date{firstDay + std::chrono::days{days}};
  const std::int64_t seconds = ofDay / ticksPerSecond;
  // A tick is 3 1/3 ms; shown as 0, 3, 7, 10, 13, 17 ...
  const std::int64_t milliseconds = (ofDay % ticksPerSecond * 10 + 1) / 3;
  Parts p;
  p.year = static_cast<int>(date.year());
  p.month = static_cast<int>(static_cast<unsigned>(date.month()));
  p.day = static_cast<int>(static_cast<unsigned>(date.day()));
  p.hour = static_cast<int>(seconds / 3600);
  p.minute = static_cast<int>(seconds / 60 % 60);
  p.second = static_cast<int>(seconds % 60);
  p.millisecond = static_cast<int>(milliseconds);
  return p;
}

std::string DateTime::dateText() const {
  const Parts p = parts();
  std::array<char, 48> buffer;
  std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", p.year, p.month, p.day);
  return buffer.data();
}

std::string DateTime::text() const {
  const Parts p = parts();
  if (ticks_ - floorDivide(ticks_, ticksPerDay) * ticksPerDay == 0) return dateText();
  std::array<char, 48> buffer;
  std::snprintf(buffer.data(), buffer.size(), " %02d:%02d:%02d", p.hour, p.minute, p.second);
  return dateText() + buffer.data();
}

}  // namespace platform
