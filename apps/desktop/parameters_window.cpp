#include "parameters_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QTabWidget>

#include "ask.h"
#include "grid_view.h"
#include "style.h"
#include "texts.h"

namespace desktop {

ParametersWindow::ParametersWindow(QWidget* parent, host::ConditionPreview preview, const Texts& texts)
    : QDialog(parent), preview_(std::move(preview)), texts_(texts) {
  setObjectName("parameters");
  setWindowTitle(texts("Parameters"));
  auto* column = newColumn(*this);
  auto* note = new QLabel(texts("Parameters.Note"), this);
  note->setProperty("role", "quiet");
  note->setWordWrap(true);
  column->addWidget(note);

  auto* tabs = new QTabWidget(this);
  rows_.push_back({utf8(texts("Parameters.Checked")), utf8(texts("Parameters.Switch")), utf8(texts("Parameters.Key"))});
  for (const auto& item : preview_.switches) rows_.push_back({item.checked ? "✓" : "", item.text, item.key});
  auto* view = new GridView(tabs, texts);
  view->setObjectName("switches");
  view->setFrameShape(QFrame::NoFrame);
  view->showRows({&rows_, {gljz::Alignment::centred}, false});
  tabs->addTab(view, texts("Parameters.Switches"));
  auto* text = new QPlainTextEdit(shown(preview_.parameters), tabs);
  text->setObjectName("text");
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  text->setStyleSheet("QPlainTextEdit { border: none; font-family: 'DejaVu Sans Mono', 'WenQuanYi Micro Hei Mono'; }");
  tabs->addTab(text, texts("Parameters.Text"));
  column->addWidget(tabs, 1);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  const auto add = [&](const char* name, const QString& caption, auto press) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, press);
    buttons->addWidget(button);
    return button;
  };
  add("copy", texts("Parameters.Copy"), [this] { QApplication::clipboard()->setText(shown(preview_.parameters)); });
  add("save", texts("Parameters.Save"), [this] { save(); });
  buttons->addStretch();
  auto* close = add("close", texts("Close"), [this] { accept(); });
  makePrimary(*close);
  close->setFocus();
  column->addLayout(buttons);
  resize(820, 560);
}

void ParametersWindow::save() {
  const std::string file = ask().saveFile(this, texts_("Parameters.Save"), "parameters.xml", "XML (*.xml)");
  if (file.empty()) return;
  QSaveFile out(shown(file));
  const auto size = static_cast<qint64>(preview_.parameters.size());
  if (!out.open(QIODevice::WriteOnly) || out.write(preview_.parameters.data(), size) != size || !out.commit())
    ask().complain(this, texts_("Parameters.Save"), texts_("Export.Failed", {file, utf8(out.errorString())}));
}

}  // namespace desktop
