#include <algorithm>

#include "tsql/binder_impl.h"

namespace tsql {

namespace {

int integerDigits(TypeKind k) {
  switch (k) {
    case TypeKind::bit:
      return 1;
    case TypeKind::tinyint:
      return 3;
    case TypeKind::smallint:
      return 5;
    case TypeKind::integer:
      return 10;
    default:
      return 19;
  }
}

SqlType asDecimal(const SqlType& t) {
  if (t.kind == TypeKind::decimal) return t;
  if (t.kind == TypeKind::money) return decimalType(19, 4);
  if (t.kind == TypeKind::smallmoney) return decimalType(10, 4);
  return decimalType(integerDigits(t.kind), 0);
}

bool fits(const SqlType& from, const SqlType& to) {
  if (to.length == SqlType::maxLength || isLob(to.kind)) return true;
  return from.length != SqlType::maxLength && !isLob(from.kind) && from.length <= to.length;
}

// The value is held the same way in both types, and nothing can be lost.
bool sameForm(const SqlType& from, const SqlType& to) {
  const auto f = from.kind, t = to.kind;
  if (from == to) return true;
  if (isText(f) && isText(t)) {
    if (t == TypeKind::char_ || t == TypeKind::nchar) return false;
    return (isUnicode(t) || !isUnicode(f)) && fits(from, to);
  }
  if (isExactInteger(f) && isExactInteger(t)) return t != TypeKind::bit && precedence(f) <= precedence(t);
  if (isExactInteger(f) && t == TypeKind::decimal) return to.scale == 0 && to.precision >= integerDigits(f);
  if (isMoney(f) && t == TypeKind::money) return true;
  if (isMoney(f) && t == TypeKind::decimal) return to.scale == 4 && to.precision >= 19;
  if (f == TypeKind::decimal && t == TypeKind::decimal) return from.scale == to.scale && from.precision <= to.precision;
  if (f == TypeKind::real && t == TypeKind::float_) return true;
  if (f == TypeKind::smalldatetime && t == TypeKind::datetime) return true;
  return isBinary(f) && isBinary(t) && t != TypeKind::binary && fits(from, to);
}

bool impossible(const SqlType& from, const SqlType& to) {
  const auto f = from.kind, t = to.kind;
  if (f == t) return false;
  constexpr auto guid = TypeKind::uniqueidentifier;
  return (isDate(f) && t == guid) || (f == guid && !isText(t) && !isBinary(t)) ||
         (t == guid && !isText(f) && !isBinary(f)) || (f == TypeKind::image && !isBinary(t)) ||
         (t == TypeKind::image && !isBinary(f)) || ((f == TypeKind::ntext || f == TypeKind::text) && !isText(t)) ||
         ((t == TypeKind::ntext || t == TypeKind::text) && !isText(f));
}

void refuse(const SqlType& from, const SqlType& to, SourcePos pos) {
  if (impossible(from, to))
    fail(206, "Operand type clash: " + from.baseName() + " is incompatible with " + to.baseName(), pos);
}

// What only a cast or convert does, an assignment does not.
void refuseUnasked(const SqlType& from, const SqlType& to, SourcePos pos) {
  refuse(from, to, pos);
  if ((isDate(from.kind) && isNumeric(to.kind)) || (isText(from.kind) && isBinary(to.kind)))
    fail(257,
         "Implicit conversion from data type " + from.baseName() + " to " + to.baseName() +
             " is not allowed. Use the CONVERT function to run this query.",
         pos);
}

// Where a literal may never be reached it is converted early only if that cannot fail.
bool mayFail(const SqlType& literal, const SqlType& to) {
  if (isText(literal.kind)) return !isText(to.kind);
  return isExactInteger(to.kind) && to.kind != TypeKind::bit && !isExactInteger(literal.kind);
}

}  // namespace

BoundPtr Binder::castTo(BoundPtr e, const SqlType& type) {
  if (e->op == BoundOp::slot) {
    Slot& slot = out_.slots[static_cast<std::size_t>(e->slotIndex)];
    const bool later = branches_ > 0 && slot.source == Slot::Source::literal && mayFail(slot.constantType, type);
    if (slot.type.kind == TypeKind::null && !later) {
      if (slot.constantType.kind != TypeKind::null) refuse(slot.constantType, type, e->pos);
      slot.type = type;
      e->type = type;
      return e;
    }
  }
  return convertTo(std::move(e), type);
}

BoundPtr Binder::convertTo(BoundPtr e, const SqlType& type, bool store) {
  if (type.kind == TypeKind::null) return e;
  if (e->op == BoundOp::null) {
    e->type = type;
    return e;
  }
  if (e->op == BoundOp::slot) {
    Slot& slot = out_.slots[static_cast<std::size_t>(e->slotIndex)];
    const bool later = branches_ > 0 && slot.source == Slot::Source::literal && mayFail(slot.constantType, type);
    if (slot.type.kind == TypeKind::null &&
        !later) {  // not converted yet: the value is converted once, before the statement runs
      if (slot.constantType.kind != TypeKind::null) (store ? refuseUnasked : refuse)(slot.constantType, type, e->pos);
      e->type = type;
      if (!store && isText(slot.constantType.kind) && isText(type.kind)) return e;
      slot.type = type;
      if (!store && type.kind == TypeKind::decimal) slot.type.precision = 38;
      slot.store = store;
      return e;
    }
  }
  if (sameForm(e->type, type)) {
    e->type = type;
    return e;
  }
  (store ? refuseUnasked : refuse)(e->type, type, e->pos);
  if (e->op == BoundOp::caseWhen && isText(e->type.kind) && isText(type.kind)) {
    // Each result by itself: its literals are then converted once and not per row.
    const std::size_t pairs = e->args.size() / 2;
    for (std::size_t i = 0; i < pairs; ++i) e->args[2 * i + 1] = convertTo(std::move(e->args[2 * i + 1]), type, store);
    if (e->negated) e->args.back() = convertTo(std::move(e->args.back()), type, store);
    e->type = type;
    return e;
  }
  auto c = std::make_unique<BoundExpr>();
  c->op = store ? BoundOp::store : BoundOp::conv;
  c->type = c->target = type;
  c->nullable = e->nullable;
  c->pos = e->pos;
  c->args.push_back(std::move(e));
  return c;
}

SqlType Binder::common(const SqlType& a, const SqlType& b, SourcePos pos) const {
  if (a.kind == TypeKind::null) return b;
  if (b.kind == TypeKind::null) return a;
  if (isText(a.kind) && isText(b.kind)) {
    if (isLob(a.kind) || isLob(b.kind))
      return typeOf(isUnicode(a.kind) || isUnicode(b.kind) ? TypeKind::ntext : TypeKind::text);
    const bool unicode = isUnicode(a.kind) || isUnicode(b.kind);
    const bool max = a.length == SqlType::maxLength || b.length == SqlType::maxLength;
    return typeOf(unicode ? TypeKind::nvarchar : TypeKind::varchar,
                  max ? SqlType::maxLength : std::max(a.length, b.length));
  }
  if (a.kind == TypeKind::decimal && b.kind == TypeKind::decimal) {
    const int scale = std::max(a.scale, b.scale);
    return decimalType(std::min(38, std::max(a.precision - a.scale, b.precision - b.scale) + scale), scale);
  }
  if ((a.kind == TypeKind::decimal && isNumeric(b.kind) && !isApproximate(b.kind)) ||
      (b.kind == TypeKind::decimal && isNumeric(a.kind) && !isApproximate(a.kind)))
    return common(asDecimal(a), asDecimal(b), pos);
  if (isBinary(a.kind) && isBinary(b.kind)) {
    SqlType t = precedence(a.kind) >= precedence(b.kind) ? a : b;
    t.length = std::max(a.length, b.length);
    return t;
  }
  const SqlType& high = precedence(a.kind) >= precedence(b.kind) ? a : b;
  refuse(&high == &a ? b : a, high, pos);
  return high;
}

void Binder::requireCast(const SqlType& from, const SqlType& to, SourcePos pos) const {
  if (from.kind != TypeKind::null && impossible(from, to))
    fail(529, "Explicit conversion from data type " + from.baseName() + " to " + to.baseName() + " is not allowed.",
         pos);
}

void Binder::requireComparable(const BoundExpr& e, SourcePos pos) const {
  if (isLob(e.type.kind))
    fail(306,
         "The text, ntext, and image data types cannot be compared or sorted, except when using IS NULL or LIKE "
         "operator.",
         pos);
}

void Binder::refuseLongTexts(ast::CompareOp op, const BoundExpr& l, const BoundExpr& r, SourcePos pos) const {
  if (!isLob(l.type.kind) && !isLob(r.type.kind)) return;
  if (isLob(l.type.kind) && isLob(r.type.kind)) requireComparable(l, pos);
  const auto name = [&] {
    switch (op) {
      case ast::CompareOp::equal:
        return "equal to";
      case ast::CompareOp::notEqual:
        return "not equal to";
      case ast::CompareOp::less:
        return "less than";
      case ast::CompareOp::lessEqual:
        return "less than or equal to";
      case ast::CompareOp::greater:
        return "greater than";
      case ast::CompareOp::greaterEqual:
        return "greater than or equal to";
    }
    return "";
  };
  fail(402,
       "The data types " + l.type.baseName() + " and " + r.type.baseName() + " are incompatible in the " + name() +
           " operator.",
       pos);
}

SqlType Binder::typeFromName(const ast::TypeName& t, int defaultLength) const {
  const auto type = typeByName(t.name, t.first, t.second, t.max, defaultLength);
  if (!type) fail(243, "Type " + t.name + " is not a defined system type.", t.pos);
  return *type;
}

BoundPtr Binder::comparison(ast::CompareOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
  auto make = [&](BoundPtr a, BoundPtr b) {
    auto e = std::make_unique<BoundExpr>();
    e->op = BoundOp::compare;
    e->compareOp = op;
    e->pos = pos;
    e->type = typeOf(TypeKind::bit);
    e->args.push_back(std::move(a));
    e->args.push_back(std::move(b));
    return e;
  };
  const SqlType lt = l->type, rt = r->type;
  refuseLongTexts(op, *l, *r, pos);
  if (isText(lt.kind) && isText(rt.kind)) return make(std::move(l), std::move(r));
  if (isExactInteger(lt.kind) && isExactInteger(rt.kind)) return make(std::move(l), std::move(r));
  SqlType t = common(lt, rt, pos);
  // An amount beside a decimal that an amount can hold compares as an amount: nothing is lost.
  auto holdsAsMoney = [](const SqlType& x) {
    return isMoney(x.kind) || (x.kind == TypeKind::decimal && x.scale <= 4 && x.precision - x.scale <= 14) ||
           (isExactInteger(x.kind) && x.kind != TypeKind::bigint);
  };
  if (t.kind == TypeKind::decimal && (isMoney(lt.kind) || isMoney(rt.kind)) && holdsAsMoney(lt) && holdsAsMoney(rt))
    t = typeOf(TypeKind::money);
  if (t.kind == TypeKind::decimal && t.precision > 18) {
    // Beyond 64 bits: compared by a function, each side in its own scale.
    auto a = convertTo(std::move(l), isText(lt.kind) ? t : asDecimal(lt));
    auto b = convertTo(std::move(r), isText(rt.kind) ? t : asDecimal(rt));
    const int sa = a->type.scale, sb = b->type.scale;
    auto cmp = call("ts_dcmp", typeOf(TypeKind::integer), pos, std::move(a), constant(sa), std::move(b), constant(sb));
    return make(std::move(cmp), constant(0));
  }
  return make(convertTo(std::move(l), t), convertTo(std::move(r), t));
}

}  // namespace tsql
