#include "tsql/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "tsql/utf8.h"

namespace tsql {
namespace {

std::string_view trimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool takeSign(std::string_view& text) {
  if (text.empty() || (text[0] != '-' && text[0] != '+')) return false;
  const bool negative = text[0] == '-';
  text.remove_prefix(1);
  return negative;
}

bool isCurrencySign(char32_t c) {
  static constexpr std::array<char32_t, 16> others = {U'$',   0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x09F2, 0x09F3, 0x0E3F,
                                                      0x17DB, 0xFDFC, 0xFE69, 0xFF04, 0xFFE0, 0xFFE1, 0xFFE5, 0xFFE6};
  return (c >= 0x20A0 && c <= 0x20BF) || std::find(others.begin(), others.end(), c) != others.end();
}

// A decimal number out of single digits. Digits behind the scale only round.
class DigitCollector {
public:
  explicit DigitCollector(int scale) : scale_(scale) {}
  void point() { behindPoint_ = true; }
  void digit(char c) {
    if (behindPoint_ && decimals_ >= scale_) {
      if (decimals_++ == scale_) roundUp_ = c >= '5';
      return;
    }
    if (behindPoint_) ++decimals_;
    append(c - '0');
  }
  // nullopt beyond 38 digits.
  std::optional<Int128> units(bool negative) {
    for (; decimals_ < scale_; ++decimals_) append(0);
    if (roundUp_) ++units_;
    if (overflow_ || units_ >= powerOfTen(maxDecimalDigits)) return std::nullopt;
    return negative ? -units_ : units_;
  }

private:
  void append(int digit) {
    if (units_ >= powerOfTen(maxDecimalDigits - 1)) overflow_ = true;
    if (!overflow_) units_ = units_ * 10 + digit;
  }
  int scale_, decimals_ = 0;
  bool behindPoint_ = false, roundUp_ = false, overflow_ = false;
  Int128 units_ = 0;
};

// Exponents are written with at least three digits.
std::string widenExponent(std::string text) {
  const auto e = text.find('e');
  if (e == std::string::npos) return text;
  const std::size_t digits = text.size() - e - 2;
  if (digits < 3) text.insert(e + 2, 3 - digits, '0');
  return text;
}

// Which side the range was left on: the decimal exponent of the first digit that is not 0 tells.
bool isHuge(std::string_view number, long exponent) {
  long position = 0;
  bool point = false, found = false;
  for (const char c : number) {
    if (c == '.') {
      point = true;
    } else if (isDigit(c)) {
      found = found || c != '0';
      if (found && !point) ++position;
      if (!found && point) --position;
    } else {
      break;
    }
  }
  return position + exponent > 0;
}

}  // namespace

ReadNumber<std::int64_t> readInteger(std::string_view text) {
  text = trimBlanks(text);
  const bool negative = takeSign(text);
  while (!text.empty() && text[0] == ' ') text.remove_prefix(1);
  std::int64_t value = 0;
  bool overflow = false;
  for (const char c : text) {
    if (!isDigit(c)) return {ReadStatus::syntax, 0};
    // Collected below 0, where there is one value more.
    overflow = overflow || __builtin_mul_overflow(value, std::int64_t{10}, &value) ||
               __builtin_sub_overflow(value, static_cast<std::int64_t>(c - '0'), &value);
  }
  if (overflow || (!negative && value == INT64_MIN)) return {ReadStatus::overflow, 0};
  return {ReadStatus::ok, negative ? value : -value};
}

ReadNumber<Int128> readDecimal(std::string_view text, int scale) {
  text = trimBlanks(text);
  const bool negative = takeSign(text);
  DigitCollector digits(scale);
  bool point = false, any = false;
  for (const char c : text) {
    if (c == '.' && !point) {
      point = true;
      digits.point();
    } else if (isDigit(c)) {
      any = true;
      digits.digit(c);
    } else {
      return {ReadStatus::syntax, 0};
    }
  }
  if (!any) return {ReadStatus::syntax, 0};
  const auto units = digits.units(negative);
  if (!units) return {ReadStatus::overflow, 0};
  return {ReadStatus::ok, *units};
}

ReadNumber<std::int64_t> readMoney(std::string_view text) {
  DigitCollector digits(4);
  bool negative = false, sign = false, currency = false, any = false, point = false, end = false;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = nextCodePoint(text, at);
    if (c == U' ' || (c >= U'\t' && c <= U'\r')) {
      end = end || any || point;  // blanks before the digits are nothing, behind them only blanks may follow
    } else if (end) {
      return {ReadStatus::syntax, 0};
    } else if (c >= U'0' && c <= U'9') {
      any = true;
      digits.digit(static_cast<char>(c));
    } else if (c == U'.' && !point) {
      point = true;
      digits.point();
    } else if (c == U',' && !point) {
      // Commas are passed over wherever they stand.
    } else if ((c == U'-' || c == U'+') && !sign && !any && !point) {
      sign = true;
      negative = c == U'-';
    } else if (isCurrencySign(c) && !currency && !any && !point) {
      currency = true;
    } else {
      return {ReadStatus::syntax, 0};
    }
  }
  const auto units = digits.units(negative);
  if (!units || *units > INT64_MAX || *units < INT64_MIN) return {ReadStatus::overflow, 0};
  return {ReadStatus::ok, static_cast<std::int64_t>(*units)};
}

ReadNumber<double> readFloat(std::string_view text) {
  text = trimBlanks(text);
  if (text.empty()) return {ReadStatus::ok, 0};
  const bool negative = takeSign(text);
  // from_chars also knows "inf", "nan" and forms that are no numbers here, so the form is checked first.
  std::size_t at = 0, digits = 0;
  for (; at < text.size() && isDigit(text[at]); ++at) ++digits;
  if (at < text.size() && text[at] == '.')
    for (++at; at < text.size() && isDigit(text[at]); ++at) ++digits;
  if (digits == 0) return {ReadStatus::syntax, 0};
  std::string number(text);
  long exponent = 0;
  if (at < text.size()) {
    if (std::string_view("eEdD").find(text[at]) == std::string_view::npos) return {ReadStatus::syntax, 0};
    number[at++] = 'e';
    const std::size_t start = at < text.size() && text[at] == '+' ? at + 1 : at;
    const std::size_t firstDigit = start < text.size() && text[start] == '-' && start == at ? start + 1 : start;
    if (firstDigit >= text.size() ||
        !std::all_of(text.begin() + static_cast<std::ptrdiff_t>(firstDigit), text.end(), isDigit))
      return {ReadStatus::syntax, 0};
    const auto read = std::from_chars(text.data() + start, text.data() + text.size(), exponent);
    if (read.ec != std::errc()) exponent = text[start] == '-' ? -1000000 : 1000000;
    exponent = std::clamp(exponent, -1000000L, 1000000L);
  }
  double value = 0;
  if (std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range) {
    if (isHuge(number, exponent)) return {ReadStatus::overflow, 0};
    value = 0;
  }
  return {ReadStatus::ok, negative ? -value : value};
}

std::string floatText(double value) {
  std::array<char, 32> buffer{};
  if (value == 0) value = 0;  // no "-0"
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 6);
  return widenExponent(std::string(buffer.data(), end.ptr));
}

std::string scientificText(double value, int decimals) {
  std::array<char, 64> buffer{};
  if (value == 0) value = 0;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, decimals);
  return widenExponent(std::string(buffer.data(), end.ptr));
}

std::string moneyText(std::int64_t units, int style) {
  if (style == 2 || style == 126) return decimalText(units, 4);
  std::string text = decimalText(rescale(units, 4, 2), 2);
  if (style != 1) return text;
  const std::size_t first = text[0] == '-' ? 1 : 0;
  for (std::size_t at = text.size() - 3; at > first + 3; at -= 3) text.insert(at - 3, 1, ',');
  return text;
}

}  // namespace tsql
