#include "settings/models.h"

namespace gljz {

bool JzModel() {
  // (arrives with its own change)
  return true;
}

}  // namespace gljz
