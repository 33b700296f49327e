#pragma once
// Value: one cell of a result set or one argument of a statement.
//
//   std::string code = rs.Field("ccode").asText();   // RunTimeError 94 when the cell is Null
//   if (!rs.Field("cexch_name").isNull()) ...
//
// Eight kinds: Null, Boolean, integer (64 bits), Money, double, DateTime, text (UTF-8), bytes.

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/date_time.h"
#include "platform/money.h"
#include "platform/run_time_error.h"

namespace platform {

using Bytes = std::vector<std::uint8_t>;

class Value {
public:
  enum class Kind { null, boolean, integer, money, real, dateTime, text, bytes };

  Value() = default;  // Null
  Value(bool v) : v_(v) {}
  Value(int v) : v_(static_cast<std::int64_t>(v)) {}
  Value(std::int64_t v) : v_(v) {}
  Value(Money v) : v_(v) {}
  Value(double v) : v_(v) {}
  Value(DateTime v) : v_(v) {}
  Value(std::string v) : v_(std::move(v)) {}
  Value(std::string_view v) : v_(std::string(v)) {}
  Value(const char* v) : v_(std::string(v)) {}
  Value(Bytes v) : v_(std::move(v)) {}
  template <class T>
  Value(T*) = delete;  // a pointer is never a Boolean

  Kind kind() const { return static_cast<Kind>(v_.index()); }
  bool isNull() const { return kind() == Kind::null; }

  // The conversions below throw RunTimeError 94 ("Invalid use of Null") on Null and 13 ("Type mismatch") on a value
  // that cannot be read so; 6 ("Overflow") when the number does not fit.
  //
  // Text: Boolean "True"/"False", Money and integers plain, double the shortest text that reads back, DateTime its
  // default text, bytes are a mismatch.
  std::string asText() const;
  // Boolean: numbers are tested for non-zero; text "True"/"False" without regard to case, else a number text.
  bool asBool() const;
  std::int64_t asInteger() const;  // fractions are rounded half to even, as the platform converts
  Money asMoney() const;
  double asDouble() const;
  DateTime asDateTime() const;
  const Bytes& asBytes() const;
  // The text itself, without a copy; an empty one for every other kind.
  const std::string& textOrEmpty() const {
    static const std::string none;
    const auto* t = std::get_if<std::string>(&v_);
    return t ? *t : none;
  }

  // Text for a display or a message: Null gives an empty text; never throws but for bytes.
  std::string displayText() const;

  // Same kind and same content.
  bool operator==(const Value&) const = default;

private:
  std::variant<std::monostate, bool, std::int64_t, Money, double, DateTime, std::string, Bytes> v_;
};

// Shortest decimal text that reads back as the same double; no exponent below 1e15, no trailing zeros ("0.1", "3").
std::string numberText(double value);

// ASCII letters only, as identifiers and Boolean words are compared. (Text of the ledger is compared by the server.)
bool equalsIgnoreCase(std::string_view a, std::string_view b);
std::string toLowerAscii(std::string_view text);
std::string toUpperAscii(std::string_view text);
// Blanks (U+0020) off both ends.
std::string trim(std::string_view text);

}  // namespace platform
