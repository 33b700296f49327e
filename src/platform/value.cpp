#include "platform/value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace platform {
namespace {

[[noreturn]] void failNull() {
  throw RunTimeError(RunTimeError::invalidUseOfNull, "Invalid use of Null");
}
[[noreturn]] void failMismatch() {
  throw RunTimeError(RunTimeError::typeMismatch, "Type mismatch");
}
[[noreturn]] void failOverflow() {
  throw RunTimeError(RunTimeError::overflow, "Overflow");
}

// A Boolean is -1 or 0 where a number is wanted, as the platform converts.
constexpr std::int64_t booleanNumber(bool v) {
  return v ? -1 : 0;
}

std::optional<double> parseNumber(std::string_view text) {
  std::string number = trim(text);
  std::string_view digits = number;
  if (digits.starts_with('+')) digits.remove_prefix(1);
  const bool startsLikeNumber =
      !digits.empty() && digits.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
  if (!startsLikeNumber || (digits.size() != number.size() && digits.starts_with('-'))) return std::nullopt;
  double value = 0;
  const char* end = digits.data() + digits.size();
  auto [stop, error] = std::from_chars(digits.data(), end, value);
  if (error == std::errc::result_out_of_range) failOverflow();
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

double numberOrMismatch(std::string_view text) {
  auto value = parseNumber(text);
  if (!value) failMismatch();
  return *value;
}

// Half to even, whatever the rounding mode of the process.
std::int64_t roundToInteger(double value) {
  double whole = std::floor(value);
  const double rest = value - whole;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0)) whole += 1;
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (!(whole >= -limit && whole < limit)) failOverflow();
  return static_cast<std::int64_t>(whole);
}

std::int64_t roundToInteger(Money amount) {
  std::int64_t whole = amount.units() / Money::unitsPerOne;
  const std::int64_t rest = std::abs(amount.units() % Money::unitsPerOne);
  constexpr std::int64_t half = Money::unitsPerOne / 2;
  if (rest > half || (rest == half && whole % 2 != 0)) whole += amount.units() < 0 ? -1 : 1;
  return whole;
}

std::int64_t integerFromText(std::string_view text) {
  // Whole numbers are read exactly: a double holds only 53 bits of them.
  std::string number = trim(text);
  std::int64_t exact = 0;
  auto [stop, error] = std::from_chars(number.data(), number.data() + number.size(), exact);
  if (error == std::errc{} && stop == number.data() + number.size()) return exact;
  return roundToInteger(numberOrMismatch(number));
}

template <class... F>
struct overloaded : F... {
  using F::operator()...;
};
template <class... F>
overloaded(F...) -> overloaded<F...>;

}  // namespace

std::string Value::asText() const {
  return std::visit(overloaded{
                        [](std::monostate) -> std::string { failNull(); },
                        [](bool v) -> std::string { return v ? "True" : "False"; },
                        [](std::int64_t v) { return std::to_string(v); },
                        [](Money v) { return v.text(); },
                        [](double v) { return numberText(v); },
                        [](DateTime v) { return v.text(); },
                        [](const std::string& v) { return v; },
                        [](const Bytes&) -> std::string { failMismatch(); },
                    },
                    v_);
}

bool Value::asBool() const {
  return std::visit(overloaded{
                        [](std::monostate) -> bool { failNull(); },
                        [](bool v) { return v; },
                        [](std::int64_t v) { return v != 0; },
                        [](Money v) { return !v.isZero(); },
                        [](double v) { return v != 0; },
                        [](DateTime v) { return v.ticks() != 0; },
                        [](const std::string& v) {
                          if (equalsIgnoreCase(v, "True")) return true;
                          if (equalsIgnoreCase(v, "False")) return false;
                          return numberOrMismatch(v) != 0;
                        },
                        [](const Bytes&) -> bool { failMismatch(); },
                    },
                    v_);
}

std::int64_t Value::asInteger() const {
  return std::visit(overloaded{
                        [](std::monostate) -> std::int64_t { failNull(); },
                        [](bool v) { return booleanNumber(v); },
                        [](std::int64_t v) { return v; },
                        [](Money v) { return roundToInteger(v); },
                        [](double v) { return roundToInteger(v); },
                        [](DateTime) -> std::int64_t { failMismatch(); },
                        [](const std::string& v) { return integerFromText(v); },
                        [](const Bytes&) -> std::int64_t { failMismatch(); },
                    },
                    v_);
}

Money Value::asMoney() const {
  return std::visit(overloaded{
                        [](std::monostate) -> Money { failNull(); },
                        [](bool v) { return Money::fromInteger(booleanNumber(v)); },
                        [](std::int64_t v) { return Money::fromInteger(v); },
                        [](Money v) { return v; },
                        [](double v) { return Money::fromDouble(v); },
                        [](DateTime) -> Money { failMismatch(); },
                        [](const std::string& v) { return Money::parse(v); },
                        [](const Bytes&) -> Money { failMismatch(); },
                    },
                    v_);
}

double Value::asDouble() const {
  return std::visit(overloaded{
                        [](std::monostate) -> double { failNull(); },
                        [](bool v) { return static_cast<double>(booleanNumber(v)); },
                        [](std::int64_t v) { return static_cast<double>(v); },
                        [](Money v) { return v.toDouble(); },
                        [](double v) { return v; },
                        [](DateTime) -> double { failMismatch(); },
                        [](const std::string& v) { return numberOrMismatch(v); },
                        [](const Bytes&) -> double { failMismatch(); },
                    },
                    v_);
}

DateTime Value::asDateTime() const {
  if (isNull()) failNull();
  if (const auto* date = std::get_if<DateTime>(&v_)) return *date;
  if (const auto* text = std::get_if<std::string>(&v_)) return DateTime::parse(*text);
  failMismatch();
}

const Bytes& Value::asBytes() const {
  if (isNull()) failNull();
  if (const auto* bytes = std::get_if<Bytes>(&v_)) return *bytes;
  failMismatch();
}

std::string Value::displayText() const {
  return isNull() ? std::string() : asText();
}

std::string numberText(double value) {
  if (value == 0) return "0";  // minus zero too
  constexpr double firstWithExponent = 1e15;
  const auto format = std::abs(value) < firstWithExponent ? std::chars_format::fixed : std::chars_format::scientific;
  std::array<char, 512> buffer;  // the smallest double has 324 zeros behind the point
  auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format);
  if (error != std::errc{}) failOverflow();
  return {buffer.data(), end};
}

std::string toLowerAscii(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

std::string toUpperAscii(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return result;
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && toLowerAscii(a) == toLowerAscii(b);
}

std::string trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

}  // namespace platform
