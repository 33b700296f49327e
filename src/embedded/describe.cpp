#include "embedded/describe.h"

#include "embedded/session_impl.h"

namespace embedded {

std::vector<std::string> tableNames(Session& session) {
  Session::Impl& s = session.impl();
  s.catalogsStale = s.catalogsStale || !s.begun;
  s.refreshCatalogs();
  std::vector<std::string> names;
  const auto add = [&](const DatabaseCatalog* catalog) {
    if (!catalog) return;
    for (const auto& [name, table] : catalog->tables)
      if (!table->system) names.push_back(table->name);
  };
  if (!s.current.empty()) add(s.catalogOf(s.current));
  add(s.temporary.get());
  return names;
}

std::optional<tsql::TableDef> tableDefinition(Session& session, const std::string& name) {
  const tsql::TokenStream tokens = tsql::lex("select * from " + name);
  const tsql::ast::Batch batch = tsql::parse(tokens);
  const auto* statement = batch.statements.size() == 1 && batch.statements[0]->kind == tsql::ast::StatementKind::select
                              ? static_cast<const tsql::ast::SelectStatement*>(batch.statements[0].get())
                              : nullptr;
  const auto* select = statement ? statement->select.get() : nullptr;
  if (!select || select->from.size() != 1 || select->from[0]->kind != tsql::ast::Source::Kind::table || select->where ||
      select->next || !select->orderBy.empty() || !select->groupBy.empty())
    throw tsql::SqlError(102, "Incorrect syntax near '" + name + "': the name of a table is expected.");
  Session::Impl& s = session.impl();
  s.catalogsStale = s.catalogsStale || !s.begun;
  s.refreshCatalogs();
  const tsql::TableDef* found = s.table(static_cast<const tsql::ast::TableSource&>(*select->from[0]).name);
  if (!found) return std::nullopt;
  return *found;
}

}  // namespace embedded
