#include <array>

#include "tsql/emitter_impl.h"

namespace tsql {

void Emitter::list(const std::vector<BoundPtr>& items, std::size_t first) {
  for (std::size_t i = first; i < items.size(); ++i) {
    if (i > first) add(",");
    expr(*items[i]);
  }
}

void Emitter::expr(const BoundExpr& e) {
  switch (e.op) {
    case BoundOp::null:
      add("NULL");
      break;
    case BoundOp::slot:
      slot(e);
      break;
    case BoundOp::integer:
      if (e.text.empty())
        add(e.number);
      else
        add("'" + e.text + "'");
      break;
    case BoundOp::column:
      column(e);
      break;
    case BoundOp::call:
      call(e);
      break;
    case BoundOp::conv:
      conversion(e, "ts_conv");
      break;
    case BoundOp::store:
      conversion(e, "ts_store");
      break;
    case BoundOp::concat:
      add("(");
      expr(*e.args[0]);
      add("||");
      expr(*e.args[1]);
      add(")");
      break;
    case BoundOp::compare:
      comparison(e);
      break;
    case BoundOp::and_:
    case BoundOp::or_:
      add("(");
      expr(*e.args[0]);
      add(e.op == BoundOp::and_ ? " AND " : " OR ");
      expr(*e.args[1]);
      add(")");
      break;
    case BoundOp::not_:
      add("(NOT ");
      expr(*e.args[0]);
      add(")");
      break;
    case BoundOp::isNull:
      add("(");
      expr(*e.args[0]);
      add(e.negated ? " IS NOT NULL)" : " IS NULL)");
      break;
    case BoundOp::inList:
      add("(");
      collated(*e.args[0]);
      add(e.negated ? " NOT IN (" : " IN (");
      list(e.args, 1);
      add("))");
      break;
    case BoundOp::inSelect:
      add("(");
      collated(*e.args[0]);
      add(e.negated ? " NOT IN (" : " IN (");
      select(*e.select, false);
      add("))");
      break;
    case BoundOp::like:
      like(e);
      break;
    case BoundOp::exists:
      add("EXISTS(");
      select(*e.select, false);
      add(")");
      break;
    case BoundOp::caseWhen:
      caseWhen(e);
      break;
    case BoundOp::scalar:
      scalar(e);
      break;
    case BoundOp::aggregate:
      aggregate(e);
      break;
    case BoundOp::countStar:
      add("count(*)");
      break;
    case BoundOp::quantified:
      quantified(e);
      break;
    case BoundOp::between:
      throwUnsupported("this condition", e.pos);
  }
}

// A text that the other side of a comparison or a key does not collate already.
void Emitter::collated(const BoundExpr& e) {
  expr(e);
  if (isText(e.type.kind) && !e.baseColumn) add(collate);
}

void Emitter::slot(const BoundExpr& e) {
  if (fixed) {
    const Slot& s = (*fixed)[static_cast<std::size_t>(e.slotIndex)];
    Datum v = s.constant;
    if (s.negate) {
      if (auto* i = std::get_if<std::int64_t>(&v))
        v = -*i;
      else if (auto* d = std::get_if<double>(&v))
        v = -*d;
    }
    add(sqliteLiteral(convert(v, s.constantType, s.type, s.style, s.store ? ConvertMode::store : ConvertMode::cast)));
    return;
  }
  add("?");
  add(static_cast<std::int64_t>(e.slotIndex) + 1);
}

void Emitter::column(const BoundExpr& e) {
  if (qualified) {
    add("s");
    add(static_cast<std::int64_t>(e.source));
    add(".");
  }
  add(e.baseColumn ? quoteName(e.text) : e.text);
}

void Emitter::call(const BoundExpr& e) {
  const char first = e.text[0];
  if (e.text == "not") {
    add("(NOT ");
    expr(*e.args[0]);
    add(")");
  } else if (e.text == "ts_ixor") {  // a xor b, from what SQLite has
    add("((");
    expr(*e.args[0]);
    add(" | ");
    expr(*e.args[1]);
    add(") & ~(");
    expr(*e.args[0]);
    add(" & ");
    expr(*e.args[1]);
    add("))");
  } else if ((first >= 'a' && first <= 'z') || first == '_') {
    add(e.text);
    add("(");
    list(e.args);
    add(")");
  } else if (e.args.size() == 1) {
    add("(");
    add(e.text);
    add(" ");
    expr(*e.args[0]);
    add(")");
  } else {
    add("(");
    expr(*e.args[0]);
    add(" ");
    add(e.text);
    add(" ");
    expr(*e.args[1]);
    add(")");
  }
}

void Emitter::conversion(const BoundExpr& e, const char* function) {
  const auto from = e.args[0]->type.kind, to = e.target.kind;
  const bool smallInteger = isExactInteger(from) && from != TypeKind::bigint;
  if (e.args.size() == 1 && isExactInteger(from) && isApproximate(to)) {
    add("CAST(");
    expr(*e.args[0]);
    add(" AS REAL)");
  } else if (e.args.size() == 1 && smallInteger && to == TypeKind::money) {
    add("(");
    expr(*e.args[0]);
    add("*10000)");
  } else if (isExactInteger(from) && to == TypeKind::bit) {
    add("(");
    expr(*e.args[0]);
    add("<>0)");
  } else {
    add(function);
    add("(");
    expr(*e.args[0]);
    add(",");
    add(e.args[0]->type.pack());
    add(",");
    add(e.target.pack());
    if (e.op == BoundOp::conv) {
      add(",");
      if (e.args.size() > 1)
        expr(*e.args[1]);
      else
        add("0");
    }
    add(")");
  }
}

void Emitter::comparison(const BoundExpr& e) {
  static constexpr std::array<const char*, 6> symbols = {"=", "<>", "<", "<=", ">", ">="};
  const auto &l = *e.args[0], &r = *e.args[1];
  add("(");
  expr(l);
  add(symbols[static_cast<std::size_t>(e.compareOp)]);
  expr(r);
  if (isText(l.type.kind) && !l.baseColumn && !r.baseColumn) add(collate);
  add(")");
}

// A pattern with a fixed beginning is a range of the index as well: the bounds let through at least what matches.
void Emitter::like(const BoundExpr& e) {
  const auto& x = *e.args[0];
  const bool range = x.baseColumn && isText(x.type.kind) && !e.negated;
  add(e.negated ? "(NOT " : "(");
  // Trailing blanks of the text count only when one side is Unicode.
  const bool unicode = isUnicode(x.type.kind) || isUnicode(e.args[1]->type.kind);
  add(unicode ? "ts_like(" : "ts_vlike(");
  list(e.args);
  add(")");
  if (range)
    for (const char* bound : {">=ts_like_lo(", "<=ts_like_hi("}) {
      add(" AND ");
      expr(x);
      add(bound);
      list(e.args, 1);
      add(")");
    }
  add(")");
}

// True when a row compares true, else unknown when one compares unknown, else false.
void Emitter::quantified(const BoundExpr& e) {
  add(e.negated ? "(NOT CASE" : "(CASE");
  for (const bool unknown : {false, true}) {
    add(" WHEN EXISTS(SELECT 1 FROM (");
    select(*e.select, false);
    add(") AS s");
    add(static_cast<std::int64_t>(e.column));
    add(" WHERE ");
    expr(*e.args[0]);
    add(unknown ? " IS NULL) THEN NULL" : ") THEN 1");
  }
  add(" ELSE 0 END)");
}

void Emitter::caseWhen(const BoundExpr& e) {
  add("CASE");
  const std::size_t pairs = e.args.size() / 2;
  for (std::size_t i = 0; i < pairs; ++i) {
    add(" WHEN ");
    expr(*e.args[2 * i]);
    add(" THEN ");
    expr(*e.args[2 * i + 1]);
  }
  if (e.negated) {
    add(" ELSE ");
    expr(*e.args.back());
  }
  add(" END");
}

void Emitter::scalar(const BoundExpr& e) {
  if (e.select->singleRow) {
    add("(");
    select(*e.select, false);
    add(")");
  } else {
    add("(SELECT ts_single(c0) FROM (");
    select(*e.select, false);
    add("))");
  }
}

void Emitter::aggregate(const BoundExpr& e) {
  const auto& x = *e.args[0];
  auto over = [&](const char* function) {
    add(function);
    add(e.distinct ? "(DISTINCT " : "(");
    expr(x);
    if (isText(x.type.kind) && !x.baseColumn) add(collate);
    add(")");
  };
  if (e.text == "count" || e.text == "min" || e.text == "max") return over(e.text.c_str());
  const bool average = e.text == "avg";
  if (x.type.kind == TypeKind::decimal) {
    if (!average) return over("ts_dsum");
    add("ts_ddiv(");
    over("ts_dsum");
    add("," + std::to_string(x.type.scale) + ",");
    over("count");
    add(",0," + std::to_string(e.type.scale) + ")");
  } else if (isMoney(x.type.kind)) {
    if (!average) return over("sum");
    add("ts_mdiv(");
    over("sum");
    add(",10000*");
    over("count");
    add(")");
  } else if (isApproximate(x.type.kind)) {
    add("ts_fcheck(");
    over(average ? "avg" : "sum");
    add(")");
  } else {
    add(average ? "ts_idiv(" : "ts_irange(");
    over("sum");
    if (average) {
      add(",");
      over("count");
    }
    add("," + std::to_string(static_cast<int>(e.type.kind)) + ")");
  }
}

}  // namespace tsql
