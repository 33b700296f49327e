#pragma once
// Cheque register (rp_cheque): the outstanding cheques go into the new year's register. The register has no year, so in
// one database with the closing year it simply stays. Last step of the bank stage.

#include <string>

#include "platform/date_time.h"

namespace gljz {

// A cheque that the new register has already is left out. Failures go to the caller; the cheques saved so far stay.
void CarryChequeRegister();

// Text of the date on which a cheque was used up. As only cheques without that date are carried it never comes to it.
std::string usedUpText(platform::DateTime date);

}  // namespace gljz
