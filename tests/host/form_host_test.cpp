// The forms of a run without a window.
#include "host/form_host.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "dialogs/frm_jzsn.h"

namespace host {
namespace {

struct Progress final : ProgressSink {
  void began(const std::vector<std::string>&, std::function<std::int64_t()>) override { ++begun; }
  void stepBegan(const std::string&) override {}
  void stepDone(const std::string&) override {}
  void caption(const std::string&) override {}
  void paused() override {}
  void ended() override { ++ends; }
  int begun = 0, ends = 0;
};

struct View final : DialogView {
  void conditions(gljz::FrmTranCond&) override {}
  void divideAccounts(gljz::FrmYeMxSel&) override {}
  void chooseCleared(gljz::FrmSyKmSel&) override {}
  void run(gljz::FrmJZSN&) override {
    if (fails) throw std::runtime_error("overflow");
  }
  bool fails = false;
};

TEST(FormHostTest, TheProgressOfARunEndsAsTheRunDoes) {
  Progress progress;
  View view;
  FormAnswers answers;
  answers.progress = &progress, answers.dialogs = &view;
  FormHost forms(answers);
  gljz::FrmJZSN form;
  forms.ShowModal(form);
  EXPECT_EQ(progress.begun, 1);
  EXPECT_EQ(progress.ends, 1);

  view.fails = true;
  EXPECT_THROW(forms.ShowModal(form), std::runtime_error);
  EXPECT_EQ(progress.begun, 2);
  EXPECT_EQ(progress.ends, 2) << "what a terminal shows of it would be drawn over what comes next";
  EXPECT_EQ(forms.steps().size(), gljz::FrmJZSN::stepCount);
}

}  // namespace
}  // namespace host
