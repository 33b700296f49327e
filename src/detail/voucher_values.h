#pragma once
// The values of an insert into gl_accvouch, rendered one after the other in the order of its columns.
//
//   VoucherValues values(row);
//   values.text("csign").bare("inid").date("dbill_date").flag("bDelete");
//   "... Values(" + values.list() + ")"        N'记',1,'2005-03-05',0
//
// Values are put in as they stand. A bare Null leaves an empty place between two commas and an apostrophe closes its
// text early; both are intended and fail at the server, which ends the stage.

#include <string>
#include <string_view>

#include "platform/database.h"
#include "platform/value.h"

namespace gljz {

class VoucherValues {
public:
  // The fields are read from the current row of `row`, which has to live as long.
  explicit VoucherValues(const platform::Recordset& row) : row_(row) { list_.reserve(usualLength); }

  // A value that does not come from the row, or is decided by the caller.
  VoucherValues& constant(std::string_view rendered);        // as it stands
  VoucherValues& textValue(const platform::Value& value);    // N'...', Null
  VoucherValues& bareValue(const platform::Value& value);    // plain text, Null renders as nothing
  VoucherValues& dateValue(const platform::Value& value);    // 'yyyy-mm-dd', Null
  VoucherValues& numberValue(const platform::Value& value);  // plain text, Null

  // The same from a field of the row. RunTimeError 3265 when the row does not have it.
  VoucherValues& text(std::string_view field) { return textValue(row_.Field(field)); }
  VoucherValues& bare(std::string_view field) { return bareValue(row_.Field(field)); }
  VoucherValues& date(std::string_view field) { return dateValue(row_.Field(field)); }
  VoucherValues& number(std::string_view field) { return numberValue(row_.Field(field)); }
  VoucherValues& flag(std::string_view field);  // 1, 0; Null is 0

  // Groups of columns that every carried line copies.
  VoucherValues& origin();       // coutaccset to coutid
  VoucherValues& permissions();  // bvouchedit to bcussupinput
  VoucherValues& userDefined();  // cdefine1 to cdefine16, of which 4 and 6 are dates

  std::string_view list() const;  // without the last comma; valid until the next value

private:
  static constexpr std::size_t usualLength = 1000;
  const platform::Recordset& row_;
  std::string list_;
};

}  // namespace gljz
