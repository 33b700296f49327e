// Identity numbers: counted in the server, stored with the transaction that used them.

#include "embedded/session_impl.h"

namespace embedded {

using tsql::quoteName;
using tsql::TableDef;

std::int64_t Session::Impl::identityRef(const TableDef& t) {
  // The # tables of two sessions may have one name and number.
  const std::string key = lowerName(t.database) + "." + std::to_string(t.id) +
                          (t.temporary ? "@" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) : "");
  std::size_t i = 0;
  while (i < identityRefs.size() && identityRefs[i].key != key) ++i;
  if (i == identityRefs.size()) {
    IdentityRef added;
    added.key = key;
    const std::lock_guard lock(server->impl().mutex);
    auto& counter = server->impl().identity[key];
    if (!counter) counter = std::make_shared<IdentityCounter>();
    added.counter = counter;
    identityRefs.push_back(std::move(added));
  }
  // The column may have been changed since.
  IdentityRef& ref = identityRefs[i];
  const auto& column = t.columns[static_cast<std::size_t>(t.identityColumn())];
  ref.id = t.id;
  ref.schemaName = t.schemaName;
  ref.seed = column.identity->seed;
  ref.increment = column.identity->increment;
  ref.typeName = column.type.baseName();
  ref.lowest = INT64_MIN;
  ref.highest = INT64_MAX;
  switch (column.type.kind) {
    case tsql::TypeKind::tinyint:
      ref.lowest = 0, ref.highest = UINT8_MAX;
      break;
    case tsql::TypeKind::smallint:
      ref.lowest = INT16_MIN, ref.highest = INT16_MAX;
      break;
    case tsql::TypeKind::integer:
      ref.lowest = INT32_MIN, ref.highest = INT32_MAX;
      break;
    default:
      break;
  }
  return static_cast<std::int64_t>(i);
}

// With the first number of a transaction: the store may know of numbers that another process gave.
void Session::Impl::readIdentity(IdentityRef& ref) {
  if (ref.read) return;
  ref.read = true;
  PreparedStatement s(db.get(), "SELECT last FROM " + quoteName(ref.schemaName) + "._ts_identity WHERE table_id=?");
  const tsql::Datum id = ref.id;
  s.bind(1, id);
  if (!s.step()) return;
  const std::int64_t stored = s.integer(0);
  const std::lock_guard lock(ref.counter->mutex);
  auto& last = ref.counter->last;
  if (!last || (ref.increment > 0 ? *last < stored : *last > stored)) last = stored;
}

std::int64_t Session::Impl::nextIdentity(std::int64_t index) {
  IdentityRef& ref = identityRefs[static_cast<std::size_t>(index)];
  readIdentity(ref);
  ref.pending = true;
  const std::lock_guard lock(ref.counter->mutex);
  auto& last = ref.counter->last;
  const std::int64_t next = last ? *last + ref.increment : ref.seed;
  if (next < ref.lowest || next > ref.highest)
    throw tsql::SqlError(8115, "Arithmetic overflow error converting IDENTITY to data type " + ref.typeName + ".");
  last = next;
  lastIdentity = scopeIdentity = *last;
  return *last;
}

// A number that the statement gave itself: counting goes on behind the largest.
void Session::Impl::identityGiven(const TableDef& t, std::int64_t number) {
  IdentityRef& ref = identityRefs[static_cast<std::size_t>(identityRef(t))];
  readIdentity(ref);
  ref.pending = true;
  const std::lock_guard lock(ref.counter->mutex);
  auto& last = ref.counter->last;
  if (!last || (ref.increment > 0 ? *last < number : *last > number)) last = number;
  lastIdentity = scopeIdentity = number;
}

void Session::Impl::numbersGiven(const TableDef& t) {
  const auto& column = t.columns[static_cast<std::size_t>(t.identityColumn())];
  PreparedStatement top(db.get(), std::string("SELECT ") + (column.identity->increment > 0 ? "max(" : "min(") +
                                      quoteName(column.name) + ") FROM " + t.storage);
  if (top.step() && sqlite3_column_type(top.get(), 0) != SQLITE_NULL) identityGiven(t, top.integer(0));
}

// Counting begins anew: the table was dropped or emptied.
void Session::Impl::restartIdentity(const TableDef& t) {
  if (t.identityColumn() < 0) return;
  IdentityRef& ref = identityRefs[static_cast<std::size_t>(identityRef(t))];
  ref.pending = false;
  ref.read = true;
  const std::lock_guard lock(ref.counter->mutex);
  ref.counter->last.reset();
}

std::optional<std::int64_t> Session::Impl::currentIdentity(const TableDef& t) {
  IdentityRef& ref = identityRefs[static_cast<std::size_t>(identityRef(t))];
  readIdentity(ref);
  const std::lock_guard lock(ref.counter->mutex);
  return ref.counter->last;
}

void Session::Impl::flushIdentities() {
  for (auto& ref : identityRefs) {
    if (!ref.pending) continue;
    ref.pending = false;
    std::optional<std::int64_t> last;
    {
      const std::lock_guard lock(ref.counter->mutex);
      last = ref.counter->last;
    }
    if (!last) continue;
    PreparedStatement s(db.get(),
                        "INSERT INTO " + quoteName(ref.schemaName) +
                            "._ts_identity(table_id,last) VALUES(?1,?2) ON CONFLICT(table_id) DO UPDATE SET last=?2");
    const tsql::Datum id = ref.id, number = *last;
    s.bind(1, id);
    s.bind(2, number);
    s.step();
  }
}

void Session::Impl::forgetIdentities() {
  for (auto& ref : identityRefs) ref.read = false;
}

}  // namespace embedded
