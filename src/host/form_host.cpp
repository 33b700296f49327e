#include "host/form_host.h"

#include "core/run_state.h"
#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "dialogs/frm_two.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "host/printing.h"

namespace host {
namespace {

// Reads the steps off the form when the scope is left, by a failure too.
class StepReader {
public:
  StepReader(const gljz::FrmJZSN& form, std::vector<Step>& steps) : form_(form), steps_(steps) {}
  ~StepReader() {
    steps_.clear();
    for (std::size_t i = 0; i < gljz::FrmJZSN::stepCount; ++i)
      steps_.push_back({form_.Label1(i).Caption, form_.Label2(i)});
  }
  StepReader(const StepReader&) = delete;
  StepReader& operator=(const StepReader&) = delete;

private:
  const gljz::FrmJZSN& form_;
  std::vector<Step>& steps_;
};

std::vector<std::string> stepTexts(const gljz::FrmJZSN& form) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < gljz::FrmJZSN::stepCount; ++i) texts.push_back(form.Label1(i).Caption);
  return texts;
}

}  // namespace

void DialogView::run(gljz::FrmJZSN& form) {
  if (form.Timer1_Enabled()) form.Timer1_Timer();
}

std::string DialogView::printFile(const std::string&) {
  return {};
}

CanvasMaker DialogView::printer(const std::string&) {
  return {};
}

void FormHost::ShowModal(platform::Form& form) {
  shown_.emplace_back(form.Name());
  if (auto* progressForm = dynamic_cast<gljz::FrmJZSN*>(&form)) {
    run(*progressForm);
  } else if (auto* conditions = dynamic_cast<gljz::FrmTranCond*>(&form)) {
    answerConditions(*conditions);
  } else if (auto* division = dynamic_cast<gljz::FrmYeMxSel*>(&form)) {
    if (answers_.dialogs) answers_.dialogs->divideAccounts(*division);
    division->Form_QueryUnload();
    (division->iType == gljz::FrmYeMxSel::customers ? dividedCustomers_ : dividedSuppliers_) = true;
  } else if (auto* cleared = dynamic_cast<gljz::FrmSyKmSel*>(&form)) {
    if (answers_.dialogs) answers_.dialogs->chooseCleared(*cleared);
    if (cleared->visible()) gljz::frmSyKmSel.unload();
  } else if (auto* report = dynamic_cast<gljz::FrmJZBG*>(&form)) {
    showReport(*report);
  } else if (auto* notCarried = dynamic_cast<gljz::FrmNBalance*>(&form)) {
    showLeftOut(*notCarried);
  } else if (auto* question = dynamic_cast<gljz::FrmTwo*>(&form)) {
    if (answers_.dialogs) answers_.dialogs->question(*question);
    if (question->visible()) question->Hide();
  }
}

void FormHost::run(gljz::FrmJZSN& form) {
  // However the run ends: a sink that is not told may go on drawing over what a terminal shows next.
  struct Ended {
    ProgressSink* sink;
    ~Ended() {
      if (sink != nullptr) sink->ended();
    }
  };
  const StepReader reader(form, steps_);
  lastBegan_.clear();
  lastCaption_ = form.Label3();
  steps_.assign(gljz::FrmJZSN::stepCount, {});
  if (answers_.progress) answers_.progress->began(stepTexts(form), answers_.rowsWritten);
  const Ended ended{answers_.progress};
  if (answers_.dialogs)
    answers_.dialogs->run(form);
  else if (form.Timer1_Enabled())
    form.Timer1_Timer();
}

void FormHost::answerConditions(gljz::FrmTranCond& form) {
  const bool asked = !answers_.conditions && answers_.dialogs;
  if (answers_.conditions) answers_.conditions();
  if (asked) {
    if (answers_.conditionsBegin) answers_.conditionsBegin();
    answers_.dialogs->conditions(form);
  }
  if (form.visible()) gljz::frmTranCond.unload();
  if (!asked || !gljz::run.m_strCondXml.empty()) return;
  conditionsLeft_ = true;
  if (answers_.conditionsLeft) answers_.conditionsLeft(answers_.dialogs->interrupted());
}

void FormHost::showReport(gljz::FrmJZBG& form) {
  report_ = ClosingReport{form.Label2.Caption, form.Label4.Caption, {}};
  const auto& grid = form.Grid1.rows;
  if (!grid.empty()) report_->rows.assign(grid.begin() + 1, grid.end());
  if (answers_.progress) answers_.progress->paused();
  if (answers_.printing) answers_.printing->closingReport(form);
  if (answers_.dialogs) answers_.dialogs->closingReport(form);
  if (form.visible()) form.Command3_Click();
}

void FormHost::showLeftOut(gljz::FrmNBalance& form) {
  const bool forPrint = answers_.printing && answers_.printing->leftOut(form);
  if (!forPrint && answers_.dialogs) answers_.dialogs->leftOut(form);
  form.Form_QueryUnload();
}

void FormHost::Changed(platform::Form& form) {
  if (answers_.progress) follow(form);
  if (answers_.dialogs) answers_.dialogs->changed(form);
}

void FormHost::follow(const platform::Form& form) {
  const auto* progressForm = dynamic_cast<const gljz::FrmJZSN*>(&form);
  if (!progressForm || steps_.empty()) return;
  for (std::size_t i = 0; i < gljz::FrmJZSN::stepCount; ++i) {
    const gljz::Label& label = progressForm->Label1(i);
    const std::string& mark = progressForm->Label2(i);
    if (mark != steps_[i].mark) {
      steps_[i].mark = mark;
      answers_.progress->stepDone(label.Caption);
    }
    if (label.ForeColor == gljz::red && label.Caption != lastBegan_) {
      lastBegan_ = label.Caption;
      answers_.progress->stepBegan(label.Caption);
    }
  }
  if (progressForm->Label3() != lastCaption_) {
    lastCaption_ = progressForm->Label3();
    answers_.progress->caption(lastCaption_);
  }
}

}  // namespace host
