// The tree as text: selects and their sources.

#include "tsql/printer_impl.h"

namespace tsql {

using namespace ast;

void Printer::select(const Select& chain) {
  for (const Select* s = &chain; s; s = s->next.get()) {
    oneSelect(*s);
    switch (s->op) {
      case SetOperation::unionAll:
        put(" union all ");
        break;
      case SetOperation::unionDistinct:
        put(" union ");
        break;
      case SetOperation::except:
        put(" except ");
        break;
      case SetOperation::intersect:
        put(" intersect ");
        break;
      case SetOperation::none:
        break;
    }
  }
  if (chain.orderBy.empty()) return;
  put(" order by ");
  commaList(chain.orderBy, [this](const OrderItem& item) {
    expr(*item.expr);
    if (item.descending) put(" desc");
  });
}

void Printer::oneSelect(const Select& s) {
  put("select ");
  if (s.distinct) put("distinct ");
  if (s.top) {
    put("top (");
    expr(*s.top);
    put(s.topPercent ? ") percent " : ") ");
    if (s.topWithTies) put("with ties ");
  }
  commaList(s.items, [this](const SelectItem& item) {
    if (!item.variable.empty()) put(item.variable + " = ");
    expr(*item.expr);
    if (item.alias.empty()) return;
    put(" as ");
    identifier(item.alias);
  });
  if (s.into) {
    put(" into ");
    name(*s.into);
  }
  if (!s.from.empty()) {
    put(" from ");
    sources(s.from);
  }
  if (s.where) {
    put(" where ");
    expr(*s.where);
  }
  if (!s.groupBy.empty()) {
    put(" group by ");
    expressions(s.groupBy);
  }
  if (s.having) {
    put(" having ");
    expr(*s.having);
  }
}

void Printer::sources(const std::vector<SourcePtr>& list) {
  commaList(list, [this](const SourcePtr& s) { source(*s); });
}

void Printer::source(const Source& s) {
  switch (s.kind) {
    case Source::Kind::table: {
      const auto& table = static_cast<const TableSource&>(s);
      name(table.name);
      if (table.alias.empty()) return;
      put(" as ");
      return identifier(table.alias);
    }
    case Source::Kind::derived: {
      const auto& derived = static_cast<const DerivedSource&>(s);
      subquery(*derived.select);
      put(" as ");
      identifier(derived.alias);
      if (derived.columnAliases.empty()) return;
      put(" (");
      commaList(derived.columnAliases, [this](const std::string& column) { identifier(column); });
      return put(")");
    }
    case Source::Kind::join:
      break;
  }
  const auto& join = static_cast<const JoinSource&>(s);
  source(*join.left);
  switch (join.join) {
    case JoinKind::inner:
      put(" inner join ");
      break;
    case JoinKind::left:
      put(" left join ");
      break;
    case JoinKind::right:
      put(" right join ");
      break;
    case JoinKind::full:
      put(" full join ");
      break;
    case JoinKind::cross:
      put(" cross join ");
      break;
  }
  const bool brackets = join.right->kind == Source::Kind::join;
  if (brackets) out += '(';
  source(*join.right);
  if (brackets) out += ')';
  if (!join.condition) return;
  put(" on ");
  expr(*join.condition);
}

}  // namespace tsql
