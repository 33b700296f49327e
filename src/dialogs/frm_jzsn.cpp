#include "dialogs/frm_jzsn.h"

#include "core/exec_jz.h"
#include "core/mdu_jz.h"

namespace gljz {

FrmJZSN::FrmJZSN()
    : label1_{{{"结转上年之前的检查..."},
               {"结转科目总账..."},
               {"结转辅助总账..."},
               {"结转明细账..."},
               {"结转未核销银行账..."},
               {"结转银行对账单..."},
               {"结转支票登记簿..."},
               {"结转其它表..."}}} {}

void FrmJZSN::Load() {
  LocalizeForm(*this, resourcePrefix, "", "");
  timer1Enabled_ = true;
}

void FrmJZSN::visitCaptions(const CaptionVisitor& visit) {
  visit("", caption_);
  for (std::size_t i = 0; i < stepCount; ++i) visit("Label1(" + std::to_string(i) + ")", label1_[i].Caption);
  visit("Label3", label3_);
  visit("Command1", command1_.Caption);
  visit("Command2", command2_.Caption);
}

void FrmJZSN::Timer1_Timer() {
  timer1Enabled_ = false;  // or the event would come again during the run
  ExecJZ();
  frmJZSN.unload();
}

void FrmJZSN::colourStep(std::size_t step, platform::Colour colour) {
  label1_.at(step).ForeColor = colour;
  changed();
}

void FrmJZSN::markStep(std::size_t step) {
  label2_.at(step) = "Y";
  changed();
}

void FrmJZSN::setLabel3(const std::string& text) {
  label3_ = text;
  changed();
}

void FrmJZSN::setMousePointer(int shape) {
  mousePointer_ = shape;
  changed();
}

}  // namespace gljz
