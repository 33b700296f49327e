#include "tsql/ast.h"

// The nodes that own a Select, which is incomplete where they are declared.
namespace tsql::ast {

Subquery::Subquery(SourcePos p, Ptr<Select> s) : Expr(ExprKind::subquery, p), select(std::move(s)) {}
Subquery::~Subquery() = default;

InSelect::InSelect(SourcePos p, ExprPtr x, bool n, Ptr<Select> s)
    : Expr(ExprKind::inSelect, p), operand(std::move(x)), negated(n), select(std::move(s)) {}
InSelect::~InSelect() = default;

Exists::Exists(SourcePos p, Ptr<Select> s) : Expr(ExprKind::exists, p), select(std::move(s)) {}
Exists::~Exists() = default;

Quantified::Quantified(SourcePos p, CompareOp o, Quantifier q, ExprPtr l, Ptr<Select> s)
    : Expr(ExprKind::quantified, p), op(o), quantifier(q), left(std::move(l)), select(std::move(s)) {}
Quantified::~Quantified() = default;

DerivedSource::DerivedSource(SourcePos p, Ptr<Select> s, std::string a)
    : Source(Kind::derived, p), select(std::move(s)), alias(std::move(a)) {}
DerivedSource::~DerivedSource() = default;

}  // namespace tsql::ast
