#pragma once
// Parser: tokens of one batch to a syntax tree. A wrong text anywhere throws and nothing of the batch runs.

#include "tsql/ast.h"
#include "tsql/token.h"

namespace tsql {

// Throws SqlError: 102 "Incorrect syntax near 'x'.", 156 "Incorrect syntax near the keyword 'x'.", and unsupported
// constructs by name with their place.
ast::Batch parse(const TokenStream& tokens);

// One expression alone (a stored default or check text).
ast::ExprPtr parseExpression(const TokenStream& tokens);

// The tree as text of the dialect. Literals are taken from `tokens`; parse(print(parse(x))) is parse(x).
std::string print(const ast::Batch& batch, const TokenStream& tokens);
std::string print(const ast::Statement& statement, const TokenStream& tokens);
std::string print(const ast::Expr& expr, const TokenStream& tokens);

// Reserved words of the dialect, lower case: they cannot be bare names.
bool isReserved(std::string_view lowerWord);

}  // namespace tsql
