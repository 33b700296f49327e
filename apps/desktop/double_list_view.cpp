#include "double_list_view.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "style.h"
#include "texts.h"

namespace desktop {

using gljz::DoubleList;

DoubleListView::DoubleListView(QWidget* parent, DoubleList& list, const QString& leftTitle, const QString& rightTitle,
                               const Texts& texts)
    : QWidget(parent), list_(list) {
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setHorizontalSpacing(gap);
  layout->setVerticalSpacing(smallGap);
  left_ = addSide(leftTitle, "left", 0);

  auto* buttons = new QVBoxLayout;
  buttons->setSpacing(smallGap);
  buttons->addStretch();
  const auto addMove = [&](const QString& sign, const char* name, const char* tip, auto press) {
    auto* button = new QPushButton(sign, this);
    button->setObjectName(name);
    button->setToolTip(texts(tip));
    button->setAccessibleName(texts(tip));
    button->setAutoDefault(false);
    button->setFixedWidth(48);
    connect(button, &QPushButton::clicked, this, press);
    buttons->addWidget(button);
  };
  addMove("›", "moveRight", "List.Right", [this] { moveFrom(left_); });
  addMove("»", "moveAllRight", "List.AllRight", [this] {
    list_.moveAllRight();
    refresh();
  });
  addMove("‹", "moveLeft", "List.Left", [this] { moveFrom(right_); });
  addMove("«", "moveAllLeft", "List.AllLeft", [this] {
    list_.moveAllLeft();
    refresh();
  });
  buttons->addStretch();
  layout->addLayout(buttons, 1, 1);

  right_ = addSide(rightTitle, "right", 2);
  for (QListWidget* side : {left_, right_}) {
    side->installEventFilter(this);
    connect(side, &QListWidget::itemDoubleClicked, this, [this, side] { moveFrom(side); });
  }
  // As they stand on the screen, whatever the order in which they were made.
  QWidget* previous = left_;
  for (const char* name : {"moveRight", "moveAllRight", "moveLeft", "moveAllLeft"}) {
    auto* button = findChild<QPushButton*>(name);
    setTabOrder(previous, button);
    previous = button;
  }
  setTabOrder(previous, right_);
  setFocusProxy(left_);
  refresh();
}

QListWidget* DoubleListView::addSide(const QString& title, const QString& name, int column) {
  auto* layout = static_cast<QGridLayout*>(this->layout());
  auto* label = heading(title, this);
  auto* list = new QListWidget(this);
  list->setObjectName(name);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setUniformItemSizes(true);
  list->setSpacing(2);
  list->setMinimumSize(250, 220);
  label->setBuddy(list);
  layout->addWidget(label, 0, column);
  layout->addWidget(list, 1, column);
  layout->setColumnStretch(column, 1);
  return list;
}

void DoubleListView::refresh() {
  const auto fill = [](QListWidget& list, const DoubleList::Entries& entries) {
    list.clear();
    for (const std::string& entry : entries) list.addItem(shown(entry));
  };
  fill(*left_, list_.left());
  fill(*right_, list_.right());
}

void DoubleListView::moveFrom(QListWidget* side) {
  moveSelected(*side, side == left_ ? &DoubleList::moveRight : &DoubleList::moveLeft);
}

// The arrow towards the other list moves what is selected.
bool DoubleListView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    for (QListWidget* side : {left_, right_}) {
      if (watched != side || key != (side == left_ ? Qt::Key_Right : Qt::Key_Left)) continue;
      moveFrom(side);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

// From the top, so that they stand on the other side in the order in which they stood here. The place of the first one
// stays selected: the next key press moves the next entry.
void DoubleListView::moveSelected(QListWidget& from, void (DoubleList::*step)(std::size_t)) {
  std::vector<int> rows;
  for (int row = 0; row < from.count(); ++row)
    if (from.item(row)->isSelected()) rows.push_back(row);
  if (rows.empty()) return;
  for (std::size_t moved = 0; moved < rows.size(); ++moved)
    (list_.*step)(static_cast<std::size_t>(rows[moved]) - moved);
  refresh();
  if (from.count() > 0) from.setCurrentRow(std::min(rows.front(), from.count() - 1));
}

}  // namespace desktop
