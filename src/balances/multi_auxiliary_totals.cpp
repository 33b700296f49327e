#include "balances/multi_auxiliary_totals.h"

namespace gljz {

void JzAccMultiAss() {
  // (arrives with its own change)
}

}  // namespace gljz
