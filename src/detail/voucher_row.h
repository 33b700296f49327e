#pragma once
// A voucher line of the closing years, written anew as an opening detail of the new year.

#include <cstdint>
#include <string>

#include "platform/database.h"
#include "platform/records.h"
#include "platform/value.h"

namespace gljz {

// iVouchKind: whose current-account item a line is.
inline constexpr std::uint8_t personItem = 0, customerItem = 1, supplierItem = 2;

// The text of the insert for the current row of a gl_accvouch.* selection; nothing runs. The line moves to period 0 of
// run.m_strCurYear, open and booked, with its amounts unchanged.
//
//   sign          is filled with the row's voucher type of the new year
//   account       of the new year: without a measure unit the quantities become 0
//   cexch_name    empty for none: then the foreign amounts and the rate become 0
//   dept to citem_class   the keys of a customer's or supplier's item; a person's item takes them from the row, and
//                 the person argument is never read
//
// Failures of a field or of the services go to the caller. Nothing is checked: what cannot be written fails at the
// server.
std::string InsertAccVouch(std::uint8_t iVouchKind, const platform::Recordset& row, platform::SignRecord& sign,
                           const platform::CodeRecord& account, const std::string& cexch_name,
                           const platform::Value& dept, const platform::Value& person, const platform::Value& cus,
                           const platform::Value& sup, const platform::Value& item, const platform::Value& citem_class,
                           const platform::Value& settle);

}  // namespace gljz
