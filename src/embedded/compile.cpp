// Compiling: a batch or procedure of several statements is bound before the first of them runs, so that one that is
// wrong does nothing at all. What names an object that is not there yet, or that the batch itself makes or drops, waits
// until it runs.

#include <algorithm>

#include "embedded/session_impl.h"
#include "tsql/table_names.h"

namespace embedded {

using tsql::SqlError;
using tsql::ast::StatementKind;

namespace {

// The failures of an insert that hang on whether identity_insert is on by then.
bool hangsOnIdentityInsert(const SqlError& e) {
  return e.number == 544 || e.number == 545;
}

class Compiler {
public:
  Compiler(Session::Impl& session, Running& r, bool procedure) : session_(session), r_(r), procedure_(procedure) {}
  bool literalsMatter() const { return literalsMatter_; }

  void statements(const std::vector<tsql::ast::StatementPtr>& list) {
    for (const auto& s : list) statement(*s);
  }

  void statement(const tsql::ast::Statement& s) {
    if (stopped_) return;
    try {
      dispatch(s);
    } catch (SqlError& e) {
      if (e.pos.offset == 0 && e.pos.line == 1) e.pos = s.pos;
      throw;
    }
  }

private:
  void dispatch(const tsql::ast::Statement& s) {
    using namespace tsql::ast;
    switch (s.kind) {
      case StatementKind::select:
      case StatementKind::insert:
      case StatementKind::update:
      case StatementKind::delete_:
        return data(s);
      case StatementKind::if_: {
        const auto& i = static_cast<const If&>(s);
        condition(*i.condition);
        statement(*i.then);
        if (i.otherwise) statement(*i.otherwise);
        return;
      }
      case StatementKind::while_:
        condition(*static_cast<const While&>(s).condition);
        return statement(*static_cast<const While&>(s).body);
      case StatementKind::block:
        return statements(static_cast<const Block&>(s).statements);
      case StatementKind::declare:
        return declare(static_cast<const Declare&>(s));
      case StatementKind::setVariable: {
        const auto& set = static_cast<const SetVariable&>(s);
        need(set.name, s.pos);
        return scalar(set.value.get());
      }
      case StatementKind::print:
        return scalar(static_cast<const Print&>(s).value.get());
      case StatementKind::return_: {
        const auto& value = static_cast<const Return&>(s).value;
        if (value && !procedure_)
          throw SqlError(178, "A RETURN statement with a return value cannot be used in this context.", s.pos, 15);
        return scalar(value.get());
      }
      case StatementKind::raiserror: {
        const auto& raise = static_cast<const Raiserror&>(s);
        for (const auto* e : {&raise.message, &raise.severity, &raise.state}) scalar(e->get());
        for (const auto& e : raise.arguments) scalar(e.get());
        return;
      }
      case StatementKind::execute: {
        const auto& execute = static_cast<const Execute&>(s);
        session_.refuseSystemProcedure(execute.name);
        if (!execute.returnVariable.empty()) need(execute.returnVariable, s.pos);
        for (const auto& a : execute.arguments)
          if (a.value && a.value->kind == ExprKind::variable)
            need(static_cast<const tsql::ast::Variable&>(*a.value).name, a.value->pos);
        return;
      }
      case StatementKind::createTable:
        for (const auto& column : static_cast<const CreateTable&>(s).columns) columnType(column);
        changed_.push_back(static_cast<const CreateTable&>(s).name.last());
        return;
      case StatementKind::dropTable:
        for (const auto& n : static_cast<const DropTable&>(s).names) changed_.push_back(n.last());
        return;
      case StatementKind::use: {
        const auto* a = session_.attach(static_cast<const Use&>(s).name);
        if (a)
          session_.current = a->name;
        else
          stopped_ = true;  // a database that the batch makes, or none: seen when the statement runs
        return;
      }
      case StatementKind::createProcedure:
        return procedure(static_cast<const CreateProcedure&>(s));
      default:
        return;
    }
  }

  // A statement that is known under the present definitions needs no second look.
  bool isKnown(const tsql::ast::Statement& s) {
    if (!session_.cacheOn || r_.batch->plans.find(&s) == r_.batch->plans.end()) return false;
    const auto set = session_.planSet(s, r_);
    const int base = Session::Impl::literalBase(*r_.tokens, s);
    for (const auto& p : set->plans)
      if (session_.holds(*p, *r_.tokens, base)) {
        literalsMatter_ = literalsMatter_ || !p->pins.empty();
        return true;
      }
    return false;
  }

  void data(const tsql::ast::Statement& s) {
    using namespace tsql::ast;
    if (s.kind == StatementKind::select) {
      const auto& select = *static_cast<const SelectStatement&>(s).select;
      for (const auto& item : select.items)
        if (!item.variable.empty()) need(item.variable, item.pos);
      if (select.into) {
        bound(s);
        changed_.push_back(select.into->last());
        return;
      }
    }
    if (!isKnown(s)) bound(s);
  }

  void bound(const tsql::ast::Statement& s) {
    using namespace tsql::ast;
    bool later = false;
    tsql::visitTableNames(s, [&](const Name& n) { later = later || waits(n); });
    if (later) return;
    switch (s.kind) {
      case StatementKind::select:
        return note(tsql::bindSelect(*static_cast<const SelectStatement&>(s).select, *r_.tokens, session_));
      case StatementKind::insert:
        try {
          note(tsql::bindInsert(static_cast<const Insert&>(s), *r_.tokens, session_, {session_.identityInsert}));
        } catch (const SqlError& e) {
          if (!hangsOnIdentityInsert(e)) throw;
        }
        return;
      case StatementKind::update:
        return note(tsql::bindUpdate(static_cast<const Update&>(s), *r_.tokens, session_));
      default:
        return note(tsql::bindDelete(static_cast<const Delete&>(s), *r_.tokens, session_));
    }
  }

  void condition(const tsql::ast::Expr& e) {
    if (!waits(e)) note(tsql::bindCondition(e, *r_.tokens, session_));
  }

  void scalar(const tsql::ast::Expr* e) {
    if (e && !waits(*e)) note(tsql::bindScalar(*e, *r_.tokens, session_, {}));
  }

  void note(const tsql::BoundStatement& b) { literalsMatter_ = literalsMatter_ || !b.pins.empty(); }

  bool waits(const tsql::ast::Expr& e) {
    bool later = false;
    tsql::visitTableNames(e, [&](const tsql::ast::Name& n) { later = later || waits(n); });
    return later;
  }

  bool waits(const tsql::ast::Name& n) {
    return std::any_of(changed_.begin(), changed_.end(),
                       [&](const std::string& x) { return tsql::sameName(x, n.last()); }) ||
           !session_.table(n);
  }

  void need(const std::string& variable, tsql::SourcePos pos) {
    if (!session_.variable(variable))
      throw SqlError(137, "Must declare the scalar variable \"" + variable + "\".", pos, 15);
  }

  void declare(const tsql::ast::Declare& s) {
    for (const auto& v : s.variables) {
      scalar(v.value.get());
      if (r_.frame->contains(v.name))
        throw SqlError(134,
                       "The variable name '" + v.name +
                           "' has already been declared. Variable names must be unique within a query batch or stored "
                           "procedure.",
                       v.pos, 15);
      const tsql::SqlType type = Session::Impl::declaredType(v.type, v.pos);
      r_.batch->declarations.emplace_back(v.name, type);
      (*r_.frame)[v.name] = {type, {}};
    }
  }

  // Sizes that no type can have are mistakes of the text; a type that is missing is seen when the table is made.
  static void columnType(const tsql::ast::ColumnDefinition& column) {
    if (column.computed) return;
    try {
      Session::Impl::columnType(column, 1);
    } catch (const SqlError& e) {
      constexpr int mistake = 15;
      if (e.severity == mistake) throw;
    }
  }

  // The body, as far as its tables are there.
  void procedure(const tsql::ast::CreateProcedure& s) {
    Frame parameters;
    for (const auto& p : s.parameters) {
      if (parameters.contains(p.name))
        throw SqlError(134,
                       "The variable name '" + p.name +
                           "' has already been declared. Variable names must be unique within a query batch or stored "
                           "procedure.",
                       p.pos, 15);
      parameters[p.name] = {Session::Impl::declaredType(p.type, p.pos), {}};
    }
    ParsedBatch own;  // its declarations are none of this batch
    Running inner = r_;
    inner.batch = &own;
    inner.frame = &parameters;
    Frame* const outer = session_.frame;
    session_.frame = &parameters;
    try {
      Compiler(session_, inner, true).statements(s.body);
    } catch (...) {
      session_.frame = outer;
      throw;
    }
    session_.frame = outer;
  }

  Session::Impl& session_;
  Running& r_;
  const bool procedure_;
  std::vector<std::string> changed_;  // tables that the batch makes or drops
  bool stopped_ = false, literalsMatter_ = false;
};

}  // namespace

tsql::SqlType Session::Impl::declaredType(const tsql::ast::TypeName& name, tsql::SourcePos pos) {
  const auto type = tsql::typeByName(name.name, name.first, name.second, name.max, 1);
  if (!type) throw SqlError(2715, "Column, parameter, or variable #1: Cannot find data type " + name.name + ".", pos);
  if (tsql::isLob(type->kind))
    throw SqlError(2739, "The text, ntext, and image data types are invalid for local variables.", pos);
  return *type;
}

void Session::Impl::compile(const std::vector<tsql::ast::StatementPtr>& statements, Running& r, bool procedure) {
  ParsedBatch& batch = *r.batch;
  if (batch.compiledAt == catalogEpoch) {
    for (const auto& [name, type] : batch.declarations) (*r.frame)[name] = {type, {}};
    return;
  }
  refreshCatalogs();
  batch.declarations.clear();
  const std::string database = current;
  Compiler compiler(*this, r, procedure);
  try {
    compiler.statements(statements);
  } catch (...) {
    current = database;
    throw;
  }
  current = database;
  batch.compiledAt = compiler.literalsMatter() || !cacheOn ? 0 : catalogEpoch;
}

}  // namespace embedded
