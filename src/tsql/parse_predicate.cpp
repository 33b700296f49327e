// Conditions: comparisons and what combines them.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

ExprPtr Parser::requireCondition(ExprPtr e) {
  if (isCondition(*e)) return e;
  const Token& near = atEnd() && at ? tokens[at - 1] : peek();
  throw SqlError(4145,
                 "An expression of non-boolean type specified in a context where a condition is expected, near '" +
                     (near.text.empty() ? std::string(near.raw) : near.text) + "'.",
                 near.pos, 15);
}

ExprPtr Parser::condition() {
  return requireCondition(any());
}

// A condition or a scalar expression.
ExprPtr Parser::any() {
  ExprPtr e = disjunction();
  noteHeight();
  return e;
}

ExprPtr Parser::disjunction() {
  ExprPtr left = conjunction();
  while (isWord("or")) {
    left = requireCondition(std::move(left));
    const std::size_t operatorAt = at;
    take();
    const int leftHeight = height;
    ExprPtr right = requireCondition(conjunction());
    checkHeight(std::max(leftHeight, height) + 1);
    conditionAt = operatorAt;
    const SourcePos pos = left->pos;
    left = std::make_unique<Logical>(pos, false, std::move(left), std::move(right));
  }
  return left;
}

ExprPtr Parser::conjunction() {
  ExprPtr left = negation();
  while (isWord("and")) {
    left = requireCondition(std::move(left));
    const std::size_t operatorAt = at;
    take();
    const int leftHeight = height;
    ExprPtr right = requireCondition(negation());
    checkHeight(std::max(leftHeight, height) + 1);
    conditionAt = operatorAt;
    const SourcePos pos = left->pos;
    left = std::make_unique<Logical>(pos, true, std::move(left), std::move(right));
  }
  return left;
}

ExprPtr Parser::negation() {
  if (!isWord("not")) return predicate();
  const Nest nest(*this);
  const std::size_t operatorAt = at;
  const SourcePos pos = take().pos;
  ExprPtr operand = requireCondition(negation());
  noteHeight();
  conditionAt = operatorAt;
  return std::make_unique<Negation>(pos, std::move(operand));
}

ExprPtr Parser::predicate() {
  ExprPtr left = additive();
  if (isCondition(*left)) return left;
  const SourcePos pos = left->pos;
  const std::size_t operatorAt = at;
  if (const auto op = compareOp()) {
    left = comparison(std::move(left), pos, *op);
  } else if (acceptWord("is")) {
    const bool negated = acceptWord("not");
    expectWord("null");
    checkHeight(height + 1);
    left = std::make_unique<IsNull>(pos, std::move(left), negated);
  } else {
    const bool negated = isWord("not") && (isWord("in", 1) || isWord("between", 1) || isWord("like", 1));
    if (negated) take();
    if (acceptWord("in"))
      left = inCondition(std::move(left), pos, negated);
    else if (acceptWord("between"))
      left = betweenCondition(std::move(left), pos, negated);
    else if (acceptWord("like"))
      left = likeCondition(std::move(left), pos, negated);
    else
      return left;
  }
  conditionAt = operatorAt;
  return left;
}

// The marks of a comparison may stand apart: > = is >=.
std::optional<CompareOp> Parser::compareOp() {
  if (acceptMark("=")) {
    if (isMark("*")) unsupported("the outer join operator =*");
    return CompareOp::equal;
  }
  if (acceptMark("<>") || acceptMark("!=")) return CompareOp::notEqual;
  if (acceptMark("<=") || acceptMark("!>")) return CompareOp::lessEqual;
  if (acceptMark(">=") || acceptMark("!<")) return CompareOp::greaterEqual;
  if (acceptMark("<"))
    return acceptMark("=") ? CompareOp::lessEqual : acceptMark(">") ? CompareOp::notEqual : CompareOp::less;
  if (acceptMark(">")) return acceptMark("=") ? CompareOp::greaterEqual : CompareOp::greater;
  if (isMark("!") && (isMark("=", 1) || isMark("<", 1) || isMark(">", 1))) {
    take();
    const Token& second = take();
    return second.raw == "=" ? CompareOp::notEqual : second.raw == "<" ? CompareOp::greaterEqual : CompareOp::lessEqual;
  }
  return std::nullopt;
}

ExprPtr Parser::comparison(ExprPtr left, SourcePos pos, CompareOp op) {
  const int leftHeight = height;
  const bool all = isWord("all");
  if (all || isWord("any") || isWord("some")) {
    take();
    Ptr<Select> select;
    {
      const Nest nest(*this);
      expectMark("(");
      select = selectChain(SelectUse::operand);
      expectMark(")");
    }
    checkHeight(std::max(leftHeight, height) + 1);
    return std::make_unique<Quantified>(pos, op, all ? Quantifier::all : Quantifier::any, std::move(left),
                                        std::move(select));
  }
  ExprPtr right = requireScalar(additive());
  checkHeight(std::max(leftHeight, height) + 1);
  return std::make_unique<Comparison>(pos, op, std::move(left), std::move(right));
}

ExprPtr Parser::inCondition(ExprPtr left, SourcePos pos, bool negated) {
  const int leftHeight = height;
  ExprPtr result;
  {
    const Nest nest(*this);
    expectMark("(");
    if (startsSelect()) {
      result = std::make_unique<InSelect>(pos, std::move(left), negated, selectChain(SelectUse::operand));
    } else {
      auto list = std::make_unique<InList>(pos, std::move(left), negated);
      do list->items.push_back(scalar());
      while (acceptMark(","));
      result = std::move(list);
    }
    expectMark(")");
  }
  checkHeight(std::max(leftHeight, height) + 1);
  return result;
}

ExprPtr Parser::betweenCondition(ExprPtr left, SourcePos pos, bool negated) {
  int tallestOperand = height;
  ExprPtr low = requireScalar(additive());
  tallestOperand = std::max(tallestOperand, height);
  expectWord("and");
  ExprPtr high = requireScalar(additive());
  checkHeight(std::max(tallestOperand, height) + 1);
  return std::make_unique<Between>(pos, std::move(left), negated, std::move(low), std::move(high));
}

ExprPtr Parser::likeCondition(ExprPtr left, SourcePos pos, bool negated) {
  int tallestOperand = height;
  ExprPtr pattern = requireScalar(additive());
  tallestOperand = std::max(tallestOperand, height);
  ExprPtr escape;
  if (acceptWord("escape")) {
    escape = requireScalar(additive());
    tallestOperand = std::max(tallestOperand, height);
  }
  checkHeight(tallestOperand + 1);
  return std::make_unique<Like>(pos, std::move(left), negated, std::move(pattern), std::move(escape));
}

ExprPtr Parser::existsCondition() {
  const Nest nest(*this);
  conditionAt = at;
  const std::size_t operatorAt = at;
  const SourcePos pos = take().pos;
  expectMark("(");
  Ptr<Select> select = selectChain(SelectUse::operand);
  expectMark(")");
  conditionAt = operatorAt;
  return std::make_unique<Exists>(pos, std::move(select));
}

}  // namespace tsql
