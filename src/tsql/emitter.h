#pragma once
// Emitter: bound tree to SQLite SQL. A slot n of the statement is parameter ?n+1.

#include <string>

#include "tsql/bound.h"

namespace tsql {

// The select. withOrder: a top-level select without order by yields its rows in the order of the tables' row numbers.
std::string emitSelect(const BoundSelect& select, bool naturalOrder);
// insert into t(...) values(...) or select. identityKey: argument of ts_identity for a numbered insert ... select.
std::string emitInsert(const BoundInsert& insert, std::int64_t identityKey, int identitySlot);
// In place, or through a selection of row number and new values.
std::string emitUpdate(const BoundUpdate& update);
// For the slow way of an update that moves unique keys: row number and all columns as they will be; delete and insert
// of single rows by ?1 = row number, ?2... = columns.
std::string emitUpdateSelection(const BoundUpdate& update);
std::string emitRowDelete(const TableDef& table);
std::string emitRowInsert(const TableDef& table);
std::string emitDelete(const BoundDelete& del);
// One expression, for table definitions: columns unqualified, slots as literals of SQLite.
std::string emitDefinition(const BoundExpr& expr, const std::vector<Slot>& slots);
// A value as a literal of SQLite.
std::string sqliteLiteral(const Datum& value);
std::string quoteName(std::string_view name);

}  // namespace tsql
