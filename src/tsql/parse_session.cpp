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

// What a value of an option may be at all; another one is a mistake in the text.
enum class Takes : std::uint8_t { onOff, number, word };

// An option of set and the values under which this server works as the real one does; all others change what
// statements mean and are refused. An empty list: any value, the option concerns speed, locks or reports only.
struct Option {
  std::string_view name;
  Takes takes;
  std::array<std::string_view, 3> values;
};

constexpr std::array options{
    Option{"ansi_defaults", Takes::onOff, {"on"}},
    Option{"ansi_null_dflt_off", Takes::onOff, {"off"}},
    Option{"ansi_null_dflt_on", Takes::onOff, {"on"}},
    Option{"ansi_nulls", Takes::onOff, {"on"}},
    Option{"ansi_padding", Takes::onOff, {"on"}},
    Option{"ansi_warnings", Takes::onOff, {"on"}},
    Option{"arithabort", Takes::onOff, {}},
    Option{"arithignore", Takes::onOff, {"off"}},
    Option{"concat_null_yields_null", Takes::onOff, {"on"}},
    Option{"cursor_close_on_commit", Takes::onOff, {"off"}},
    Option{"datefirst", Takes::number, {"7"}},
    Option{"dateformat", Takes::word, {"mdy"}},
    Option{"deadlock_priority", Takes::word, {}},
    Option{"fmtonly", Takes::onOff, {"off"}},
    Option{"forceplan", Takes::onOff, {}},
    Option{"identity_insert", Takes::onOff, {"on", "off"}},
    Option{"implicit_transactions", Takes::onOff, {"off"}},
    Option{"language", Takes::word, {"us_english", "english"}},
    Option{"lock_timeout", Takes::number, {}},
    Option{"no_browsetable", Takes::onOff, {"off"}},
    Option{"nocount", Takes::onOff, {}},
    Option{"noexec", Takes::onOff, {"off"}},
    Option{"numeric_roundabort", Takes::onOff, {"off"}},
    Option{"parseonly", Takes::onOff, {"off"}},
    Option{"query_governor_cost_limit", Takes::number, {}},
    Option{"quoted_identifier", Takes::onOff, {"on"}},
    Option{"remote_proc_transactions", Takes::onOff, {}},
    Option{"rowcount", Takes::number, {"0"}},
    Option{"showplan_all", Takes::onOff, {"off"}},
    Option{"showplan_text", Takes::onOff, {"off"}},
    Option{"showplan_xml", Takes::onOff, {"off"}},
    Option{"statistics io", Takes::onOff, {}},
    Option{"statistics profile", Takes::onOff, {"off"}},
    Option{"statistics time", Takes::onOff, {}},
    Option{"statistics xml", Takes::onOff, {"off"}},
    Option{"textsize", Takes::number, {"0", "-1", "2147483647"}},
    Option{"xact_abort", Takes::onOff, {"on", "off"}},
};

bool fits(Takes takes, const std::string& value) {
  if (takes == Takes::onOff) return value == "on" || value == "off";
  const std::size_t sign = value.starts_with("-") ? 1 : 0;
  return takes == Takes::word ||
         (value.size() > sign && value.find_first_not_of("0123456789", sign) == std::string::npos);
}

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
    result->value = isolationLevel();
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
  const std::size_t valueAt = at;
  result->value = optionValue();
  for (const auto& [name, where] : names) checkOption(name, where, result->value, valueAt);
  return result;
}

// All levels are one here, but only theirs are the names.
std::string Parser::isolationLevel() {
  for (const char* word : {"serializable", "snapshot"})
    if (acceptWord(word)) return word;
  if (acceptWord("repeatable")) {
    expectWord("read");
    return "repeatable read";
  }
  expectWord("read");
  if (acceptWord("uncommitted")) return "read uncommitted";
  expectWord("committed");
  return "read committed";
}

void Parser::checkOption(const std::string& name, SourcePos where, const std::string& value,
                         std::size_t valueAt) const {
  const auto* known = std::find_if(options.begin(), options.end(), [&n = name](const auto& o) { return o.name == n; });
  if (known == options.end()) throw SqlError(195, "'" + name + "' is not a recognized SET option.", where, 15);
  if (!fits(known->takes, value)) failAt(valueAt);
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
