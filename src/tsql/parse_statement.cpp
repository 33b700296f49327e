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
    {"backup", nullptr, "backup"},
    {"break", nullptr, "while"},
    {"bulk", nullptr, "bulk insert"},
    {"checkpoint", nullptr, "checkpoint"},
    {"close", nullptr, "a cursor"},
    {"continue", nullptr, "while"},
    {"dbcc", nullptr, "dbcc"},
    {"deallocate", nullptr, "a cursor"},
    {"declare", nullptr, "declare"},
    {"deny", nullptr, "deny"},
    {"disk", nullptr, "disk"},
    {"dump", nullptr, "dump"},
    {"fetch", nullptr, "a cursor"},
    {"goto", nullptr, "goto"},
    {"grant", nullptr, "grant"},
    {"kill", nullptr, "kill"},
    {"load", nullptr, "load"},
    {"open", nullptr, "a cursor"},
    {"raiserror", nullptr, "raiserror"},
    {"readtext", nullptr, "readtext"},
    {"reconfigure", nullptr, "reconfigure"},
    {"restore", nullptr, "restore"},
    {"revoke", nullptr, "revoke"},
    {"save", nullptr, "save transaction"},
    {"setuser", nullptr, "setuser"},
    {"shutdown", nullptr, "shutdown"},
    {"updatetext", nullptr, "updatetext"},
    {"waitfor", nullptr, "waitfor"},
    {"while", nullptr, "while"},
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

StatementPtr Parser::beginStatement() {
  if (isWord("distributed", 1)) unsupported("a distributed transaction");
  if (isWord("try", 1) || isWord("catch", 1)) unsupported("begin " + lowerCase(peek(1).text));
  if (!isWord("tran", 1) && !isWord("transaction", 1)) return block();
  auto result = std::make_unique<BeginTransaction>(take().pos);
  take();
  transactionName();
  if (isWord("with") && isWord("mark", 1)) unsupported("a marked transaction");
  return result;
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

// The name of a transaction only repeats what the nesting says.
void Parser::transactionName() {
  if (peek().kind == TokenKind::variable)
    unsupported("a transaction's name in a variable");
  else if (isNamePart())
    take();
}

StatementPtr Parser::commitStatement() {
  auto result = std::make_unique<Commit>(take().pos);
  if (acceptWord("tran") || acceptWord("transaction"))
    transactionName();
  else
    acceptWord("work");
  return result;
}

StatementPtr Parser::rollbackStatement() {
  auto result = std::make_unique<Rollback>(take().pos);
  if (acceptWord("tran") || acceptWord("transaction"))
    transactionName();
  else
    acceptWord("work");
  return result;
}

// set nocount on; set ansi_nulls, quoted_identifier on; set identity_insert db..t on; set rowcount 10;
// set statistics io on; set transaction isolation level read committed.
StatementPtr Parser::setStatement() {
  auto result = std::make_unique<SetOption>(take().pos);
  if (peek().kind == TokenKind::variable) unsupported("assignment to a variable");
  if (isWord("transaction")) {
    for (const char* word : {"transaction", "isolation", "level"}) expectWord(word);
    result->option = "transaction isolation level";
    result->value = optionValue();
    if (result->value == "read" || result->value == "repeatable") result->value += " " + optionValue();
    return result;
  }
  do {
    if (peek().kind != TokenKind::identifier) fail();
    if (!result->option.empty()) result->option += ',';
    const Token& word = take();
    result->option += lowerCase(word.text);
    if (isWordOf(word, "statistics")) result->option += " " + optionValue();
  } while (acceptMark(","));
  if (result->option == "identity_insert") {
    result->table = name();
    if (!isWord("on") && !isWord("off")) fail();
  }
  result->value = optionValue();
  return result;
}

// A word, a number or a text, lower case.
std::string Parser::optionValue() {
  std::string sign = acceptMark("-") ? "-" : "";
  const Token& token = peek();
  if (token.kind == TokenKind::variable) unsupported("a variable as the value of an option");
  if (token.kind == TokenKind::punctuation || token.kind == TokenKind::parameter || atEnd()) fail();
  if (!sign.empty() && token.kind != TokenKind::integer) fail();
  if (token.isLiteral()) fixLiteral(token);
  take();
  return sign + lowerCase(token.text.empty() ? token.raw : std::string_view(token.text));
}

StatementPtr Parser::useStatement() {
  auto result = std::make_unique<Use>(take().pos);
  result->name = namePart();
  return result;
}

StatementPtr Parser::printStatement() {
  auto result = std::make_unique<Print>(take().pos);
  result->value = scalar();
  return result;
}

StatementPtr Parser::returnStatement() {
  auto result = std::make_unique<Return>(take().pos);
  if (startsExpression()) result->value = scalar();
  return result;
}

}  // namespace tsql
