// Sessions side by side: what a transaction pins, what others see, what a failure leaves.

#include "server_test_support.h"

namespace embedded::test {
namespace {

using Rows = std::vector<std::string>;

class SessionTest : public ServerTest {
protected:
  Session a{server, "d1"}, b{server, "d2"};
};

TEST_F(SessionTest, ATransactionThatHasOnlyBegunSeesWhatOthersCommit) {
  run(a, "create table t (id int not null)");
  run(b, "begin transaction");
  EXPECT_EQ(rows(b, "select count(*) from d1..t"), (Rows{"0"}));
  run(a, "insert into t values(1)");
  EXPECT_EQ(rows(b, "select count(*) from d1..t"), (Rows{"1"}));
  run(a, "insert into t values(2)");
  EXPECT_EQ(rows(b, "select count(*) from d1..t"), (Rows{"2"}));
  run(b, "commit transaction");
}

TEST_F(SessionTest, ATransactionThatHasOnlyReadLetsAnotherSessionAlterTheTable) {
  run(a, "create table t (id int not null)");
  run(a, "insert into t values(1)");
  run(b, "begin transaction");
  EXPECT_EQ(rows(b, "select * from d1..t"), (Rows{"1"}));
  run(a, "alter table t add k int not null default 7");
  EXPECT_EQ(rows(b, "select * from d1..t"), (Rows{"1|7"}));
  EXPECT_EQ(rows(b, "select k from d1..t"), (Rows{"7"}));
  run(b, "commit transaction");
}

TEST_F(SessionTest, OneConnectionReadsADatabaseWhileAnotherHoldsATransactionThatHasReadItAndWrittenElsewhere) {
  run(a, "create table t (id int not null) insert into t values(1) insert into t values(2)");
  run(b, "create table u (id int not null)");
  run(b, "begin transaction");
  run(b, "insert into u select id from d1..t");
  EXPECT_EQ(rows(a, "select id from t order by id"), (Rows{"1", "2"}));
  run(a, "insert into t values(3)");  // and may write it, too
  EXPECT_EQ(rows(a, "select count(*) from t"), (Rows{"3"}));
  run(b, "insert into u values(9)");
  run(b, "commit transaction");
  EXPECT_EQ(rows(b, "select count(*) from u"), (Rows{"3"}));
}

TEST_F(SessionTest, TwoWritersOfOneDatabaseWaitAndThenFailClearly) {
  run(a, "create table t (id int not null)");
  server->setTimeout(50);
  Session c(server, "d1");
  run(a, "begin transaction insert into t values(1)");
  EXPECT_EQ(failureOf(c, "insert into t values(2)"), 1222);
  run(a, "commit transaction");
  run(c, "insert into t values(2)");
  EXPECT_EQ(rows(a, "select id from t order by id"), (Rows{"1", "2"}));
}

TEST_F(SessionTest, ASelectionWithoutOrderYieldsTheOrderOfTheIdentityColumn) {
  run(a,
      "create table t (i_id int identity(1,1) not null, c nvarchar(5) not null, y int not null) create index ix on "
      "t(c)");
  run(a,
      "insert into t values(N'z',1) insert into t values(N'a',1) insert into t values(N'm',1) insert into t "
      "values(N'b',2)");
  EXPECT_EQ(rows(a, "select c from t"), (Rows{"z", "a", "m", "b"}));
  EXPECT_EQ(rows(a, "select c from t where c>='a'"), (Rows{"z", "a", "m", "b"}));
  EXPECT_EQ(rows(a, "select c from t where c in ('m','z')"), (Rows{"z", "m"}));
}

TEST_F(SessionTest, ARepeatedStatementOfTheSameShapeTakesItsOwnLiterals) {
  run(a, "create table t (id int not null, c nvarchar(40) null, m money null)");
  for (int i = 1; i <= 5; ++i)
    run(a, "insert into t(id,c,m) values(" + std::to_string(i) + ",N'" + std::string(static_cast<std::size_t>(i), 'x') +
               "'," + std::to_string(i) + ".25)");
  EXPECT_EQ(rows(a, "select id,c,m from t order by id"),
            (Rows{"1|x|1.25", "2|xx|2.25", "3|xxx|3.25", "4|xxxx|4.25", "5|xxxxx|5.25"}));
  for (const char* text : {"short", "a much longer text than before", ""})
    EXPECT_EQ(rows(a, std::string("select isnull(c,N'") + text + "')+N'" + text + "' from t where id=1"),
              (Rows{std::string("x") + text}));
}

TEST_F(SessionTest, AnAmountComparesWithNumbersOfAnyLengthAlsoInAKnownStatement) {
  run(a, "create table t (m money null) insert into t values(2) insert into t values(-3)");
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(rows(a, "select m from t where m>1.5"), (Rows{"2"}));
    EXPECT_EQ(rows(a, "select m from t where m>99999999999999999999.5"), Rows{});
    EXPECT_EQ(rows(a, "select m from t where m<99999999999999999999.5 and m<>2.00001"), (Rows{"2", "-3"}));
  }
}

TEST_F(SessionTest, AShortNumberInTheFormOfALongOneKeepsItsOwnType) {
  for (int round = 0; round < 3; ++round) EXPECT_EQ(rows(a, "select 7777777777/2"), (Rows{"3888888888.5"}));
  for (int round = 0; round < 3; ++round) EXPECT_EQ(rows(a, "select 7/2"), (Rows{"3"}));
  for (int round = 0; round < 3; ++round) EXPECT_EQ(rows(a, "select 7777777777/2"), (Rows{"3888888888.5"}));
}

TEST_F(SessionTest, ANumberThatRunsIntoANameLendsItsFormToNoOther) {
  for (int round = 0; round < 4; ++round) {
    const Answers named = ask(a, "select 1,00x");
    EXPECT_EQ(named.names, (Rows{"", "x"}));
    EXPECT_EQ(named.rows, (Rows{"1|0"}));
  }
  EXPECT_EQ(rows(a, "select 2,0x"), (Rows{"2|0 bytes"})) << "a literal without a name";
}

TEST_F(SessionTest, AKnownChangeIsPreparedAnewWhenAnotherSessionHasChangedTheDatabase) {
  run(a, "create table t (k int not null, p nvarchar(10) null, m money null) insert into t values(1,N'x',2)");
  for (int round = 0; round < 4; ++round) {
    run(a, "update t set p=k,m=m*2");
    run(a, "delete from t where p=N'nobody' or m=k/1000");
    run(b, "create table d1..t" + std::to_string(round) + " (k int null)");
  }
  EXPECT_EQ(rows(a, "select k,p,m from t"), (Rows{"1|1|32"}));
}

TEST_F(SessionTest, AFailureNamesTheLineOfItsOwnTextAlsoInAKnownStatement) {
  const auto lineOf = [this](const std::string& batch) {
    const Answers answers = ask(a, batch);
    return answers.failures.empty() ? 0 : answers.failures.front().pos.line;
  };
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(lineOf("select N'a', 1 from nowhere"), 1);
    EXPECT_EQ(lineOf("select N'a',\n1 from nowhere"), 2);
    EXPECT_EQ(lineOf("\n\nselect N'a', 1 from nowhere"), 3);
    EXPECT_EQ(lineOf("select N'a\nb', 1 from nowhere"), 2) << "the text has a line of its own";
    EXPECT_EQ(lineOf("select N'ab', 1 from nowhere"), 1);
  }
}

TEST_F(SessionTest, AQuoteInsideATextOfAKnownFormIsReadAsTheLexerReadsIt) {
  run(a, "create table t (c nvarchar(40) null)");
  for (const char* text : {"one", "two", "it''s", "three", "''", ""})
    run(a, std::string("insert into t(c) values(N'") + text + "')");
  EXPECT_EQ(rows(a, "select c from t"), (Rows{"one", "two", "it's", "three", "'", ""}));
}

TEST_F(SessionTest, AStatementThatFailsUndoesItselfAlone) {
  run(a, "create table t (id int not null primary key)");
  run(a, "begin transaction");
  run(a, "insert into t values(1)");
  EXPECT_EQ(failureOf(a, "insert into t select 2 union all select 1"), 2627);
  run(a, "insert into t values(3)");
  run(a, "commit transaction");
  EXPECT_EQ(rows(a, "select id from t order by id"), (Rows{"1", "3"}));
}

TEST_F(SessionTest, KeysAreCheckedAfterTheWholeStatement) {
  run(a, "create table t (id int not null primary key, c int null)");
  run(a, "insert into t values(1,10) insert into t values(2,20) insert into t values(3,30)");
  run(a, "update t set id=id+1");
  EXPECT_EQ(rows(a, "select id,c from t order by id"), (Rows{"2|10", "3|20", "4|30"}));
  EXPECT_EQ(failureOf(a, "update t set id=9"), 2627);
  EXPECT_EQ(rows(a, "select id,c from t order by id"), (Rows{"2|10", "3|20", "4|30"}));
}

TEST_F(SessionTest, ATextThatOnlyDiffersInTrailingBlanksMeetsItsPartnerInAJoin) {
  run(a, "create table t (c nvarchar(9) not null) create table u (c nvarchar(9) not null, n int not null)");
  for (int i = 0; i < 50; ++i)
    run(a, "insert into u values(N'k" + std::to_string(i) + "  '," + std::to_string(i) + ")");
  for (int i = 0; i < 50; ++i) run(a, "insert into t values(N'K" + std::to_string(i) + "')");
  EXPECT_EQ(rows(a, "select count(*) from t inner join u on t.c=u.c"), (Rows{"50"}));
  EXPECT_EQ(rows(a, "select count(*) from t where t.c in (select c from u where n>=10)"), (Rows{"40"}));
}

TEST_F(SessionTest, APrefixJoinIsARangeSearch) {
  run(a, "create table code (iyear int not null, ccode nvarchar(40) not null) create index ix on code(iyear,ccode)");
  run(a, "create table p (iyear int not null, ccode nvarchar(40) not null)");
  const std::string plan =
      a.plan("select p.ccode,code.ccode from code inner join p on code.iyear=p.iyear and code.ccode like p.ccode+'%'");
  EXPECT_NE(plan.find("(iyear=? AND ccode>? AND ccode<?)"), std::string::npos) << plan;
}

TEST_F(SessionTest, AFileThatIsNoDatabaseIsNamed) {
  {
    std::FILE* f = std::fopen((folder() + "/broken.db").c_str(), "wb");
    std::fputs("this is no database at all, but a text", f);
    std::fclose(f);
  }
  try {
    Session s(server, "broken");
    FAIL() << "opened";
  } catch (const tsql::SqlError& e) {
    EXPECT_EQ(e.number, 824);
    EXPECT_NE(std::string(e.what()).find("database"), std::string::npos);
  }
}

class ConnectionTest : public ServerTest {};

TEST_F(ConnectionTest, AResultSetCanStepBackAndTakesNewAndEditedRows) {
  auto c = connect("d1");
  c->ExecuteSql("create table t (i_id int identity(1,1) not null, c nvarchar(5) not null, m money not null default 0)");
  auto rs = c->OpenRecordset("select * from t order by i_id", 2);
  EXPECT_TRUE(rs->Eof());
  rs->AddNew();
  rs->SetField("C", "a");
  rs->SetField("m", platform::Money::parse("1.5"));
  rs->Update();
  rs->AddNew();
  rs->SetField("c", "b");
  rs->Update();
  rs->Close();
  rs = c->OpenRecordset("select * from t order by i_id", 2);
  EXPECT_EQ(rs->Field("C").asText(), "a");
  rs->MoveNext();
  EXPECT_EQ(rs->Field("m").asMoney().text(), "0");
  rs->SetField("m", platform::Money::parse("7.25"));
  rs->Update();
  EXPECT_EQ(rs->Field("m").asMoney().text(), "7.25");
  rs->MovePrevious();
  EXPECT_EQ(rs->Field("c").asText(), "a");
  rs->MoveNext();
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_THROW(rs->Field("c"), platform::RunTimeError);
  rs = c->OpenRecordset("select c,m from t order by i_id", 2);
  rs->MoveNext();
  EXPECT_EQ(rs->Field("m").asMoney().text(), "7.25");
  EXPECT_THROW(rs->Field("nosuch"), platform::RunTimeError);
}

TEST_F(ConnectionTest, AnOpenResultSetIsReadWhileTheSameConnectionWritesItsTable) {
  for (const auto location : {platform::CursorLocation::client, platform::CursorLocation::server}) {
    for (const bool inTransaction : {false, true}) {
      auto c = connect("d1");
      c->ExecuteSql("if object_id('t') is not null drop table t");
      c->ExecuteSql("create table t (id int not null, k int not null)");
      for (int i = 1; i <= 1000; ++i) c->ExecuteSql("insert into t values(" + std::to_string(i) + ",0)");
      if (inTransaction) {
        c->BeginTrans();
        c->ExecuteSql("update t set k=1 where id=1");
      }
      auto rs = c->OpenRecordset("select id,k from t", 2, location);
      int n = 0;
      for (; !rs->Eof(); rs->MoveNext()) {
        ++n;
        EXPECT_EQ(rs->Field("id").asInteger(), n);
        c->ExecuteSql("insert into t values(" + std::to_string(5000 + n) + ",2)");
        c->ExecuteSql("update t set k=k+1 where id=" + std::to_string(n));
      }
      EXPECT_EQ(n, 1000);
      rs->Close();
      if (inTransaction) c->CommitTrans();
      rs = c->OpenRecordset("select count(*) as n from t", 2);
      EXPECT_EQ(rs->Field("n").asInteger(), 2000);
    }
  }
}

TEST_F(ConnectionTest, AFailureCarriesTheServersNumberItsTextAndTheStatement) {
  auto c = connect("d1");
  try {
    c->ExecuteSql("select * from nosuch");
    FAIL();
  } catch (const platform::RunTimeError& e) {
    ASSERT_TRUE(e.server());
    EXPECT_EQ(e.server()->number, 208);
    EXPECT_EQ(e.server()->message, "Invalid object name 'nosuch'.");
    EXPECT_EQ(e.server()->statement, "select * from nosuch");
  }
}

TEST_F(ConnectionTest, ClosingAConnectionUndoesItsOpenTransaction) {
  auto c = connect("d1");
  c->ExecuteSql("create table t (id int not null)");
  c->BeginTrans();
  c->ExecuteSql("insert into t values(1)");
  c->ConnectionClose();
  EXPECT_EQ(c->RawConnection().State(), platform::RawConnection::closed);
  c = connect("d1");
  EXPECT_EQ(c->OpenRecordset("select count(*) as n from t", 2)->Field("n").asInteger(), 0);
}

TEST_F(ConnectionTest, ADatabaseThatIsNotThereIsNamed) {
  auto c = makeConnection();
  try {
    c->ConnectionOpen("Database=nosuch;Server=embedded:" + folder());
    FAIL();
  } catch (const platform::RunTimeError& e) {
    EXPECT_NE(e.description().find("nosuch"), std::string::npos);
    EXPECT_NE(e.description().find(folder()), std::string::npos);
  }
}

}  // namespace
}  // namespace embedded::test
