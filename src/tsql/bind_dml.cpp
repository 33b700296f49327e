// insert, update, delete.

#include <algorithm>

#include "tsql/binder_impl.h"
#include "tsql/parser.h"

namespace tsql {

namespace {

bool hasSelect(const BoundExpr& e) {
  if (e.select) return true;
  return std::any_of(e.args.begin(), e.args.end(), [](const BoundPtr& a) { return hasSelect(*a); });
}

std::string lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

bool isDefaultWord(const ast::Expr& e) {
  return e.kind == ast::ExprKind::column && static_cast<const ast::Column&>(e).name.parts.size() == 1 &&
         lower(static_cast<const ast::Column&>(e).name.last()) == "default";
}

[[noreturn]] void failNamedTwice(const std::string& column, SourcePos pos) {
  fail(264,
       "The column name '" + column +
           "' is specified more than once in the SET clause or column list of an INSERT. A column cannot be assigned "
           "more than one value in the same clause. Modify the clause to make sure that a column is updated only once. "
           "If this statement updates or inserts columns into a view, column aliasing can conceal the duplication in "
           "your code.",
       pos);
}

[[noreturn]] void failNoNumber(SourcePos pos) {
  fail(339, "DEFAULT or NULL are not allowed as explicit identity values.", pos);
}

// An identity number that the statement gives itself: a Null is found when it comes.
BoundPtr givenNumber(BoundPtr value) {
  if (value->op == BoundOp::null) failNoNumber(value->pos);
  if (!value->nullable) return value;
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::call;
  e->text = "ts_number";
  e->type = value->type;
  e->pos = value->pos;
  e->args.push_back(std::move(value));
  return e;
}

void collectLeaves(BoundSource& s, std::vector<BoundSource*>& out) {
  if (s.kind == BoundSource::Kind::join) {
    collectLeaves(*s.left, out);
    collectLeaves(*s.right, out);
  } else {
    out.push_back(&s);
  }
}

bool sameTable(const TableDef& a, const TableDef& b) {
  return a.id == b.id && sameName(a.database, b.database);
}

// The row source that an update or delete changes. A short name of the from clause comes first, then the table's own
// name, then its only use under another name; a table that the from clause does not mention joins the sources.
BoundSource* targetSource(Binder& b, const ast::Name& name, BoundSelect& rows, Scope& scope) {
  if (name.parts.size() == 1)
    for (auto* leaf : scope.leaves)
      if (leaf->hasAlias && sameName(leaf->exposedName, name.last())) {
        if (!leaf->table) throwUnsupported("changing rows through a derived table (" + name.last() + ")", name.pos);
        return leaf;
      }
  const TableDef& t = b.table(name);
  BoundSource* aliased = nullptr;
  int uses = 0;
  for (auto* leaf : scope.leaves) {
    if (!leaf->table || !sameTable(*leaf->table, t)) continue;
    if (!leaf->hasAlias) return leaf;
    aliased = leaf;
    ++uses;
  }
  if (uses == 1) return aliased;
  if (uses > 1) fail(8154, "The table '" + name.last() + "' is ambiguous.", name.pos);
  auto source = b.tableSource(t, "");
  BoundSource* result = source.get();
  rows.from.insert(rows.from.begin(), std::move(source));
  scope.leaves.insert(scope.leaves.begin(), result);
  return result;
}

// The default of a column as an expression; Null when it has none.
BoundPtr defaultOf(Binder& b, const ColumnDef& c) {
  if (c.defaultText.empty()) {
    auto n = std::make_unique<BoundExpr>();
    n->type = c.type;
    return n;
  }
  const TokenStream tokens = lex(c.defaultText);
  const auto tree = parseExpression(tokens);
  Binder inner(tokens, b.catalog_);
  Scope scope;
  scope.aggregatesAllowed = false;
  auto v = inner.value(*tree, scope);
  // Its literals belong to another text: they become fixed values of this statement.
  const int base = static_cast<int>(b.out_.slots.size());
  for (auto& s : inner.out_.slots) {
    s.constant =
        s.source == Slot::Source::literal ? tokens.literals[static_cast<std::size_t>(s.ordinal)].value : s.constant;
    s.source = Slot::Source::constant;
    b.out_.slots.push_back(s);
  }
  auto shift = [&](auto&& self, BoundExpr& e) -> void {
    if (e.op == BoundOp::slot) e.slotIndex += base;
    for (auto& a : e.args) self(self, *a);
  };
  shift(shift, *v);
  return b.convertTo(std::move(v), c.type, true);
}

class InsertBinder {
public:
  InsertBinder(Binder& b, const ast::Insert& s, const BindOptions& options) : b_(b), s_(s), options_(options) {}

  std::unique_ptr<BoundInsert> bind() {
    if (s_.execute) throwUnsupported("INSERT ... EXECUTE", s_.pos);
    const TableDef& t = b_.table(s_.target);
    if (t.system) fail(259, "Ad hoc updates to system catalogs are not allowed.", s_.pos);
    out_->table = &t;
    b_.note(b_.out_.writes, &t);
    const int identity = t.identityColumn();
    const bool given =
        !options_.identityInsert.empty() && options_.identityInsert == lower(t.database) + "." + lower(t.name);
    targets(t, identity, given);
    if (s_.select)
      fromSelect(t);
    else if (!s_.defaultValues)
      fromValues(t);
    rest(t);
    if (identity >= 0 && !given) {
      out_->columns.push_back(identity);
      out_->numbered = true;
      Slot slot;
      slot.source = Slot::Source::identity;
      slot.constantType = typeOf(TypeKind::bigint);
      number_ = b_.slotFor(slot, false, s_.pos);
      if (!s_.select) out_->values.push_back(std::move(number_));
    }
    return std::move(out_);
  }

private:
  void targets(const TableDef& t, int identity, bool given) {
    if (s_.columns.empty()) {
      for (std::size_t i = 0; i < t.columns.size(); ++i) {
        const int n = static_cast<int>(i);
        if (!t.columns[i].computedText.empty() || (n == identity && !given)) continue;
        if (!s_.defaultValues) out_->columns.push_back(n);
      }
      if (given && identity >= 0)
        fail(8101,
             "An explicit value for the identity column in table '" + t.name +
                 "' can only be specified when a column list is used and IDENTITY_INSERT is ON.",
             s_.pos);
      return;
    }
    for (const auto& [name, pos] : s_.columns) {
      const int n = t.find(name);
      if (n < 0) fail(207, "Invalid column name '" + name + "'.", pos);
      if (std::find(out_->columns.begin(), out_->columns.end(), n) != out_->columns.end())
        failNamedTwice(t.columns[static_cast<std::size_t>(n)].name, pos);
      if (!t.columns[static_cast<std::size_t>(n)].computedText.empty())
        fail(271,
             "The column \"" + name +
                 "\" cannot be modified because it is either a computed column or is the result of a "
                 "UNION operator.",
             pos);
      if (n == identity && !given)
        fail(544,
             "Cannot insert explicit value for identity column in table '" + t.name +
                 "' when IDENTITY_INSERT is set to OFF.",
             pos);
      out_->columns.push_back(n);
    }
    if (given && identity >= 0 &&
        std::find(out_->columns.begin(), out_->columns.end(), identity) == out_->columns.end())
      fail(545,
           "Explicit value must be specified for identity column in table '" + t.name +
               "' either when IDENTITY_INSERT is set to ON or when a replication user is inserting into a NOT FOR "
               "REPLICATION identity column.",
           s_.pos);
  }

  void mismatch(std::size_t values, bool select) {
    if (values == out_->columns.size()) return;
    if (s_.columns.empty()) {
      if (values == out_->columns.size() + 1 && out_->table->identityColumn() >= 0)
        fail(8101,
             "An explicit value for the identity column in table '" + out_->table->name +
                 "' can only be specified when a column list is used and IDENTITY_INSERT is ON.",
             s_.pos);
      fail(213, "Column name or number of supplied values does not match table definition.", s_.pos);
    }
    const bool more = values > out_->columns.size();
    if (select)
      fail(more ? 121 : 120,
           more ? "The select list for the INSERT statement contains more items than the insert list. The number of "
                  "SELECT "
                  "values must match the number of INSERT columns."
                : "The select list for the INSERT statement contains fewer items than the insert list. The number of "
                  "SELECT "
                  "values must match the number of INSERT columns.",
           s_.pos, 15);
    fail(more ? 110 : 109,
         more ? "There are fewer columns in the INSERT statement than values specified in the VALUES clause. The "
                "number of "
                "values in the VALUES clause must match the number of columns specified in the INSERT statement."
              : "There are more columns in the INSERT statement than values specified in the VALUES clause. The number "
                "of "
                "values in the VALUES clause must match the number of columns specified in the INSERT statement.",
         s_.pos, 15);
  }

  void fromValues(const TableDef& t) {
    mismatch(s_.values.size(), false);
    Scope scope;
    scope.aggregatesAllowed = false;
    b_.inValues_ = true;
    for (std::size_t i = 0; i < s_.values.size(); ++i) {
      const auto& c = t.columns[static_cast<std::size_t>(out_->columns[i])];
      if (isDefaultWord(*s_.values[i])) {
        if (c.identity) failNoNumber(s_.values[i]->pos);
        out_->values.push_back(defaultOf(b_, c));
        continue;
      }
      auto v = b_.convertTo(b_.value(*s_.values[i], scope), c.type, true);
      out_->values.push_back(c.identity ? givenNumber(std::move(v)) : std::move(v));
    }
  }

  void fromSelect(const TableDef& t) {
    out_->select = b_.select(*s_.select, nullptr);
    mismatch(out_->select->items.size(), true);
    for (auto* part = out_->select.get(); part; part = part->next.get())
      for (std::size_t i = 0; i < part->items.size(); ++i) {
        auto& e = part->items[i].expr;
        const auto& c = t.columns[static_cast<std::size_t>(out_->columns[i])];
        e = b_.convertTo(std::move(e), c.type, true);
        if (c.identity) e = givenNumber(std::move(e));
      }
  }

  // Columns that the statement does not name: the table fills constant defaults in itself, the others are given here.
  void rest(const TableDef& t) {
    for (std::size_t i = 0; i < t.columns.size(); ++i) {
      const auto& c = t.columns[i];
      const int n = static_cast<int>(i);
      if (c.identity || !c.computedText.empty() || c.defaultText.empty() || c.defaultInTable) continue;
      if (std::find(out_->columns.begin(), out_->columns.end(), n) != out_->columns.end()) continue;
      out_->columns.push_back(n);
      auto d = defaultOf(b_, c);
      if (s_.select)
        out_->defaults.push_back(std::move(d));
      else
        out_->values.push_back(std::move(d));
    }
  }

  Binder& b_;
  const ast::Insert& s_;
  const BindOptions& options_;
  BoundPtr number_;
  std::unique_ptr<BoundInsert> out_ = std::make_unique<BoundInsert>();
};

}  // namespace

BoundStatement bindInsert(const ast::Insert& insert, const TokenStream& tokens, Catalog& catalog,
                          const BindOptions& options) {
  Binder b(tokens, catalog);
  auto bound = InsertBinder(b, insert, options).bind();
  b.out_.insert = std::move(bound);
  return b.finish();
}

BoundStatement bindUpdate(const ast::Update& update, const TokenStream& tokens, Catalog& catalog) {
  Binder b(tokens, catalog);
  auto u = std::make_unique<BoundUpdate>();
  u->rows = std::make_unique<BoundSelect>();
  Scope scope;
  scope.aggregatesAllowed = false;
  b.sources(update.from, *u->rows, scope);
  const BoundSource* target = targetSource(b, update.target, *u->rows, scope);
  const TableDef& t = *target->table;
  if (t.system) fail(259, "Ad hoc updates to system catalogs are not allowed.", update.pos);
  u->table = &t;
  u->target = target->id;
  b.note(b.out_.writes, &t);
  bool subqueries = false;
  for (const auto& a : update.assignments) {
    const int n = t.find(a.column.last());
    const auto& qualifiers = a.column.parts;
    if (qualifiers.size() > 1) {
      const std::string& object = qualifiers[qualifiers.size() - 2];
      if (!sameName(object, target->exposedName) && !sameName(object, update.target.last())) b.notBound(a.column);
    }
    if (n < 0) fail(207, "Invalid column name '" + a.column.last() + "'.", a.column.pos);
    const auto& c = t.columns[static_cast<std::size_t>(n)];
    if (c.identity) fail(8102, "Cannot update identity column '" + c.name + "'.", a.column.pos);
    if (!c.computedText.empty())
      fail(271,
           "The column \"" + c.name +
               "\" cannot be modified because it is either a computed column or is the result of a "
               "UNION operator.",
           a.column.pos);
    if (std::find(u->columns.begin(), u->columns.end(), n) != u->columns.end()) failNamedTwice(c.name, a.column.pos);
    u->columns.push_back(n);
    auto v = isDefaultWord(*a.value) ? defaultOf(b, c) : b.convertTo(b.value(*a.value, scope), c.type, true);
    subqueries = subqueries || hasSelect(*v);
    u->values.push_back(std::move(v));
    for (const auto& k : t.keys)
      if (k.unique && std::any_of(k.parts.begin(), k.parts.end(), [&](const KeyPart& p) { return p.column == n; }))
        u->touchesKey = true;
  }
  if (update.where) u->rows->where = b.condition(*update.where, scope);
  std::vector<BoundSource*> leaves;
  for (auto& f : u->rows->from) collectLeaves(*f, leaves);
  u->simple = leaves.size() == 1 && !subqueries;
  b.out_.update = std::move(u);
  return b.finish();
}

BoundStatement bindDelete(const ast::Delete& del, const TokenStream& tokens, Catalog& catalog) {
  Binder b(tokens, catalog);
  auto d = std::make_unique<BoundDelete>();
  d->rows = std::make_unique<BoundSelect>();
  Scope scope;
  scope.aggregatesAllowed = false;
  b.sources(del.from, *d->rows, scope);
  const BoundSource* target = targetSource(b, del.target, *d->rows, scope);
  if (target->table->system) fail(259, "Ad hoc updates to system catalogs are not allowed.", del.pos);
  d->table = target->table;
  d->target = target->id;
  b.note(b.out_.writes, target->table);
  if (del.where) d->rows->where = b.condition(*del.where, scope);
  std::vector<BoundSource*> leaves;
  for (auto& f : d->rows->from) collectLeaves(*f, leaves);
  d->simple = leaves.size() == 1;
  b.out_.delete_ = std::move(d);
  return b.finish();
}

}  // namespace tsql
