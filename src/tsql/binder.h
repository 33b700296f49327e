#pragma once
// Binder: syntax tree and catalog to a bound tree.
//
// Throws SqlError with the server's number and wording: 207, 208, 209, 4104 names; 8120, 147, 145, 108 clauses; 213,
// 109, 110, 120, 121 inserts; 8117, 402, 206, 257 types; 174, 195 functions; 544, 545, 8101, 8102 identity columns.

#include <set>
#include <string>

#include "tsql/bound.h"
#include "tsql/token.h"

namespace tsql {

struct BindOptions {
  std::string identityInsert;  // "db.table" in lower case for which identity numbers are given by the statement
};

BoundStatement bindSelect(const ast::Select& select, const TokenStream& tokens, Catalog& catalog);
// The condition of an if: a select of one item, 1 or 0.
BoundStatement bindCondition(const ast::Expr& condition, const TokenStream& tokens, Catalog& catalog);
// A scalar expression without tables: a select of one item converted to `type` (kind null: as it is), as an assignment
// to a column, where a text too long is a failure, or to a variable, where it is cut.
enum class Assigned { column, variable };
BoundStatement bindScalar(const ast::Expr& expr, const TokenStream& tokens, Catalog& catalog, SqlType type,
                          Assigned assigned = Assigned::column);
BoundStatement bindInsert(const ast::Insert& insert, const TokenStream& tokens, Catalog& catalog,
                          const BindOptions& options);
BoundStatement bindUpdate(const ast::Update& update, const TokenStream& tokens, Catalog& catalog);
BoundStatement bindDelete(const ast::Delete& del, const TokenStream& tokens, Catalog& catalog);
// An expression over the columns of one table (check, computed column). Literals become fixed values.
BoundStatement bindTableExpression(const ast::Expr& expr, const TokenStream& tokens, const TableDef& table,
                                   Catalog& catalog, bool condition);

}  // namespace tsql
