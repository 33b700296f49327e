#pragma once
// frmTwo: a question with two answers. Nothing in this system opens it.

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"

namespace gljz {

class FrmTwo : public Dialog {
public:
  std::string_view Name() const override { return "frmTwo"; }
  void Load() override;
  void visitCaptions(const CaptionVisitor& visit) override;

  void Command1_Click();
  void Command2_Click();

  // Captions of Label1 and the buttons are the language resources' own.
  Label lblNote;
  Label Label1;
  Button Command1;
  Button Command2;
  std::uint8_t answer = 0;  // 1 Command1, 2 Command2

private:
  void choose(std::uint8_t which);
};

inline DefaultInstance<FrmTwo> frmTwo;

}  // namespace gljz
