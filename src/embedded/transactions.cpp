// Transactions.

#include <algorithm>
#include <utility>

#include "embedded/session_impl.h"
#include "embedded/stream.h"

namespace embedded {

using tsql::quoteName;
using tsql::TableDef;

void Session::Impl::beginTransaction(const std::string& name) {
  if (++tranCount == 1) transactionName = name;
}

void Session::Impl::commit() {
  if (tranCount == 0)
    throw tsql::SqlError(3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  if (--tranCount > 0) return;
  if (!begun) return;
  try {
    for (auto* s : std::vector(streams)) s->beforeWrite();
    check([&] {
      flushIdentities();
      run(db.get(), "COMMIT");
    });
  } catch (...) {
    ++tranCount;  // nothing was committed: the transaction is open still
    throw;
  }
  begun = false;
  savepoints.clear();
  changedSchemas.clear();
  forgetIdentities();
}

void Session::Impl::rollback() {
  if (tranCount == 0)
    throw tsql::SqlError(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  tranCount = 0;
  savepoints.clear();
  if (!begun) return;
  drainStreams();
  begun = false;
  forgetIdentities();
  check([&] {
    if (!sqlite3_get_autocommit(db.get())) run(db.get(), "ROLLBACK");
  });
  definitionsUndone(std::exchange(changedSchemas, {}));
  dropTablesOfEnded();
}

void Session::Impl::save(const std::string& name) {
  if (tranCount == 0) throw tsql::SqlError(628, "Cannot issue SAVE TRANSACTION when there is no active transaction.");
  beforeWrite();
  check([&] { run(db.get(), "SAVEPOINT " + quoteName("s:" + lowerName(name))); });
  savepoints.push_back(name);
}

void Session::Impl::rollback(const std::string& name) {
  if (name.empty()) return rollback();
  if (tranCount == 0) return rollback();  // says 3903
  const auto same = [&](const std::string& x) { return tsql::sameName(x, name); };
  if (std::none_of(savepoints.begin(), savepoints.end(), same)) {
    if (tsql::sameName(name, transactionName)) return rollback();
    throw tsql::SqlError(6401, "Cannot roll back " + name + ". No transaction or savepoint of that name was found.");
  }
  while (!same(savepoints.back())) savepoints.pop_back();  // the later ones go with it; it stays itself
  drainStreams();
  forgetIdentities();
  check([&] { run(db.get(), "ROLLBACK TO " + quoteName("s:" + lowerName(name))); });
  definitionsUndone(std::set(changedSchemas));
  dropTablesOfEnded();
}

// Definitions made in the schemas went with a rollback: what is known of them is read anew.
void Session::Impl::definitionsUndone(const std::set<std::string>& schemas) {
  for (const auto& schema : schemas) {
    if (schema == "temp") {
      temporary.reset();
      ++catalogEpoch;
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
  if (!streams.empty())
    for (auto* s : std::vector(streams)) s->beforeWrite();
  if (tranCount > 0 && !begun) {
    check([&] { run(db.get(), "BEGIN"); });
    begun = true;
  }
}

void Session::Impl::atomically(const std::function<void()>& work) {
  beforeWrite();
  std::set<std::string> defined;
  auto* const outer = std::exchange(definedInside, &defined);
  try {
    if (begun)
      inSavepoint(work);
    else
      inTransactionOfItsOwn(work);
  } catch (...) {
    definedInside = outer;
    definitionsUndone(defined);
    throw;
  }
  definedInside = outer;
  if (outer) outer->merge(defined);
}

void Session::Impl::inSavepoint(const std::function<void()>& work) {
  run(db.get(), "SAVEPOINT statement");
  try {
    work();
  } catch (...) {
    run(db.get(), "ROLLBACK TO statement");
    run(db.get(), "RELEASE statement");
    throw;
  }
  run(db.get(), "RELEASE statement");
}

void Session::Impl::inTransactionOfItsOwn(const std::function<void()>& work) {
  run(db.get(), "BEGIN");
  try {
    work();
    flushIdentities();
    run(db.get(), "COMMIT");
  } catch (...) {
    if (!sqlite3_get_autocommit(db.get())) run(db.get(), "ROLLBACK");
    forgetIdentities();
    throw;
  }
  forgetIdentities();
}

void Session::Impl::drainStreams() {
  const auto open = streams;
  for (auto* s : open) s->drain();
}

}  // namespace embedded
