#include <algorithm>
#include <array>
#include <cstring>

#include "tsql/literal.h"
#include "tsql/token.h"

namespace tsql {
namespace {

constexpr std::size_t maximumNameLength = 128;  // characters
constexpr std::size_t maximumQuotedText = 128;  // bytes of the source that a message repeats

enum CharClass : std::uint8_t { blank = 1, digit = 2, identifierStart = 4, identifierPart = 8, hexadecimal = 16 };

constexpr std::array<std::uint8_t, 256> makeClasses() {
  std::array<std::uint8_t, 256> classes{};
  for (unsigned char c : {' ', '\t', '\r', '\n', '\f', '\v'}) classes[c] = blank;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = digit | identifierPart | hexadecimal;
  for (int c = 'a'; c <= 'z'; ++c) {
    const auto letter = static_cast<std::uint8_t>(identifierStart | identifierPart | (c <= 'f' ? hexadecimal : 0));
    classes[static_cast<std::size_t>(c)] = classes[static_cast<std::size_t>(c - 'a' + 'A')] = letter;
  }
  for (std::size_t c = 0x80; c < 0x100; ++c) classes[c] = identifierStart | identifierPart;  // Chinese names
  classes['_'] = classes['#'] = identifierStart | identifierPart;
  classes['@'] = classes['$'] = identifierPart;
  return classes;
}
constexpr auto charClasses = makeClasses();

bool has(char c, std::uint8_t classes) {
  return charClasses[static_cast<unsigned char>(c)] & classes;
}

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

// At most maximumQuotedText bytes, cut between characters.
std::string excerpt(std::string_view text) {
  if (text.size() <= maximumQuotedText) return std::string(text);
  std::size_t length = maximumQuotedText;
  while (length && isContinuation(text[length])) --length;
  return std::string(text.substr(0, length));
}

// Bytes that continue a character; fails when the name has too many characters.
std::size_t requireNameLength(std::string_view name, SourcePos pos) {
  const auto inside = static_cast<std::size_t>(std::count_if(name.begin(), name.end(), isContinuation));
  if (name.size() - inside > maximumNameLength)
    throw SqlError(103, "The identifier that starts with '" + excerpt(name) + "' is too long. Maximum length is 128.",
                   pos, 15);
  return inside;
}

class Lexer {
public:
  explicit Lexer(TokenStream& target)
      : out(target), begin(target.source.data()), end(begin + target.source.size()), at(begin), lineStart(begin) {}

  void run();

private:
  TokenStream& out;
  const char *begin, *end, *at;
  const char* lineStart;
  int line = 1;
  std::size_t continuations = 0;  // bytes since lineStart that begin no character

  char ahead(std::size_t n) const { return static_cast<std::size_t>(end - at) > n ? at[n] : '\0'; }
  SourcePos position() const {
    return {static_cast<std::size_t>(at - begin), line,
            static_cast<int>(static_cast<std::size_t>(at - lineStart) - continuations) + 1};
  }
  // Moves over text that may hold line ends and long characters.
  void moveTo(const char* target) {
    for (; at != target; ++at) {
      if (*at == '\n') {
        ++line;
        lineStart = at + 1;
        continuations = 0;
      } else {
        continuations += isContinuation(*at);
      }
    }
  }

  void skipBlanks();
  void skipBlockComment();
  Token& add(TokenKind kind, const char* tokenEnd);
  void addLiteral(Token& token, LiteralValue value);

  void identifier();
  void variable();
  void number();
  void money();
  void hex();
  void text(TokenKind kind, const char* quote);
  void quotedIdentifier(char close);
  void punctuation();
  const char* closingQuote(const char* first, char quote, bool& doubled) const;
};

Token& Lexer::add(TokenKind kind, const char* tokenEnd) {
  Token& token = out.tokens.emplace_back();
  token.kind = kind;
  token.pos = position();
  token.length = static_cast<std::size_t>(tokenEnd - at);
  token.raw = {at, token.length};
  return token;
}

void Lexer::addLiteral(Token& token, LiteralValue value) {
  token.literal = static_cast<int>(out.literals.size());
  out.literals.push_back(std::move(value));
}

void Lexer::skipBlockComment() {
  const SourcePos start = position();
  int depth = 0;
  const char* p = at;
  do {
    if (end - p < 2) throw SqlError(113, "Missing end comment mark '*/'.", start, 15);
    if (p[0] == '/' && p[1] == '*') {
      ++depth;
      p += 2;
    } else if (p[0] == '*' && p[1] == '/') {
      --depth;
      p += 2;
    } else {
      ++p;
    }
  } while (depth);
  moveTo(p);
}

void Lexer::skipBlanks() {
  while (at != end) {
    if (*at == '\n') {
      moveTo(at + 1);
    } else if (has(*at, blank)) {
      ++at;
    } else if (*at == '-' && ahead(1) == '-') {
      const void* lineEnd = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
      moveTo(lineEnd ? static_cast<const char*>(lineEnd) : end);
    } else if (*at == '/' && ahead(1) == '*') {
      skipBlockComment();
    } else {
      return;
    }
  }
}

void Lexer::identifier() {
  const char* p = at + 1;
  while (p != end && has(*p, identifierPart)) ++p;
  Token& token = add(TokenKind::identifier, p);
  token.text.assign(at, p);
  continuations += requireNameLength(token.text, token.pos);
  at = p;
}

void Lexer::variable() {
  const char* p = at + 1;
  while (p != end && has(*p, identifierPart)) ++p;
  Token& token = add(TokenKind::variable, p);
  token.text.assign(at, p);
  moveTo(p);
}

void Lexer::number() {
  const char* p = at;
  TokenKind kind = TokenKind::integer;
  while (p != end && has(*p, digit)) ++p;
  if (p != end && *p == '.') {
    kind = TokenKind::decimal;
    ++p;
    while (p != end && has(*p, digit)) ++p;
  }
  if (p != end && (*p == 'e' || *p == 'E')) {
    const char* q = p + 1;
    if (q != end && (*q == '+' || *q == '-')) ++q;
    const char* exponent = q;
    while (q != end && has(*q, digit)) ++q;
    if (q != exponent) {
      kind = TokenKind::real;
      p = q;
    } else if (exponent == p + 1 && (q == end || !has(*q, identifierPart))) {  // 2e is 2e0, but 2else is 2 and else
      kind = TokenKind::real;
      p = q;
    }
  }
  Token& token = add(kind, p);
  addLiteral(token, kind == TokenKind::integer   ? integerLiteral(token.raw, token.pos)
                    : kind == TokenKind::decimal ? decimalLiteral(token.raw, token.pos)
                                                 : realLiteral(token.raw, token.pos));
  at = p;
}

void Lexer::money() {
  const char* p = at + 1;
  while (p != end && has(*p, digit)) ++p;
  if (p != end && *p == '.') {
    ++p;
    while (p != end && has(*p, digit)) ++p;
  }
  if (p == at + 1 && p != end && has(*p, identifierPart)) throwSyntax("$", position());
  Token& token = add(TokenKind::moneyLiteral, p);
  addLiteral(token, moneyLiteral(token.raw, token.pos));
  at = p;
}

void Lexer::hex() {
  const char* p = at + 2;
  while (p != end && has(*p, hexadecimal)) ++p;
  Token& token = add(TokenKind::hex, p);
  addLiteral(token, hexLiteral(token.raw));
  at = p;
}

// The closing quote of a text whose content begins at first; doubled tells whether a doubled one stands inside.
const char* Lexer::closingQuote(const char* first, char quote, bool& doubled) const {
  for (const char* p = first;;) {
    const void* hit = std::memchr(p, quote, static_cast<std::size_t>(end - p));
    if (!hit)
      throw SqlError(105,
                     "Unclosed quotation mark after the character string '" +
                         excerpt({first, static_cast<std::size_t>(end - first)}) + "'.",
                     position(), 15);
    const char* close = static_cast<const char*>(hit);
    if (end - close < 2 || close[1] != quote) return close;
    doubled = true;
    p = close + 2;
  }
}

void Lexer::text(TokenKind kind, const char* quote) {
  bool doubled = false;
  const char* first = quote + 1;
  const char* close = closingQuote(first, '\'', doubled);
  Token& token = add(kind, close + 1);
  const auto length = static_cast<std::size_t>(close - first);
  const bool continued = length && std::memchr(first, '\\', length) && std::memchr(first, '\n', length);
  if (!doubled && !continued) {
    token.text.assign(first, length);
  } else {
    token.text.reserve(length);
    for (const char* p = first; p != close; ++p) {
      // A backslash at the end of a line joins the text with the next line.
      if (*p == '\\' && (p[1] == '\n' || (p[1] == '\r' && p[2] == '\n'))) {
        p += p[1] == '\n' ? 1 : 2;
        continue;
      }
      token.text += *p;
      if (*p == '\'') ++p;
    }
  }
  addLiteral(token, textLiteral(token.text, kind == TokenKind::nstring));
  moveTo(close + 1);
}

void Lexer::quotedIdentifier(char close) {
  bool doubled = false;
  const char* first = at + 1;
  const char* last = closingQuote(first, close, doubled);
  Token& token = add(TokenKind::quotedIdentifier, last + 1);
  token.text.reserve(static_cast<std::size_t>(last - first));
  for (const char* p = first; p != last; ++p) {
    token.text += *p;
    if (*p == close) ++p;
  }
  requireQuotedName(token.text, token.pos);
  moveTo(last + 1);
}

void Lexer::punctuation() {
  const char second = ahead(1);
  std::size_t length = 1;
  switch (*at) {
    case '<':
      if (second == '=' || second == '>') length = 2;
      break;
    case '>':
      if (second == '=') length = 2;
      break;
    case '!':
      if (second == '=' || second == '<' || second == '>') length = 2;
      break;
    case ':':
      if (second == ':') length = 2;
      break;
    case '(':
    case ')':
    case ',':
    case '.':
    case ';':
    case '=':
    case '+':
    case '-':
    case '*':
    case '/':
    case '%':
    case '&':
    case '|':
    case '^':
    case '~':
    case '{':  // opens an escape of the client interface, which the parser refuses by name
    case '}':
      break;
    default:
      throwSyntax(std::string(1, *at), position());
  }
  add(TokenKind::punctuation, at + length);
  at += length;
}

void Lexer::run() {
  constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
  if (out.source.starts_with(byteOrderMark)) moveTo(at + byteOrderMark.size());
  for (skipBlanks(); at != end; skipBlanks()) {
    const char c = *at;
    if ((c == 'N' || c == 'n') && ahead(1) == '\'') {
      text(TokenKind::nstring, at + 1);
    } else if (has(c, identifierStart)) {
      identifier();
    } else if (c == '0' && (ahead(1) == 'x' || ahead(1) == 'X')) {
      hex();
    } else if (has(c, digit) || (c == '.' && has(ahead(1), digit))) {
      number();
    } else {
      switch (c) {
        case '\'':
          text(TokenKind::string, at);
          break;
        case '[':
          quotedIdentifier(']');
          break;
        case '"':
          quotedIdentifier('"');
          break;
        case '@':
          variable();
          break;
        case '$':
          money();
          break;
        case '?':
          add(TokenKind::parameter, at + 1);
          ++at;
          break;
        default:
          punctuation();
      }
    }
  }
  add(TokenKind::end, end);
}

}  // namespace

void requireQuotedName(std::string_view name, SourcePos pos) {
  if (name.empty())
    throw SqlError(1038,
                   "An object or column name is missing or empty. For SELECT INTO statements, verify each column has a "
                   "name. For other statements, look for empty alias names. Aliases defined as \"\" or [] are not "
                   "allowed. Add a name or single space as the alias name.",
                   pos, 15);
  requireNameLength(name, pos);
}

TokenStream lex(std::string source) {
  TokenStream stream;
  stream.source = std::move(source);
  // Tokens point into the text, so it must lie on the heap: a text inside the string object would move with it.
  stream.source.reserve(64);
  // What the rows of a bulk insert come to; too large a guess costs no more than address space.
  stream.tokens.reserve(stream.source.size() / 3 + 16);
  stream.literals.reserve(stream.source.size() / 10 + 4);
  Lexer(stream).run();
  return stream;
}

}  // namespace tsql
