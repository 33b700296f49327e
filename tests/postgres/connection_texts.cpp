#include "postgres/postgres_server.h"

// BoolsAsChar=0: flags are flags, as they are on the servers that the adapter is for.
std::string PostgresServer::connectionString(const std::string& more) const {
  return "Driver={PostgreSQL Unicode};Servername=" + folder() + ";Port=5432;BoolsAsChar=0" +
         (more.find("UID=") == std::string::npos ? std::string(";UID=") + administrator : "") +
         (more.empty() ? "" : ";" + more);
}

std::string PostgresServer::connectionText(const std::string& more) const {
  return "Database=ledger;Server=odbc:" + connectionString(more) + ";";
}
