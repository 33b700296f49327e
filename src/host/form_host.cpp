#include "host/form_host.h"

#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_tran_cond.h"

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

}  // namespace

void FormHost::ShowModal(platform::Form& form) {
  shown_.emplace_back(form.Name());
  if (auto* progressForm = dynamic_cast<gljz::FrmJZSN*>(&form)) {
    const StepReader reader(*progressForm, steps_);
    lastBegan_.clear();
    lastCaption_ = progressForm->Label3();
    steps_.assign(gljz::FrmJZSN::stepCount, {});
    if (progressForm->Timer1_Enabled()) progressForm->Timer1_Timer();
    if (answers_.progress) answers_.progress->ended();
  } else if (dynamic_cast<gljz::FrmTranCond*>(&form)) {
    if (answers_.conditions) answers_.conditions();
  }
}

void FormHost::Changed(platform::Form& form) {
  if (answers_.progress) follow(form);
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
