// Variables: their declaration and assignment, and the statements that report something.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

// declare @a int, @b as nvarchar(10) = N'x'
StatementPtr Parser::declareStatement() {
  auto result = std::make_unique<Declare>(take().pos);
  if (isNamePart() && (isWord("cursor", 1) || isWord("insensitive", 1) || isWord("scroll", 1))) unsupported("a cursor");
  do {
    if (peek().kind != TokenKind::variable) fail();
    Declaration declaration;
    const Token& word = take();
    declaration.pos = word.pos;
    declaration.name = word.text;
    acceptWord("as");
    if (isWord("cursor")) unsupported("a cursor");
    if (isWord("table")) unsupported("a table variable");
    declaration.type = typeName();
    if (acceptMark("=")) declaration.value = scalar();
    result->variables.push_back(std::move(declaration));
  } while (acceptMark(","));
  return result;
}

// Behind set: @x = expression
StatementPtr Parser::setVariable(SourcePos pos) {
  auto result = std::make_unique<SetVariable>(pos);
  result->name = take().text;
  if (isMark(".")) unsupported("a method of a variable");
  refuseCompoundAssignment();
  expectMark("=");
  if (isWord("cursor")) unsupported("a cursor");
  result->value = scalar();
  return result;
}

StatementPtr Parser::printStatement() {
  auto result = std::make_unique<Print>(take().pos);
  result->value = scalar();
  return result;
}

StatementPtr Parser::returnStatement() {
  auto result = std::make_unique<Return>(take().pos);
  if (startsExpression()) result->value = scalar();
  return result;
}

// raiserror('text %d', 16, 1, 5) with nowait, and the old form raiserror 50001 'text'
StatementPtr Parser::raiserrorStatement() {
  auto result = std::make_unique<Raiserror>(take().pos);
  if (!acceptMark("(")) {
    if (peek().kind != TokenKind::integer && peek().kind != TokenKind::variable) fail();
    result->state = primary();
    acceptMark(",");
    if (!isText() && peek().kind != TokenKind::variable) fail();
    result->message = primary();
    return result;
  }
  if (peek().kind == TokenKind::integer) unsupported("raiserror with the number of a stored message");
  result->message = scalar();
  expectMark(",");
  result->severity = scalar();
  expectMark(",");
  result->state = scalar();
  while (acceptMark(",")) result->arguments.push_back(scalar());
  expectMark(")");
  if (acceptWord("with")) {
    do {
      if (isWord("log")) unsupported("raiserror with log");
      if (isWord("seterror")) unsupported("raiserror with seterror");
      expectWord("nowait");
    } while (acceptMark(","));
  }
  return result;
}

}  // namespace tsql
