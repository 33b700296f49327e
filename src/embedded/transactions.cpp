// Transactions and identity numbers.

#include "embedded/session_impl.h"
#include "embedded/stream.h"

namespace embedded {

using tsql::quoteName;
using tsql::TableDef;

void Session::Impl::beginTransaction() {
  ++tranCount;
}

void Session::Impl::commit() {
  if (tranCount == 0)
    throw tsql::SqlError(3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  if (--tranCount > 0) return;
  if (!begun) return;
  try {
    check([&] {
      flushIdentities();
      run(db.get(), "COMMIT");
    });
  } catch (...) {
    ++tranCount;  // nothing was committed: the transaction is open still
    throw;
  }
  begun = false;
  changedSchemas.clear();
  identityRead.clear();
}

void Session::Impl::rollback() {
  if (tranCount == 0)
    throw tsql::SqlError(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  tranCount = 0;
  if (!begun) return;
  drainStreams();
  begun = false;
  identityRead.clear();
  check([&] {
    if (!sqlite3_get_autocommit(db.get())) run(db.get(), "ROLLBACK");
  });
  // Definitions made inside went with it.
  const auto changed = std::move(changedSchemas);
  changedSchemas.clear();
  for (const auto& schema : changed) {
    if (schema == "temp") {
      temporary.reset();
      PreparedStatement has(db.get(), "SELECT 1 FROM temp.sqlite_schema WHERE name='_ts_objects'");
      const bool known = has.step();
      has = {};
      if (known) reloadCatalog(schema);
    } else {
      reloadCatalog(schema);
    }
  }
}

void Session::Impl::beforeWrite() {
  if (tranCount > 0 && !begun) {
    check([&] { run(db.get(), "BEGIN"); });
    begun = true;
  }
}

void Session::Impl::atomically(const std::function<void()>& work) {
  beforeWrite();
  if (begun) {
    run(db.get(), "SAVEPOINT statement");
    try {
      work();
    } catch (...) {
      run(db.get(), "ROLLBACK TO statement");
      run(db.get(), "RELEASE statement");
      throw;
    }
    run(db.get(), "RELEASE statement");
    return;
  }
  run(db.get(), "BEGIN");
  try {
    work();
    flushIdentities();
    run(db.get(), "COMMIT");
  } catch (...) {
    if (!sqlite3_get_autocommit(db.get())) run(db.get(), "ROLLBACK");
    identityRead.clear();
    throw;
  }
  identityRead.clear();
}

std::int64_t Session::Impl::identityRef(const TableDef& t) {
  const std::string key = lowerName(t.database) + "." + std::to_string(t.id) +
                          (t.temporary ? "@" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) : "");
  const int column = t.identityColumn();
  for (std::size_t i = 0; i < identityRefs.size(); ++i)
    if (identityRefs[i].key == key) return static_cast<std::int64_t>(i);
  const auto clause = *t.columns[static_cast<std::size_t>(column)].identity;
  identityRefs.push_back({key, t.id, t.schemaName, clause.seed, clause.increment});
  return static_cast<std::int64_t>(identityRefs.size()) - 1;
}

std::int64_t Session::Impl::nextIdentity(const TableDef& t) {
  return nextIdentity(identityRef(t));
}

std::int64_t Session::Impl::nextIdentity(std::int64_t ref) {
  const auto index = static_cast<std::size_t>(ref);
  if (!identityRead.contains(ref)) {
    // The first number of a transaction: the store may know of numbers that another process gave.
    PreparedStatement s(
        db.get(), "SELECT last FROM " + quoteName(identityRefs[index].schemaName) + "._ts_identity WHERE table_id=?");
    const tsql::Datum id = identityRefs[index].id;
    s.bind(1, id);
    const bool stored = s.step();
    const std::int64_t last = stored ? s.integer(0) : 0;
    s = {};
    const std::lock_guard lock(server->impl().mutex);
    auto& known = server->impl().identity;
    const auto it = known.find(identityRefs[index].key);
    const std::int64_t increment = identityRefs[index].increment;
    if (stored && (it == known.end() || (increment > 0 ? it->second < last : it->second > last)))
      known[identityRefs[index].key] = last;
    identityRead.insert(ref);
  }
  identityPending.insert(ref);
  const std::lock_guard lock(server->impl().mutex);
  auto& known = server->impl().identity;
  const auto [it, first] = known.try_emplace(identityRefs[index].key, identityRefs[index].seed);
  if (!first) it->second += identityRefs[index].increment;
  lastIdentity = scopeIdentity = it->second;
  return it->second;
}

// A number that the statement gave itself: counting goes on behind the largest.
void Session::Impl::identityGiven(const TableDef& t, std::int64_t number) {
  const std::int64_t ref = identityRef(t);
  const auto index = static_cast<std::size_t>(ref);
  identityPending.insert(ref);
  const std::lock_guard lock(server->impl().mutex);
  const auto [it, first] = server->impl().identity.try_emplace(identityRefs[index].key, number);
  if (!first && (identityRefs[index].increment > 0 ? it->second < number : it->second > number)) it->second = number;
  lastIdentity = scopeIdentity = number;
}

void Session::Impl::flushIdentities() {
  for (const auto ref : identityPending) {
    const auto& r = identityRefs[static_cast<std::size_t>(ref)];
    std::int64_t last = 0;
    {
      const std::lock_guard lock(server->impl().mutex);
      last = server->impl().identity[r.key];
    }
    PreparedStatement s(db.get(),
                        "INSERT INTO " + quoteName(r.schemaName) +
                            "._ts_identity(table_id,last) VALUES(?1,?2) ON CONFLICT(table_id) DO UPDATE SET last=?2");
    const tsql::Datum id = r.id, number = last;
    s.bind(1, id);
    s.bind(2, number);
    s.step();
  }
  identityPending.clear();
}

void Session::Impl::drainStreams() {
  const auto open = streams;
  for (auto* s : open) s->drain();
}

}  // namespace embedded
