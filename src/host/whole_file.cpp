#include "host/whole_file.h"

#include <filesystem>
#include <system_error>

#include "host/utf8_path.h"

namespace host {

namespace fs = std::filesystem;

void writeWhole(const std::string& fileName, const std::function<void(const std::string& path)>& write) {
  std::error_code ignored;
  fs::path file = pathOf(fileName);
  if (fs::is_symlink(file, ignored)) file = fs::weakly_canonical(file, ignored);
  if (fs::exists(file, ignored) && !fs::is_regular_file(file, ignored)) return write(textOf(file));

  fs::path part = file;
  part += ".part";
  try {
    write(textOf(part));
    fs::rename(part, file);
  } catch (...) {
    fs::remove(part, ignored);
    throw;
  }
}

}  // namespace host
