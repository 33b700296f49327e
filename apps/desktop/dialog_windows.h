#pragma once
// DialogWindows: the dialogs of a run as windows.
//
//   DialogWindows windows(this, texts);
//   options.dialogs = &windows;
//   options.progress = &windows;
//   host::carryForward(options);

#include <QPointer>
#include <QWidget>

#include "grid_model.h"
#include "host/form_host.h"

class QPrinter;

namespace desktop {

class LeftOutWindow;
class ProgressWindow;
class ReportWindow;
class Texts;

class DialogWindows final : public host::DialogView, public host::ProgressSink {
public:
  DialogWindows(QWidget* parent, const Texts& texts) : parent_(parent), texts_(texts) {}
  // The pointer that a run has set and left goes with it.
  ~DialogWindows() override { screenPointer(0); }
  DialogWindows(const DialogWindows&) = delete;
  DialogWindows& operator=(const DialogWindows&) = delete;

  // A person left the conditions without confirming them.
  bool conditionsCancelled() const { return cancelled_; }

  void conditions(gljz::FrmTranCond& form) override;
  void divideAccounts(gljz::FrmYeMxSel& form) override;
  void chooseCleared(gljz::FrmSyKmSel& form) override;
  void run(gljz::FrmJZSN& form) override;
  void question(gljz::FrmTwo& form) override;
  void closingReport(gljz::FrmJZBG& form) override;
  void leftOut(gljz::FrmNBalance& form) override;

  void changed(const platform::Form& form) override;
  void doEvents() override;
  void screenPointer(int shape) override;

  std::string printFile(const std::string& dialog) override;
  host::CanvasMaker printer(const std::string& dialog) override;
  const GridModel::Rows* gridOnScreen(const std::string& dialog) override;
  void printEnded(const host::PrintOutcome& outcome) override;

  // The windows read the steps off the form; what they want of the run is its count of rows.
  void began(const std::vector<std::string>&, std::function<std::int64_t()> rowsWritten) override {
    rowsWritten_ = std::move(rowsWritten);
  }
  void stepBegan(const std::string&) override {}
  void stepDone(const std::string&) override {}
  void caption(const std::string&) override {}
  void paused() override {}
  void ended() override { rowsWritten_ = nullptr; }

private:
  class OrdinaryPointer;

  QWidget* top() const;  // the window that the next one stands on

  QWidget* parent_;
  const Texts& texts_;
  std::function<std::int64_t()> rowsWritten_;
  ProgressWindow* progress_ = nullptr;
  ReportWindow* report_ = nullptr;
  LeftOutWindow* leftOut_ = nullptr;
  GridModel::Rows printed_;
  std::shared_ptr<QPrinter> printer_;
  int pointer_ = 0;  // shape that is set for the whole screen; 0: none
  bool cancelled_ = false;
};

}  // namespace desktop
