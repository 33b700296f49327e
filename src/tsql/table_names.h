#pragma once
// The names of tables that a statement reads or writes, for a caller that has to know whether they are there before
// the statement can be bound.

#include <functional>

#include "tsql/ast.h"

namespace tsql {

using NameVisitor = std::function<void(const ast::Name&)>;

// Of a select, insert, update or delete, its subqueries included. A target that is a short name of the statement's from
// clause and the name behind `into` are none. Other statements name no tables here.
void visitTableNames(const ast::Statement& statement, const NameVisitor& visit);
void visitTableNames(const ast::Expr& expr, const NameVisitor& visit);

}  // namespace tsql
