#pragma once
// frmNBalance, "不平衡信息": the rows that could not be carried. The stages fill it over the whole run and never show
// it; the closing report does.

#include <string>
#include <string_view>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"

namespace gljz {

class FrmNBalance : public Dialog {
public:
  std::string_view Name() const override { return "frmNBalance"; }
  void Load() override;
  void visitCaptions(const CaptionVisitor& visit) override;

  void Command1_Click();  // go on
  void Command2_Click();  // give up
  void Command3_Click();  // prints the grid when it has a row below its header; failures go to the caller
  // The window's close box, while the dialog is visible, acts as giving up. True: the close is cancelled, the dialog is
  // hidden and lives on.
  bool Form_QueryUnload();

  // Clears the grid to the header row of a kind (4, 6 or 7 columns). Any other kind does nothing.
  void layOut(int kind);
  void addRow(std::string_view text);  // cells separated by tabs

  std::string Caption = "不平衡信息";
  Grid Grid1;
  Button Command1{"继续"};
  Button Command2{"放弃"};
  Button Command3{"打印"};
  bool continueChosen = false;  // the dialog's result
};

inline DefaultInstance<FrmNBalance> frmNBalance;

}  // namespace gljz
