#pragma once
// StartWindow: which server, account set and years; whether they are ready; and what can be done with them.

#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "host/carry_forward.h"
#include "host/year_readiness.h"
#include "start_choice.h"
#include "texts.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSettings;
class QVBoxLayout;

namespace desktop {

class StartWindow final : public QWidget {
public:
  // settings: where the last choice is kept; it outlives the window. A server there is connected to at once.
  explicit StartWindow(QSettings& settings);
  ~StartWindow() override;

  void setLanguage(const std::string& language);
  void connectServer();
  void carry(host::Entry entry);

  const std::optional<host::RunResult>& lastResult() const { return result_; }
  bool ready() const { return ready_; }
  // Where the last report is kept from one start to the next.
  static QString reportFile();

protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;  // Enter carries forward, as in a dialog with that default button

private:
  void buildTop(QVBoxLayout* column);
  void buildServer(QVBoxLayout* column);
  void buildYears(QVBoxLayout* column);
  void buildReadiness(QVBoxLayout* column);
  void buildActions(QVBoxLayout* column);
  QLabel* addLabel(QGridLayout* grid, int row, int column, const char* key, QWidget* field);

  void setTexts();
  void showKind();
  void disconnectServer();
  QString connectionTrouble() const;  // what is wrong with the address, as far as it can be seen from here
  void showAccounts();
  void showYears();
  void look();  // whether the years are ready
  void say(QLabel& label, const QString& text, const QColor& colour) const;

  void browse();
  void preview();
  void openLastReport();
  void keepReport();

  StartChoice choice() const;
  host::CarryForwardOptions options() const;
  const host::AccountSet* account() const;
  bool canCarry() const;
  bool inOneDatabase() const;  // both years
  void enableActions();

  QSettings& settings_;
  std::unique_ptr<Texts> texts_;
  std::optional<host::ServerPtr> server_;
  host::ServerAddress address_;
  std::vector<host::AccountSet> accounts_;
  std::optional<host::RunResult> result_;
  bool ready_ = false, filling_ = false;

  std::vector<std::pair<QWidget*, const char*>> captions_;  // what shows a text of a key
  QLabel* title_;
  QComboBox *language_, *kind_, *account_, *closingYear_, *newYear_;
  QLineEdit *folder_, *odbc_, *user_, *password_, *operator_;
  QPushButton *browse_, *connect_, *look_, *preview_, *report_, *transGL_, *transfer_;
  QLabel *connection_, *summary_, *outcome_;
  QVBoxLayout* findings_;
};

}  // namespace desktop
