#include "detail/open_item_lookups.h"

#include "core/mdu_jz.h"
#include "detail/open_items_sql.h"

namespace gljz {

namespace sql = open_items_sql;

void LoadSettleStyle(const std::string& code, SettleStyleRecord& record) {
  auto styles = lastConn().OpenRecordset(sql::selectSettleStyle(code), 2);
  if (!styles->Eof() && styles->Field("bssend").asBool()) {
    record.bssflag = styles->Field("bssflag").asBool();
    record.csscode = styles->Field("csscode").displayText();
    record.cssname = styles->Field("cssname").displayText();
  }
  styles->Close();
}

bool HasNoForeignAmounts(const std::string& ccode, const std::string& kind) {
  const std::string selection = kind == "yh" ? sql::selectForeignBankLines(ccode) : sql::selectForeignLines(ccode);
  // Only the first row matters: they are not all brought into memory.
  auto lines = lastConn().OpenRecordset(selection, 2, platform::CursorLocation::server);
  const bool none = lines->Eof();
  lines->Close();
  return none;
}

}  // namespace gljz
