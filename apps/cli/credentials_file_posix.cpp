#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "credentials_file.h"
#include "host/usage_error.h"

namespace cli {

void requirePrivate(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || access(path.c_str(), R_OK) != 0)
    throw host::UsageError("--credentials: file " + path + " cannot be read: " + std::strerror(errno));
  if (!S_ISREG(status.st_mode)) throw host::UsageError("--credentials: " + path + " is no file");
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
    throw host::UsageError("--credentials: file " + path + " is open to others; chmod 600 closes it");
}

}  // namespace cli
