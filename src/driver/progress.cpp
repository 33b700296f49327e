#include "driver/progress.h"

#include "core/mdu_jz.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

constexpr int hourglass = 11;

std::size_t line(Step step) {
  return static_cast<std::size_t>(step);
}

}  // namespace

void startStep(Step step) {
  if (run.m_bManual) frmJZSN().colourStep(line(step), red);
}

void finishStep(Step step) {
  if (!run.m_bManual) return;
  frmJZSN().colourStep(line(step), black);
  frmJZSN().markStep(line(step));
}

void advanceFrom(Step step) {
  finishStep(step);
  startStep(static_cast<Step>(line(step) + 1));
}

void showHourglass() {
  if (run.m_bManual) frmJZSN().setMousePointer(hourglass);
}

void showProgress(std::string_view key, const std::vector<platform::Value>& args) {
  if (run.m_bManual) frmJZSN().setLabel3(GetResString(key, args));
}

void DoEvents() {
  platform::surroundings().forms->DoEvents();
}

void SetupImbalanceGrid(int kind) {
  frmNBalance().layOut(kind);
}

void AddImbalanceRow(std::string_view text) {
  frmNBalance().addRow(text);
}

std::string reportRow(const std::vector<std::string>& cells) {
  std::string text;
  for (const std::string& cell : cells) {
    if (&cell != &cells.front()) text += '\t';
    text += cell;
  }
  return text;
}

}  // namespace gljz
