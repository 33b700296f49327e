#include "grid_view.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <set>

#include "export_rows.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

constexpr int cellPadding = 16, sortArrow = 14, widestColumn = 420;  // pixels
constexpr int sortKey = Qt::Key_F8;
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
  const QString tip = texts("Sort.Tip", {utf8(QKeySequence(sortKey).toString(QKeySequence::NativeText))});
  horizontalHeader()->setToolTip(tip);
  setAccessibleDescription(tip);
}

void GridView::showGrid(const gljz::Grid& grid, bool continued, std::vector<std::size_t> codes) {
  QPalette shaded = palette();
  shaded.setColor(QPalette::AlternateBase, colour(grid.shadeColour));
  setPalette(shaded);
  setFrameShape(grid.borderStyle == 0 ? NoFrame : StyledPanel);
  model_.setGrid({&grid.rows, grid.alignments, continued, std::move(codes)});
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
  for (int column = 0; column < model_.columnCount(); ++column) {
    const auto index = static_cast<std::size_t>(column);
    int width = headWidth(column);
    for (int row = 0; row < rows; ++row)
      width =
          std::max(width, fontMetrics().horizontalAdvance(model_.index(row, column).data().toString()) + cellPadding);
    const int least = index < leastWidths.size() ? leastWidths[index] : 0;
    setColumnWidth(column, std::max(least, std::min(width, widestColumn)));
  }
}

int GridView::headWidth(int column) const {
  QFont bold = font();
  bold.setBold(true);
  const QString head = model_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  return QFontMetrics(bold).horizontalAdvance(head) + sortArrow + cellPadding;
}

int GridView::fullWidth() const {
  return horizontalHeader()->length() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
}

void GridView::fitInto(int width) {
  // The room for the arrow of the sorted column is given up before a text is.
  const auto leastWidth = [this](int column) { return headWidth(column) - sortArrow; };
  for (int lacking = fullWidth() - width; lacking > 0;) {
    // The widest one first, down to the next.
    int widest = -1, next = 0;
    for (int column = 0; column < model_.columnCount(); ++column) {
      const auto side = Qt::Alignment(model_.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
      if (!(side & Qt::AlignLeft) || columnWidth(column) <= leastWidth(column)) continue;
      if (widest < 0 || columnWidth(column) > columnWidth(widest)) {
        if (widest >= 0) next = std::max(next, columnWidth(widest));
        widest = column;
      } else {
        next = std::max(next, columnWidth(column));
      }
    }
    if (widest < 0) break;
    const int least = std::max({leastWidth(widest), next - 1, columnWidth(widest) - lacking});
    lacking -= columnWidth(widest) - least;
    setColumnWidth(widest, least);
  }
  updateGeometries();  // or the bar below would go with the next event only
}

void GridView::sortByCurrentColumn() {
  const int column = currentIndex().isValid() ? currentIndex().column() : 0;
  const QHeaderView& head = *horizontalHeader();
  if (head.sortIndicatorSection() != column)
    sortByColumn(column, Qt::AscendingOrder);
  else if (head.sortIndicatorOrder() == Qt::AscendingOrder)
    sortByColumn(column, Qt::DescendingOrder);
  else
    sortByColumn(-1, Qt::AscendingOrder);
  // The column stays the current one, at the row that is now the first.
  selectionModel()->setCurrentIndex(model_.index(0, column), QItemSelectionModel::NoUpdate);
  scrollToTop();
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
  if (event->key() == sortKey) return sortByCurrentColumn();
  QTableView::keyPressEvent(event);
}

// A text that its column cuts off.
bool GridView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  const QString text = index.data().toString();
  const bool cut =
      index.isValid() && fontMetrics().horizontalAdvance(text) + cellPadding / 2 > columnWidth(index.column());
  QToolTip::showText(help->globalPos(), cut ? text : QString(), viewport());
  return true;
}

}  // namespace desktop
