#pragma once
// DialogWindows: the dialogs of a run as windows, for a host that shows them.
//
//   DialogWindows windows({nullptr, [] { return std::string("zh-CN"); }});
//   answers.dialogs = &windows;
//
// FormWindows is the same as a form host of its own.

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ask.h"
#include "host/form_host.h"

namespace windows {

class ModalWindow;
class ProgressWindow;

class DialogWindows final : public host::DialogView {
public:
  struct Settings {
    HWND owner = nullptr;                        // null: the window that is active on the thread, if any
    std::function<std::string()> language = {};  // of what the windows say themselves; none: zh-CN
    Ask* ask = nullptr;                          // null: the window system asks
  };
  explicit DialogWindows(Settings settings) : settings_(std::move(settings)) {}

  // Those that stand, the one that takes input last.
  const std::vector<ModalWindow*>& standing() const { return standing_; }

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

  // A machine without a printer prints into a file.
  std::string printFile(const std::string& dialog) override;
  host::CanvasMaker printer(const std::string& dialog) override;
  void printEnded(const host::PrintOutcome& outcome) override;

private:
  template <class Window, class Form>
  void show(Form& form, Window** place = nullptr);
  HWND top() const;  // the window that the next one stands on
  std::string language() const { return settings_.language ? settings_.language() : "zh-CN"; }
  Ask& ask() { return settings_.ask ? *settings_.ask : windowSystem_; }

  Settings settings_;
  Ask windowSystem_;
  std::vector<ModalWindow*> standing_;
  ProgressWindow* progress_ = nullptr;
  std::shared_ptr<Printer> printer_;
  int screenPointer_ = 0;
};

}  // namespace windows
