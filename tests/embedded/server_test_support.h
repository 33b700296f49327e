#pragma once
// A server in a temporary folder, and a session whose answers a test can look at.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/server.h"

namespace embedded::test {

class Answers : public ResultSink {
public:
  void columns(const std::vector<ColumnInfo>& c) override {
    names.clear();
    for (const auto& i : c) names.push_back(i.name);
    rows.clear();
  }
  void row(const std::vector<platform::Value>& r) override {
    std::string line;
    for (std::size_t i = 0; i < r.size(); ++i) line += (i ? "|" : "") + textOf(r[i]);
    rows.push_back(line);
  }
  static std::string textOf(const platform::Value& v) {
    if (v.isNull()) return "Null";
    return v.kind() == platform::Value::Kind::bytes ? std::to_string(v.asBytes().size()) + " bytes" : v.displayText();
  }
  void endRows(std::int64_t) override {}
  void affected(std::int64_t n) override { counts.push_back(n); }
  void failure(const tsql::SqlError& e) override { failures.push_back(e); }

  std::vector<std::string> names, rows;
  std::vector<std::int64_t> counts;
  std::vector<tsql::SqlError> failures;
};

struct ExpectedFailure {
  const char* batch;
  int number, severity, line;
  const char* text;
};

class ServerTest : public ::testing::Test {
protected:
  ServerTest() {
    static int number = 0;
    folder_ = std::filesystem::temp_directory_path() /
              ("gljz-server-test-" + std::to_string(++number) + "-" +
               std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(folder_);
    server = Server::open(folder_.string());
    Session session(server, "");
    run(session, "create database d1");
    run(session, "create database d2");
  }
  ~ServerTest() override {
    server.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  static Answers ask(Session& s, const std::string& batch, const std::vector<platform::Value>& parameters = {}) {
    Answers a;
    s.execute(batch, a, parameters);
    return a;
  }
  static void run(Session& s, const std::string& batch) {
    const Answers a = ask(s, batch);
    for (const auto& f : a.failures) ADD_FAILURE() << f.number << " " << f.what() << " in: " << batch;
  }
  static std::vector<std::string> rows(Session& s, const std::string& query) {
    Answers a = ask(s, query);
    for (const auto& f : a.failures) ADD_FAILURE() << f.number << " " << f.what() << " in: " << query;
    return a.rows;
  }
  // The first failure of the batch has this number, severity and line, and this very text.
  static void expectFirstFailure(Session& s, const ExpectedFailure& expected) {
    const Answers a = ask(s, expected.batch);
    ASSERT_FALSE(a.failures.empty()) << expected.batch;
    const tsql::SqlError& e = a.failures.front();
    EXPECT_EQ(e.number, expected.number) << expected.batch;
    EXPECT_EQ(e.severity, expected.severity) << expected.batch;
    EXPECT_EQ(e.pos.line, expected.line) << expected.batch;
    EXPECT_STREQ(e.what(), expected.text) << expected.batch;
  }
  static int failureOf(Session& s, const std::string& batch) {
    const Answers a = ask(s, batch);
    return a.failures.empty() ? 0 : a.failures.front().number;
  }
  std::shared_ptr<platform::Connection> connect(const std::string& database) const {
    auto c = makeConnection();
    c->ConnectionOpen("Database=" + database + ";Server=embedded:" + folder_.string() + ";");
    return c;
  }
  std::string folder() const { return folder_.string(); }

  std::shared_ptr<Server> server;

private:
  std::filesystem::path folder_;
};

}  // namespace embedded::test
