#include "report_windows.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include "ask.h"
#include "grid_view.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

constexpr const char *rightMark = "Y", *wrongMark = "X";  // verdicts in the last column
constexpr const char *reportFile = "closing-report", *leftOutFile = "left-out";
constexpr int searchAfter = 150;  // milliseconds behind the last key

// Columns of the grid of left out records whose digits are no amounts: kind and code.
const std::vector<std::size_t> leftOutCodes = {0, 1};

bool isWrong(const GridModel::Row& row) {
  return !row.empty() && row.back() == wrongMark;
}

// The view in a frame, and below it a row of buttons that begins with the view's own; the form's follow.
QHBoxLayout* addGrid(QVBoxLayout& column, GridView& view, const Texts& texts, std::function<void()> exportRows) {
  auto* window = view.window();
  auto* frame = new QFrame(window);
  frame->setProperty("role", "panel");
  auto* inside = new QVBoxLayout(frame);
  inside->setContentsMargins(1, 1, 1, 1);
  inside->addWidget(&view);
  column.addWidget(frame, 1);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  const auto add = [&](const char* name, const char* key, auto press) {
    auto* button = new QPushButton(texts(key), window);
    button->setObjectName(name);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, &view, press);
    buttons->addWidget(button);
  };
  add("copy", "Copy", [&view] { view.copy(); });
  add("export", "Export", std::move(exportRows));
  buttons->addStretch();
  return buttons;
}

// As a person reads them: from one to the next with Tab.
void tabThrough(const std::vector<QWidget*>& places) {
  for (std::size_t i = 1; i < places.size(); ++i) QWidget::setTabOrder(places[i - 1], places[i]);
}

// Nothing answers a failure in a button of a closing dialog, and nothing of the run depends on it.
void tell(QWidget* window, const QString& title, const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& e) {
    ask().complain(window, title, shown(e.what()));
  }
}

}  // namespace

ReportWindow::ReportWindow(QWidget* parent, gljz::FrmJZBG& form, const gljz::Grid* leftOut, const Texts& texts)
    : ModalDialog(parent, form), form_(form), leftOut_(leftOut), texts_(texts), view_(new GridView(this, texts)) {
  setWindowTitle(shown(form.Caption));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* column = newColumn(*this);
  addCounts(column);
  addFilters(column);

  view_->setObjectName("Grid1");
  view_->grid().setInk([this](const GridModel::Row& row, std::size_t cell) -> std::optional<QColor> {
    if (filter_ == Filter::leftOut) return std::nullopt;
    if (isWrong(row)) return bad;
    if (cell + 1 == row.size() && row.back() == rightMark) return good;
    return std::nullopt;
  });
  auto* buttons = addGrid(*column, *view_, texts, [this] { exportShown(); });
  auto* others = addButton(buttons, form.Command1, "Command1", [this] { form_.Command1_Click(); });
  auto* print = addButton(buttons, form.command2, "command2", [this] { form_.command2_Click(); });
  auto* confirm = addButton(buttons, form.Command3, "Command3", [this] { form_.Command3_Click(); });
  makePrimary(*confirm);
  column->addLayout(buttons);
  std::vector<QWidget*> order = filters_;
  order.insert(order.end(), {search_, view_, findChild<QPushButton*>("copy"), findChild<QPushButton*>("export"), others,
                             print, confirm});
  tabThrough(order);
  showOnly(Filter::all);
  confirm->setFocus();
  // As wide as the grid, within the screen.
  constexpr int ordinary = 1180, height = 660, frame = 2 * windowMargin + 2;
  resize(std::max(ordinary, std::min(view_->fullWidth() + frame, screen()->availableGeometry().width())), height);
}

// The verdict is the last column and what the report is looked at for: it is on the screen when the window opens.
void ReportWindow::showEvent(QShowEvent* event) {
  ModalDialog::showEvent(event);
  layout()->activate();
  view_->fitInto(view_->width());
}

void ReportWindow::exportShown() {
  if (filter_ == Filter::leftOut)
    view_->exportRows(shown(texts_.messages().text("Orvo.GL.TqGLJZ.00011")), leftOutFile);
  else
    view_->exportRows(windowTitle(), reportFile);
}

void ReportWindow::addCounts(QVBoxLayout* column) {
  auto* row = new QHBoxLayout;
  row->setSpacing(smallGap);
  const auto add = [&](const gljz::Label& caption, const gljz::Label& count, const char* name, const QColor& ink) {
    row->addWidget(new QLabel(shown(caption.Caption), this));
    auto* number = new QLabel(shown(count.Caption), this);
    number->setObjectName(name);
    number->setStyleSheet(QString("font-size: 14pt; font-weight: bold; color: %1;").arg(ink.name()));
    row->addWidget(number);
    row->addSpacing(largeGap);
  };
  const bool anyWrong = form_.Label4.Caption != "0" && !form_.Label4.Caption.empty();
  add(form_.Label1, form_.Label2, "Label2", good);
  add(form_.Label3, form_.Label4, "Label4", anyWrong ? bad : quiet);
  row->addStretch();
  column->addLayout(row);
}

void ReportWindow::addFilters(QVBoxLayout* column) {
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  auto* group = new QButtonGroup(this);
  GridModel whole;
  whole.setGrid({&form_.Grid1.rows});
  const std::size_t accounts = whole.matching([](const GridModel::Row& r) { return !r.empty() && !r.front().empty(); });
  const std::size_t wrongs = whole.matching(isWrong);
  const std::size_t records = leftOut_ && !leftOut_->rows.empty() ? leftOut_->rows.size() - 1 : 0;
  const auto add = [&](const char* name, const char* key, std::size_t count, Filter filter) {
    auto* button = new QPushButton(texts_(key, {std::to_string(count)}), this);
    button->setObjectName(name);
    button->setProperty("segment", true);
    button->setCheckable(true);
    button->setAutoDefault(false);
    button->setChecked(filter == Filter::all);
    group->addButton(button);
    filters_.push_back(button);
    connect(button, &QPushButton::clicked, this, [this, filter] { showOnly(filter); });
    row->addWidget(button);
  };
  add("filterAll", "Filter.All", accounts, Filter::all);
  add("filterWrong", "Filter.Wrong", wrongs, Filter::wrong);
  add("filterLeftOut", "Filter.LeftOut", records, Filter::leftOut);
  row->addStretch();
  search_ = new QLineEdit(this);
  search_->setObjectName("search");
  search_->setPlaceholderText(texts_("Search"));
  search_->setClearButtonEnabled(true);
  search_->setFixedWidth(260);
  search_->installEventFilter(this);
  searchDelay_.setSingleShot(true);
  searchDelay_.setInterval(searchAfter);
  connect(&searchDelay_, &QTimer::timeout, this, [this] { search(); });
  connect(search_, &QLineEdit::textChanged, this, [this] { searchDelay_.start(); });
  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, search_, [this] { search_->setFocus(); });
  row->addWidget(search_);
  column->addLayout(row);
}

void ReportWindow::search() {
  searchDelay_.stop();
  view_->grid().setSearch(utf8(search_->text()));
}

// Enter in the search looks at once and goes to what was found; it does not close the report. Escape gives the search
// up before it gives up the report.
bool ReportWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == search_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      search();
      view_->setFocus();
      return true;
    }
    if (key == Qt::Key_Escape && !search_->text().isEmpty()) {
      search_->clear();
      search();
      return true;
    }
  }
  return ModalDialog::eventFilter(watched, event);
}

void ReportWindow::showOnly(Filter filter) {
  filter_ = filter;
  if (filter == Filter::leftOut) {
    static const gljz::Grid none;
    view_->setEmptyText(texts_("Empty.LeftOut"));
    view_->showGrid(leftOut_ ? *leftOut_ : none, false, leftOutCodes);
    if (isVisible()) view_->fitInto(view_->width());
    return;
  }
  view_->setEmptyText(texts_(filter == Filter::wrong ? "Empty.Wrong" : "Empty.Report"));
  view_->showGrid(form_.Grid1, true);
  if (isVisible()) view_->fitInto(view_->width());
  if (filter == Filter::wrong) view_->grid().setFilter(isWrong);
}

GridModel::Rows ReportWindow::rowsOnScreen() const {
  if (filter_ == Filter::leftOut) return form_.Grid1.rows;  // the print is the accounts'
  return view_->grid().visibleRows();
}

// The form has no rule for its close box; it closes as its button does.
void ReportWindow::closeBox() {
  call([this] { form_.Command3_Click(); });
}

void ReportWindow::failed(std::exception_ptr failure) {
  tell(this, windowTitle(), failure);
}

LeftOutWindow::LeftOutWindow(QWidget* parent, gljz::FrmNBalance& form, const Texts& texts)
    : ModalDialog(parent, form), form_(form), texts_(texts), view_(new GridView(this, texts)) {
  setWindowTitle(shown(form.Caption));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* column = newColumn(*this);
  view_->setObjectName("Grid1");
  view_->setEmptyText(texts("Empty.LeftOut"));
  view_->showGrid(form.Grid1, false, leftOutCodes);
  auto* buttons = addGrid(*column, *view_, texts, [this] { view_->exportRows(windowTitle(), leftOutFile); });
  addButton(buttons, form.Command1, "Command1", [this] { form_.Command1_Click(); });
  addButton(buttons, form.Command3, "Command3", [this] { form_.Command3_Click(); });
  auto* leave = addButton(buttons, form.Command2, "Command2", [this] { form_.Command2_Click(); });
  makePrimary(*leave);
  leave->setFocus();
  column->addLayout(buttons);
  resize(720, 440);
}

GridModel::Rows LeftOutWindow::rowsOnScreen() const {
  return view_->grid().visibleRows();
}

void LeftOutWindow::closeBox() {
  call([this] { form_.Form_QueryUnload(); });
}

void LeftOutWindow::failed(std::exception_ptr failure) {
  tell(this, windowTitle(), failure);
}

}  // namespace desktop
