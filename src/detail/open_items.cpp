#include "detail/open_items.h"

namespace gljz {

void CarryPersonItems() {
  // (arrives with its own change)
}

void CarryCustomerItems() {
  // (arrives with its own change)
}

void CarrySupplierItems() {
  // (arrives with its own change)
}

}  // namespace gljz
