#pragma once

#include <string>

namespace cli {

// UsageError unless the file is there and nobody but its owner may read or change it.
void requirePrivate(const std::string& path);

}  // namespace cli
