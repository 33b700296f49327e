#pragma once
// The parser's own class; its parts stand in parse_*.cpp by subject.

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tsql/parser.h"

namespace tsql {

class Parser {
public:
  explicit Parser(const TokenStream& stream);
  ast::Batch batch();
  ast::ExprPtr wholeExpression();

private:
  // Bounds that keep every walk over the tree within the stack. The server has such bounds too (191, 106).
  static constexpr int maximumNesting = 200;     // brackets, subqueries, blocks inside each other
  static constexpr int maximumHeight = 800;      // of an expression: a chain a+b+c+... is as high as it is long
  static constexpr int maximumSelects = 1000;    // combined by union
  static constexpr int maximumSources = 256;     // tables of one statement's from clauses
  static constexpr int maximumValueRows = 1000;  // of one insert

  // One level of nesting. While it lives, tallest collects the heights of the expressions inside; when it ends, height
  // is that of the node that holds them.
  class Nest {
  public:
    explicit Nest(Parser& owner) : parser(owner), outer(std::exchange(owner.tallest, 0)) {
      if (++parser.nesting > maximumNesting) parser.tooDeep();
    }
    ~Nest() {
      --parser.nesting;
      parser.height = parser.tallest + 1;
      parser.tallest = std::max(outer, parser.height);
    }
    Nest(const Nest&) = delete;
    Nest& operator=(const Nest&) = delete;

  private:
    Parser& parser;
    int outer;
  };

  // ---- cursor
  const Token& peek(std::size_t ahead = 0) const { return tokens[std::min(at + ahead, tokens.size() - 1)]; }
  const Token& take() { return at + 1 < tokens.size() ? tokens[at++] : tokens[at]; }
  bool atEnd() const { return peek().kind == TokenKind::end; }
  // A bare word, in any letter case. Punctuation by its spelling.
  static bool isWordOf(const Token& token, std::string_view lower);
  bool isWord(std::string_view lower, std::size_t ahead = 0) const { return isWordOf(peek(ahead), lower); }
  bool isMark(std::string_view mark, std::size_t ahead = 0) const;
  bool acceptWord(std::string_view lower);
  bool acceptMark(std::string_view mark);
  void expectWord(std::string_view lower);
  void expectMark(std::string_view mark);
  bool isReservedAt(std::size_t index) const { return reserved[index]; }
  // The present token, or the one at an index, has no business here: 102 or 156.
  [[noreturn]] void fail() const { failAt(at); }
  [[noreturn]] void failAt(std::size_t index) const;
  [[noreturn]] void tooDeep() const;
  [[noreturn]] void unsupported(const std::string& construct) const { throwUnsupported(construct, peek().pos); }
  void checkHeight(int h);
  void noteHeight() { tallest = std::max(tallest, height); }
  // Tokens [first, last) as they stand in the source.
  std::string sourceText(std::size_t first, std::size_t last);
  void skipBrackets();
  std::size_t closingBracket(std::size_t open) const;
  void fixLiteral(const Token& token) { fixedLiterals.push_back(token.literal); }

  // ---- names
  bool isNamePart(std::size_t ahead = 0) const;
  bool isText(std::size_t ahead = 0) const;
  std::string namePart();
  ast::Name name();
  ast::TypeName typeName();
  std::string standardTypeName();
  std::vector<std::pair<std::string, SourcePos>> nameList();
  std::int64_t signedInteger();

  // ---- expressions (parse_expression.cpp, parse_predicate.cpp, parse_function.cpp)
  ast::ExprPtr scalar();
  ast::ExprPtr condition();
  ast::ExprPtr any();
  ast::ExprPtr disjunction();
  ast::ExprPtr conjunction();
  ast::ExprPtr negation();
  ast::ExprPtr predicate();
  ast::ExprPtr additive();
  ast::ExprPtr multiplicative();
  ast::ExprPtr factor();
  ast::ExprPtr primary();
  ast::ExprPtr bracketed();
  ast::ExprPtr wordExpression();
  ast::ExprPtr caseExpression();
  ast::ExprPtr castExpression();
  ast::ExprPtr convertExpression();
  ast::ExprPtr functionCall();
  ast::ExprPtr existsCondition();
  ast::ExprPtr comparison(ast::ExprPtr left, SourcePos pos, ast::CompareOp op);
  ast::ExprPtr inCondition(ast::ExprPtr left, SourcePos pos, bool negated);
  ast::ExprPtr betweenCondition(ast::ExprPtr left, SourcePos pos, bool negated);
  ast::ExprPtr likeCondition(ast::ExprPtr left, SourcePos pos, bool negated);
  std::optional<ast::CompareOp> compareOp();
  void skipCollation();
  void collationName();
  ast::ExprPtr requireScalar(ast::ExprPtr e);
  ast::ExprPtr requireCondition(ast::ExprPtr e);
  bool startsExpression() const;
  void refuseCompoundAssignment(std::size_t ahead = 0) const;

  // ---- select (parse_select.cpp, parse_source.cpp)
  enum class SelectUse { statement, operand };
  ast::Ptr<ast::Select> selectChain(SelectUse use);
  ast::Ptr<ast::Select> selectOperand();
  ast::Ptr<ast::Select> intersection();
  ast::Ptr<ast::Select> simpleSelect();
  ast::Ptr<ast::Select> asOneSelect(ast::Ptr<ast::Select> chain) const;
  bool startsSelect(std::size_t ahead = 0) const;
  void top(ast::Select& select);
  ast::SelectItem selectItem();
  bool isQualifiedStar() const;
  void groupAndHaving(ast::Select& select);
  std::vector<ast::OrderItem> orderItems();
  void statementOptions();
  std::vector<ast::SourcePtr> sourceList();
  ast::SourcePtr source();
  ast::SourcePtr singleSource();
  ast::SourcePtr joined(ast::SourcePtr left, bool isOperand);
  std::optional<ast::JoinKind> joinKind();
  bool startsJoin() const;
  ast::SourcePtr tableSource();
  ast::SourcePtr derivedSource();
  std::string sourceAlias();
  void tableHints();
  bool isHintAt(std::size_t ahead) const;

  // ---- statements (parser.cpp, parse_statement.cpp)
  using Handler = ast::StatementPtr (Parser::*)();
  struct Entry;
  static const Entry entries[];
  ast::StatementPtr statement();
  ast::StatementPtr selectStatement();
  ast::StatementPtr ifStatement();
  ast::StatementPtr beginStatement();
  ast::StatementPtr block();
  ast::StatementPtr commitStatement();
  ast::StatementPtr rollbackStatement();
  ast::StatementPtr setStatement();
  ast::StatementPtr useStatement();
  ast::StatementPtr printStatement();
  ast::StatementPtr returnStatement();
  ast::StatementPtr whileStatement();
  ast::StatementPtr breakStatement();
  ast::StatementPtr continueStatement();
  // (parse_session.cpp)
  ast::StatementPtr saveStatement();
  std::string transactionName();
  std::string optionValue();
  std::string isolationLevel();
  void checkOption(const std::string& name, SourcePos where, const std::string& value, std::size_t valueAt) const;
  // (parse_variable.cpp)
  ast::StatementPtr declareStatement();
  ast::StatementPtr setVariable(SourcePos pos);
  ast::StatementPtr raiserrorStatement();
  // (parse_dml.cpp)
  ast::StatementPtr insertStatement();
  void valueRows(ast::Insert& insert);
  ast::ExprPtr valueOrDefault();
  ast::StatementPtr updateStatement();
  ast::StatementPtr deleteStatement();
  ast::StatementPtr truncateStatement();
  // (parse_definition.cpp, parse_table.cpp)
  ast::StatementPtr createStatement();
  ast::StatementPtr alterStatement();
  ast::StatementPtr dropStatement();
  ast::StatementPtr createTable();
  ast::StatementPtr alterTable();
  ast::StatementPtr createIndex();
  ast::StatementPtr dropIndex();
  ast::StatementPtr createDatabase();
  ast::StatementPtr dropDatabase();
  void tableElement(std::vector<ast::ColumnDefinition>& columns, std::vector<ast::TableConstraint>& constraints);
  bool startsTableConstraint() const;
  ast::ColumnDefinition columnDefinition();
  void computedColumn(ast::ColumnDefinition& column);
  bool columnClause(ast::ColumnDefinition& column);
  void defaultClause(ast::ColumnDefinition& column, std::string constraintName);
  void setNullable(ast::ColumnDefinition& column, bool nullable, SourcePos pos) const;
  void withValues(const ast::ColumnDefinition& column);
  ast::StatementPtr addToTable(ast::Ptr<ast::AlterTable> alter);
  ast::StatementPtr alterColumn(ast::Ptr<ast::AlterTable> alter);
  std::vector<ast::Name> tableNames();
  [[noreturn]] void unsupportedDefinition(const char* verb) const;
  ast::IdentityClause identityClause();
  ast::TableConstraint tableConstraint();
  void keyClause(ast::TableConstraint& constraint);
  void checkClause(ast::TableConstraint& constraint);
  void referencesClause(ast::TableConstraint& constraint);
  std::vector<ast::KeyColumn> keyColumns();
  std::string expressionText(std::size_t first, std::size_t last);
  void constraintPlace();
  void notForReplication();
  void indexOptions();
  void fileGroup(std::string_view word);
  void dropElements(ast::AlterTable& alter);
  // (parse_procedure.cpp)
  ast::StatementPtr createProcedure(bool alter);
  ast::StatementPtr dropProcedure();
  ast::ProcedureParameter procedureParameter();
  void procedureOptions();
  ast::StatementPtr executeStatement();
  ast::ExecuteArgument executeArgument();
  ast::ExprPtr constantArgument();
  bool outputWord();

  const TokenStream& stream;
  const std::vector<Token>& tokens;
  std::vector<bool> reserved;  // by token: a bare reserved word
  std::size_t at = 0;
  bool firstInBatch = false;  // the statement that is being dispatched is the batch's first
  std::string definedTable;   // the one whose columns are being read
  int parameters = 0;
  std::vector<int> fixedLiterals;
  int sources = 0;  // tables of the present statement
  int loops = 0;    // while statements around the present one
  int nesting = 0;
  int height = 0;               // of the expression parsed last
  int tallest = 0;              // of the expressions of the present nest
  std::size_t conditionAt = 0;  // token that made the condition parsed last one: its operator
};

bool isCondition(const ast::Expr& e);

}  // namespace tsql
