// Plans: bound and prepared once per shape, then used with other literals.

#include "embedded/session_impl.h"

namespace embedded {

using tsql::BoundStatement;
using tsql::Datum;
using tsql::Slot;
using tsql::TokenStream;

namespace {

const tsql::BoundSource* onlyTable(const tsql::BoundSelect& s) {
  if (s.next || s.from.size() != 1 || s.from[0]->kind != tsql::BoundSource::Kind::table) return nullptr;
  return s.from[0].get();
}

std::vector<ColumnInfo> columnsOf(const tsql::BoundSelect& s) {
  std::vector<ColumnInfo> columns;
  for (const auto& item : s.items) {
    tsql::SqlType t = item.expr->type;
    if (t.kind == tsql::TypeKind::null) t = tsql::typeOf(tsql::TypeKind::integer);
    columns.push_back({item.name, t});
  }
  return columns;
}

// The conversions of bulk rows, without the general way: whole numbers that fit, short texts, decimals to amounts.
// False leaves the value as it was.
bool quicklyConverted(Datum& v, const tsql::SqlType& from, const tsql::SqlType& to) {
  using tsql::TypeKind;
  if (const auto* n = std::get_if<std::int64_t>(&v)) {
    if (tsql::isExactInteger(from.kind)) {
      switch (to.kind) {
        case TypeKind::tinyint:
          return *n >= 0 && *n <= 255;
        case TypeKind::smallint:
          return *n >= INT16_MIN && *n <= INT16_MAX;
        case TypeKind::integer:
          return *n >= INT32_MIN && *n <= INT32_MAX;
        case TypeKind::bigint:
          return true;
        default:
          break;
      }
    }
    const bool whole = tsql::isExactInteger(from.kind);
    if (!whole && from.kind != TypeKind::decimal) return false;
    static constexpr std::array<std::int64_t, 5> toUnits = {10000, 1000, 100, 10, 1};
    const auto scale = static_cast<std::size_t>(whole ? 0 : from.scale);
    constexpr std::int64_t safe = 900'000'000'000'000;  // times 10000 still fits
    if (to.kind == TypeKind::money && scale < toUnits.size() && *n<safe&& * n> - safe) {
      v = *n * toUnits[scale];
      return true;
    }
    if (to.kind == TypeKind::float_ && whole) {
      v = static_cast<double>(*n);
      return true;
    }
    return false;
  }
  if (const auto* s = std::get_if<std::string>(&v))  // bytes are never fewer than characters
    return to.kind == TypeKind::nvarchar && tsql::isText(from.kind) && static_cast<int>(s->size()) <= to.length;
  return false;
}

}  // namespace

int Session::Impl::literalBase(const TokenStream& tokens, std::size_t firstToken) {
  for (std::size_t i = firstToken; i < tokens.tokens.size(); ++i)
    if (tokens.tokens[i].literal >= 0) return tokens.tokens[i].literal;
  return static_cast<int>(tokens.literals.size());
}

std::shared_ptr<PlanSet> Session::Impl::planSet(const tsql::ast::Statement& s, const Running& r) {
  auto& known = r.batch->plans[&s];
  if (known) return known;
  if (!cacheOn) return known = std::make_shared<PlanSet>();
  // Statements of one shape share their plans, also across batches.
  std::string key = lowerName(current) + "\n" + r.tokens->shape(s.firstToken, s.lastToken);
  for (const auto& f : r.batch->fixed)  // literals that are part of the tree: a text as a column's name
    for (std::size_t i = s.firstToken; i < s.lastToken; ++i)
      if (r.tokens->tokens[i].literal == f.first) (key += '\n') += r.tokens->tokens[i].raw;
  auto& shared = planSets[key];
  if (!shared) shared = std::make_shared<PlanSet>();
  return known = shared;
}

bool Session::Impl::holds(const Plan& p, const TokenStream& tokens, int base) const {
  if (p.checkedAt != catalogEpoch) {
    for (const auto& c : p.catalogs) {
      if (c == temporary) continue;
      const auto it = attached.find(c->name);
      if (it == attached.end() || it->second.catalog != c) return false;
    }
    p.checkedAt = catalogEpoch;
  }
  for (const auto& [name, type] : p.variables) {
    const auto known = frame ? frame->find(name) : Frame::const_iterator();
    if (!frame || known == frame->end() || !(known->second.type == type)) return false;
  }
  for (const auto& pin : p.pins) {
    const auto& v = tokens.literals[static_cast<std::size_t>(pin.ordinal + base)];
    if (v.type.kind != pin.type.kind || v.type.scale != pin.type.scale || !(v.value == pin.value)) return false;
  }
  return true;
}

std::shared_ptr<Plan> Session::Impl::keepPlan(PlanSet& set, std::shared_ptr<Plan> made) {
  std::erase_if(set.plans, [&](const auto& p) {
    for (const auto& c : p->catalogs)
      if (c != temporary && (!attached.contains(c->name) || attached[c->name].catalog != c)) return true;
    return p->temporary;
  });
  constexpr std::size_t variants = 16;  // of one shape, for different pinned literals
  if (set.plans.size() >= variants) set.plans.erase(set.plans.begin());
  set.plans.push_back(made);
  return made;
}

std::shared_ptr<Plan> Session::Impl::makePlan(BoundStatement bound, int base) {
  auto p = std::make_shared<Plan>();
  for (auto& s : bound.slots)
    if (s.source == Slot::Source::literal) s.ordinal -= base;
  for (auto& pin : bound.pins) pin.ordinal -= base;
  auto note = [&](const tsql::TableDef* t) {
    auto c = sharedCatalog(*t);
    if (!c) return;
    if (std::find(p->catalogs.begin(), p->catalogs.end(), c) == p->catalogs.end()) p->catalogs.push_back(std::move(c));
    p->temporary = p->temporary || t->temporary;
  };
  for (const auto* t : bound.reads) note(t);
  for (const auto* t : bound.writes) {
    note(t);
    p->writes.push_back(t->schemaName);
  }
  if (bound.select) {
    p->kind = Plan::Kind::select;
    auto columns = columnsOf(*bound.select);
    std::vector<int> baseColumns;
    const auto* only = onlyTable(*bound.select);
    if (only && !bound.select->aggregated && !bound.select->distinct && !only->table->system) {
      p->table = only->table;
      p->hiddenRow = true;
      for (const auto& item : bound.select->items)
        baseColumns.push_back(
            item.expr->op == tsql::BoundOp::column && item.expr->source == only->id ? item.expr->column : -1);
      auto row = std::make_unique<tsql::BoundExpr>();
      row->op = tsql::BoundOp::column;
      row->source = only->id;
      row->text = only->table->rowNumber;
      row->type = tsql::typeOf(tsql::TypeKind::bigint);
      bound.select->items.push_back({std::move(row), "", false});
    }
    p->shape = std::make_shared<const RowShape>(std::move(columns), std::move(baseColumns));
    p->sql = tsql::emitSelect(*bound.select, true);
  } else if (bound.insert) {
    p->kind = Plan::Kind::insert;
    p->table = bound.insert->table;
    p->numbered = bound.insert->numbered;
    if (p->numbered && !bound.insert->select)
      for (std::size_t i = 0; i < bound.slots.size(); ++i)
        if (bound.slots[i].source == Slot::Source::identity) p->identitySlot = static_cast<int>(i);
    if (p->numbered) p->identity = identityRef(*p->table);
    p->sql = tsql::emitInsert(*bound.insert, p->identity, p->identitySlot);
  } else if (bound.update) {
    p->kind = Plan::Kind::update;
    p->table = bound.update->table;
    p->sql = tsql::emitUpdate(*bound.update);
    if (bound.update->touchesKey) p->selectionSql = tsql::emitUpdateSelection(*bound.update);
  } else {
    p->kind = Plan::Kind::delete_;
    p->table = bound.delete_->table;
    p->sql = tsql::emitDelete(*bound.delete_);
  }
  p->variables = std::move(bound.variables);
  p->slots = std::move(bound.slots);
  p->pins = std::move(bound.pins);
  check([&] { p->prepared = PreparedStatement(db.get(), p->sql, true); }, p->table);
  return p;
}

Datum Session::Impl::slotValue(const Slot& slot, const Running& r, int base) {
  Datum v;
  tsql::SqlType t;
  switch (slot.source) {
    case Slot::Source::literal: {
      const auto& l = r.tokens->literals[static_cast<std::size_t>(slot.ordinal + base)];
      v = l.value;
      t = l.type;
      break;
    }
    case Slot::Source::parameter: {
      if (!r.parameters || static_cast<std::size_t>(slot.ordinal) >= r.parameters->size())
        throw tsql::SqlError(8178, "The statement expects a parameter that was not supplied: number " +
                                       std::to_string(slot.ordinal + 1) + ".");
      v = fromValue((*r.parameters)[static_cast<std::size_t>(slot.ordinal)], t);
      break;
    }
    case Slot::Source::variable: {
      const std::string name = lowerName(slot.name);
      t = slot.constantType;
      if (name == "@@identity")
        v = lastIdentity ? Datum(*lastIdentity) : Datum();
      else if (name == "@@rowcount")
        v = rowCount;
      else if (name == "@@trancount")
        v = static_cast<std::int64_t>(tranCount);
      else if (name == "@@error")
        v = static_cast<std::int64_t>(lastError);
      else if (name == "@@nestlevel")
        v = static_cast<std::int64_t>(nesting);
      else if (name == "@@spid")
        v = std::int64_t{1};
      else if (name == "@@datefirst")
        v = std::int64_t{7};
      else if (name == "@@language")
        v = std::string("us_english");
      else if (name == "@@version")
        v = std::string("gljz embedded server");
      else if (name == "@@servername")
        v = server->impl().folder;
      else if (frame)
        v = frame->at(slot.name).value;
      break;
    }
    case Slot::Source::constant:
      v = slot.constant;
      t = slot.constantType;
      break;
    case Slot::Source::identity:
      return {};
  }
  if (slot.negate) {
    if (auto* n = std::get_if<std::int64_t>(&v))
      *n = -*n;
    else if (auto* d = std::get_if<double>(&v))
      *d = -*d;
    else if (v.index() != 0)
      v = tsql::convert("-" + std::get<std::string>(tsql::convert(v, t, tsql::typeOf(tsql::TypeKind::varchar, 60))),
                        tsql::typeOf(tsql::TypeKind::varchar, 60), t);
  }
  if (slot.type == t || slot.type.kind == tsql::TypeKind::null || quicklyConverted(v, t, slot.type)) return v;
  return tsql::convert(v, t, slot.type, slot.style, slot.store ? tsql::ConvertMode::store : tsql::ConvertMode::cast);
}

// A parameter whose value goes in as it is: no copy, no conversion. False leaves it to the general way.
static bool boundDirectly(sqlite3_stmt* s, int index, const platform::Value& v, const tsql::SqlType& to) {
  using K = platform::Value::Kind;
  using tsql::TypeKind;
  switch (v.kind()) {
    case K::null:
      sqlite3_bind_null(s, index);
      return true;
    case K::money:
      if (to.kind != TypeKind::money) return false;
      sqlite3_bind_int64(s, index, v.asMoney().units());
      return true;
    case K::real:
      if (to.kind != TypeKind::float_) return false;
      sqlite3_bind_double(s, index, v.asDouble());
      return true;
    case K::integer: {
      Datum n = v.asInteger();
      if (!tsql::isExactInteger(to.kind) || !quicklyConverted(n, tsql::typeOf(TypeKind::bigint), to)) return false;
      sqlite3_bind_int64(s, index, std::get<std::int64_t>(n));
      return true;
    }
    case K::text: {
      const std::string& t = v.textOrEmpty();
      if (to.kind != TypeKind::nvarchar || static_cast<int>(t.size()) > to.length) return false;
      sqlite3_bind_text64(s, index, t.data(), t.size(), SQLITE_STATIC, SQLITE_UTF8);
      return true;
    }
    default:
      return false;
  }
}

// The same for a literal of the text.
static bool boundDirectly(sqlite3_stmt* s, int index, const tsql::LiteralValue& v, const tsql::SqlType& to) {
  using tsql::TypeKind;
  if (const auto* t = std::get_if<std::string>(&v.value)) {
    const bool fits =
        to.kind == TypeKind::null || (to.kind == TypeKind::nvarchar && static_cast<int>(t->size()) <= to.length);
    if (!fits) return false;
    sqlite3_bind_text64(s, index, t->data(), t->size(), SQLITE_STATIC, SQLITE_UTF8);
    return true;
  }
  if (v.value.index() != 1) return false;
  Datum n = std::get<std::int64_t>(v.value);
  if (to.kind != TypeKind::null && !(to == v.type) && !quicklyConverted(n, v.type, to)) return false;
  if (const auto* whole = std::get_if<std::int64_t>(&n))
    sqlite3_bind_int64(s, index, *whole);
  else
    sqlite3_bind_double(s, index, std::get<double>(n));
  return true;
}

void Session::Impl::bindSlots(Plan& p, const Running& r, int base, std::vector<Datum>& values) {
  values.resize(p.slots.size());
  for (std::size_t i = 0; i < p.slots.size(); ++i) {
    const Slot& slot = p.slots[i];
    if (slot.source == Slot::Source::literal && !slot.negate && p.selectionSql.empty() &&
        boundDirectly(p.prepared.get(), static_cast<int>(i) + 1,
                      r.tokens->literals[static_cast<std::size_t>(slot.ordinal + base)], slot.type))
      continue;
    if (slot.source == Slot::Source::parameter && r.parameters &&
        static_cast<std::size_t>(slot.ordinal) < r.parameters->size() && p.selectionSql.empty() &&
        boundDirectly(p.prepared.get(), static_cast<int>(i) + 1,
                      (*r.parameters)[static_cast<std::size_t>(slot.ordinal)], slot.type))
      continue;
    values[i] = slotValue(slot, r, base);
    p.prepared.bind(static_cast<int>(i) + 1, values[i]);
  }
}

}  // namespace embedded
