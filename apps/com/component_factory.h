#pragma once
// External components by program id, called by the names of their operations.

#include <memory>

#include "platform/services.h"

namespace com {

// Components that are registered with the system. Where the clearing component is not, and the run's services are the
// reference host's own, that host's clearing takes its place, as it does without COM.
std::shared_ptr<platform::ComponentFactory> makeComponentFactory();

}  // namespace com
