#include "selection_windows.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

#include "double_list_view.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

QLabel* note(const std::string& text, QWidget* parent) {
  auto* label = new QLabel(shown(platform::trim(text)), parent);
  label->setProperty("role", "quiet");
  label->setWordWrap(true);
  return label;
}

// The frame around the lists, with its caption above.
QVBoxLayout* addFrame(QVBoxLayout* column, const gljz::Label& caption, QWidget* parent) {
  auto* title = heading(shown(caption.Caption), parent);
  title->setObjectName("Frame1");
  column->addWidget(title);
  auto* frame = new QFrame(parent);
  frame->setProperty("role", "panel");
  auto* inside = new QVBoxLayout(frame);
  inside->setContentsMargins(gap, gap, gap, gap);
  column->addWidget(frame, 1);
  return inside;
}

QHBoxLayout* addButtons(QVBoxLayout* column) {
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  column->addLayout(buttons);
  return buttons;
}

}  // namespace

DivisionWindow::DivisionWindow(QWidget* parent, gljz::FrmYeMxSel& form, const Texts& texts)
    : ModalDialog(parent, form), form_(form) {
  setWindowTitle(shown(form.Caption));
  auto* column = newColumn(*this);
  auto* frame = addFrame(column, form.Frame1, this);
  lists_ = new DoubleListView(this, form.CtlSelList1, shown(form.Label1.Caption), shown(form.Label2.Caption), texts);
  frame->addWidget(lists_);
  auto* text = note(form.lblNote.Caption, this);
  text->setObjectName("lblNote");
  column->addWidget(text);
  auto* buttons = addButtons(column);
  addButton(buttons, form.cmdRefresh, "cmdRefresh", [this] { form_.cmdRefresh_Click(); });
  buttons->addStretch();
  makePrimary(*addButton(buttons, form.cmdOK, "cmdOK", [this] { form_.cmdOK_Click(); }));
  lists_->setFocus();
  resize(660, 470);
}

void DivisionWindow::refresh() {
  lists_->refresh();
}

// The window goes as the form is hidden; the form itself lives on.
void DivisionWindow::closeBox() {
  call([this] { form_.Form_QueryUnload(); });
}

ClearingWindow::ClearingWindow(QWidget* parent, gljz::FrmSyKmSel& form, const Texts& texts)
    : ModalDialog(parent, form), form_(form) {
  setWindowTitle(shown(form.Caption));
  auto* column = newColumn(*this);
  auto* frame = addFrame(column, form.Frame1, this);
  auto* lists =
      new DoubleListView(this, form.CtlSelList1, shown(form.Label1.Caption), shown(form.Label2.Caption), texts);
  frame->addWidget(lists);
  auto* text = note(form.Label3.Caption, this);
  text->setObjectName("Label3");
  column->addWidget(text);
  auto* buttons = addButtons(column);
  buttons->addStretch();
  makePrimary(*addButton(buttons, form.cmdOK, "cmdOK", [this] { form_.cmdOK_Click(); }));
  lists->setFocus();
  resize(660, 430);
}

// The form has no rule for its close box: it is unloaded, and its choice goes with it.
void ClearingWindow::closeBox() {
  call([] { gljz::frmSyKmSel.unload(); });
}

QuestionWindow::QuestionWindow(QWidget* parent, gljz::FrmTwo& form, const Texts& texts)
    : ModalDialog(parent, form), form_(form) {
  setWindowTitle(texts("Title"));
  auto* column = newColumn(*this);
  auto* row = new QHBoxLayout;
  row->setSpacing(largeGap);
  auto* image = new QLabel(this);
  image->setObjectName("Image1");
  image->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxQuestion).pixmap(40, 40));
  row->addWidget(image, 0, Qt::AlignTop);
  auto* words = new QVBoxLayout;
  words->setSpacing(gap);
  words->addWidget(heading(shown(form.Label1.Caption), this));
  auto* text = new QLabel(shown(form.lblNote.Caption), this);
  text->setObjectName("lblNote");
  text->setWordWrap(true);
  text->setToolTip(shown(form.lblNote.ToolTipText));
  text->setMinimumWidth(400);
  words->addWidget(text);
  row->addLayout(words, 1);
  column->addLayout(row);
  auto* buttons = addButtons(column);
  buttons->addStretch();
  makePrimary(*addButton(buttons, form.Command1, "Command1", [this] { form_.Command1_Click(); }));
  addButton(buttons, form.Command2, "Command2", [this] { form_.Command2_Click(); });
}

// Closing answers nothing: the result stays what it was.
void QuestionWindow::closeBox() {
  call([this] { form_.Hide(); });
}

}  // namespace desktop
