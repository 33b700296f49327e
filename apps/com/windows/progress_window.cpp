#include "progress_window.h"

#include <algorithm>

#include "control_ids.h"

namespace windows {
namespace {

constexpr ULONGLONG repaintEvery = 40;  // milliseconds
constexpr UINT_PTR timerId = 1;

}  // namespace

ProgressWindow::ProgressWindow(const WindowContext& context, gljz::FrmJZSN& form)
    : ModalWindow(context, form, form.Caption(), Frame::fixed), form_(form) {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const int step = static_cast<int>(i);
    lines_[i] = {controls().addLabel(form.Label1(i).Caption, idLabel1 + step),
                 controls().addLabel(form.Label2(i), idLabel2 + step, SS_CENTER), form.Label1(i).ForeColor};
  }
  caption_ = controls().addLabel(form.Label3(), idLabel3, SS_ENDELLIPSIS);
  first_ = addButton(form.Command1(), idCommand1, [this] { form_.Command1_Click(); });
  second_ = addButton(form.Command2(), idCommand2, [this] { form_.Command2_Click(); });
  EnableMenuItem(GetSystemMenu(handle(), FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
}

void ProgressWindow::opened() {
  painted_ = GetTickCount64();
  SetTimer(handle(), timerId, gljz::FrmJZSN::Timer1_Interval, nullptr);
}

// The form's timer stops itself when it fires; the window's goes with it.
void ProgressWindow::timer() {
  if (!form_.Timer1_Enabled()) return;
  KillTimer(handle(), timerId);
  call([this] { form_.Timer1_Timer(); });
}

void ProgressWindow::changed() {
  dirty_ = true;
  ModalWindow::changed();
}

void ProgressWindow::doEvents() {
  if (passing_ || GetTickCount64() - painted_ < repaintEvery) return;
  passing_ = true;  // an event that lets events through has been let through itself
  paint();
  letMessagesRun(handle());
  painted_ = GetTickCount64();
  passing_ = false;
}

void ProgressWindow::paint() {
  if (dirty_) refresh();
  RedrawWindow(handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void ProgressWindow::refresh() {
  dirty_ = false;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const gljz::Label& label = form_.Label1(i);
    setText(lines_[i].text, label.Caption);
    setText(lines_[i].mark, form_.Label2(i));
    if (lines_[i].ink == label.ForeColor) continue;
    lines_[i].ink = label.ForeColor;
    InvalidateRect(lines_[i].text, nullptr, TRUE);
  }
  setText(caption_, form_.Label3());
}

std::optional<COLORREF> ProgressWindow::inkOf(int id) const {
  const auto step = static_cast<std::size_t>(id - idLabel1);
  if (id < idLabel1 || step >= lines_.size()) return std::nullopt;
  return lines_[step].ink;
}

SIZE ProgressWindow::preferredSize() const {
  const Controls& c = controls();
  int widest = c.scaled(380);
  for (const Line& line : lines_) widest = std::max(widest, c.widthOf(line.text));
  const int rows = static_cast<int>(lines_.size()) * (c.lineHeight() + c.gap());
  return {2 * c.margin() + widest + c.gap() + c.scaled(32),
          3 * c.margin() + rows + c.lineHeight() + c.gap() + c.buttonHeight()};
}

void ProgressWindow::arrange(int width, int height) {
  const Controls& c = controls();
  const int mark = c.scaled(32), text = width - 2 * c.margin() - c.gap() - mark;
  int y = c.margin();
  for (const Line& line : lines_) {
    place(line.text, c.margin(), y, text, c.lineHeight());
    place(line.mark, c.margin() + text + c.gap(), y, mark, c.lineHeight());
    y += c.lineHeight() + c.gap();
  }
  place(caption_, c.margin(), y + c.gap(), width - 2 * c.margin(), c.lineHeight());
  placeButtonsRight({first_, second_}, height - c.margin() - c.buttonHeight(), width - c.margin());
}

}  // namespace windows
