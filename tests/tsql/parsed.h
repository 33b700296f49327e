#pragma once
// A parsed text with its tokens, and short ways to ask it.

#include <gtest/gtest.h>

#include <string>

#include "tsql/parser.h"

namespace tsql {

struct Parsed {
  explicit Parsed(const std::string& sql) : tokens(lex(sql)), batch(parse(tokens)) {}
  TokenStream tokens;
  ast::Batch batch;
  template <class Node>
  const Node& as(std::size_t i = 0) const {
    return dynamic_cast<const Node&>(*batch.statements.at(i));
  }
  std::string span(const ast::Statement& s) const {
    const Token &first = tokens.tokens[s.firstToken], &last = tokens.tokens[s.lastToken - 1];
    return tokens.source.substr(first.pos.offset, last.pos.offset + last.length - first.pos.offset);
  }
};

inline SqlError errorOf(const std::string& sql) {
  try {
    const Parsed parsed(sql);
  } catch (const SqlError& error) {
    return error;
  }
  ADD_FAILURE() << "no failure: " << sql;
  return SqlError(0, "");
}

inline std::string printed(const std::string& sql) {
  const Parsed parsed(sql);
  return print(parsed.batch, parsed.tokens);
}

inline std::string printedExpr(const std::string& text) {
  const TokenStream tokens = lex(text);
  return print(*parseExpression(tokens), tokens);
}

template <class Node>
const Node& itemAs(const Parsed& parsed, std::size_t i = 0) {
  return dynamic_cast<const Node&>(*parsed.as<ast::SelectStatement>().select->items.at(i).expr);
}

}  // namespace tsql
