// The tree as text: tables and indexes.

#include "tsql/printer_impl.h"

namespace tsql {

using namespace ast;

void Printer::createTable(const CreateTable& create) {
  put("create table ");
  name(create.name);
  put(" (");
  commaList(create.columns, [this](const ColumnDefinition& c) { column(c); });
  for (const TableConstraint& c : create.constraints) {
    if (&c != &create.constraints.front() || !create.columns.empty()) put(", ");
    constraint(c, false);
  }
  put(")");
}

void Printer::column(const ColumnDefinition& c) {
  identifier(c.name);
  out += ' ';
  if (c.computed) {
    put("as (");
    expr(*c.computed);
    return put(")");
  }
  type(c.type);
  if (c.identity)
    out += " identity(" + std::to_string(c.identity->seed) + "," + std::to_string(c.identity->increment) + ")";
  if (c.rowGuid) put(" rowguidcol");
  if (c.nullable) put(*c.nullable ? " null" : " not null");
  if (c.defaultValue) {
    if (!c.defaultName.empty()) {
      put(" constraint ");
      identifier(c.defaultName);
    }
    put(" default (");
    expr(*c.defaultValue);
    put(")");
  }
  for (const TableConstraint& own : c.constraints) {
    out += ' ';
    constraint(own, true);
  }
}

void Printer::keyColumns(const std::vector<KeyColumn>& columns) {
  put(" (");
  commaList(columns, [this](const KeyColumn& key) {
    identifier(key.name);
    if (key.descending) put(" desc");
  });
  put(")");
}

void Printer::constraint(const TableConstraint& c, bool atColumn) {
  if (!c.name.empty()) {
    put("constraint ");
    identifier(c.name);
    out += ' ';
  }
  switch (c.kind) {
    case TableConstraint::Kind::primaryKey:
    case TableConstraint::Kind::unique:
      put(c.kind == TableConstraint::Kind::unique ? "unique" : "primary key");
      if (c.clustered) put(" clustered");
      return keyColumns(c.columns);
    case TableConstraint::Kind::check:
      put("check (");
      expr(*c.check);
      return put(")");
    case TableConstraint::Kind::default_:
      put("default (");
      expr(*c.check);
      put(") for ");
      return identifier(c.columns.front().name);
    case TableConstraint::Kind::foreignKey:
      if (!atColumn) {
        put("foreign key");
        keyColumns(c.columns);
        out += ' ';
      }
      return put(c.text);
  }
}

void Printer::alterTable(const AlterTable& alter) {
  put("alter table ");
  name(alter.name);
  switch (alter.action) {
    case AlterTable::Action::add:
      put(" add ");
      commaList(alter.columns, [this](const ColumnDefinition& c) { column(c); });
      for (const TableConstraint& c : alter.constraints) {
        if (&c != &alter.constraints.front() || !alter.columns.empty()) put(", ");
        constraint(c, false);
      }
      return;
    case AlterTable::Action::alterColumn:
      put(" alter column ");
      return column(alter.columns.front());
    case AlterTable::Action::dropColumns:
      put(" drop column ");
      break;
    case AlterTable::Action::dropConstraints:
      put(" drop constraint ");
      break;
  }
  commaList(alter.names, [this](const auto& dropped) { identifier(dropped.first); });
}

void Printer::createIndex(const CreateIndex& create) {
  put(create.unique ? "create unique " : "create ");
  if (create.clustered) put("clustered ");
  put("index ");
  identifier(create.index);
  put(" on ");
  name(create.table);
  keyColumns(create.columns);
}

// A name without a table is not there: the parser gives the table's parts and the index's name.
void Printer::dropIndex(const DropIndex& drop) {
  put("drop index ");
  names(drop.names);
}

}  // namespace tsql
