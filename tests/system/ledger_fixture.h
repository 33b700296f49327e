#pragma once
// LedgerTest: an account set with a closing year 2005 and a new year 2006 on an embedded server of its own, ready for a
// stage or a whole run.
//
//   class AccountTotalsTest : public LedgerTest {};
//
//   TEST_F(AccountTotalsTest, ABalanceBecomesTwelveRows) {
//     account("1001");                                         // in both years
//     fill(closing, "gl_accsum", {"ccode | iperiod | me",      // iyear is the side's own unless it is named
//                                 "1001  | 12      | 100"});
//     JzAccSum();                                              // the run variables are set up
//     expectRows(opening, "select ccode, count(*), sum(mb) from gl_accsum group by ccode", {"1001 | 12 | 1200"});
//   }
//
// What a run needs stands: the closing year is closed, voucher categories, options, calendars; no account, no balance.

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "core/mdu_jz.h"
#include "core/run_state.h"
#include "embedded/server.h"
#include "host/connection_text.h"
#include "host/form_host.h"
#include "host/journal.h"
#include "host/messages.h"
#include "host/temporary_folder.h"
#include "platform/surroundings.h"
#include "system/spy_connection.h"

namespace gljz::test {

// Where the two years lie.
enum class Layout {
  separate,  // a database each, the new year's begins with 2006
  shared,    // one database for 2005 and 2006
  unmade     // a database each, which the test makes before it prepares a run: account set 001
};

using Columns = std::vector<std::string>;  // name, value, name, value, ...

// One end of the run.
struct Side {
  std::string database;
  int year = 0;
};

class LedgerTest : public ::testing::Test {
protected:
  explicit LedgerTest(Layout layout = Layout::separate);
  ~LedgerTest() override;

  const Side closing, opening;  // 2005 and 2006

  // --- Filling. Failures of the server are thrown.

  // Runs a batch; database may be TqSystem, or empty for the server itself.
  void sql(const std::string& database, const std::string& batch);
  void sql(const Side& side, const std::string& batch) { sql(side.database, batch); }

  // Inserts the rows of a text table: the first line has the column names, cells are separated by '|'. A cell "Null" is
  // Null, an empty one keeps the column's default. iyear is added when the table has it and the table's head does not.
  void fill(const Side& side, const std::string& table, std::initializer_list<std::string> lines);

  // An account with its columns, in one year or in both: account("1131", {"bcus", "1"}).
  void account(const Side& side, const std::string& ccode, const Columns& columns = {});
  void account(const std::string& ccode, const Columns& columns = {});

  // A setting of the new year, 'GL' unless another subsystem is named. The services object is made anew, as it reads
  // its options once.
  void option(const std::string& name, const std::string& value, const std::string& systemId = "GL");

  // --- Looking.

  // One text a row, cells joined by tabs; Null is "Null", a bit "1" or "0".
  std::vector<std::string> rows(const std::string& database, const std::string& query);
  std::vector<std::string> rows(const Side& side, const std::string& query) { return rows(side.database, query); }
  // The rows are these; cells separated by '|' with blanks around them.
  void expectRows(const Side& side, const std::string& query, const std::vector<std::string>& expected);
  std::string text(const Side& side, const std::string& query);  // the one cell of the one row
  std::vector<std::string> notCarried() const;                   // rows of the imbalance grid, cells joined by '|'

  // --- Running.

  // The run variables of a fresh process in which an entry has just set up the run; done by the constructor, too.
  // m_bManual is False; a test of reports sets it.
  void prepareRun();

  // A whole run through clsGLJZ::Transfer. Without a text: what the conditions dialog starts with, after the changes.
  struct Outcome {
    bool returned = false, success = false;
    std::string errMsg, message;
  };
  using Checks = std::vector<std::pair<std::string, bool>>;  // {"GL*CusMXJZ", true}
  Outcome transfer(const Checks& changes = {});
  Outcome transferWith(const std::string& parameters);
  std::string parameters(const Checks& changes = {});

  // What the server was asked since the run was prepared, in order, on all connections of the run; and failures to
  // order: failAt("update gl_accass") makes the next statement that holds the text fail.
  const std::vector<SpiedStatement>& statements() const { return spy_->statements; }
  bool wasRun(const std::string& part) const;  // letter case counts
  void forgetStatements() { spy_->statements.clear(); }
  void failAt(const std::string& part) { spy_->failAt = part; }

  // Replaceable before prepareRun or transfer.
  platform::Surroundings surroundings_;
  std::string language_ = "zh-CN", operatorName_ = "赵六";
  bool subsystemGF_ = false;

  std::shared_ptr<embedded::Server> server() { return server_; }
  host::FormHost& forms() { return forms_; }
  const host::Journal& journal() const { return *journal_; }
  const std::vector<std::string>& debugLines() const;

private:
  void createClosingYear();
  void createNewYear();
  void makeServices();
  std::shared_ptr<platform::Connection> spiedConnection();
  std::vector<std::string> columnsOf(const std::string& database, const std::string& table);

  Layout layout_;
  host::test::TemporaryFolder folder_;
  host::ServerAddress address_;
  std::shared_ptr<embedded::Server> server_;
  std::shared_ptr<Spy> spy_ = std::make_shared<Spy>();
  std::shared_ptr<host::Journal> journal_ = std::make_shared<host::Journal>();
  std::shared_ptr<platform::ComponentFactory> components_;
  std::unique_ptr<platform::XmlReader> xml_;
  std::unique_ptr<platform::DebugOutput> debug_;
  std::string conditions_;
  host::FormHost forms_;
  std::shared_ptr<platform::Login> login_;
};

// The same with both years in one database.
class SharedLedgerTest : public LedgerTest {
protected:
  SharedLedgerTest() : LedgerTest(Layout::shared) {}
};

}  // namespace gljz::test
