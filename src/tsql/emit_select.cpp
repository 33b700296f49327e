#include <algorithm>
#include <array>

#include "tsql/emitter_impl.h"

namespace tsql {

void Emitter::source(const BoundSource& s) {
  switch (s.kind) {
    case BoundSource::Kind::table:
      add(s.table->storage);
      add(" AS s");
      add(static_cast<std::int64_t>(s.id));
      break;
    case BoundSource::Kind::derived:
      add("(");
      select(*s.derived, false);
      add(") AS s");
      add(static_cast<std::int64_t>(s.id));
      break;
    case BoundSource::Kind::join: {
      static constexpr std::array<const char*, 5> words = {" JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN ",
                                                           " JOIN "};
      source(*s.left);
      add(words[static_cast<std::size_t>(s.join)]);
      const bool nested = s.right->kind == BoundSource::Kind::join;
      if (nested) add("(");
      source(*s.right);
      if (nested) add(")");
      if (s.condition) {
        add(" ON ");
        expr(*s.condition);
      }
      break;
    }
  }
}

bool Emitter::outerJoin(const BoundSource& s) {
  return s.kind == BoundSource::Kind::join &&
         (s.join == ast::JoinKind::right || s.join == ast::JoinKind::full || outerJoin(*s.left) || outerJoin(*s.right));
}

bool Emitter::inBrackets(const BoundSelect& s, const BoundSource& item) {
  return s.from.size() > 1 && outerJoin(item);
}

void Emitter::fromWhere(const BoundSelect& s) {
  for (std::size_t i = 0; i < s.from.size(); ++i) {
    add(i ? "," : " FROM ");
    const bool brackets = inBrackets(s, *s.from[i]);
    if (brackets) add("(");
    source(*s.from[i]);
    if (brackets) add(")");
  }
  if (s.where) {
    add(" WHERE ");
    expr(*s.where);
  }
}

static bool hasAggregate(const BoundExpr& e) {
  return e.op == BoundOp::aggregate || e.op == BoundOp::countStar ||
         std::any_of(e.args.begin(), e.args.end(), [](const auto& a) { return hasAggregate(*a); });
}

void Emitter::core(const BoundSelect& s, bool inUnion) {
  // A having over all rows: SQLite takes it only where a column of the result is an aggregate.
  const bool oneGroup =
      s.having && s.groupBy.empty() &&
      std::none_of(s.items.begin(), s.items.end(), [](const auto& i) { return hasAggregate(*i.expr); });
  if (oneGroup) {
    add("SELECT ");
    for (std::size_t i = 0; i < s.items.size(); ++i) add((i ? ",c" : "c") + std::to_string(i));
    add(" FROM (");
  }
  add(s.distinct ? "SELECT DISTINCT " : "SELECT ");
  for (std::size_t i = 0; i < s.items.size(); ++i) {
    if (i) add(",");
    if (s.distinct || inUnion)
      collated(*s.items[i].expr);
    else
      expr(*s.items[i].expr);
    add(" AS c");
    add(static_cast<std::int64_t>(i));
  }
  if (s.topPercent || s.topWithTies)
    for (std::size_t i = 0; i < s.orderBy.size(); ++i)
      if (s.orderBy[i].expr) {
        add(",");
        expr(*s.orderBy[i].expr);
        add(" AS k" + std::to_string(i));
      }
  if (oneGroup) add(",count(*) AS n");
  fromWhere(s);
  if (!s.groupBy.empty()) {
    add(" GROUP BY ");
    for (std::size_t i = 0; i < s.groupBy.size(); ++i) {
      if (i) add(",");
      collated(*s.groupBy[i]);
    }
  }
  if (s.having) {
    add(" HAVING ");
    expr(*s.having);
  }
  if (oneGroup) add(")");
}

void Emitter::order(const BoundSelect& s, bool natural, bool combined) {
  if (s.orderBy.empty()) {
    if (natural && !s.distinct && !s.aggregated) naturalOrder(s);
    return;
  }
  add(" ORDER BY ");
  for (std::size_t i = 0; i < s.orderBy.size(); ++i) {
    if (i) add(",");
    const auto& o = s.orderBy[i];
    const BoundExpr& e = o.expr ? *o.expr : *s.items[static_cast<std::size_t>(o.position)].expr;
    const bool wide = e.type.kind == TypeKind::decimal && e.type.precision > 18;
    if (wide) add("ts_dkey(");
    if (o.expr)
      expr(e);
    else if (wide)
      add("c" + std::to_string(o.position));
    else
      add(static_cast<std::int64_t>(o.position) + 1);
    if (wide) add(")");
    if (isText(e.type.kind) && !combined) add(collate);
    if (o.descending) add(" DESC");
  }
}

// The tables whose row numbers can be named: those of a join in brackets cannot, SQLite makes a subquery of it.
void Emitter::leaves(const BoundSource& s, std::vector<const BoundSource*>& out) const {
  if (s.kind == BoundSource::Kind::join) {
    leaves(*s.left, out);
    if (s.right->kind != BoundSource::Kind::join) leaves(*s.right, out);
  } else if (s.table) {
    out.push_back(&s);
  }
}

bool Emitter::hasOuterJoin(const BoundSource& s) {
  return s.kind == BoundSource::Kind::join &&
         (s.join != ast::JoinKind::inner || hasOuterJoin(*s.left) || hasOuterJoin(*s.right));
}

// The first item of the selection that is a column of the table; the number of items when none is.
std::size_t Emitter::firstItemOf(const BoundSelect& s, const BoundSource& table) {
  std::size_t i = 0;
  while (i < s.items.size() && !(s.items[i].expr->op == BoundOp::column && s.items[i].expr->source == table.id)) ++i;
  return i;
}

// Rows come in the order of their row numbers, first by the table that the selection names first: lines that are
// selected with something of their account come as they were entered, whatever stands first in the from clause. What
// an outer join may leave out never leads.
void Emitter::naturalOrder(const BoundSelect& s) {
  std::vector<const BoundSource*> tables;
  for (const auto& f : s.from)
    if (!inBrackets(s, *f)) leaves(*f, tables);
  if (std::none_of(s.from.begin(), s.from.end(), [](const auto& f) { return hasOuterJoin(*f); }))
    std::stable_sort(tables.begin(), tables.end(), [&](const BoundSource* a, const BoundSource* b) {
      return firstItemOf(s, *a) < firstItemOf(s, *b);
    });
  for (std::size_t i = 0; i < tables.size(); ++i) {
    add(i ? "," : " ORDER BY ");
    add("s" + std::to_string(tables[i]->id) + "." + tables[i]->table->rowNumber);
  }
}

// top with percent or ties: the rows are numbered in their order, and a row's number decides.
void Emitter::ranked(const BoundSelect& s, bool withOrder) {
  add("SELECT ");
  for (std::size_t i = 0; i < s.items.size(); ++i) add((i ? ",c" : "c") + std::to_string(i));
  add(" FROM (SELECT *,");
  add(s.topWithTies ? "rank() OVER (" : "row_number() OVER (");
  for (std::size_t i = 0; withOrder && i < s.orderBy.size(); ++i) {
    const auto& o = s.orderBy[i];
    const BoundExpr& e = o.expr ? *o.expr : *s.items[static_cast<std::size_t>(o.position)].expr;
    const std::string key = o.expr ? "k" + std::to_string(i) : "c" + std::to_string(o.position);
    const bool wide = e.type.kind == TypeKind::decimal && e.type.precision > 18;
    add(i ? "," : "ORDER BY ");
    add(wide ? "ts_dkey(" + key + ")" : key);
    if (isText(e.type.kind)) add(collate);
    if (o.descending) add(" DESC");
  }
  add(") AS r,count(*) OVER () AS n FROM (");
  core(s, false);
  if (s.orderBy.empty()) order(s, true);
  add(")) WHERE r<=");
  if (s.topPercent) add("ts_percent(");
  expr(*s.top);
  if (s.topPercent) add(",n)");
  add(" ORDER BY r");
}

void Emitter::limit(const BoundSelect& s) {
  if (!s.top) return;
  add(" LIMIT ");
  expr(*s.top);
}

static const char* combination(ast::SetOperation op) {
  switch (op) {
    case ast::SetOperation::unionAll:
      return " UNION ALL ";
    case ast::SetOperation::except:
      return " EXCEPT ";
    case ast::SetOperation::intersect:
      return " INTERSECT ";
    default:
      return " UNION ";
  }
}

void Emitter::select(const BoundSelect& s, bool natural) {
  const auto isRanked = [](const BoundSelect& x) { return x.topPercent || x.topWithTies; };
  if (!s.next) {
    if (isRanked(s)) return ranked(s, true);
    core(s, false);
    order(s, natural || s.top);
    limit(s);
    return;
  }
  // Wide decimals are ordered by a function of theirs, which SQLite does not take on selects that are combined.
  const bool wide = std::any_of(s.orderBy.begin(), s.orderBy.end(), [&](const BoundOrder& o) {
    const SqlType& t = s.items[static_cast<std::size_t>(o.position)].expr->type;
    return t.kind == TypeKind::decimal && t.precision > 18;
  });
  if (wide) add("SELECT * FROM (");
  // order by stands on the first select but orders the whole.
  for (const BoundSelect* part = &s; part; part = part->next.get()) {
    if (part->top) {
      add("SELECT * FROM (");
      if (isRanked(*part)) {
        ranked(*part, false);
      } else {
        core(*part, true);
        limit(*part);
      }
      add(")");
    } else {
      core(*part, true);
    }
    if (part->next) add(combination(part->op));
  }
  if (wide) add(")");
  // The columns of the parts are collated already, and on selects that are combined SQLite takes a key of that kind for
  // a column of their tables.
  order(s, false, !wide);
}

}  // namespace tsql
