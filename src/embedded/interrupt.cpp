#include "embedded/interrupt.h"

#include "embedded/session_impl.h"

namespace embedded {

Interrupter::Interrupter(Session& session) : database_(session.impl().db.get()) {}

void Interrupter::operator()() const noexcept {
  sqlite3_interrupt(static_cast<sqlite3*>(database_));
}

}  // namespace embedded
