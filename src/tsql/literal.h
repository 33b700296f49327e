#pragma once
// Literals: the spelling of a constant as a typed value.

#include <string>
#include <string_view>

#include "tsql/token.h"

namespace tsql {

// Digits with at most one point. Throws 1007 beyond 38 digits.
LiteralValue integerLiteral(std::string_view digits, SourcePos pos);
LiteralValue decimalLiteral(std::string_view digits, SourcePos pos);
// 1e3, 1.5E-3, 2e. Throws 168 beyond the range of float.
LiteralValue realLiteral(std::string_view spelled, SourcePos pos);
// $1.5; $ alone is 0. A fifth decimal rounds half away from zero. Throws 8115 beyond the range of money.
LiteralValue moneyLiteral(std::string_view spelled, SourcePos pos);
// 0x1f; an odd number of digits gets a zero before the first.
LiteralValue hexLiteral(std::string_view spelled);
LiteralValue textLiteral(const std::string& content, bool unicode);

}  // namespace tsql
