#include "balances/auxiliary_totals.h"

namespace gljz {

void JzAccAss() {
  // (arrives with its own change)
}

}  // namespace gljz
