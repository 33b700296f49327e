#pragma once
// Patterns of like: % any text, _ one character, [abc] [a-f] [^x] one character of a set or outside it.
//
// Characters match as texts compare: without regard to case and width. Blanks at the end count, see match. A [ without
// its ] matches nothing at all, and neither does [].

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace embedded {

class LikePattern {
public:
  LikePattern() = default;
  // escape: the character behind it stands for itself.
  explicit LikePattern(std::string_view pattern, std::optional<char32_t> escape = {}) { assign(pattern, escape); }
  void assign(std::string_view pattern, std::optional<char32_t> escape);

  // ignoreTrailingBlanks: blanks at the end of the text may be left over (texts of the code page); without it they have
  // to be in the pattern (Unicode texts).
  bool match(std::string_view text, bool ignoreTrailingBlanks = false) const;

  // The number of the character, from 1, at which a match begins; 0 for none. A % at the beginning lets it begin
  // anywhere.
  std::int64_t find(std::string_view text) const;

  // Bounds, in the order of compareText, of all texts that match. Taken from the characters in front of the first
  // wildcard; a character whose weight may depend on its neighbours ends them too.
  std::string lowerBound() const;
  std::string upperBound() const;

private:
  enum class Kind : std::uint8_t { character, any, many, set };
  struct Token {
    Kind kind;
    char32_t value = 0;  // of a character, folded; of a set its index
  };
  struct Set {
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges;
    bool contains(char32_t c) const;
  };
  struct Reader;

  void readSet(Reader& reader);
  bool matchesOne(const Token& token, char32_t c) const;
  // Whether the tokens from first on match the text from byte at on.
  bool matchFrom(std::string_view text, std::size_t at, std::size_t first, bool ignoreTrailingBlanks) const;

  std::vector<Token> tokens_;
  std::vector<Set> sets_;
  std::string prefix_;
  bool prefixIsAll_ = true;  // no wildcard, and nothing ended the prefix early
  bool broken_ = false;      // matches nothing
};

}  // namespace embedded
