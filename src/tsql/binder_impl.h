#pragma once
// The binder's own state. One Binder binds one statement.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/binder.h"

namespace tsql {

// The sources that names of one select can mean, and the select around it.
struct Scope {
  int id = 0;  // of the select; 0 where there is none
  Scope* outer = nullptr;
  std::vector<BoundSource*> leaves;
  bool aggregatesAllowed = true;
  bool inGroupBy = false;
  bool sawAggregate = false;
  int aggregateDepth = 0;

  bool owns(int source) const;
};

// While it lives, what is bound may never be reached.
class Branch {
public:
  explicit Branch(int& depth) : depth_(depth) { ++depth_; }
  ~Branch() { --depth_; }
  Branch(const Branch&) = delete;
  Branch& operator=(const Branch&) = delete;

private:
  int& depth_;
};

class Binder {
public:
  Binder(const TokenStream& tokens, Catalog& catalog) : tokens_(tokens), catalog_(catalog) {}

  // bind_select.cpp
  // onlyExistence: nobody reads the columns, so that * names none.
  std::unique_ptr<BoundSelect> select(const ast::Select& s, Scope* outer, bool onlyExistence = false);
  void sources(const std::vector<ast::SourcePtr>& from, BoundSelect& out, Scope& scope);
  std::unique_ptr<BoundSource> source(const ast::Source& s, Scope& scope);

  // bind_expression.cpp
  BoundPtr value(const ast::Expr& e, Scope& scope);
  BoundPtr condition(const ast::Expr& e, Scope& scope);

  // bind_function.cpp
  BoundPtr function(const ast::Function& f, Scope& scope);

  // bind_aggregate.cpp
  BoundPtr aggregate(const ast::Function& f, const std::string& name, Scope& own);  // name: lower case

  // bind_conversion.cpp
  // By the rules of precedence (nothing is cut), or as an assignment to a column (a text too long is a failure).
  BoundPtr convertTo(BoundPtr e, const SqlType& type, bool store = false);
  BoundPtr castTo(BoundPtr e, const SqlType& type);  // as the statement asks for it: a text too long is cut
  BoundPtr comparison(ast::CompareOp op, BoundPtr l, BoundPtr r, SourcePos pos);
  std::unique_ptr<BoundSelect> oneColumn(const ast::Select& s, Scope& scope, SourcePos pos);  // 116 for more
  BoundPtr quantified(const ast::Quantified& q, Scope& scope);
  SqlType common(const SqlType& a, const SqlType& b, SourcePos pos) const;
  void requireCast(const SqlType& from, const SqlType& to, SourcePos pos) const;                         // 529
  void refuseLongTexts(ast::CompareOp op, const BoundExpr& l, const BoundExpr& r, SourcePos pos) const;  // 306, 402
  void requireComparable(const BoundExpr& e, SourcePos pos) const;                                       // 306
  SqlType typeFromName(const ast::TypeName& t, int defaultLength) const;

  // Names
  BoundPtr column(const ast::Column& c, Scope& scope);
  [[noreturn]] void notBound(const ast::Name& name) const;  // 4104
  const TableDef& table(const ast::Name& name);
  std::unique_ptr<BoundSource> tableSource(const TableDef& t, const std::string& alias);

  // Small makers
  BoundPtr slotFor(const Slot& slot, bool nullable, SourcePos pos);
  BoundPtr constant(std::int64_t number) const;
  BoundPtr call(std::string name, SqlType type, SourcePos pos) const;
  template <class... A>
  BoundPtr call(std::string name, SqlType type, SourcePos pos, A... args) const {
    auto e = call(std::move(name), type, pos);
    (e->args.push_back(std::move(args)), ...);
    return e;
  }
  bool same(const BoundExpr& a, const BoundExpr& b);  // pins the literals it compared
  void pin(int literal);
  BoundPtr columnOf(const BoundSource& s, int index, SourcePos pos) const;

  SqlType variableType(const std::string& name, SourcePos pos);
  void note(std::vector<const TableDef*>& list, const TableDef* t) const;
  BoundStatement finish();

  const TokenStream& tokens_;
  Catalog& catalog_;
  BoundStatement out_;
  int nextSource_ = 0, nextScope_ = 1;
  // Types of text literals with their own lengths. Otherwise they count as long as can be, since the plan is used again
  // for other literals.
  bool exactLiterals_ = false;
  // Inside what may never be reached (a branch of case, a later argument of coalesce): literals are converted there,
  // not before the statement runs.
  int branches_ = 0;
  // The selection assigns variables row by row: reading one means its value of that moment.
  bool rowByRow_ = false;
  std::vector<std::string> assigned_;          // by the items of such a selection so far
  bool inValues_ = false;                      // a row of values: no columns
  const TableDef* definitionTable_ = nullptr;  // binding a check or computed column
};

[[noreturn]] void fail(int number, const std::string& message, SourcePos pos, int severity = 16);

}  // namespace tsql
