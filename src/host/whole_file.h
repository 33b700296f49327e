#pragma once
// A file that is written wholly or not at all.

#include <functional>
#include <string>

namespace host {

// Calls write with the name of a file beside the one that is meant, which takes its place when write has returned. What
// stood there before stays when write throws; the failure goes on to the caller. A link stays a link. A device or a
// pipe is written as it is. std::filesystem::filesystem_error when the new file cannot take the place.
void writeWhole(const std::string& fileName, const std::function<void(const std::string& path)>& write);

}  // namespace host
