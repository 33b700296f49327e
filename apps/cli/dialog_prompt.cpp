#include "dialog_prompt.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <istream>
#include <ostream>
#include <sstream>
#include <string_view>
#include <vector>

#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "host/display_width.h"
#include "host/printing.h"
#include "platform/run_time_error.h"
#include "platform/value.h"

namespace cli {
namespace {

using gljz::FrmTranCond;

// The index that a line's number from 1 names; nothing when it names none of `count` lines.
std::optional<std::size_t> indexFrom(const std::string& word, std::size_t count) {
  std::size_t number = 0;
  const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (failure != std::errc() || end != word.data() + word.size() || number < 1 || number > count) return std::nullopt;
  return number - 1;
}

std::vector<std::string> wordsOf(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

struct SelectionButton {
  std::string_view letter;
  gljz::Button FrmTranCond::*button;
  void (FrmTranCond::*press)();
  const char* enabledBy;  // key of a switch
};
constexpr SelectionButton selectionButtons[] = {
    {"c", &FrmTranCond::cmdCustomerTran, &FrmTranCond::cmdCustomerTran_Click, "GL*CusMXJZ"},
    {"s", &FrmTranCond::cmdSupTran, &FrmTranCond::cmdSupTran_Click, "GL*SupMXJZ"},
    {"p", &FrmTranCond::cmdSyKmSel, &FrmTranCond::cmdSyKmSel_Click, "GL*Clear"},
};

}  // namespace

std::string DialogPrompt::text(const char* key, const std::vector<platform::Value>& arguments) const {
  return messages_.text(std::string("Gljz.Host.Prompt.") + key, arguments);
}

void DialogPrompt::endIfInterrupted() {
  if (held_ && held_->interrupted()) held_->end();
}

std::optional<std::string> DialogPrompt::answer(const std::string& question) {
  out_ << question << std::flush;
  std::string line;
  if ((held_ && !held_->waitForInput()) || !std::getline(in_, line)) {
    out_ << "\n";
    return std::nullopt;
  }
  return platform::trim(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
}

void DialogPrompt::complain(const std::string& word) {
  out_ << "  ? " << word << "\n";
}

void DialogPrompt::show(const FrmTranCond& form) {
  out_ << "\n" << form.Caption << "\n";
  for (std::size_t i = 0; i < form.lvCond.size(); ++i) {
    const auto& item = form.lvCond[i];
    out_ << (i < 9 ? "  " : " ") << i + 1 << (item.checked ? " [x] " : " [ ] ") << item.text << "\n";
  }
  for (const SelectionButton& selection : selectionButtons) {
    const gljz::Button& button = form.*selection.button;
    if (button.Enabled) out_ << "  " << selection.letter << " " << button.Caption << "\n";
  }
}

void DialogPrompt::sayWhyDisabled(const FrmTranCond& form, const gljz::Button& button, const char* enabledBy) {
  const auto index = form.indexOf(enabledBy);
  out_ << "  "
       << (index ? text("Disabled", {button.Caption, form.lvCond[*index].text})
                 : text("DisabledHere", {button.Caption}))
       << "\n";
}

void DialogPrompt::conditions(FrmTranCond& form) {
  held_.emplace();
  for (;;) {
    show(form);
    const auto line = answer(text("Conditions", {form.cmdOk.Caption, form.cmdCancel.Caption}));
    if (!line || *line == "q") return form.cmdCancel_Click();
    if (line->empty()) {
      form.cmdOk_Click();
      held_.reset();
      return;
    }
    for (const std::string& word : wordsOf(*line)) {
      const auto selection = std::find_if(std::begin(selectionButtons), std::end(selectionButtons),
                                          [&](const SelectionButton& s) { return s.letter == word; });
      if (selection != std::end(selectionButtons)) {
        const gljz::Button& button = form.*selection->button;
        if (button.Enabled)
          (form.*selection->press)();
        else
          sayWhyDisabled(form, button, selection->enabledBy);
      } else if (const auto index = indexFrom(word, form.lvCond.size())) {
        form.check(*index, !form.lvCond[*index].checked);
      } else {
        complain(word);
      }
    }
  }
}

void DialogPrompt::show(const gljz::DoubleList& list, const std::string& leftTitle, const std::string& rightTitle) {
  std::size_t number = 0;
  const auto part = [&](const std::string& title, const gljz::DoubleList::Entries& entries) {
    out_ << title << "\n";
    for (const std::string& entry : entries) {
      ++number;
      out_ << (number < 10 ? "   " : "  ") << number << " " << entry << "\n";
    }
  };
  part(leftTitle, list.left());
  part(rightTitle, list.right());
}

// The numbers are those that were shown, whatever an earlier one of the line has moved.
void DialogPrompt::move(gljz::DoubleList& list, const std::string& words) {
  const std::size_t leftCount = list.left().size(), count = leftCount + list.right().size();
  std::vector<std::size_t> fromLeft, fromRight;
  for (const std::string& word : wordsOf(words)) {
    if (word == "all") return list.moveAllRight();
    if (word == "none") return list.moveAllLeft();
    const auto index = indexFrom(word, count);
    if (!index) {
      complain(word);
    } else if (*index < leftCount) {
      fromLeft.push_back(*index);
    } else {
      fromRight.push_back(*index - leftCount);
    }
  }
  for (auto* indices : {&fromLeft, &fromRight}) {
    std::sort(indices->begin(), indices->end(), std::greater<>());
    indices->erase(std::unique(indices->begin(), indices->end()), indices->end());
  }
  for (const std::size_t index : fromLeft) list.moveRight(index);
  for (const std::size_t index : fromRight) list.moveLeft(index);
}

void DialogPrompt::divideAccounts(gljz::FrmYeMxSel& form) {
  out_ << "\n" << form.Frame1.Caption << "\n" << form.lblNote.Caption << "\n";
  for (;;) {
    show(form.CtlSelList1, form.Label1.Caption, form.Label2.Caption);
    const auto line = answer(text("Division", {form.cmdRefresh.Caption, form.cmdOK.Caption}));
    if (!line || line->empty()) return form.cmdOK_Click();
    if (*line == "r")
      form.cmdRefresh_Click();
    else
      move(form.CtlSelList1, *line);
  }
}

void DialogPrompt::chooseCleared(gljz::FrmSyKmSel& form) {
  out_ << "\n" << form.Frame1.Caption << "\n" << form.Label3.Caption << "\n";
  for (;;) {
    show(form.CtlSelList1, form.Label1.Caption, form.Label2.Caption);
    const auto line = answer(text("Cleared", {form.cmdOK.Caption}));
    if (!line || line->empty()) return form.cmdOK_Click();
    move(form.CtlSelList1, *line);
  }
}

// A failure in a button of a closing dialog is told; the run it closes has ended.
void DialogPrompt::press(const std::function<void()>& button) {
  try {
    button();
  } catch (const platform::RunTimeError& e) {
    out_ << "  ! " << e.what() << "\n";
  }
}

void DialogPrompt::closingReport(gljz::FrmJZBG& form) {
  for (;;) {
    out_ << "\n"
         << form.Caption << "\n  " << form.Label1.Caption << form.Label2.Caption << "  " << form.Label3.Caption
         << form.Label4.Caption << "\n";
    const auto line = answer(text("Report", {form.command2.Caption, form.Command1.Caption, form.Command3.Caption}));
    if (!line || line->empty()) return form.Command3_Click();
    if (*line == "p")
      press([&] { form.command2_Click(); });
    else if (*line == "n")
      form.Command1_Click();
    else
      complain(*line);
  }
}

void DialogPrompt::leftOut(gljz::FrmNBalance& form) {
  for (;;) {
    out_ << "\n" << form.Caption << "\n";
    std::vector<std::size_t> widths;
    for (const auto& row : form.Grid1.rows)
      for (std::size_t i = 0; i < row.size(); ++i) {
        widths.resize(std::max(widths.size(), i + 1));
        widths[i] = std::max(widths[i], host::displayWidth(row[i]));
      }
    for (const auto& row : form.Grid1.rows) {
      std::string text;
      for (std::size_t i = 0; i < row.size(); ++i) text += "  " + host::paddedToWidth(row[i], widths[i]);
      out_ << text.erase(text.find_last_not_of(' ') + 1) << "\n";
    }
    const auto line = answer(text("LeftOut", {form.Command3.Caption, form.Command2.Caption}));
    if (!line || line->empty()) return form.Command2_Click();
    if (*line == "p")
      press([&] { form.Command3_Click(); });
    else
      complain(*line);
  }
}

std::string DialogPrompt::printFile(const std::string& dialog) {
  const std::string endings(host::PagePrint::endings());
  const std::string usual =
      std::string(dialog == "frmNBalance" ? "left-out" : "closing-report") + endings.substr(0, endings.find(','));
  for (;;) {
    const auto line = answer(text("File", {endings, usual}));
    if (!line || *line == "q") return {};
    const std::string file = line->empty() ? usual : *line;
    if (host::PagePrint::canPrint(file)) return file;
    complain(file);
  }
}

void DialogPrompt::printEnded(const host::PrintOutcome& outcome) {
  if (outcome.failure.empty())
    out_ << "  " << outcome.file << "\n";
  else
    out_ << "  ! " << outcome.failure << "\n";
}

}  // namespace cli
