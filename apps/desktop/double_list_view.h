#pragma once
// DoubleListView: a DoubleList on the screen, with its move buttons.

#include <QWidget>

#include "dialogs/double_list.h"

class QLabel;
class QListWidget;

namespace desktop {

class Texts;

class DoubleListView final : public QWidget {
public:
  DoubleListView(QWidget* parent, gljz::DoubleList& list, const QString& leftTitle, const QString& rightTitle,
                 const Texts& texts);

  void refresh();  // the list has been filled anew

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void moveFrom(QListWidget* side);
  void moveSelected(QListWidget& from, void (gljz::DoubleList::*step)(std::size_t));
  QListWidget* addSide(const QString& title, const QString& name, int column);

  gljz::DoubleList& list_;
  QListWidget *left_, *right_;
};

}  // namespace desktop
