#pragma once
// External components of the reference host.

#include <memory>

#include "host/journal.h"
#include "platform/services.h"

namespace host {

// None is installed: each creation is RunTimeError 429 and a note in the journal, which is not counted as a failure of
// the run. The clearing component alone is answered by an object that clears nothing, so that a run that asks for
// automatic clearing goes on without it; that is a note as well.
std::shared_ptr<platform::ComponentFactory> makeComponents(std::shared_ptr<Journal> journal);

}  // namespace host
