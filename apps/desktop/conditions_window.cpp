#include "conditions_window.h"

#include <QBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include "style.h"
#include "texts.h"

namespace desktop {

using gljz::FrmTranCond;

ConditionsWindow::ConditionsWindow(QWidget* parent, FrmTranCond& form) : ModalDialog(parent, form), form_(form) {
  setWindowTitle(shown(form.Caption));
  auto* column = newColumn(*this);

  list_ = new QListWidget(this);
  list_->setObjectName("lvCond");
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  list_->setUniformItemSizes(true);
  list_->setSpacing(2);
  for (const auto& item : form.lvCond) {
    auto* line = new QListWidgetItem(shown(item.text), list_);
    line->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    line->setBackground(colour(item.backColour));
  }
  connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* line) {
    const auto index = static_cast<std::size_t>(list_->row(line));
    const bool checked = line->checkState() == Qt::Checked;
    if (checked != form_.lvCond[index].checked) call([&] { form_.check(index, checked); });
  });
  column->addWidget(list_);

  auto* selections = new QHBoxLayout;
  selections->setSpacing(gap);
  customers_ =
      addButton(selections, form.cmdCustomerTran, "cmdCustomerTran", [this] { form_.cmdCustomerTran_Click(); });
  suppliers_ = addButton(selections, form.cmdSupTran, "cmdSupTran", [this] { form_.cmdSupTran_Click(); });
  cleared_ = addButton(selections, form.cmdSyKmSel, "cmdSyKmSel", [this] { form_.cmdSyKmSel_Click(); });
  selections->addStretch();
  column->addLayout(selections);

  auto* line = new QFrame(this);
  line->setProperty("role", "line");
  column->addWidget(line);
  auto* closing = new QHBoxLayout;
  closing->setSpacing(gap);
  closing->addStretch();
  ok_ = addButton(closing, form.cmdOk, "cmdOk", [this] {
    form_.cmdOk_Click();
    confirmed_ = true;
  });
  addButton(closing, form.cmdCancel, "cmdCancel", [this] { form_.cmdCancel_Click(); });
  makePrimary(*ok_);
  column->addLayout(closing);

  ConditionsWindow::refresh();
  if (list_->count() > 0) list_->setCurrentRow(0, QItemSelectionModel::NoUpdate);
  list_->setFocus();
  constexpr int widest = 980, tallest = 660, around = 60;
  const int wanted = std::min(list_->sizeHintForColumn(0) + around, widest);
  list_->setMinimumWidth(
      std::min(std::max(wanted, 560), pixelsOfTwips(FrmTranCond::checkBoxWidth + FrmTranCond::textWidth, *this)));
  const int rows = std::max(8, list_->count());
  list_->setMinimumHeight(200);
  const int height = rows * (list_->sizeHintForRow(0) + 2 * list_->spacing());
  resize(sizeHint().width(), std::min(height + 150, tallest));
}

// A tick may have changed its partner's.
void ConditionsWindow::refresh() {
  const QSignalBlocker quietly(list_);
  for (int i = 0; i < list_->count(); ++i)
    list_->item(i)->setCheckState(form_.lvCond[static_cast<std::size_t>(i)].checked ? Qt::Checked : Qt::Unchecked);
  showState(*customers_, form_.cmdCustomerTran);
  showState(*suppliers_, form_.cmdSupTran);
  showState(*cleared_, form_.cmdSyKmSel);
}

// The form has no rule for its close box; it leaves as the cancel button does.
void ConditionsWindow::closeBox() {
  call([this] { form_.cmdCancel_Click(); });
}

}  // namespace desktop
