#pragma once
// Bound tree: a statement whose names are resolved and whose every expression has a type. Conversions are explicit
// nodes.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tsql/ast.h"
#include "tsql/catalog.h"
#include "tsql/datum.h"
#include "tsql/types.h"

namespace tsql {

// A value that is bound when the statement runs: a literal of the text, a ?, a variable, or a fixed value; converted
// once per execution.
struct Slot {
  enum class Source { literal, parameter, variable, constant, identity };
  Source source = Source::literal;
  int ordinal = 0;   // literal (of the batch) or parameter
  std::string name;  // variable
  Datum constant;
  SqlType constantType;  // type of the constant, or of the literal when the statement was bound
  SqlType type;          // what the statement expects; kind null means: as it comes
  bool store = false;    // an assignment: a text too long is a failure
  bool negate = false;   // a minus stood before the number
  int style = 0;
};

enum class BoundOp {
  null,
  slot,     // slotIndex
  integer,  // number: an integer constant of the emitted text (type codes and the like)
  column,   // source + column
  call,     // text = SQLite function or operator name
  conv,     // args[0] from its type to `type`
  store,    // the same as an assignment
  concat,
  compare,  // compareOp
  and_,
  or_,
  not_,
  isNull,      // negated
  inList,      // negated
  inSelect,    // negated, select
  between,     // negated
  like,        // negated; args: operand, pattern [, escape]
  exists,      // select
  quantified,  // args[0]: a comparison with the column c0 of source number `column`, whose rows `select` are; true for
               // any of them, or, negated, for none
  caseWhen,    // args: condition, result, condition, result, ... [, else]; negated = has else
  scalar,      // select
  aggregate,   // text: sum, min, max, count, avg; distinct; source: the id of the select whose rows it gathers
  countStar,   // the same
};

struct BoundSelect;

struct BoundExpr {
  BoundOp op = BoundOp::null;
  SqlType type;
  SqlType target;  // conv, store: what the value becomes; `type` may be wider
  bool nullable = true;
  SourcePos pos;
  std::vector<std::unique_ptr<BoundExpr>> args;
  int slotIndex = -1;
  std::int64_t number = 0;
  std::string text;
  int source = -1, column = -1;
  bool baseColumn = false;  // a column of a stored table, which carries the collation itself
  bool negated = false, distinct = false;
  ast::CompareOp compareOp = ast::CompareOp::equal;
  std::unique_ptr<BoundSelect> select;
};
using BoundPtr = std::unique_ptr<BoundExpr>;

// A table, derived table or join of a from clause. `id` is unique in the statement; its SQL name is "s<id>".
struct BoundSource {
  enum class Kind { table, derived, join };
  Kind kind = Kind::table;
  int id = -1;
  const TableDef* table = nullptr;
  std::string exposedName;  // short name, or the table's own
  std::string writtenName;  // as messages show it: short name, or the table's with the owner that the text names
  bool hasAlias = false;
  std::unique_ptr<BoundSelect> derived;
  std::vector<ColumnDef> columns;  // what the source offers
  ast::JoinKind join = ast::JoinKind::inner;
  std::unique_ptr<BoundSource> left, right;
  BoundPtr condition;
};

struct BoundItem {
  BoundPtr expr;
  std::string name;    // output name, may be empty
  bool named = false;  // a name was given or follows from a column
};

struct BoundOrder {
  BoundPtr expr;      // null when position is used
  int position = -1;  // of the select list
  bool descending = false;
};

struct BoundSelect {
  bool distinct = false;
  BoundPtr top;
  bool topPercent = false, topWithTies = false;
  std::vector<BoundItem> items;
  std::vector<std::unique_ptr<BoundSource>> from;
  BoundPtr where;
  std::vector<BoundPtr> groupBy;
  BoundPtr having;
  bool aggregated = false;
  ast::SetOperation op = ast::SetOperation::none;
  std::unique_ptr<BoundSelect> next;
  std::vector<BoundOrder> orderBy;
  bool singleRow = false;  // never more than one row
};

struct BoundInsert {
  const TableDef* table = nullptr;
  std::vector<int> columns;      // targets, by position in the table; identity last when the server numbers the row
  std::vector<BoundPtr> values;  // one row; empty with a select
  std::unique_ptr<BoundSelect> select;  // items already converted to the columns' types
  std::vector<BoundPtr> defaults;       // for targets behind the select's items
  bool numbered = false;                // the server gives the identity number
};

struct BoundUpdate {
  const TableDef* table = nullptr;
  int target = -1;  // source id of the row that is updated
  std::vector<int> columns;
  std::vector<BoundPtr> values;
  std::unique_ptr<BoundSelect> rows;  // from and where; no items
  bool simple = false;                // one source, no subqueries: can run in place
  bool touchesKey = false;            // sets a column of a unique key
};

struct BoundDelete {
  const TableDef* table = nullptr;
  int target = -1;
  std::unique_ptr<BoundSelect> rows;
  bool simple = false;
};

// A literal whose content decided something while binding: the plan holds only for this content.
struct Pin {
  int ordinal = 0;
  SqlType type;
  Datum value;
};

struct BoundStatement {
  std::unique_ptr<BoundSelect> select;  // select, select into, the condition of an if (one item)
  std::unique_ptr<BoundInsert> insert;
  std::unique_ptr<BoundUpdate> update;
  std::unique_ptr<BoundDelete> delete_;
  std::vector<Slot> slots;
  std::vector<Pin> pins;
  std::vector<std::pair<std::string, SqlType>> variables;  // the types that the statement was bound with
  std::vector<const TableDef*> reads, writes;
};

}  // namespace tsql
