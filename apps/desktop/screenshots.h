#pragma once
// Pictures of every window in every language, taken on a demo account set that is carried forward on the way.

#include <string>

namespace desktop {

// Writes <folder>/<language>-<window>.png. std::runtime_error when a window did not come or a file cannot be written.
void takeScreenshots(const std::string& folder);

}  // namespace desktop
