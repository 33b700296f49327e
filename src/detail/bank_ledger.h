#pragma once
// The bank stage: unreconciled bank ledger, then bank statements, then cheques.

namespace gljz {

// Catches its own failures from its second statement on and returns normally.
void JzYhData();

}  // namespace gljz
