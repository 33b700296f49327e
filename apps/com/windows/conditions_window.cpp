#include "conditions_window.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "control_ids.h"
#include "wide_text.h"

namespace windows {

using gljz::FrmTranCond;

namespace {

enum Column { checkColumn, textColumn, partnerColumn };

bool isChecked(HWND list, int line) {
  return ListView_GetCheckState(list, line) != 0;
}

}  // namespace

ConditionsWindow::ConditionsWindow(const WindowContext& context, FrmTranCond& form)
    : ModalWindow(context, form, form.Caption, Frame::resizable), form_(form) {
  list_ =
      controls().add(WC_LISTVIEWW, "", WS_TABSTOP | LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                     idLvCond, WS_EX_CLIENTEDGE);
  customers_ = addButton(form.cmdCustomerTran, idCmdCustomerTran, [this] { form_.cmdCustomerTran_Click(); });
  suppliers_ = addButton(form.cmdSupTran, idCmdSupTran, [this] { form_.cmdSupTran_Click(); });
  cleared_ = addButton(form.cmdSyKmSel, idCmdSyKmSel, [this] { form_.cmdSyKmSel_Click(); });
  ok_ = addButton(form.cmdOk, idCmdOk, [this] { form_.cmdOk_Click(); });
  cancel_ = addButton(form.cmdCancel, idCmdCancel, [this] { form_.cmdCancel_Click(); });
  makeDefault(idCmdOk);
  makeCancel(idCmdCancel);
  fill();
}

// The lines stay as long as the window does; what changes are their ticks.
void ConditionsWindow::fill() {
  refreshing_ = true;
  ListView_SetExtendedListViewStyle(list_, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  for (const int twips : {FrmTranCond::checkBoxWidth, FrmTranCond::textWidth, FrmTranCond::partnerWidth}) {
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = controls().pixelsOfTwips(twips);
    SendMessageW(list_, LVM_INSERTCOLUMNW, partnerColumn, reinterpret_cast<LPARAM>(&column));
  }
  const auto setCell = [this](int line, int column, std::wstring text) {
    LVITEMW cell{};
    cell.iSubItem = column;
    cell.pszText = text.data();
    SendMessageW(list_, LVM_SETITEMTEXTW, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&cell));
  };
  for (std::size_t i = 0; i < form_.lvCond.size(); ++i) {
    const int line = static_cast<int>(i);
    LVITEMW item{};
    item.iItem = line;
    SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    const std::wstring text = wide(form_.lvCond[i].text);
    setCell(line, textColumn, text);
    setCell(line, partnerColumn, wide(form_.lvCond[i].partner));
    widestText_ = std::max(widestText_, controls().widthOf(text));
  }
  ListView_SetItemState(list_, 0, LVIS_FOCUSED, LVIS_FOCUSED);
  refreshing_ = false;
}

// The list was filled before it had a size, and may have scrolled for that.
void ConditionsWindow::opened() {
  ListView_EnsureVisible(list_, 0, FALSE);
  fitTextColumn();
}

// A tick may have changed its partner's.
void ConditionsWindow::refresh() {
  refreshing_ = true;
  for (std::size_t i = 0; i < form_.lvCond.size(); ++i) {
    const int line = static_cast<int>(i);
    if (isChecked(list_, line) != form_.lvCond[i].checked) ListView_SetCheckState(list_, line, form_.lvCond[i].checked);
  }
  refreshing_ = false;
  showState(customers_, form_.cmdCustomerTran);
  showState(suppliers_, form_.cmdSupTran);
  showState(cleared_, form_.cmdSyKmSel);
}

std::optional<LRESULT> ConditionsWindow::notified(NMHDR& head) {
  if (head.hwndFrom != list_) return std::nullopt;
  if (head.code == NM_CUSTOMDRAW) return draw(head);
  if (head.code != LVN_ITEMCHANGED || refreshing_) return std::nullopt;
  const auto& change = reinterpret_cast<const NMLISTVIEW&>(head);
  if ((change.uChanged & LVIF_STATE) == 0 || change.iItem < 0) return std::nullopt;
  const auto index = static_cast<std::size_t>(change.iItem);
  const bool checked = isChecked(list_, change.iItem);
  if (index < form_.lvCond.size() && checked != form_.lvCond[index].checked) call([&] { form_.check(index, checked); });
  return 0;
}

LRESULT ConditionsWindow::draw(NMHDR& head) const {
  auto& drawn = reinterpret_cast<NMLVCUSTOMDRAW&>(head);
  if (drawn.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawn.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || drawn.nmcd.dwItemSpec >= form_.lvCond.size())
    return CDRF_DODEFAULT;
  drawn.clrTextBk = form_.lvCond[drawn.nmcd.dwItemSpec].backColour;
  return CDRF_NEWFONT;
}

int ConditionsWindow::footHeight() const {
  return 2 * controls().gap() + 2 * controls().buttonHeight() + controls().margin();
}

SIZE ConditionsWindow::preferredSize() const {
  const Controls& c = controls();
  const int edges = 2 * c.margin() + GetSystemMetrics(SM_CXVSCROLL) + 2 * GetSystemMetrics(SM_CXEDGE);
  const int wanted = edges + c.pixelsOfTwips(FrmTranCond::checkBoxWidth) + widestText_ + c.scaled(24);
  RECT line{};
  if (!ListView_GetItemRect(list_, 0, &line, LVIR_BOUNDS)) line.bottom = c.lineHeight();
  const int lines = static_cast<int>((line.bottom - line.top) * static_cast<LONG>(form_.lvCond.size())) +
                    2 * GetSystemMetrics(SM_CYEDGE) + c.scaled(4);
  const SIZE smallest = smallestSize();
  return {std::clamp<LONG>(wanted, smallest.cx, std::max<LONG>(smallest.cx, c.scaled(960))),
          std::clamp<LONG>(lines + c.margin() + footHeight(), smallest.cy, c.scaled(640))};
}

SIZE ConditionsWindow::smallestSize() const {
  const Controls& c = controls();
  const int buttons = 2 * c.margin() + buttonsWidth({customers_, suppliers_, cleared_});
  return {std::max(buttons, c.scaled(420)), c.scaled(280)};
}

// As wide as the form tells, less in a window without that room, but never less than its texts.
void ConditionsWindow::fitTextColumn() {
  RECT inner{};
  GetClientRect(list_, &inner);
  const int told = controls().pixelsOfTwips(FrmTranCond::textWidth);
  const int others = ListView_GetColumnWidth(list_, checkColumn) + ListView_GetColumnWidth(list_, partnerColumn);
  const int room = static_cast<int>(inner.right) - others, least = std::min(widestText_ + controls().scaled(16), told);
  ListView_SetColumnWidth(list_, textColumn, std::clamp(room, least, told));
}

void ConditionsWindow::arrange(int width, int height) {
  const Controls& c = controls();
  const int closing = height - c.margin() - c.buttonHeight(), selections = closing - c.gap() - c.buttonHeight();
  place(list_, c.margin(), c.margin(), width - 2 * c.margin(), selections - c.gap() - c.margin());
  fitTextColumn();
  placeButtons({customers_, suppliers_, cleared_}, selections, c.margin());
  placeButtonsRight({ok_, cancel_}, closing, width - c.margin());
}

}  // namespace windows
