#pragma once
// View items and the columns of code that name them.

namespace gljz {

// Catches its own failures and returns normally.
void JzViewItem();

}  // namespace gljz
