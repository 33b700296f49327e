// A database that is dropped while other sessions have it open, where the system takes open files away. Windows keeps
// them: drop_database_test_windows.cpp.

#include "embedded/recordset.h"
#include "platform/run_time_error.h"
#include "server_test_support.h"

namespace embedded::test {
namespace {

using Rows = std::vector<std::string>;

class DropDatabaseTest : public ServerTest {
protected:
  // The first column of all rows.
  static Rows rest(platform::Recordset& r) {
    Rows all;
    for (; !r.Eof(); r.MoveNext()) all.push_back(r.Field(0).displayText());
    return all;
  }

  std::shared_ptr<Session> session = std::make_shared<Session>(server, "d1");
};

TEST_F(DropDatabaseTest, ADatabaseThatIsDroppedAndMadeAnewIsTheNewOne) {
  auto other = std::make_shared<Session>(server, "d2");
  run(*session, "create database d3");
  run(*session, "create table d3..t (a int) insert into d3..t values(1)");
  const auto seen = [&](const std::shared_ptr<Session>& s) {
    return rest(*openRecordset(s, "select a from d3..t", platform::CursorLocation::server));
  };
  EXPECT_EQ(seen(session), (Rows{"1"}));
  EXPECT_EQ(seen(other), (Rows{"1"}));
  EXPECT_EQ(rows(*other, "select a from d3..t"), (Rows{"1"}));
  run(*session, "drop database d3");
  EXPECT_EQ(failureOf(*other, "select a from d3..t"), 208);
  EXPECT_EQ(failureOf(*other, "insert into d3..t values(5)"), 208);
  EXPECT_THROW(seen(session), platform::RunTimeError);
  run(*session, "create database d3");
  run(*session, "create table d3..t (a int) insert into d3..t values(2)");
  EXPECT_EQ(seen(session), (Rows{"2"}));
  EXPECT_EQ(seen(other), (Rows{"2"}));
  run(*other, "insert into d3..t values(3)");
  EXPECT_EQ(rows(*session, "select a from d3..t"), (Rows{"2", "3"}));
}

TEST_F(DropDatabaseTest, NumbersOfADatabaseThatIsMadeAnewAreOneCount) {
  auto other = std::make_shared<Session>(server, "d2");
  const std::string table = "create table d3..t (i int identity(1,1) not null primary key, a int)";
  run(*session, "create database d3");
  run(*session, table);
  run(*other, "insert into d3..t(a) values(1) insert into d3..t(a) values(2)");
  EXPECT_NE(failureOf(*other, "insert into d3..t(a) values('x')"), 0);
  run(*session, "drop database d3");
  run(*other, "create table u (i int identity(1,1), a int) insert into u(a) values(1)");
  run(*session, "create database d3");
  run(*session, table);
  for (int i = 0; i < 2; ++i) {
    run(*session, "insert into d3..t(a) values(1)");
    run(*other, "insert into d3..t(a) values(2)");
  }
  EXPECT_EQ(rows(*session, "select i from d3..t"), (Rows{"1", "2", "3", "4"}));
}

}  // namespace
}  // namespace embedded::test
