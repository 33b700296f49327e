#include "dialogs/frm_two.h"

#include "core/mdu_jz.h"

namespace gljz {

void FrmTwo::Load() {
  LocalizeForm(*this, resourcePrefix, "", "");
  lblNote.Caption =
      GetResString("Orvo.GL.TqGLJZ.Orvo90.00001") + "\r\n\r\n" + GetResString("Orvo.GL.TqGLJZ.Orvo90.00002");
  lblNote.ToolTipText = lblNote.Caption;
}

void FrmTwo::visitCaptions(const CaptionVisitor& visit) {
  visit("Label1", Label1.Caption);
  visit("Command1", Command1.Caption);
  visit("Command2", Command2.Caption);
}

void FrmTwo::Command1_Click() {
  choose(1);
}

void FrmTwo::Command2_Click() {
  choose(2);
}

void FrmTwo::choose(std::uint8_t which) {
  answer = which;
  Hide();
}

}  // namespace gljz
