#include <filesystem>

#include "credentials_file.h"
#include "host/usage_error.h"

namespace cli {

// Files below a user's own folders are closed to other users there as a rule; a list of rights is not read.
void requirePrivate(const std::string& path) {
  const std::filesystem::path file(std::u8string(path.begin(), path.end()));
  std::error_code failure;
  if (!std::filesystem::is_regular_file(file, failure))
    throw host::UsageError("--credentials: file " + path + " cannot be read");
}

}  // namespace cli
