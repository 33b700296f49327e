// Which statement a word begins, and the statements that control a batch.

#include "tsql/ascii.h"
#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

// A word that begins a statement: how it is parsed, or, without a handler, what it is refused as.
struct Parser::Entry {
  std::string_view word;
  Handler handler;
  const char* refusedAs;
};

const Parser::Entry Parser::entries[] = {
    {"select", &Parser::selectStatement, nullptr},
    {"insert", &Parser::insertStatement, nullptr},
    {"update", &Parser::updateStatement, nullptr},
    {"delete", &Parser::deleteStatement, nullptr},
    {"if", &Parser::ifStatement, nullptr},
    {"begin", &Parser::beginStatement, nullptr},
    {"exec", &Parser::executeStatement, nullptr},
    {"execute", &Parser::executeStatement, nullptr},
    {"set", &Parser::setStatement, nullptr},
    {"create", &Parser::createStatement, nullptr},
    {"alter", &Parser::alterStatement, nullptr},
    {"drop", &Parser::dropStatement, nullptr},
    {"truncate", &Parser::truncateStatement, nullptr},
    {"commit", &Parser::commitStatement, nullptr},
    {"rollback", &Parser::rollbackStatement, nullptr},
    {"use", &Parser::useStatement, nullptr},
    {"print", &Parser::printStatement, nullptr},
    {"return", &Parser::returnStatement, nullptr},
    {"while", &Parser::whileStatement, nullptr},
    {"break", &Parser::breakStatement, nullptr},
    {"continue", &Parser::continueStatement, nullptr},
    {"declare", &Parser::declareStatement, nullptr},
    {"raiserror", &Parser::raiserrorStatement, nullptr},
    {"save", &Parser::saveStatement, nullptr},
    {"backup", nullptr, "backup"},
    {"bulk", nullptr, "bulk insert"},
    {"checkpoint", nullptr, "checkpoint"},
    {"close", nullptr, "a cursor"},
    {"dbcc", nullptr, "dbcc"},
    {"deallocate", nullptr, "a cursor"},
    {"deny", nullptr, "deny"},
    {"disk", nullptr, "disk"},
    {"dump", nullptr, "dump"},
    {"fetch", nullptr, "a cursor"},
    {"goto", nullptr, "goto"},
    {"grant", nullptr, "grant"},
    {"kill", nullptr, "kill"},
    {"load", nullptr, "load"},
    {"open", nullptr, "a cursor"},
    {"readtext", nullptr, "readtext"},
    {"reconfigure", nullptr, "reconfigure"},
    {"restore", nullptr, "restore"},
    {"revoke", nullptr, "revoke"},
    {"setuser", nullptr, "setuser"},
    {"shutdown", nullptr, "shutdown"},
    {"updatetext", nullptr, "updatetext"},
    {"waitfor", nullptr, "waitfor"},
    {"with", nullptr, "a common table expression"},
    {"writetext", nullptr, "writetext"},
};

StatementPtr Parser::statement() {
  const Nest nest(*this);
  const std::size_t first = at;
  sources = 0;
  StatementPtr result;
  if (peek().kind == TokenKind::identifier) {
    for (const Entry& entry : entries) {
      if (!isWord(entry.word)) continue;
      if (entry.word == "with" && !(isNamePart(1) && (isWord("as", 2) || isMark("(", 2)))) fail();
      if (!entry.handler) unsupported(entry.refusedAs);
      result = (this->*entry.handler)();
      break;
    }
    if (!result && isMark(":", 1)) unsupported("a label");
    if (!result && isWord("merge") && (isNamePart(1) || isWord("into", 1) || isWord("top", 1))) unsupported("merge");
  } else if (isMark("(") && startsSelect()) {
    result = selectStatement();
  }
  if (!result) {
    // A procedure's name alone runs it, but only at the head of the batch.
    if (!firstInBatch || !isNamePart()) fail();
    result = executeStatement();
  }
  result->firstToken = first;
  result->lastToken = at;
  return result;
}

StatementPtr Parser::ifStatement() {
  auto result = std::make_unique<If>(take().pos);
  result->condition = condition();
  firstInBatch = false;
  result->then = statement();
  if (isMark(";") && isWord("else", 1)) take();
  if (acceptWord("else")) result->otherwise = statement();
  return result;
}

StatementPtr Parser::whileStatement() {
  auto result = std::make_unique<While>(take().pos);
  result->condition = condition();
  firstInBatch = false;
  ++loops;
  result->body = statement();
  --loops;
  return result;
}

StatementPtr Parser::breakStatement() {
  if (!loops)
    throw SqlError(135, "Cannot use a BREAK statement outside the scope of a WHILE statement.", peek().pos, 15);
  return std::make_unique<Break>(take().pos);
}

StatementPtr Parser::continueStatement() {
  if (!loops)
    throw SqlError(136, "Cannot use a CONTINUE statement outside the scope of a WHILE statement.", peek().pos, 15);
  return std::make_unique<Continue>(take().pos);
}

StatementPtr Parser::block() {
  auto result = std::make_unique<Block>(take().pos);
  firstInBatch = false;
  while (acceptMark(";")) {
  }
  do {
    result->statements.push_back(statement());
    while (acceptMark(";")) {
    }
  } while (!acceptWord("end"));
  return result;
}

}  // namespace tsql
