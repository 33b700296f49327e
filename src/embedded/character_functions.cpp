// Single characters: case, and their numbers in Unicode and in the Chinese code page.

#include <unicode/uchar.h>

#include "embedded/function_support.h"
#include "tsql/chinese_page.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

// Character by character, so that a text never changes its length.
template <UChar32 (*map)(UChar32), char firstLetter, int distance>
void changeCase(Call& c) {
  const std::string_view text = c.text(0);
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t ch = tsql::nextCodePoint(text, at);
    if (ch < 0x80) {
      const bool letter = ch >= static_cast<char32_t>(firstLetter) && ch < static_cast<char32_t>(firstLetter) + 26;
      result += static_cast<char>(letter ? static_cast<int>(ch) + distance : static_cast<int>(ch));
    } else {
      tsql::appendCodePoint(result, static_cast<char32_t>(map(static_cast<UChar32>(ch))));
    }
  }
  c.result(result);
}

// The first byte in the code page; Null for the empty text.
void ascii(Call& c) {
  const std::string_view text = c.text(0);
  if (text.empty()) return c.resultNull();
  const std::string bytes = tsql::toPage(text.substr(0, tsql::bytesOf(text, 1)));
  c.result(std::int64_t{static_cast<unsigned char>(bytes.at(0))});
}

// One byte of the code page; half a Chinese character is none and becomes U+FFFD. Null outside 0 to 255.
void character(Call& c) {
  if (c.integer(0) < 0 || c.integer(0) > 255) return c.resultNull();
  const char byte = static_cast<char>(c.integer(0));
  c.result(tsql::fromPage({&byte, 1}));
}

void unicode(Call& c) {
  const std::string_view text = c.text(0);
  std::size_t at = 0;
  if (text.empty()) return c.resultNull();
  c.result(static_cast<std::int64_t>(tsql::nextCodePoint(text, at)));
}

// Null outside 0 to 65535, and for half of a pair.
void unicodeCharacter(Call& c) {
  const std::int64_t n = c.integer(0);
  if (n < 0 || n > 0xFFFF || (n >= 0xD800 && n < 0xE000)) return c.resultNull();
  std::string result;
  tsql::appendCodePoint(result, static_cast<char32_t>(n));
  c.result(result);
}

}  // namespace

void registerCharacterFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_upper", 1, runNullToNull<changeCase<u_toupper, 'a', -32>>},
                                              {"ts_lower", 1, runNullToNull<changeCase<u_tolower, 'A', 32>>},
                                              {"ts_ascii", 1, runNullToNull<ascii>},
                                              {"ts_char", 1, runNullToNull<character>},
                                              {"ts_unicode", 1, runNullToNull<unicode>},
                                              {"ts_nchar", 1, runNullToNull<unicodeCharacter>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
