// The from clause: tables, derived tables, joins.

#include "tsql/parser_impl.h"

namespace tsql {

using namespace ast;

std::vector<SourcePtr> Parser::sourceList() {
  std::vector<SourcePtr> list;
  do list.push_back(source());
  while (acceptMark(","));
  return list;
}

SourcePtr Parser::source() {
  const Nest nest(*this);
  return joined(singleSource(), false);
}

bool Parser::startsJoin() const {
  for (const char* word : {"join", "inner", "left", "right", "full", "cross"})
    if (isWord(word)) return true;
  return isWord("outer") && isWord("apply", 1);
}

// The words up to and including join.
std::optional<JoinKind> Parser::joinKind() {
  if (!startsJoin()) return std::nullopt;
  if (isWord("apply", 1)) unsupported(peek().text + " apply");
  JoinKind kind = JoinKind::inner;
  if (acceptWord("inner")) {
  } else if (acceptWord("cross")) {
    kind = JoinKind::cross;
  } else if (!isWord("join")) {
    kind = isWord("left") ? JoinKind::left : isWord("right") ? JoinKind::right : JoinKind::full;
    take();
    acceptWord("outer");
  }
  if (kind != JoinKind::cross)  // how the server is to join: no matter of results
    for (const char* hint : {"loop", "hash", "merge", "remote"})
      if (acceptWord(hint)) break;
  expectWord("join");
  return kind;
}

// The joins behind a first source. As an operand (a join b join c on ... on ...) it ends where its last condition does.
SourcePtr Parser::joined(SourcePtr left, bool isOperand) {
  while (!(isOperand && isWord("on"))) {
    const auto kind = joinKind();
    if (!kind) break;
    const SourcePos pos = left->pos;
    SourcePtr right = singleSource();
    ExprPtr on;
    if (*kind != JoinKind::cross) {
      if (startsJoin()) {
        const Nest nest(*this);
        right = joined(std::move(right), true);
      }
      expectWord("on");
      on = condition();
    }
    left = std::make_unique<JoinSource>(pos, *kind, std::move(left), std::move(right), std::move(on));
  }
  return left;
}

SourcePtr Parser::singleSource() {
  if (++sources > maximumSources)
    throw SqlError(106, "Too many table names in the query. The maximum allowable is 256.", peek().pos, 15);
  if (!isMark("(")) return tableSource();
  if (startsSelect(1)) return derivedSource();
  take();
  if (isWord("values")) unsupported("a derived table of values");
  SourcePtr inner = source();
  if (inner->kind != Source::Kind::join) fail();  // brackets are for joins
  expectMark(")");
  return inner;
}

SourcePtr Parser::derivedSource() {
  const Nest nest(*this);
  const SourcePos pos = take().pos;
  Ptr<Select> select = selectChain(SelectUse::operand);
  expectMark(")");
  acceptWord("as");
  auto derived = std::make_unique<DerivedSource>(pos, std::move(select), namePart());
  if (acceptMark("(")) {
    for (auto& [column, where] : nameList()) derived->columnAliases.push_back(column);
    expectMark(")");
  }
  return derived;
}

SourcePtr Parser::tableSource() {
  if (peek().kind == TokenKind::variable) unsupported("a table variable");
  for (const char* refused : {"openquery", "openrowset", "opendatasource", "openxml", "containstable", "freetexttable"})
    if (isWord(refused)) unsupported(refused);
  auto table = std::make_unique<TableSource>(name());
  if (isMark("(") && !isHintAt(1)) throwUnsupported("a table-valued function (" + table->name.last() + ")", table->pos);
  tableHints();
  table->alias = sourceAlias();
  if (isWord("tablesample") || isWord("pivot") || isWord("unpivot")) unsupported(peek().text);
  tableHints();
  return table;
}

// A short name, with or without as. A bare nolock is the old spelling of the hint and no name.
std::string Parser::sourceAlias() {
  if (acceptWord("as")) return namePart();
  if (!isNamePart() || isWord("nolock")) return {};
  if (isWord("tablesample") || ((isWord("pivot") || isWord("unpivot")) && isMark("(", 1))) return {};
  return take().text;
}

bool Parser::isHintAt(std::size_t ahead) const {
  for (const char* hint : {"nolock", "holdlock", "rowlock", "paglock", "tablock", "tablockx", "updlock", "xlock",
                           "readpast", "readcommitted", "readuncommitted", "repeatableread", "serializable", "index",
                           "fastfirstrow", "noexpand", "nowait"})
    if (isWord(hint, ahead)) return true;
  return false;
}

// with (nolock), (nolock), nolock: locks and indexes are the server's own affair here.
void Parser::tableHints() {
  for (;;) {
    if (isMark("(") && isHintAt(1)) {
      skipBrackets();
    } else if (isWord("with") && isMark("(", 1)) {
      if (!isHintAt(2)) {
        at += 2;
        fail();
      }
      take();
      skipBrackets();
    } else if (isWord("nolock") || isWord("holdlock")) {
      take();
    } else {
      return;
    }
  }
}

}  // namespace tsql
