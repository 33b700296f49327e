#include "tsql/emitter.h"

#include <array>
#include <charconv>

#include "tsql/emitter_impl.h"

namespace tsql {

namespace {

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
