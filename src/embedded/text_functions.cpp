// Parts of texts. Positions count from 1, lengths and positions are in characters (code points).

#include <algorithm>

#include "embedded/function_support.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

using tsql::bytesOf;
using tsql::countCodePoints;

// The longest text that an expression makes out of a count, in characters.
constexpr std::int64_t longestRepetition = 8000;

void length(Call& c) {
  std::string_view text = c.text(0);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  c.result(static_cast<std::int64_t>(countCodePoints(text)));
}

[[noreturn]] void throwInvalidLength(int number, const char* function) {
  throw tsql::SqlError(number, std::string("Invalid length parameter passed to the ") + function + " function.");
}

// Characters first to last, counted from 0, last not included.
std::string_view slice(std::string_view text, std::int64_t first, std::int64_t last) {
  const auto begin = bytesOf(text, static_cast<std::size_t>(std::max<std::int64_t>(first, 0)));
  text.remove_prefix(begin);
  return text.substr(
      0, bytesOf(text, static_cast<std::size_t>(std::max<std::int64_t>(last - std::max<std::int64_t>(first, 0), 0))));
}

void left(Call& c) {
  if (c.integer(1) < 0) throwInvalidLength(537, "LEFT or SUBSTRING");
  c.result(slice(c.text(0), 0, c.integer(1)));
}

void right(Call& c) {
  if (c.integer(1) < 0) throwInvalidLength(536, "RIGHT");
  const std::string_view text = c.text(0);
  const auto count = static_cast<std::int64_t>(countCodePoints(text));
  c.result(slice(text, count - std::min(c.integer(1), count), count));
}

// A start before the first character uses up length: substring('abcdef', 0, 3) is 'ab'.
void substring(Call& c) {
  if (c.integer(2) < 0) throwInvalidLength(537, "LEFT or SUBSTRING");
  const std::int64_t first = std::int64_t{c.smallInteger(1)} - 1;
  c.result(slice(c.text(0), first, first + c.smallInteger(2)));
}

void leftTrim(Call& c) {
  std::string_view text = c.text(0);
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  c.result(text);
}

void rightTrim(Call& c) {
  std::string_view text = c.text(0);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  c.result(text);
}

// A count below 0 gives Null.
void replicate(Call& c) {
  const std::string_view text = c.text(0);
  if (c.integer(1) < 0) return c.resultNull();
  const auto size = static_cast<std::int64_t>(countCodePoints(text));
  std::string result;
  if (size > 0)
    for (std::int64_t i = 0; i < c.integer(1) && i * size < longestRepetition; ++i) result += text;
  c.result(slice(result, 0, longestRepetition));
}

void space(Call& c) {
  if (c.integer(0) < 0) return c.resultNull();
  c.result(std::string(static_cast<std::size_t>(std::min(c.integer(0), longestRepetition)), ' '));
}

// text, start, length, replacement. Null for a start outside the text and a length below 0; a Null replacement only
// takes characters away.
void stuff(Call& c) {
  if (c.isNull(0) || c.isNull(1) || c.isNull(2)) return c.resultNull();
  const std::string_view text = c.text(0);
  const auto count = static_cast<std::int64_t>(countCodePoints(text));
  const std::int64_t first = std::int64_t{c.smallInteger(1)} - 1, length = c.smallInteger(2);
  if (first < 0 || first >= count || length < 0) return c.resultNull();
  std::string result(slice(text, 0, first));
  if (!c.isNull(3)) result += c.text(3);
  result += slice(text, first + length, count);
  c.result(result);
}

void reverse(Call& c) {
  const std::string_view text = c.text(0);
  std::string result(text.size(), ' ');
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    tsql::nextCodePoint(text, at);
    text.copy(result.data() + (text.size() - at), at - start, start);
  }
  c.result(result);
}

// In square brackets, closing ones doubled; Null beyond the 128 characters of a name.
void quoteName(Call& c) {
  const std::string_view text = c.text(0);
  if (countCodePoints(text) > 128) return c.resultNull();
  // The mark that opens, and the one that closes and is doubled inside.
  static constexpr std::string_view pairs = "[]''\"\"()<>{}``";
  std::size_t pair = 0;
  if (c.count() > 1) {
    const std::string_view mark = c.text(1);
    pair = mark.size() == 1 ? pairs.find(mark[0]) : std::string_view::npos;
    if (pair == std::string_view::npos) return c.resultNull();
    pair -= pair % 2;
  }
  std::string result(1, pairs[pair]);
  for (const char ch : text) result.append(ch == pairs[pair + 1] ? 2 : 1, ch);
  c.result(result + pairs[pair + 1]);
}

}  // namespace

void registerTextFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_len", 1, runNullToNull<length>},
                                              {"ts_left", 2, runNullToNull<left>},
                                              {"ts_right", 2, runNullToNull<right>},
                                              {"ts_substring", 3, runNullToNull<substring>},
                                              {"ts_ltrim", 1, runNullToNull<leftTrim>},
                                              {"ts_rtrim", 1, runNullToNull<rightTrim>},
                                              {"ts_replicate", 2, runNullToNull<replicate>},
                                              {"ts_space", 1, runNullToNull<space>},
                                              {"ts_stuff", 4, runAlways<stuff>},
                                              {"ts_reverse", 1, runNullToNull<reverse>},
                                              {"ts_quotename", 1, runNullToNull<quoteName>},
                                              {"ts_quotename", 2, runNullToNull<quoteName>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
