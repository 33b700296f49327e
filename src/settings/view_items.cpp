#include "settings/view_items.h"

namespace gljz {

void JzViewItem() {
  // (arrives with its own change)
}

}  // namespace gljz
