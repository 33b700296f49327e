#pragma once
// Money: an exact amount of currency.
//
//   Money a = Money::parse("12.5");          // 12.5000
//   Money b = a + Money::fromUnits(1);       // 12.5001
//   b.text();                                // "12.5001"
//
// Unit: 1/10000 of the currency, held in a 64-bit integer. Range: -922337203685477.5808 to
// 922337203685477.5807. Arithmetic that leaves the range throws RunTimeError 6 ("Overflow"); it never
// wraps and never passes through double.

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

class Money {
public:
  static constexpr std::int64_t unitsPerOne = 10000;

  constexpr Money() = default;
  static constexpr Money fromUnits(std::int64_t units) { return Money{units}; }
  // Whole currency amount. Throws RunTimeError 6 when out of range.
  static Money fromInteger(std::int64_t whole);
  // Rounds half away from zero to the fourth decimal. Throws RunTimeError 6 when out of range.
  static Money fromDouble(double value);
  // Decimal text with optional sign, blanks at both ends and at most one point; more than four decimals are
  // rounded half away from zero. Throws RunTimeError 13 on anything else, 6 when out of range.
  static Money parse(std::string_view text);

  constexpr std::int64_t units() const { return units_; }
  double toDouble() const;
  // Plain number text: no grouping, a point, no trailing zeros ("-0.5", "12", "100.0001").
  std::string text() const;

  Money operator-() const;
  Money operator+(Money other) const;
  Money operator-(Money other) const;
  Money abs() const;
  constexpr bool isZero() const { return units_ == 0; }
  constexpr auto operator<=>(const Money&) const = default;

private:
  constexpr explicit Money(std::int64_t units) : units_(units) {}
  std::int64_t units_ = 0;
};

}  // namespace platform
