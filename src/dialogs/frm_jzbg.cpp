#include "dialogs/frm_jzbg.h"

#include "core/mdu_jz.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/report_print.h"

namespace gljz {

void FrmJZBG::Load() {
  LocalizeForm(*this, resourcePrefix, "", "");
  Grid1.shadeColour = platform::rgb(247, 237, 236);
  Grid1.borderStyle = 0;
}

void FrmJZBG::visitCaptions(const CaptionVisitor& visit) {
  visit("", Caption);
  visit("Label1", Label1.Caption);
  visit("Label3", Label3.Caption);
  visit("Command1", Command1.Caption);
  visit("command2", command2.Caption);
  visit("Command3", Command3.Caption);
}

void FrmJZBG::Command1_Click() {
  FrmNBalance& notCarried = frmNBalance();
  notCarried.Caption = GetResString("Orvo.GL.TqGLJZ.00011");
  notCarried.Command1.Visible = false;  // there is nothing to go on with
  notCarried.Command2.Caption = GetResString("Orvo.GL.TqGLJZ.00012");
  notCarried.ShowModal();
}

void FrmJZBG::command2_Click() {
  printGrid(
      *this, Grid1,
      {GetResString("Orvo.GL.TqGLJZ.00013", printedYears()),
       GetResString("Orvo.GL.TqGLJZ.00016", {Label2.Caption, Label4.Caption}), GetResString("Orvo.GL.TqGLJZ.00018")});
}

void FrmJZBG::Command3_Click() {
  frmJZBG.unload();
}

}  // namespace gljz
