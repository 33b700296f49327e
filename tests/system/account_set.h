#pragma once
// AccountSet: an account set over several years, carried forward as a person does it: year closed, next one opened,
// dialogs answered, run through the entry Transfer.
//
//   class BankRunsTest : public AccountSet { BankRunsTest() : AccountSet(Databases::separate, 2005) {} };
//   account(year(2005), "100201", {"be", "1"});
//   fill(year(2005), "gl_accvouch", {...});
//   const host::RunResult result = carry(2005);
//   expectRows(year(2006), "select ...", {...});

#include <string>
#include <vector>

#include "host/account.h"
#include "host/carry_forward.h"
#include "system/ledger_fixture.h"

namespace gljz::test {

enum class Databases {
  separate,  // each year but those of the first span in a database of its own
  shared     // one database for all years
};

class AccountSet : public LedgerTest {
protected:
  // An empty account set whose first database begins with `first` and, when the years have databases of their own, ends
  // with `last` of its span.
  AccountSet(Databases databases, int first, int last = 0)
      : LedgerTest(Layout::unmade), databases_(databases), first_(first), last_(std::max(first, last)) {
    constexpr int farthest = 2008;
    host::createAccount(server(), {"001", "青石商贸", first, databases == Databases::shared ? farthest : last_});
  }

  Side year(int year) const {
    const bool inFirstSpan = databases_ == Databases::shared || year <= last_;
    return {host::databaseName("001", inFirstSpan ? first_ : year), year};
  }

  // Closes the year and opens the next, with its chart, reference records and settings.
  void turn(int closingYear) {
    host::closeYear(server(), "001", closingYear);
    host::openYear(server(), "001", closingYear + 1);
  }

  // The run on the second Monday of the new year. Conditions: what the dialog starts with, after the choices.
  host::RunResult carry(int closingYear, const host::ConditionChoices& choices = {}) {
    host::CarryForwardOptions options;
    options.server = host::parseServer("embedded:" + server()->folder());
    options.account = "001";
    options.closingYear = closingYear;
    options.newYear = closingYear + 1;
    options.choices = choices;
    options.today = platform::DateTime::fromDate(closingYear + 1, 1, 9);
    run = {};  // a process of its own
    return host::carryForward(options);
  }

  // Nothing went wrong in silence.
  static void expectClean(const host::RunResult& result) {
    EXPECT_TRUE(result.returned && result.success) << result.errMsg << result.message;
    EXPECT_FALSE(result.uncaught) << *result.uncaught;
    for (const auto& failure : result.failures)
      ADD_FAILURE() << failure.stage << ": " << failure.description << " in " << failure.statement;
  }

  void setting(int ofYear, const std::string& name, const std::string& value) {
    sql(year(ofYear), "update accinformation set cValue=" + host::quoted(value) +
                          " where cSysID=N'GL' and cName=" + host::quoted(name));
  }

private:
  const Databases databases_;
  const int first_, last_;
};

}  // namespace gljz::test
