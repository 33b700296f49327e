#pragma once
// GridView: a dialog's grid as a list view that asks for its rows as it shows them, so that a hundred thousand of them
// are there at once.

#include <windows.h>
// after it
#include <commctrl.h>

#include <array>
#include <optional>
#include <string>

namespace gljz {
struct Grid;
}  // namespace gljz

namespace windows {

class Controls;

class GridView {
public:
  // grid outlives the view.
  GridView(Controls& controls, const gljz::Grid& grid, int id);

  HWND handle() const { return list_; }
  // Columns and number of rows, when the grid has been laid out or filled anew. A column is as wide as the grid tells
  // at least, and wider where its head or the rows that a person sees first need it.
  void showGrid();
  int columnsWidth() const;  // pixels

  // The answer to a message of the list; nothing for another's or one that needs none.
  std::optional<LRESULT> notified(NMHDR& head);

private:
  int rowCount() const;  // without the header row
  const std::string& cell(int row, int column) const;
  int fittingWidth(int column) const;
  void give(LVITEMW& item);
  LRESULT draw(NMHDR& head) const;

  Controls& controls_;
  const gljz::Grid& grid_;
  HWND list_;
  int columns_ = 0;
  // Texts that the list has been given: it may look at them until it has asked twice more.
  std::array<std::wstring, 4> given_;
  std::size_t lastGiven_ = 0;
};

}  // namespace windows
