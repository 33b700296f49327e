#pragma once
// Open current-account items as period-0 vouchers of the new year.

namespace gljz {

void CarryPersonItems();
void CarryCustomerItems();
void CarrySupplierItems();

}  // namespace gljz
