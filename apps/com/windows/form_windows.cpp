#include "form_windows.h"

#include <utility>

#include "core/run_state.h"
#include "host/printing.h"

namespace windows {

FormWindows::FormWindows(Settings settings) : settings_(std::move(settings)) {
  if (settings_.showWindows)
    windows_.emplace(DialogWindows::Settings{settings_.owner, settings_.language, settings_.ask});
  host_.emplace(answers());
}

FormWindows::~FormWindows() = default;

host::FormAnswers FormWindows::answers() {
  host::FormAnswers answers;
  answers.programFolder = settings_.programFolder;
  answers.dialogs = windows_ ? static_cast<host::DialogView*>(&*windows_) : &asTheyStand_;
  return answers;
}

// What the host keeps about the forms that it has shown goes with the next one: the component may live for days.
void FormWindows::ShowModal(platform::Form& form) {
  if (depth_ == 0) host_.emplace(answers());
  struct Level {
    int& depth;
    explicit Level(int& d) : depth(++d) {}
    ~Level() { --depth; }
  } const level(depth_);
  host_->ShowModal(form);
}

void FormWindows::Changed(platform::Form& form) {
  host_->Changed(form);
}

void FormWindows::DoEvents() {
  host_->DoEvents();
}

void FormWindows::ScreenPointer(int shape) {
  host_->ScreenPointer(shape);
}

int FormWindows::Printer::Print(const Job& job) {
  const std::string language = forms_.settings_.language ? forms_.settings_.language() : "zh-CN";
  host::Printing printing(language, {}, forms_.dialogs());
  // A host's own services keep the tables in a database of theirs, which is no file of the reference host.
  if (gljz::run.m_pubCls) printing.readTablesOf(&gljz::run.m_pubCls->FormatDb());
  return printing.control()->Print(job);
}

}  // namespace windows
