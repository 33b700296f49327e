#include "dialogs/frm_ye_mx_sel.h"

#include "core/mdu_jz.h"
#include "dialogs/frm_ye_mx_sel_sql.h"

namespace gljz {
namespace {

namespace sql = frm_ye_mx_sel_sql;

constexpr int byBalance = 1, byDetail = 2;  // iYeMxType

template <class Add>
void eachAccount(const std::string& selection, const Add& add) {
  auto accounts = newConn().OpenRecordset(selection, 2);
  for (; !accounts->Eof(); accounts->MoveNext()) {
    add(accountEntry(accounts->Field("ccode").displayText(), accounts->Field("ccode_name").displayText()));
  }
  accounts->Close();
}

void store(int cusSup, const DoubleList::Entries& entries, int yeMx) {
  for (const std::string& entry : entries) {
    newConn().ExecuteSql(sql::insertChoice(cusSup, accountOf(entry), yeMx));
  }
}

}  // namespace

void FrmYeMxSel::Load() {
  LocalizeForm(*this, resourcePrefix, "", "");
  CtlSelList1.clear();
  lblNote.Caption =
      GetResString("Orvo.GL.TqGLJZ.Orvo90.00001") + "\r\n\r\n" + GetResString("Orvo.GL.TqGLJZ.Orvo90.00002");
  eachAccount(sql::selectByBalance(run.m_strLastDB, run.m_strLastYear, cusSup()),
              [this](std::string entry) { CtlSelList1.addLeft(std::move(entry)); });
  eachAccount(sql::selectByDetail(run.m_strLastDB, run.m_strLastYear, cusSup()),
              [this](std::string entry) { CtlSelList1.addRight(std::move(entry)); });
  if (CtlSelList1.left().empty() && CtlSelList1.right().empty()) cmdRefresh_Click();
}

void FrmYeMxSel::visitCaptions(const CaptionVisitor& visit) {
  visit("", Caption);
  visit("Frame1", Frame1.Caption);
  visit("Label1", Label1.Caption);
  visit("Label2", Label2.Caption);
  visit("cmdRefresh", cmdRefresh.Caption);
  visit("cmdOK", cmdOK.Caption);
}

void FrmYeMxSel::cmdRefresh_Click() {
  CtlSelList1.clear();
  eachAccount(iType == customers ? sql::selectCustomerAccounts(run.m_strLastDB, run.m_strLastYear)
                                 : sql::selectSupplierAccounts(run.m_strLastDB, run.m_strLastYear),
              [this](std::string entry) { CtlSelList1.addLeft(std::move(entry)); });
}

void FrmYeMxSel::cmdOK_Click() {
  newConn().ExecuteSql(sql::deleteChoice(cusSup()));
  const DoubleList::Entries& left = CtlSelList1.left();
  const DoubleList::Entries& right = CtlSelList1.right();
  if (left.empty()) {
    iMode = allByDetail;  // without any account, too
  } else {
    iMode = right.empty() ? allByBalance : byAccount;
  }
  store(cusSup(), left, byBalance);
  store(cusSup(), right, byDetail);
  Hide();
}

bool FrmYeMxSel::Form_QueryUnload() {
  if (!visible()) return false;
  cmdOK_Click();
  return true;
}

std::uint8_t ChooseSelectionMode(std::uint8_t iType) {
  FrmYeMxSel dialog(iType);
  dialog.Load();
  dialog.Frame1.Caption =
      GetResString(iType == FrmYeMxSel::customers ? "Orvo.GL.TqGLJZ.00305" : "Orvo.GL.TqGLJZ.00306");
  dialog.ShowModal();
  return dialog.iMode;
}

}  // namespace gljz
