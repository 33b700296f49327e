#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QTest>

#include "core/mdu_jz.h"
#include "demo_desktop.h"
#include "desktop/dialog_windows.h"
#include "desktop/double_list_view.h"
#include "desktop/progress_window.h"
#include "desktop/selection_windows.h"
#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "host/form_captions.h"

namespace desktop::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class DoubleListViewTest : public testing::Test {
protected:
  DoubleListViewTest() {
    for (const char* entry : {"1 a", "2 b", "3 c", "4 d"}) list_.addLeft(entry);
    view_ = std::make_unique<DoubleListView>(nullptr, list_, "L", "R", texts_);
    view_->show();
  }
  void select(const char* name, std::initializer_list<int> rows) {
    auto& widget = child<QListWidget>(*view_, name);
    widget.clearSelection();
    for (const int row : rows) widget.item(row)->setSelected(true);
  }
  Texts texts_{"zh-CN"};
  gljz::DoubleList list_;
  std::unique_ptr<DoubleListView> view_;
};

TEST_F(DoubleListViewTest, MovesWhatIsSelectedInItsOrder) {
  select("left", {0, 2, 3});
  press(*view_, "moveRight");
  EXPECT_THAT(list_.right(), ElementsAre("1 a", "3 c", "4 d"));
  EXPECT_THAT(list_.left(), ElementsAre("2 b"));
  select("right", {1});
  press(*view_, "moveLeft");
  EXPECT_THAT(entries(*view_, "left"), ElementsAre("2 b", "3 c"));
  press(*view_, "moveAllLeft");
  EXPECT_THAT(entries(*view_, "left"), ElementsAre("2 b", "3 c", "1 a", "4 d"));
}

TEST_F(DoubleListViewTest, ADoubleClickMovesOneEntry) {
  auto& left = child<QListWidget>(*view_, "left");
  const QPoint at = left.visualItemRect(left.item(1)).center();
  QTest::mouseClick(left.viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(left.viewport(), Qt::LeftButton, {}, at);
  EXPECT_THAT(list_.right(), ElementsAre("2 b"));
}

TEST_F(DoubleListViewTest, WithoutASelectionNothingMoves) {
  child<QListWidget>(*view_, "left").clearSelection();
  press(*view_, "moveRight");
  EXPECT_TRUE(list_.right().empty());
}

// A form host that does nothing; shows a form with what it is given.
class QuietForms final : public platform::FormHost {
public:
  QuietForms() {
    surroundings_.forms = this;
    platform::setSurroundings(&surroundings_);
  }
  ~QuietForms() override { platform::setSurroundings(nullptr); }
  std::function<void()> show;
  void ShowModal(platform::Form&) override { show(); }
  void Changed(platform::Form&) override {}
  void DoEvents() override {}
  void ScreenPointer(int) override {}
  std::string ProgramFolder() const override { return {}; }

private:
  platform::Surroundings surroundings_;
};

TEST(ProgressWindow, ShowsTheLastStateHoweverSoonItComes) {
  const QuietForms forms;
  const Texts texts("zh-CN");
  gljz::FrmJZSN form;
  ProgressWindow window(nullptr, form, texts, {});
  form.markStep(7);
  window.changed();
  window.paintNow();
  EXPECT_EQ(textOf(window, "Label2_7"), "Y");
}

TEST(ProgressWindow, CountsTheRowsOfTheRunAlone) {
  const QuietForms forms;
  const Texts texts("zh-CN");
  gljz::FrmJZSN form;
  std::int64_t rows = 71;  // a dialog in front of the run has stored its choice
  ProgressWindow window(nullptr, form, texts, [&] { return rows; });
  EXPECT_THAT(textOf(window, "status"), HasSubstr("0"));
  EXPECT_THAT(textOf(window, "status"), Not(HasSubstr("71")));
  rows += 4;
  window.paintNow();
  EXPECT_THAT(textOf(window, "status"), HasSubstr("4"));
  EXPECT_THAT(textOf(window, "status"), Not(HasSubstr("75")));
}

class QuestionWindowTest : public testing::Test {
protected:
  // The answer after a button of that name, "Enter" or "Escape" for the keys, or the close box for none.
  int answerOf(const char* button) {
    gljz::FrmTwo form;
    Autopilot pilot;
    pilot.then("frmTwo", [&](QWidget& w) {
      if (button && std::string(button) == "Enter")
        QTest::keyClick(&w, Qt::Key_Return);
      else if (button && std::string(button) == "Escape")
        QTest::keyClick(&w, Qt::Key_Escape);
      else if (button)
        press(w, button);
      else
        w.close();
    });
    // Where a host shows it, the form is visible until it hides itself.
    QuestionWindow window(nullptr, form, texts_);
    QuietForms forms;
    forms.show = [&] { window.showModal(); };
    form.ShowModal();
    EXPECT_EQ(pilot.failures(), std::vector<std::string>{});
    EXPECT_EQ(pilot.left(), std::vector<std::string>{});
    return form.answer;
  }
  Texts texts_{"zh-CN"};
};

TEST_F(QuestionWindowTest, GivesTheNumberOfThePressedButton) {
  EXPECT_EQ(answerOf("Command1"), 1);
  EXPECT_EQ(answerOf("Command2"), 2);
  EXPECT_EQ(answerOf("Enter"), 1) << "the default button";
  EXPECT_EQ(answerOf(nullptr), 0) << "closing answers nothing";
  EXPECT_EQ(answerOf("Escape"), 0);
}

// The simplified Chinese of the message texts is the forms' own design.
TEST(FormCaptions, SimplifiedChineseIsWhatTheFormsAreDesignedWith) {
  const host::Messages messages("zh-CN");
  const auto unchanged = [&](auto&& form) {
    std::vector<std::string> designed, localized;
    form.visitCaptions([&](std::string_view, std::string& caption) { designed.push_back(caption); });
    host::localizeForm(form, messages, gljz::resourcePrefix);
    form.visitCaptions([&](std::string_view, std::string& caption) { localized.push_back(caption); });
    EXPECT_EQ(localized, designed) << form.Name();
  };
  unchanged(gljz::FrmJZSN());
  unchanged(gljz::FrmJZBG());
  unchanged(gljz::FrmNBalance());
  unchanged(gljz::FrmSyKmSel());
  unchanged(gljz::FrmYeMxSel(gljz::FrmYeMxSel::customers));
}

TEST(FormCaptions, EveryCaptionHasATextInEveryLanguage) {
  for (const char* language : {"zh-TW", "en-US"}) {
    const host::Messages messages(language);
    const auto translated = [&](auto&& form) {
      host::localizeForm(form, messages, gljz::resourcePrefix);
      form.visitCaptions([&](std::string_view control, std::string& caption) {
        std::string key = gljz::resourcePrefix + std::string(form.Name());
        if (!control.empty()) key += "." + std::string(control);
        EXPECT_TRUE(messages.all().contains(key + ".Caption")) << language << " " << key;
        EXPECT_EQ(caption, messages.text(key + ".Caption"));
      });
    };
    translated(gljz::FrmJZSN());
    translated(gljz::FrmJZBG());
    translated(gljz::FrmNBalance());
    translated(gljz::FrmSyKmSel());
    translated(gljz::FrmYeMxSel(gljz::FrmYeMxSel::customers));
    translated(gljz::FrmTwo());
  }
}

}  // namespace
}  // namespace desktop::test
