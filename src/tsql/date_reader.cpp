// Reading dates. The text is cut into numbers, words and signs; then one date and one time are taken, in either order.

#include <algorithm>
#include <optional>
#include <vector>

#include "tsql/ascii.h"
#include "tsql/calendar.h"
#include "tsql/date_text.h"

namespace tsql {
namespace {

enum class Part { number, word, sign };

struct Token {
  Part part;
  std::string_view text;
  bool blankBefore;
  int value = 0;  // of a number
};

enum class Order { monthDayYear, dayMonthYear, yearMonthDay };

Order orderOf(int style) {
  switch (style % 100) {
    case 3:
    case 4:
    case 5:
      return Order::dayMonthYear;
    case 2:
    case 11:
      return Order::yearMonthDay;
    default:
      return Order::monthDayYear;
  }
}

bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool sameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lowered(x) == lowered(y); });
}

// 1 to 12, 0 for another word.
int monthOf(std::string_view word) {
  for (int month = 1; month <= 12; ++month) {
    const std::string_view name = monthNames[month - 1];
    if (sameWord(word, name) || sameWord(word, name.substr(0, 3))) return month;
  }
  return 0;
}

// nullopt for a character that stands in no date.
std::optional<std::vector<Token>> cut(std::string_view text) {
  std::vector<Token> tokens;
  bool blank = false;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    const char c = text[at];
    if (isBlank(c)) {
      blank = true;
      ++at;
      continue;
    }
    if (isDigit(c)) {
      int value = 0;
      for (; at < text.size() && isDigit(text[at]); ++at)
        if (at - start < 8) value = value * 10 + (text[at] - '0');
      tokens.push_back({Part::number, text.substr(start, at - start), blank, value});
    } else if (isLetter(c)) {
      while (at < text.size() && isLetter(text[at])) ++at;
      tokens.push_back({Part::word, text.substr(start, at - start), blank});
    } else if (std::string_view("/-.:,").find(c) != std::string_view::npos) {
      ++at;
      tokens.push_back({Part::sign, text.substr(start, 1), blank});
    } else {
      return std::nullopt;
    }
    blank = false;
  }
  return tokens;
}

class Reader {
public:
  Reader(std::vector<Token> tokens, int style) : tokens_(std::move(tokens)), order_(orderOf(style)) {}

  ReadDate read() {
    while (at_ < tokens_.size()) {
      const bool taken = !hasTime_ && startsTime() ? takeTime() : !hasDate_ && takeDate();
      if (!taken) return {};
    }
    const bool dayExists = date_.month >= 1 && date_.month <= 12 && date_.day >= 1 && date_.year >= firstYear &&
                           date_.year <= lastYear && date_.day <= daysInMonth(date_.year, date_.month);
    if (!dayExists || time_.hour > 23 || time_.minute > 59 || time_.second > 59) return {ReadDate::Status::range, 0};
    const std::int64_t ticks = daysFromCivil(date_) * ticksPerDay + ticksOfTime(time_);
    if (!isDateTime(ticks)) return {ReadDate::Status::range, 0};
    return {ReadDate::Status::ok, ticks};
  }

private:
  const Token* peek(std::size_t ahead = 0) const {
    return at_ + ahead < tokens_.size() ? &tokens_[at_ + ahead] : nullptr;
  }
  bool isNumber(std::size_t ahead = 0) const { return peek(ahead) && peek(ahead)->part == Part::number; }
  bool isSign(char c, std::size_t ahead = 0) const {
    return peek(ahead) && peek(ahead)->part == Part::sign && peek(ahead)->text[0] == c;
  }
  bool isDateSign(std::size_t ahead) const { return isSign('-', ahead) || isSign('/', ahead) || isSign('.', ahead); }
  bool isHalf(std::size_t ahead) const {
    return peek(ahead) && peek(ahead)->part == Part::word &&
           (sameWord(peek(ahead)->text, "AM") || sameWord(peek(ahead)->text, "PM"));
  }
  // A T between date and time, without blanks.
  bool isT() const {
    return peek() && peek()->part == Part::word && sameWord(peek()->text, "T") && !peek()->blankBefore && isNumber(1) &&
           !peek(1)->blankBefore;
  }

  bool startsTime() const { return isNumber() && (isSign(':', 1) || isHalf(1)); }

  bool takeNumber(int& value, std::size_t maxDigits) {
    if (!isNumber() || peek()->text.size() > maxDigits) return false;
    value = peek()->value;
    ++at_;
    return true;
  }

  bool takeTime() {
    hasTime_ = true;
    if (!takeNumber(time_.hour, 2)) return false;
    if (isSign(':')) {
      ++at_;
      if (!takeNumber(time_.minute, 2)) return false;
    }
    if (isSign(':')) {
      ++at_;
      if (!takeNumber(time_.second, 2)) return false;
      if ((isSign('.') || isSign(':')) && !takeMilliseconds()) return false;
    }
    return takeHalf();
  }

  // Behind a point a fraction of the second (.5 is 500 ms), behind a colon milliseconds (:5 is 5 ms).
  bool takeMilliseconds() {
    const bool fraction = isSign('.');
    ++at_;
    if (!isNumber()) return false;
    const std::size_t digits = peek()->text.size();
    if (!takeNumber(time_.millisecond, 3)) return false;
    if (fraction)
      for (std::size_t i = digits; i < 3; ++i) time_.millisecond *= 10;
    return true;
  }

  bool takeHalf() {
    if (!isHalf(0)) return true;
    const bool afternoon = lowered(peek()->text[0]) == 'p';
    ++at_;
    if (afternoon) {
      if (time_.hour < 12) time_.hour += 12;
      return true;
    }
    if (time_.hour == 12) time_.hour = 0;
    return time_.hour < 12;
  }

  // Behind a T the form is strict: two digits each, seconds, and nothing behind them but Z.
  bool takeIsoTime() {
    ++at_;
    hasTime_ = true;
    for (const std::size_t ahead : {0u, 2u, 4u})
      if (!isNumber(ahead) || peek(ahead)->text.size() != 2 || peek(ahead)->blankBefore) return false;
    if (!isSign(':', 1) || !isSign(':', 3)) return false;
    time_.hour = peek(0)->value;
    time_.minute = peek(2)->value;
    time_.second = peek(4)->value;
    at_ += 5;
    if (isSign('.') && !takeMilliseconds()) return false;
    if (peek() && peek()->part == Part::word && sameWord(peek()->text, "Z")) ++at_;
    return peek() == nullptr;
  }

  static int fullYear(const Token& t) {
    if (t.text.size() > 2) return t.value;
    return t.value < 50 ? 2000 + t.value : 1900 + t.value;
  }

  bool takeDate() {
    hasDate_ = true;
    const Token* first = peek();
    if (first->part == Part::sign) return false;
    if (first->part == Part::word || (isNumber() && startsNamedMonth())) return takeNamedMonth();
    if (isDateSign(1)) return takeThreeNumbers();
    ++at_;
    switch (first->text.size()) {
      case 4:
        date_ = {first->value, 1, 1};
        return true;
      case 6:
        date_ = {first->value / 10000, first->value / 100 % 100, first->value % 100};
        date_.year += date_.year < 50 ? 2000 : 1900;
        break;
      case 8:
        date_ = {first->value / 10000, first->value / 100 % 100, first->value % 100};
        break;
      default:
        return false;
    }
    return !isT() || takeIsoTime();
  }

  bool takeThreeNumbers() {
    for (const std::size_t ahead : {0u, 2u, 4u})
      if (!isNumber(ahead)) return false;
    if (!isDateSign(1) || !isDateSign(3)) return false;
    const Token &a = *peek(0), &b = *peek(2), &c = *peek(4);
    const auto small = [](const Token& t) { return t.text.size() <= 2; };
    const auto year = [](const Token& t) { return t.text.size() == 4; };
    if (year(a) && small(b) && small(c)) {
      date_ = {a.value, b.value, c.value};
    } else if (small(a) && small(b) && (year(c) || (small(c) && order_ != Order::yearMonthDay))) {
      date_ = order_ == Order::dayMonthYear ? CivilDate{fullYear(c), b.value, a.value}
                                            : CivilDate{fullYear(c), a.value, b.value};
    } else if (small(a) && small(b) && small(c)) {
      date_ = {fullYear(a), b.value, c.value};
    } else {
      return false;
    }
    const bool iso =
        year(a) && small(b) && b.text.size() == 2 && c.text.size() == 2 && isSign('-', 1) && isSign('-', 3);
    at_ += 5;
    return !isT() || (iso && takeIsoTime());
  }

  // Whether a month's name follows the number, perhaps behind another number or a sign.
  bool startsNamedMonth() const {
    for (std::size_t ahead = 1; ahead <= 3 && peek(ahead); ++ahead)
      if (peek(ahead)->part == Part::word) return monthOf(peek(ahead)->text) != 0;
    return false;
  }

  // A month's name with day and year around it. A number of four digits is the year; of two short ones the first is the
  // day. Without a day it is the first of the month; without a year it is no date.
  bool takeNamedMonth() {
    std::vector<const Token*> numbers;
    int month = 0;
    while (peek() && !(startsTime() && !numbers.empty() && month != 0)) {
      if (isNumber() && numbers.size() < 2) {
        numbers.push_back(peek());
      } else if (peek()->part == Part::word && month == 0 && monthOf(peek()->text) != 0) {
        month = monthOf(peek()->text);
      } else if (!(isDateSign(0) || isSign(',')) || (month == 0 && numbers.empty())) {
        break;
      }
      ++at_;
    }
    if (month == 0 || numbers.empty() || tokens_[at_ - 1].part == Part::sign) return false;
    const Token* year = nullptr;
    const Token* day = nullptr;
    for (const Token* n : numbers) {
      if (n->text.size() == 4 && !year) {
        year = n;
      } else if (n->text.size() <= 2 && !day) {
        day = n;
      } else if (n->text.size() <= 2 && !year) {
        year = n;
      } else {
        return false;
      }
    }
    if (!year) return false;
    date_ = {fullYear(*year), month, day ? day->value : 1};
    return true;
  }

  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  Order order_;
  bool hasDate_ = false, hasTime_ = false;
  CivilDate date_;
  TimeOfDay time_;
};

}  // namespace

ReadDate readDate(std::string_view text, int style) {
  auto tokens = cut(text);
  if (!tokens) return {};
  return Reader(std::move(*tokens), style).read();
}

}  // namespace tsql
