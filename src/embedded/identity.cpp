// Identity numbers: counted in the server, stored with the transaction that used them.

#include "embedded/session_impl.h"

namespace embedded {

using tsql::quoteName;
using tsql::TableDef;

std::int64_t Session::Impl::identityRef(const TableDef& t) {
  // The # tables of two sessions may have one name and number.
  const std::string key = lowerName(t.database) + "." + std::to_string(t.id) +
                          (t.temporary ? "@" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) : "");
  for (std::size_t i = 0; i < identityRefs.size(); ++i)
    if (identityRefs[i].key == key) return static_cast<std::int64_t>(i);
  const auto clause = *t.columns[static_cast<std::size_t>(t.identityColumn())].identity;
  IdentityRef ref{key, nullptr, t.id, t.schemaName, clause.seed, clause.increment};
  {
    const std::lock_guard lock(server->impl().mutex);
    auto& counter = server->impl().identity[key];
    if (!counter) counter = std::make_shared<IdentityCounter>();
    ref.counter = counter;
  }
  identityRefs.push_back(std::move(ref));
  return static_cast<std::int64_t>(identityRefs.size()) - 1;
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
  last = last ? *last + ref.increment : ref.seed;
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
