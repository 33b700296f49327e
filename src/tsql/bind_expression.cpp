#include <algorithm>
#include <optional>

#include "tsql/binder_impl.h"
#include "tsql/date_text.h"

namespace tsql {

using ast::ExprKind;

namespace {

const char* symbol(ast::BinaryOp op) {
  switch (op) {
    case ast::BinaryOp::add:
      return "add";
    case ast::BinaryOp::subtract:
      return "subtract";
    case ast::BinaryOp::multiply:
      return "multiply";
    case ast::BinaryOp::divide:
      return "divide";
    case ast::BinaryOp::modulo:
      return "modulo";
    case ast::BinaryOp::bitAnd:
      return "'&'";
    case ast::BinaryOp::bitOr:
      return "'|'";
    case ast::BinaryOp::bitXor:
      return "'^'";
  }
  return "";
}

const char* suffix(ast::BinaryOp op) {
  switch (op) {
    case ast::BinaryOp::add:
      return "add";
    case ast::BinaryOp::subtract:
      return "sub";
    case ast::BinaryOp::multiply:
      return "mul";
    case ast::BinaryOp::divide:
      return "div";
    default:
      return "mod";
  }
}

// Digits and scale of a decimal result; a result of more than 38 digits gives up decimals, but not below six.
SqlType decimalResult(ast::BinaryOp op, const SqlType& a, const SqlType& b) {
  int p = 0, s = 0;
  switch (op) {
    case ast::BinaryOp::multiply:
      p = a.precision + b.precision + 1;
      s = a.scale + b.scale;
      break;
    case ast::BinaryOp::divide:
      s = std::max(6, a.scale + b.precision + 1);
      p = a.precision - a.scale + b.scale + s;
      break;
    case ast::BinaryOp::modulo:
      s = std::max(a.scale, b.scale);
      p = std::min(a.precision - a.scale, b.precision - b.scale) + s;
      break;
    default:
      s = std::max(a.scale, b.scale);
      p = std::max(a.precision - a.scale, b.precision - b.scale) + s + 1;
  }
  if (p > 38) {
    const int whole = p - s;
    s = std::max(std::min(s, 6), 38 - whole);
    p = 38;
  }
  return decimalType(p, s);
}

class ExpressionBinder {
public:
  ExpressionBinder(Binder& b, Scope& scope) : b_(b), scope_(scope) {}

  BoundPtr literal(const ast::Literal& l) {
    Slot slot;
    slot.ordinal = l.ordinal;
    const LiteralValue& v = b_.tokens_.literals[static_cast<std::size_t>(l.ordinal)];
    if (b_.definitionTable_) {
      slot.source = Slot::Source::constant;
      slot.constant = v.value;
    }
    slot.constantType = v.type;
    return b_.slotFor(slot, false, l.pos);
  }

  BoundPtr variable(const ast::Variable& v) {
    Slot slot;
    slot.source = Slot::Source::variable;
    slot.name = v.name;
    slot.constantType = b_.variableType(v.name, v.pos);
    if (b_.rowByRow_ && v.name.rfind("@@", 0) != 0) {
      for (const auto& name : b_.assigned_)
        if (sameName(name, v.name)) throwUnsupported("a variable that the same selection assigns before", v.pos);
      auto name = std::make_unique<BoundExpr>();
      name->op = BoundOp::integer;
      name->text = v.name;  // emitted as a text
      return b_.call("ts_variable", slot.constantType, v.pos, std::move(name));
    }
    return b_.slotFor(slot, true, v.pos);
  }

  BoundPtr unary(const ast::Unary& u) {
    auto x = b_.value(*u.operand, scope_);
    if (u.op == ast::UnaryOp::plus) return x;
    if (u.op == ast::UnaryOp::bitNot) {
      if (!isExactInteger(x->type.kind))
        fail(8117, "Operand data type " + x->type.baseName() + " is invalid for '~' operator.", u.pos);
      const SqlType t = x->type;
      if (t.kind == TypeKind::tinyint)  // has no sign
        return b_.call("ts_ixor", t, u.pos, std::move(x), b_.constant(255));
      return b_.call(t.kind == TypeKind::bit ? "not" : "~", t, u.pos, std::move(x));
    }
    if ((!isNumeric(x->type.kind) || x->type.kind == TypeKind::bit) && x->type.kind != TypeKind::null)
      fail(8117, "Operand data type " + x->type.baseName() + " is invalid for minus operator.", u.pos);
    if (x->op == BoundOp::slot) {
      Slot& slot = b_.out_.slots[static_cast<std::size_t>(x->slotIndex)];
      if (slot.source == Slot::Source::literal && slot.type.kind == TypeKind::null) {
        slot.negate = !slot.negate;
        return x;
      }
    }
    if (x->type.kind == TypeKind::tinyint) x = b_.convertTo(std::move(x), typeOf(TypeKind::smallint));
    const SqlType t = x->type;
    const bool nullable = x->nullable;
    BoundPtr r;
    if (isMoney(t.kind))
      r = b_.call("ts_mneg", t, u.pos, std::move(x));
    else if (t.kind == TypeKind::decimal)
      r = b_.call("ts_dneg", t, u.pos, std::move(x));
    else if (isApproximate(t.kind))
      r = b_.call("-", t, u.pos, std::move(x));
    else
      r = b_.call("ts_ineg", t, u.pos, std::move(x), b_.constant(static_cast<int>(t.kind)));
    r->nullable = nullable;
    return r;
  }

  BoundPtr binary(const ast::Binary& e) {
    auto l = b_.value(*e.left, scope_);
    auto r = b_.value(*e.right, scope_);
    if (l->op == BoundOp::null && r->op == BoundOp::null) return l;
    const bool nullable = l->nullable || r->nullable;
    auto result = arithmetic(e.op, std::move(l), std::move(r), e.pos);
    result->nullable = nullable;
    return result;
  }

  BoundPtr arithmetic(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    if (l->type.kind == TypeKind::null) l = b_.convertTo(std::move(l), r->type);
    if (r->type.kind == TypeKind::null) r = b_.convertTo(std::move(r), l->type);
    const auto lk = l->type.kind, rk = r->type.kind;
    const bool bits = op == ast::BinaryOp::bitAnd || op == ast::BinaryOp::bitOr || op == ast::BinaryOp::bitXor;
    if (isLob(lk) || isLob(rk) || (lk == TypeKind::bit && rk == TypeKind::bit && !bits))
      fail(402,
           "The data types " + l->type.baseName() + " and " + r->type.baseName() + " are incompatible in the " +
               symbol(op) + " operator.",
           pos);
    if (isText(lk) && isText(rk)) return textArithmetic(op, std::move(l), std::move(r), pos);
    if (op == ast::BinaryOp::add && isBinary(lk) && isBinary(rk)) return concat(std::move(l), std::move(r), pos);
    if (isDate(lk) || isDate(rk)) return dateArithmetic(op, std::move(l), std::move(r), pos);
    if (isBinary(lk) && isExactInteger(rk)) l = b_.convertTo(std::move(l), r->type);
    if (isBinary(rk) && isExactInteger(lk)) r = b_.convertTo(std::move(r), l->type);
    for (const auto k : {l->type.kind, r->type.kind})
      if (!isNumeric(k) && !isText(k))
        fail(8117, "Operand data type " + typeOf(k).baseName() + " is invalid for " + symbol(op) + " operator.", pos);
    return numeric(op, std::move(l), std::move(r), pos);
  }

  BoundPtr textArithmetic(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    if (op == ast::BinaryOp::add) return concat(std::move(l), std::move(r), pos);
    if (op == ast::BinaryOp::subtract || op == ast::BinaryOp::multiply || op == ast::BinaryOp::divide ||
        op == ast::BinaryOp::modulo)
      fail(8117, "Operand data type " + l->type.baseName() + " is invalid for " + symbol(op) + " operator.", pos);
    fail(402,
         "The data types " + l->type.baseName() + " and " + r->type.baseName() + " are incompatible in the " +
             symbol(op) + " operator.",
         pos);
  }

  BoundPtr concat(BoundPtr l, BoundPtr r, SourcePos pos) {
    SqlType t = b_.common(l->type, r->type, pos);
    if (t.length != SqlType::maxLength && !isLob(t.kind)) {
      const int limit = isUnicode(t.kind) ? 4000 : 8000;
      t.length = l->type.length == SqlType::maxLength || r->type.length == SqlType::maxLength
                     ? SqlType::maxLength
                     : std::min(limit, l->type.length + r->type.length);
    }
    auto e = std::make_unique<BoundExpr>();
    e->op = BoundOp::concat;
    e->type = t;
    e->pos = pos;
    // A text of the code page beside a Unicode text: held alike, nothing to convert.
    e->args.push_back(std::move(l));
    e->args.push_back(std::move(r));
    return e;
  }

  BoundPtr dateArithmetic(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    if (op != ast::BinaryOp::add && op != ast::BinaryOp::subtract)
      fail(8117, "Operand data type datetime is invalid for " + std::string(symbol(op)) + " operator.", pos);
    const SqlType date = typeOf(TypeKind::datetime);
    if (isText(l->type.kind)) l = b_.convertTo(std::move(l), date);
    if (isText(r->type.kind)) r = b_.convertTo(std::move(r), date);
    if (isDate(l->type.kind) && isDate(r->type.kind)) {
      // The sum or difference of the two as points since 1900.
      return b_.call("ts_date", date, pos,
                     b_.call(op == ast::BinaryOp::add ? "+" : "-", date, pos, std::move(l), std::move(r)));
    }
    const bool dateLeft = isDate(l->type.kind);
    auto& number = dateLeft ? r : l;
    number = b_.convertTo(std::move(number), typeOf(TypeKind::float_));
    if (op == ast::BinaryOp::subtract) {
      if (!dateLeft)
        return b_.call("ts_date", date, pos, b_.call("-", date, pos, b_.convertTo(std::move(l), date), std::move(r)));
      r = b_.call("-", typeOf(TypeKind::float_), pos, std::move(r));
    }
    return dateLeft ? b_.call("ts_datetime_add", date, pos, std::move(l), std::move(r))
                    : b_.call("ts_datetime_add", date, pos, std::move(r), std::move(l));
  }

  BoundPtr numeric(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    if (isText(l->type.kind))
      l = b_.convertTo(std::move(l), r->type.kind == TypeKind::bit ? typeOf(TypeKind::integer) : r->type);
    if (isText(r->type.kind))
      r = b_.convertTo(std::move(r), l->type.kind == TypeKind::bit ? typeOf(TypeKind::integer) : l->type);
    const SqlType lt = l->type, rt = r->type;
    if (op == ast::BinaryOp::bitAnd || op == ast::BinaryOp::bitOr || op == ast::BinaryOp::bitXor)
      return bits(op, std::move(l), std::move(r), pos);
    if (isApproximate(lt.kind) || isApproximate(rt.kind)) return approximate(op, std::move(l), std::move(r), pos);
    if (lt.kind == TypeKind::decimal || rt.kind == TypeKind::decimal)
      return decimals(op, std::move(l), std::move(r), pos);
    if (isMoney(lt.kind) || isMoney(rt.kind)) return money(op, std::move(l), std::move(r), pos);
    SqlType t = precedence(lt.kind) >= precedence(rt.kind) ? lt : rt;
    if (t.kind == TypeKind::bit) t = typeOf(TypeKind::integer);
    return b_.call(std::string("ts_i") + suffix(op), t, pos, b_.convertTo(std::move(l), t),
                   b_.convertTo(std::move(r), t), b_.constant(static_cast<int>(t.kind)));
  }

  BoundPtr bits(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    if (!isExactInteger(l->type.kind) || !isExactInteger(r->type.kind))
      fail(402,
           "The data types " + l->type.baseName() + " and " + r->type.baseName() + " are incompatible in the " +
               symbol(op) + " operator.",
           pos);
    const SqlType t = precedence(l->type.kind) >= precedence(r->type.kind) ? l->type : r->type;
    if (op == ast::BinaryOp::bitXor) return b_.call("ts_ixor", t, pos, std::move(l), std::move(r));
    return b_.call(op == ast::BinaryOp::bitAnd ? "&" : "|", t, pos, std::move(l), std::move(r));
  }

  BoundPtr approximate(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    // A real beside anything that is no float makes a real.
    const bool wide = l->type.kind == TypeKind::float_ || r->type.kind == TypeKind::float_;
    const SqlType t = typeOf(wide ? TypeKind::float_ : TypeKind::real);
    const std::string names = l->type.baseName() + " and " + r->type.baseName();
    l = b_.convertTo(std::move(l), t);
    r = b_.convertTo(std::move(r), t);
    switch (op) {
      case ast::BinaryOp::add:
      case ast::BinaryOp::subtract:
      case ast::BinaryOp::multiply:
      case ast::BinaryOp::divide:
        return b_.convertTo(
            b_.call(std::string("ts_f") + suffix(op), typeOf(TypeKind::float_), pos, std::move(l), std::move(r)), t);
      default:
        fail(402, "The data types " + names + " are incompatible in the modulo operator.", pos);
    }
  }

  // An int literal beside a decimal has as many digits as it is written with.
  SqlType decimalOf(const BoundExpr& e) {
    if (e.op == BoundOp::slot && isExactInteger(e.type.kind)) {
      const Slot& slot = b_.out_.slots[static_cast<std::size_t>(e.slotIndex)];
      if (slot.source == Slot::Source::literal && slot.type.kind == TypeKind::null) {
        b_.pin(slot.ordinal);
        const auto& v = b_.tokens_.literals[static_cast<std::size_t>(slot.ordinal)].value;
        int digits = 1;
        for (auto n = std::get<std::int64_t>(v); n >= 10; n /= 10) ++digits;
        return decimalType(digits, 0);
      }
    }
    if (e.type.kind == TypeKind::decimal) return e.type;
    if (e.type.kind == TypeKind::money) return decimalType(19, 4);
    if (e.type.kind == TypeKind::smallmoney) return decimalType(10, 4);
    switch (e.type.kind) {
      case TypeKind::bit:
        return decimalType(1, 0);
      case TypeKind::tinyint:
        return decimalType(3, 0);
      case TypeKind::smallint:
        return decimalType(5, 0);
      case TypeKind::integer:
        return decimalType(10, 0);
      default:
        return decimalType(19, 0);
    }
  }

  BoundPtr decimals(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    const SqlType a = decimalOf(*l), c = decimalOf(*r), t = decimalResult(op, a, c);
    if (op == ast::BinaryOp::divide)  // the decimals of a quotient hang on the digits of both sides
      for (const auto* e : {l.get(), r.get()})
        if (e->op == BoundOp::slot &&
            b_.out_.slots[static_cast<std::size_t>(e->slotIndex)].source == Slot::Source::literal)
          b_.pin(b_.out_.slots[static_cast<std::size_t>(e->slotIndex)].ordinal);
    l = b_.convertTo(std::move(l), a);
    r = b_.convertTo(std::move(r), c);
    return b_.call(std::string("ts_d") + suffix(op), t, pos, std::move(l), b_.constant(a.scale), std::move(r),
                   b_.constant(c.scale), b_.constant(t.scale));
  }

  BoundPtr money(ast::BinaryOp op, BoundPtr l, BoundPtr r, SourcePos pos) {
    const SqlType t = typeOf(TypeKind::money);
    if (op == ast::BinaryOp::modulo) {
      l = b_.convertTo(std::move(l), t);
      r = b_.convertTo(std::move(r), t);
      return b_.call("ts_imod", t, pos, std::move(l), std::move(r), b_.constant(static_cast<int>(TypeKind::bigint)));
    }
    l = b_.convertTo(std::move(l), t);
    r = b_.convertTo(std::move(r), t);
    return b_.call(std::string("ts_m") + suffix(op), t, pos, std::move(l), std::move(r));
  }

  BoundPtr caseWhen(const ast::Case& c) {
    auto e = std::make_unique<BoundExpr>();
    e->op = BoundOp::caseWhen;
    e->pos = c.pos;
    std::vector<BoundPtr> conditions, results;
    for (const auto& w : c.whens) {
      std::optional<Branch> later;  // only the first condition is always evaluated
      if (!conditions.empty()) later.emplace(b_.branches_);
      if (c.input) {
        auto input = b_.value(*c.input, scope_);
        auto with = b_.value(*w.condition, scope_);
        conditions.push_back(b_.comparison(ast::CompareOp::equal, std::move(input), std::move(with), c.pos));
      } else {
        conditions.push_back(b_.condition(*w.condition, scope_));
      }
      if (!later) later.emplace(b_.branches_);
      results.push_back(b_.value(*w.result, scope_));
    }
    const Branch branch(b_.branches_);
    if (c.otherwise) results.push_back(b_.value(*c.otherwise, scope_));
    SqlType t;
    bool nullable = !c.otherwise;
    for (const auto& r : results) {
      t = b_.common(t, r->type, c.pos);
      nullable = nullable || r->nullable;
    }
    if (t.kind == TypeKind::null &&
        std::all_of(results.begin(), results.end(), [](const auto& r) { return r->op == BoundOp::null; }))
      fail(8133,
           "At least one of the result expressions in a CASE specification must be an expression other than the NULL "
           "constant.",
           c.pos);
    e->type = t;
    e->nullable = nullable;
    e->negated = c.otherwise != nullptr;
    for (std::size_t i = 0; i < results.size(); ++i) {
      if (i < conditions.size()) e->args.push_back(std::move(conditions[i]));
      e->args.push_back(b_.convertTo(std::move(results[i]), t));
    }
    return e;
  }

  BoundPtr scalar(const ast::Subquery& s) {
    auto e = std::make_unique<BoundExpr>();
    e->op = BoundOp::scalar;
    e->pos = s.pos;
    e->select = b_.oneColumn(*s.select, scope_, s.pos);
    e->type = e->select->items[0].expr->type;
    return e;
  }

  // A style that stands in the text is looked at before anything runs.
  void requireStyle(const ast::Expr& style, const SqlType& from, bool toText) {
    if (style.kind != ExprKind::literal) return;
    const int ordinal = static_cast<const ast::Literal&>(style).ordinal;
    const auto* number = std::get_if<std::int64_t>(&b_.tokens_.literals[static_cast<std::size_t>(ordinal)].value);
    if (!number) return;
    b_.pin(ordinal);
    if (*number == 130 || *number == 131) throwUnsupported("convert style " + std::to_string(*number), style.pos);
    if (toText && (*number > 1000 || !dateText(0, static_cast<int>(*number))))
      fail(281,
           std::to_string(*number) + " is not a valid style number when converting from " + from.baseName() +
               " to a character string.",
           style.pos);
  }

  BoundPtr cast(const ast::Expr& operand, const ast::TypeName& name, const ast::Expr* style, SourcePos pos) {
    const SqlType t = b_.typeFromName(name, 30);
    auto x = b_.value(operand, scope_);
    if (x->op == BoundOp::null) return b_.convertTo(std::move(x), t);
    b_.requireCast(x->type, t, pos);
    if (!style) return b_.castTo(std::move(x), t);
    if ((isDate(x->type.kind) && isText(t.kind)) || (isText(x->type.kind) && isDate(t.kind)))
      requireStyle(*style, x->type, isText(t.kind));
    auto c = std::make_unique<BoundExpr>();
    c->op = BoundOp::conv;
    c->type = c->target = t;
    c->pos = pos;
    c->nullable = x->nullable;
    c->args.push_back(std::move(x));
    c->args.push_back(b_.convertTo(b_.value(*style, scope_), typeOf(TypeKind::integer)));
    return c;
  }

private:
  Binder& b_;
  Scope& scope_;
};

}  // namespace

BoundPtr Binder::value(const ast::Expr& e, Scope& scope) {
  ExpressionBinder x(*this, scope);
  switch (e.kind) {
    case ExprKind::literal:
      return x.literal(static_cast<const ast::Literal&>(e));
    case ExprKind::null: {
      auto n = std::make_unique<BoundExpr>();
      n->pos = e.pos;
      return n;
    }
    case ExprKind::column:
      return column(static_cast<const ast::Column&>(e), scope);
    case ExprKind::variable:
      return x.variable(static_cast<const ast::Variable&>(e));
    case ExprKind::parameter: {
      Slot slot;
      slot.source = Slot::Source::parameter;
      slot.ordinal = static_cast<const ast::Parameter&>(e).number;
      return slotFor(slot, true, e.pos);
    }
    case ExprKind::unary:
      return x.unary(static_cast<const ast::Unary&>(e));
    case ExprKind::binary:
      return x.binary(static_cast<const ast::Binary&>(e));
    case ExprKind::caseWhen:
      return x.caseWhen(static_cast<const ast::Case&>(e));
    case ExprKind::function:
      return function(static_cast<const ast::Function&>(e), scope);
    case ExprKind::cast: {
      const auto& c = static_cast<const ast::Cast&>(e);
      return x.cast(*c.operand, c.type, nullptr, c.pos);
    }
    case ExprKind::convert: {
      const auto& c = static_cast<const ast::Convert&>(e);
      return x.cast(*c.operand, c.type, c.style.get(), c.pos);
    }
    case ExprKind::subquery:
      return x.scalar(static_cast<const ast::Subquery&>(e));
    case ExprKind::star:
      throwSyntax("*", e.pos);
    default:
      throwSyntax("condition", e.pos);
  }
}

}  // namespace tsql
