// Transactions.

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
  forgetIdentities();
}

void Session::Impl::rollback() {
  if (tranCount == 0)
    throw tsql::SqlError(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  tranCount = 0;
  if (!begun) return;
  drainStreams();
  begun = false;
  forgetIdentities();
  check([&] {
    if (!sqlite3_get_autocommit(db.get())) run(db.get(), "ROLLBACK");
  });
  // Definitions made inside went with it.
  const auto changed = std::move(changedSchemas);
  changedSchemas.clear();
  for (const auto& schema : changed) {
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
