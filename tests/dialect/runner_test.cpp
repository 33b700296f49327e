// The runner's own judgement, on a server that answers what the test tells it to.

#include "dialect/runner.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace dialect {
namespace {

// Answers by batch; writes down what was opened, sent and closed.
class ScriptedServer {
public:
  std::map<std::string, Answer> answers;
  std::vector<std::string> log;

  std::unique_ptr<Session> open(const std::string& database) {
    if (database == "missing") throw std::runtime_error("no such database");
    const int number = ++opened_;
    log.push_back("open " + std::to_string(number) + " " + database);
    return std::make_unique<ScriptedSession>(*this, number);
  }

private:
  class ScriptedSession : public Session {
  public:
    ScriptedSession(ScriptedServer& server, int number) : server_(server), number_(number) {}
    ~ScriptedSession() override { server_.log.push_back("close " + std::to_string(number_)); }
    Answer run(const std::string& batch) override {
      server_.log.push_back(std::to_string(number_) + ": " + batch);
      return server_.answers[batch];
    }

  private:
    ScriptedServer& server_;
    int number_;
  };

  int opened_ = 0;
};

Answer rows(std::size_t columns, std::vector<std::string> texts) {
  Answer answer;
  answer.columns = columns;
  answer.rows = std::move(texts);
  return answer;
}

Answer failing(int number, const std::string& message) {
  Answer answer;
  answer.failures = {{number, message}};
  return answer;
}

Answer affecting(std::int64_t count) {
  Answer answer;
  answer.affected = count;
  return answer;
}

class RunnerTest : public testing::Test {
protected:
  Outcome run(std::string_view corpus) {
    Runner runner([this](const std::string& database) { return server.open(database); },
                  std::filesystem::path(GLJZ_SOURCE_DIR) / "tests" / "dialect");
    return runner.run(parseCorpus(corpus, "x.test"));
  }

  void expectCounts(const Outcome& outcome, int passed, std::size_t failed, int declined = 0) {
    EXPECT_EQ(outcome.passed, passed);
    EXPECT_EQ(outcome.failed.size(), failed) << (outcome.failed.empty() ? "" : outcome.failed[0].text);
    EXPECT_EQ(outcome.declined, declined);
  }

  ScriptedServer server;
};

TEST_F(RunnerTest, aStatementHasToRun) {
  server.answers["bad"] = failing(208, "Invalid object name 't'.");
  const Outcome outcome = run("statement ok\ngood\n\nstatement ok\nbad\n");
  expectCounts(outcome, 1, 1);
  EXPECT_EQ(outcome.failed.at(0).line, 4);
  EXPECT_NE(outcome.failed[0].text.find("208 Invalid object name 't'."), std::string::npos);
}

TEST_F(RunnerTest, anExpectedFailureHasToBeThatFailureAndTheFirst) {
  server.answers["a"] = failing(2627, "Violation.");
  server.answers["b"] = failing(208, "Invalid.");
  server.answers["b"].failures.push_back({2627, "Violation."});
  const Outcome outcome =
      run("statement error 2601|2627\na\n\nstatement error 2627\nb\n\nstatement error 2627\nnone\n");
  expectCounts(outcome, 1, 2);
  EXPECT_NE(outcome.failed.at(1).text.find("no failure"), std::string::npos);
}

TEST_F(RunnerTest, aQueryHasToGiveItsColumnsAndItsRowsInOrder) {
  server.answers["q"] = rows(2, {"1\tx", "2\ty"});
  expectCounts(run("query 2\nq\n----\n1\tx\n2\ty\n"), 1, 0);
  expectCounts(run("query 2\nq\n----\n2\ty\n1\tx\n"), 0, 1);
  expectCounts(run("query 1\nq\n----\n1\tx\n2\ty\n"), 0, 1);
  expectCounts(run("query 2\nq\n----\n1\tx\n"), 0, 1);
  expectCounts(run("query 2 rowsort\nq\n----\n2\ty\n1\tx\n"), 1, 0);
  expectCounts(run("query 2 rowsort\nq\n----\n2\ty\n2\ty\n"), 0, 1);
}

TEST_F(RunnerTest, aQueryWithoutRowsStillHasColumns) {
  server.answers["q"] = rows(3, {});
  expectCounts(run("query 3\nq\n----\n"), 1, 0);
  expectCounts(run("query 3\nno result set\n----\n"), 0, 1);
}

TEST_F(RunnerTest, rowcountComparesNothingButTheNumberOfRows) {
  server.answers["q"] = rows(9, {"a", "b"});
  expectCounts(run("query 2 rowcount\nq\n----\n2\n"), 1, 0);
  expectCounts(run("query 2 rowcount\nq\n----\n3\n"), 0, 1);
}

TEST_F(RunnerTest, aQueryThatFailsIsADifference) {
  server.answers["q"] = failing(245, "Conversion failed.");
  expectCounts(run("query 1\nq\n----\n"), 0, 1);
}

TEST_F(RunnerTest, countIsOfTheBatchBefore) {
  server.answers["u"] = affecting(3);
  server.answers["f"] = affecting(3);
  server.answers["f"].failures = {{515, "Cannot insert the value NULL."}};
  expectCounts(run("statement ok\nu\n\ncount 3\n"), 2, 0);
  expectCounts(run("statement ok\nu\n\ncount 2\n"), 1, 1);
  expectCounts(run("statement ok\nu\n\nstatement ok\ncreate\n\ncount 3\n"), 2, 1);
  expectCounts(run("statement error 515\nf\n\ncount 3\n"), 1, 1);
}

TEST_F(RunnerTest, anOptionalBlockMayFailButNotAnswerOtherwise) {
  server.answers["f"] = failing(40000, "not supported");
  server.answers["q"] = rows(1, {"1"});
  expectCounts(run("# optional\nstatement ok\nf\n"), 0, 0, 1);
  expectCounts(run("# optional\nquery 1\nf\n----\n1\n"), 0, 0, 1);
  expectCounts(run("# optional\nquery 1\nq\n----\n2\n"), 0, 1);
  expectCounts(run("# optional\nstatement error 208\nf\n"), 0, 1);
}

TEST_F(RunnerTest, whatBuildsOnADeclinedStatementMayDiffer) {
  server.answers["f"] = failing(40000, "not supported");
  server.answers["q"] = rows(1, {"1"});
  expectCounts(run("# optional\nstatement ok\nf\n\ncount 1\n\n# optional\nquery 1\nq\n----\n2\n\n"
                   "# optional\nstatement error 208\nq\n\nquery 1\nq\n----\n2\n"),
               0, 1, 4);
}

TEST_F(RunnerTest, connectionsAreOpenedAtFirstUseAndHeldByName) {
  run("statement ok\na\n\nconnection b\n\nstatement ok\nb\n\nconnection main\n\nstatement ok\nc\n\n"
      "connection b\n\nstatement ok\nd\n\nconnection b close\n\nstatement ok\ne\n");
  EXPECT_EQ(server.log, (std::vector<std::string>{"open 1 d1", "1: a", "open 2 d1", "2: b", "1: c", "2: d", "close 2",
                                                  "1: e", "close 1"}));
}

TEST_F(RunnerTest, aConnectionThatWasClosedIsOpenedAnew) {
  run("connection b\n\nstatement ok\na\n\nconnection b close\n\nconnection b\n\nstatement ok\nb\n");
  EXPECT_EQ(server.log, (std::vector<std::string>{"open 1 d1", "1: a", "close 1", "open 2 d1", "2: b", "close 2"}));
}

TEST_F(RunnerTest, anotherDatabaseIsAnotherSession) {
  run("statement ok\na\n\ndatabase d2\n\nstatement ok\nb\n");
  EXPECT_EQ(server.log, (std::vector<std::string>{"open 1 d1", "1: a", "close 1", "open 2 d2", "2: b", "close 2"}));
}

TEST_F(RunnerTest, aDatabaseThatCannotBeOpenedCountsAgainstTheBlockThatNeedsIt) {
  const Outcome outcome = run("database missing\n\nstatement ok\na\n\ndatabase d1\n\nstatement ok\nb\n");
  expectCounts(outcome, 1, 1);
  EXPECT_NE(outcome.failed.at(0).text.find("no such database"), std::string::npos);
}

TEST_F(RunnerTest, aScriptCountsOnlyWhenABatchFails) {
  expectCounts(run("script schema.sql\n"), 0, 0);
  ASSERT_GT(server.log.size(), 3u);
  server.answers[server.log[1].substr(3)] = failing(2714, "There is already an object.");
  const Outcome outcome = run("script schema.sql\n");
  expectCounts(outcome, 0, 1);
  EXPECT_NE(outcome.failed.at(0).text.find("batch 1 of schema.sql"), std::string::npos);
}

TEST_F(RunnerTest, aScriptThatIsMissingIsADifference) {
  expectCounts(run("script none.sql\n\nstatement ok\na\n"), 1, 1);
}

}  // namespace
}  // namespace dialect
