// Expressions that begin with a word: columns, functions, case, cast, convert.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

ExprPtr Parser::wordExpression() {
  const Token& word = peek();
  if (word.kind == TokenKind::identifier) {
    if (isWord("null")) {
      take();
      return std::make_unique<Null>(word.pos);
    }
    if (isWord("case")) return caseExpression();
    if (isWord("exists")) return existsCondition();
    for (const char* plain : {"current_timestamp", "current_user", "session_user", "system_user", "user"}) {
      if (!isWord(plain)) continue;
      take();
      return std::make_unique<Function>(word.pos, word.text);
    }
    for (const char* refused : {"identitycol", "rowguidcol", "contains", "freetext"})
      if (isWord(refused)) unsupported(refused);
    if (isMark("(", 1)) {
      if (isWord("cast")) return castExpression();
      if (isWord("convert")) return convertExpression();
      for (const char* function : {"left", "right", "coalesce", "nullif", "identity"})
        if (isWord(function)) return functionCall();
    }
  }
  if (!isNamePart()) fail();
  if (isMark("(", 1)) return functionCall();
  Name column = name();
  if (isMark("(")) throwUnsupported("a user-defined function (" + column.last() + ")", column.pos);
  return std::make_unique<Column>(std::move(column));
}

ExprPtr Parser::functionCall() {
  const Nest nest(*this);
  const Token& word = take();
  auto call = std::make_unique<Function>(word.pos, word.text);
  const bool countsRows = isWordOf(word, "count") || isWordOf(word, "count_big") || isWordOf(word, "checksum");
  expectMark("(");
  if (countsRows && isMark("*")) {
    call->arguments.push_back(std::make_unique<Star>(take().pos, Name{}));
  } else if (!isMark(")")) {
    call->distinct = acceptWord("distinct");
    if (!call->distinct) acceptWord("all");
    do call->arguments.push_back(scalar());
    while (acceptMark(","));
  }
  expectMark(")");
  if (isWord("over")) unsupported("the over clause");
  return call;
}

ExprPtr Parser::caseExpression() {
  const Nest nest(*this);
  auto result = std::make_unique<Case>(take().pos);
  if (!isWord("when")) result->input = scalar();
  while (acceptWord("when")) {
    Case::When when;
    when.condition = result->input ? scalar() : condition();
    expectWord("then");
    when.result = scalar();
    result->whens.push_back(std::move(when));
  }
  if (result->whens.empty()) fail();
  if (acceptWord("else")) result->otherwise = scalar();
  expectWord("end");
  return result;
}

ExprPtr Parser::castExpression() {
  const Nest nest(*this);
  const SourcePos pos = take().pos;
  expectMark("(");
  ExprPtr operand = scalar();
  expectWord("as");
  TypeName type = typeName();
  expectMark(")");
  return std::make_unique<Cast>(pos, std::move(operand), std::move(type));
}

ExprPtr Parser::convertExpression() {
  const Nest nest(*this);
  const SourcePos pos = take().pos;
  expectMark("(");
  TypeName type = typeName();
  expectMark(",");
  ExprPtr operand = scalar();
  ExprPtr style;
  if (acceptMark(",")) style = scalar();
  expectMark(")");
  return std::make_unique<Convert>(pos, std::move(type), std::move(operand), std::move(style));
}

}  // namespace tsql
