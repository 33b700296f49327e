#pragma once
// External components of the reference host.

#include <memory>

#include "host/journal.h"
#include "platform/services.h"

namespace host {

// The clearing of current accounts is this host's own (clearing_component.h). No other component is installed: each
// creation is RunTimeError 429 and a note in the journal, which is not counted as a failure of the run.
std::shared_ptr<platform::ComponentFactory> makeComponents(std::shared_ptr<Journal> journal);

}  // namespace host
