#pragma once
// frmJZBG, "结转报告": the closing report. CheckOpeningBalance fills its grid and its two counts and shows it.

#include <string>
#include <string_view>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"

namespace gljz {

class FrmJZBG : public Dialog {
public:
  std::string_view Name() const override { return "frmJZBG"; }
  void Load() override;
  void visitCaptions(const CaptionVisitor& visit) override;

  void Command1_Click();  // shows the records without a counterpart
  void command2_Click();  // prints the report; failures go to the caller
  void Command3_Click();  // closes the dialog

  std::string Caption = "结转报告";
  Grid Grid1;
  Label Label1{"正确结转科目数："};
  Label Label2;  // number of right accounts; empty until they have been counted
  Label Label3{"错误结转科目数："};
  Label Label4;  // number of wrong accounts
  Button Command1{"无对应记录"};
  Button command2{"打印"};
  Button Command3{"确认"};
};

inline DefaultInstance<FrmJZBG> frmJZBG;

}  // namespace gljz
