// Procedures: their definition and their call.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

StatementPtr Parser::createProcedure(bool alter) {
  const std::size_t first = at;
  if (!firstInBatch)
    throw SqlError(111, "'CREATE/ALTER PROCEDURE' must be the first statement in a query batch.", peek().pos, 15);
  auto procedure = std::make_unique<CreateProcedure>(take().pos);
  take();
  procedure->alter = alter;
  procedure->name = name();
  if (isMark(";") && peek(1).kind == TokenKind::integer) unsupported("a procedure's number");
  const bool inBrackets = acceptMark("(");
  if (inBrackets || peek().kind == TokenKind::variable) {
    do procedure->parameters.push_back(procedureParameter());
    while (acceptMark(","));
  }
  if (inBrackets) expectMark(")");
  procedureOptions();
  expectWord("as");
  firstInBatch = false;
  while (acceptMark(";")) {
  }
  do {
    procedure->body.push_back(statement());
    while (acceptMark(";")) {
    }
  } while (!atEnd());
  procedure->text = sourceText(first, at);
  return procedure;
}

ProcedureParameter Parser::procedureParameter() {
  ProcedureParameter parameter;
  if (peek().kind != TokenKind::variable) fail();
  const Token& word = take();
  parameter.pos = word.pos;
  parameter.name = word.text;
  acceptWord("as");
  if (isWord("cursor")) unsupported("a cursor");
  parameter.type = typeName();
  if (acceptMark("=")) parameter.defaultValue = constantArgument();
  if (isWord("varying")) unsupported("a cursor");
  parameter.output = outputWord();
  return parameter;
}

bool Parser::outputWord() {
  return acceptWord("output") || acceptWord("out");
}

// with recompile, encryption: nothing is kept compiled or hidden.
void Parser::procedureOptions() {
  if (acceptWord("with")) {
    do {
      if (isWord("execute") || isWord("exec")) unsupported("execute as");
      if (!acceptWord("recompile")) expectWord("encryption");
    } while (acceptMark(","));
  }
  if (isWord("for") && isWord("replication", 1)) unsupported("for replication");
}

StatementPtr Parser::dropProcedure() {
  auto drop = std::make_unique<DropProcedure>(take().pos);
  take();
  drop->names = tableNames();
  return drop;
}

// exec p, execute db..p 1, @x = N'a'; the word may be missing at the head of a batch.
StatementPtr Parser::executeStatement() {
  auto execute = std::make_unique<Execute>(peek().pos);
  if (!acceptWord("exec")) acceptWord("execute");
  if (isMark("(")) unsupported("execute of a text");
  if (peek().kind == TokenKind::variable) {
    if (!isMark("=", 1)) unsupported("a procedure's name in a variable");
    execute->returnVariable = take().text;
    take();
  }
  execute->name = name();
  if (isMark(";") && peek(1).kind == TokenKind::integer) unsupported("a procedure's number");
  const Token& token = peek();
  const bool hasArguments = token.isLiteral() || token.kind == TokenKind::variable ||
                            token.kind == TokenKind::parameter || isMark("-") || isMark("+") || isWord("null") ||
                            isWord("default") || isNamePart();
  if (hasArguments) {
    do execute->arguments.push_back(executeArgument());
    while (acceptMark(","));
  }
  if (isWord("with") && isWord("recompile", 1)) {
    take();
    take();
  }
  return execute;
}

ExecuteArgument Parser::executeArgument() {
  ExecuteArgument argument;
  if (peek().kind == TokenKind::variable && isMark("=", 1)) {
    argument.name = take().text;
    take();
  }
  if (!acceptWord("default")) argument.value = constantArgument();
  argument.output = outputWord();
  if (argument.output && (!argument.value || argument.value->kind != ExprKind::variable))
    throw SqlError(179, "Cannot use the OUTPUT option when passing a constant to a stored procedure.", peek().pos, 15);
  return argument;
}

// A literal, a signed one, null, a variable, a parameter, or a bare word, which is a text (held as a Column).
ExprPtr Parser::constantArgument() {
  const Token& token = peek();
  height = 1;
  if (isMark("-") || isMark("+")) {
    const TokenKind number = peek(1).kind;
    if (number != TokenKind::integer && number != TokenKind::decimal && number != TokenKind::real &&
        number != TokenKind::moneyLiteral)
      failAt(at + 1);
    take();
    return std::make_unique<Unary>(token.pos, token.raw == "-" ? UnaryOp::minus : UnaryOp::plus, primary());
  }
  if (isNamePart()) {
    take();
    return std::make_unique<Column>(Name{{token.text}, token.pos});
  }
  if (!token.isLiteral() && token.kind != TokenKind::variable && token.kind != TokenKind::parameter && !isWord("null"))
    fail();
  return primary();
}

}  // namespace tsql
