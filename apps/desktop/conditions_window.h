#pragma once
// frmTranCond on the screen.

#include "dialogs/frm_tran_cond.h"
#include "modal_dialog.h"

class QListWidget;

namespace desktop {

class ConditionsWindow final : public ModalDialog {
public:
  ConditionsWindow(QWidget* parent, gljz::FrmTranCond& form);

  bool confirmed() const { return confirmed_; }  // not cancelled

protected:
  void refresh() override;
  void closeBox() override;

private:
  gljz::FrmTranCond& form_;
  QListWidget* list_;
  QPushButton *customers_, *suppliers_, *cleared_, *ok_;
  bool confirmed_ = false;
};

}  // namespace desktop
