#pragma once
// State of the controls that the dialogs are made of.

#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"

namespace gljz {

inline constexpr platform::Colour black = platform::rgb(0, 0, 0);
inline constexpr platform::Colour red = platform::rgb(255, 0, 0);

struct Label {
  std::string Caption;
  platform::Colour ForeColor = black;
  std::string ToolTipText = {};
};

struct Button {
  std::string Caption;
  bool Enabled = true;
  bool Visible = true;
  std::string ToolTipText = {};
};

enum class Alignment { left = 0, right = 1, centred = 2 };

// A grid of texts; the first row is the header row, no column is fixed.
struct Grid {
  std::vector<std::vector<std::string>> rows;
  std::vector<int> columnWidths;      // twips, 1/1440 inch
  std::vector<Alignment> alignments;  // of columns; left where there is none
  platform::Colour shadeColour = 0;
  int borderStyle = 1;  // 0 none

  // A row of cells that are separated by tabs, below the last one.
  void addRow(std::string_view text);
};

}  // namespace gljz
