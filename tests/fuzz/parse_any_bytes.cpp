// The lexer and the parser, given any bytes: a tree or a failure of the server, nothing else, within bounded stack.

#include "fuzz/fuzz.h"
#include "tsql/parser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  try {
    const tsql::TokenStream tokens = tsql::lex(text);
    std::size_t at = 0;
    for (const tsql::Token& t : tokens.tokens) {
      if (t.pos.offset < at || t.pos.offset + t.length > text.size())
        fuzz::fail("tokens stand in the text one behind the other", text);
      at = t.pos.offset + t.length;
    }
    if (tokens.tokens.empty() || tokens.tokens.back().kind != tsql::TokenKind::end)
      fuzz::fail("the last token is the end", text);
    const tsql::ast::Batch batch = tsql::parse(tokens);
    for (const auto& s : batch.statements)
      if (s->firstToken >= s->lastToken || s->lastToken > tokens.tokens.size())
        fuzz::fail("a statement covers tokens of its batch", text);
  } catch (const tsql::SqlError& e) {
    if (e.number == 0 || *e.what() == '\0') fuzz::fail("a failure has a number and a text", text);
    if (e.pos.line < 1 || e.pos.column < 1 || e.pos.offset > text.size())
      fuzz::fail("a failure says where", std::string(e.what()) + "\n" + text);
  }
  return 0;
}
