#include "dialogs/frm_nbalance.h"

#include <vector>

#include "core/mdu_jz.h"
#include "dialogs/report_print.h"

namespace gljz {
namespace {

struct Column {
  const char* headerKey;
  int width;  // twips
};

const std::vector<Column>* columnsOf(int kind) {
  static const std::vector<Column> notCarried = {
      {"Orvo.GL.TqGLJZ.00095", 800},
      {"Orvo.GL.TqGLJZ.00096", 800},
      {"Orvo.GL.TqGLJZ.00097", 800},
      {"Orvo.GL.TqGLJZ.00098", 2200},
  };
  static const std::vector<Column> partner = {
      {"Orvo.GL.TqGLJZ.00062", 800}, {"Orvo.GL.TqGLJZ.00063", 800},  {"Orvo.GL.TqGLJZ.00075", 800},
      {"Orvo.GL.TqGLJZ.00066", 600}, {"Orvo.GL.TqGLJZ.00067", 1200}, {"Orvo.GL.TqGLJZ.00068", 1200},
  };
  static const std::vector<Column> person = {
      {"Orvo.GL.TqGLJZ.00062", 800},  {"Orvo.GL.TqGLJZ.00063", 800}, {"Orvo.GL.TqGLJZ.00064", 800},
      {"Orvo.GL.TqGLJZ.00065", 800},  {"Orvo.GL.TqGLJZ.00066", 600}, {"Orvo.GL.TqGLJZ.00067", 1200},
      {"Orvo.GL.TqGLJZ.00068", 1200},
  };
  switch (kind) {
    case 4:
      return &notCarried;
    case 6:
      return &partner;
    case 7:
      return &person;
    default:
      return nullptr;
  }
}

}  // namespace

void FrmNBalance::Load() {
  LocalizeForm(*this, resourcePrefix, "", "");
  Grid1.shadeColour = platform::rgb(247, 237, 236);
  Grid1.borderStyle = 0;
  continueChosen = false;
}

void FrmNBalance::visitCaptions(const CaptionVisitor& visit) {
  visit("", Caption);
  visit("Command1", Command1.Caption);
  visit("Command2", Command2.Caption);
  visit("Command3", Command3.Caption);
}

void FrmNBalance::Command1_Click() {
  continueChosen = true;
  Hide();
}

void FrmNBalance::Command2_Click() {
  continueChosen = false;
  Hide();
}

void FrmNBalance::Command3_Click() {
  constexpr std::size_t headerAndOneRow = 2;
  if (Grid1.rows.size() < headerAndOneRow) return;
  printGrid(*this, Grid1,
            {GetResString("Orvo.GL.TqGLJZ.00011") + GetResString("Orvo.GL.TqGLJZ.00005", printedYears()), "",
             GetResString("Orvo.GL.TqGLJZ.00007")});
}

bool FrmNBalance::Form_QueryUnload() {
  if (!visible()) return false;
  Command2_Click();
  return true;
}

void FrmNBalance::layOut(int kind) {
  const std::vector<Column>* columns = columnsOf(kind);
  if (columns == nullptr) return;
  Grid1.rows.assign(1, {});
  Grid1.columnWidths.clear();
  for (const Column& column : *columns) {
    Grid1.rows.front().push_back(GetResString(column.headerKey));
    Grid1.columnWidths.push_back(column.width);
  }
  changed();
}

void FrmNBalance::addRow(std::string_view text) {
  Grid1.addRow(text);
  changed();
}

}  // namespace gljz
