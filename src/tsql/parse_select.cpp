// Select: the list, the clauses, and several selects combined.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

namespace {

Select& lastOf(Select& chain) {
  Select* last = &chain;
  while (last->next) last = last->next.get();
  return *last;
}

int countOf(const Select& chain) {
  int count = 0;
  for (const Select* s = &chain; s; s = s->next.get()) ++count;
  return count;
}

}  // namespace

// Whether a select stands here: the word itself, or brackets around one that are not part of a longer expression or
// of a joined source.
bool Parser::startsSelect(std::size_t ahead) const {
  std::size_t i = at + ahead;
  const std::size_t first = i;
  while (i + 1 < tokens.size() && tokens[i].kind == TokenKind::punctuation && tokens[i].raw == "(") ++i;
  if (!isWordOf(tokens[std::min(i, tokens.size() - 1)], "select")) return false;
  if (i == first) return true;
  const std::size_t behind = std::min(closingBracket(i - 1) + 1, tokens.size() - 1);
  const Token& next = tokens[behind];
  return isWordOf(next, "union") || isWordOf(next, "except") || isWordOf(next, "intersect") || next.raw == ")" ||
         (i == first + 1 && next.kind == TokenKind::end);
}

// A chain combined into one operand: what stands in brackets, or behind a stronger operator, on the right side.
Ptr<Select> Parser::asOneSelect(Ptr<Select> chain) const {
  if (!chain->next && chain->orderBy.empty()) return chain;
  const SourcePos pos = chain->pos;
  // Columns of a derived table need names, those of an operand need none.
  std::vector<std::string> columns;
  for (const SelectItem& item : chain->items) {
    if (item.expr->kind == ExprKind::star) {
      columns.clear();
      break;
    }
    columns.push_back("column" + std::to_string(columns.size() + 1));
  }
  auto derived = std::make_unique<DerivedSource>(pos, std::move(chain), "combined");
  derived->columnAliases = std::move(columns);
  auto outer = std::make_unique<Select>();
  outer->pos = pos;
  SelectItem all;
  all.pos = pos;
  all.expr = std::make_unique<Star>(pos, Name{});
  outer->items.push_back(std::move(all));
  outer->from.push_back(std::move(derived));
  return outer;
}

Ptr<Select> Parser::selectChain(SelectUse use) {
  const Nest nest(*this);
  Ptr<Select> chain = intersection();
  int count = countOf(*chain);
  Select* last = &lastOf(*chain);
  while (isWord("union") || isWord("except")) {
    const bool isUnion = isWord("union");
    take();
    const bool all = acceptWord("all");
    if (all && !isUnion) unsupported("except all");
    last->op = !isUnion ? SetOperation::except : all ? SetOperation::unionAll : SetOperation::unionDistinct;
    Ptr<Select> right = asOneSelect(intersection());
    if (right->into)
      throw SqlError(
          196,
          "SELECT INTO must be the first query in a SQL statement containing a UNION, INTERSECT or EXCEPT operator.",
          right->into->pos, 15);
    if (++count > maximumSelects) tooDeep();
    last->next = std::move(right);
    last = last->next.get();
  }
  if (acceptWord("order")) {
    expectWord("by");
    chain->orderBy = orderItems();
  }
  for (const Select* s = chain.get(); s; s = s->next.get())
    if (s->topWithTies && chain->orderBy.empty())
      throw SqlError(1062, "The TOP N WITH TIES clause is not allowed without a corresponding ORDER BY clause.", s->pos,
                     15);
  if (use == SelectUse::operand) {
    if (chain->into) throw SqlError(156, "Incorrect syntax near the keyword 'into'.", chain->into->pos, 15);
    if (!chain->orderBy.empty() && !chain->top)
      throw SqlError(
          1033,
          "The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and common "
          "table expressions, unless TOP or FOR XML is also specified.",
          chain->orderBy.front().expr->pos, 15);
  }
  if (isWord("compute")) unsupported("the compute clause");
  if (isWord("for")) {
    take();
    unsupported(peek().text.empty() ? "the for clause" : "for " + peek().text);
  }
  return chain;
}

// intersect binds stronger than union and except.
Ptr<Select> Parser::intersection() {
  Ptr<Select> chain = selectOperand();
  int count = countOf(*chain);
  while (isWord("intersect")) {
    take();
    Select& last = lastOf(*chain);
    last.op = SetOperation::intersect;
    last.next = asOneSelect(selectOperand());
    if (++count > maximumSelects) tooDeep();
  }
  return chain;
}

Ptr<Select> Parser::selectOperand() {
  if (!isMark("(")) return simpleSelect();
  const Nest nest(*this);
  take();
  Ptr<Select> chain = selectChain(SelectUse::operand);
  expectMark(")");
  return chain->orderBy.empty() ? std::move(chain) : asOneSelect(std::move(chain));
}

Ptr<Select> Parser::simpleSelect() {
  auto select = std::make_unique<Select>();
  select->pos = peek().pos;
  expectWord("select");
  if (acceptWord("distinct"))
    select->distinct = true;
  else
    acceptWord("all");
  if (isWord("top")) top(*select);
  do select->items.push_back(selectItem());
  while (acceptMark(","));
  if (acceptWord("into")) select->into = name();
  if (acceptWord("from")) select->from = sourceList();
  if (acceptWord("where")) {
    if (isWord("current")) unsupported("where current of");
    select->where = condition();
  }
  groupAndHaving(*select);
  return select;
}

// top 5, top (expression), top ?, each with percent and with ties behind it.
void Parser::top(Select& select) {
  take();
  if (acceptMark("(")) {
    select.top = scalar();
    expectMark(")");
  } else {
    const TokenKind kind = peek().kind;
    if (kind != TokenKind::integer && kind != TokenKind::decimal && kind != TokenKind::real &&
        kind != TokenKind::variable && kind != TokenKind::parameter)
      fail();
    select.top = primary();
  }
  select.topPercent = acceptWord("percent");
  if (isWord("with") && isWord("ties", 1)) {
    take();
    take();
    select.topWithTies = true;
  }
}

// t.*, db..t.*
bool Parser::isQualifiedStar() const {
  std::size_t ahead = 0;
  while (isNamePart(ahead) && isMark(".", ahead + 1)) {
    ahead += 2;
    while (isMark(".", ahead)) ++ahead;
    if (isMark("*", ahead)) return true;
  }
  return false;
}

SelectItem Parser::selectItem() {
  SelectItem item;
  item.pos = peek().pos;
  if (isMark("*")) {
    item.expr = std::make_unique<Star>(take().pos, Name{});
    return item;
  }
  if (isQualifiedStar()) {
    Name qualifier;
    qualifier.pos = item.pos;
    while (!isMark("*")) {
      qualifier.parts.push_back(isMark(".") ? std::string() : namePart());
      expectMark(".");
    }
    take();
    item.expr = std::make_unique<Star>(item.pos, std::move(qualifier));
    return item;
  }
  const auto alias = [this] {
    if (peek().isLiteral()) {
      fixLiteral(peek());
      requireQuotedName(peek().text, peek().pos);
    }
    return take().text;
  };
  if (peek().kind == TokenKind::variable && isMark("=", 1)) {
    item.variable = take().text;
    take();
    item.expr = scalar();
    return item;
  }
  if (peek().kind == TokenKind::variable) refuseCompoundAssignment(1);
  if ((isNamePart() || isText()) && isMark("=", 1)) {
    item.alias = alias();
    take();
    item.expr = scalar();
    return item;
  }
  item.expr = scalar();
  const bool hasAs = acceptWord("as");
  if (isNamePart() || isText())
    item.alias = alias();
  else if (hasAs)
    fail();
  return item;
}

void Parser::groupAndHaving(Select& select) {
  if (acceptWord("group")) {
    expectWord("by");
    if (isWord("all")) unsupported("group by all");
    do select.groupBy.push_back(scalar());
    while (acceptMark(","));
    if (isWord("with") && (isWord("rollup", 1) || isWord("cube", 1))) unsupported("group by with " + peek(1).text);
  }
  if (acceptWord("having")) select.having = condition();
}

std::vector<OrderItem> Parser::orderItems() {
  std::vector<OrderItem> items;
  do {
    OrderItem item;
    item.expr = scalar();
    item.descending = acceptWord("desc");
    if (!item.descending) acceptWord("asc");
    items.push_back(std::move(item));
  } while (acceptMark(","));
  return items;
}

// option (...) advises the server's planner and changes no result.
void Parser::statementOptions() {
  if (acceptWord("option")) skipBrackets();
}

}  // namespace tsql
