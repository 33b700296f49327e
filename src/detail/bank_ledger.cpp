#include "detail/bank_ledger.h"

namespace gljz {

void JzYhData() {
  // (arrives with its own change)
}

}  // namespace gljz
