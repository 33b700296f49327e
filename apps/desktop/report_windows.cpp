#include "report_windows.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

#include "ask.h"
#include "grid_view.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

constexpr const char *rightMark = "Y", *wrongMark = "X";  // verdicts in the last column

bool isWrong(const GridModel::Row& row) {
  return !row.empty() && row.back() == wrongMark;
}

// The view in a frame, and below it a row of buttons that begins with the view's own; the form's follow.
QHBoxLayout* addGrid(QVBoxLayout& column, GridView& view, const Texts& texts, const QString& title,
                     const QString& file) {
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
  add("export", "Export", [&view, title, file] { view.exportRows(title, file); });
  buttons->addStretch();
  return buttons;
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
  auto* buttons = addGrid(*column, *view_, texts, windowTitle(), "closing-report");
  addButton(buttons, form.Command1, "Command1", [this] { form_.Command1_Click(); });
  addButton(buttons, form.command2, "command2", [this] { form_.command2_Click(); });
  auto* confirm = addButton(buttons, form.Command3, "Command3", [this] { form_.Command3_Click(); });
  makePrimary(*confirm);
  column->addLayout(buttons);
  showOnly(Filter::all);
  confirm->setFocus();
  resize(1180, 660);
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
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { view_->grid().setSearch(utf8(text)); });
  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, search_, [this] { search_->setFocus(); });
  row->addWidget(search_);
  column->addLayout(row);
}

void ReportWindow::showOnly(Filter filter) {
  filter_ = filter;
  if (filter == Filter::leftOut) {
    static const gljz::Grid none;
    view_->setEmptyText(texts_("Empty.LeftOut"));
    view_->showGrid(leftOut_ ? *leftOut_ : none, false);
    return;
  }
  view_->setEmptyText(texts_(filter == Filter::wrong ? "Empty.Wrong" : "Empty.Report"));
  view_->showGrid(form_.Grid1, true);
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
  view_->showGrid(form.Grid1, false);
  auto* buttons = addGrid(*column, *view_, texts, windowTitle(), "left-out");
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
