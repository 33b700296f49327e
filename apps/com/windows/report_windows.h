#pragma once
// frmJZBG and frmNBalance on the screen.

#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_nbalance.h"
#include "grid_view.h"
#include "modal_window.h"

namespace windows {

// A grid that takes the room that there is, buttons below it. Nothing answers a failure in a button of a closing
// dialog, and nothing of the run depends on it: it is told, and the dialog stays.
class GridWindow : public ModalWindow {
protected:
  GridWindow(const WindowContext& context, const gljz::Dialog& form, const std::string& caption,
             const gljz::Grid& grid);
  GridView& view() { return view_; }
  void setButtons(HWND first, HWND second, HWND third) { buttons_ = {first, second, third}; }

  void failed(std::exception_ptr failure) override;
  SIZE preferredSize() const override;
  SIZE smallestSize() const override;
  void arrange(int width, int height) override;
  HWND firstFocus() const override { return buttons_[2]; }
  std::optional<LRESULT> notified(NMHDR& head) override { return view_.notified(head); }
  virtual int headHeight() const { return 0; }
  // Height of a grid that shows some rows, without those of a report.
  virtual SIZE usualGrid() const = 0;

private:
  GridView view_;
  std::array<HWND, 3> buttons_{};
};

class ReportWindow final : public GridWindow {
public:
  ReportWindow(const WindowContext& context, gljz::FrmJZBG& form);

protected:
  void arrange(int width, int height) override;
  int headHeight() const override { return controls().lineHeight() + controls().gap(); }
  SIZE usualGrid() const override { return {controls().scaled(900), controls().scaled(460)}; }

private:
  std::array<HWND, 4> counts_;  // Label1 to Label4
};

class LeftOutWindow final : public GridWindow {
public:
  LeftOutWindow(const WindowContext& context, gljz::FrmNBalance& form);

protected:
  SIZE usualGrid() const override { return {controls().scaled(600), controls().scaled(340)}; }
};

}  // namespace windows
