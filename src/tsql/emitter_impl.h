#pragma once
// The emitter's own state: the text so far, and one function a construct.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/emitter.h"

namespace tsql {

inline constexpr const char* collate = " COLLATE TQ";

class Emitter {
public:
  std::string text;
  bool qualified = true;                     // columns carry their source's name
  const std::vector<Slot>* fixed = nullptr;  // slots as literals

  void add(std::string_view s) { text += s; }
  void add(std::int64_t n) { text += std::to_string(n); }

  // emit_expression.cpp
  void list(const std::vector<BoundPtr>& items, std::size_t first = 0);
  void expr(const BoundExpr& e);
  void collated(const BoundExpr& e);
  void slot(const BoundExpr& e);
  void column(const BoundExpr& e);
  void call(const BoundExpr& e);
  void conversion(const BoundExpr& e, const char* function);
  void comparison(const BoundExpr& e);
  void like(const BoundExpr& e);
  void quantified(const BoundExpr& e);
  void caseWhen(const BoundExpr& e);
  void scalar(const BoundExpr& e);
  void aggregate(const BoundExpr& e);

  // emit_select.cpp
  void source(const BoundSource& s);
  static bool inBrackets(const BoundSelect& s, const BoundSource& item);
  static bool outerJoin(const BoundSource& s);
  void fromWhere(const BoundSelect& s);
  void core(const BoundSelect& s, bool inUnion);
  void order(const BoundSelect& s, bool natural, bool combined = false);
  void leaves(const BoundSource& s, std::vector<const BoundSource*>& out) const;
  static bool hasOuterJoin(const BoundSource& s);
  static std::size_t firstItemOf(const BoundSelect& s, const BoundSource& table);
  void naturalOrder(const BoundSelect& s);
  void limit(const BoundSelect& s);
  void ranked(const BoundSelect& s, bool withOrder);
  void select(const BoundSelect& s, bool natural);
};

}  // namespace tsql
