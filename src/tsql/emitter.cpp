#include "tsql/emitter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tsql {

namespace {

constexpr const char* collate = " COLLATE TQ";

class Emitter {
public:
  std::string text;
  bool qualified = true;                     // columns carry their source's name
  const std::vector<Slot>* fixed = nullptr;  // slots as literals

  void add(std::string_view s) { text += s; }
  void add(std::int64_t n) { text += std::to_string(n); }

  void list(const std::vector<BoundPtr>& items, std::size_t first = 0) {
    for (std::size_t i = first; i < items.size(); ++i) {
      if (i > first) add(",");
      expr(*items[i]);
    }
  }

  // ------------------------------------------------------------------------------------------------ expressions
  void expr(const BoundExpr& e) {
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
      case BoundOp::between:
      case BoundOp::quantified:
        throwUnsupported("this condition", e.pos);
    }
  }

  // A text that the other side of a comparison or a key does not collate already.
  void collated(const BoundExpr& e) {
    expr(e);
    if (isText(e.type.kind) && !e.baseColumn) add(collate);
  }

  void slot(const BoundExpr& e) {
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

  void column(const BoundExpr& e) {
    if (qualified) {
      add("s");
      add(static_cast<std::int64_t>(e.source));
      add(".");
    }
    add(e.baseColumn ? quoteName(e.text) : e.text);
  }

  void call(const BoundExpr& e) {
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

  void conversion(const BoundExpr& e, const char* function) {
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

  void comparison(const BoundExpr& e) {
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
  void like(const BoundExpr& e) {
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

  void caseWhen(const BoundExpr& e) {
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

  void scalar(const BoundExpr& e) {
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

  void aggregate(const BoundExpr& e) {
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
      over(average ? "avg" : "sum");
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

  // ------------------------------------------------------------------------------------------------ selects
  void source(const BoundSource& s) {
    switch (s.kind) {
      case BoundSource::Kind::table:
        add(s.table->storage);
        add(" AS s");
        add(static_cast<std::int64_t>(s.id));
        break;
      case BoundSource::Kind::derived:
        add("(");
        select(*s.derived, false);
        add(") AS s");
        add(static_cast<std::int64_t>(s.id));
        break;
      case BoundSource::Kind::join: {
        static constexpr std::array<const char*, 5> words = {" JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN ",
                                                             " JOIN "};
        source(*s.left);
        add(words[static_cast<std::size_t>(s.join)]);
        const bool nested = s.right->kind == BoundSource::Kind::join;
        if (nested) add("(");
        source(*s.right);
        if (nested) add(")");
        if (s.condition) {
          add(" ON ");
          expr(*s.condition);
        }
        break;
      }
    }
  }

  static bool outerJoin(const BoundSource& s) {
    return s.kind == BoundSource::Kind::join && (s.join == ast::JoinKind::right || s.join == ast::JoinKind::full ||
                                                 outerJoin(*s.left) || outerJoin(*s.right));
  }

  void fromWhere(const BoundSelect& s) {
    for (std::size_t i = 0; i < s.from.size(); ++i) {
      add(i ? "," : " FROM ");
      const bool brackets = s.from.size() > 1 && outerJoin(*s.from[i]);
      if (brackets) add("(");
      source(*s.from[i]);
      if (brackets) add(")");
    }
    if (s.where) {
      add(" WHERE ");
      expr(*s.where);
    }
  }

  void core(const BoundSelect& s, bool inUnion) {
    add(s.distinct ? "SELECT DISTINCT " : "SELECT ");
    for (std::size_t i = 0; i < s.items.size(); ++i) {
      if (i) add(",");
      if (s.distinct || inUnion)
        collated(*s.items[i].expr);
      else
        expr(*s.items[i].expr);
      add(" AS c");
      add(static_cast<std::int64_t>(i));
    }
    fromWhere(s);
    if (!s.groupBy.empty()) {
      add(" GROUP BY ");
      for (std::size_t i = 0; i < s.groupBy.size(); ++i) {
        if (i) add(",");
        collated(*s.groupBy[i]);
      }
    }
    if (s.having) {
      add(" HAVING ");
      expr(*s.having);
    }
  }

  void order(const BoundSelect& s, bool natural) {
    if (s.orderBy.empty()) {
      if (natural && !s.distinct && !s.aggregated) naturalOrder(s);
      return;
    }
    add(" ORDER BY ");
    for (std::size_t i = 0; i < s.orderBy.size(); ++i) {
      if (i) add(",");
      const auto& o = s.orderBy[i];
      const BoundExpr& e = o.expr ? *o.expr : *s.items[static_cast<std::size_t>(o.position)].expr;
      const bool wide = e.type.kind == TypeKind::decimal && e.type.precision > 18;
      if (wide) add("ts_dkey(");
      if (o.expr)
        expr(e);
      else if (wide)
        add("c" + std::to_string(o.position));
      else
        add(static_cast<std::int64_t>(o.position) + 1);
      if (wide) add(")");
      if (isText(e.type.kind)) add(collate);
      if (o.descending) add(" DESC");
    }
  }

  void leaves(const BoundSource& s, std::vector<const BoundSource*>& out) const {
    if (s.kind == BoundSource::Kind::join) {
      leaves(*s.left, out);
      leaves(*s.right, out);
    } else if (s.table) {
      out.push_back(&s);
    }
  }

  static bool hasOuterJoin(const BoundSource& s) {
    return s.kind == BoundSource::Kind::join &&
           (s.join != ast::JoinKind::inner || hasOuterJoin(*s.left) || hasOuterJoin(*s.right));
  }

  // The first item of the selection that is a column of the table; the number of items when none is.
  static std::size_t firstItemOf(const BoundSelect& s, const BoundSource& table) {
    std::size_t i = 0;
    while (i < s.items.size() && !(s.items[i].expr->op == BoundOp::column && s.items[i].expr->source == table.id)) ++i;
    return i;
  }

  // Rows come in the order of their row numbers, first by the table that the selection names first: lines that are
  // selected with something of their account come as they were entered, whatever stands first in the from clause. What
  // an outer join may leave out never leads.
  void naturalOrder(const BoundSelect& s) {
    std::vector<const BoundSource*> tables;
    for (const auto& f : s.from) leaves(*f, tables);
    if (std::none_of(s.from.begin(), s.from.end(), [](const auto& f) { return hasOuterJoin(*f); }))
      std::stable_sort(tables.begin(), tables.end(), [&](const BoundSource* a, const BoundSource* b) {
        return firstItemOf(s, *a) < firstItemOf(s, *b);
      });
    for (std::size_t i = 0; i < tables.size(); ++i) {
      add(i ? "," : " ORDER BY ");
      add("s" + std::to_string(tables[i]->id) + "." + tables[i]->table->rowNumber);
    }
  }

  void limit(const BoundSelect& s) {
    if (!s.top) return;
    add(" LIMIT ");
    expr(*s.top);
  }

  void select(const BoundSelect& s, bool natural) {
    if (!s.next) {
      core(s, false);
      order(s, natural || s.top);
      limit(s);
      return;
    }
    // order by stands on the first select but orders the whole.
    for (const BoundSelect* part = &s; part; part = part->next.get()) {
      if (part->top) {
        add("SELECT * FROM (");
        core(*part, true);
        limit(*part);
        add(")");
      } else {
        core(*part, true);
      }
      if (part->next) add(part->op == ast::SetOperation::unionAll ? " UNION ALL " : " UNION ");
    }
    order(s, false);
  }
};

std::string columnList(const TableDef& t, const std::vector<int>& columns) {
  std::string s;
  for (std::size_t i = 0; i < columns.size(); ++i)
    s += (i ? "," : "") + quoteName(t.columns[static_cast<std::size_t>(columns[i])].name);
  return s;
}

std::vector<int> storedColumns(const TableDef& t) {
  std::vector<int> r;
  for (std::size_t i = 0; i < t.columns.size(); ++i)
    if (t.columns[i].computedText.empty()) r.push_back(static_cast<int>(i));
  return r;
}

}  // namespace

std::string quoteName(std::string_view name) {
  std::string s = "\"";
  for (const char c : name) {
    if (c == '"') s += '"';
    s += c;
  }
  return s + "\"";
}

std::string sqliteLiteral(const Datum& value) {
  switch (value.index()) {
    case 0:
      return "NULL";
    case 1: {
      const auto n = std::get<std::int64_t>(value);
      return n == INT64_MIN ? "(-9223372036854775807-1)" : std::to_string(n);
    }
    case 2: {
      const double d = std::get<double>(value);
      std::array<char, 40> b{};
      const auto r = std::to_chars(b.data(), b.data() + b.size(), d);
      std::string s(b.data(), r.ptr);
      if (s.find_first_of(".e") == std::string::npos) s += ".0";
      return s;
    }
    case 3: {
      std::string s = "'";
      for (const char c : std::get<std::string>(value)) {
        if (c == '\'') s += '\'';
        s += c;
      }
      return s + "'";
    }
    default: {
      static constexpr char digits[] = "0123456789abcdef";
      std::string s = "x'";
      for (const auto b : std::get<Blob>(value)) {
        s += digits[b >> 4];
        s += digits[b & 15];
      }
      return s + "'";
    }
  }
}

std::string emitSelect(const BoundSelect& select, bool naturalOrder) {
  Emitter e;
  e.select(select, naturalOrder);
  return std::move(e.text);
}

std::string emitInsert(const BoundInsert& insert, std::int64_t identityKey, int) {
  Emitter e;
  const TableDef& t = *insert.table;
  e.add("INSERT INTO " + t.storage);
  if (insert.columns.empty()) {
    e.add(" DEFAULT VALUES");
    return std::move(e.text);
  }
  e.add("(" + columnList(t, insert.columns) + ")");
  if (!insert.select) {
    e.add(" VALUES(");
    e.list(insert.values);
    e.add(")");
    return std::move(e.text);
  }
  if (!insert.numbered && insert.defaults.empty()) {
    e.add(" ");
    e.select(*insert.select, true);
    return std::move(e.text);
  }
  e.add(" SELECT ");
  for (std::size_t i = 0; i < insert.select->items.size(); ++i) e.add((i ? ",q.c" : "q.c") + std::to_string(i));
  for (const auto& d : insert.defaults) {
    e.add(",");
    e.expr(*d);
  }
  if (insert.numbered) e.add(",ts_identity(" + std::to_string(identityKey) + ")");
  e.add(" FROM (");
  e.select(*insert.select, true);
  // A limit keeps the inner order: the numbers are given in it.
  if (!insert.select->top || insert.select->next) e.add(" LIMIT -1");
  e.add(") AS q");
  return std::move(e.text);
}

std::string emitUpdate(const BoundUpdate& update) {
  Emitter e;
  const TableDef& t = *update.table;
  if (update.simple) {
    e.add("UPDATE " + t.storage + " AS s" + std::to_string(update.target) + " SET ");
    for (std::size_t i = 0; i < update.columns.size(); ++i) {
      e.add((i ? "," : "") + quoteName(t.columns[static_cast<std::size_t>(update.columns[i])].name) + "=");
      e.expr(*update.values[i]);
    }
    if (update.rows->where) {
      e.add(" WHERE ");
      e.expr(*update.rows->where);
    }
    return std::move(e.text);
  }
  e.add("UPDATE " + t.storage + " AS u SET ");
  for (std::size_t i = 0; i < update.columns.size(); ++i)
    e.add((i ? "," : "") + quoteName(t.columns[static_cast<std::size_t>(update.columns[i])].name) + "=q.c" +
          std::to_string(i));
  e.add(" FROM (SELECT s" + std::to_string(update.target) + "." + t.rowNumber + " AS r");
  for (std::size_t i = 0; i < update.values.size(); ++i) {
    e.add(",");
    e.expr(*update.values[i]);
    e.add(" AS c" + std::to_string(i));
  }
  e.fromWhere(*update.rows);
  e.add(") AS q WHERE u." + t.rowNumber + "=q.r");
  return std::move(e.text);
}

std::string emitUpdateSelection(const BoundUpdate& update) {
  Emitter e;
  const TableDef& t = *update.table;
  const std::string target = "s" + std::to_string(update.target) + ".";
  e.add("SELECT " + target + t.rowNumber);
  for (const int c : storedColumns(t)) {
    e.add(",");
    bool set = false;
    for (std::size_t i = 0; i < update.columns.size(); ++i)
      if (update.columns[i] == c) {
        e.expr(*update.values[i]);
        set = true;
      }
    if (!set) e.add(target + quoteName(t.columns[static_cast<std::size_t>(c)].name));
  }
  e.fromWhere(*update.rows);
  return std::move(e.text);
}

std::string emitRowDelete(const TableDef& table) {
  return "DELETE FROM " + table.storage + " WHERE " + table.rowNumber + "=?1";
}

std::string emitRowInsert(const TableDef& table) {
  const auto columns = storedColumns(table);
  // The identity column is the row number itself; it must not be named twice.
  std::string names, marks;
  const int identity = table.identityColumn();
  if (identity < 0) {
    names = table.rowNumber;
    marks = "?1";
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!names.empty()) {
      names += ",";
      marks += ",";
    }
    names += quoteName(table.columns[static_cast<std::size_t>(columns[i])].name);
    marks += "?" + std::to_string(i + 2);
  }
  return "INSERT INTO " + table.storage + "(" + names + ") VALUES(" + marks + ")";
}

std::string emitDelete(const BoundDelete& del) {
  Emitter e;
  const TableDef& t = *del.table;
  if (del.simple) {
    e.add("DELETE FROM " + t.storage + " AS s" + std::to_string(del.target));
    if (del.rows->where) {
      e.add(" WHERE ");
      e.expr(*del.rows->where);
    }
    return std::move(e.text);
  }
  e.add("DELETE FROM " + t.storage + " WHERE " + t.rowNumber + " IN (SELECT s" + std::to_string(del.target) + "." +
        t.rowNumber);
  e.fromWhere(*del.rows);
  e.add(")");
  return std::move(e.text);
}

std::string emitDefinition(const BoundExpr& expr, const std::vector<Slot>& slots) {
  Emitter e;
  e.qualified = false;
  e.fixed = &slots;
  e.expr(expr);
  return std::move(e.text);
}

}  // namespace tsql
