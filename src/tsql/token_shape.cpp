#include "tsql/ascii.h"
#include "tsql/token.h"

namespace tsql {
namespace {

// Numbers that are the size of a type decide the type of a result: they stay as spelled, so that cast(a as char(4))
// and cast(a as char(5)) are two shapes.
bool isTypeSize(const std::vector<Token>& tokens, std::size_t index, std::size_t first) {
  std::size_t open = index;
  if (index >= first + 3 && tokens[index - 1].raw == "," && tokens[index - 2].kind == TokenKind::integer)
    open = index - 3;  // decimal(p, s
  else if (index >= first + 2)
    open = index - 1;
  if (open <= first || open == index || tokens[open].raw != "(") return false;
  const Token& word = tokens[open - 1];
  if (word.kind != TokenKind::identifier && word.kind != TokenKind::quotedIdentifier) return false;
  const auto hasSize = [&word](std::string_view lower) { return isSpelled(word.text, lower); };
  switch (word.text.size()) {
    case 3:
      return hasSize("dec");
    case 4:
      return hasSize("char");
    case 5:
      return hasSize("nchar") || hasSize("float");
    case 6:
      return hasSize("binary");
    case 7:
      return hasSize("varchar") || hasSize("decimal") || hasSize("numeric");
    case 8:
      return hasSize("nvarchar");
    case 9:
      return hasSize("varbinary");
    default:
      return false;
  }
}

}  // namespace

std::string TokenStream::shape(std::size_t first, std::size_t last) const {
  std::string result;
  if (first >= last) return result;
  // Tokens, a blank each, and a margin: a class is hardly ever longer than the literal that it stands for.
  result.reserve(tokens[last - 1].pos.offset + tokens[last - 1].length - tokens[first].pos.offset + 2 * (last - first));
  for (std::size_t i = first; i < last; ++i) {
    const Token& token = tokens[i];
    switch (token.kind) {
      case TokenKind::integer:
        if (isTypeSize(tokens, i, first)) {
          result += token.raw;
          break;
        }
        [[fallthrough]];
      case TokenKind::decimal: {
        const SqlType& type = literals[static_cast<std::size_t>(token.literal)].type;
        if (type.kind == TypeKind::integer) {
          result += "'i'";
        } else {
          result += "'d";
          if (type.scale >= 10) result += static_cast<char>('0' + type.scale / 10);
          result += static_cast<char>('0' + type.scale % 10);
          // Long numbers compare in wider types: their whole digits are part of the shape.
          if (const int whole = type.precision - type.scale; whole > 9) result += static_cast<char>('a' + (whole - 10));
          result += '\'';
        }
        break;
      }
      case TokenKind::real:
        result += "'f'";
        break;
      case TokenKind::moneyLiteral:
        result += "'m'";
        break;
      case TokenKind::string:
        result += "'s'";
        break;
      case TokenKind::nstring:
        result += "'n'";
        break;
      case TokenKind::hex:
        result += "'x'";
        break;
      default:
        result += token.raw;  // letter case too: a name gives a column of the result its spelling
    }
    result += ' ';
  }
  return result;
}

}  // namespace tsql
