// Searching texts: characters are equal as texts compare them, without regard to case and width.

#include "embedded/collation.h"
#include "embedded/function_support.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

std::u32string folded(std::string_view text) {
  std::u32string result;
  for (std::size_t at = 0; at < text.size();) result += foldCharacter(tsql::nextCodePoint(text, at));
  return result;
}

struct Found {
  std::size_t begin = std::string_view::npos, end = 0;  // bytes
  std::int64_t characters = 0;                          // in front of it
  explicit operator bool() const { return begin != std::string_view::npos; }
};

// The first place of the folded text at byte `from` or behind it.
Found find(std::string_view text, const std::u32string& sought, std::size_t from) {
  Found found;
  for (std::size_t start = from; start < text.size(); ++found.characters) {
    std::size_t at = start, matched = 0;
    while (matched < sought.size() && at < text.size() &&
           foldCharacter(tsql::nextCodePoint(text, at)) == sought[matched])
      ++matched;
    if (matched == sought.size()) {
      found.begin = start;
      found.end = at;
      return found;
    }
    tsql::nextCodePoint(text, start);
  }
  return found;
}

// text, sought, replacement. An empty sought text is nowhere.
void replace(Call& c) {
  const std::string_view text = c.text(0), replacement = c.text(2);
  const std::u32string sought = folded(c.text(1));
  std::string result;
  std::size_t at = 0;
  if (!sought.empty()) {
    for (Found next = find(text, sought, 0); next; next = find(text, sought, at)) {
      result.append(text.substr(at, next.begin - at)).append(replacement);
      at = next.end;
    }
  }
  result += text.substr(at);
  c.result(result);
}

// sought, text [, start]: the position from 1, 0 when it is nowhere.
void charIndex(Call& c) {
  const std::u32string sought = folded(c.text(0));
  const std::string_view text = c.text(1);
  const std::int64_t start = c.count() > 2 && c.integer(2) > 1 ? c.integer(2) : 1;
  if (sought.empty()) return c.result(std::int64_t{0});
  const Found found = find(text, sought, tsql::bytesOf(text, static_cast<std::size_t>(start - 1)));
  c.result(found ? start + found.characters : std::int64_t{0});
}

}  // namespace

void registerTextSearchFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_replace", 3, runNullToNull<replace>},
                                              {"ts_charindex", 2, runNullToNull<charIndex>},
                                              {"ts_charindex", 3, runNullToNull<charIndex>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
