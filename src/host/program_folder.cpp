#include "host/program_folder.h"

#include <fstream>
#include <ios>
#include <random>
#include <system_error>

#include "host/resources.h"

namespace host {
namespace {

namespace fs = std::filesystem;

// A folder of a name that nobody has, so that two programs never share one.
fs::path newFolder() {
  std::random_device random;
  for (;;) {
    const fs::path path = fs::temp_directory_path() / ("gljz-" + std::to_string(random()) + std::to_string(random()));
    if (fs::create_directory(path)) return path;
  }
}

bool belongsBesideProgram(std::string_view name) {
  return name == "TransferParameter.xml" || name.starts_with("glrep/");
}

void write(const fs::path& path, std::string_view text) {
  fs::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.close();
  if (!out) throw fs::filesystem_error("cannot be written", path, std::make_error_code(std::errc::io_error));
}

}  // namespace

ProgramFolder::ProgramFolder() : path_(newFolder()) {
  for (const Resource& resource : resources())
    if (belongsBesideProgram(resource.name)) write(path_ / fs::path(resource.name), resource.text);
}

ProgramFolder::~ProgramFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace host
