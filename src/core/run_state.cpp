#include "core/run_state.h"

namespace gljz {

RunState run;

}  // namespace gljz
