#pragma once
// The printer's own class; its parts stand in printer*.cpp by subject.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/parser.h"

namespace tsql {

class Printer {
public:
  explicit Printer(const TokenStream& tokens);
  void batch(const ast::Batch& batch);
  void statement(const ast::Statement& statement);
  // Brackets go around an expression that binds looser than its place asks for.
  enum class Level { any, conjunction, negation, predicate, additive, multiplicative, factor };
  void expr(const ast::Expr& e, Level place = Level::any);
  std::string take() { return std::move(out); }

private:
  // ---- expressions (printer.cpp)
  static Level levelOf(const ast::Expr& e);
  void bare(const ast::Expr& e);
  void operators(const ast::Expr& e);
  void functions(const ast::Expr& e);
  void conditions(const ast::Expr& e);
  void caseExpression(const ast::Case& e);
  void expressions(const std::vector<ast::ExprPtr>& list);
  void identifier(std::string_view name);
  void name(const ast::Name& name);
  void type(const ast::TypeName& type);
  void subquery(const ast::Select& select);

  // ---- select (printer_select.cpp)
  void select(const ast::Select& chain);
  void oneSelect(const ast::Select& select);
  void sources(const std::vector<ast::SourcePtr>& list);
  void source(const ast::Source& source);

  // ---- statements (printer_statement.cpp)
  void statements(const std::vector<ast::StatementPtr>& list);
  void insert(const ast::Insert& insert);
  void update(const ast::Update& update);
  void deletion(const ast::Delete& deletion);
  void valueOrDefault(const ast::Expr& value);
  void execute(const ast::Execute& execute);
  void transactionName(const std::string& name);
  void declaration(const ast::Declare& declare);
  void raiserror(const ast::Raiserror& raiserror);
  void procedure(const ast::CreateProcedure& procedure);
  void setOption(const ast::SetOption& set);
  void names(const std::vector<ast::Name>& list);
  // (printer_definition.cpp)
  void createTable(const ast::CreateTable& create);
  void alterTable(const ast::AlterTable& alter);
  void createIndex(const ast::CreateIndex& create);
  void dropIndex(const ast::DropIndex& drop);
  void column(const ast::ColumnDefinition& column);
  void constraint(const ast::TableConstraint& constraint, bool atColumn);
  void keyColumns(const std::vector<ast::KeyColumn>& columns);

  void put(std::string_view text) { out += text; }
  template <class List, class Each>
  void commaList(const List& list, Each each) {
    bool isFirst = true;
    for (const auto& item : list) {
      if (!isFirst) put(", ");
      isFirst = false;
      each(item);
    }
  }

  std::vector<std::string_view> literals;  // spellings by ordinal
  std::string out;
};

}  // namespace tsql
