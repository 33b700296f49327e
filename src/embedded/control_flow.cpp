// Statements that are no data: conditions, loops, variables, messages, options.

#include <algorithm>
#include <utility>

#include "embedded/session_impl.h"
#include "tsql/utf8.h"

namespace embedded {

using tsql::Datum;
using tsql::SqlError;
using tsql::TypeKind;

namespace {

const tsql::SqlType messageType = tsql::typeOf(TypeKind::nvarchar, 4000);

std::string textOf(const Datum& v) {
  const auto* text = std::get_if<std::string>(&v);
  return text ? *text : std::string();
}

std::string digitsOf(std::uint64_t n, unsigned base, bool upper) {
  std::string digits;
  do {
    digits.insert(digits.begin(), (upper ? "0123456789ABCDEF" : "0123456789abcdef")[n % base]);
    n /= base;
  } while (n);
  return digits;
}

// One place of a message of raiserror, "%-5d", "%.3s": the value in the form that it asks for.
std::string inserted(std::string_view place, const Datum& value, const tsql::SqlType& type) {
  if (value.index() == 0) return "(null)";
  const char kind = place.back();
  place = place.substr(1, place.size() - 2);
  const std::size_t flagsEnd = std::min(place.find_first_not_of("-+0 #"), place.size());
  const std::string_view flags = place.substr(0, flagsEnd);
  const auto has = [&](char flag) { return flags.find(flag) != std::string_view::npos; };
  const std::size_t point = place.find('.');
  const auto number = [](std::string_view digits) {
    std::size_t n = 0;
    for (const char c : digits)
      if (c >= '0' && c <= '9' && n < 1000) n = n * 10 + static_cast<std::size_t>(c - '0');
    return n;
  };
  const std::size_t width = number(place.substr(flagsEnd, std::min(point, place.size()) - flagsEnd));
  std::string text;
  if (kind == 's' ? !tsql::isText(type.kind) : !tsql::isExactInteger(type.kind))
    throw SqlError(2786,
                   "The data type of a substitution parameter does not match the expected type of the format "
                   "specification.");
  if (kind == 's') {
    text = textOf(value);
    if (point != std::string_view::npos) text.resize(tsql::bytesOf(text, number(place.substr(point + 1))));
  } else {
    const std::int64_t n = std::get<std::int64_t>(value);
    const auto bits = static_cast<std::uint64_t>(n) & (type.kind == TypeKind::bigint ? UINT64_MAX : UINT32_MAX);
    if (kind == 'd' || kind == 'i')
      text = (n >= 0 && has('+') ? "+" : n >= 0 && has(' ') ? " " : "") + std::to_string(n);
    else
      text = digitsOf(bits, kind == 'u' ? 10 : kind == 'o' ? 8 : 16, kind == 'X');
  }
  const std::size_t length = tsql::countCodePoints(text);
  if (length >= width) return text;
  if (has('-')) return text + std::string(width - length, ' ');
  if (!has('0') || kind == 's') return std::string(width - length, ' ') + text;
  const std::size_t sign = text[0] == '-' || text[0] == '+' || text[0] == ' ' ? 1 : 0;
  return text.insert(sign, width - length, '0');
}

}  // namespace

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

void Session::Impl::raiserror(const tsql::ast::Raiserror& s, Running& r) {
  const std::string format = textOf(evaluate(*s.message, messageType, s, r));
  if (!s.severity) {  // raiserror 50001 'text'
    const Datum number = evaluate(*s.state, tsql::typeOf(TypeKind::integer), s, r);
    const auto* n = std::get_if<std::int64_t>(&number);
    if (!n || *n < 13000) throw SqlError(2732, "Error number is invalid. The number must be from 13000.", s.pos);
    raised(SqlError(static_cast<int>(*n), format, s.pos), r);
    return;
  }
  const Datum level = evaluate(*s.severity, tsql::typeOf(TypeKind::integer), s, r);
  evaluate(*s.state, tsql::typeOf(TypeKind::integer), s, r);
  const int severity = level.index() == 1 ? static_cast<int>(std::get<std::int64_t>(level)) : 0;
  if (severity > 18)
    throw SqlError(2754,
                   "Error severity levels greater than 18 can only be specified by members of the sysadmin role, using "
                   "the WITH LOG option.",
                   s.pos);
  std::string text;
  std::size_t argument = 0;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      text += format[i];
      continue;
    }
    const std::size_t end = format.find_first_not_of("+-0 #123456789.", i + 1);
    if (end == std::string::npos || std::string_view("diouxXs%").find(format[end]) == std::string_view::npos)
      throw SqlError(2787, "Invalid format specification: '" + format.substr(i) + "'.", s.pos);
    const std::string place = format.substr(i, end - i + 1);
    i = end;
    if (place.back() == '%') {
      text += '%';
    } else if (argument < s.arguments.size()) {
      tsql::SqlType type;
      const Datum value = evaluate(*s.arguments[argument++], {}, s, r, &type);
      text += inserted(place, value, type);
    } else {
      text += "(null)";
    }
  }
  if (severity > 10) {
    raised(SqlError(50000, text, s.pos, severity), r);
  } else {
    lastError = 0;
    rowCount = 0;
    r.sink->message(text);
  }
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
