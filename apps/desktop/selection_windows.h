#pragma once
// frmYeMxSel and frmSyKmSel on the screen, and frmTwo.

#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_two.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "modal_dialog.h"

namespace desktop {

class DoubleListView;
class Texts;

class DivisionWindow final : public ModalDialog {
public:
  DivisionWindow(QWidget* parent, gljz::FrmYeMxSel& form, const Texts& texts);

protected:
  void refresh() override;
  void closeBox() override;
  // The form has no cancelling button, and its close box confirms and stores: the key that stands for giving up
  // everywhere else does neither.
  void escape() override {}

private:
  gljz::FrmYeMxSel& form_;
  DoubleListView* lists_;
};

class ClearingWindow final : public ModalDialog {
public:
  ClearingWindow(QWidget* parent, gljz::FrmSyKmSel& form, const Texts& texts);

protected:
  void closeBox() override;

private:
  gljz::FrmSyKmSel& form_;
};

class QuestionWindow final : public ModalDialog {
public:
  QuestionWindow(QWidget* parent, gljz::FrmTwo& form, const Texts& texts);

protected:
  void closeBox() override;

private:
  gljz::FrmTwo& form_;
};

}  // namespace desktop
