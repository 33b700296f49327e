#pragma once
// Lexer: the text of a batch as tokens.
//
// A literal is a token with an ordinal of its own (0, 1, 2, ... over the batch): two batches whose tokens are the same
// but for the literals' contents have one shape, and a statement of a known shape needs no parsing or binding again.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/datum.h"
#include "tsql/sql_error.h"
#include "tsql/types.h"

namespace tsql {

enum class TokenKind : std::uint8_t {
  end,
  identifier,        // bare word; keywords too (the parser decides)
  quotedIdentifier,  // [x] or "x"; text is without the quotes, ]] undoubled
  variable,          // @x, @@x; text with the at signs
  integer,           // 12
  decimal,           // 1.5
  real,              // 1e3
  moneyLiteral,      // $1.5
  string,            // 'x'   text is the content, '' undoubled
  nstring,           // N'x'
  hex,               // 0x1f
  parameter,         // ?
  punctuation,       // one of ( ) , . ; = < > <= >= <> != !< !> + - * / % & | ^ ~ : ::
};

struct Token {
  TokenKind kind = TokenKind::end;
  SourcePos pos;
  std::size_t length = 0;  // bytes in the source
  std::string_view raw;    // as spelled
  std::string text;        // identifiers and texts: the content; else empty
  int literal = -1;        // ordinal among the literals of the batch, -1 when it is none
  bool isLiteral() const { return literal >= 0; }
};

// A literal as a value of its own type: integer -> int (or decimal(n,0) beyond its range), decimal -> decimal(p,s),
// real -> float, moneyLiteral -> money, string -> varchar(bytes), nstring -> nvarchar(characters), hex -> varbinary.
// An empty text has length 1.
struct LiteralValue {
  SqlType type;
  Datum value;
};

struct TokenStream {
  std::string source;
  std::vector<Token> tokens;           // the last one is end
  std::vector<LiteralValue> literals;  // by ordinal
  // Tokens [first, last) spelled with every literal replaced by its type class (texts without their length, decimals
  // with their scale); equal for batches of one shape.
  std::string shape(std::size_t first, std::size_t last) const;
  std::string shape() const { return shape(0, tokens.size() - 1); }
};

// Comments (-- and nested /* */) and blanks go. Throws 105 "Unclosed quotation mark after the character string '...'.",
// 113 "Missing end comment mark '*/'.", 102 for a character that begins nothing.
TokenStream lex(std::string source);

// A name between quotes, or a text that is an alias. Throws 1038 for an empty one, 103 for more than 128 characters.
void requireQuotedName(std::string_view name, SourcePos pos);

}  // namespace tsql
