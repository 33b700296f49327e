#pragma once
// Tests of the ODBC adapter against a real server over a real driver.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "odbc/connection.h"
#include "platform/database.h"
#include "postgres/postgres_server.h"

// One server for all tests of the program.
inline PostgresServer& postgres() {
  static PostgresServer server;
  return server;
}

class OdbcTest : public testing::Test {
protected:
  using Rows = std::unique_ptr<platform::Recordset>;

  // more: keywords for the driver.
  static std::shared_ptr<platform::Connection> connect(const std::string& more = "",
                                                       odbc::ServerCursor cursor = odbc::ServerCursor::automatic) {
    odbc::Settings settings;
    settings.serverCursor = cursor;
    auto connection = odbc::makeConnection(settings);
    connection->ConnectionOpen(postgres().connectionText(more));
    return connection;
  }
  Rows open(const std::string& sql) { return connection_->OpenRecordset(sql, 2); }
  platform::Value value(const std::string& sql) { return open(sql)->Field(std::size_t{0}); }
  void run(const std::string& sql) { connection_->ExecuteSql(sql); }

  std::shared_ptr<platform::Connection> connection_ = connect();
};

// The failure of an action; a test failure when there is none.
template <class Action>
platform::RunTimeError failureOf(const Action& action) {
  try {
    action();
  } catch (const platform::RunTimeError& e) {
    return e;
  }
  ADD_FAILURE() << "no failure";
  return {0, ""};
}
