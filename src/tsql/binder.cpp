#include <algorithm>

#include "tsql/binder_impl.h"

namespace tsql {

void fail(int number, const std::string& message, SourcePos pos, int severity) {
  throw SqlError(number, message, pos, severity);
}

bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower(a[i]) != lower(b[i])) return false;
  return true;
}

int TableDef::find(std::string_view columnName) const {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (sameName(columns[i].name, columnName)) return static_cast<int>(i);
  return -1;
}

int TableDef::identityColumn() const {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].identity) return static_cast<int>(i);
  return -1;
}

namespace {

std::string spelled(const ast::Name& n) {
  std::string s;
  for (std::size_t i = 0; i < n.parts.size(); ++i) s += (i ? "." : "") + n.parts[i];
  return s;
}

// Does the qualifier of a column (all parts but the last) mean this source?
bool means(const ast::Name& n, const BoundSource& s, const std::string& currentDatabase) {
  const std::size_t q = n.parts.size() - 1;
  const std::string& object = n.parts[q - 1];
  if (!sameName(object, s.exposedName)) return false;
  if (q == 1) return true;
  if (s.hasAlias || !s.table) return false;
  const std::string& schema = n.parts[q - 2];
  if (!schema.empty() && !sameName(schema, "dbo")) return false;
  if (q == 2) return sameName(s.table->database, currentDatabase);
  return sameName(n.parts[q - 3], s.table->database);
}

}  // namespace

void Binder::notBound(const ast::Name& n) const {
  fail(4104, "The multi-part identifier \"" + spelled(n) + "\" could not be bound.", n.pos);
}

const TableDef& Binder::table(const ast::Name& name) {
  const TableDef* t = catalog_.table(name);
  if (!t) fail(208, "Invalid object name '" + spelled(name) + "'.", name.pos);
  return *t;
}

BoundPtr Binder::slotFor(const Slot& slot, bool nullable, SourcePos pos) {
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::slot;
  e->slotIndex = static_cast<int>(out_.slots.size());
  e->type = slot.constantType;
  e->nullable = nullable;
  e->pos = pos;
  if (slot.source == Slot::Source::literal && !exactLiterals_ && isText(e->type.kind))
    e->type.length = isUnicode(e->type.kind) ? 4000 : 8000;
  out_.slots.push_back(slot);
  return e;
}

BoundPtr Binder::constant(std::int64_t number) const {
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::integer;
  e->number = number;
  e->type = typeOf(TypeKind::bigint);
  e->nullable = false;
  return e;
}

BoundPtr Binder::call(std::string name, SqlType type, SourcePos pos) const {
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::call;
  e->text = std::move(name);
  e->type = type;
  e->pos = pos;
  return e;
}

void Binder::pin(int literal) {
  for (const auto& p : out_.pins)
    if (p.ordinal == literal) return;
  const auto& v = tokens_.literals[static_cast<std::size_t>(literal)];
  out_.pins.push_back({literal, v.type, v.value});
}

bool Binder::same(const BoundExpr& a, const BoundExpr& b) {
  if (a.op != b.op || a.text != b.text || a.number != b.number || a.source != b.source || a.column != b.column ||
      a.negated != b.negated || a.distinct != b.distinct || a.compareOp != b.compareOp || a.select || b.select ||
      a.args.size() != b.args.size())
    return false;
  if (a.op == BoundOp::slot) {
    const Slot& x = out_.slots[static_cast<std::size_t>(a.slotIndex)];
    const Slot& y = out_.slots[static_cast<std::size_t>(b.slotIndex)];
    if (x.source != y.source || x.negate != y.negate) return false;
    switch (x.source) {
      case Slot::Source::parameter:
        return x.ordinal == y.ordinal;
      case Slot::Source::variable:
        return sameName(x.name, y.name);
      case Slot::Source::constant:
        return x.constant == y.constant;
      case Slot::Source::identity:
        return false;
      case Slot::Source::literal:
        break;
    }
    const auto& u = tokens_.literals[static_cast<std::size_t>(x.ordinal)].value;
    const auto& v = tokens_.literals[static_cast<std::size_t>(y.ordinal)].value;
    if (!(u == v)) return false;
    pin(x.ordinal);
    pin(y.ordinal);
    return true;
  }
  for (std::size_t i = 0; i < a.args.size(); ++i)
    if (!same(*a.args[i], *b.args[i])) return false;
  return true;
}

BoundPtr Binder::columnOf(const BoundSource& s, int index, SourcePos pos) const {
  auto e = std::make_unique<BoundExpr>();
  const auto& c = s.columns[static_cast<std::size_t>(index)];
  e->op = BoundOp::column;
  e->source = s.id;
  e->column = index;
  e->type = c.type;
  e->nullable = c.nullable;
  e->pos = pos;
  e->text = s.table ? c.name : "c" + std::to_string(index);
  e->baseColumn = s.table != nullptr;
  return e;
}

BoundPtr Binder::column(const ast::Column& c, Scope& scope) {
  const std::string& name = c.name.last();
  if (inValues_ && !scope.outer && scope.leaves.empty()) {
    if (c.name.parts.size() > 1) notBound(c.name);
    fail(128,
         "The name \"" + name +
             "\" is not permitted in this context. Valid expressions are constants, constant expressions, and (in some "
             "contexts) variables. Column names are not permitted.",
         c.pos, 15);
  }
  auto find = [&](const BoundSource& s) {
    for (std::size_t i = 0; i < s.columns.size(); ++i)
      if (sameName(s.columns[i].name, name)) return static_cast<int>(i);
    return -1;
  };
  bool qualifierKnown = false;
  for (Scope* s = &scope; s; s = s->outer) {
    BoundSource* found = nullptr;
    int index = -1;
    for (auto* leaf : s->leaves) {
      if (c.name.parts.size() > 1 && !means(c.name, *leaf, catalog_.currentDatabase())) continue;
      if (c.name.parts.size() > 1) qualifierKnown = true;
      const int i = find(*leaf);
      if (i < 0) continue;
      if (found) fail(209, "Ambiguous column name '" + name + "'.", c.pos);
      found = leaf;
      index = i;
    }
    if (found) return columnOf(*found, index, c.pos);
    if (qualifierKnown) break;
  }
  if (c.name.parts.size() > 1 && !qualifierKnown) notBound(c.name);
  fail(207, "Invalid column name '" + name + "'.", c.pos);
}

SqlType Binder::variableType(const std::string& name, SourcePos pos) {
  const auto type = catalog_.variable(name);
  if (!type) fail(137, "Must declare the scalar variable \"" + name + "\".", pos, 15);
  if (name.rfind("@@", 0) != 0) out_.variables.emplace_back(name, *type);
  return *type;
}

void Binder::note(std::vector<const TableDef*>& list, const TableDef* t) const {
  if (t && std::find(list.begin(), list.end(), t) == list.end()) list.push_back(t);
}

BoundStatement Binder::finish() {
  return std::move(out_);
}

BoundStatement bindSelect(const ast::Select& select, const TokenStream& tokens, Catalog& catalog) {
  Binder b(tokens, catalog);
  b.exactLiterals_ = select.into.has_value();
  const auto assigns = [](const ast::SelectItem& i) { return !i.variable.empty(); };
  if (std::any_of(select.items.begin(), select.items.end(), assigns)) {
    if (!std::all_of(select.items.begin(), select.items.end(), assigns) || select.next || select.into)
      fail(141,
           "A SELECT statement that assigns a value to a variable must not be combined with data-retrieval operations.",
           select.pos, 15);
    b.rowByRow_ = !select.from.empty();
  }
  b.out_.select = b.select(select, nullptr);
  return b.finish();
}

BoundStatement bindCondition(const ast::Expr& condition, const TokenStream& tokens, Catalog& catalog) {
  Binder b(tokens, catalog);
  Scope scope;
  scope.aggregatesAllowed = false;
  auto result = std::make_unique<BoundSelect>();
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::caseWhen;
  e->type = typeOf(TypeKind::integer);
  e->negated = true;
  e->args.push_back(b.condition(condition, scope));
  e->args.push_back(b.constant(1));
  e->args.push_back(b.constant(0));
  result->items.push_back({std::move(e), "", false});
  b.out_.select = std::move(result);
  return b.finish();
}

BoundStatement bindScalar(const ast::Expr& expr, const TokenStream& tokens, Catalog& catalog, SqlType type,
                          Assigned assigned) {
  Binder b(tokens, catalog);
  Scope scope;
  scope.aggregatesAllowed = false;
  auto result = std::make_unique<BoundSelect>();
  auto v = b.value(expr, scope);
  if (type.kind != TypeKind::null)
    v = assigned == Assigned::column ? b.convertTo(std::move(v), type, true) : b.castTo(std::move(v), type);
  result->items.push_back({std::move(v), "", false});
  b.out_.select = std::move(result);
  return b.finish();
}

BoundStatement bindTableExpression(const ast::Expr& expr, const TokenStream& tokens, const TableDef& table,
                                   Catalog& catalog, bool condition) {
  Binder b(tokens, catalog);
  b.definitionTable_ = &table;
  Scope scope;
  scope.aggregatesAllowed = false;
  auto source = b.tableSource(table, "");
  scope.leaves.push_back(source.get());
  auto result = std::make_unique<BoundSelect>();
  result->items.push_back({condition ? b.condition(expr, scope) : b.value(expr, scope), "", false});
  result->from.push_back(std::move(source));
  b.out_.select = std::move(result);
  return b.finish();
}

}  // namespace tsql
