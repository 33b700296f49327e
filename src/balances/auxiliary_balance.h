#pragma once
// What the stages of balances share: for one row of the closing year, which account of the new year takes it, which
// auxiliaries it keeps there, and whether the new year still has these.
//
// A row that fails a test is left out, and the row alone. The tests report it in a run that is watched; where nothing
// is said about a report, there is none.

#include <string>

#include "platform/database.h"
#include "platform/records.h"
#include "platform/value.h"

namespace gljz {

// The account that takes a balance.
struct TargetAccount {
  std::string newCode;
  platform::CodeRecord newRec;   // in the new year
  platform::CodeRecord lastRec;  // in the closing year, looked up by the new code
  std::string cExch;             // currency under which the balance goes on, empty for none
};

// The auxiliaries that the account is entitled to; Null where there is none.
struct Auxiliaries {
  platform::Value dept, person, cus, sup, item, itemClass;
  bool none() const;
};

// The currency under which a balance goes on in an account, empty for none. With one currency an account it is the
// account's own, whatever the balance had: a foreign balance that moves to an account without a currency loses its
// foreign amount.
std::string effectiveCurrency(const platform::Recordset& balance, const platform::CodeRecord& target);

// False, and reported: there is no counterpart, or it is not last-level.
bool findTarget(const platform::Recordset& balance, TargetAccount& target);

// Reports that the account's auxiliary type is not the same in both years.
void reportTypeDiffers(const platform::Recordset& balance);

// Picks the auxiliaries that the account calls for; what it does not call for is dropped. False: one that it calls for
// is missing.
bool pickAuxiliaries(const platform::Recordset& balance, const platform::CodeRecord& newRec, Auxiliaries& picked);

// False, and reported once with the closing year's name: the new year lacks one of them. Names are read only for a
// report.
bool auxiliariesExist(const Auxiliaries& auxiliaries);

// Values of a statement: each with a comma behind it.
std::string currencyValue(const TargetAccount& target);
std::string auxiliaryValues(const Auxiliaries& auxiliaries);  // dept, person, cus, sup, item, itemClass

// Numbers of a statement, without a comma: the foreign amount and quantity of a balance, 0 where the account of the new
// year keeps none.
platform::Value foreignAmount(const platform::Recordset& balance, const TargetAccount& target);
platform::Value quantity(const platform::Recordset& balance, const TargetAccount& target);

}  // namespace gljz
