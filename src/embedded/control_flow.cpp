// Statements that are no data: conditions, loops, variables, messages, options.

#include <algorithm>
#include <utility>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::Datum;
using tsql::SqlError;
using tsql::TypeKind;

Datum Session::Impl::evaluate(const tsql::ast::Expr& e, tsql::SqlType type, const tsql::ast::Statement& s, Running& r,
                              tsql::SqlType* resultType) {
  auto& set = r.batch->conditions[&e];
  if (!set) set = std::make_shared<PlanSet>();
  const auto p =
      plan(*set, r, s, [&] { return tsql::bindScalar(e, *r.tokens, *this, type, tsql::Assigned::variable); });
  std::vector<Datum> values;
  bindSlots(*p, r, literalBase(*r.tokens, s), values);
  if (resultType) *resultType = p->shape->columns().at(0).type;
  Datum result;
  check([&] {
    const ResetGuard guard(p->prepared);
    if (p->prepared.step()) result = p->prepared.column(0);
  });
  return result;
}

void Session::Impl::declare(const tsql::ast::Declare& s, Running& r) {
  for (const auto& v : s.variables) {
    const auto known = r.frame->find(v.name);
    if (known == r.frame->end()) (*r.frame)[v.name] = {declaredType(v.type, v.pos), {}};
    if (!v.value) continue;  // a variable keeps its value when its declaration runs again
    const tsql::SqlType type = r.frame->at(v.name).type;
    Datum value = evaluate(*v.value, type, s, r);
    r.frame->at(v.name).value = std::move(value);
  }
}

void Session::Impl::setVariable(const tsql::ast::SetVariable& s, Running& r) {
  const auto variable = r.frame->find(s.name);
  if (variable == r.frame->end())
    throw SqlError(137, "Must declare the scalar variable \"" + s.name + "\".", s.pos, 15);
  variable->second.value = evaluate(*s.value, variable->second.type, s, r);
  rowCount = 1;
  lastError = 0;
}

// select @a = x, ... from: the variables take each row in turn, so that the last one stays.
void Session::Impl::assign(const tsql::ast::SelectStatement& s, Running& r) {
  const auto& select = *s.select;
  const auto variable = [&](const tsql::ast::SelectItem& item) -> Variable& {
    const auto found = r.frame->find(item.variable);
    if (found == r.frame->end())
      throw SqlError(137, "Must declare the scalar variable \"" + item.variable + "\".", item.pos, 15);
    return found->second;
  };
  const bool oneRow = select.from.empty() && !select.where && !select.top && !select.having && select.groupBy.empty();
  if (oneRow) {  // each item sees what the ones before it have assigned
    for (const auto& item : select.items)
      if (item.variable.empty())
        throw SqlError(141,
                       "A SELECT statement that assigns a value to a variable must not be combined with data-retrieval "
                       "operations.",
                       s.pos, 15);
    for (const auto& item : select.items) {
      Variable& v = variable(item);
      v.value = evaluate(*item.expr, v.type, s, r);
    }
    rowCount = 1;
    lastError = 0;
    return;
  }
  const auto set = planSet(s, r);
  const auto p = plan(*set, r, s, [&] { return tsql::bindSelect(select, *r.tokens, *this); });
  std::vector<Datum> values;
  bindSlots(*p, r, literalBase(*r.tokens, s), values);
  std::int64_t n = 0;
  check([&] {
    const ResetGuard guard(p->prepared);
    for (; p->prepared.step(); ++n)
      for (std::size_t i = 0; i < select.items.size(); ++i)
        variable(select.items[i]).value = p->prepared.column(static_cast<int>(i));
  });
  rowCount = n;
  lastError = 0;
}

void Session::Impl::loop(const tsql::ast::While& s, Running& r) {
  while (condition(*s.condition, s.firstToken, r)) {
    rowCount = 0;
    lastError = 0;
    runStatement(*s.body, r);
    if (r.ended) return;
    const Running::Jump jump = std::exchange(r.jump, Running::Jump::none);
    if (jump == Running::Jump::break_) return;
  }
  rowCount = 0;
  lastError = 0;
}

// A failure that the batch itself reports: it ends nothing.
void Session::Impl::raised(const SqlError& e, Running& r) {
  r.sink->failure(e);
  lastError = e.number;
  rowCount = 0;
}

void Session::Impl::setOption(const tsql::ast::SetOption& o) {
  if (o.option == "identity_insert") return setIdentityInsert(o);
  if (o.option == "lock_timeout") {
    sqlite3_busy_timeout(db.get(),
                         o.value == "-1" ? INT32_MAX : static_cast<int>(std::strtol(o.value.c_str(), nullptr, 10)));
    return;
  }
  // Several options at once take one value. The others that the parser lets through change nothing here.
  if (("," + o.option + ",").find(",xact_abort,") != std::string::npos) xactAbort = o.value == "on";
}

void Session::Impl::setIdentityInsert(const tsql::ast::SetOption& o) {
  const auto* t = table(*o.table);
  if (!t)
    throw SqlError(
        1088,
        "Cannot find the object \"" + o.table->last() + "\" because it does not exist or you do not have permissions.",
        o.pos);
  if (t->identityColumn() < 0)
    throw SqlError(8106, "Table '" + t->name + "' does not have the identity property. Cannot perform SET operation.",
                   o.pos);
  const std::string key = lowerName(t->database) + "." + lowerName(t->name);
  if (o.value == "on") {
    if (!identityInsert.empty() && identityInsert != key) {
      std::string other = identityInsert;
      other.insert(other.find('.'), ".dbo");
      throw SqlError(8107,
                     "IDENTITY_INSERT is already ON for table '" + other +
                         "'. Cannot perform SET operation for table '" + t->name + "'.",
                     o.pos);
    }
    identityInsert = key;
  } else if (identityInsert == key) {
    identityInsert.clear();
  }
  forgetPlans();
}

}  // namespace embedded
