#pragma once
// Open current-account items as period-0 vouchers of the new year: the lines of persons, customers and suppliers that
// are not cleared, or cleared in the new year only, one by one, without netting.
//
//   OpenItemState state;         // one for the three loops of a run
//   CarryPersonItems(state);
//   CarryCustomerItems(state);
//   CarrySupplierItems(state);
//
// The caller decides by the party's mode whether a loop runs. A line that has no counterpart in the new year is left
// out, and only a run that is watched says so. Failures go to the caller; the lines written before stay.

#include "platform/records.h"
#include "platform/value.h"

namespace gljz {

struct OpenItemState {
  platform::CodeRecord newRec, lastRec;  // the account of the line, in the new and in the closing year
  platform::SignRecord sign;             // its voucher type
  // Intended: never reset. A line without a settlement style takes that of the line before it, across the loops.
  platform::Value settle;
};

void CarryPersonItems(OpenItemState& state);
void CarryCustomerItems(OpenItemState& state);  // m_iCusMode 3: of the chosen accounts only
void CarrySupplierItems(OpenItemState& state);  // m_iSupMode 3: the same

}  // namespace gljz
