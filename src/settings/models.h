#pragma once
// Voucher models.

namespace gljz {

// Catches its own failures. False: a failure ended the stage.
bool JzModel();

}  // namespace gljz
