#include "balances/user_defined_openings.h"

namespace gljz {

void JzQcUserDef() {
  // (arrives with its own change)
}

}  // namespace gljz
