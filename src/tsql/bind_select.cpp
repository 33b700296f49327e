#include <algorithm>

#include "tsql/binder_impl.h"

namespace tsql {

using ast::ExprKind;

// A table's name as the text has it, for messages.
static std::string spelled(const ast::Name& name) {
  std::string text;
  for (const auto& part : name.parts) text += (&part == &name.parts.front() ? "" : ".") + part;
  return text;
}

bool Scope::owns(int source) const {
  return std::any_of(leaves.begin(), leaves.end(), [&](const BoundSource* s) { return s->id == source; });
}

namespace {

class SelectBinder {
public:
  SelectBinder(Binder& b, Scope& scope, BoundSelect& out, bool onlyExistence)
      : b_(b), scope_(scope), out_(out), onlyExistence_(onlyExistence) {}

  void bind(const ast::Select& s) {
    b_.sources(s.from, out_, scope_);
    if (s.where) {
      scope_.aggregatesAllowed = false;
      out_.where = b_.condition(*s.where, scope_);
    }
    groupBy(s);
    scope_.aggregatesAllowed = true;
    items(s);
    if (s.having) out_.having = b_.condition(*s.having, scope_);
    if (s.top) top(s);
    out_.distinct = s.distinct;
    if (s.distinct)
      for (const auto& i : out_.items)
        if (isLob(i.expr->type.kind))
          fail(421,
               "The " + i.expr->type.baseName() +
                   " data type cannot be selected as DISTINCT because it is not comparable.",
               i.expr->pos);
  }

  void orderBy(const ast::Select& s) {
    for (const auto& o : s.orderBy) {
      BoundOrder order;
      order.descending = o.descending;
      order.position = positionOf(*o.expr);
      if (order.position < 0) {
        if (s.next)
          fail(104,
               "ORDER BY items must appear in the select list if the statement contains a UNION, INTERSECT or EXCEPT "
               "operator.",
               o.expr->pos);
        order.expr = b_.value(*o.expr, scope_);
        b_.requireComparable(*order.expr, o.expr->pos);
        if (out_.distinct) order.position = itemLike(*order.expr, o.expr->pos);
        if (order.position >= 0) order.expr = nullptr;
      } else {
        b_.requireComparable(*out_.items[static_cast<std::size_t>(order.position)].expr, o.expr->pos);
      }
      for (const auto& before : out_.orderBy)
        if (sameOrder(before, order))
          fail(169,
               "A column has been specified more than once in the order by list. Columns in the order by list must be "
               "unique.",
               o.expr->pos, 15);
      out_.orderBy.push_back(std::move(order));
    }
  }

  void checkGrouping() {
    out_.aggregated = scope_.sawAggregate || !out_.groupBy.empty() || out_.having;
    if (!out_.aggregated) return;
    for (const auto& i : out_.items) check(*i.expr, 8120, "the select list");
    if (out_.having) check(*out_.having, 8121, "the HAVING clause");
    for (const auto& o : out_.orderBy)
      if (o.expr) check(*o.expr, 8127, "the ORDER BY clause");
  }

private:
  void groupBy(const ast::Select& s) {
    for (const auto& g : s.groupBy) {
      scope_.aggregatesAllowed = false;
      scope_.inGroupBy = true;
      auto e = b_.value(*g, scope_);
      scope_.inGroupBy = false;
      if (holdsSelect(*e))
        fail(144,
             "Cannot use an aggregate or a subquery in an expression used for the group by list of a GROUP BY clause.",
             g->pos, 15);
      if (e->op == BoundOp::slot)
        fail(164, "Each GROUP BY expression must contain at least one column that is not an outer reference.", g->pos,
             15);
      b_.requireComparable(*e, g->pos);
      out_.groupBy.push_back(std::move(e));
    }
  }

  void items(const ast::Select& s) {
    for (const auto& i : s.items) {
      if (i.expr->kind == ExprKind::star) {
        star(static_cast<const ast::Star&>(*i.expr));
        continue;
      }
      BoundItem item;
      item.expr = b_.value(*i.expr, scope_);
      if (!i.variable.empty()) {
        item.expr = b_.castTo(std::move(item.expr), b_.variableType(i.variable, i.pos));
        b_.assigned_.push_back(i.variable);
      }
      item.name = i.alias;
      if (item.name.empty() && i.expr->kind == ExprKind::column)
        item.name = item.expr->op == BoundOp::column ? columnName(*item.expr) : "";
      item.named = !item.name.empty();
      out_.items.push_back(std::move(item));
    }
  }

  std::string columnName(const BoundExpr& e) const {
    for (const Scope* s = &scope_; s; s = s->outer)
      for (const auto* leaf : s->leaves)
        if (leaf->id == e.source) return leaf->columns[static_cast<std::size_t>(e.column)].name;
    return "";
  }

  void star(const ast::Star& star) {
    if (onlyExistence_ && star.qualifier.parts.empty() && !scope_.leaves.empty()) {
      out_.items.push_back({b_.constant(1), "", false});
      return;
    }
    bool any = false;
    for (const auto* leaf : scope_.leaves) {
      if (!star.qualifier.parts.empty() && !qualifies(star.qualifier, *leaf)) continue;
      any = true;
      for (std::size_t i = 0; i < leaf->columns.size(); ++i)
        out_.items.push_back({b_.columnOf(*leaf, static_cast<int>(i), star.pos), leaf->columns[i].name, true});
    }
    if (any) return;
    if (star.qualifier.parts.empty()) fail(263, "Must specify table to select from.", star.pos);
    fail(107,
         "The column prefix '" + star.qualifier.last() +
             "' does not match with a table name or alias name used in the query.",
         star.pos, 15);
  }

  bool qualifies(const ast::Name& q, const BoundSource& s) const {
    if (!sameName(q.last(), s.exposedName)) return false;
    if (q.parts.size() == 1) return true;
    if (s.hasAlias || !s.table) return false;
    return q.parts.size() < 3 || sameName(q.parts[q.parts.size() - 3], s.table->database);
  }

  void top(const ast::Select& s) {
    if (s.topWithTies && s.next) throwUnsupported("TOP n WITH TIES in a UNION, INTERSECT or EXCEPT", s.pos);
    Scope none;
    none.aggregatesAllowed = false;
    out_.topPercent = s.topPercent;
    out_.topWithTies = s.topWithTies;
    if (s.topPercent) {
      out_.top = b_.convertTo(b_.value(*s.top, none), typeOf(TypeKind::float_));
      return;
    }
    if (s.top->kind == ExprKind::literal) {
      const int ordinal = static_cast<const ast::Literal&>(*s.top).ordinal;
      const auto& v = b_.tokens_.literals[static_cast<std::size_t>(ordinal)].value;
      if (std::holds_alternative<std::int64_t>(v) && std::get<std::int64_t>(v) == 1 && !s.topWithTies) {
        b_.pin(ordinal);
        out_.singleRow = true;
      }
    }
    auto rows = b_.value(*s.top, none);
    const TypeKind k = rows->type.kind;  // none yet for a parameter
    if (k != TypeKind::null && !isExactInteger(k) && !(k == TypeKind::decimal && rows->type.scale == 0))
      fail(1060, "The number of rows provided for a TOP clause row count parameter must be an integer.", s.top->pos,
           15);
    out_.top = b_.convertTo(std::move(rows), typeOf(TypeKind::bigint));
    if (s.top->kind != ExprKind::literal)  // a literal is never below zero
      out_.top = b_.call("ts_top", typeOf(TypeKind::bigint), s.top->pos, std::move(out_.top));
  }

  // order by a name of the select list, or by its number: the position; -1 for anything else.
  int positionOf(const ast::Expr& e) {
    if (e.kind == ExprKind::literal) {
      const int ordinal = static_cast<const ast::Literal&>(e).ordinal;
      const auto& v = b_.tokens_.literals[static_cast<std::size_t>(ordinal)];
      if (v.type.kind != TypeKind::integer)
        fail(408,
             "A constant expression was encountered in the ORDER BY list, position " +
                 std::to_string(out_.orderBy.size() + 1) + ".",
             e.pos);
      b_.pin(ordinal);
      const auto n = std::get<std::int64_t>(v.value);
      if (n < 1 || n > static_cast<std::int64_t>(out_.items.size()))
        fail(108,
             "The ORDER BY position number " + std::to_string(n) +
                 " is out of range of the number of items in the select list.",
             e.pos);
      return static_cast<int>(n - 1);
    }
    if (e.kind != ExprKind::column) return -1;
    const auto& name = static_cast<const ast::Column&>(e).name;
    if (name.parts.size() != 1) return -1;
    int found = -1;
    for (std::size_t i = 0; i < out_.items.size(); ++i) {
      if (!sameName(out_.items[i].name, name.last())) continue;
      if (found >= 0) {
        if (b_.same(*out_.items[i].expr, *out_.items[static_cast<std::size_t>(found)].expr)) continue;
        fail(209, "Ambiguous column name '" + name.last() + "'.", e.pos);
      }
      found = static_cast<int>(i);
    }
    return found;
  }

  int itemLike(const BoundExpr& e, SourcePos pos) {
    for (std::size_t i = 0; i < out_.items.size(); ++i)
      if (b_.same(*out_.items[i].expr, e)) return static_cast<int>(i);
    fail(145, "ORDER BY items must appear in the select list if SELECT DISTINCT is specified.", pos, 15);
  }

  bool sameOrder(const BoundOrder& a, const BoundOrder& b) {
    const auto& x = a.expr ? *a.expr : *out_.items[static_cast<std::size_t>(a.position)].expr;
    const auto& y = b.expr ? *b.expr : *out_.items[static_cast<std::size_t>(b.position)].expr;
    return (a.position >= 0 && a.position == b.position) || (x.op == BoundOp::column && b_.same(x, y));
  }

  static bool holdsSelect(const BoundExpr& e) {
    return e.select || std::any_of(e.args.begin(), e.args.end(), [](const auto& a) { return holdsSelect(*a); });
  }

  // Every column of this selection stands in an aggregate of this selection or is grouped, in subqueries too.
  void check(const BoundExpr& e, int number, const char* where) {
    if ((e.op == BoundOp::aggregate || e.op == BoundOp::countStar) && e.source == scope_.id) return;
    for (const auto& g : out_.groupBy)
      if (b_.same(*g, e)) return;
    if (e.op == BoundOp::column && scope_.owns(e.source)) {
      std::string table;
      for (const auto* leaf : scope_.leaves)
        if (leaf->id == e.source) table = leaf->writtenName;
      const std::string name = table + "." + columnName(e);
      fail(number,
           "Column " + (number == 8127 ? "\"" + name + "\"" : "'" + name + "'") + " is invalid in " + where +
               " because it is not contained in either an aggregate function or the GROUP BY clause.",
           e.pos);
    }
    for (const auto& a : e.args) check(*a, number, where);
    if (e.select) check(*e.select, number, where);
  }
  void check(const BoundSelect& s, int number, const char* where) {
    for (const auto& i : s.items) check(*i.expr, number, where);
    for (const auto& f : s.from) check(*f, number, where);
    if (s.where) check(*s.where, number, where);
    for (const auto& g : s.groupBy) check(*g, number, where);
    if (s.having) check(*s.having, number, where);
    for (const auto& o : s.orderBy)
      if (o.expr) check(*o.expr, number, where);
    if (s.next) check(*s.next, number, where);
  }
  void check(const BoundSource& s, int number, const char* where) {
    if (s.derived) check(*s.derived, number, where);
    if (s.condition) check(*s.condition, number, where);
    if (s.left) check(*s.left, number, where);
    if (s.right) check(*s.right, number, where);
  }

  Binder& b_;
  Scope& scope_;
  BoundSelect& out_;
  bool onlyExistence_;
};

}  // namespace

std::unique_ptr<BoundSource> Binder::tableSource(const TableDef& t, const std::string& alias) {
  auto s = std::make_unique<BoundSource>();
  s->kind = BoundSource::Kind::table;
  s->id = nextSource_++;
  s->table = &t;
  s->exposedName = s->writtenName = alias.empty() ? t.name : alias;
  s->hasAlias = !alias.empty();
  s->columns = t.columns;
  return s;
}

std::unique_ptr<BoundSource> Binder::source(const ast::Source& s, Scope& scope) {
  switch (s.kind) {
    case ast::Source::Kind::table: {
      const auto& t = static_cast<const ast::TableSource&>(s);
      const TableDef& def = table(t.name);
      note(out_.reads, &def);
      auto r = tableSource(def, t.alias);
      if (t.alias.empty()) r->writtenName = spelled(t.name);
      scope.leaves.push_back(r.get());
      return r;
    }
    case ast::Source::Kind::derived: {
      const auto& d = static_cast<const ast::DerivedSource&>(s);
      auto r = std::make_unique<BoundSource>();
      r->kind = BoundSource::Kind::derived;
      r->derived = select(*d.select, scope.outer);
      r->id = nextSource_++;
      r->exposedName = r->writtenName = d.alias;
      r->hasAlias = true;
      if (!d.columnAliases.empty() && d.columnAliases.size() != r->derived->items.size()) {
        const bool few = d.columnAliases.size() < r->derived->items.size();
        fail(few ? 8158 : 8159,
             "'" + d.alias + "' has " + (few ? "more" : "fewer") + " columns than were specified in the column list.",
             s.pos);
      }
      for (std::size_t i = 0; i < r->derived->items.size(); ++i) {
        const auto& item = r->derived->items[i];
        ColumnDef c;
        c.name = i < d.columnAliases.size() ? d.columnAliases[i] : item.name;
        if (c.name.empty())
          fail(8155, "No column was specified for column " + std::to_string(i + 1) + " of '" + d.alias + "'.", s.pos);
        if (std::any_of(r->columns.begin(), r->columns.end(), [&](const auto& x) { return sameName(x.name, c.name); }))
          fail(8156, "The column '" + c.name + "' was specified multiple times for '" + d.alias + "'.", s.pos);
        c.type = item.expr->type.kind == TypeKind::null ? typeOf(TypeKind::integer) : item.expr->type;
        c.nullable = item.expr->nullable;
        r->columns.push_back(std::move(c));
      }
      scope.leaves.push_back(r.get());
      return r;
    }
    case ast::Source::Kind::join: {
      const auto& j = static_cast<const ast::JoinSource&>(s);
      auto r = std::make_unique<BoundSource>();
      r->kind = BoundSource::Kind::join;
      r->join = j.join;
      Scope own;
      own.outer = scope.outer;
      own.aggregatesAllowed = false;
      r->left = source(*j.left, own);
      const std::size_t leftLeaves = own.leaves.size();
      r->right = source(*j.right, own);
      if (j.condition) r->condition = condition(*j.condition, own);
      for (std::size_t i = 0; i < own.leaves.size(); ++i) {
        const bool optional = i < leftLeaves ? j.join == ast::JoinKind::right || j.join == ast::JoinKind::full
                                             : j.join == ast::JoinKind::left || j.join == ast::JoinKind::full;
        if (optional)
          for (auto& c : own.leaves[i]->columns) c.nullable = true;
        scope.leaves.push_back(own.leaves[i]);
      }
      return r;
    }
  }
  return nullptr;
}

void Binder::sources(const std::vector<ast::SourcePtr>& from, BoundSelect& out, Scope& scope) {
  for (const auto& f : from) out.from.push_back(source(*f, scope));
  for (std::size_t i = 0; i < scope.leaves.size(); ++i)
    for (std::size_t k = i + 1; k < scope.leaves.size(); ++k) {
      const auto &a = *scope.leaves[i], &b = *scope.leaves[k];
      const bool sameObject =
          !a.hasAlias && !b.hasAlias && a.table && b.table && !sameName(a.table->database, b.table->database);
      if (sameName(a.exposedName, b.exposedName) && !sameObject)
        if (a.hasAlias && b.hasAlias)
          fail(1011, "The correlation name '" + a.exposedName + "' is specified multiple times in a FROM clause.", {});
      if (sameName(a.exposedName, b.exposedName) && !sameObject)
        fail(1013,
             "The objects \"" + a.exposedName + "\" and \"" + b.exposedName +
                 "\" in the FROM clause have the same exposed names. Use correlation names to distinguish them.",
             {});
    }
}

std::unique_ptr<BoundSelect> Binder::select(const ast::Select& s, Scope* outer, bool onlyExistence) {
  auto out = std::make_unique<BoundSelect>();
  Scope scope;
  scope.id = nextScope_++;
  scope.outer = outer;
  SelectBinder binder(*this, scope, *out, onlyExistence && !s.next);
  binder.bind(s);
  binder.orderBy(s);
  binder.checkGrouping();
  if (!s.next) {
    out->singleRow = out->singleRow || (out->aggregated && out->groupBy.empty()) || (s.from.empty());
    return out;
  }

  // A union: every column has the highest type of its operands.
  out->op = s.op;
  out->next = select(*s.next, outer);
  out->singleRow = false;
  if (out->items.size() != out->next->items.size())
    fail(205,
         "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of expressions in "
         "their target lists.",
         s.pos);
  for (std::size_t i = 0; i < out->items.size(); ++i) {
    auto& a = out->items[i].expr;
    const SqlType t = common(a->type, out->next->items[i].expr->type, s.pos);
    bool nullable = false;
    for (auto* part = out.get(); part; part = part->next.get()) nullable = nullable || part->items[i].expr->nullable;
    for (auto* part = out.get(); part; part = part->next.get()) {
      auto& e = part->items[i].expr;
      e = convertTo(std::move(e), t);
    }
    a->nullable = nullable;
  }
  return out;
}

}  // namespace tsql
