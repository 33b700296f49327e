#include "tsql/parser.h"

#include "tsql/ascii.h"
#include "tsql/parser_impl.h"

namespace tsql {
namespace {

// What a message shows of a token: the content of a text or name, else the spelling.
std::string shown(const Token& token) {
  constexpr std::size_t maximum = 128;
  std::string text = token.text.empty() ? std::string(token.raw) : token.text;
  if (text.size() > maximum) {
    std::size_t length = maximum;
    while (length && (static_cast<unsigned char>(text[length]) & 0xc0) == 0x80) --length;
    text.resize(length);
  }
  return text;
}

bool isReservedToken(const Token& token) {
  constexpr std::size_t longestReserved = 17;
  if (token.kind != TokenKind::identifier || token.text.size() > longestReserved) return false;
  char lower[longestReserved];
  std::transform(token.text.begin(), token.text.end(), lower, lowered);
  return isReserved({lower, token.text.size()});
}

}  // namespace

Parser::Parser(const TokenStream& source) : stream(source), tokens(source.tokens), reserved(source.tokens.size()) {
  for (std::size_t i = 0; i < tokens.size(); ++i) reserved[i] = isReservedToken(tokens[i]);
}

bool Parser::isWordOf(const Token& token, std::string_view lower) {
  return token.kind == TokenKind::identifier && isSpelled(token.text, lower);
}

bool Parser::isMark(std::string_view mark, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::punctuation && token.raw == mark;
}

bool Parser::acceptWord(std::string_view lower) {
  if (!isWord(lower)) return false;
  take();
  return true;
}

bool Parser::acceptMark(std::string_view mark) {
  if (!isMark(mark)) return false;
  take();
  return true;
}

void Parser::expectWord(std::string_view lower) {
  if (!acceptWord(lower)) fail();
}

void Parser::expectMark(std::string_view mark) {
  if (!acceptMark(mark)) fail();
}

void Parser::failAt(std::size_t index) const {
  const Token& token = tokens[index];
  if (token.kind == TokenKind::end) {  // the server names the last word of the batch, and where that stands
    const Token& last = tokens[index ? index - 1 : 0];
    throwSyntax(shown(last), last.pos);
  }
  if (reserved[index]) throw SqlError(156, "Incorrect syntax near the keyword '" + shown(token) + "'.", token.pos, 15);
  throwSyntax(shown(token), token.pos);
}

void Parser::tooDeep() const {
  throw SqlError(191,
                 "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller "
                 "queries.",
                 peek().pos, 15);
}

void Parser::checkHeight(int h) {
  if (h > maximumHeight) tooDeep();
  height = h;
}

std::string Parser::sourceText(std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < last; ++i)
    if (tokens[i].isLiteral()) fixLiteral(tokens[i]);
  const std::size_t begin = tokens[first].pos.offset;
  return stream.source.substr(begin, tokens[last - 1].pos.offset + tokens[last - 1].length - begin);
}

// The index of the bracket that closes the one at `open`; the end token where there is none.
std::size_t Parser::closingBracket(std::size_t open) const {
  int depth = 0;
  for (std::size_t i = open; i + 1 < tokens.size(); ++i) {
    if (tokens[i].kind != TokenKind::punctuation) continue;
    if (tokens[i].raw == "(") ++depth;
    if (tokens[i].raw == ")" && --depth == 0) return i;
  }
  return tokens.size() - 1;
}

void Parser::skipBrackets() {
  if (!isMark("(")) fail();
  const std::size_t close = closingBracket(at);
  at = close;
  expectMark(")");
}

bool Parser::isNamePart(std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::quotedIdentifier ||
         (token.kind == TokenKind::identifier && !reserved[std::min(at + ahead, tokens.size() - 1)]);
}

bool Parser::isText(std::size_t ahead) const {
  const TokenKind kind = peek(ahead).kind;
  return kind == TokenKind::string || kind == TokenKind::nstring;
}

std::string Parser::namePart() {
  if (!isNamePart()) fail();
  return take().text;
}

ast::Name Parser::name() {
  constexpr std::size_t maximumParts = 4;
  const std::size_t first = at;
  ast::Name result;
  result.pos = peek().pos;
  result.parts.push_back(namePart());
  while (acceptMark(".")) {
    if (isMark("."))
      result.parts.emplace_back();  // db..t
    else
      result.parts.push_back(namePart());
    if (result.parts.size() > maximumParts)
      throw SqlError(117,
                     "The object name '" + sourceText(first, at) +
                         "' contains more than the maximum number of prefixes. The maximum is 3.",
                     result.pos, 15);
  }
  return result;
}

ast::TypeName Parser::typeName() {
  ast::TypeName type;
  type.pos = peek().pos;
  type.name = standardTypeName();
  if (type.name.empty())
    type.name = name().parts.back();  // a type may have an owner; none of a database's own is known
  for (const char* refused : {"timestamp", "rowversion", "sql_variant", "xml", "date", "datetime2", "time",
                              "datetimeoffset", "hierarchyid", "geometry", "geography"})
    if (isSpelled(type.name, refused)) throwUnsupported("the type " + std::string(refused), type.pos);
  if (!acceptMark("(")) return type;
  if (acceptWord("max")) {
    type.max = true;
  } else {
    const auto size = [this] {
      if (peek().kind != TokenKind::integer) fail();
      const Token& token = take();
      fixLiteral(token);
      const auto* number = std::get_if<std::int64_t>(&stream.literals[static_cast<std::size_t>(token.literal)].value);
      return number && *number <= 0x7fffffff ? static_cast<int>(*number) : 0x7fffffff;
    };
    type.first = size();
    if (acceptMark(",")) type.second = size();
  }
  expectMark(")");
  return type;
}

// The standard's spellings of several words, which the server takes for its own types; empty where none stands.
std::string Parser::standardTypeName() {
  const bool national = isWord("national");
  const std::size_t ahead = national ? 1 : 0;
  if (isWord("char", ahead) || isWord("character", ahead)) {
    const bool varying = isWord("varying", ahead + 1);
    if (!national && !varying && isWord("char")) return {};
    at += ahead + (varying ? 2 : 1);
    return std::string(national ? "n" : "") + (varying ? "varchar" : "char");
  }
  const auto spelled = [&](const char* first, const char* second) {
    if (!isWord(first) || !isWord(second, 1)) return false;
    at += 2;
    return true;
  };
  if (spelled("national", "text")) return "ntext";
  if (spelled("double", "precision")) return "float";
  if (spelled("binary", "varying")) return "varbinary";
  return {};
}

std::vector<std::pair<std::string, SourcePos>> Parser::nameList() {
  std::vector<std::pair<std::string, SourcePos>> names;
  do {
    const SourcePos pos = peek().pos;
    names.emplace_back(namePart(), pos);
  } while (acceptMark(","));
  return names;
}

std::int64_t Parser::signedInteger() {
  const bool negative = isMark("-");
  if (negative || isMark("+")) take();
  if (peek().kind != TokenKind::integer) fail();
  const auto& literal = stream.literals[static_cast<std::size_t>(peek().literal)];
  const auto* number = std::get_if<std::int64_t>(&literal.value);
  if (!number) fail();
  fixLiteral(take());
  return negative ? -*number : *number;
}

ast::Batch Parser::batch() {
  ast::Batch result;
  while (acceptMark(";")) {
  }
  while (!atEnd()) {
    firstInBatch = result.statements.empty();
    result.statements.push_back(statement());
    while (acceptMark(";")) {
    }
  }
  result.parameters = parameters;
  result.fixedLiterals = std::move(fixedLiterals);
  return result;
}

ast::ExprPtr Parser::wholeExpression() {
  ast::ExprPtr e = any();
  if (!atEnd()) fail();
  return e;
}

ast::Batch parse(const TokenStream& tokens) {
  return Parser(tokens).batch();
}

ast::ExprPtr parseExpression(const TokenStream& tokens) {
  return Parser(tokens).wholeExpression();
}

}  // namespace tsql
