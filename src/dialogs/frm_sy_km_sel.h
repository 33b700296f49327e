#pragma once
// frmSyKmSel: which profit-and-loss accounts are cleared in the new year. The choice is the dialog's right list, and
// lives as long as the dialog does.

#include <string>
#include <string_view>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"
#include "dialogs/double_list.h"

namespace gljz {

class FrmSyKmSel : public Dialog {
public:
  std::string_view Name() const override { return "frmSyKmSel"; }
  // Fills the left list from the new year's opening balances, of whatever year: what ClearSyKm finds when nobody has
  // chosen. Failures of the statement go to the caller.
  void Load() override;
  void visitCaptions(const CaptionVisitor& visit) override;

  void cmdOK_Click() { Hide(); }

  std::string Caption = "总账系统";
  Label Frame1{"请选择"};
  Label Label1{"余额不为零的损益科目："};
  Label Label2{"需要清零的损益科目："};
  Label Label3{"    此操作自动将选中损益科目及下级科目借贷方金额及余额在新的会计年度全部清零。"};
  Button cmdOK{"确定"};
  DoubleList CtlSelList1;
};

inline DefaultInstance<FrmSyKmSel> frmSyKmSel;

// Offers the accounts of class "损益" that have a balance at the end of the closing year, and lets the operator choose.
// Without any the dialog is shown as it stands: as its load event or an earlier choice left it.
void GetSyKmList();

}  // namespace gljz
