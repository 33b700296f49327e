// insert, update, delete, truncate table, and select as a statement.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

StatementPtr Parser::selectStatement() {
  auto statement = std::make_unique<SelectStatement>(selectChain(SelectUse::statement));
  statementOptions();
  return statement;
}

// default as a value is the column's default; it is held as a Column of that name.
ExprPtr Parser::valueOrDefault() {
  if (!isWord("default")) return scalar();
  const Token& word = take();
  return std::make_unique<Column>(Name{{"default"}, word.pos});
}

StatementPtr Parser::insertStatement() {
  auto insert = std::make_unique<Insert>(take().pos);
  if (isWord("top")) unsupported("insert top");
  if (isWord("bulk")) unsupported("insert bulk");
  acceptWord("into");
  if (peek().kind == TokenKind::variable) unsupported("a table variable");
  insert->target = name();
  tableHints();
  if (isMark("(") && !startsSelect()) {
    take();
    do {
      const Name column = name();  // a table's name before it is allowed and says nothing
      insert->columns.emplace_back(column.last(), column.pos);
    } while (acceptMark(","));
    expectMark(")");
  }
  if (isWord("output")) unsupported("the output clause");
  if (acceptWord("default")) {
    expectWord("values");
    insert->defaultValues = true;
  } else if (isWord("values")) {
    valueRows(*insert);
  } else if (isWord("exec") || isWord("execute")) {
    const std::size_t first = at;
    insert->execute = executeStatement();
    insert->execute->firstToken = first;
    insert->execute->lastToken = at;
  } else if (isWord("select") || isMark("(")) {
    insert->select = selectChain(SelectUse::statement);
    if (insert->select->into)
      throw SqlError(156, "Incorrect syntax near the keyword 'into'.", insert->select->into->pos, 15);
  } else {
    fail();
  }
  statementOptions();
  return insert;
}

// values (...), or several rows: these are a select of constants for each, combined by union all, and so of one type
// a column, as the server has it.
void Parser::valueRows(Insert& insert) {
  Select* last = nullptr;
  int rows = 0;
  take();
  do {
    const SourcePos pos = peek().pos;
    expectMark("(");
    std::vector<ExprPtr> values;
    do values.push_back(valueOrDefault());
    while (acceptMark(","));
    expectMark(")");
    if (++rows == 1 && !isMark(",")) {
      insert.values = std::move(values);
      return;
    }
    if (rows > maximumValueRows)
      throw SqlError(
          10738,
          "The number of row value expressions in the INSERT statement exceeds the maximum allowed number of "
          "1000 row values.",
          pos, 15);
    auto row = std::make_unique<Select>();
    row->pos = pos;
    for (ExprPtr& value : values) {
      const auto* column = dynamic_cast<const Column*>(value.get());
      if (column && column->name.parts.size() == 1 && column->name.last() == "default")
        throwUnsupported("default in one of several rows of values", column->pos);
      SelectItem item;
      item.pos = value->pos;
      item.expr = std::move(value);
      row->items.push_back(std::move(item));
    }
    if (last && last->items.size() != row->items.size())
      throw SqlError(10709, "The number of columns for each row in a table value constructor must be the same.", pos,
                     15);
    auto& place = last ? last->next : insert.select;
    if (last) last->op = SetOperation::unionAll;
    place = std::move(row);
    last = place.get();
  } while (acceptMark(","));
}

StatementPtr Parser::updateStatement() {
  auto update = std::make_unique<Update>(take().pos);
  if (isWord("top")) unsupported("update top");
  if (isWord("statistics")) unsupported("update statistics");
  if (peek().kind == TokenKind::variable) unsupported("a table variable");
  update->target = name();
  tableHints();
  expectWord("set");
  do {
    if (peek().kind == TokenKind::variable) unsupported("assignment to a variable");
    Assignment assignment;
    assignment.column = name();
    refuseCompoundAssignment();
    expectMark("=");
    assignment.value = valueOrDefault();
    update->assignments.push_back(std::move(assignment));
  } while (acceptMark(","));
  if (isWord("output")) unsupported("the output clause");
  if (acceptWord("from")) update->from = sourceList();
  if (acceptWord("where")) {
    if (isWord("current")) unsupported("where current of");
    update->where = condition();
  }
  statementOptions();
  return update;
}

StatementPtr Parser::deleteStatement() {
  auto deletion = std::make_unique<Delete>(take().pos);
  if (isWord("top")) unsupported("delete top");
  acceptWord("from");
  if (peek().kind == TokenKind::variable) unsupported("a table variable");
  deletion->target = name();
  tableHints();
  if (isWord("output")) unsupported("the output clause");
  if (acceptWord("from")) deletion->from = sourceList();
  if (acceptWord("where")) {
    if (isWord("current")) unsupported("where current of");
    deletion->where = condition();
  }
  statementOptions();
  return deletion;
}

StatementPtr Parser::truncateStatement() {
  auto truncate = std::make_unique<Truncate>(take().pos);
  expectWord("table");
  truncate->target = name();
  return truncate;
}

}  // namespace tsql
