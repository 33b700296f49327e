// A database that another session has open is in use: Windows takes no open file away.

#include "server_test_support.h"

namespace embedded::test {
namespace {

using Rows = std::vector<std::string>;
using DropDatabaseTest = ServerTest;

TEST_F(DropDatabaseTest, ADatabaseInUseStaysAsItIs) {
  auto session = std::make_shared<Session>(server, "d1"), other = std::make_shared<Session>(server, "d2");
  run(*session, "create database d3");
  run(*session, "create table d3..t (a int) insert into d3..t values(1)");
  EXPECT_EQ(rows(*other, "select a from d3..t"), (Rows{"1"}));
  EXPECT_EQ(failureOf(*session, "drop database d3"), 3702);
  run(*session, "insert into d3..t values(2)");
  EXPECT_EQ(rows(*other, "select a from d3..t"), (Rows{"1", "2"}));
  other = nullptr;
  run(*session, "drop database d3");
  EXPECT_EQ(failureOf(*session, "select a from d3..t"), 208);
  run(*session, "create database d3");
  run(*session, "create table d3..t (a int) insert into d3..t values(3)");
  EXPECT_EQ(rows(*session, "select a from d3..t"), (Rows{"3"}));
}

}  // namespace
}  // namespace embedded::test
