#pragma once
// GridView: a table of a GridModel, and what a person may do with any of them: select, sort, copy, take along.

#include <QTableView>

#include "grid_model.h"

namespace desktop {

class Texts;

class GridView final : public QTableView {
public:
  GridView(QWidget* parent, const Texts& texts);

  GridModel& grid() { return model_; }
  // The grid as a dialog has it: widths, sides, shade. A column is as wide as it is told at least, and wider where its
  // head or its cells need it. codes: columns whose digits are no amounts.
  void showGrid(const gljz::Grid& grid, bool continued, std::vector<std::size_t> codes = {0});
  void showRows(GridModel::Source source);
  // Said in the middle of a view without rows.
  void setEmptyText(const QString& text) { emptyText_ = text; }

  // Width of the whole view without scrolling to the side.
  int fullWidth() const;
  // Takes the room that a view of this width lacks from its widest columns of texts, which then end in an ellipsis and
  // say the rest in a tool tip. Numbers keep their room, and so do the heads.
  void fitInto(int width);
  // As a click on the head of the current column: up, down, as the rows came.
  void sortByCurrentColumn();

  // The selected rows, or all when none is: cells with tabs between, the header row first.
  void copy() const;
  // Asks for a file and writes what the view shows; tells the person when that fails. title: of the page.
  void exportRows(const QString& title, const QString& fileName);

protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool viewportEvent(QEvent* event) override;

private:
  void fitColumns(const std::vector<int>& leastWidths);
  int headWidth(int column) const;

  const Texts& texts_;
  GridModel model_;
  QString emptyText_;
};

}  // namespace desktop
