#pragma once
// Pictures of all windows, for a person to look at.

#include <string>

namespace windows::test {

// Carries a demo account set forward in each language and takes a picture of every window on the way:
// <folder>/<language>-<form>.png. std::runtime_error when one did not come or cannot be written.
void takePictures(const std::string& folder);

}  // namespace windows::test
