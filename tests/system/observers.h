#pragma once
// What a test sees of the run's surroundings beside the databases: boxes, questions about records, event rounds.
//
//   auto services = std::make_shared<AskingServices>(run.m_pubCls);
//   run.m_pubCls = services;
//   run.m_bManual = run.m_bCancelable = true;      // the gate of ShowMsg; no run ever opens it
//   services->answer = 6;                          // Yes

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/forms.h"
#include "platform/services.h"

namespace gljz::test {

// A box that came up; its texts are message keys, as the services hand those out here.
struct Box {
  std::string prompt;
  int style = 0;
  std::string title;
  bool operator==(const Box&) const = default;
};
inline void PrintTo(const Box& box, std::ostream* out) {
  *out << box.prompt << " (" << box.style << ") " << box.title;
}

// Boxes come up, are remembered and answered; a message text is its key. Everything else is asked of the services
// behind.
class AskingServices : public platform::ZwPubCls {
public:
  explicit AskingServices(std::shared_ptr<platform::ZwPubCls> inner) : inner_(std::move(inner)) {}

  int answer = 0;
  std::vector<Box> boxes;
  std::vector<std::string> questions;                        // "MatchItem 0101 98 0 true"
  std::shared_ptr<platform::Connection> replacedConnection;  // in the place of the new year's, when set

  std::string ResText(const std::string& key, const std::vector<platform::Value>*) override { return key; }
  int ServiceMsgBox(const std::string& prompt, int style, const std::string& title, const std::string&, int) override {
    boxes.push_back({prompt, style, title});
    return answer;
  }
  std::shared_ptr<platform::Connection> NewYearConn() override {
    return replacedConnection ? replacedConnection : inner_->NewYearConn();
  }

  std::string MatchCode(const std::string& code, int option, bool flag) override {
    note("MatchCode " + code, option, flag);
    return inner_->MatchCode(code, option, flag);
  }
  std::string MatchDepartment(const std::string& code, int option, bool flag) override {
    note("MatchDepartment " + code, option, flag);
    return inner_->MatchDepartment(code, option, flag);
  }
  std::string MatchPerson(const std::string& code, int option, bool flag) override {
    note("MatchPerson " + code, option, flag);
    return inner_->MatchPerson(code, option, flag);
  }
  std::string MatchCustomer(const std::string& code, int option, bool flag) override {
    note("MatchCustomer " + code, option, flag);
    return inner_->MatchCustomer(code, option, flag);
  }
  std::string MatchVendor(const std::string& code, int option, bool flag) override {
    note("MatchVendor " + code, option, flag);
    return inner_->MatchVendor(code, option, flag);
  }
  std::string MatchItem(const std::string& item, const std::string& itemClass, int option, bool flag) override {
    note("MatchItem " + item + " " + itemClass, option, flag);
    return inner_->MatchItem(item, itemClass, option, flag);
  }

  void SetLogin(std::shared_ptr<platform::Login> login) override { inner_->SetLogin(std::move(login)); }
  void SetYear(int year) override { inner_->SetYear(year); }
  void InitServices(const platform::Value& handle, const std::string& text, const std::string& account, int year,
                    const platform::Value& loginOperator, const platform::Value& date) override {
    inner_->InitServices(handle, text, account, year, loginOperator, date);
  }
  bool ServiceLocalize(platform::Form& form, const std::string& prefix, const std::string& second,
                       const std::string& third) override {
    return inner_->ServiceLocalize(form, prefix, second, third);
  }
  int CurrentYearInfo() override { return inner_->CurrentYearInfo(); }
  int AccountYearInfo() override { return inner_->AccountYearInfo(); }
  int iStartYear() override { return inner_->iStartYear(); }
  platform::DateTime CalendarInfo(int a, int b) override { return inner_->CalendarInfo(a, b); }
  platform::DateTime YearCalendar(int a, int b) override { return inner_->YearCalendar(a, b); }
  std::string OptionText(const std::string& group, const std::string& name) override {
    return inner_->OptionText(group, name);
  }
  platform::AccountOptions AccountOptions() override { return inner_->AccountOptions(); }
  std::string OperatorName() override { return inner_->OperatorName(); }
  void GetCodeRecord(const std::string& code, platform::CodeRecord& record,
                     const std::vector<int>& selectors) override {
    inner_->GetCodeRecord(code, record, selectors);
  }
  bool GetSignRecord(const std::string& csign, platform::SignRecord& record) override {
    return inner_->GetSignRecord(csign, record);
  }
  bool SignExists(const std::string& csign) override { return inner_->SignExists(csign); }
  bool SettleStyleExists(const std::string& csettle) override { return inner_->SettleStyleExists(csettle); }
  std::string TranslateWord(const std::string& word) override { return inner_->TranslateWord(word); }
  platform::FormatDatabase& FormatDb() override { return inner_->FormatDb(); }

private:
  void note(std::string question, int option, bool flag) {
    questions.push_back(std::move(question) + " " + std::to_string(option) + (flag ? " true" : " false"));
  }
  std::shared_ptr<platform::ZwPubCls> inner_;
};

// A window system that counts how often it was let in.
struct CountingForms final : platform::FormHost {
  int eventRounds = 0;
  void ShowModal(platform::Form&) override {}
  void Changed(platform::Form&) override {}
  void DoEvents() override { ++eventRounds; }
  void ScreenPointer(int) override {}
  std::string ProgramFolder() const override { return GLJZ_SOURCE_DIR "/data"; }
};

}  // namespace gljz::test
