#include "host/journal_services.h"

#include <utility>

namespace host {
namespace {

using namespace platform;

// The title of the box that the run's failure handler would show. It is fetched while the failure is being handled. A
// stage that has something to say fetches it too, outside of any handling.
constexpr const char* failureTitleKey = "Orvo.GL.TqGLJZ.00094";
// What the run says of a stage that has caught its failure itself: the voucher models.
constexpr const char* stageFailedKey = "Orvo.GL.TqGLJZ.00093";

class JournalServices final : public ZwPubCls {
public:
  JournalServices(std::shared_ptr<Journal> journal, std::shared_ptr<ZwPubCls> inner)
      : journal_(std::move(journal)), inner_(std::move(inner)) {}

  std::shared_ptr<Connection> NewYearConn() override { return inner_->NewYearConn(); }
  void SetLogin(std::shared_ptr<Login> login) override { inner_->SetLogin(std::move(login)); }
  void SetYear(int year) override { inner_->SetYear(year); }
  void InitServices(const Value& handle, const std::string& connectionText, const std::string& account, int year,
                    const Value& loginOperator, const Value& date) override {
    inner_->InitServices(handle, connectionText, account, year, loginOperator, date);
  }

  std::string ResText(const std::string& key, const std::vector<Value>* args) override {
    if (key == failureTitleKey) noteHandledFailure();
    if (key == stageFailedKey) journal_->stageFailed();
    std::string text = inner_->ResText(key, args);
    journal_->messageAsked(key, text);
    return text;
  }
  int ServiceMsgBox(const std::string& prompt, int style, const std::string& title, const std::string& helpFile,
                    int context) override {
    journal_->prompted(prompt);
    return inner_->ServiceMsgBox(prompt, style, title, helpFile, context);
  }
  bool ServiceLocalize(Form& form, const std::string& prefix, const std::string& second,
                       const std::string& third) override {
    return inner_->ServiceLocalize(form, prefix, second, third);
  }

  int CurrentYearInfo() override { return inner_->CurrentYearInfo(); }
  int AccountYearInfo() override {
    return ask("AccountYearInfo", {}, [&] { return inner_->AccountYearInfo(); });
  }
  int iStartYear() override {
    return ask("iStartYear", {}, [&] { return inner_->iStartYear(); });
  }
  DateTime CalendarInfo(int a, int b) override {
    return ask("CalendarInfo", {}, [&] { return inner_->CalendarInfo(a, b); });
  }
  DateTime YearCalendar(int a, int b) override {
    return ask("YearCalendar", {}, [&] { return inner_->YearCalendar(a, b); });
  }
  std::string OptionText(const std::string& group, const std::string& name) override {
    return ask("OptionText", name, [&] { return inner_->OptionText(group, name); });
  }
  platform::AccountOptions AccountOptions() override {
    return ask("AccountOptions", {}, [&] { return inner_->AccountOptions(); });
  }
  std::string OperatorName() override { return inner_->OperatorName(); }
  void GetCodeRecord(const std::string& code, CodeRecord& record, const std::vector<int>& selectors) override {
    ask("GetCodeRecord", code, [&] { inner_->GetCodeRecord(code, record, selectors); });
  }
  std::string MatchCode(const std::string& code, int option, bool flag) override {
    return matched(Kind::account, code, {},
                   ask("MatchCode", code, [&] { return inner_->MatchCode(code, option, flag); }));
  }
  std::string MatchDepartment(const std::string& code, int option, bool flag) override {
    return matched(Kind::department, code, {},
                   ask("MatchDepartment", code, [&] { return inner_->MatchDepartment(code, option, flag); }));
  }
  std::string MatchPerson(const std::string& code, int option, bool flag) override {
    return matched(Kind::person, code, {},
                   ask("MatchPerson", code, [&] { return inner_->MatchPerson(code, option, flag); }));
  }
  std::string MatchCustomer(const std::string& code, int option, bool flag) override {
    return matched(Kind::customer, code, {},
                   ask("MatchCustomer", code, [&] { return inner_->MatchCustomer(code, option, flag); }));
  }
  std::string MatchVendor(const std::string& code, int option, bool flag) override {
    return matched(Kind::supplier, code, {},
                   ask("MatchVendor", code, [&] { return inner_->MatchVendor(code, option, flag); }));
  }
  std::string MatchItem(const std::string& item, const std::string& itemClass, int option, bool flag) override {
    return matched(Kind::item, item, itemClass,
                   ask("MatchItem", item, [&] { return inner_->MatchItem(item, itemClass, option, flag); }));
  }
  bool GetSignRecord(const std::string& csign, SignRecord& record) override {
    return ask("GetSignRecord", csign, [&] { return inner_->GetSignRecord(csign, record); });
  }
  bool SignExists(const std::string& csign) override {
    return ask("SignExists", csign, [&] { return inner_->SignExists(csign); });
  }
  bool SettleStyleExists(const std::string& csettle) override {
    return ask("SettleStyleExists", csettle, [&] { return inner_->SettleStyleExists(csettle); });
  }
  std::string TranslateWord(const std::string& word) override { return inner_->TranslateWord(word); }
  FormatDatabase& FormatDb() override { return inner_->FormatDb(); }

private:
  using Kind = MissingCodes::Kind;
  std::string matched(Kind kind, const std::string& code, const std::string& itemClass, std::string answer) {
    if (answer.empty()) journal_->missing(kind, code, itemClass);
    return answer;
  }
  template <class Question>
  auto ask(const char* operation, std::string_view argument, const Question& question) -> decltype(question()) {
    if (journal_->tracing()) journal_->traceService(operation, argument);
    try {
      return question();
    } catch (const std::exception& e) {
      journal_->serviceFailed(operation, argument, e);
      throw;
    }
  }
  void noteHandledFailure() {
    const std::exception_ptr failure = std::current_exception();
    if (!failure) return;
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& e) {
      journal_->handled(e);
    }
  }

  std::shared_ptr<Journal> journal_;
  std::shared_ptr<ZwPubCls> inner_;
};

}  // namespace

std::shared_ptr<ZwPubCls> journalServices(std::shared_ptr<Journal> journal, std::shared_ptr<ZwPubCls> inner) {
  return std::make_shared<JournalServices>(std::move(journal), std::move(inner));
}

}  // namespace host
