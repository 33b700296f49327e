// How the start window is laid out and what it says; start_window.cpp has what it does.

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "start_window.h"
#include "style.h"

namespace desktop {
namespace {

QFrame* newPanel(QVBoxLayout* column, QWidget* parent) {
  auto* panel = new QFrame(parent);
  panel->setProperty("role", "panel");
  column->addWidget(panel);
  return panel;
}

QGridLayout* newForm(QWidget* panel) {
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(largeGap, gap + 2, largeGap, gap + 2);
  grid->setHorizontalSpacing(gap);
  grid->setVerticalSpacing(gap - 2);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return grid;
}

template <class Widget>
Widget* named(Widget* widget, const char* name) {
  widget->setObjectName(name);
  return widget;
}

}  // namespace

QLabel* StartWindow::addLabel(QGridLayout* grid, int row, int column, const char* key, QWidget* field) {
  auto* label = new QLabel(grid->parentWidget());
  label->setBuddy(field);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  captions_.emplace_back(label, key);
  grid->addWidget(label, row, column);
  return label;
}

void StartWindow::buildTop(QVBoxLayout* column) {
  auto* row = new QHBoxLayout;
  title_ = new QLabel(this);
  title_->setProperty("role", "title");
  row->addWidget(title_);
  row->addStretch();
  auto* label = new QLabel(this);
  captions_.emplace_back(label, "Language");
  language_ = named(new QComboBox(this), "language");
  language_->addItem("简体中文", "zh-CN");
  language_->addItem("繁體中文", "zh-TW");
  language_->addItem("English", "en-US");
  label->setBuddy(language_);
  row->addWidget(label);
  row->addWidget(language_);
  column->addLayout(row);
}

void StartWindow::buildServer(QVBoxLayout* column) {
  auto* title = heading({}, this);
  captions_.emplace_back(title, "Server");
  column->addWidget(title);
  auto* panel = newPanel(column, this);
  auto* grid = newForm(panel);

  kind_ = named(new QComboBox(panel), "kind");
  kind_->addItem({});
  kind_->addItem({});
  addLabel(grid, 0, 0, "Kind", kind_);
  grid->addWidget(kind_, 0, 1, 1, 3);

  auto* place = new QHBoxLayout;
  place->setSpacing(smallGap);
  folder_ = named(new QLineEdit(panel), "folder");
  odbc_ = named(new QLineEdit(panel), "odbc");
  browse_ = named(new QPushButton(panel), "browse");
  captions_.emplace_back(browse_, "Browse");
  place->addWidget(folder_, 1);
  place->addWidget(odbc_, 1);
  place->addWidget(browse_);
  addLabel(grid, 1, 0, "Place", folder_);
  grid->addLayout(place, 1, 1, 1, 3);

  user_ = named(new QLineEdit(panel), "user");
  password_ = named(new QLineEdit(panel), "password");
  password_->setEchoMode(QLineEdit::Password);
  addLabel(grid, 2, 0, "User", user_);
  grid->addWidget(user_, 2, 1);
  addLabel(grid, 2, 2, "Password", password_);
  grid->addWidget(password_, 2, 3);

  auto* test = new QHBoxLayout;
  test->setSpacing(gap);
  connect_ = named(new QPushButton(panel), "connect");
  captions_.emplace_back(connect_, "Connect");
  connection_ = named(new QLabel(panel), "connection");
  connection_->setWordWrap(true);
  test->addWidget(connect_);
  test->addWidget(connection_, 1);
  grid->addLayout(test, 3, 1, 1, 3);
}

void StartWindow::buildYears(QVBoxLayout* column) {
  auto* title = heading({}, this);
  captions_.emplace_back(title, "Years");
  column->addWidget(title);
  auto* panel = newPanel(column, this);
  auto* grid = newForm(panel);
  account_ = named(new QComboBox(panel), "account");
  addLabel(grid, 0, 0, "Account", account_);
  grid->addWidget(account_, 0, 1, 1, 3);
  closingYear_ = named(new QComboBox(panel), "closingYear");
  newYear_ = named(new QComboBox(panel), "newYear");
  addLabel(grid, 1, 0, "ClosingYear", closingYear_);
  grid->addWidget(closingYear_, 1, 1);
  addLabel(grid, 1, 2, "NewYear", newYear_);
  grid->addWidget(newYear_, 1, 3);
  operator_ = named(new QLineEdit(panel), "operator");
  addLabel(grid, 2, 0, "Operator", operator_);
  grid->addWidget(operator_, 2, 1);
}

void StartWindow::buildReadiness(QVBoxLayout* column) {
  auto* row = new QHBoxLayout;
  auto* title = heading({}, this);
  captions_.emplace_back(title, "Readiness");
  row->addWidget(title);
  row->addStretch();
  look_ = named(new QPushButton(this), "look");
  captions_.emplace_back(look_, "Look");
  row->addWidget(look_);
  column->addLayout(row);
  auto* panel = newPanel(column, this);
  auto* inside = new QVBoxLayout(panel);
  inside->setContentsMargins(largeGap, gap + 2, largeGap, gap + 2);
  inside->setSpacing(smallGap);
  summary_ = named(new QLabel(panel), "summary");
  QFont bold = summary_->font();
  bold.setBold(true);
  summary_->setFont(bold);
  summary_->setWordWrap(true);
  inside->addWidget(summary_);
  findings_ = new QVBoxLayout;
  findings_->setSpacing(smallGap - 2);
  inside->addLayout(findings_);
  inside->addStretch();
  panel->setMinimumHeight(190);
}

void StartWindow::buildActions(QVBoxLayout* column) {
  outcome_ = named(new QLabel(this), "outcome");
  outcome_->setWordWrap(true);
  column->addWidget(outcome_);
  auto* row = new QHBoxLayout;
  row->setSpacing(gap);
  const auto add = [&](const char* name, const char* key) {
    auto* button = named(new QPushButton(this), name);
    button->setAutoDefault(false);
    captions_.emplace_back(button, key);
    row->addWidget(button);
    return button;
  };
  preview_ = add("preview", "Preview");
  report_ = add("report", "LastReport");
  row->addStretch();
  transGL_ = add("transGL", "TransGL");
  transfer_ = add("transfer", "Transfer");
  transfer_->setProperty("primary", true);
  column->addLayout(row);
}

void StartWindow::setTexts() {
  const Texts& t = *texts_;
  setWindowTitle(t("Title"));
  title_->setText(t("Title"));
  kind_->setItemText(0, t("Kind.Embedded"));
  kind_->setItemText(1, t("Kind.Odbc"));
  folder_->setPlaceholderText(t("Place.Embedded"));
  odbc_->setPlaceholderText(t("Place.Odbc"));
  password_->setToolTip(t("Password.Tip"));
  transfer_->setToolTip(t("Transfer.Tip"));
  preview_->setToolTip(t("Preview.Tip"));
  for (const auto& [widget, key] : captions_) {
    const QString text = t(key);
    if (auto* label = qobject_cast<QLabel*>(widget)) label->setText(text);
    if (auto* button = qobject_cast<QPushButton*>(widget)) button->setText(text);
  }
}

}  // namespace desktop
