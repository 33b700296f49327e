#include "dialogs/frm_sy_km_sel.h"

#include "core/mdu_jz.h"
#include "dialogs/frm_sy_km_sel_sql.h"

namespace gljz {
namespace {

namespace sql = frm_sy_km_sel_sql;

void fillLeft(DoubleList& list, platform::Recordset& accounts) {
  list.clear();
  for (; !accounts.Eof(); accounts.MoveNext()) {
    list.addLeft(accountEntry(accounts.Field("ccode").displayText(), accounts.Field("ccode_name").displayText()));
  }
}

}  // namespace

void FrmSyKmSel::Load() {
  LocalizeForm(*this, resourcePrefix, "", "");
  auto accounts = newConn().OpenRecordset(sql::selectOpeningAccounts(), 2);
  fillLeft(CtlSelList1, *accounts);
  accounts->Close();
}

void FrmSyKmSel::visitCaptions(const CaptionVisitor& visit) {
  visit("", Caption);
  visit("Frame1", Frame1.Caption);
  visit("Label1", Label1.Caption);
  visit("Label2", Label2.Caption);
  visit("Label3", Label3.Caption);
  visit("cmdOK", cmdOK.Caption);
}

void GetSyKmList() {
  auto accounts = newConn().OpenRecordset(sql::selectClosingAccounts(run.m_strLastDB, run.m_strLastYear), 2);
  if (!accounts->Eof()) fillLeft(frmSyKmSel().CtlSelList1, *accounts);
  accounts->Close();
  frmSyKmSel().ShowModal();
}

}  // namespace gljz
