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
    for (std::size_t i = 0; i < r.size(); ++i)
      line += (i ? "|" : "") + (r[i].isNull() ? std::string("Null") : r[i].displayText());
    rows.push_back(line);
  }
  void endRows(std::int64_t) override {}
  void affected(std::int64_t n) override { counts.push_back(n); }
  void failure(const tsql::SqlError& e) override { failures.push_back(e); }

  std::vector<std::string> names, rows;
  std::vector<std::int64_t> counts;
  std::vector<tsql::SqlError> failures;
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
