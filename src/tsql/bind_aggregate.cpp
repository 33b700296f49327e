// Aggregates: which selection's rows one gathers, and of what type it is.

#include <algorithm>

#include "tsql/binder_impl.h"

namespace tsql {
namespace {

bool holdsSelect(const BoundExpr& e) {
  return e.select || std::any_of(e.args.begin(), e.args.end(), [](const auto& a) { return holdsSelect(*a); });
}

bool namesColumnOf(const BoundExpr& e, const Scope& scope) {
  return (e.op == BoundOp::column && scope.owns(e.source)) ||
         std::any_of(e.args.begin(), e.args.end(), [&](const auto& a) { return namesColumnOf(*a, scope); });
}

// An aggregate gathers the rows of the innermost selection that a column in it belongs to; of its own when none does.
Scope& gatheringScope(const BoundExpr* argument, Scope& own) {
  if (argument)
    for (Scope* s = &own; s; s = s->outer)
      if (namesColumnOf(*argument, *s)) return *s;
  return own;
}

void requireAggregate(Scope& scope, SourcePos pos) {
  if (scope.inGroupBy)
    fail(144, "Cannot use an aggregate or a subquery in an expression used for the group by list of a GROUP BY clause.",
         pos, 15);
  if (!scope.aggregatesAllowed)
    fail(147,
         "An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a HAVING clause "
         "or a select list, and the column being aggregated is an outer reference.",
         pos, 15);
  if (scope.aggregateDepth > 0)
    fail(130, "Cannot perform an aggregate function on an expression containing an aggregate or a subquery.", pos, 15);
  scope.sawAggregate = true;
}

}  // namespace

BoundPtr Binder::aggregate(const ast::Function& f, const std::string& name, Scope& own) {
  const SqlType countType = name == "count_big" ? typeOf(TypeKind::bigint) : typeOf(TypeKind::integer);
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::aggregate;
  e->text = name == "count_big" ? "count" : name;
  e->distinct = f.distinct;
  e->pos = f.pos;
  if (e->text == "count" && f.arguments[0]->kind == ast::ExprKind::star) {
    requireAggregate(own, f.pos);
    e->op = BoundOp::countStar;
    e->source = own.id;
    e->type = countType;
    e->nullable = false;
    return e;
  }
  ++own.aggregateDepth;
  auto x = value(*f.arguments[0], own);
  --own.aggregateDepth;
  if (holdsSelect(*x))
    fail(130, "Cannot perform an aggregate function on an expression containing an aggregate or a subquery.", f.pos,
         15);
  Scope& scope = gatheringScope(x.get(), own);
  requireAggregate(scope, f.pos);
  e->source = scope.id;
  const TypeKind k = x->type.kind;
  if (x->op == BoundOp::null && k == TypeKind::null)
    fail(8117, "Operand data type NULL is invalid for " + name + " operator.", f.pos);
  if (e->text == "count") {
    e->type = countType;
    e->nullable = false;
  } else if (e->text == "min" || e->text == "max") {
    if (k == TypeKind::bit || isLob(k) || k == TypeKind::uniqueidentifier)
      fail(8117, "Operand data type " + x->type.baseName() + " is invalid for " + e->text + " operator.", f.pos);
    e->type = x->type;
  } else {
    if (k == TypeKind::bit || !isNumeric(k))
      fail(8117, "Operand data type " + x->type.baseName() + " is invalid for " + e->text + " operator.", f.pos);
    if (isMoney(k))
      e->type = typeOf(TypeKind::money);
    else if (k == TypeKind::decimal)
      e->type = decimalType(38, e->text == "avg" ? std::max(6, x->type.scale) : x->type.scale);
    else if (isApproximate(k))
      e->type = typeOf(TypeKind::float_);
    else
      e->type = typeOf(k == TypeKind::bigint ? TypeKind::bigint : TypeKind::integer);
  }
  e->args.push_back(std::move(x));
  return e;
}

}  // namespace tsql
