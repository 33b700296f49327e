#include <array>

#include "embedded/function_support.h"
#include "embedded/like.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

// A join asks for the same few patterns again and again, so the last ones are kept as they were read.
class PatternCache {
public:
  const LikePattern& get(std::string_view text, std::optional<char32_t> escape) {
    Slot& slot = slots_[slotOf(text)];
    if (!slot.used || slot.text != text || slot.escape != escape) {
      slot.used = false;  // stays so when the pattern cannot be read
      slot.pattern.assign(text, escape);
      slot.text = text;
      slot.escape = escape;
      slot.used = true;
    }
    return slot.pattern;
  }

private:
  struct Slot {
    bool used = false;
    std::string text;
    std::optional<char32_t> escape;
    LikePattern pattern;
  };
  static std::size_t slotOf(std::string_view text) {
    std::size_t hash = text.size();
    for (const char c : text.substr(0, 16)) hash = hash * 31 + static_cast<unsigned char>(c);
    return hash % slotCount;
  }
  static constexpr std::size_t slotCount = 16;
  std::array<Slot, slotCount> slots_;
};

// The pattern in argument i, with the escape character in the argument behind it if there is one.
const LikePattern& patternOf(const Call& c, int i) {
  thread_local PatternCache cache;
  std::optional<char32_t> escape;
  if (c.count() > i + 1) {
    const std::string_view text = c.text(i + 1);
    std::size_t end = 0;
    if (!text.empty()) escape = tsql::nextCodePoint(text, end);
    if (text.empty() || end != text.size())
      throw tsql::SqlError(
          506, "The invalid escape character \"" + std::string(text) + "\" was specified in a LIKE predicate.");
  }
  return cache.get(c.text(i), escape);
}

template <bool ignoreTrailingBlanks>
void like(Call& c) {
  const LikePattern& pattern = patternOf(c, 1);
  c.result(std::int64_t{pattern.match(c.text(0), ignoreTrailingBlanks)});
}
void lowerBound(Call& c) {
  c.result(std::string_view(patternOf(c, 0).lowerBound()));
}
void upperBound(Call& c) {
  c.result(std::string_view(patternOf(c, 0).upperBound()));
}
void patIndex(Call& c) {
  c.result(LikePattern(c.text(0)).find(c.text(1)));
}

}  // namespace

void registerLikeFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {
      {"ts_like", 2, runNullToNull<like<false>>},   {"ts_like", 3, runNullToNull<like<false>>},
      {"ts_vlike", 2, runNullToNull<like<true>>},   {"ts_vlike", 3, runNullToNull<like<true>>},
      {"ts_like_lo", 1, runNullToNull<lowerBound>}, {"ts_like_lo", 2, runNullToNull<lowerBound>},
      {"ts_like_hi", 1, runNullToNull<upperBound>}, {"ts_like_hi", 2, runNullToNull<upperBound>},
      {"ts_patindex", 2, runNullToNull<patIndex>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
