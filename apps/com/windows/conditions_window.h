#pragma once
// frmTranCond on the screen.

#include "dialogs/frm_tran_cond.h"
#include "modal_window.h"

namespace windows {

class ConditionsWindow final : public ModalWindow {
public:
  ConditionsWindow(const WindowContext& context, gljz::FrmTranCond& form);

protected:
  void refresh() override;
  SIZE preferredSize() const override;
  SIZE smallestSize() const override;
  void arrange(int width, int height) override;
  HWND firstFocus() const override { return list_; }
  void opened() override;
  std::optional<LRESULT> notified(NMHDR& head) override;

private:
  void fill();
  void fitTextColumn();
  int footHeight() const;
  LRESULT draw(NMHDR& head) const;

  gljz::FrmTranCond& form_;
  HWND list_, customers_, suppliers_, cleared_, ok_, cancel_;
  int widestText_ = 0;
  bool refreshing_ = false;
};

}  // namespace windows
