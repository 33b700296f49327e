// Definitions of databases: each is a file in the server's folder.

#include <filesystem>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::SqlError;

namespace {

std::filesystem::path pathOf(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

}  // namespace

void Session::Impl::createDatabase(const tsql::ast::CreateDatabase& s) {
  if (s.name.empty() || s.name.find_first_of("/\\:*?\"<>|") != std::string::npos || s.name[0] == '.')
    throw SqlError(1038, "The name '" + s.name + "' cannot be a database's name.", s.pos, 15);
  if (server->impl().find(s.name) || tsql::sameName(s.name, "tempdb"))
    throw SqlError(1801, "Database '" + s.name + "' already exists. Choose a different database name.", s.pos);
  if (tranCount > 0)
    throw SqlError(226, "CREATE DATABASE statement not allowed within multi-statement transaction.", s.pos);
  // Made under another name first: a database is there whole or not at all.
  const std::string file = server->impl().fileOf(s.name), making = file + ".new";
  check([&] {
    std::error_code ignored;
    std::filesystem::remove(pathOf(making), ignored);
    sqlite3* handle = nullptr;
    const int rc = sqlite3_open_v2(making.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const DatabaseHandle made(handle);
    if (rc != SQLITE_OK) throw SqliteFailure{rc, sqlite3_errmsg(handle)};
    registerFunctions(handle, context);
    createCatalog(handle, "main");
    embedded::run(handle, "PRAGMA journal_mode=WAL");
  });
  std::error_code failed;
  std::filesystem::rename(pathOf(making), pathOf(file), failed);
  if (failed) throw SqlError(5105, "The file '" + file + "' cannot be made: " + failed.message());
}

void Session::Impl::dropDatabase(const tsql::ast::DropDatabase& s) {
  const auto name = server->impl().find(s.name);
  if (!name)
    throw SqlError(
        3701, "Cannot drop the database '" + s.name + "', because it does not exist or you do not have permission.",
        s.pos, 11);
  if (tsql::sameName(*name, current))
    throw SqlError(3702, "Cannot drop database \"" + *name + "\" because it is currently in use.", s.pos);
  if (tranCount > 0)
    throw SqlError(226, "DROP DATABASE statement not allowed within multi-statement transaction.", s.pos);
  idleReader.reset();
  if (attached.contains(*name)) detach(*name);
  const auto file = pathOf(server->impl().fileOf(*name));
  // A system that keeps open files in their place says so here, before anything is lost.
  auto gone = file;
  gone += ".dropped";
  std::error_code failed, ignored;
  std::filesystem::rename(file, gone, failed);
  if (failed) throw SqlError(3702, "Cannot drop database \"" + *name + "\" because it is currently in use.", s.pos);
  for (const char* end : {"-wal", "-shm"}) {
    auto f = file;
    f += end;
    std::filesystem::remove(f, ignored);
  }
  std::filesystem::remove(gone, ignored);
  const std::lock_guard lock(server->impl().mutex);
  std::erase_if(server->impl().identity, [&](const auto& x) { return x.first.rfind(lowerName(*name) + ".", 0) == 0; });
  server->impl().dropped[lowerName(*name)] = ++server->impl().drops;
}

}  // namespace embedded
