#pragma once
// Decorators that tell the journal of every statement and row, and change nothing.

#include <functional>
#include <memory>

#include "host/journal.h"
#include "platform/database.h"

namespace host {

// role: the connection of the services object is the new year's. Any other is the closing year's while the run holds
// it as such, and private otherwise; that is decided at each statement.
std::shared_ptr<platform::Connection> journalConnection(std::shared_ptr<Journal> journal,
                                                        std::shared_ptr<platform::Connection> inner, bool newYear);

}  // namespace host
