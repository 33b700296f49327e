#pragma once
// Syntax tree of the dialect. Nodes own their children; a node remembers where it stood in the batch.

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tsql/sql_error.h"
#include "tsql/types.h"

namespace tsql::ast {

template <class T>
using Ptr = std::unique_ptr<T>;

// A name of one to four parts: server.database.schema.object. An omitted part in the middle (db..t) is empty.
struct Name {
  std::vector<std::string> parts;  // first to last as spelled, without quotes
  SourcePos pos;
  const std::string& last() const { return parts.back(); }
};

struct TypeName {  // as spelled in a definition or a cast
  std::string name;
  std::optional<int> first, second;
  bool max = false;
  SourcePos pos;
};

struct Select;

// ---------------------------------------------------------------------------------------------- expressions
enum class ExprKind {
  literal,
  null,
  column,
  star,  // * or t.*; only in a select list and in count(*)
  variable,
  parameter,  // ?
  unary,
  binary,
  caseWhen,
  function,
  cast,     // cast(x as T)
  convert,  // convert(T, x [, style])
  subquery,
  // conditions
  comparison,
  logical,
  negation,  // not
  isNull,
  inList,
  inSelect,
  between,
  like,
  exists,
  quantified,  // x = any (select ...), all, some
};

enum class BinaryOp { add, subtract, multiply, divide, modulo, bitAnd, bitOr, bitXor };
enum class UnaryOp { plus, minus, bitNot };
enum class CompareOp { equal, notEqual, less, lessEqual, greater, greaterEqual };
enum class Quantifier { any, all };

struct Expr {
  explicit Expr(ExprKind k, SourcePos p) : kind(k), pos(p) {}
  virtual ~Expr() = default;
  ExprKind kind;
  SourcePos pos;
};
using ExprPtr = Ptr<Expr>;

struct Literal : Expr {
  Literal(SourcePos p, int ord) : Expr(ExprKind::literal, p), ordinal(ord) {}
  int ordinal;  // into TokenStream::literals of the batch
};
struct Null : Expr {
  explicit Null(SourcePos p) : Expr(ExprKind::null, p) {}
};
struct Column : Expr {
  explicit Column(Name n) : Expr(ExprKind::column, n.pos), name(std::move(n)) {}
  Name name;  // column, table.column, schema.table.column, db.schema.table.column
};
struct Star : Expr {
  Star(SourcePos p, Name q) : Expr(ExprKind::star, p), qualifier(std::move(q)) {}
  Name qualifier;  // no parts for a bare *
};
struct Variable : Expr {
  Variable(SourcePos p, std::string n) : Expr(ExprKind::variable, p), name(std::move(n)) {}
  std::string name;  // with the at signs
};
struct Parameter : Expr {
  Parameter(SourcePos p, int n) : Expr(ExprKind::parameter, p), number(n) {}
  int number;  // from 0, in the order of the text
};
struct Unary : Expr {
  Unary(SourcePos p, UnaryOp o, ExprPtr x) : Expr(ExprKind::unary, p), op(o), operand(std::move(x)) {}
  UnaryOp op;
  ExprPtr operand;
};
struct Binary : Expr {
  Binary(SourcePos p, BinaryOp o, ExprPtr l, ExprPtr r)
      : Expr(ExprKind::binary, p), op(o), left(std::move(l)), right(std::move(r)) {}
  BinaryOp op;
  ExprPtr left, right;
};
struct Case : Expr {
  explicit Case(SourcePos p) : Expr(ExprKind::caseWhen, p) {}
  ExprPtr input;  // null for a searched case
  struct When {
    ExprPtr condition;  // of a simple case: the value compared with the input
    ExprPtr result;
  };
  std::vector<When> whens;
  ExprPtr otherwise;  // may be null
};
struct Function : Expr {
  Function(SourcePos p, std::string n) : Expr(ExprKind::function, p), name(std::move(n)) {}
  std::string name;                // as spelled
  std::vector<ExprPtr> arguments;  // a date part (year, day, ...) stands here as a Column of one part
  bool distinct = false;           // count(distinct x)
};
struct Cast : Expr {
  Cast(SourcePos p, ExprPtr x, TypeName t) : Expr(ExprKind::cast, p), operand(std::move(x)), type(std::move(t)) {}
  ExprPtr operand;
  TypeName type;
};
struct Convert : Expr {
  Convert(SourcePos p, TypeName t, ExprPtr x, ExprPtr s)
      : Expr(ExprKind::convert, p), type(std::move(t)), operand(std::move(x)), style(std::move(s)) {}
  TypeName type;
  ExprPtr operand;
  ExprPtr style;  // may be null
};
struct Subquery : Expr {
  Subquery(SourcePos p, Ptr<Select> s);
  ~Subquery() override;
  Ptr<Select> select;
};
struct Comparison : Expr {
  Comparison(SourcePos p, CompareOp o, ExprPtr l, ExprPtr r)
      : Expr(ExprKind::comparison, p), op(o), left(std::move(l)), right(std::move(r)) {}
  CompareOp op;
  ExprPtr left, right;
};
struct Logical : Expr {
  Logical(SourcePos p, bool a, ExprPtr l, ExprPtr r)
      : Expr(ExprKind::logical, p), isAnd(a), left(std::move(l)), right(std::move(r)) {}
  bool isAnd;
  ExprPtr left, right;
};
struct Negation : Expr {
  Negation(SourcePos p, ExprPtr x) : Expr(ExprKind::negation, p), operand(std::move(x)) {}
  ExprPtr operand;
};
struct IsNull : Expr {
  IsNull(SourcePos p, ExprPtr x, bool n) : Expr(ExprKind::isNull, p), operand(std::move(x)), negated(n) {}
  ExprPtr operand;
  bool negated;
};
struct InList : Expr {
  InList(SourcePos p, ExprPtr x, bool n) : Expr(ExprKind::inList, p), operand(std::move(x)), negated(n) {}
  ExprPtr operand;
  bool negated;
  std::vector<ExprPtr> items;
};
struct InSelect : Expr {
  InSelect(SourcePos p, ExprPtr x, bool n, Ptr<Select> s);
  ~InSelect() override;
  ExprPtr operand;
  bool negated;
  Ptr<Select> select;
};
struct Between : Expr {
  Between(SourcePos p, ExprPtr x, bool n, ExprPtr l, ExprPtr h)
      : Expr(ExprKind::between, p), operand(std::move(x)), negated(n), low(std::move(l)), high(std::move(h)) {}
  ExprPtr operand;
  bool negated;
  ExprPtr low, high;
};
struct Like : Expr {
  Like(SourcePos p, ExprPtr x, bool n, ExprPtr pt, ExprPtr e)
      : Expr(ExprKind::like, p), operand(std::move(x)), negated(n), pattern(std::move(pt)), escape(std::move(e)) {}
  ExprPtr operand;
  bool negated;
  ExprPtr pattern, escape;  // escape may be null
};
struct Exists : Expr {
  Exists(SourcePos p, Ptr<Select> s);
  ~Exists() override;
  Ptr<Select> select;
};
struct Quantified : Expr {
  Quantified(SourcePos p, CompareOp o, Quantifier q, ExprPtr l, Ptr<Select> s);
  ~Quantified() override;
  CompareOp op;
  Quantifier quantifier;
  ExprPtr left;
  Ptr<Select> select;
};

// ---------------------------------------------------------------------------------------------- sources
enum class JoinKind { inner, left, right, full, cross };

struct Source {
  enum class Kind { table, derived, join };
  Source(Kind k, SourcePos p) : kind(k), pos(p) {}
  virtual ~Source() = default;
  Kind kind;
  SourcePos pos;
};
using SourcePtr = Ptr<Source>;

struct TableSource : Source {
  explicit TableSource(Name n) : Source(Kind::table, n.pos), name(std::move(n)) {}
  Name name;
  std::string alias;  // empty when there is none
};
struct DerivedSource : Source {
  DerivedSource(SourcePos p, Ptr<Select> s, std::string a);
  ~DerivedSource() override;
  Ptr<Select> select;
  std::string alias;
  std::vector<std::string> columnAliases;
};
struct JoinSource : Source {
  JoinSource(SourcePos p, JoinKind k, SourcePtr l, SourcePtr r, ExprPtr c)
      : Source(Kind::join, p), join(k), left(std::move(l)), right(std::move(r)), condition(std::move(c)) {}
  JoinKind join;
  SourcePtr left, right;
  ExprPtr condition;  // null for a cross join
};

// ---------------------------------------------------------------------------------------------- select
struct SelectItem {
  ExprPtr expr;       // Star for * and t.*
  std::string alias;  // empty when there is none
  SourcePos pos;
  std::string variable;  // select @x = ...: the variable with its at sign, else empty
};
struct OrderItem {
  ExprPtr expr;
  bool descending = false;
};
enum class SetOperation { none, unionAll, unionDistinct, except, intersect };

// One select, or several combined: `next` holds the right operand (left-associative chain: a union b union c is
// a{next=b, op}, with b{next=c, op}; each op stands between a node and its next). orderBy and into of the chain stand
// on the first node.
struct Select {
  SourcePos pos;
  bool distinct = false;
  ExprPtr top;  // null when absent
  bool topPercent = false, topWithTies = false;
  std::vector<SelectItem> items;
  std::optional<Name> into;
  std::vector<SourcePtr> from;  // comma list
  ExprPtr where;
  std::vector<ExprPtr> groupBy;
  ExprPtr having;
  SetOperation op = SetOperation::none;
  Ptr<Select> next;
  std::vector<OrderItem> orderBy;
};

// ---------------------------------------------------------------------------------------------- statements
enum class StatementKind {
  select,
  insert,
  update,
  delete_,
  truncate,
  createTable,
  alterTable,
  dropTable,
  createIndex,
  dropIndex,
  createProcedure,
  dropProcedure,
  execute,
  if_,
  block,
  while_,
  break_,
  continue_,
  beginTransaction,
  commit,
  rollback,
  saveTransaction,
  declare,
  setVariable,
  raiserror,
  setOption,
  createDatabase,
  dropDatabase,
  use,
  print,
  return_,
};

struct Statement {
  Statement(StatementKind k, SourcePos p) : kind(k), pos(p) {}
  virtual ~Statement() = default;
  StatementKind kind;
  SourcePos pos;
  std::size_t firstToken = 0, lastToken = 0;  // [first, last) of the batch's token stream
  mutable int firstLiteral = -1;              // ordinal of its first literal, once somebody has asked
};
using StatementPtr = Ptr<Statement>;

struct SelectStatement : Statement {
  explicit SelectStatement(Ptr<Select> s) : Statement(StatementKind::select, s->pos), select(std::move(s)) {}
  Ptr<Select> select;
};
struct Execute;
struct Insert : Statement {
  explicit Insert(SourcePos p) : Statement(StatementKind::insert, p) {}
  Name target;
  std::vector<std::pair<std::string, SourcePos>> columns;  // empty: all
  bool defaultValues = false;
  std::vector<ExprPtr> values;  // values(...); an item that is a Column named "default" means the default
  Ptr<Select> select;
  StatementPtr execute;  // insert ... exec p (refused by the binder)
};
struct Assignment {
  Name column;
  ExprPtr value;
};
struct Update : Statement {
  explicit Update(SourcePos p) : Statement(StatementKind::update, p) {}
  Name target;  // a table, or a short name of the from clause
  std::vector<Assignment> assignments;
  std::vector<SourcePtr> from;
  ExprPtr where;
};
struct Delete : Statement {
  explicit Delete(SourcePos p) : Statement(StatementKind::delete_, p) {}
  Name target;
  std::vector<SourcePtr> from;  // the second from
  ExprPtr where;
};
struct Truncate : Statement {
  explicit Truncate(SourcePos p) : Statement(StatementKind::truncate, p) {}
  Name target;
};

struct IdentityClause {
  std::int64_t seed = 1, increment = 1;
};
struct KeyColumn {
  std::string name;
  bool descending = false;
  SourcePos pos;
};
struct TableConstraint {
  enum class Kind { primaryKey, unique, check, default_, foreignKey };
  Kind kind = Kind::primaryKey;
  std::string name;  // empty: the server makes one
  bool clustered = false;
  std::vector<KeyColumn> columns;  // primary key, unique; default_ for: one column
  ExprPtr check;                   // check and default_
  std::string text;                // source text of the check or default expression
  SourcePos pos;
};
struct ColumnDefinition {
  std::string name;
  SourcePos pos;
  TypeName type;                 // name empty for a computed column
  std::optional<bool> nullable;  // nullopt: not said
  std::optional<IdentityClause> identity;
  bool rowGuid = false;
  ExprPtr defaultValue;
  std::string defaultText, defaultName;  // source text without outer brackets trimmed
  ExprPtr computed;
  std::string computedText;
  std::vector<TableConstraint> constraints;  // primary key, unique, check said at the column
};
struct CreateTable : Statement {
  explicit CreateTable(SourcePos p) : Statement(StatementKind::createTable, p) {}
  Name name;
  std::vector<ColumnDefinition> columns;
  std::vector<TableConstraint> constraints;
};
struct AlterTable : Statement {
  explicit AlterTable(SourcePos p) : Statement(StatementKind::alterTable, p) {}
  enum class Action { add, alterColumn, dropColumns, dropConstraints };
  Name name;
  Action action = Action::add;
  std::vector<ColumnDefinition> columns;                 // add, alterColumn (one)
  std::vector<TableConstraint> constraints;              // add
  std::vector<std::pair<std::string, SourcePos>> names;  // dropped columns or constraints
};
struct DropTable : Statement {
  explicit DropTable(SourcePos p) : Statement(StatementKind::dropTable, p) {}
  std::vector<Name> names;
};
struct CreateIndex : Statement {
  explicit CreateIndex(SourcePos p) : Statement(StatementKind::createIndex, p) {}
  bool unique = false, clustered = false;
  std::string index;
  Name table;
  std::vector<KeyColumn> columns;
};
struct DropIndex : Statement {
  explicit DropIndex(SourcePos p) : Statement(StatementKind::dropIndex, p) {}
  std::vector<Name> names;  // table.index; "drop index i on t" is given as the parts of t followed by i
};
struct ProcedureParameter {
  std::string name;  // with the at sign
  TypeName type;
  ExprPtr defaultValue;  // literal or null; may be missing
  bool output = false;
  SourcePos pos;
};
struct CreateProcedure : Statement {
  explicit CreateProcedure(SourcePos p) : Statement(StatementKind::createProcedure, p) {}
  bool alter = false;
  Name name;
  std::vector<ProcedureParameter> parameters;
  std::vector<StatementPtr> body;
  std::string text;  // source text of the whole statement, kept in the catalog
};
struct DropProcedure : Statement {
  explicit DropProcedure(SourcePos p) : Statement(StatementKind::dropProcedure, p) {}
  std::vector<Name> names;
};
struct ExecuteArgument {
  std::string name;  // with the at sign; empty when given by position
  ExprPtr value;     // literal, signed literal, null, variable, or a Column of one part (a bare word is a text); no
                     // value at all for the word default
  bool output = false;
};
struct Execute : Statement {
  explicit Execute(SourcePos p) : Statement(StatementKind::execute, p) {}
  Name name;
  std::vector<ExecuteArgument> arguments;
  std::string returnVariable;  // execute @x = p: with the at sign, else empty
};
struct If : Statement {
  explicit If(SourcePos p) : Statement(StatementKind::if_, p) {}
  ExprPtr condition;
  StatementPtr then, otherwise;  // otherwise may be null
};
struct Block : Statement {
  explicit Block(SourcePos p) : Statement(StatementKind::block, p) {}
  std::vector<StatementPtr> statements;
};
struct While : Statement {
  explicit While(SourcePos p) : Statement(StatementKind::while_, p) {}
  ExprPtr condition;
  StatementPtr body;
};
struct Break : Statement {
  explicit Break(SourcePos p) : Statement(StatementKind::break_, p) {}
};
struct Continue : Statement {
  explicit Continue(SourcePos p) : Statement(StatementKind::continue_, p) {}
};
struct Declaration {
  std::string name;  // with the at sign
  TypeName type;
  ExprPtr value;  // may be null
  SourcePos pos;
};
struct Declare : Statement {
  explicit Declare(SourcePos p) : Statement(StatementKind::declare, p) {}
  std::vector<Declaration> variables;
};
struct SetVariable : Statement {
  explicit SetVariable(SourcePos p) : Statement(StatementKind::setVariable, p) {}
  std::string name;  // with the at sign
  ExprPtr value;
};
struct Raiserror : Statement {
  explicit Raiserror(SourcePos p) : Statement(StatementKind::raiserror, p) {}
  ExprPtr message, severity, state;  // the old form, raiserror 50001 'x', has its number as `state` and no severity
  std::vector<ExprPtr> arguments;
};
struct BeginTransaction : Statement {
  explicit BeginTransaction(SourcePos p) : Statement(StatementKind::beginTransaction, p) {}
  std::string name;  // may be empty
};
struct SaveTransaction : Statement {
  explicit SaveTransaction(SourcePos p) : Statement(StatementKind::saveTransaction, p) {}
  std::string name;
};
struct Commit : Statement {
  explicit Commit(SourcePos p) : Statement(StatementKind::commit, p) {}
};
struct Rollback : Statement {
  explicit Rollback(SourcePos p) : Statement(StatementKind::rollback, p) {}
  std::string name;  // of a savepoint or of the outermost transaction; may be empty
};
struct SetOption : Statement {
  explicit SetOption(SourcePos p) : Statement(StatementKind::setOption, p) {}
  std::string option;         // lower case: "nocount", "identity_insert", "ansi_nulls", ...
  std::optional<Name> table;  // identity_insert
  std::string value;          // lower case, as spelled: "on", "off", a number
};
struct CreateDatabase : Statement {
  explicit CreateDatabase(SourcePos p) : Statement(StatementKind::createDatabase, p) {}
  std::string name;
};
struct DropDatabase : Statement {
  explicit DropDatabase(SourcePos p) : Statement(StatementKind::dropDatabase, p) {}
  std::string name;
};
struct Use : Statement {
  explicit Use(SourcePos p) : Statement(StatementKind::use, p) {}
  std::string name;
};
struct Print : Statement {
  explicit Print(SourcePos p) : Statement(StatementKind::print, p) {}
  ExprPtr value;
};
struct Return : Statement {
  explicit Return(SourcePos p) : Statement(StatementKind::return_, p) {}
  ExprPtr value;  // may be null
};

struct Batch {
  std::vector<StatementPtr> statements;
  int parameters = 0;  // number of ?
  // Ordinals of the literals whose contents stand in the tree itself (sizes of types, identity(s,i), texts as aliases,
  // source texts of defaults and checks), not in a Literal: batches of one shape have one tree only if these are equal.
  std::vector<int> fixedLiterals;
};

}  // namespace tsql::ast
