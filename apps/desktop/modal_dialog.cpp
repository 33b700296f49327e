#include "modal_dialog.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QPushButton>
#include <utility>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"
#include "texts.h"

namespace desktop {

ModalDialog::ModalDialog(QWidget* parent, const gljz::Dialog& form) : QDialog(parent), form_(form) {
  setObjectName(shown(form.Name()));
  setWindowModality(Qt::ApplicationModal);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void ModalDialog::showModal() {
  exec();
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

// No failure may pass through the window system's own code.
void ModalDialog::call(const std::function<void()>& procedure) {
  try {
    procedure();
  } catch (...) {
    failed(std::current_exception());
    return;
  }
  if (form_.visible())
    refresh();
  else
    done(Accepted);
}

void ModalDialog::failed(std::exception_ptr failure) {
  failure_ = std::move(failure);
  done(Rejected);
}

QPushButton* ModalDialog::addButton(QHBoxLayout* row, const gljz::Button& button, const QString& name,
                                    std::function<void()> procedure) {
  auto* made = new QPushButton(this);
  made->setObjectName(name);
  made->setAutoDefault(false);
  showState(*made, button);
  connect(made, &QPushButton::clicked, this, [this, procedure = std::move(procedure)] { call(procedure); });
  row->addWidget(made);
  return made;
}

void ModalDialog::showState(QPushButton& button, const gljz::Button& state) const {
  button.setText(shown(state.Caption));
  button.setEnabled(state.Enabled);
  button.setVisible(state.Visible);
  button.setToolTip(shown(state.ToolTipText));
}

void ModalDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  closeBox();
}

void ModalDialog::reject() {
  escape();
}

}  // namespace desktop
