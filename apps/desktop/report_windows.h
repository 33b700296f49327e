#pragma once
// frmJZBG and frmNBalance on the screen.

#include <QTimer>

#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_nbalance.h"
#include "grid_model.h"
#include "modal_dialog.h"

class QButtonGroup;
class QLineEdit;
class QVBoxLayout;

namespace desktop {

class GridView;
class Texts;

class ReportWindow final : public ModalDialog {
public:
  // leftOut: the grid of the records without a counterpart, null when there is none.
  ReportWindow(QWidget* parent, gljz::FrmJZBG& form, const gljz::Grid* leftOut, const Texts& texts);

  enum class Filter { all, wrong, leftOut };
  void showOnly(Filter filter);
  // What the print of the report is: the accounts in the order and the choice of the screen.
  GridModel::Rows rowsOnScreen() const;

protected:
  void closeBox() override;
  void failed(std::exception_ptr failure) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void exportShown();
  void search();
  void addCounts(QVBoxLayout* column);
  void addFilters(QVBoxLayout* column);

  gljz::FrmJZBG& form_;
  const gljz::Grid* leftOut_;
  const Texts& texts_;
  GridView* view_;
  QLineEdit* search_ = nullptr;
  QTimer searchDelay_;
  std::vector<QWidget*> filters_;  // buttons, in their order
  Filter filter_ = Filter::all;
};

class LeftOutWindow final : public ModalDialog {
public:
  LeftOutWindow(QWidget* parent, gljz::FrmNBalance& form, const Texts& texts);

  GridModel::Rows rowsOnScreen() const;

protected:
  void closeBox() override;
  void failed(std::exception_ptr failure) override;

private:
  gljz::FrmNBalance& form_;
  const Texts& texts_;
  GridView* view_;
};

}  // namespace desktop
