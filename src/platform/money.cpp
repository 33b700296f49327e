#include "platform/money.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/run_time_error.h"

namespace platform {
namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

[[noreturn]] void failOverflow() {
  throw RunTimeError(RunTimeError::overflow, "Overflow");
}
[[noreturn]] void failMismatch() {
  throw RunTimeError(RunTimeError::typeMismatch, "Type mismatch");
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Reads amounts as magnitudes without a sign, which reach one unit further below zero than above.
class Magnitude {
public:
  void append(int digit) {
    constexpr std::uint64_t limit = static_cast<std::uint64_t>(largest) + 1;
    const auto d = static_cast<std::uint64_t>(digit);
    if (units_ > (limit - d) / 10) failOverflow();
    units_ = units_ * 10 + d;
  }
  void roundUp() {
    if (units_ > static_cast<std::uint64_t>(largest)) failOverflow();
    ++units_;
  }
  std::int64_t withSign(bool negative) const {
    if (!negative && units_ > static_cast<std::uint64_t>(largest)) failOverflow();
    return static_cast<std::int64_t>(negative ? 0 - units_ : units_);
  }

private:
  std::uint64_t units_ = 0;
};

std::string_view withoutBlanks(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

}  // namespace

Money Money::fromInteger(std::int64_t whole) {
  if (whole > largest / unitsPerOne || whole < smallest / unitsPerOne) failOverflow();
  return fromUnits(whole * unitsPerOne);
}

Money Money::fromDouble(double value) {
  // The shortest decimal text that reads back is what gets rounded: 1.00005 rounds up as it reads, although the double
  // nearest to it may lie below.
  constexpr double beyondRange = 1e15;
  if (!(std::abs(value) < beyondRange)) failOverflow();
  std::array<char, 400> buffer;
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return parse({buffer.data(), written.ptr});
}

Money Money::parse(std::string_view text) {
  std::string_view rest = withoutBlanks(text);
  const bool negative = rest.starts_with('-');
  if (negative || rest.starts_with('+')) rest.remove_prefix(1);
  const auto point = rest.find('.');
  const std::string_view whole = rest.substr(0, point);
  const std::string_view decimals = point == std::string_view::npos ? std::string_view() : rest.substr(point + 1);
  if (whole.empty() && decimals.empty()) failMismatch();

  Magnitude magnitude;
  for (char c : whole) {
    if (!isDigit(c)) failMismatch();
    magnitude.append(c - '0');
  }
  constexpr std::size_t places = 4;
  for (std::size_t i = 0; i < places; ++i) {
    const char c = i < decimals.size() ? decimals[i] : '0';
    if (!isDigit(c)) failMismatch();
    magnitude.append(c - '0');
  }
  for (std::size_t i = places; i < decimals.size(); ++i) {
    if (!isDigit(decimals[i])) failMismatch();
  }
  if (decimals.size() > places && decimals[places] >= '5') magnitude.roundUp();
  return fromUnits(magnitude.withSign(negative));
}

double Money::toDouble() const {
  return static_cast<double>(units_) / static_cast<double>(unitsPerOne);
}

std::string Money::text() const {
  const bool negative = units_ < 0;
  const auto magnitude = negative ? 0 - static_cast<std::uint64_t>(units_) : static_cast<std::uint64_t>(units_);
  std::string result = (negative ? "-" : "") + std::to_string(magnitude / unitsPerOne);
  if (const auto fraction = magnitude % unitsPerOne; fraction != 0) {
    std::string digits = std::to_string(unitsPerOne + fraction).substr(1);  // keeps the leading zeros
    digits.erase(digits.find_last_not_of('0') + 1);
    result += '.' + digits;
  }
  return result;
}

Money Money::operator-() const {
  if (units_ == smallest) failOverflow();
  return fromUnits(-units_);
}

Money Money::operator+(Money other) const {
  const bool overflows = other.units_ > 0 ? units_ > largest - other.units_ : units_ < smallest - other.units_;
  if (overflows) failOverflow();
  return fromUnits(units_ + other.units_);
}

Money Money::operator-(Money other) const {
  const bool overflows = other.units_ < 0 ? units_ > largest + other.units_ : units_ < smallest + other.units_;
  if (overflows) failOverflow();
  return fromUnits(units_ - other.units_);
}

Money Money::abs() const {
  return units_ < 0 ? -*this : *this;
}

}  // namespace platform
