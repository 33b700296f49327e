#pragma once
// Interrupt: ends the batch that a session is running, from outside.

#include "embedded/server.h"

namespace embedded {

// The statement that is running fails with 3621, and the batch ends; nothing happens when none is running. May be
// called from another thread and from a signal handler. The session has to outlive the call.
class Interrupter {
public:
  explicit Interrupter(Session& session);
  void operator()() const noexcept;

private:
  void* database_;  // sqlite3
};

}  // namespace embedded
