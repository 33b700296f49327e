// How the databases of an account set come into being: with all their tables, or not at all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/account.h"
#include "host/database_desk.h"
#include "host/temporary_folder.h"

namespace host::test {
namespace {

using ::testing::ElementsAre;

// What the sessions of a server were told, and the batch that fails, counted from 1 in each session; 0: none.
struct Watch {
  std::vector<std::string> calls;  // several batches in a row are one call
  int failing = 0;
  void note(const std::string& call) {
    if (calls.empty() || calls.back() != call) calls.push_back(call);
  }
};

class WatchedSession final : public DatabaseSession {
public:
  WatchedSession(std::unique_ptr<DatabaseSession> session, Watch& watch)
      : session_(std::move(session)), watch_(watch) {}
  void execute(const std::string& batch, platform::ResultSink& sink,
               const std::vector<platform::Value>& parameters) override {
    watch_.note("batches");
    session_->execute(++count_ == watch_.failing ? "select * from missing" : batch, sink, parameters);
  }
  void begin() override { watch_.note("begin"), session_->begin(); }
  void commit() override { watch_.note("commit"), session_->commit(); }
  void rollback() override { watch_.note("rollback"), session_->rollback(); }
  bool inTransaction() const override { return session_->inTransaction(); }

private:
  std::unique_ptr<DatabaseSession> session_;
  Watch& watch_;
  int count_ = 0;
};

class WatchedServer final : public DatabaseServer {
public:
  WatchedServer(ServerPtr server, Watch& watch) : server_(std::move(server)), watch_(watch) {}
  std::string name() const override { return server_->name(); }
  std::string title() const override { return server_->title(); }
  bool hasDatabase(const std::string& database) override { return server_->hasDatabase(database); }
  void createDatabase(const std::string& database) override {
    watch_.note("create " + database), server_->createDatabase(database);
  }
  void dropDatabase(const std::string& database) override {
    watch_.note("drop " + database), server_->dropDatabase(database);
  }
  std::unique_ptr<DatabaseSession> openSession(const std::string& database) override {
    return std::make_unique<WatchedSession>(server_->openSession(database), watch_);
  }
  std::shared_ptr<platform::Connection> newConnection() override { return server_->newConnection(); }
  void setClock(std::function<std::int64_t()> clock) override { server_->setClock(std::move(clock)); }

private:
  ServerPtr server_;
  Watch& watch_;
};

class AccountCreationTest : public ::testing::Test {
protected:
  TemporaryFolder folder_;
  ServerPtr embedded_{openServer(parseServer("embedded:" + folder_.text()))};
  Watch watch_;
  ServerPtr server_{std::make_shared<WatchedServer>(embedded_, watch_)};
};

TEST_F(AccountCreationTest, AllTablesAreDefinedInOneTransaction) {
  createAccountDatabase(server_, "d");
  EXPECT_THAT(watch_.calls, ElementsAre("create d", "begin", "batches", "commit"));
  DatabaseDesk desk(embedded_, "d");
  EXPECT_TRUE(desk.any("select name from sysobjects where name='accinformation' and type='U'"));
  EXPECT_TRUE(desk.any("select name from sysobjects where name='NE_UpdateItemView_Proc' and type='P'"));
}

TEST_F(AccountCreationTest, AFailedDefinitionLeavesNoDatabase) {
  watch_.failing = 70;
  EXPECT_THROW(createAccountDatabase(server_, "d"), platform::RunTimeError);
  EXPECT_THAT(watch_.calls, ElementsAre("create d", "begin", "batches", "rollback", "drop d"));
  EXPECT_FALSE(embedded_->hasDatabase("d"));
  EXPECT_TRUE(std::filesystem::is_empty(pathOf(folder_.text())));
}

TEST_F(AccountCreationTest, AFailedSystemDatabaseIsNoneEither) {
  watch_.failing = 3;
  EXPECT_THROW(ensureSystemDatabase(server_), platform::RunTimeError);
  EXPECT_FALSE(embedded_->hasDatabase(systemDatabase));
  watch_.failing = 0;
  EXPECT_TRUE(ensureSystemDatabase(server_));
  EXPECT_FALSE(ensureSystemDatabase(server_));
}

}  // namespace
}  // namespace host::test
