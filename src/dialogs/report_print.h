#pragma once
// Printing of the two closing dialogs: page head, the dialog's grid as it stands, page foot.

#include <string>
#include <vector>

#include "dialogs/controls.h"
#include "platform/forms.h"
#include "platform/value.h"

namespace gljz {

// What the head of a page says; the other fields of a head are empty.
struct PrintHead {
  std::string P1;  // title
  std::string P5;  // counts
  std::string P7;  // what the page is
};

// The year logged in to and the one before it, as the titles name them.
std::vector<platform::Value> printedYears();

// Fills the tables ZPDJ_Head and ZPDJ_Tail of the format database and starts the print control. What the control
// answers goes to ShowMsg unless it is done or the operator left. Every failure but that of dropping the tables goes to
// the caller.
void printGrid(const platform::Form& dialog, const Grid& grid, const PrintHead& head);

}  // namespace gljz
