// Conditions: comparisons, lists, subqueries, and what combines them.

#include "tsql/binder_impl.h"

namespace tsql {

using ast::ExprKind;

namespace {

// not (x op y) is x opposite(op) y, also where one side is Null.
ast::CompareOp opposite(ast::CompareOp op) {
  switch (op) {
    case ast::CompareOp::equal:
      return ast::CompareOp::notEqual;
    case ast::CompareOp::notEqual:
      return ast::CompareOp::equal;
    case ast::CompareOp::less:
      return ast::CompareOp::greaterEqual;
    case ast::CompareOp::lessEqual:
      return ast::CompareOp::greater;
    case ast::CompareOp::greater:
      return ast::CompareOp::lessEqual;
    case ast::CompareOp::greaterEqual:
      return ast::CompareOp::less;
  }
  return op;
}

}  // namespace

std::unique_ptr<BoundSelect> Binder::oneColumn(const ast::Select& s, Scope& scope, SourcePos pos) {
  auto bound = select(s, &scope);
  if (bound->items.size() != 1)
    fail(116,
         "Only one expression can be specified in the select list when the subquery is not introduced with EXISTS.",
         pos);
  return bound;
}

// x op any (select y): there is a y with x op y; unknown when there is none but some comparison is unknown.
// x op all (select y): not any y with the opposite. = any and <> all are in and not in.
BoundPtr Binder::quantified(const ast::Quantified& q, Scope& scope) {
  const bool all = q.quantifier == ast::Quantifier::all;
  const ast::CompareOp op = all ? opposite(q.op) : q.op;
  auto make = [&](BoundOp kind) {
    auto r = std::make_unique<BoundExpr>();
    r->op = kind;
    r->pos = q.pos;
    r->type = typeOf(TypeKind::bit);
    return r;
  };
  auto x = value(*q.left, scope);
  auto rows = oneColumn(*q.select, scope, q.pos);
  refuseLongTexts(q.op, *x, *rows->items[0].expr, q.pos);
  if (op == ast::CompareOp::equal) {
    auto r = make(BoundOp::inSelect);
    r->negated = all;
    const SqlType t = common(x->type, rows->items[0].expr->type, q.pos);
    r->args.push_back(convertTo(std::move(x), t));
    for (auto* s = rows.get(); s; s = s->next.get()) s->items[0].expr = convertTo(std::move(s->items[0].expr), t);
    r->select = std::move(rows);
    return r;
  }
  // The rows are a source of their own, whose only column the comparison takes.
  auto y = make(BoundOp::column);
  y->source = nextSource_++;
  y->column = 0;
  y->text = "c0";
  y->type = rows->items[0].expr->type;
  auto r = make(BoundOp::quantified);
  r->negated = all;
  r->compareOp = op;
  r->column = y->source;
  r->args.push_back(comparison(op, std::move(x), std::move(y), q.pos));
  r->select = std::move(rows);
  return r;
}

BoundPtr Binder::condition(const ast::Expr& e, Scope& scope) {
  auto make = [&](BoundOp op) {
    auto r = std::make_unique<BoundExpr>();
    r->op = op;
    r->pos = e.pos;
    r->type = typeOf(TypeKind::bit);
    return r;
  };
  switch (e.kind) {
    case ExprKind::comparison: {
      const auto& c = static_cast<const ast::Comparison&>(e);
      auto l = value(*c.left, scope);
      auto r = value(*c.right, scope);
      return comparison(c.op, std::move(l), std::move(r), c.pos);
    }
    case ExprKind::logical: {
      const auto& l = static_cast<const ast::Logical&>(e);
      auto r = make(l.isAnd ? BoundOp::and_ : BoundOp::or_);
      r->args.push_back(condition(*l.left, scope));
      r->args.push_back(condition(*l.right, scope));
      return r;
    }
    case ExprKind::negation: {
      auto r = make(BoundOp::not_);
      r->args.push_back(condition(*static_cast<const ast::Negation&>(e).operand, scope));
      return r;
    }
    case ExprKind::isNull: {
      const auto& n = static_cast<const ast::IsNull&>(e);
      auto r = make(BoundOp::isNull);
      r->negated = n.negated;
      r->args.push_back(value(*n.operand, scope));
      return r;
    }
    case ExprKind::inList: {
      // x in (a, b) is x=a or x=b: each item compares by its own pair of types.
      const auto& in = static_cast<const ast::InList&>(e);
      auto r = make(BoundOp::inList);
      r->negated = in.negated;
      auto x = value(*in.operand, scope);
      SqlType t = x->type;
      std::vector<BoundPtr> items;
      for (const auto& i : in.items) {
        items.push_back(value(*i, scope));
        refuseLongTexts(ast::CompareOp::equal, *x, *items.back(), e.pos);
        t = common(t, items.back()->type, e.pos);
      }
      r->args.push_back(convertTo(std::move(x), t));
      for (auto& i : items) r->args.push_back(convertTo(std::move(i), t));
      return r;
    }
    case ExprKind::inSelect: {
      const auto& in = static_cast<const ast::InSelect&>(e);
      auto r = make(BoundOp::inSelect);
      r->negated = in.negated;
      auto x = value(*in.operand, scope);
      r->select = oneColumn(*in.select, scope, e.pos);
      refuseLongTexts(ast::CompareOp::equal, *x, *r->select->items[0].expr, e.pos);
      const SqlType t = common(x->type, r->select->items[0].expr->type, e.pos);
      r->args.push_back(convertTo(std::move(x), t));
      for (auto* s = r->select.get(); s; s = s->next.get())
        s->items[0].expr = convertTo(std::move(s->items[0].expr), t);
      return r;
    }
    case ExprKind::between: {
      const auto& b = static_cast<const ast::Between&>(e);
      auto both = make(BoundOp::and_);
      auto low = comparison(ast::CompareOp::greaterEqual, value(*b.operand, scope), value(*b.low, scope), e.pos);
      auto high = comparison(ast::CompareOp::lessEqual, value(*b.operand, scope), value(*b.high, scope), e.pos);
      both->args.push_back(std::move(low));
      both->args.push_back(std::move(high));
      if (!b.negated) return both;
      auto r = make(BoundOp::not_);
      r->args.push_back(std::move(both));
      return r;
    }
    case ExprKind::like: {
      const auto& l = static_cast<const ast::Like&>(e);
      auto r = make(BoundOp::like);
      r->negated = l.negated;
      for (const ast::Expr* part : {l.operand.get(), l.pattern.get(), l.escape.get()}) {
        if (!part) continue;
        auto x = value(*part, scope);
        if (!isText(x->type.kind) && x->op != BoundOp::null) {
          if (isBinary(x->type.kind))
            fail(8116, "Argument data type " + x->type.baseName() + " is invalid for argument 1 of like function.",
                 e.pos);
          x = convertTo(std::move(x), typeOf(TypeKind::nvarchar, 4000));
        }
        r->args.push_back(std::move(x));
      }
      return r;
    }
    case ExprKind::exists: {
      auto r = make(BoundOp::exists);
      r->select = select(*static_cast<const ast::Exists&>(e).select, &scope, true);
      return r;
    }
    case ExprKind::quantified: {
      const auto& q = static_cast<const ast::Quantified&>(e);
      return quantified(q, scope);
    }
    default:
      fail(4145, "An expression of non-boolean type specified in a context where a condition is expected.", e.pos);
  }
}

}  // namespace tsql
