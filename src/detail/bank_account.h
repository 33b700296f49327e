#pragma once
// What the three steps of the bank stage share: the account of the new year that takes a line, and what the closing
// year knows of an account.

#include <memory>
#include <string>

#include "platform/database.h"
#include "platform/records.h"

namespace gljz {

// Finds the account of each line of a selection, line by line. The look-ups are made once for each run of lines that
// are written to one account.
class BankAccount {
public:
  // Message keys that say why a line is left out.
  struct Reasons {
    const char* noCounterpart;
    const char* notLastLevel;
    const char* noBankAccount;
  };
  explicit BankAccount(const Reasons& reasons) : reasons_(reasons) {}

  // False when the line has no account that could take it; a run that is watched reports it.
  bool find(const platform::Recordset& line);
  // The line is written.
  void lineWritten() { writtenCode_ = code_; }

  // Of the line that was found last:
  bool changed() const { return code_ != writtenCode_; }          // its account is not that of the line written last
  const platform::CodeRecord& record() const { return record_; }  // the new year's account
  const std::string& currency() const { return currency_; }       // empty for none
  bool inForeignCurrency() const;                                 // neither none nor the main one

private:
  const Reasons reasons_;
  std::string code_, writtenCode_;
  platform::CodeRecord record_;
  std::string currency_;
};

// The account's row of a year, read from the closing year's database; open, at its end when there is none.
std::unique_ptr<platform::Recordset> GetLastCodeRow(const std::string& ccode, const std::string& year);

// "yyyy-mm-dd"; empty when the account's reconciliation has no beginning, which the server takes for its earliest date,
// so that every line counts.
std::string reconciliationBegin(const platform::Recordset& codeRow);

// The condition for lines of one currency, or of none when it is empty.
std::string currencyCondition(const std::string& currency);

platform::DateTime GetYearStartDate();  // first date of the new year

// A row of the imbalance grid about one code, in a run that is watched: kind caption, code, name, reason.
void reportBankLine(const char* kindKey, const std::string& code, const std::string& name, const char* reasonKey);

}  // namespace gljz
