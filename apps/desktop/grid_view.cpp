#include "grid_view.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <set>

#include "export_rows.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

constexpr int cellPadding = 16, widestColumn = 420;  // pixels
// Rows that are looked at for the width of a column: those that a person sees first.
constexpr int sampledRows = 200;

}  // namespace

GridView::GridView(QWidget* parent, const Texts& texts) : QTableView(parent), texts_(texts) {
  setModel(&model_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setShowGrid(true);
  setGridStyle(Qt::SolidLine);
  setWordWrap(false);
  setTabKeyNavigation(false);  // Tab leaves the table
  setHorizontalScrollMode(ScrollPerPixel);
  setCornerButtonEnabled(false);
  setStyleSheet("QTableView { gridline-color: #e6e0e0; }");
  verticalHeader()->hide();
  // One height for all rows: none has to be measured.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSortIndicatorClearable(true);  // the third click: as the rows came
  horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(true);
}

void GridView::showGrid(const gljz::Grid& grid, bool continued) {
  QPalette shaded = palette();
  shaded.setColor(QPalette::AlternateBase, colour(grid.shadeColour));
  setPalette(shaded);
  setFrameShape(grid.borderStyle == 0 ? NoFrame : StyledPanel);
  model_.setGrid({&grid.rows, grid.alignments, continued});
  horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  std::vector<int> least;
  for (const int width : grid.columnWidths) least.push_back(pixelsOfTwips(width, *this));
  fitColumns(least);
}

void GridView::showRows(GridModel::Source source) {
  model_.setGrid(std::move(source));
  horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  fitColumns({});
}

void GridView::fitColumns(const std::vector<int>& leastWidths) {
  // A number at the far edge would stand apart from its row.
  const int last = model_.columnCount() - 1;
  const auto side = Qt::Alignment(model_.headerData(last, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
  horizontalHeader()->setStretchLastSection(side & Qt::AlignLeft);
  const int rows = std::min(model_.rowCount(), sampledRows);
  QFont bold = font();
  bold.setBold(true);
  for (int column = 0; column < model_.columnCount(); ++column) {
    const auto index = static_cast<std::size_t>(column);
    constexpr int sortArrow = 14;
    int width =
        QFontMetrics(bold).horizontalAdvance(model_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString()) +
        sortArrow;
    for (int row = 0; row < rows; ++row)
      width = std::max(width, fontMetrics().horizontalAdvance(model_.index(row, column).data().toString()));
    const int least = index < leastWidths.size() ? leastWidths[index] : 0;
    setColumnWidth(column, std::max(least, std::min(width + cellPadding, widestColumn)));
  }
}

void GridView::copy() const {
  std::set<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.insert(index.row());
  if (rows.empty())
    for (int row = 0; row < model_.rowCount(); ++row) rows.insert(rows.end(), row);
  QString text;
  const auto append = [&](const auto& cell) {
    for (int column = 0; column < model_.columnCount(); ++column) {
      if (column > 0) text += '\t';
      text += cell(column);
    }
    text += '\n';
  };
  append([&](int column) { return model_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(); });
  for (const int row : rows) append([&](int column) { return model_.index(row, column).data().toString(); });
  QApplication::clipboard()->setText(text);
}

void GridView::exportRows(const QString& title, const QString& fileName) {
  std::vector<gljz::Alignment> alignments;
  for (int column = 0; column < model_.columnCount(); ++column) {
    const auto side = Qt::Alignment(model_.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
    alignments.push_back(side & Qt::AlignRight ? gljz::Alignment::right : gljz::Alignment::left);
  }
  askAndExport(window(), texts_, {title, fileName, model_.visibleRows(), std::move(alignments)});
}

void GridView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_.rowCount() > 0 || emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(quiet);
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return copy();
  QTableView::keyPressEvent(event);
}

}  // namespace desktop
