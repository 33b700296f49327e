#include "grid_view.h"

#include <algorithm>

#include "controls.h"
#include "dialogs/controls.h"
#include "wide_text.h"

namespace windows {
namespace {

constexpr int cellPadding = 14, widestColumn = 420;  // pixels at 96 dots per inch
// Rows that are looked at for the width of a column: those that a person sees first.
constexpr int sampledRows = 200;

int formatOf(gljz::Alignment alignment) {
  switch (alignment) {
    case gljz::Alignment::right:
      return LVCFMT_RIGHT;
    case gljz::Alignment::centred:
      return LVCFMT_CENTER;
    case gljz::Alignment::left:
      break;
  }
  return LVCFMT_LEFT;
}

void insertColumn(HWND list, int at, const std::string& title, int format, int width) {
  std::wstring text = wide(title);
  LVCOLUMNW column{};
  column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH;
  column.fmt = format;
  column.cx = width;
  column.pszText = text.data();
  SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&column));
}

}  // namespace

GridView::GridView(Controls& controls, const gljz::Grid& grid, int id) : controls_(controls), grid_(grid) {
  constexpr DWORD style = WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;
  list_ = controls_.add(WC_LISTVIEWW, "", style | (grid.borderStyle == 0 ? 0 : WS_BORDER), id);
  ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES | LVS_EX_DOUBLEBUFFER);
  showGrid();
}

void GridView::showGrid() {
  while (columns_ > 0) ListView_DeleteColumn(list_, --columns_);
  if (!grid_.rows.empty()) {
    const auto& head = grid_.rows.front();
    // The window system keeps the first column that it is given to the left; that one goes again.
    insertColumn(list_, 0, {}, LVCFMT_LEFT, 0);
    for (const std::string& title : head) {
      const auto index = static_cast<std::size_t>(columns_);
      const auto side = index < grid_.alignments.size() ? grid_.alignments[index] : gljz::Alignment::left;
      insertColumn(list_, columns_ + 1, title, formatOf(side), fittingWidth(columns_));
      ++columns_;
    }
    ListView_DeleteColumn(list_, 0);
  }
  ListView_SetItemCountEx(list_, rowCount(), LVSICF_NOSCROLL);
  if (rowCount() > 0) ListView_SetItemState(list_, 0, LVIS_FOCUSED, LVIS_FOCUSED);
}

int GridView::columnsWidth() const {
  int width = 0;
  for (int column = 0; column < columns_; ++column) width += ListView_GetColumnWidth(list_, column);
  return width;
}

int GridView::rowCount() const {
  return grid_.rows.empty() ? 0 : static_cast<int>(grid_.rows.size() - 1);
}

const std::string& GridView::cell(int row, int column) const {
  static const std::string none;
  const auto& cells = grid_.rows[static_cast<std::size_t>(row) + 1];
  return static_cast<std::size_t>(column) < cells.size() ? cells[static_cast<std::size_t>(column)] : none;
}

int GridView::fittingWidth(int column) const {
  const auto index = static_cast<std::size_t>(column);
  int widest = controls_.widthOf(wide(grid_.rows.front()[index]));
  for (int row = 0; row < std::min(rowCount(), sampledRows); ++row)
    widest = std::max(widest, controls_.widthOf(wide(cell(row, column))));
  const int least = index < grid_.columnWidths.size() ? controls_.pixelsOfTwips(grid_.columnWidths[index]) : 0;
  return std::max(least, std::min(widest + controls_.scaled(cellPadding), controls_.scaled(widestColumn)));
}

std::optional<LRESULT> GridView::notified(NMHDR& head) {
  if (head.hwndFrom != list_) return std::nullopt;
  switch (head.code) {
    case LVN_GETDISPINFOW:
      give(reinterpret_cast<NMLVDISPINFOW&>(head).item);
      return 0;
    case NM_CUSTOMDRAW:
      return draw(head);
    default:
      return std::nullopt;
  }
}

void GridView::give(LVITEMW& item) {
  if ((item.mask & LVIF_TEXT) == 0 || item.iItem < 0 || item.iItem >= rowCount()) return;
  lastGiven_ = (lastGiven_ + 1) % given_.size();
  given_[lastGiven_] = wide(cell(item.iItem, item.iSubItem));
  item.pszText = given_[lastGiven_].data();
}

// Every other row stands on the grid's shade.
LRESULT GridView::draw(NMHDR& head) const {
  auto& drawn = reinterpret_cast<NMLVCUSTOMDRAW&>(head);
  if (drawn.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawn.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || drawn.nmcd.dwItemSpec % 2 == 0) return CDRF_DODEFAULT;
  drawn.clrTextBk = grid_.shadeColour;
  return CDRF_NEWFONT;
}

}  // namespace windows
