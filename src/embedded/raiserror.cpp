// raiserror: its message, in the way of printf, and what it reports.

#include <algorithm>

#include "embedded/session_impl.h"
#include "tsql/utf8.h"

namespace embedded {

using tsql::Datum;
using tsql::SqlError;
using tsql::TypeKind;

namespace {

// "%-8.3s": - + 0 # and blank, a width, a precision, a size of the number, the kind. Width and precision may be given
// by arguments of their own.
struct Place {
  std::string_view flags;
  std::optional<std::size_t> precision;
  std::size_t width = 0;
  bool widthGiven = false, precisionGiven = false;  // as *
  bool eightBytes = false;                          // I64: takes a bigint
  char kind = 0;
  bool has(char flag) const { return flags.find(flag) != std::string_view::npos; }
};

constexpr std::size_t widest = 2047;  // the server cuts a message there

std::size_t numberAt(std::string_view text, std::size_t& at) {
  std::size_t n = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
    n = std::min(n * 10 + static_cast<std::size_t>(text[at] - '0'), widest);
  return n;
}

// The place that begins behind the percent sign at `at`, which then stands behind it; nullopt when it is none.
std::optional<Place> placeAt(std::string_view format, std::size_t& at) {
  Place p;
  const std::size_t flagsEnd = std::min(format.find_first_not_of("-+0 #", at), format.size());
  p.flags = format.substr(at, flagsEnd - at);
  at = flagsEnd;
  const auto accept = [&](std::string_view text) {
    if (format.substr(at, text.size()) != text) return false;
    at += text.size();
    return true;
  };
  p.widthGiven = accept("*");
  if (!p.widthGiven) p.width = numberAt(format, at);
  if (accept(".")) {
    p.precisionGiven = accept("*");
    p.precision = p.precisionGiven ? 0 : numberAt(format, at);
  }
  p.eightBytes = accept("I64");
  if (!p.eightBytes && !accept("h")) accept("l");
  if (at >= format.size() || std::string_view("diouxXs").find(format[at]) == std::string_view::npos)
    return std::nullopt;
  p.kind = format[at++];
  return p;
}

std::string digitsOf(std::uint64_t n, unsigned base, bool upper) {
  std::string digits;
  do {
    const auto digit = static_cast<std::size_t>(n % base);
    const std::string_view known = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    digits.insert(digits.begin(), known[digit]);
    n /= base;
  } while (n);
  return digits;
}

std::string numberText(const Place& p, std::int64_t n, const tsql::SqlType& type) {
  std::string sign, digits;
  const bool isSigned = p.kind == 'd' || p.kind == 'i';
  const bool wide = type.kind == TypeKind::bigint;
  if (isSigned) {
    sign = n < 0 ? "-" : p.has('+') ? "+" : p.has(' ') ? " " : "";
    const auto bits = static_cast<std::uint64_t>(n);
    digits = digitsOf(n < 0 ? 0 - bits : bits, 10, false);
  } else {
    const auto bits = static_cast<std::uint64_t>(n) & (wide ? UINT64_MAX : UINT32_MAX);
    digits = digitsOf(bits, p.kind == 'u' ? 10 : p.kind == 'o' ? 8 : 16, p.kind == 'X');
    if (p.has('#') && bits != 0 && p.kind != 'u') sign = p.kind == 'o' ? "0" : std::string("0") + p.kind;
  }
  std::size_t least = p.precision.value_or(0);
  if (!p.precision && p.has('0') && !p.has('-') && p.width > sign.size()) least = p.width - sign.size();
  if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
  return sign + digits;
}

std::string inWidth(const Place& p, std::string text) {
  const std::size_t length = tsql::countCodePoints(text);
  if (length >= p.width) return text;
  const std::string blanks(p.width - length, ' ');
  return p.has('-') ? text + blanks : blanks + text;
}

bool isInserted(TypeKind k) {
  return (tsql::isExactInteger(k) && k != TypeKind::bit) || (tsql::isText(k) && !tsql::isLob(k)) || k == TypeKind::null;
}

// An argument of raiserror; number is its place in the statement, the message being the first.
struct Argument {
  Datum value;
  tsql::SqlType type;
  std::size_t number = 0;
};

[[noreturn]] void wrongType(const Argument& a) {
  throw SqlError(2786, "The data type of substitution parameter " + std::to_string(a.number - 3) +
                           " does not match the expected type of the format specification.");
}

std::size_t sizeFrom(const Argument& a) {
  const auto* n = std::get_if<std::int64_t>(&a.value);
  if (!n || a.type.kind == TypeKind::bigint || *n < 0) wrongType(a);
  return std::min(static_cast<std::size_t>(*n), widest);
}

std::string inserted(const Place& p, const Argument& a) {
  if (a.value.index() == 0) return inWidth(p, "(null)");
  if (p.kind == 's') {
    const auto* text = std::get_if<std::string>(&a.value);
    if (!text) wrongType(a);
    return inWidth(p, p.precision ? text->substr(0, tsql::bytesOf(*text, *p.precision)) : *text);
  }
  const auto* n = std::get_if<std::int64_t>(&a.value);
  if (!n || (a.type.kind == TypeKind::bigint && !p.eightBytes)) wrongType(a);
  return inWidth(p, numberText(p, *n, a.type));
}

// The message with its arguments; argument(): the next one, nullopt when there are no more.
template <class Next>
std::string formatted(const std::string& format, const Next& next, tsql::SourcePos pos) {
  std::string text;
  for (std::size_t i = 0; i < format.size();) {
    if (format[i] != '%') {
      text += format[i++];
      continue;
    }
    const std::size_t first = i++;
    if (i < format.size() && format[i] == '%') {
      text += format[i++];
      continue;
    }
    auto place = placeAt(format, i);
    if (!place) throw SqlError(2787, "Invalid format specification: '" + format.substr(first) + "'.", pos);
    if (place->widthGiven)
      if (const auto a = next()) place->width = sizeFrom(*a);
    if (place->precisionGiven)
      if (const auto a = next()) place->precision = sizeFrom(*a);
    const auto a = next();
    text += a ? inserted(*place, *a) : inWidth(*place, "(null)");
  }
  return text;
}

std::string textOf(const Datum& v) {
  const auto* text = std::get_if<std::string>(&v);
  return text ? *text : std::string();
}

}  // namespace

void Session::Impl::raiserror(const tsql::ast::Raiserror& s, Running& r) {
  const std::string format = textOf(evaluate(*s.message, tsql::typeOf(TypeKind::nvarchar, 4000), s, r));
  if (!s.severity) {  // raiserror 50001 'text'
    const Datum number = evaluate(*s.state, tsql::typeOf(TypeKind::integer), s, r);
    const auto* n = std::get_if<std::int64_t>(&number);
    if (!n || *n < 13000) throw SqlError(2732, "Error number is invalid. The number must be from 13000.", s.pos);
    raised(SqlError(static_cast<int>(*n), format, s.pos), r);
    return;
  }
  const Datum level = evaluate(*s.severity, tsql::typeOf(TypeKind::integer), s, r);
  evaluate(*s.state, tsql::typeOf(TypeKind::integer), s, r);
  const int severity = level.index() == 1 ? static_cast<int>(std::get<std::int64_t>(level)) : 0;
  if (severity > 18)
    throw SqlError(2754,
                   "Error severity levels greater than 18 can only be specified by members of the sysadmin role, using "
                   "the WITH LOG option.",
                   s.pos);
  std::size_t used = 0;
  const auto next = [&]() -> std::optional<Argument> {
    if (used >= s.arguments.size()) return std::nullopt;
    Argument a;
    a.value = evaluate(*s.arguments[used++], {}, s, r, &a.type);
    a.number = used + 3;
    if (!isInserted(a.type.kind))
      throw SqlError(2748, "Cannot specify " + a.type.baseName() + " data type (parameter " + std::to_string(a.number) +
                               ") as a substitution parameter.");
    return a;
  };
  const std::string text = formatted(format, next, s.pos);
  if (severity > 10) {
    raised(SqlError(50000, text, s.pos, severity), r);
  } else {
    lastError = 0;
    rowCount = 0;
    r.sink->message(text);
  }
}

}  // namespace embedded
