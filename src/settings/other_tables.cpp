#include "settings/other_tables.h"

namespace gljz {

void JzOtherTables() {
  // (arrives with its own change)
}

}  // namespace gljz
