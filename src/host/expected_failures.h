#pragma once
// Statements that fail in ordinary runs: the system asks by trying whether something is there. Such a failure is none
// of the run's, however many the run has of the others.

#include <exception>
#include <optional>
#include <string_view>

#include "host/journal.h"

namespace host {

// The note that says what the failure means, empty when it is worth none; nullopt: it is a failure of the run.
std::optional<std::string_view> expectedFailure(Role role, std::string_view statement, const std::exception& failure);

}  // namespace host
