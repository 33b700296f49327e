#include "progress_window.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "style.h"
#include "texts.h"

namespace desktop {

ProgressWindow::ProgressWindow(QWidget* parent, gljz::FrmJZSN& form, const Texts& texts,
                               std::function<std::int64_t()> rowsWritten)
    : ModalDialog(parent, form),
      form_(form),
      texts_(texts),
      rowsWritten_(std::move(rowsWritten)),
      rowsBefore_(rowsWritten_ ? rowsWritten_() : 0) {
  setWindowTitle(shown(form.Caption()));
  auto* column = newColumn(*this);

  auto* panel = new QFrame(this);
  panel->setProperty("role", "panel");
  auto* steps = new QGridLayout(panel);
  steps->setContentsMargins(largeGap, gap, largeGap, gap);
  steps->setHorizontalSpacing(largeGap);
  steps->setVerticalSpacing(smallGap);
  steps->setColumnStretch(0, 1);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    Line& line = lines_[i];
    line.text = new QLabel(panel);
    line.mark = new QLabel(panel);
    line.text->setObjectName(QString("Label1_%1").arg(i));
    line.mark->setObjectName(QString("Label2_%1").arg(i));
    line.mark->setFixedWidth(24);
    line.mark->setAlignment(Qt::AlignCenter);
    QFont bold = line.mark->font();
    bold.setBold(true);
    line.mark->setFont(bold);
    colourText(*line.mark, good);
    steps->addWidget(line.text, static_cast<int>(i), 0);
    steps->addWidget(line.mark, static_cast<int>(i), 1);
  }
  column->addWidget(panel);

  bar_ = new QProgressBar(this);
  bar_->setRange(0, static_cast<int>(lines_.size()));
  bar_->setTextVisible(false);
  column->addWidget(bar_);
  caption_ = new QLabel(this);
  caption_->setObjectName("Label3");
  caption_->setMinimumWidth(460);
  column->addWidget(caption_);
  status_ = new QLabel(this);
  status_->setObjectName("status");
  status_->setProperty("role", "quiet");
  column->addWidget(status_);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  buttons->addStretch();
  addButton(buttons, form.Command1(), "Command1", [this] { form_.Command1_Click(); });
  addButton(buttons, form.Command2(), "Command2", [this] { form_.Command2_Click(); });
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);

  sinceStart_.start();
  sincePaint_.start();
  ProgressWindow::refresh();
  timer_.setInterval(gljz::FrmJZSN::Timer1_Interval);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (!form_.Timer1_Enabled()) return;
    timer_.stop();
    call([this] { form_.Timer1_Timer(); });
  });
  timer_.start();
}

void ProgressWindow::refresh() {
  dirty_ = false;
  int done = 0;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const gljz::Label& label = form_.Label1(i);
    lines_[i].text->setText(shown(label.Caption));
    colourText(*lines_[i].text, colour(label.ForeColor));
    lines_[i].mark->setText(shown(form_.Label2(i)));
    if (!form_.Label2(i).empty()) ++done;
  }
  bar_->setValue(done);
  const QString caption = shown(form_.Label3());
  caption_->setText(caption_->fontMetrics().elidedText(caption, Qt::ElideRight, caption_->minimumWidth()));
  const auto seconds = sinceStart_.elapsed() / 1000;
  const std::int64_t rows = rowsWritten_ ? rowsWritten_() - rowsBefore_ : 0;
  status_->setText(shown(texts_.messages().text("Gljz.Host.Progress.Rows", {std::to_string(rows)})) +
                   QString("   %1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar('0')));
  if (form_.MousePointer() == hourglassPointer)
    setCursor(Qt::WaitCursor);
  else
    unsetCursor();
}

void ProgressWindow::paintNow() {
  refresh();
  repaint();
}

// Whoever is told the failure sees how far the run came.
void ProgressWindow::failed(std::exception_ptr failure) {
  paintNow();
  ModalDialog::failed(std::move(failure));
}

void ProgressWindow::doEvents() {
  if (passing_ || sincePaint_.elapsed() < repaintEvery) return;
  passing_ = true;  // an event that lets events through has been let through itself
  if (dirty_) refresh();
  QCoreApplication::processEvents();
  sincePaint_.restart();
  passing_ = false;
}

}  // namespace desktop
