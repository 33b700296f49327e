#pragma once
// State of the controls that the dialogs are made of.

#include <string>
#include <vector>

#include "platform/forms.h"

namespace gljz {

inline constexpr platform::Colour black = platform::rgb(0, 0, 0);
inline constexpr platform::Colour red = platform::rgb(255, 0, 0);

struct Label {
  std::string Caption;
  platform::Colour ForeColor = black;
};

struct Button {
  std::string Caption;
  bool Enabled = true;
  bool Visible = true;
};

// A grid of texts; the first row is the header row.
struct Grid {
  std::vector<std::vector<std::string>> rows;
  std::vector<int> columnWidths;  // twips, 1/1440 inch
  platform::Colour shadeColour = 0;
};

}  // namespace gljz
