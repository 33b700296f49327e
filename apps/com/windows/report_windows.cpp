#include "report_windows.h"

#include <algorithm>

#include "ask.h"
#include "control_ids.h"
#include "wide_text.h"

namespace windows {

GridWindow::GridWindow(const WindowContext& context, const gljz::Dialog& form, const std::string& caption,
                       const gljz::Grid& grid)
    : ModalWindow(context, form, caption, Frame::resizable), view_(controls(), grid, idGrid1) {}

void GridWindow::failed(std::exception_ptr failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& e) {
    context().ask.complain(handle(), narrow(textOf(handle())), e.what());
  }
}

SIZE GridWindow::smallestSize() const {
  const Controls& c = controls();
  const int buttons = buttonsWidth({buttons_[0], buttons_[1], buttons_[2]});
  return {std::max(buttons + 2 * c.margin(), c.scaled(400)), c.scaled(240)};
}

SIZE GridWindow::preferredSize() const {
  const Controls& c = controls();
  const SIZE usual = usualGrid(), smallest = smallestSize();
  const int columns = view_.columnsWidth() + GetSystemMetrics(SM_CXVSCROLL) + 2 * GetSystemMetrics(SM_CXEDGE);
  const int width = std::clamp(columns, static_cast<int>(usual.cx) / 2, c.scaled(1100)) + 2 * c.margin();
  return {std::max<LONG>(width, smallest.cx), headHeight() + usual.cy + 3 * c.margin() + c.buttonHeight()};
}

void GridWindow::arrange(int width, int height) {
  const Controls& c = controls();
  const int buttons = height - c.margin() - c.buttonHeight(), top = c.margin() + headHeight();
  place(view_.handle(), c.margin(), top, width - 2 * c.margin(), buttons - c.margin() - top);
  placeButtonsRight({buttons_[0], buttons_[1], buttons_[2]}, buttons, width - c.margin());
}

ReportWindow::ReportWindow(const WindowContext& context, gljz::FrmJZBG& form)
    : GridWindow(context, form, form.Caption, form.Grid1),
      counts_{controls().addLabel(form.Label1.Caption, idLabel1), controls().addLabel(form.Label2.Caption, idLabel2),
              controls().addLabel(form.Label3.Caption, idLabel3), controls().addLabel(form.Label4.Caption, idLabel4)} {
  const HWND leftOut = addButton(form.Command1, idCommand1, [&form] { form.Command1_Click(); });
  const HWND print = addButton(form.command2, idCommand2, [&form] { form.command2_Click(); });
  setButtons(leftOut, print, addButton(form.Command3, idCommand3, [&form] { form.Command3_Click(); }));
  makeDefault(idCommand3);
}

void ReportWindow::arrange(int width, int height) {
  const Controls& c = controls();
  int x = c.margin();
  for (std::size_t i = 0; i < counts_.size(); ++i) {
    const int text = c.widthOf(counts_[i]);
    place(counts_[i], x, c.margin(), text, c.lineHeight());
    x += text + (i % 2 == 0 ? c.scaled(4) : c.scaled(32));
  }
  GridWindow::arrange(width, height);
}

LeftOutWindow::LeftOutWindow(const WindowContext& context, gljz::FrmNBalance& form)
    : GridWindow(context, form, form.Caption, form.Grid1) {
  const HWND goOn = addButton(form.Command1, idCommand1, [&form] { form.Command1_Click(); });
  const HWND print = addButton(form.Command3, idCommand3, [&form] { form.Command3_Click(); });
  setButtons(goOn, print, addButton(form.Command2, idCommand2, [&form] { form.Command2_Click(); }));
  makeDefault(idCommand2);
  makeCancel(idCommand2);
}

}  // namespace windows
