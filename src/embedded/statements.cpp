// select, insert, update, delete.

#include "embedded/session_impl.h"

namespace embedded {

using tsql::Datum;
using tsql::SqlError;

std::shared_ptr<Plan> Session::Impl::rowPlan(const std::string& statement) {
  const auto tokens = tsql::lex(statement);
  const auto tree = tsql::parse(tokens);
  refreshCatalogs();
  return makePlan(
      tsql::bindInsert(static_cast<const tsql::ast::Insert&>(*tree.statements.at(0)), tokens, *this, {identityInsert}),
      0);
}

bool Session::Impl::stillHolds(const Plan& p) const {
  static const tsql::TokenStream none;
  return holds(p, none, 0);
}

void Session::Impl::runRowPlan(Plan& p, const std::vector<platform::Value>& parameters) {
  static const tsql::TokenStream none;
  context.failure.reset();
  Running r{&none, nullptr, nullptr, &parameters, nullptr};
  change(p, r, 0);
}

void Session::Impl::affected(std::int64_t n, Running& r) {
  rowCount = n;
  lastError = 0;
  r.sink->affected(n);
}

void Session::Impl::select(const tsql::ast::SelectStatement& s, Running& r) {
  if (s.select->into) return selectInto(s, r);
  if (!s.select->items[0].variable.empty()) return assign(s, r);
  for (int attempt = 0;; ++attempt) {
    const auto set = planSet(s, r);
    const auto p = plan(*set, r, s, [&] { return tsql::bindSelect(*s.select, *r.tokens, *this); });
    std::vector<Datum> values;
    bindSlots(*p, r, literalBase(*r.tokens, s), values);
    const int prepared = p->prepared.timesPrepared();
    bool changed = false;
    check([&] {
      const ResetGuard guard(p->prepared);
      bool more = p->prepared.step();
      if (p->prepared.timesPrepared() != prepared && attempt == 0) {
        // Another session changed a definition since the plan was made.
        changed = true;
        return;
      }
      const auto& columns = p->shape->columns();
      const auto readRow = [&](std::vector<platform::Value>& row) {
        for (std::size_t i = 0; i < row.size(); ++i)
          row[i] = cellValue(p->prepared, static_cast<int>(i), columns[i].type);
      };
      std::int64_t n = 0;
      if (capture && !capture->shape) {
        capture->shape = p->shape;
        if (p->hiddenRow) {
          capture->table = p->table;
          capture->catalog = sharedCatalog(*p->table);
        }
        for (; more; more = p->prepared.step(), ++n) {
          readRow(capture->rows.emplace_back(columns.size()));
          if (p->hiddenRow) capture->rowNumbers.push_back(p->prepared.integer(static_cast<int>(columns.size())));
        }
        rowCount = n;
        lastError = 0;
        return;
      }
      r.sink->columns(columns);
      std::vector<platform::Value> row(columns.size());
      for (; more; more = p->prepared.step(), ++n) {
        readRow(row);
        r.sink->row(row);
      }
      rowCount = n;
      lastError = 0;
      r.sink->endRows(n);
    });
    if (!changed) return;
    catalogsStale = true;
    set->plans.clear();
  }
}

bool Session::Impl::condition(const tsql::ast::Expr& e, std::size_t firstToken, Running& r) {
  auto& set = r.batch->conditions[&e];
  if (!set) set = std::make_shared<PlanSet>();
  const auto p = plan(*set, r, firstToken, [&] { return tsql::bindCondition(e, *r.tokens, *this); });
  std::vector<Datum> values;
  bindSlots(*p, r, literalBase(*r.tokens, firstToken), values);
  bool result = false;
  check([&] {
    const ResetGuard guard(p->prepared);
    result = p->prepared.step() && p->prepared.integer(0) != 0;
  });
  return result;
}

Datum Session::Impl::scalar(const tsql::ast::Expr& e, const tsql::TokenStream& tokens, tsql::SqlType type, Running* r) {
  Running own;
  if (r) own = *r;
  own.tokens = &tokens;
  const auto p = makePlan(tsql::bindScalar(e, tokens, *this, type), 0);
  std::vector<Datum> values;
  bindSlots(*p, own, 0, values);
  Datum result;
  check([&] {
    const ResetGuard guard(p->prepared);
    if (p->prepared.step()) result = p->prepared.column(0);
  });
  return result;
}

std::int64_t Session::Impl::change(Plan& p, const Running& r, int base) {
  std::vector<Datum>& values = scratch;
  bindSlots(p, r, base, values);
  std::int64_t count = 0;
  const auto step = [&] {
    if (p.identitySlot >= 0) {
      values[static_cast<std::size_t>(p.identitySlot)] = nextIdentity(p.identity);
      p.prepared.bind(p.identitySlot + 1, values[static_cast<std::size_t>(p.identitySlot)]);
    }
    const ResetGuard guard(p.prepared);
    try {
      preparedAnew = false;
      changing = r.batch != nullptr;  // a plan for one row names its columns and its owner watches the tables
      p.prepared.step();
      changing = false;
    } catch (const SqliteFailure&) {
      changing = false;
      if (!preparedAnew) throw;
      catalogsStale = true;
      refreshCatalogs();
      if (!holds(p, *r.tokens, base)) throw StalePlan{};
      p.prepared.step();  // only storage has changed: prepared anew, it means the same
    }
    count = sqlite3_changes64(db.get());
  };
  changingBy = p.kind == Plan::Kind::update ? "UPDATE" : p.kind == Plan::Kind::delete_ ? "DELETE" : "INSERT";
  const bool alone = p.numbered && tranCount == 0;  // the rows and their last number are stored together
  if (!alone) beforeWrite();
  check(
      [&] {
        try {
          if (alone)
            atomically(step);
          else
            step();
        } catch (const SqliteFailure& f) {
          // Keys hold after the whole statement, not after each row: a second, slower way may still get there.
          if (p.kind != Plan::Kind::update || p.selectionSql.empty() ||
              (f.code != SQLITE_CONSTRAINT_UNIQUE && f.code != SQLITE_CONSTRAINT_PRIMARYKEY))
            throw;
          count = updateKeys(p, values);
        }
      },
      p.table);
  return count;
}

void Session::Impl::insert(const tsql::ast::Insert& s, Running& r) {
  const auto set = planSet(s, r);
  const tsql::BindOptions options{identityInsert};
  const bool given = !identityInsert.empty();
  if (given) set->plans.clear();  // plans of both ways must not meet
  const auto p = plan(*set, r, s, [&] { return tsql::bindInsert(s, *r.tokens, *this, options); });
  const std::int64_t n = change(*p, r, literalBase(*r.tokens, s));
  if (given && p->table->identityColumn() >= 0 && !p->numbered) {
    check([&] {
      numbersGiven(*p->table);
      if (tranCount == 0) atomically([] {});
    });
    set->plans.clear();
  }
  if (p->table->identityColumn() < 0) lastIdentity.reset();  // @@identity is that of the last insert
  affected(n, r);
}

// Removes the rows and writes them again as they will be, so that keys are checked on the result.
std::int64_t Session::Impl::updateKeys(Plan& p, std::vector<Datum>& values) {
  std::vector<std::vector<Datum>> rows;
  p.prepared.reset();
  atomically([&] {
    {
      PreparedStatement s(db.get(), p.selectionSql);
      const int parameters = sqlite3_bind_parameter_count(s.get());
      for (std::size_t i = 0; i < values.size() && static_cast<int>(i) < parameters; ++i)
        s.bind(static_cast<int>(i) + 1, values[i]);
      std::set<std::int64_t> seen;
      while (s.step()) {
        if (!seen.insert(s.integer(0)).second) continue;
        auto& row = rows.emplace_back();
        for (int i = 0; i < s.columns(); ++i) row.push_back(s.column(i));
      }
    }
    PreparedStatement remove(db.get(), tsql::emitRowDelete(*p.table));
    for (const auto& row : rows) {
      remove.bind(1, row[0]);
      remove.step();
      remove.reset();
    }
    PreparedStatement write(db.get(), tsql::emitRowInsert(*p.table));
    const bool rowNumberBound = p.table->identityColumn() < 0;
    for (const auto& row : rows) {
      for (std::size_t i = rowNumberBound ? 0 : 1; i < row.size(); ++i) write.bind(static_cast<int>(i) + 1, row[i]);
      write.step();
      write.reset();
    }
  });
  return static_cast<std::int64_t>(rows.size());
}

void Session::Impl::update(const tsql::ast::Update& s, Running& r) {
  const auto set = planSet(s, r);
  const auto p = plan(*set, r, s, [&] { return tsql::bindUpdate(s, *r.tokens, *this); });
  affected(change(*p, r, literalBase(*r.tokens, s)), r);
}

void Session::Impl::delete_(const tsql::ast::Delete& s, Running& r) {
  const auto set = planSet(s, r);
  const auto p = plan(*set, r, s, [&] { return tsql::bindDelete(s, *r.tokens, *this); });
  affected(change(*p, r, literalBase(*r.tokens, s)), r);
}

// The new table has the selection's columns: names, types, and whether they may be Null.
void Session::Impl::selectInto(const tsql::ast::SelectStatement& s, Running& r) {
  refreshCatalogs();
  auto bound = tsql::bindSelect(*s.select, *r.tokens, *this);
  const auto keep = currentCatalogs();
  const auto& name = *s.select->into;
  const ObjectPlace where = place(name);
  if (!where.known) noSuchPlace(name);
  if (where.temporary) needTemporary();
  if (isTaken(where))
    throw SqlError(2714, "There is already an object named '" + where.object + "' in the database.", name.pos);
  tsql::TableDef t;
  t.name = where.object;
  const bool single = bound.select->from.size() == 1 && bound.select->from[0]->table && !bound.select->next;
  std::set<std::string> names;
  for (const auto& item : bound.select->items) {
    tsql::ColumnDef c;
    c.name = item.name;
    if (c.name.empty())
      throw SqlError(
          1038,
          "An object or column name is missing or empty. For SELECT INTO statements, verify each column has a name.",
          s.pos, 15);
    if (!names.insert(lowerName(c.name)).second)
      throw SqlError(2705,
                     "Column names in each table must be unique. Column name '" + c.name + "' in table '" + t.name +
                         "' is specified more than once.",
                     s.pos);
    c.type = item.expr->type.kind == tsql::TypeKind::null ? tsql::typeOf(tsql::TypeKind::integer) : item.expr->type;
    if (tsql::isText(c.type.kind) && c.type.length == 0) c.type.length = 1;
    c.nullable = item.expr->nullable;
    if (single && item.expr->op == tsql::BoundOp::column)
      c.identity = bound.select->from[0]->table->columns[static_cast<std::size_t>(item.expr->column)].identity;
    t.columns.push_back(std::move(c));
  }
  std::int64_t n = 0;
  changingBy = "INSERT";
  check([&] {
    atomically([&] {
      makeTable(t, where);
      const tsql::TableDef* made = table(name);
      const int base = literalBase(*r.tokens, s);
      for (auto& slot : bound.slots)
        if (slot.source == tsql::Slot::Source::literal) slot.ordinal -= base;
      std::string columns;
      for (const auto& c : made->columns) columns += (columns.empty() ? "" : ",") + tsql::quoteName(c.name);
      PreparedStatement insert(
          db.get(), "INSERT INTO " + made->storage + "(" + columns + ") " + tsql::emitSelect(*bound.select, true));
      std::vector<Datum> values(bound.slots.size());
      for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = slotValue(bound.slots[i], r, base);
        insert.bind(static_cast<int>(i) + 1, values[i]);
      }
      insert.step();
      n = sqlite3_changes64(db.get());
      if (made->identityColumn() < 0) lastIdentity.reset();
      if (made->identityColumn() >= 0) numbersGiven(*made);
    });
  });
  affected(n, r);
}

}  // namespace embedded
