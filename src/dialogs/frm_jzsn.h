#pragma once
// frmJZSN, "结转上年余额": the list of steps, a moving caption, and the timer that runs the carry-forward.

#include <array>
#include <string>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"

namespace gljz {

class FrmJZSN : public Dialog {
public:
  static constexpr std::size_t stepCount = 8;

  FrmJZSN();
  std::string_view Name() const override { return "frmJZSN"; }
  void Load() override;
  void visitCaptions(const CaptionVisitor& visit) override;

  // Runs ExecJZ once, then unloads the form, which ends the modal display. A failure leaves the form loaded.
  void Timer1_Timer();
  // The buttons are there and do nothing: nothing can stop a run from the form.
  void Command1_Click() {}
  void Command2_Click() {}

  const std::string& Caption() const { return caption_; }
  const Label& Label1(std::size_t step) const { return label1_.at(step); }        // step texts
  const std::string& Label2(std::size_t step) const { return label2_.at(step); }  // step marks, "" or "Y"
  const std::string& Label3() const { return label3_; }                           // moving caption
  const Button& Command1() const { return command1_; }
  const Button& Command2() const { return command2_; }
  int MousePointer() const { return mousePointer_; }  // 0 default, 11 hourglass
  static constexpr int Timer1_Interval = 10;          // milliseconds
  bool Timer1_Enabled() const { return timer1Enabled_; }

  void colourStep(std::size_t step, platform::Colour colour);
  void markStep(std::size_t step);
  void setLabel3(const std::string& text);
  void setMousePointer(int shape);
  void enableTimer1() { timer1Enabled_ = true; }

private:
  std::string caption_ = "结转上年余额";
  std::array<Label, stepCount> label1_;
  std::array<std::string, stepCount> label2_;
  std::string label3_ = "正在结转......";
  Button command1_{"结转"};
  Button command2_{"退出"};
  int mousePointer_ = 0;
  bool timer1Enabled_ = false;
};

inline DefaultInstance<FrmJZSN> frmJZSN;

}  // namespace gljz
