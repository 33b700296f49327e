// Tables: columns, constraints, and their changes.

#include "tsql/ascii.h"
#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

StatementPtr Parser::createTable() {
  auto create = std::make_unique<CreateTable>(take().pos);
  take();
  create->name = name();
  definedTable = create->name.last();
  expectMark("(");
  do {
    if (!create->columns.empty() && isMark(")")) break;  // the server lets a comma stand behind the last one
    tableElement(create->columns, create->constraints);
  } while (acceptMark(","));
  expectMark(")");
  fileGroup("on");
  fileGroup("textimage_on");
  return create;
}

void Parser::tableElement(std::vector<ColumnDefinition>& columns, std::vector<TableConstraint>& constraints) {
  if (startsTableConstraint())
    constraints.push_back(tableConstraint());
  else
    columns.push_back(columnDefinition());
}

bool Parser::startsTableConstraint() const {
  for (const char* word : {"constraint", "primary", "unique", "check", "foreign", "default"})
    if (isWord(word)) return true;
  return false;
}

ColumnDefinition Parser::columnDefinition() {
  ColumnDefinition column;
  column.pos = peek().pos;
  column.name = namePart();
  if (acceptWord("as")) {
    computedColumn(column);
    return column;
  }
  if (isSpelled(column.name, "timestamp") && (isMark(",") || isMark(")")))  // a column may be called by its type
    throwUnsupported("the type timestamp", column.pos);
  column.type = typeName();
  while (columnClause(column)) {
  }
  return column;
}

void Parser::computedColumn(ColumnDefinition& column) {
  const std::size_t first = at;
  column.computed = scalar();
  column.computedText = expressionText(first, at);
  acceptWord("persisted");
}

// One clause behind a column's type, in any order; false where none stands.
bool Parser::columnClause(ColumnDefinition& column) {
  if (acceptWord("collate")) {
    collationName();
    return true;
  }
  if (acceptWord("rowguidcol")) return column.rowGuid = true;
  if (isWord("identity")) {
    take();
    column.identity = identityClause();
    return true;
  }
  std::string constraintName;
  const SourcePos pos = peek().pos;
  const bool named = acceptWord("constraint");
  if (named) constraintName = namePart();
  if (isWord("null") || isWord("not")) {
    const bool nullable = !acceptWord("not");
    expectWord("null");
    setNullable(column, nullable, pos);
    return true;
  }
  if (acceptWord("default")) {
    defaultClause(column, std::move(constraintName));
    return true;
  }
  TableConstraint constraint;
  constraint.pos = pos;
  constraint.name = std::move(constraintName);
  if (isWord("primary") || isWord("unique")) {
    keyClause(constraint);
  } else if (isWord("check")) {
    checkClause(constraint);
  } else if (isWord("references") || isWord("foreign")) {
    if (acceptWord("foreign")) expectWord("key");
    referencesClause(constraint);
  } else if (named) {
    fail();
  } else {
    return false;
  }
  if (constraint.columns.empty() && constraint.kind != TableConstraint::Kind::check)
    constraint.columns.push_back({column.name, false, column.pos});
  column.constraints.push_back(std::move(constraint));
  return true;
}

void Parser::setNullable(ColumnDefinition& column, bool nullable, SourcePos pos) const {
  if (column.nullable)
    throw SqlError(
        8150,
        "Multiple NULL constraints were specified for column '" + column.name + "', table '" + definedTable + "'.",
        pos);
  column.nullable = nullable;
}

void Parser::defaultClause(ColumnDefinition& column, std::string constraintName) {
  const std::size_t first = at;
  column.defaultValue = scalar();
  column.defaultText = expressionText(first, at);
  column.defaultName = std::move(constraintName);
}

// Behind identity: (seed, increment), or nothing for (1, 1).
IdentityClause Parser::identityClause() {
  IdentityClause identity;
  if (acceptMark("(")) {
    identity.seed = signedInteger();
    expectMark(",");
    identity.increment = signedInteger();
    expectMark(")");
  }
  notForReplication();
  return identity;
}

void Parser::notForReplication() {
  if (!isWord("not") || !isWord("for", 1)) return;
  take();
  take();
  expectWord("replication");
}

// Source text of an expression, without brackets that enclose all of it.
std::string Parser::expressionText(std::size_t first, std::size_t last) {
  while (last - first > 2 && tokens[first].raw == "(" && tokens[first].kind == TokenKind::punctuation &&
         closingBracket(first) == last - 1 && !isWordOf(tokens[first + 1], "select")) {
    ++first;
    --last;
  }
  return sourceText(first, last);
}

TableConstraint Parser::tableConstraint() {
  TableConstraint constraint;
  constraint.pos = peek().pos;
  if (acceptWord("constraint")) constraint.name = namePart();
  if (isWord("primary") || isWord("unique")) {
    keyClause(constraint);
    if (constraint.columns.empty()) fail();
  } else if (isWord("check")) {
    checkClause(constraint);
  } else if (acceptWord("foreign")) {
    expectWord("key");
    auto columns = keyColumns();
    referencesClause(constraint);
    constraint.columns = std::move(columns);
  } else if (acceptWord("default")) {
    constraint.kind = TableConstraint::Kind::default_;
    const std::size_t first = at;
    constraint.check = scalar();
    constraint.text = expressionText(first, at);
    expectWord("for");
    const SourcePos pos = peek().pos;
    constraint.columns.push_back({namePart(), false, pos});
    if (isWord("with") && isWord("values", 1)) {  // rows that are there keep their values in this form
      take();
      take();
    }
  } else {
    fail();
  }
  return constraint;
}

// primary key and unique, at a column or for the table
void Parser::keyClause(TableConstraint& constraint) {
  if (acceptWord("primary")) {
    expectWord("key");
    constraint.kind = TableConstraint::Kind::primaryKey;
  } else {
    expectWord("unique");
    constraint.kind = TableConstraint::Kind::unique;
  }
  constraint.clustered = acceptWord("clustered");
  if (!constraint.clustered) acceptWord("nonclustered");
  if (isMark("(")) constraint.columns = keyColumns();
  constraintPlace();
}

// with fillfactor = 90 on [PRIMARY]; the values of `with values` belong to the column.
void Parser::constraintPlace() {
  if (isWord("with") && !isWord("values", 1)) indexOptions();
  fileGroup("on");
}

void Parser::checkClause(TableConstraint& constraint) {
  take();
  constraint.kind = TableConstraint::Kind::check;
  notForReplication();
  expectMark("(");
  const std::size_t first = at;
  constraint.check = condition();
  constraint.text = expressionText(first, at);
  expectMark(")");
}

void Parser::referencesClause(TableConstraint& constraint) {
  constraint.kind = TableConstraint::Kind::foreignKey;
  const std::size_t first = at;
  expectWord("references");
  name();
  if (isMark("(")) keyColumns();
  while (acceptWord("on")) {
    if (!acceptWord("delete")) expectWord("update");
    if (acceptWord("no"))
      expectWord("action");
    else if (acceptWord("set"))
      acceptWord("null") ? void() : expectWord("default");
    else
      expectWord("cascade");
  }
  constraint.text = sourceText(first, at);
  notForReplication();
}

StatementPtr Parser::alterTable() {
  auto alter = std::make_unique<AlterTable>(take().pos);
  take();
  alter->name = name();
  definedTable = alter->name.last();
  if (isWord("with") && (isWord("check", 1) || isWord("nocheck", 1)) && isWord("add", 2)) {
    take();
    take();
  }
  if (isWord("add")) return addToTable(std::move(alter));
  if (isWord("alter")) return alterColumn(std::move(alter));
  if (acceptWord("drop")) {
    dropElements(*alter);
    return alter;
  }
  if (isWord("check") || isWord("nocheck") || isWord("with")) unsupported("switching a constraint on or off");
  if (isWord("enable") || isWord("disable")) unsupported("a trigger");
  if (isWord("switch") || isWord("rebuild")) unsupported("alter table " + peek().text);
  fail();
}

StatementPtr Parser::addToTable(Ptr<AlterTable> alter) {
  take();
  alter->action = AlterTable::Action::add;
  do {
    tableElement(alter->columns, alter->constraints);
    if (isWord("with") && isWord("values", 1)) {
      withValues(alter->columns.back());
      take();
      take();
    }
  } while (acceptMark(","));
  return alter;
}

// default x with values fills the rows that are there even if the column takes Null; a column that takes none is
// filled in any case.
void Parser::withValues(const ColumnDefinition& column) {
  if (!column.defaultValue) fail();
  if (column.nullable.value_or(true)) unsupported("with values for a column that takes Null");
}

StatementPtr Parser::alterColumn(Ptr<AlterTable> alter) {
  take();
  expectWord("column");
  alter->action = AlterTable::Action::alterColumn;
  ColumnDefinition column;
  column.pos = peek().pos;
  column.name = namePart();
  if ((isWord("add") || isWord("drop")) && isWord("rowguidcol", 1)) unsupported("changing rowguidcol");
  column.type = typeName();
  skipCollation();
  if (acceptWord("null")) {
    column.nullable = true;
  } else if (acceptWord("not")) {
    expectWord("null");
    column.nullable = false;
  }
  alter->columns.push_back(std::move(column));
  return alter;
}

// drop column a, b; drop constraint a, b; drop a
void Parser::dropElements(AlterTable& alter) {
  const bool columns = acceptWord("column");
  if (!columns) acceptWord("constraint");
  alter.action = columns ? AlterTable::Action::dropColumns : AlterTable::Action::dropConstraints;
  do {
    if (isWord("column") || isWord("constraint")) {
      if (isWord("column") != columns) unsupported("dropping columns and constraints in one statement");
      take();
    }
    const SourcePos pos = peek().pos;
    alter.names.emplace_back(namePart(), pos);
  } while (acceptMark(","));
}

}  // namespace tsql
