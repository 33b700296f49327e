#pragma once
// The closed services around the system: the accounting services object, the login, components, debug output.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "platform/records.h"
#include "platform/value.h"

namespace platform {

class Form;

// The login of the operator. It belongs to the host.
class Login {
public:
  virtual ~Login() = default;
  virtual std::string LoginConnText() const = 0;  // connection text of the system database
  virtual std::string LoginAccId() const = 0;
  virtual std::string LoginYear() const = 0;      // decimal digits, may be empty
  virtual std::string LoginLanguage() const = 0;  // zh-CN, zh-TW, en-US
  virtual bool IsGFLogin() const = 0;             // the run belongs to subsystem GF, not GL
  // text goes in as account digits and year in one run, and comes out as the connection text of that database.
  virtual bool LoginOpenAccount(int purpose, std::string& text) = 0;
  virtual void LoginMarkDone(int number, const std::string& systemId, int year, bool done) = 0;
  // Three further values of the login that are handed to InitServices unread.
  virtual Value LoginHandle() const = 0;
  virtual Value LoginOperator() const = 0;
  virtual Value LoginDate() const = 0;
};

// A table of the format database that the print control reads.
class FormatDatabase {
public:
  virtual ~FormatDatabase() = default;
  virtual std::string Name() const = 0;
  virtual void Execute(const std::string& sql) = 0;
  virtual std::unique_ptr<Recordset> OpenTable(const std::string& table) = 0;
};

// The accounting services object. Every question is about the new year unless it says otherwise.
class ZwPubCls {
public:
  virtual ~ZwPubCls() = default;

  virtual std::shared_ptr<Connection> NewYearConn() = 0;

  // Set-up, used by TransGL on an object of its own.
  virtual void SetLogin(std::shared_ptr<Login> login) = 0;
  virtual void SetYear(int year) = 0;
  // Two trailing placeholder arguments of the original call are left out.
  virtual void InitServices(const Value& loginHandle, const std::string& connectionText, const std::string& accountId,
                            int year, const Value& loginOperator, const Value& loginDate) = 0;

  // Text of a resource key. Without args the placeholders render as nothing. A missing key gives the key itself.
  virtual std::string ResText(const std::string& key, const std::vector<Value>* args) = 0;
  virtual int ServiceMsgBox(const std::string& prompt, int style, const std::string& title, const std::string& helpFile,
                            int context) = 0;
  virtual bool ServiceLocalize(Form& form, const std::string& prefix, const std::string& second,
                               const std::string& third) = 0;

  virtual int CurrentYearInfo() = 0;                // the new year
  virtual int AccountYearInfo() = 0;                // the account set's first year
  virtual int iStartYear() = 0;                     // first year of the database span that holds the new year
  virtual DateTime CalendarInfo(int a, int b) = 0;  // (0, 0): first day of the new year
  virtual DateTime YearCalendar(int a, int b) = 0;  // the same calendar
  virtual std::string OptionText(const std::string& group, const std::string& name) = 0;  // ("GL", "iZBMsg")
  virtual platform::AccountOptions AccountOptions() = 0;
  virtual std::string OperatorName() = 0;

  // Fills the record from the new year's `code` row. With no selector all fields and the exclusive classification;
  // with selectors only those fields, the others empty.
  virtual void GetCodeRecord(const std::string& code, CodeRecord& record, const std::vector<int>& selectors = {}) = 0;

  // The counterpart in the new year, empty when there is none.
  virtual std::string MatchCode(const std::string& code, int option, bool flag) = 0;
  virtual std::string MatchDepartment(const std::string& code, int option = 0, bool flag = true) = 0;
  virtual std::string MatchPerson(const std::string& code, int option = 0, bool flag = true) = 0;
  virtual std::string MatchCustomer(const std::string& code, int option = 0, bool flag = true) = 0;
  virtual std::string MatchVendor(const std::string& code, int option = 0, bool flag = true) = 0;
  virtual std::string MatchItem(const std::string& item, const std::string& itemClass, int option = 0,
                                bool flag = true) = 0;

  virtual bool GetSignRecord(const std::string& csign, SignRecord& record) = 0;
  virtual bool SignExists(const std::string& csign) = 0;
  virtual bool SettleStyleExists(const std::string& csettle) = 0;
  virtual std::string TranslateWord(const std::string& word) = 0;  // display form of a direction word

  virtual FormatDatabase& FormatDb() = 0;
};

// External components by program id. A component answers calls by name; arguments may be changed by the callee.
class Component {
public:
  virtual ~Component() = default;
  struct Argument {
    Value value;
    std::shared_ptr<void> object;
  };
  virtual Value Call(const std::string& operation, std::vector<Argument>& arguments) = 0;
};
class ComponentFactory {
public:
  virtual ~ComponentFactory() = default;
  // RunTimeError 429 when the component is not installed.
  virtual std::shared_ptr<Component> Create(const std::string& programId) = 0;
};

class DebugOutput {
public:
  virtual ~DebugOutput() = default;
  virtual void Write(const std::string& line) = 0;
};

}  // namespace platform
