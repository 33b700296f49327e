#pragma once
// Opening balances by user-defined item (GL_QcUserDef).

namespace gljz {

void JzQcUserDef();

}  // namespace gljz
