#pragma once
// Describe: what a session's databases hold, for a person or a tool that looks around.

#include <optional>
#include <string>
#include <vector>

#include "embedded/server.h"
#include "tsql/catalog.h"

namespace embedded {

// The tables of the session's database, then its own # tables, each in the order of their names. Empty while the
// session stands on the server itself.
std::vector<std::string> tableNames(Session& session);

// The table that a name of one to three parts ("code", "d1..[my table]", "#T") means in the session; nullopt when there
// is none. Throws tsql::SqlError for a text that is no name.
std::optional<tsql::TableDef> tableDefinition(Session& session, const std::string& name);

}  // namespace embedded
