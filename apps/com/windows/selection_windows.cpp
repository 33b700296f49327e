#include "selection_windows.h"

#include <algorithm>

#include "control_ids.h"
#include "host/messages.h"
#include "wide_text.h"

namespace windows {

SelectionWindow::SelectionWindow(const WindowContext& context, const gljz::Dialog& form, const Texts& texts,
                                 gljz::DoubleList& list)
    : ModalWindow(context, form, texts.caption, Frame::resizable),
      frame_(controls().add(L"BUTTON", texts.frame, BS_GROUPBOX, idFrame1)),
      lists_(controls(), list, texts.leftTitle, texts.rightTitle, context.words),
      note_(controls().addLabel(texts.note, texts.noteId)) {}

bool SelectionWindow::listSays(int id, int notification) {
  const auto move = lists_.click(id, notification);
  if (move) call(move);
  return move != nullptr;
}

bool SelectionWindow::listKey(HWND list, WORD key) {
  const auto move = lists_.key(list, key);
  if (move) call(move);
  return move != nullptr;
}

int SelectionWindow::around(int width) const {
  const Controls& c = controls();
  const int inFrame = c.lineHeight() + c.gap() + c.margin();
  return c.margin() + inFrame + c.gap() + c.heightOf(note_, width - 2 * c.margin()) + c.margin() + c.buttonHeight() +
         c.margin();
}

SIZE SelectionWindow::preferredSize() const {
  const SIZE smallest = smallestSize();
  const LONG width = std::max<LONG>(smallest.cx, controls().scaled(600));
  return {width, around(static_cast<int>(width)) + std::max<LONG>(lists_.smallestSize().cy, controls().scaled(240))};
}

SIZE SelectionWindow::smallestSize() const {
  const SIZE lists = lists_.smallestSize();
  const LONG width = lists.cx + 4 * controls().margin();
  return {width, around(static_cast<int>(width)) + lists.cy};
}

void SelectionWindow::arrange(int width, int height) {
  const Controls& c = controls();
  const int inner = width - 2 * c.margin(), closing = height - c.margin() - c.buttonHeight();
  const int noteHeight = c.heightOf(note_, inner), note = closing - c.margin() - noteHeight;
  const int top = c.margin(), frameHeight = note - c.gap() - top, head = c.lineHeight() + c.gap();
  place(frame_, c.margin(), top, inner, frameHeight);
  lists_.arrange(2 * c.margin(), top + head, inner - 2 * c.margin(), frameHeight - head - c.margin());
  place(note_, c.margin(), note, inner, noteHeight);
  if (leftButton_) placeButtons({leftButton_}, closing, c.margin());
  placeButtonsRight({rightButton_}, closing, width - c.margin());
}

DivisionWindow::DivisionWindow(const WindowContext& context, gljz::FrmYeMxSel& form)
    : SelectionWindow(context, form,
                      {form.Caption, form.Frame1.Caption, form.Label1.Caption, form.Label2.Caption,
                       form.lblNote.Caption, idLblNote},
                      form.CtlSelList1) {
  const HWND again = addButton(form.cmdRefresh, idCmdRefresh, [&form] { form.cmdRefresh_Click(); });
  addClosing(again, addButton(form.cmdOK, idCmdOk, [&form] { form.cmdOK_Click(); }));
  makeDefault(idCmdOk);
}

ClearingWindow::ClearingWindow(const WindowContext& context, gljz::FrmSyKmSel& form)
    : SelectionWindow(
          context, form,
          {form.Caption, form.Frame1.Caption, form.Label1.Caption, form.Label2.Caption, form.Label3.Caption, idLabel3},
          form.CtlSelList1) {
  addClosing(nullptr, addButton(form.cmdOK, idCmdOk, [&form] { form.cmdOK_Click(); }));
  makeDefault(idCmdOk);
}

// The form has no caption of its own.
QuestionWindow::QuestionWindow(const WindowContext& context, gljz::FrmTwo& form)
    : ModalWindow(context, form, context.words.text("Gljz.Host.Desktop.Title"), Frame::fixed) {
  image_ = controls().add(L"STATIC", "", SS_ICON, idImage1);
  SendMessageW(image_, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconW(nullptr, IDI_QUESTION)), 0);
  heading_ = controls().addLabel(form.Label1.Caption, idLabel1);
  note_ = controls().addLabel(form.lblNote.Caption, idLblNote, SS_NOTIFY);  // or it would have no tool tip
  controls().addTip(note_, form.lblNote.ToolTipText);
  first_ = addButton(form.Command1, idCommand1, [&form] { form.Command1_Click(); });
  second_ = addButton(form.Command2, idCommand2, [&form] { form.Command2_Click(); });
  makeDefault(idCommand1);
}

int QuestionWindow::textWidth() const {
  return std::max(controls().scaled(380), controls().widthOf(heading_));
}

SIZE QuestionWindow::preferredSize() const {
  const Controls& c = controls();
  const int icon = GetSystemMetrics(SM_CXICON);
  const int texts = c.lineHeight() + c.gap() + c.heightOf(note_, textWidth());
  return {3 * c.margin() + icon + textWidth(),
          3 * c.margin() + std::max(texts, GetSystemMetrics(SM_CYICON)) + c.buttonHeight()};
}

void QuestionWindow::arrange(int width, int height) {
  const Controls& c = controls();
  const int icon = GetSystemMetrics(SM_CXICON), x = 2 * c.margin() + icon, note = c.margin() + c.lineHeight() + c.gap();
  place(image_, c.margin(), c.margin(), icon, GetSystemMetrics(SM_CYICON));
  place(heading_, x, c.margin(), textWidth(), c.lineHeight());
  place(note_, x, note, textWidth(), c.heightOf(note_, textWidth()));
  placeButtonsRight({first_, second_}, height - c.margin() - c.buttonHeight(), width - c.margin());
}

}  // namespace windows
