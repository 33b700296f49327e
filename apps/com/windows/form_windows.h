#pragma once
// FormWindows: the form host and the print control of the component. Dialogs are windows where somebody can see them,
// and are answered as their models stand where nobody can.
//
//   FormWindows forms({programFolder, language});
//   surroundings.forms = &forms;
//   surroundings.print = &forms.print();
//
// Windows are made on the thread that calls. With a desktop ShowModal runs that thread's messages until the window has
// gone, and the thread's other windows take no input meanwhile.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "desktop_station.h"
#include "dialog_windows.h"
#include "host/condition_answers.h"
#include "host/form_host.h"
#include "platform/forms.h"

namespace windows {

class FormWindows final : public platform::FormHost {
public:
  struct Settings {
    std::string programFolder;              // where TransferParameter.xml and glrep/ lie, without a trailing slash
    std::function<std::string()> language;  // the login's: zh-CN, zh-TW, en-US
    bool showWindows = desktopIsThere();    // a host that has nobody to ask, for instance a script, says false
    HWND owner = nullptr;                   // null: the window that is active on the thread, if any
    Ask* ask = nullptr;                     // null: the window system asks
  };
  explicit FormWindows(Settings settings);
  ~FormWindows() override;

  void ShowModal(platform::Form& form) override;
  void Changed(platform::Form& form) override;
  void DoEvents() override;
  void ScreenPointer(int shape) override;
  std::string ProgramFolder() const override { return settings_.programFolder; }

  // Prints on what the person chooses; without a person it answers that the operator left.
  platform::PrintControl& print() { return print_; }
  // Null when the dialogs are answered without windows.
  DialogWindows* dialogs() { return windows_ ? &*windows_ : nullptr; }

private:
  class Printer final : public platform::PrintControl {
  public:
    explicit Printer(FormWindows& forms) : forms_(forms) {}
    int Print(const Job& job) override;

  private:
    FormWindows& forms_;
  };

  host::FormAnswers answers();

  Settings settings_;
  std::optional<DialogWindows> windows_;
  host::ConditionChoices noChoices_;
  host::ConditionAnswers asTheyStand_{noChoices_};
  std::optional<host::FormHost> host_;
  Printer print_{*this};
  int depth_ = 0;  // of forms that stand
};

}  // namespace windows
