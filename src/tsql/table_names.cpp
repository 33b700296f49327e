#include "tsql/table_names.h"

#include <algorithm>

#include "tsql/catalog.h"

namespace tsql {

using namespace ast;

namespace {

class Walk {
public:
  explicit Walk(const NameVisitor& visit) : visit_(visit) {}

  void select(const Select* chain) {
    for (const Select* s = chain; s; s = s->next.get()) {
      maybe(s->top);
      for (const auto& item : s->items) maybe(item.expr);
      sources(s->from);
      maybe(s->where);
      all(s->groupBy);
      maybe(s->having);
      for (const auto& o : s->orderBy) maybe(o.expr);
    }
  }

  void sources(const std::vector<SourcePtr>& list) {
    for (const auto& s : list) source(*s);
  }

  // The target of an update or delete: a short name is a source of the from clause, which is visited as such.
  void target(const Name& name, const std::vector<SourcePtr>& from) {
    const bool isAlias = name.parts.size() == 1 && std::any_of(from.begin(), from.end(), [&](const SourcePtr& s) {
                           return hasAlias(*s, name.last());
                         });
    if (!isAlias) visit_(name);
  }

  void maybe(const ExprPtr& e) {
    if (e) expr(*e);
  }
  void all(const std::vector<ExprPtr>& list) {
    for (const auto& e : list) maybe(e);
  }

  void expr(const Expr& e) {
    switch (e.kind) {
      case ExprKind::literal:
      case ExprKind::null:
      case ExprKind::column:
      case ExprKind::star:
      case ExprKind::variable:
      case ExprKind::parameter:
        return;
      case ExprKind::unary:
        return maybe(as<Unary>(e).operand);
      case ExprKind::binary:
        maybe(as<Binary>(e).left);
        return maybe(as<Binary>(e).right);
      case ExprKind::caseWhen:
        maybe(as<Case>(e).input);
        for (const auto& w : as<Case>(e).whens) {
          maybe(w.condition);
          maybe(w.result);
        }
        return maybe(as<Case>(e).otherwise);
      case ExprKind::function:
        return all(as<Function>(e).arguments);
      case ExprKind::cast:
        return maybe(as<Cast>(e).operand);
      case ExprKind::convert:
        maybe(as<Convert>(e).operand);
        return maybe(as<Convert>(e).style);
      case ExprKind::subquery:
        return select(as<Subquery>(e).select.get());
      case ExprKind::comparison:
        maybe(as<Comparison>(e).left);
        return maybe(as<Comparison>(e).right);
      case ExprKind::logical:
        maybe(as<Logical>(e).left);
        return maybe(as<Logical>(e).right);
      case ExprKind::negation:
        return maybe(as<Negation>(e).operand);
      case ExprKind::isNull:
        return maybe(as<IsNull>(e).operand);
      case ExprKind::inList:
        maybe(as<InList>(e).operand);
        return all(as<InList>(e).items);
      case ExprKind::inSelect:
        maybe(as<InSelect>(e).operand);
        return select(as<InSelect>(e).select.get());
      case ExprKind::between:
        maybe(as<Between>(e).operand);
        maybe(as<Between>(e).low);
        return maybe(as<Between>(e).high);
      case ExprKind::like:
        maybe(as<Like>(e).operand);
        maybe(as<Like>(e).pattern);
        return maybe(as<Like>(e).escape);
      case ExprKind::exists:
        return select(as<Exists>(e).select.get());
      case ExprKind::quantified:
        maybe(as<Quantified>(e).left);
        return select(as<Quantified>(e).select.get());
    }
  }

private:
  template <class Node>
  static const Node& as(const Expr& e) {
    return static_cast<const Node&>(e);
  }

  void source(const Source& s) {
    switch (s.kind) {
      case Source::Kind::table:
        return visit_(static_cast<const TableSource&>(s).name);
      case Source::Kind::derived:
        return select(static_cast<const DerivedSource&>(s).select.get());
      case Source::Kind::join: {
        const auto& j = static_cast<const JoinSource&>(s);
        source(*j.left);
        source(*j.right);
        return maybe(j.condition);
      }
    }
  }

  static bool hasAlias(const Source& s, const std::string& name) {
    switch (s.kind) {
      case Source::Kind::table:
        return sameName(static_cast<const TableSource&>(s).alias, name);
      case Source::Kind::derived:
        return sameName(static_cast<const DerivedSource&>(s).alias, name);
      case Source::Kind::join: {
        const auto& j = static_cast<const JoinSource&>(s);
        return hasAlias(*j.left, name) || hasAlias(*j.right, name);
      }
    }
    return false;
  }

  const NameVisitor& visit_;
};

}  // namespace

void visitTableNames(const Statement& statement, const NameVisitor& visit) {
  Walk walk(visit);
  switch (statement.kind) {
    case StatementKind::select:
      return walk.select(static_cast<const SelectStatement&>(statement).select.get());
    case StatementKind::insert: {
      const auto& s = static_cast<const Insert&>(statement);
      visit(s.target);
      walk.all(s.values);
      return walk.select(s.select.get());
    }
    case StatementKind::update: {
      const auto& s = static_cast<const Update&>(statement);
      walk.target(s.target, s.from);
      for (const auto& a : s.assignments) walk.maybe(a.value);
      walk.sources(s.from);
      return walk.maybe(s.where);
    }
    case StatementKind::delete_: {
      const auto& s = static_cast<const Delete&>(statement);
      walk.target(s.target, s.from);
      walk.sources(s.from);
      return walk.maybe(s.where);
    }
    default:
      return;
  }
}

void visitTableNames(const Expr& expr, const NameVisitor& visit) {
  Walk(visit).expr(expr);
}

}  // namespace tsql
