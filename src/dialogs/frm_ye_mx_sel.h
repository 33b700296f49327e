#pragma once
// frmYeMxSel: divides the customer or supplier accounts of the closing year into those that are carried by balance
// (left) and those carried by detail (right). The choice is stored in GL_YeMxSel of the new year.

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"
#include "dialogs/double_list.h"

namespace gljz {

class FrmYeMxSel : public Dialog {
public:
  static constexpr std::uint8_t customers = 1, suppliers = 2;
  // iMode
  static constexpr std::uint8_t allByBalance = 1;  // only the left list has entries
  static constexpr std::uint8_t allByDetail = 2;   // only the right list has entries, or neither
  static constexpr std::uint8_t byAccount = 3;     // both have: GL_YeMxSel decides

  // customers; anything else means suppliers
  explicit FrmYeMxSel(std::uint8_t type) : iType(type) {}
  std::string_view Name() const override { return "frmYeMxSel"; }
  // Shows the stored choice, or all accounts by balance when there is none. Failures of the statements, here and below,
  // go to the caller.
  void Load() override;
  void visitCaptions(const CaptionVisitor& visit) override;

  void cmdRefresh_Click();  // all accounts of the kind, by balance
  void cmdOK_Click();       // stores the choice, decides iMode, hides the dialog
  // The window's close box, while the dialog is visible, acts as OK. True: the close is cancelled, the dialog is hidden
  // and lives on.
  bool Form_QueryUnload();

  std::string Caption = "总账系统";
  Label Frame1{"请选择"};
  Label Label1{"按余额结转科目："};
  Label Label2{"按明细结转科目："};
  Label lblNote;
  Button cmdRefresh{"重选科目"};
  Button cmdOK{"确定"};
  DoubleList CtlSelList1;

  std::uint8_t iType;      // input
  std::uint8_t iMode = 0;  // output of cmdOK_Click

private:
  int cusSup() const { return iType == customers ? customers : suppliers; }
};

// Lets the operator choose and returns how the kind is carried (iMode).
std::uint8_t ChooseSelectionMode(std::uint8_t iType);

}  // namespace gljz
