#include "dialect/answer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace dialect {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find(separator, at), text.size());
    parts.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return parts;
}

// The shortest digits that read back as the same number, without an exponent however large or small it is.
std::string realText(double value) {
  if (!std::isfinite(value)) return std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf";
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific).ptr;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));  // "-1.2345e+16"
  const std::size_t e = text.find('e');
  int exponent = 0;
  const std::size_t exponentStart = e + (text[e + 1] == '+' ? 2 : 1);
  std::from_chars(buffer + exponentStart, end, exponent);
  std::string digits;
  for (char c : text.substr(0, e)) {
    if (isDigit(c)) digits += c;
  }
  const int pointAt = exponent + 1;  // digits before the point
  if (pointAt <= 0) {
    digits.insert(0, static_cast<std::size_t>(1 - pointAt), '0');
    digits.insert(1, ".");
  } else if (static_cast<std::size_t>(pointAt) >= digits.size()) {
    digits.append(static_cast<std::size_t>(pointAt) - digits.size(), '0');
  } else {
    digits.insert(static_cast<std::size_t>(pointAt), ".");
  }
  return plainNumber((value < 0 ? "-" : "") + digits);
}

std::string dateText(const platform::DateTime& value) {
  const auto p = value.parts();
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", p.year, p.month, p.day);
  std::string result = text;
  if (p.hour != 0 || p.minute != 0 || p.second != 0 || p.millisecond != 0) {
    std::snprintf(text, sizeof text, " %02d:%02d:%02d", p.hour, p.minute, p.second);
    result += text;
  }
  if (p.millisecond != 0) {
    std::snprintf(text, sizeof text, ".%03d", p.millisecond);
    result += text;
  }
  return result;
}

std::string bytesText(const platform::Bytes& bytes) {
  static constexpr char hex[] = "0123456789ABCDEF";
  std::string text = "0x";
  for (const std::uint8_t byte : bytes) {
    text += hex[byte >> 4];
    text += hex[byte & 15];
  }
  return text;
}

// A plain decimal number and nothing else; nothing for "1e5", " 1", "" or "NULL".
std::optional<double> number(std::string_view text) {
  double value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (failure != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::size_t significantDigits(std::string_view text) {
  std::string digits;
  std::copy_if(text.begin(), text.end(), std::back_inserter(digits), isDigit);
  const std::size_t first = digits.find_first_not_of('0');
  return first == std::string::npos ? 0 : digits.find_last_not_of('0') - first + 1;
}

}  // namespace

std::string plainNumber(std::string text) {
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
  }
  return text.empty() || text == "-0" || text == "-" ? "0" : text;
}

std::string cellText(const platform::Value& value) {
  using Kind = platform::Value::Kind;
  switch (value.kind()) {
    case Kind::null:
      return "NULL";
    case Kind::boolean:
      return value.asBool() ? "1" : "0";
    case Kind::real:
      return realText(value.asDouble());
    case Kind::dateTime:
      return dateText(value.asDateTime());
    case Kind::bytes:
      return bytesText(value.asBytes());
    case Kind::integer:
    case Kind::money:
      return value.asText();
    case Kind::text:
      break;
  }
  std::string text = value.asText();
  return text.empty() ? "(empty)" : text;
}

bool sameCell(std::string_view want, std::string_view got) {
  if (want == got) return true;
  constexpr std::size_t digitsOfDoubt = 12;
  if (std::max(significantDigits(want), significantDigits(got)) < digitsOfDoubt) return false;
  const auto a = number(want), b = number(got);
  return a && b && std::abs(*a - *b) <= 1e-12 * std::max(std::abs(*a), std::abs(*b));
}

bool sameRow(std::string_view want, std::string_view got) {
  const auto a = split(want, '\t'), b = split(got, '\t');
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameCell);
}

bool sameRows(const std::vector<std::string>& want, const std::vector<std::string>& got) {
  return std::equal(want.begin(), want.end(), got.begin(), got.end(), sameRow);
}

bool isExpected(std::string_view want, const Failure& failure) {
  const std::string message = platform::toLowerAscii(failure.message);
  for (const std::string_view word : split(want, '|')) {
    const bool isNumber = !word.empty() && std::all_of(word.begin(), word.end(), isDigit);
    if (word == "any" || (isNumber ? word == std::to_string(failure.number)
                                   : message.find(platform::toLowerAscii(word)) != std::string::npos)) {
      return true;
    }
  }
  return false;
}

}  // namespace dialect
