#include "embedded/like.h"

#include "embedded/collation.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

// Sorts above every text: the collator gives this noncharacter the highest weight.
constexpr char32_t highest = 0xFFFF;

// Characters that weigh the same in every neighbourhood, as does everything that folds to them.
bool isPlain(char32_t c) {
  return (c >= 0x20 && c < 0x7F) || (c >= 0x4E00 && c <= 0x9FA5);
}

}  // namespace

struct LikePattern::Reader {
  std::string_view pattern;
  std::optional<char32_t> escape;
  std::size_t at = 0;

  bool more() const { return at < pattern.size(); }
  // The next character; literal when it was escaped.
  char32_t next(bool& literal) {
    char32_t c = tsql::nextCodePoint(pattern, at);
    literal = escape && c == *escape && more();
    if (literal) c = tsql::nextCodePoint(pattern, at);
    return c;
  }
};

void LikePattern::assign(std::string_view pattern, std::optional<char32_t> escape) {
  tokens_.clear();
  sets_.clear();
  prefix_.clear();
  prefixIsAll_ = true;
  broken_ = false;
  Reader reader{pattern, escape};
  while (reader.more() && !broken_) {
    bool literal = false;
    const char32_t c = reader.next(literal);
    if (!literal && c == U'%') {
      prefixIsAll_ = false;
      if (tokens_.empty() || tokens_.back().kind != Kind::many) tokens_.push_back({Kind::many});
    } else if (!literal && c == U'_') {
      prefixIsAll_ = false;
      tokens_.push_back({Kind::any});
    } else if (!literal && c == U'[') {
      prefixIsAll_ = false;
      readSet(reader);
    } else {
      if (!isPlain(c)) prefixIsAll_ = false;
      if (prefixIsAll_) tsql::appendCodePoint(prefix_, c);
      tokens_.push_back({Kind::character, foldCharacter(c)});
    }
  }
}

// Behind the [. A ^ first turns the set round, a - between two characters is a range.
void LikePattern::readSet(Reader& reader) {
  Set set;
  bool first = true;
  while (reader.more()) {
    bool literal = false;
    const char32_t c = reader.next(literal);
    if (!literal && c == U']') {
      tokens_.push_back({Kind::set, static_cast<char32_t>(sets_.size())});
      sets_.push_back(std::move(set));
      return;
    }
    if (!literal && first && c == U'^') {
      set.negated = true;
      first = false;
      continue;
    }
    first = false;
    char32_t last = c;
    if (Reader ahead = reader; ahead.more() && ahead.next(literal) == U'-' && !literal && ahead.more()) {
      const char32_t end = ahead.next(literal);
      if (literal || end != U']') {
        last = end;
        reader = ahead;
      }
    }
    set.ranges.emplace_back(c, last);
  }
  broken_ = true;
}

bool LikePattern::Set::contains(char32_t c) const {
  for (const auto& [low, high] : ranges) {
    const bool inside = low == high ? foldCharacter(low) == foldCharacter(c)
                                    : compareCharacters(low, c) <= 0 && compareCharacters(c, high) <= 0;
    if (inside) return !negated;
  }
  return negated;
}

inline bool LikePattern::matchesOne(const Token& token, char32_t c) const {
  switch (token.kind) {
    case Kind::character:
      return c == token.value || foldCharacter(c) == token.value;
    case Kind::any:
      return true;
    case Kind::set:
      return sets_[token.value].contains(c);
    case Kind::many:
      break;
  }
  return false;
}

bool LikePattern::matchFrom(std::string_view text, std::size_t at, std::size_t first, bool ignoreTrailingBlanks) const {
  // The last % seen may be widened by one character whenever the rest does not match; earlier ones never have to be.
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  std::size_t token = first, widenToken = none, widenAt = 0;
  for (;;) {
    if (token < tokens_.size() && tokens_[token].kind == Kind::many) {
      if (++token == tokens_.size()) return true;
      widenToken = token;
      widenAt = at;
      continue;
    }
    if (at < text.size()) {
      if (token < tokens_.size()) {
        std::size_t next = at;
        if (matchesOne(tokens_[token], tsql::nextCodePoint(text, next))) {
          at = next;
          ++token;
          continue;
        }
      } else if (ignoreTrailingBlanks && text.find_first_not_of(' ', at) == std::string_view::npos) {
        return true;
      }
    } else if (token == tokens_.size()) {
      return true;
    }
    if (widenToken == none || widenAt >= text.size()) return false;
    tsql::nextCodePoint(text, widenAt);
    at = widenAt;
    token = widenToken;
  }
}

bool LikePattern::match(std::string_view text, bool ignoreTrailingBlanks) const {
  return !broken_ && matchFrom(text, 0, 0, ignoreTrailingBlanks);
}

std::int64_t LikePattern::find(std::string_view text) const {
  if (broken_) return 0;
  const bool anywhere = !tokens_.empty() && tokens_[0].kind == Kind::many;
  std::int64_t position = 1;
  for (std::size_t at = 0;; ++position) {
    if (matchFrom(text, at, anywhere ? 1 : 0, false)) return position;
    if (!anywhere || at >= text.size()) return 0;
    tsql::nextCodePoint(text, at);
  }
}

std::string LikePattern::lowerBound() const {
  return prefix_;
}

std::string LikePattern::upperBound() const {
  std::string bound = prefix_;
  if (!prefixIsAll_) tsql::appendCodePoint(bound, highest);
  return bound;
}

}  // namespace embedded
