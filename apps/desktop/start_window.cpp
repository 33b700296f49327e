#include "start_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <algorithm>

#include "ask.h"
#include "core/run_state.h"
#include "dialog_windows.h"
#include "host/database_server.h"
#include "host/report_file.h"
#include "host/usage_error.h"
#include "odbc/connection_string.h"
#include "parameters_window.h"
#include "result_window.h"
#include "style.h"

namespace desktop {
namespace {

constexpr int embeddedKind = 0, odbcKind = 1;  // of the list of kinds

int yearOf(const QComboBox& box) {
  return box.currentData().toInt();
}

void choose(QComboBox& box, const QVariant& value) {
  const int index = box.findData(value);
  if (index >= 0) box.setCurrentIndex(index);
}

}  // namespace

StartWindow::StartWindow(QSettings& settings) : settings_(settings) {
  setObjectName("start");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(windowMargin + 4, windowMargin, windowMargin + 4, windowMargin);
  column->setSpacing(gap - 2);
  buildTop(column);
  column->addSpacing(smallGap);
  buildServer(column);
  column->addSpacing(smallGap);
  buildYears(column);
  column->addSpacing(smallGap);
  buildReadiness(column);
  column->addStretch();
  buildActions(column);

  const StartChoice last = loadChoice(settings);
  folder_->setText(shown(last.folder));
  odbc_->setText(shown(last.odbc));
  user_->setText(shown(last.user));
  operator_->setText(shown(last.operatorName.empty() ? utf8(qEnvironmentVariable("USER")) : last.operatorName));
  kind_->setCurrentIndex(last.kind == host::ServerAddress::Kind::odbc ? odbcKind : embeddedKind);
  {
    const QSignalBlocker quietly(language_);
    choose(*language_, shown(last.language));
  }
  setLanguage(last.language);

  connect(language_, &QComboBox::currentIndexChanged, this,
          [this] { setLanguage(utf8(language_->currentData().toString())); });
  connect(kind_, &QComboBox::currentIndexChanged, this, [this] {
    showKind();
    disconnectServer();
  });
  for (QLineEdit* field : {folder_, odbc_, user_, password_}) {
    connect(field, &QLineEdit::textEdited, this, [this] { disconnectServer(); });
    connect(field, &QLineEdit::returnPressed, this, [this] { connectServer(); });
  }
  connect(browse_, &QPushButton::clicked, this, [this] { browse(); });
  connect(connect_, &QPushButton::clicked, this, [this] { connectServer(); });
  connect(account_, &QComboBox::currentIndexChanged, this, [this] {
    if (!filling_) showYears();
  });
  connect(closingYear_, &QComboBox::currentIndexChanged, this, [this] {
    if (filling_) return;
    choose(*newYear_, yearOf(*closingYear_) + 1);
    look();
  });
  connect(newYear_, &QComboBox::currentIndexChanged, this, [this] {
    if (!filling_) look();
  });
  connect(look_, &QPushButton::clicked, this, [this] { look(); });
  connect(preview_, &QPushButton::clicked, this, [this] { preview(); });
  connect(report_, &QPushButton::clicked, this, [this] { openLastReport(); });
  connect(transGL_, &QPushButton::clicked, this, [this] { carry(host::Entry::transGL); });
  connect(transfer_, &QPushButton::clicked, this, [this] { carry(host::Entry::transfer); });
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this, [this] { look(); });
  connect(new QShortcut(QKeySequence::Quit, this), &QShortcut::activated, this, [this] { close(); });

  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(true);  // Enter presses them
  for (QComboBox* box : findChildren<QComboBox*>()) box->setMinimumHeight(folder_->sizeHint().height());
  showKind();
  disconnectServer();
  if (!last.folder.empty() && last.kind == host::ServerAddress::Kind::embedded) {
    connectServer();
    choose(*account_, shown(last.account));
    choose(*closingYear_, last.closingYear);
    choose(*newYear_, last.newYear);
  }
  resize(680, sizeHint().height());
}

StartWindow::~StartWindow() = default;

QString StartWindow::reportFile() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath("last-report.html");
}

void StartWindow::setLanguage(const std::string& language) {
  texts_ = std::make_unique<Texts>(language);
  auto& application = *static_cast<QApplication*>(QApplication::instance());
  applyFonts(application, language);
  applyToolkitTexts(application, language);
  choose(*language_, shown(language));
  setTexts();
  outcome_->clear();
  if (server_) {
    say(*connection_, (*texts_)("Connected", {std::to_string(accounts_.size())}), good);
    look();
  } else {
    say(*connection_, (*texts_)("NotConnected"), quiet);
    say(*summary_, (*texts_)("Readiness.Unknown"), quiet);
    enableActions();
  }
}

void StartWindow::say(QLabel& label, const QString& text, const QColor& colour) const {
  label.setText(text);
  colourText(label, colour);
}

void StartWindow::showKind() {
  const bool embedded = kind_->currentIndex() == embeddedKind;
  folder_->setVisible(embedded);
  browse_->setVisible(embedded);
  odbc_->setVisible(!embedded);
  for (QLineEdit* field : {user_, password_}) {
    field->setVisible(!embedded);
    for (QLabel* label : findChildren<QLabel*>())
      if (label->buddy() == field) label->setVisible(!embedded);
  }
}

StartChoice StartWindow::choice() const {
  StartChoice choice;
  choice.kind =
      kind_->currentIndex() == odbcKind ? host::ServerAddress::Kind::odbc : host::ServerAddress::Kind::embedded;
  choice.folder = utf8(folder_->text().trimmed());
  choice.odbc = utf8(odbc_->text().trimmed());
  choice.user = utf8(user_->text().trimmed());
  choice.account = utf8(account_->currentData().toString());
  choice.operatorName = utf8(operator_->text().trimmed());
  choice.language = texts_->language();
  choice.closingYear = yearOf(*closingYear_);
  choice.newYear = yearOf(*newYear_);
  return choice;
}

void StartWindow::disconnectServer() {
  server_.reset();
  accounts_.clear();
  say(*connection_, (*texts_)("NotConnected"), quiet);
  showAccounts();
}

void StartWindow::connectServer() {
  disconnectServer();
  if (const QString trouble = connectionTrouble(); !trouble.isEmpty()) {
    say(*connection_, (*texts_)("ConnectFailed", {utf8(trouble)}), bad);
    return;
  }
  // A server that does not answer keeps the window waiting for as long as its driver has patience.
  const WaitPointer waiting;
  say(*connection_, (*texts_)("Connecting"), quiet);
  connection_->repaint();
  try {
    address_ = choice().address(utf8(password_->text()));
    host::ServerPtr server = host::openAnyServer(address_);
    if (!server->hasDatabase(host::systemDatabase))
      throw host::UsageError(utf8((*texts_)("Connect.NoSystem", {host::systemDatabase})));
    const auto system = host::openSystem(server, address_);
    accounts_ = host::accountSets(*system);
    server_ = std::move(server);
    say(*connection_, (*texts_)("Connected", {std::to_string(accounts_.size())}), good);
  } catch (const std::exception& e) {
    say(*connection_, (*texts_)("ConnectFailed", {e.what()}), bad);
  }
  showAccounts();
}

// The host refuses all of these, too, in the words of the command line.
QString StartWindow::connectionTrouble() const {
  const StartChoice chosen = choice();
  if (chosen.kind == host::ServerAddress::Kind::embedded) {
    if (chosen.folder.empty()) return (*texts_)("Connect.NoFolder");
    const QFileInfo folder(shown(chosen.folder));
    if (!folder.exists()) return (*texts_)("Connect.MissingFolder", {chosen.folder});
    if (!folder.isDir()) return (*texts_)("Connect.NotAFolder", {chosen.folder});
    return {};
  }
  if (chosen.odbc.empty()) return (*texts_)("Connect.NoText");
  try {
    const odbc::ConnectionString text(chosen.odbc);
    if (!text.find("Driver") && !text.find("DSN") && !text.find("FileDSN")) return (*texts_)("Connect.NoSource");
  } catch (const std::exception&) {
    return (*texts_)("Connect.Unreadable");  // what cannot be read may hold a password
  }
  return {};
}

void StartWindow::showAccounts() {
  filling_ = true;
  account_->clear();
  for (const host::AccountSet& set : accounts_)
    account_->addItem(shown(set.name.empty() ? set.account : set.account + "  " + set.name), shown(set.account));
  filling_ = false;
  account_->setEnabled(!accounts_.empty());
  showYears();
}

const host::AccountSet* StartWindow::account() const {
  const int index = account_->currentIndex();
  return index >= 0 && static_cast<std::size_t>(index) < accounts_.size() ? &accounts_[static_cast<std::size_t>(index)]
                                                                          : nullptr;
}

// The last two years are the likely ones.
void StartWindow::showYears() {
  filling_ = true;
  const host::AccountSet* set = account();
  for (QComboBox* box : {closingYear_, newYear_}) {
    box->clear();
    if (set)
      for (const int year : set->years()) box->addItem(QString::number(year), year);
    box->setEnabled(box->count() > 0);
  }
  if (newYear_->count() > 0) {
    newYear_->setCurrentIndex(newYear_->count() - 1);
    closingYear_->setCurrentIndex(std::max(0, closingYear_->count() - 2));
  }
  filling_ = false;
  look();
}

void StartWindow::look() {
  while (QLayoutItem* item = findings_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  ready_ = false;
  if (!canCarry()) {
    say(*summary_, (*texts_)("Readiness.Unknown"), quiet);
    return enableActions();
  }
  const host::YearPair years{account()->account, yearOf(*closingYear_), yearOf(*newYear_)};
  const WaitPointer waiting;
  try {
    const auto findings = host::yearReadiness(*server_, address_, years, texts_->messages());
    for (const host::ReadinessFinding& finding : findings) {
      auto* label = new QLabel((finding.good ? QStringLiteral("✓  ") : QStringLiteral("✗  ")) + shown(finding.text));
      label->setWordWrap(true);
      colourText(*label, finding.good ? good : bad);
      findings_->addWidget(label);
    }
    ready_ = host::isReady(findings);
    const std::vector<platform::Value> both{years.closingYear, years.newYear};
    say(*summary_, (*texts_)(ready_ ? "Readiness.Good" : "Readiness.Bad", both), ready_ ? good : bad);
  } catch (const std::exception& e) {
    say(*summary_, (*texts_)("Readiness.Failed", {e.what()}), bad);
  }
  enableActions();
}

bool StartWindow::inOneDatabase() const {
  return canCarry() && account()->databaseOf(yearOf(*closingYear_)) == account()->databaseOf(yearOf(*newYear_));
}

bool StartWindow::canCarry() const {
  return server_ && account() && closingYear_->currentIndex() >= 0 && newYear_->currentIndex() >= 0;
}

// A year that is not ready may be tried all the same: the carry-forward's own check then says why it stops.
void StartWindow::enableActions() {
  const bool can = canCarry();
  for (QPushButton* button : {transfer_, transGL_, preview_, look_}) button->setEnabled(can);
  // Its second connection reads the closing year in the database that the run's transaction holds.
  const bool oneDatabase = inOneDatabase();
  if (oneDatabase) transGL_->setEnabled(false);
  transGL_->setToolTip((*texts_)(oneDatabase ? "TransGL.OneDatabase" : "TransGL.Tip"));
  report_->setEnabled(result_ || QFileInfo::exists(reportFile()));
  connect_->setDefault(!can);
  transfer_->setDefault(can);
}

void StartWindow::browse() {
  const std::string folder = ask().folder(this, (*texts_)("Browse.Title"), folder_->text());
  if (folder.empty()) return;
  folder_->setText(shown(folder));
  connectServer();
}

host::CarryForwardOptions StartWindow::options() const {
  const StartChoice chosen = choice();
  host::CarryForwardOptions options;
  options.server = address_;
  options.account = chosen.account;
  options.closingYear = chosen.closingYear;
  options.newYear = chosen.newYear;
  options.language = chosen.language;
  if (!chosen.operatorName.empty()) options.operatorName = chosen.operatorName;
  return options;
}

void StartWindow::carry(host::Entry entry) {
  if (!canCarry()) return;
  saveChoice(settings_, choice());
  host::CarryForwardOptions options = this->options();
  options.entry = entry;
  if (entry == host::Entry::transGL) {
    options.closingDatabase = account()->databaseOf(options.closingYear);
    options.newDatabase = account()->databaseOf(options.newYear);
  }
  DialogWindows windows(this, *texts_);
  options.dialogs = &windows;
  options.progress = &windows;
  // Each carry-forward begins as in a process of its own: a cancelled dialog would fall back on the parameter text of
  // the one before, and switches that a text does not name would keep its values.
  gljz::run = {};
  outcome_->clear();
  try {
    host::RunResult result = host::carryForward(options);
    if (windows.conditionsCancelled() && !result.transactionBegun && !result.uncaught) {
      say(*outcome_, (*texts_)("Cancelled"), quiet);
      return;
    }
    result_ = std::move(result);
  } catch (const std::exception& e) {
    ask().complain(this, windowTitle(), shown(e.what()));
    return;
  }
  keepReport();
  look();
  const host::ReportModel report = host::reportModel(*result_);
  say(*outcome_, shown(report.headline), gradeColour(report.grade));
  ResultWindow(this, *result_, *texts_).exec();
}

void StartWindow::keepReport() {
  const QFileInfo file(reportFile());
  try {
    QDir().mkpath(file.path());
    host::writeReport(utf8(file.filePath()), host::ReportFormat::html, *result_);
  } catch (const std::exception& e) {
    ask().complain(this, windowTitle(), shown(e.what()));
  }
}

void StartWindow::openLastReport() {
  if (result_) {
    const Texts words(result_->language);  // the report keeps the language of its run
    ResultWindow(this, *result_, words).exec();
  } else if (!ask().open(reportFile())) {
    ask().complain(this, windowTitle(), (*texts_)("LastReport.Failed", {utf8(reportFile())}));
  }
}

void StartWindow::preview() {
  try {
    ParametersWindow(this, host::previewConditions(options()), *texts_).exec();
  } catch (const std::exception& e) {
    ask().complain(this, windowTitle(), shown(e.what()));
  }
}

void StartWindow::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // Where a server is typed, it connects.
  const QWidget* place = focusWidget();
  const bool typing = place == folder_ || place == odbc_ || place == user_ || place == password_;
  if (enter && !typing && transfer_->isEnabled()) return transfer_->click();
  QWidget::keyPressEvent(event);
}

void StartWindow::closeEvent(QCloseEvent* event) {
  saveChoice(settings_, choice());
  QWidget::closeEvent(event);
}

}  // namespace desktop
