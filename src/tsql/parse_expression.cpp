// Scalar expressions: operators and what they work on.
//
// Levels, loosest first: + - & ^ | and the signs; * / %; ~. A sign takes the whole product behind it, so 8/-2*2 is
// 8/-(2*2): the server reads it like this.

#include "tsql/ascii.h"
#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

bool isCondition(const Expr& e) {
  switch (e.kind) {
    case ExprKind::comparison:
    case ExprKind::logical:
    case ExprKind::negation:
    case ExprKind::isNull:
    case ExprKind::inList:
    case ExprKind::inSelect:
    case ExprKind::between:
    case ExprKind::like:
    case ExprKind::exists:
    case ExprKind::quantified:
      return true;
    default:
      return false;
  }
}

ExprPtr Parser::requireScalar(ExprPtr e) {
  if (isCondition(*e)) failAt(conditionAt);
  return e;
}

ExprPtr Parser::scalar() {
  ExprPtr e = requireScalar(additive());
  noteHeight();
  return e;
}

ExprPtr Parser::additive() {
  ExprPtr left = multiplicative();
  for (;;) {
    BinaryOp op;
    if (isMark("+"))
      op = BinaryOp::add;
    else if (isMark("-"))
      op = BinaryOp::subtract;
    else if (isMark("&"))
      op = BinaryOp::bitAnd;
    else if (isMark("|"))
      op = BinaryOp::bitOr;
    else if (isMark("^"))
      op = BinaryOp::bitXor;
    else
      return left;
    if (isCondition(*left)) fail();
    take();
    const int leftHeight = height;
    ExprPtr right = requireScalar(multiplicative());
    checkHeight(std::max(leftHeight, height) + 1);
    const SourcePos pos = left->pos;
    left = std::make_unique<Binary>(pos, op, std::move(left), std::move(right));
  }
}

ExprPtr Parser::multiplicative() {
  ExprPtr left = factor();
  for (;;) {
    BinaryOp op;
    if (isMark("*")) {
      if (isMark("=", 1)) unsupported("the outer join operator *=");
      op = BinaryOp::multiply;
    } else if (isMark("/")) {
      op = BinaryOp::divide;
    } else if (isMark("%")) {
      op = BinaryOp::modulo;
    } else {
      return left;
    }
    if (isCondition(*left)) fail();
    take();
    const int leftHeight = height;
    ExprPtr right = requireScalar(factor());
    checkHeight(std::max(leftHeight, height) + 1);
    const SourcePos pos = left->pos;
    left = std::make_unique<Binary>(pos, op, std::move(left), std::move(right));
  }
}

ExprPtr Parser::factor() {
  if (!isMark("-") && !isMark("+") && !isMark("~")) {
    ExprPtr e = primary();
    skipCollation();
    return e;
  }
  const Nest nest(*this);
  const Token& mark = take();
  const UnaryOp op = mark.raw == "-" ? UnaryOp::minus : mark.raw == "+" ? UnaryOp::plus : UnaryOp::bitNot;
  ExprPtr operand = requireScalar(op == UnaryOp::bitNot ? factor() : multiplicative());
  noteHeight();
  return std::make_unique<Unary>(mark.pos, op, std::move(operand));
}

ExprPtr Parser::primary() {
  const Token& token = peek();
  height = 1;
  if (token.isLiteral()) {
    take();
    return std::make_unique<Literal>(token.pos, token.literal);
  }
  switch (token.kind) {
    case TokenKind::parameter:
      take();
      return std::make_unique<ast::Parameter>(token.pos, parameters++);
    case TokenKind::variable:
      take();
      return std::make_unique<Variable>(token.pos, token.text);
    case TokenKind::identifier:
    case TokenKind::quotedIdentifier:
      return wordExpression();
    case TokenKind::punctuation:
      if (token.raw == "(") return bracketed();
      if (token.raw == "{") unsupported("an escape in braces ({fn}, {d}, {ts}, {oj})");
      if (token.raw == "::") unsupported("a system function with ::");
      fail();
    default:
      fail();
  }
}

// In brackets: a subquery, a condition or an expression. The tree needs no node for the brackets.
ExprPtr Parser::bracketed() {
  const Nest nest(*this);
  const SourcePos pos = peek().pos;
  take();
  if (startsSelect()) {
    Ptr<Select> select = selectChain(SelectUse::operand);
    expectMark(")");
    return std::make_unique<Subquery>(pos, std::move(select));
  }
  ExprPtr inner = any();
  expectMark(")");
  return inner;
}

// k += 1 and its kin.
void Parser::refuseCompoundAssignment(std::size_t ahead) const {
  for (const char* mark : {"+", "-", "*", "/", "%", "&", "|", "^"})
    if (isMark(mark, ahead) && isMark("=", ahead + 1))
      unsupported(std::string("the compound assignment ") + mark + "=");
}

// Whether an expression may begin here (where one may be missing, as behind return).
bool Parser::startsExpression() const {
  const Token& token = peek();
  switch (token.kind) {
    case TokenKind::end:
      return false;
    case TokenKind::punctuation:
      return token.raw == "(" || token.raw == "-" || token.raw == "+" || token.raw == "~";
    case TokenKind::identifier:
      if (!isReservedAt(at)) return true;
      for (const char* word : {"null", "case", "convert", "coalesce", "nullif", "left", "right", "current_timestamp",
                               "current_user", "session_user", "system_user", "user"})
        if (isWord(word)) return true;
      return false;
    default:
      return true;
  }
}

}  // namespace tsql
