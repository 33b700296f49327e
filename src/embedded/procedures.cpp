// Stored procedures: their text lies in the catalog, and runs with its own variables in its own database.

#include <algorithm>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::SqlError;

namespace {
constexpr int deepest = 32;

void setFrom(Frame& frame, const std::string& name, const Variable& value) {
  const auto variable = frame.find(name);
  if (variable == frame.end()) throw SqlError(137, "Must declare the scalar variable \"" + name + "\".", {}, 15);
  variable->second.value = tsql::convert(value.value, value.type, variable->second.type);
}

tsql::SqlType parameterType(const tsql::ast::ProcedureParameter& p) {
  const auto t = tsql::typeByName(p.type.name, p.type.first, p.type.second, p.type.max, 1);
  if (!t) throw SqlError(2715, "Column, parameter, or variable #1: Cannot find data type " + p.type.name + ".", p.pos);
  return *t;
}
}  // namespace

void Session::Impl::createProcedure(const tsql::ast::CreateProcedure& s, Running&) {
  refreshCatalogs();
  const ObjectPlace p = place(s.name);
  if (p.temporary) throwUnsupported("a temporary procedure", s.name.pos);
  if (!p.known) noSuchPlace(s.name);
  const DatabaseCatalog* c = catalogOf(p.database);
  const auto it = c->procedures.find(p.object);
  if (s.alter && it == c->procedures.end()) throw SqlError(208, "Invalid object name '" + p.object + "'.", s.name.pos);
  if (!s.alter && (it != c->procedures.end() || c->tables.contains(p.object)))
    throw SqlError(2714, "There is already an object named '" + p.object + "' in the database.", s.name.pos);
  for (const auto& parameter : s.parameters) parameterType(parameter);
  check([&] {
    atomically([&] {
      if (s.alter) dropObject(db.get(), p.schemaName, it->second.id);
      storeProcedure(db.get(), p.schemaName, p.object, s.text);
    });
  });
  reloadCatalog(p.schemaName);
}

void Session::Impl::dropProcedure(const tsql::ast::DropProcedure& s) {
  refreshCatalogs();
  for (const auto& n : s.names) {
    const ObjectPlace p = place(n);
    const DatabaseCatalog* c = p.known && !p.temporary ? catalogOf(p.database) : nullptr;
    const auto missing = [&] {
      return SqlError(
          3701,
          "Cannot drop the procedure '" + n.last() + "', because it does not exist or you do not have permission.",
          n.pos, 11);
    };
    if (!c) throw missing();
    const auto it = c->procedures.find(p.object);
    if (it == c->procedures.end()) throw missing();
    const std::int64_t id = it->second.id;
    check([&] { atomically([&] { dropObject(db.get(), p.schemaName, id); }); });
    reloadCatalog(p.schemaName);
  }
}

// sp_help, xp_cmdshell and the like, unless somebody has made one of that name.
void Session::Impl::refuseSystemProcedure(const tsql::ast::Name& name) {
  const std::string lower = lowerName(name.last());
  if (lower.rfind("sp_", 0) != 0 && lower.rfind("xp_", 0) != 0) return;
  const ObjectPlace where = place(name);
  const DatabaseCatalog* c = where.known && !where.temporary ? catalogOf(where.database) : nullptr;
  if (!c || !c->procedures.contains(where.object)) throwUnsupported("the system procedure " + name.last(), name.pos);
}

void Session::Impl::executeProcedure(const tsql::ast::Execute& s, Running& r) {
  refreshCatalogs();
  const ObjectPlace where = place(s.name);
  const DatabaseCatalog* c = where.known && !where.temporary ? catalogOf(where.database) : nullptr;
  const ProcedureDef* def = nullptr;
  if (c)
    if (const auto it = c->procedures.find(where.object); it != c->procedures.end()) def = &it->second;
  if (!def) {
    refuseSystemProcedure(s.name);
    std::string spelled;
    for (const auto& part : s.name.parts) spelled += (spelled.empty() ? "" : ".") + part;
    throw SqlError(2812, "Could not find stored procedure '" + spelled + "'.", s.name.pos);
  }
  if (nesting >= deepest)
    throw SqlError(217, "Maximum stored procedure, function, trigger, or view nesting level exceeded (limit 32).",
                   s.pos);

  auto& known = procedures[lowerName(where.database) + "." + std::to_string(def->id)];
  if (!known || known->catalog != attached.at(where.database).catalog) {
    auto p = std::make_shared<ProcedureText>();
    p->id = def->id;
    p->catalog = attached.at(where.database).catalog;
    p->tokens = tsql::lex(def->text);
    p->batch.tree = tsql::parse(p->tokens);
    known = std::move(p);
  }
  const auto procedure = known;
  const auto& text = static_cast<const tsql::ast::CreateProcedure&>(*procedure->batch.tree.statements.at(0));

  Frame own;
  std::vector<std::pair<std::string, std::string>> results;  // variable of the caller, output parameter
  std::vector<bool> supplied(text.parameters.size(), false);
  bool named = false;
  for (std::size_t i = 0; i < s.arguments.size(); ++i) {
    const auto& a = s.arguments[i];
    std::size_t n = i;
    if (!a.name.empty()) {
      named = true;
      n = 0;
      while (n < text.parameters.size() && !tsql::sameName(text.parameters[n].name, a.name)) ++n;
      if (n == text.parameters.size())
        throw SqlError(text.parameters.empty() ? 8146 : 8145,
                       text.parameters.empty()
                           ? "Procedure " + def->name + " has no parameters and arguments were supplied."
                           : "" + a.name + " is not a parameter for procedure " + def->name + ".",
                       s.pos);
    } else if (named) {
      throw SqlError(
          119, "Must pass parameter number " + std::to_string(i + 1) + " and subsequent parameters as '@name = value'.",
          s.pos, 15);
    }
    if (n >= text.parameters.size())
      throw SqlError(text.parameters.empty() ? 8146 : 8144,
                     text.parameters.empty()
                         ? "Procedure " + def->name + " has no parameters and arguments were supplied."
                         : "Procedure or function " + def->name + " has too many arguments specified.",
                     s.pos);
    const auto& parameter = text.parameters[n];
    if (supplied[n]) throw SqlError(8143, "Parameter '" + parameter.name + "' was supplied multiple times.", s.pos);
    supplied[n] = true;
    const auto type = parameterType(parameter);
    if (!a.value) continue;  // the word default
    if (a.output && !parameter.output)
      throw SqlError(8162,
                     "The formal parameter \"" + parameter.name +
                         "\" was not declared as an OUTPUT parameter, but the actual parameter passed in requested "
                         "output.",
                     s.pos);
    if (a.output) results.emplace_back(static_cast<const tsql::ast::Variable&>(*a.value).name, parameter.name);
    tsql::Datum v;
    if (a.value->kind == tsql::ast::ExprKind::column)  // a bare word is a text
      v = tsql::convert(static_cast<const tsql::ast::Column&>(*a.value).name.last(),
                        tsql::typeOf(tsql::TypeKind::nvarchar, 4000), type);
    else
      v = argument(*a.value, type, s, r);
    own[parameter.name] = {type, std::move(v)};
  }
  for (std::size_t n = 0; n < text.parameters.size(); ++n) {
    if (own.contains(text.parameters[n].name)) continue;
    const auto& parameter = text.parameters[n];
    if (!parameter.defaultValue)
      throw SqlError(201,
                     "Procedure or function '" + def->name + "' expects parameter '" + parameter.name +
                         "', which was not supplied.",
                     s.pos);
    const auto type = parameterType(parameter);
    own[parameter.name] = {type, scalar(*parameter.defaultValue, procedure->tokens, type, nullptr)};
  }

  Running inner{&procedure->tokens, &procedure->batch, r.sink, r.parameters, &own};
  const int transactions = tranCount;
  runProcedure(*procedure, where.database, inner);
  if (inner.aborted) {
    r.ended = r.aborted = true;
    return;
  }
  for (const auto& [variable, parameter] : results) setFrom(*r.frame, variable, own.at(parameter));
  if (!s.returnVariable.empty())
    setFrom(*r.frame, s.returnVariable, {tsql::typeOf(tsql::TypeKind::integer), inner.returned});
  if (tranCount != transactions)
    raised(SqlError(266,
                    "Transaction count after EXECUTE indicates a mismatching number of BEGIN and COMMIT statements. "
                    "Previous count = " +
                        std::to_string(transactions) + ", current count = " + std::to_string(tranCount) + ".",
                    s.pos),
           r);
}

// With its own variables, in its own database, counting its own identity numbers.
void Session::Impl::runProcedure(ProcedureText& procedure, const std::string& database, Running& inner) {
  struct Restore {
    Session::Impl& i;
    std::string database;
    std::optional<std::int64_t> identity;
    ~Restore() {
      i.current = database;
      i.scopeIdentity = identity;
      --i.nesting;
      try {
        i.dropTablesOfEnded();
      } catch (...) {  // out of reach for the batch as well: the next procedure's end tries again
      }
    }
  };
  ++nesting;
  const Restore restore{*this, current, scopeIdentity};
  const FrameInForce inForce(*this, inner.frame);
  current = database;
  scopeIdentity.reset();
  const auto& text = static_cast<const tsql::ast::CreateProcedure&>(*procedure.batch.tree.statements.at(0));
  try {
    compile(text.body, inner, true);
  } catch (const SqlError& e) {  // the procedure does nothing; its caller goes on
    raised(e, inner);
    return;
  }
  runStatements(text.body, inner);
}

// A text that is no number for a parameter that wants one is 8114, not 245.
tsql::Datum Session::Impl::argument(const tsql::ast::Expr& e, const tsql::SqlType& type, const tsql::ast::Statement& s,
                                    Running& r) {
  tsql::SqlType given;
  const tsql::Datum v = evaluate(e, {}, s, r, &given);
  try {
    return tsql::convert(v, given, type);
  } catch (const SqlError&) {
    throw SqlError(8114, "Error converting data type " + given.baseName() + " to " + type.baseName() + ".", s.pos);
  }
}

}  // namespace embedded
