// What concerns the session: transactions, its options, its database.

#include <algorithm>
#include <array>

#include "tsql/ascii.h"
#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

StatementPtr Parser::beginStatement() {
  if (isWord("distributed", 1)) unsupported("a distributed transaction");
  if (isWord("try", 1) || isWord("catch", 1)) unsupported("begin " + lowerCase(peek(1).text));
  if (!isWord("tran", 1) && !isWord("transaction", 1)) return block();
  auto result = std::make_unique<BeginTransaction>(take().pos);
  take();
  result->name = transactionName();
  if (isWord("with") && isWord("mark", 1)) unsupported("a marked transaction");
  return result;
}

// The name of a transaction or savepoint; empty where none stands.
std::string Parser::transactionName() {
  if (peek().kind == TokenKind::variable) unsupported("a transaction's name in a variable");
  return isNamePart() ? take().text : std::string();
}

StatementPtr Parser::saveStatement() {
  auto result = std::make_unique<SaveTransaction>(take().pos);
  if (!acceptWord("tran")) expectWord("transaction");
  result->name = transactionName();
  if (result->name.empty()) fail();
  return result;
}

// A name behind commit only repeats what the nesting says.
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
    result->name = transactionName();
  else
    acceptWord("work");
  return result;
}

namespace {

// An option of set and the values under which this server works as the real one does; all others change what
// statements mean and are refused. An empty list: any value, the option concerns speed, locks or reports only.
struct Option {
  std::string_view name;
  std::array<std::string_view, 3> values;
};

constexpr std::array options{
    Option{"ansi_defaults", {"on"}},
    Option{"ansi_null_dflt_off", {"off"}},
    Option{"ansi_null_dflt_on", {"on"}},
    Option{"ansi_nulls", {"on"}},
    Option{"ansi_padding", {"on"}},
    Option{"ansi_warnings", {"on"}},
    Option{"arithabort", {}},
    Option{"arithignore", {"off"}},
    Option{"concat_null_yields_null", {"on"}},
    Option{"cursor_close_on_commit", {"off"}},
    Option{"datefirst", {"7"}},
    Option{"dateformat", {"mdy"}},
    Option{"deadlock_priority", {}},
    Option{"fmtonly", {"off"}},
    Option{"forceplan", {}},
    Option{"identity_insert", {"on", "off"}},
    Option{"implicit_transactions", {"off"}},
    Option{"language", {"us_english", "english"}},
    Option{"lock_timeout", {}},
    Option{"no_browsetable", {"off"}},
    Option{"nocount", {}},
    Option{"noexec", {"off"}},
    Option{"numeric_roundabort", {"off"}},
    Option{"parseonly", {"off"}},
    Option{"query_governor_cost_limit", {}},
    Option{"quoted_identifier", {"on"}},
    Option{"remote_proc_transactions", {}},
    Option{"rowcount", {"0"}},
    Option{"showplan_all", {"off"}},
    Option{"showplan_text", {"off"}},
    Option{"showplan_xml", {"off"}},
    Option{"statistics io", {}},
    Option{"statistics profile", {"off"}},
    Option{"statistics time", {}},
    Option{"statistics xml", {"off"}},
    Option{"textsize", {"0", "-1", "2147483647"}},
    Option{"xact_abort", {"on", "off"}},
};

}  // namespace

// set nocount on; set ansi_nulls, quoted_identifier on; set identity_insert db..t on;
// set statistics io on; set transaction isolation level read committed.
StatementPtr Parser::setStatement() {
  const SourcePos pos = take().pos;
  if (peek().kind == TokenKind::variable) return setVariable(pos);
  auto result = std::make_unique<SetOption>(pos);
  if (isWord("transaction")) {
    for (const char* word : {"transaction", "isolation", "level"}) expectWord(word);
    result->option = "transaction isolation level";
    result->value = optionValue();
    if (result->value == "read" || result->value == "repeatable") result->value += " " + optionValue();
    return result;
  }
  std::vector<std::pair<std::string, SourcePos>> names;
  do {
    if (peek().kind != TokenKind::identifier) fail();
    const Token& word = take();
    names.emplace_back(lowerCase(word.text), word.pos);
    if (isWordOf(word, "statistics")) names.back().first += " " + optionValue();
  } while (acceptMark(","));
  for (const auto& [name, where] : names) result->option += (result->option.empty() ? "" : ",") + name;
  if (result->option == "identity_insert") {
    result->table = name();
    if (!isWord("on") && !isWord("off")) fail();
  }
  result->value = optionValue();
  for (const auto& [name, where] : names) checkOption(name, where, result->value);
  return result;
}

void Parser::checkOption(const std::string& name, SourcePos where, const std::string& value) const {
  const auto* known = std::find_if(options.begin(), options.end(), [&n = name](const auto& o) { return o.name == n; });
  if (known == options.end()) throw SqlError(195, "'" + name + "' is not a recognized SET option.", where, 15);
  const bool any = known->values[0].empty();
  if (!any && std::find(known->values.begin(), known->values.end(), value) == known->values.end())
    throwUnsupported("set " + name + " " + value, where);
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

}  // namespace tsql
