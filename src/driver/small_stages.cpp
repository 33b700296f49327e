#include "driver/small_stages.h"

namespace gljz {

void JzCashItemDataSource(std::string, std::string) {
  // (arrives with its own change)
}

void JzBmultiGroup() {
  // (arrives with its own change)
}

void ClearSyKm() {
  // (arrives with its own change)
}

}  // namespace gljz
