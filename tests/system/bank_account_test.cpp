// The closing year's row of a bank account is asked for with a command: typed arguments and a time of its own.

#include "detail/bank_account.h"

#include "system/bank_fixture.h"

namespace gljz::test {
namespace {

using platform::CursorLocation;
using platform::Recordset;
using platform::TextParameter;

struct Command {
  std::string text;
  std::vector<std::string> arguments;
  std::vector<int> sizes;  // characters
  int timeout = 0;         // seconds
  bool operator==(const Command&) const = default;
};
void PrintTo(const Command& command, std::ostream* out) {
  *out << command.text << ::testing::PrintToString(command.arguments) << ::testing::PrintToString(command.sizes) << ' '
       << command.timeout;
}

// Remembers the commands that pass.
class CommandSpy final : public platform::Connection, private platform::RawConnection {
public:
  explicit CommandSpy(std::shared_ptr<platform::Connection> inner) : inner_(std::move(inner)) {}

  std::vector<Command> commands;

  void ConnectionOpen(const std::string& text) override { inner_->ConnectionOpen(text); }
  void ConnectionClose() override { inner_->ConnectionClose(); }
  std::string ConnectionText() const override { return inner_->ConnectionText(); }
  platform::RawConnection& RawConnection() override { return *this; }
  void BeginTrans() override { inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void RollbackTrans() override { inner_->RollbackTrans(); }
  std::int64_t ExecuteSql(const std::string& sql) override { return inner_->ExecuteSql(sql); }
  std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int options, CursorLocation location) override {
    return inner_->OpenRecordset(sql, options, location);
  }

private:
  int State() const override { return inner_->RawConnection().State(); }
  std::unique_ptr<Recordset> Open(const std::string& sql) override { return inner_->RawConnection().Open(sql); }
  std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<TextParameter>& parameters,
                                         int timeoutSeconds) override {
    Command command{sql, {}, {}, timeoutSeconds};
    for (const TextParameter& parameter : parameters) {
      command.arguments.push_back(parameter.text);
      command.sizes.push_back(parameter.size);
    }
    commands.push_back(std::move(command));
    return inner_->RawConnection().OpenCommand(sql, parameters, timeoutSeconds);
  }

  std::shared_ptr<platform::Connection> inner_;
};

class BankAccountTest : public BankFixture<LedgerTest> {
protected:
  BankAccountTest() {
    run.m_conn = spy_;
    bank("100201");
    bank("100202");
  }
  Command question(const std::string& ccode, const std::string& year) const {
    return {"select * from code where iyear=? and ccode=? ", {year, ccode}, {8, 60}, 600};
  }
  std::shared_ptr<CommandSpy> spy_ = std::make_shared<CommandSpy>(run.m_conn);
};

TEST_F(BankAccountTest, TheRowIsAskedForWithTwoTextsAndTenMinutesOfTime) {
  account(yearOf(2004), "100201", {"ccode_name", "旧名"});
  const auto row = GetLastCodeRow("100201", "2004");
  EXPECT_EQ(row->Field("ccode_name").asText(), "旧名");
  EXPECT_EQ(spy_->commands, std::vector<Command>{question("100201", "2004")});
}

TEST_F(BankAccountTest, TheClosingYearIsAskedForEachBalanceOfTheLedgerAndEachOpeningRowOfTheStatements) {
  vouchers(closing, {"ccode | iperiod | md", "100201 | 20 | 70", "100201 | 6 | 5"});
  fill(closing, "rp_bankrecp", {"ccode | ibegin | mmoney", "100202 | 0 | 7", "100202 | 1 | 8"});
  run.m_bBankTransfer = 2;
  JzYhData();
  EXPECT_EQ(spy_->commands, (std::vector<Command>{question("100201", "2005"), question("100202", "2005")}));
}

TEST_F(BankAccountTest, AnAccountWithAnApostropheInItsCodeIsFound) {
  sql(closing, "insert into code(iyear,ccode,ccode_name) values(2005,N'1002''9',N'工行')");
  const auto row = GetLastCodeRow("1002'9", "2005");
  ASSERT_FALSE(row->Eof());
  EXPECT_EQ(row->Field("ccode_name").asText(), "工行");
}

}  // namespace
}  // namespace gljz::test
