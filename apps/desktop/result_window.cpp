#include "result_window.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

#include "ask.h"
#include "grid_view.h"
#include "host/report_file.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

gljz::Alignment sideOf(host::CellKind kind) {
  if (kind == host::CellKind::verdict) return gljz::Alignment::centred;
  return host::isNumber(kind) ? gljz::Alignment::right : gljz::Alignment::left;
}

QString reportFilters() {
  QString filters = "HTML (*.html)";
  if (host::canWrite(host::ReportFormat::pdf)) filters += ";;PDF (*.pdf)";
  if (host::canWrite(host::ReportFormat::xlsx)) filters += ";;Excel (*.xlsx)";
  return filters + ";;CSV (*.csv);;JSON (*.json);;TXT (*.txt)";
}

}  // namespace

QColor gradeColour(host::Grade grade) {
  switch (grade) {
    case host::Grade::good:
      return good;
    case host::Grade::attention:
    case host::Grade::stopped:
      return attention;
    case host::Grade::failed:
      break;
  }
  return bad;
}

ResultWindow::ResultWindow(QWidget* parent, const host::RunResult& result, const Texts& texts)
    : QDialog(parent), result_(result), texts_(texts), model_(host::reportModel(result)) {
  setObjectName("result");
  setWindowTitle(shown(model_.title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* column = newColumn(*this);
  addOutcome(column);
  addFigures(column);
  addTables(column);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  auto* saveAs = new QPushButton(texts("SaveReport"), this);
  saveAs->setObjectName("save");
  saveAs->setAutoDefault(false);
  connect(saveAs, &QPushButton::clicked, this, [this] { save(); });
  buttons->addWidget(saveAs);
  buttons->addStretch();
  auto* close = new QPushButton(texts("Close"), this);
  close->setObjectName("close");
  makePrimary(*close);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  buttons->addWidget(close);
  column->addLayout(buttons);
  close->setFocus();
  resize(960, 640);
}

void ResultWindow::addOutcome(QVBoxLayout* column) {
  auto* headline = new QLabel(shown(model_.headline), this);
  headline->setObjectName("headline");
  headline->setProperty("role", "title");
  headline->setWordWrap(true);
  colourText(*headline, gradeColour(model_.grade));
  column->addWidget(headline);
  QString facts;
  for (const host::ReportFact& fact : model_.facts) {
    if (!facts.isEmpty()) facts += QStringLiteral("   ·   ");
    facts += shown(fact.label) + " " + shown(fact.value);
  }
  auto* line = new QLabel(facts, this);
  line->setProperty("role", "quiet");
  line->setWordWrap(true);
  column->addWidget(line);
  for (const std::string& sentence : model_.sentences) {
    auto* label = new QLabel(shown(sentence), this);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setFocusPolicy(Qt::NoFocus);
    column->addWidget(label);
  }
}

void ResultWindow::addFigures(QVBoxLayout* column) {
  if (model_.figures.empty()) return;
  auto* panel = new QFrame(this);
  panel->setProperty("role", "panel");
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(largeGap, gap, largeGap, gap);
  for (const host::ReportFigure& figure : model_.figures) {
    auto* cell = new QVBoxLayout;
    cell->setSpacing(0);
    auto* value = new QLabel(shown(figure.value), panel);
    value->setStyleSheet(QString("font-size: 15pt; font-weight: bold; color: %1;")
                             .arg((figure.attention ? bad : QColor(0x1C, 0x27, 0x33)).name()));
    auto* label = new QLabel(shown(figure.label), panel);
    label->setProperty("role", "quiet");
    cell->addWidget(value);
    cell->addWidget(label);
    row->addLayout(cell, 1);
  }
  column->addWidget(panel);
}

void ResultWindow::addTables(QVBoxLayout* column) {
  auto* tabs = new QTabWidget(this);
  tabs->setObjectName("tables");
  tabs->setDocumentMode(false);
  rows_.reserve(model_.tables.size());  // the views keep pointers
  for (const host::ReportTable& table : model_.tables) {
    GridModel::Rows& rows = rows_.emplace_back();
    std::vector<gljz::Alignment> sides;
    std::vector<std::size_t> codes;
    rows.emplace_back();
    for (const host::ReportColumn& c : table.columns) {
      rows.front().push_back(c.title);
      if (c.kind == host::CellKind::code) codes.push_back(sides.size());
      sides.push_back(sideOf(c.kind));
    }
    rows.insert(rows.end(), table.rows.begin(), table.rows.end());

    auto* page = new QWidget(tabs);
    auto* inside = new QVBoxLayout(page);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->setSpacing(smallGap);
    auto* view = new GridView(page, texts_);
    view->setFrameShape(QFrame::NoFrame);
    const std::size_t verdict = table.index(host::CellKind::verdict);
    view->grid().setInk([verdict](const GridModel::Row& row, std::size_t cell) -> std::optional<QColor> {
      if (verdict >= row.size()) return std::nullopt;
      if (row[verdict] == "X") return bad;
      if (cell == verdict && row[verdict] == "Y") return good;
      return std::nullopt;
    });
    view->showRows({&rows, sides, table.id == "accounts", codes});
    inside->addWidget(view, 1);
    for (const std::string& remark : table.remarks) {
      auto* label = new QLabel(shown(remark), page);
      label->setProperty("role", "quiet");
      label->setWordWrap(true);
      label->setContentsMargins(gap, 0, gap, smallGap);
      inside->addWidget(label);
    }
    tabs->addTab(page, QString("%1 (%2)").arg(shown(table.tab)).arg(table.rows.size()));
  }
  tabs->setVisible(tabs->count() > 0);
  column->addWidget(tabs, 1);
}

void ResultWindow::save() {
  const QString name = QString("gljz-%1-%2.html").arg(shown(result_.account)).arg(result_.newYear);
  const std::string file = ask().saveFile(this, texts_("SaveReport"), name, reportFilters());
  if (file.empty()) return;
  const auto format = host::reportFormat(file);
  try {
    if (!format) throw std::runtime_error(utf8(texts_("Export.Ending", {file, std::string(host::reportEndings())})));
    host::writeReport(file, *format, result_);
  } catch (const std::exception& e) {
    ask().complain(this, texts_("SaveReport"), shown(e.what()));
  }
}

}  // namespace desktop
