// create, alter, drop: which object, and databases and indexes.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

// create view, alter login, drop trigger, ...
void Parser::unsupportedDefinition(const char* verb) const {
  if (peek(1).kind != TokenKind::identifier) failAt(std::min(at + 1, tokens.size() - 1));
  for (const char* object :
       {"view", "function", "trigger", "rule", "default", "schema", "statistics", "type", "login", "user", "role",
        "synonym", "assembly", "fulltext", "partition", "xml", "database", "index"})
    if (isWord(object, 1)) unsupported(std::string(verb) + " " + object);
  if (isReservedAt(at + 1)) failAt(at + 1);
  throw SqlError(343, "Unknown object type '" + peek(1).text + "' used in a CREATE, DROP, or ALTER statement.",
                 peek(1).pos, 15);
}

StatementPtr Parser::createStatement() {
  if (isWord("table", 1)) return createTable();
  if (isWord("proc", 1) || isWord("procedure", 1)) return createProcedure(false);
  if (isWord("database", 1)) return createDatabase();
  for (const char* word : {"index", "unique", "clustered", "nonclustered"})
    if (isWord(word, 1)) return createIndex();
  unsupportedDefinition("create");
}

StatementPtr Parser::alterStatement() {
  if (isWord("table", 1)) return alterTable();
  if (isWord("proc", 1) || isWord("procedure", 1)) return createProcedure(true);
  unsupportedDefinition("alter");
}

std::vector<Name> Parser::tableNames() {
  std::vector<Name> names;
  do names.push_back(name());
  while (acceptMark(","));
  return names;
}

StatementPtr Parser::dropStatement() {
  if (isWord("index", 1)) return dropIndex();
  if (isWord("proc", 1) || isWord("procedure", 1)) return dropProcedure();
  if (isWord("database", 1)) return dropDatabase();
  if (!isWord("table", 1)) unsupportedDefinition("drop");
  auto drop = std::make_unique<DropTable>(take().pos);
  take();
  drop->names = tableNames();
  return drop;
}

StatementPtr Parser::createDatabase() {
  auto create = std::make_unique<CreateDatabase>(take().pos);
  take();
  create->name = namePart();
  if (isWord("on") || isWord("log") || isWord("for")) unsupported("the place of a database's files");
  skipCollation();
  return create;
}

StatementPtr Parser::dropDatabase() {
  auto drop = std::make_unique<DropDatabase>(take().pos);
  take();
  drop->name = namePart();
  if (isMark(",")) unsupported("drop database with several names");
  return drop;
}

// [clustered | nonclustered] stands between unique and index.
StatementPtr Parser::createIndex() {
  auto create = std::make_unique<CreateIndex>(take().pos);
  create->unique = acceptWord("unique");
  create->clustered = acceptWord("clustered");
  if (!create->clustered) acceptWord("nonclustered");
  expectWord("index");
  create->index = namePart();
  expectWord("on");
  create->table = name();
  create->columns = keyColumns();
  if (isWord("include")) unsupported("an index with included columns");
  indexOptions();
  fileGroup("on");
  return create;
}

std::vector<KeyColumn> Parser::keyColumns() {
  std::vector<KeyColumn> columns;
  expectMark("(");
  do {
    KeyColumn column;
    column.pos = peek().pos;
    column.name = namePart();
    column.descending = acceptWord("desc");
    if (!column.descending) acceptWord("asc");
    columns.push_back(std::move(column));
  } while (acceptMark(","));
  expectMark(")");
  return columns;
}

// with fillfactor = 90, pad_index; with (pad_index = off, ...). All but two concern storage alone.
void Parser::indexOptions() {
  if (!acceptWord("with")) return;
  const bool inBrackets = acceptMark("(");
  do {
    if (peek().kind != TokenKind::identifier) fail();
    const Token& option = take();
    bool on = true;
    if (acceptMark("=")) {
      on = !isWord("off");
      if (peek().kind != TokenKind::integer && !isWord("on") && !isWord("off")) fail();
      take();
    }
    if (on && (isWordOf(option, "ignore_dup_key") || isWordOf(option, "drop_existing")))
      throwUnsupported("an index with " + option.text, option.pos);
  } while (acceptMark(","));
  if (inBrackets) expectMark(")");
}

// on [PRIMARY], textimage_on [PRIMARY]: there are no file groups.
void Parser::fileGroup(std::string_view word) {
  if (!acceptWord(word)) return;
  if (!acceptWord("default") && !acceptWord("primary")) namePart();
}

// drop index t.i, u.j or drop index i on t
StatementPtr Parser::dropIndex() {
  auto drop = std::make_unique<DropIndex>(take().pos);
  take();
  do {
    Name index = name();
    if (index.parts.size() == 1) {
      if (!acceptWord("on"))
        throw SqlError(159, "Must specify the table name and index name for the DROP INDEX statement.", index.pos, 15);
      Name table = name();
      table.pos = index.pos;
      table.parts.push_back(index.last());
      index = std::move(table);
    }
    drop->names.push_back(std::move(index));
  } while (acceptMark(","));
  return drop;
}

}  // namespace tsql
