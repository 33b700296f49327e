#pragma once
// ProgramFolder: the data files that the system looks for beside its program, on disk while this lives.

#include <filesystem>
#include <string>

namespace host {

// A new folder for temporary files with TransferParameter.xml and the report layouts glrep/, out of the program's own
// resources. It goes away with this object.
class ProgramFolder {
public:
  ProgramFolder();  // std::filesystem::filesystem_error when it cannot be made
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  std::string text() const { return path_.generic_string(); }
  std::string file(const std::string& name) const { return (path_ / name).generic_string(); }

private:
  std::filesystem::path path_;
};

}  // namespace host
