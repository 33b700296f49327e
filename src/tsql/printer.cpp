// The tree as text: expressions and names.

#include <algorithm>

#include "tsql/ascii.h"
#include "tsql/printer_impl.h"

namespace tsql {

using namespace ast;

namespace {

template <class Node>
const Node& as(const Expr& e) {
  return static_cast<const Node&>(e);
}

const char* spelled(BinaryOp op) {
  switch (op) {
    case BinaryOp::add:
      return " + ";
    case BinaryOp::subtract:
      return " - ";
    case BinaryOp::multiply:
      return " * ";
    case BinaryOp::divide:
      return " / ";
    case BinaryOp::modulo:
      return " % ";
    case BinaryOp::bitAnd:
      return " & ";
    case BinaryOp::bitOr:
      return " | ";
    case BinaryOp::bitXor:
      return " ^ ";
  }
  return "";
}

const char* spelled(CompareOp op) {
  switch (op) {
    case CompareOp::equal:
      return " = ";
    case CompareOp::notEqual:
      return " <> ";
    case CompareOp::less:
      return " < ";
    case CompareOp::lessEqual:
      return " <= ";
    case CompareOp::greater:
      return " > ";
    case CompareOp::greaterEqual:
      return " >= ";
  }
  return "";
}

// Whether a name can stand without brackets.
bool isPlain(std::string_view name) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80); };
  const auto isStart = [&](char c) { return isLetter(c) || c == '_' || c == '#'; };
  const auto isPart = [&](char c) { return isStart(c) || (c >= '0' && c <= '9') || c == '@' || c == '$'; };
  return !name.empty() && isStart(name[0]) && std::all_of(name.begin(), name.end(), isPart) &&
         !isReserved(lowerCase(name)) && lowerCase(name) != "cast";
}

}  // namespace

Printer::Printer(const TokenStream& tokens) {
  literals.reserve(tokens.literals.size());
  for (const Token& token : tokens.tokens)
    if (token.isLiteral()) literals.push_back(token.raw);
}

void Printer::identifier(std::string_view identifierName) {
  if (isPlain(identifierName)) return put(identifierName);
  out += '[';
  for (const char c : identifierName) {
    out += c;
    if (c == ']') out += c;
  }
  out += ']';
}

void Printer::name(const Name& n) {
  for (std::size_t i = 0; i < n.parts.size(); ++i) {
    if (i) out += '.';
    if (!n.parts[i].empty()) identifier(n.parts[i]);
  }
}

void Printer::type(const TypeName& t) {
  identifier(t.name);
  if (t.max) put("(max)");
  if (!t.first) return;
  out += '(' + std::to_string(*t.first);
  if (t.second) out += ',' + std::to_string(*t.second);
  out += ')';
}

void Printer::subquery(const Select& s) {
  out += '(';
  select(s);
  out += ')';
}

void Printer::expressions(const std::vector<ExprPtr>& list) {
  commaList(list, [this](const ExprPtr& e) { expr(*e); });
}

// How tightly the outermost operator of an expression binds.
Printer::Level Printer::levelOf(const Expr& e) {
  switch (e.kind) {
    case ExprKind::logical:
      return as<Logical>(e).isAnd ? Level::conjunction : Level::any;
    case ExprKind::negation:
      return Level::negation;
    case ExprKind::comparison:
    case ExprKind::isNull:
    case ExprKind::inList:
    case ExprKind::inSelect:
    case ExprKind::between:
    case ExprKind::like:
    case ExprKind::quantified:
      return Level::predicate;
    case ExprKind::binary:
      switch (as<Binary>(e).op) {
        case BinaryOp::multiply:
        case BinaryOp::divide:
        case BinaryOp::modulo:
          return Level::multiplicative;
        default:
          return Level::additive;
      }
    case ExprKind::unary:
      // A sign takes the product behind it, so inside a product it needs brackets of its own.
      return as<Unary>(e).op == UnaryOp::bitNot ? Level::factor : Level::additive;
    default:
      return Level::factor;
  }
}

void Printer::expr(const Expr& e, Level place) {
  const bool brackets = levelOf(e) < place;
  if (brackets) out += '(';
  bare(e);
  if (brackets) out += ')';
}

void Printer::bare(const Expr& e) {
  switch (e.kind) {
    case ExprKind::literal:
      return put(literals[static_cast<std::size_t>(as<Literal>(e).ordinal)]);
    case ExprKind::null:
      return put("null");
    case ExprKind::column:
      return name(as<Column>(e).name);
    case ExprKind::star:
      if (!as<Star>(e).qualifier.parts.empty()) {
        name(as<Star>(e).qualifier);
        out += '.';
      }
      return put("*");
    case ExprKind::variable:
      return put(as<Variable>(e).name);
    case ExprKind::parameter:
      return put("?");
    case ExprKind::unary:
    case ExprKind::binary:
    case ExprKind::comparison:
    case ExprKind::logical:
    case ExprKind::negation:
      return operators(e);
    case ExprKind::caseWhen:
    case ExprKind::function:
    case ExprKind::cast:
    case ExprKind::convert:
    case ExprKind::subquery:
      return functions(e);
    case ExprKind::isNull:
    case ExprKind::inList:
    case ExprKind::inSelect:
    case ExprKind::between:
    case ExprKind::like:
    case ExprKind::exists:
    case ExprKind::quantified:
      return conditions(e);
  }
}

void Printer::operators(const Expr& e) {
  switch (e.kind) {
    case ExprKind::unary: {
      const auto& unary = as<Unary>(e);
      put(unary.op == UnaryOp::minus ? "-" : unary.op == UnaryOp::plus ? "+" : "~");
      return expr(*unary.operand, unary.op == UnaryOp::bitNot ? Level::factor : Level::multiplicative);
    }
    case ExprKind::binary: {
      // Operators of one level group to the left. A right operand with a sign is in brackets: two minus signs in a
      // row would begin a comment.
      const auto& binary = as<Binary>(e);
      const bool product = levelOf(e) == Level::multiplicative;
      expr(*binary.left, product ? Level::multiplicative : Level::additive);
      put(spelled(binary.op));
      return expr(*binary.right, product ? Level::factor : Level::multiplicative);
    }
    case ExprKind::comparison: {
      const auto& comparison = as<Comparison>(e);
      expr(*comparison.left, Level::additive);
      put(spelled(comparison.op));
      return expr(*comparison.right, Level::additive);
    }
    case ExprKind::logical: {
      const auto& logical = as<Logical>(e);
      expr(*logical.left, logical.isAnd ? Level::conjunction : Level::any);
      put(logical.isAnd ? " and " : " or ");
      return expr(*logical.right, logical.isAnd ? Level::negation : Level::conjunction);
    }
    default:
      put("not ");
      return expr(*as<Negation>(e).operand, Level::negation);
  }
}

void Printer::caseExpression(const Case& e) {
  put("case");
  if (e.input) {
    out += ' ';
    expr(*e.input);
  }
  for (const Case::When& when : e.whens) {
    put(" when ");
    expr(*when.condition);
    put(" then ");
    expr(*when.result);
  }
  if (e.otherwise) {
    put(" else ");
    expr(*e.otherwise);
  }
  put(" end");
}

void Printer::functions(const Expr& e) {
  switch (e.kind) {
    case ExprKind::caseWhen:
      return caseExpression(as<Case>(e));
    case ExprKind::function: {
      const auto& call = as<Function>(e);
      const std::string lower = lowerCase(call.name);
      const bool mayBeNiladic = call.arguments.empty();
      for (const char* niladic : {"current_timestamp", "current_user", "session_user", "system_user", "user"})
        if (mayBeNiladic && lower == niladic) return put(call.name);
      const bool reservedFunction =
          lower == "left" || lower == "right" || lower == "coalesce" || lower == "nullif" || lower == "identity";
      reservedFunction ? put(call.name) : identifier(call.name);
      put(call.distinct ? "(distinct " : "(");
      expressions(call.arguments);
      return put(")");
    }
    case ExprKind::cast:
      put("cast(");
      expr(*as<Cast>(e).operand);
      put(" as ");
      type(as<Cast>(e).type);
      return put(")");
    case ExprKind::convert:
      put("convert(");
      type(as<Convert>(e).type);
      put(", ");
      expr(*as<Convert>(e).operand);
      if (as<Convert>(e).style) {
        put(", ");
        expr(*as<Convert>(e).style);
      }
      return put(")");
    default:
      return subquery(*as<Subquery>(e).select);
  }
}

void Printer::conditions(const Expr& e) {
  const auto left = [this](const Expr& operand, bool negated) {
    expr(operand, Level::additive);
    put(negated ? " not" : "");
  };
  switch (e.kind) {
    case ExprKind::isNull:
      expr(*as<IsNull>(e).operand, Level::additive);
      return put(as<IsNull>(e).negated ? " is not null" : " is null");
    case ExprKind::inList:
      left(*as<InList>(e).operand, as<InList>(e).negated);
      put(" in (");
      expressions(as<InList>(e).items);
      return put(")");
    case ExprKind::inSelect:
      left(*as<InSelect>(e).operand, as<InSelect>(e).negated);
      put(" in ");
      return subquery(*as<InSelect>(e).select);
    case ExprKind::between:
      left(*as<Between>(e).operand, as<Between>(e).negated);
      put(" between ");
      expr(*as<Between>(e).low, Level::additive);
      put(" and ");
      return expr(*as<Between>(e).high, Level::additive);
    case ExprKind::like:
      left(*as<Like>(e).operand, as<Like>(e).negated);
      put(" like ");
      expr(*as<Like>(e).pattern, Level::additive);
      if (as<Like>(e).escape) {
        put(" escape ");
        expr(*as<Like>(e).escape, Level::additive);
      }
      return;
    case ExprKind::quantified:
      expr(*as<Quantified>(e).left, Level::additive);
      put(spelled(as<Quantified>(e).op));
      put(as<Quantified>(e).quantifier == Quantifier::all ? "all " : "any ");
      return subquery(*as<Quantified>(e).select);
    default:
      put("exists ");
      return subquery(*as<Exists>(e).select);
  }
}

std::string print(const Expr& e, const TokenStream& tokens) {
  Printer printer(tokens);
  printer.expr(e);
  return printer.take();
}

std::string print(const Statement& statement, const TokenStream& tokens) {
  Printer printer(tokens);
  printer.statement(statement);
  return printer.take();
}

std::string print(const Batch& batch, const TokenStream& tokens) {
  Printer printer(tokens);
  printer.batch(batch);
  return printer.take();
}

}  // namespace tsql
