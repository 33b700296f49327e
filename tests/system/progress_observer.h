#pragma once
// What an operator sees of a stage, round by round of window events.
//
//   RecordingForms window(surroundings_);
//   run.m_pubCls = std::make_shared<KeyedServices>(run.m_pubCls);
//   run.m_bManual = true;
//   CarryBankLedger(idText);
//   EXPECT_EQ(window.rounds, (std::vector<Round>{{"", "Orvo.GL.TqGLJZ.00185 100201"}}));

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/run_state.h"
#include "dialogs/frm_jzsn.h"
#include "platform/surroundings.h"
#include "system/observers.h"

namespace gljz::test {

// A message text is its key with its arguments behind it, so that texts that read alike in a language differ.
class KeyedServices : public AskingServices {
public:
  using AskingServices::AskingServices;

  std::string ResText(const std::string& key, const std::vector<platform::Value>* args) override {
    std::string text = key;
    if (args == nullptr) return text;
    for (const platform::Value& arg : *args) {
      const std::string shown = arg.displayText();
      text += (shown.starts_with('\t') ? "" : " ") + shown;  // arguments of report rows bring their separator
    }
    return text;
  }
};

// One round of window events.
struct Round {
  std::string step;     // what the failure text would name
  std::string caption;  // the moving caption; empty when there is no progress form
  bool operator==(const Round&) const = default;
};
inline void PrintTo(const Round& round, std::ostream* out) {
  *out << '[' << round.step << "] " << round.caption;
}

// A window system that remembers what it could have painted each time it was let in. It stands in the place of another
// for as long as it lives.
class RecordingForms final : public platform::FormHost {
public:
  explicit RecordingForms(platform::Surroundings& surroundings)
      : surroundings_(surroundings), replaced_(std::exchange(surroundings.forms, this)) {}
  ~RecordingForms() override { surroundings_.forms = replaced_; }
  RecordingForms(const RecordingForms&) = delete;
  RecordingForms& operator=(const RecordingForms&) = delete;

  std::vector<Round> rounds;
  std::function<void()> whenLetIn;  // what else happens then

  void DoEvents() override {
    rounds.push_back({run.m_strFuncDesc, frmJZSN.isLoaded() ? frmJZSN().Label3() : std::string()});
    if (whenLetIn) whenLetIn();
  }
  void ShowModal(platform::Form&) override {}
  void Changed(platform::Form&) override {}
  void ScreenPointer(int) override {}
  std::string ProgramFolder() const override { return GLJZ_SOURCE_DIR "/data"; }

private:
  platform::Surroundings& surroundings_;
  platform::FormHost* const replaced_;
};

}  // namespace gljz::test
