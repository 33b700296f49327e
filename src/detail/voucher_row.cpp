#include "detail/voucher_row.h"

#include "core/mdu_jz.h"
#include "detail/voucher_row_sql.h"
#include "detail/voucher_values.h"

namespace gljz {
namespace {

namespace sql = voucher_row_sql;
using platform::CodeRecord;
using platform::Recordset;
using platform::SignRecord;
using platform::Value;

constexpr const char* null = "Null";

// The sequence of the voucher type is the new year's; a type that the new year does not have keeps its name only.
void voucherType(VoucherValues& values, const Recordset& row, SignRecord& sign) {
  const Value csign = row.Field("csign");
  values.textValue(csign);
  if (csign.isNull()) {
    values.constant("0");
    return;
  }
  pubCls().GetSignRecord(csign.asText(), sign);
  if (pubCls().SignExists(csign.asText())) {
    values.bareValue(sign.iSignSeq);
  } else {
    values.constant(null);
  }
}

// Fields that count under a condition, 0 otherwise.
void amounts(VoucherValues& values, bool count, std::initializer_list<const char*> fields) {
  for (const char* field : fields) {
    if (count) {
      values.bare(field);
    } else {
      values.constant("0");
    }
  }
}

// A person's item keeps the row's own department and person. A customer or supplier on the same row is dropped.
void personKeys(VoucherValues& values, const CodeRecord& account) {
  values.text("cdept_ID").text("cPerson_ID").constant(null).constant(null);
  if (account.cPersonItemClass.empty()) {
    values.constant(null).constant(null);
  } else {
    values.text("cItem_id").text("citem_class");
  }
  values.constant(null);  // cname
}

}  // namespace

std::string InsertAccVouch(std::uint8_t iVouchKind, const Recordset& row, SignRecord& sign, const CodeRecord& account,
                           const std::string& cexch_name, const Value& dept, const Value& /*person*/, const Value& cus,
                           const Value& sup, const Value& item, const Value& citem_class, const Value& settle) {
  VoucherValues values(row);
  values.constant(run.m_strCurYear).constant("0");  // iyear, iPeriod
  voucherType(values, row, sign);
  values.textValue(cexch_name.empty() ? Value() : Value(cexch_name));
  amounts(values, !cexch_name.empty(), {"md_f", "mc_f", "nfrat"});
  amounts(values, !account.cMeasure.empty(), {"nd_s", "nc_s"});

  if (iVouchKind == personItem) {
    personKeys(values, account);
  } else {
    values.textValue(dept).constant(null);  // never a person, whatever the row has
    values.textValue(iVouchKind == customerItem ? cus : Value()).textValue(iVouchKind == supplierItem ? sup : Value());
    values.textValue(item).textValue(citem_class).text("CName");
  }

  values.constant(null).textValue(settle);  // iflagperson: open again
  values.text("iNo_id").bare("inid").date("dbill_date").bare("idoc").text("cbill").text("ccheck").text("cbook");
  values.constant("1").text("ccashier").number("iflag");  // ibook: booked
  values.text("ctext1").text("ctext2").text("cdigest").text("ccode").bare("md").bare("mc");
  values.text("cn_id").date("dt_date").text("ccode_equal").number("iflagbank").flag("bDelete");
  values.origin().permissions().userDefined();
  return sql::insertVoucher(values.list());
}

}  // namespace gljz
