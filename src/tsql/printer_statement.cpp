// The tree as text: statements.

#include "tsql/printer_impl.h"

namespace tsql {

using namespace ast;

namespace {

template <class Node>
const Node& as(const Statement& s) {
  return static_cast<const Node&>(s);
}

}  // namespace

void Printer::batch(const Batch& b) {
  statements(b.statements);
}

void Printer::statements(const std::vector<StatementPtr>& list) {
  bool isFirst = true;
  for (const StatementPtr& s : list) {
    if (!isFirst) out += '\n';
    isFirst = false;
    statement(*s);
  }
}

void Printer::names(const std::vector<Name>& list) {
  commaList(list, [this](const Name& n) { name(n); });
}

void Printer::statement(const Statement& s) {
  switch (s.kind) {
    case StatementKind::select:
      return select(*as<SelectStatement>(s).select);
    case StatementKind::insert:
      return insert(as<Insert>(s));
    case StatementKind::update:
      return update(as<Update>(s));
    case StatementKind::delete_:
      return deletion(as<Delete>(s));
    case StatementKind::truncate:
      put("truncate table ");
      return name(as<Truncate>(s).target);
    case StatementKind::createTable:
      return createTable(as<CreateTable>(s));
    case StatementKind::alterTable:
      return alterTable(as<AlterTable>(s));
    case StatementKind::dropTable:
      put("drop table ");
      return names(as<DropTable>(s).names);
    case StatementKind::createIndex:
      return createIndex(as<CreateIndex>(s));
    case StatementKind::dropIndex:
      return dropIndex(as<DropIndex>(s));
    case StatementKind::createProcedure:
      return procedure(as<CreateProcedure>(s));
    case StatementKind::dropProcedure:
      put("drop procedure ");
      return names(as<DropProcedure>(s).names);
    case StatementKind::execute:
      return execute(as<Execute>(s));
    case StatementKind::if_: {
      const auto& branch = as<If>(s);
      put("if ");
      expr(*branch.condition);
      out += '\n';
      statement(*branch.then);
      if (!branch.otherwise) return;
      put("\nelse\n");
      return statement(*branch.otherwise);
    }
    case StatementKind::block:
      put("begin\n");
      statements(as<Block>(s).statements);
      return put("\nend");
    case StatementKind::while_:
      put("while ");
      expr(*as<While>(s).condition);
      out += '\n';
      return statement(*as<While>(s).body);
    case StatementKind::break_:
      return put("break");
    case StatementKind::continue_:
      return put("continue");
    case StatementKind::beginTransaction:
      put("begin transaction");
      return transactionName(as<BeginTransaction>(s).name);
    case StatementKind::saveTransaction:
      put("save transaction");
      return transactionName(as<SaveTransaction>(s).name);
    case StatementKind::commit:
      return put("commit transaction");
    case StatementKind::rollback:
      put("rollback transaction");
      return transactionName(as<Rollback>(s).name);
    case StatementKind::declare:
      return declaration(as<Declare>(s));
    case StatementKind::setVariable:
      put("set " + as<SetVariable>(s).name + " = ");
      return expr(*as<SetVariable>(s).value);
    case StatementKind::raiserror:
      return raiserror(as<Raiserror>(s));
    case StatementKind::setOption:
      return setOption(as<SetOption>(s));
    case StatementKind::createDatabase:
      put("create database ");
      return identifier(as<CreateDatabase>(s).name);
    case StatementKind::dropDatabase:
      put("drop database ");
      return identifier(as<DropDatabase>(s).name);
    case StatementKind::use:
      put("use ");
      return identifier(as<Use>(s).name);
    case StatementKind::print:
      put("print ");
      return expr(*as<Print>(s).value);
    case StatementKind::return_:
      put("return");
      if (!as<Return>(s).value) return;
      out += ' ';
      return expr(*as<Return>(s).value);
  }
}

// The Column named default that stands for the column's default.
void Printer::valueOrDefault(const Expr& value) {
  const auto* column = value.kind == ExprKind::column ? static_cast<const Column*>(&value) : nullptr;
  if (column && column->name.parts.size() == 1 && column->name.last() == "default")
    put("default");
  else
    expr(value);
}

void Printer::insert(const Insert& i) {
  put("insert into ");
  name(i.target);
  if (!i.columns.empty()) {
    put(" (");
    commaList(i.columns, [this](const auto& column) { identifier(column.first); });
    put(")");
  }
  out += ' ';
  if (i.defaultValues) return put("default values");
  if (i.select) return select(*i.select);
  if (i.execute) return statement(*i.execute);
  put("values (");
  commaList(i.values, [this](const ExprPtr& value) { valueOrDefault(*value); });
  put(")");
}

void Printer::update(const Update& u) {
  put("update ");
  name(u.target);
  put(" set ");
  commaList(u.assignments, [this](const Assignment& assignment) {
    name(assignment.column);
    put(" = ");
    valueOrDefault(*assignment.value);
  });
  if (!u.from.empty()) {
    put(" from ");
    sources(u.from);
  }
  if (!u.where) return;
  put(" where ");
  expr(*u.where);
}

void Printer::deletion(const Delete& d) {
  put("delete from ");
  name(d.target);
  if (!d.from.empty()) {
    put(" from ");
    sources(d.from);
  }
  if (!d.where) return;
  put(" where ");
  expr(*d.where);
}

void Printer::execute(const Execute& e) {
  put("execute ");
  if (!e.returnVariable.empty()) put(e.returnVariable + " = ");
  name(e.name);
  if (!e.arguments.empty()) out += ' ';
  commaList(e.arguments, [this](const ExecuteArgument& a) {
    if (!a.name.empty()) {
      put(a.name);
      put(" = ");
    }
    if (a.value)
      expr(*a.value);
    else
      put("default");
    if (a.output) put(" output");
  });
}

void Printer::transactionName(const std::string& word) {
  if (word.empty()) return;
  out += ' ';
  identifier(word);
}

void Printer::declaration(const Declare& d) {
  put("declare ");
  commaList(d.variables, [this](const Declaration& v) {
    put(v.name + " ");
    type(v.type);
    if (!v.value) return;
    put(" = ");
    expr(*v.value);
  });
}

void Printer::raiserror(const Raiserror& r) {
  if (!r.severity) {
    put("raiserror ");
    expr(*r.state);
    out += ' ';
    return expr(*r.message);
  }
  put("raiserror (");
  expr(*r.message);
  for (const Expr* e : {r.severity.get(), r.state.get()}) {
    put(", ");
    expr(*e);
  }
  for (const ExprPtr& e : r.arguments) {
    put(", ");
    expr(*e);
  }
  put(")");
}

void Printer::procedure(const CreateProcedure& p) {
  put(p.alter ? "alter procedure " : "create procedure ");
  name(p.name);
  if (!p.parameters.empty()) {
    put(" (");
    commaList(p.parameters, [this](const ProcedureParameter& parameter) {
      put(parameter.name);
      out += ' ';
      type(parameter.type);
      if (parameter.defaultValue) {
        put(" = ");
        expr(*parameter.defaultValue);
      }
      if (parameter.output) put(" output");
    });
    put(")");
  }
  put(" as\n");
  statements(p.body);
}

void Printer::setOption(const SetOption& s) {
  put("set ");
  put(s.option);
  out += ' ';
  if (s.table) {
    name(*s.table);
    out += ' ';
  }
  if (s.option == "transaction isolation level" || s.value == "on" || s.value == "off") return put(s.value);
  // A word or a number stands as it is, all else as a text.
  const bool plain =
      !s.value.empty() && s.value.find_first_not_of("-0123456789abcdefghijklmnopqrstuvwxyz_") == std::string::npos;
  if (plain) return put(s.value);
  put("N'");
  for (const char c : s.value) {
    out += c;
    if (c == '\'') out += c;
  }
  put("'");
}

}  // namespace tsql
