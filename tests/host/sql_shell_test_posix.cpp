// gljz sql on a terminal, as a person uses it.
#include <gtest/gtest.h>

#include "host/program.h"
#include "host/terminal_session.h"

namespace host::test {
namespace {

constexpr const char* up = "\x1b[A";
constexpr const char* ctrlC = "\x03";
constexpr const char* ctrlD = "\x04";

class SqlShellTest : public ::testing::Test {
protected:
  void SetUp() override {
    const Answer a = gljz({"sql", "--server", server(), "-q",
                           "create database d\nGO\nuse d\nGO\n"
                           "create table code (id int identity(1,1) not null, ccode nvarchar(40) not null, name "
                           "nvarchar(60) null default N'x', me money null, constraint pk_code primary key(ccode))\n"
                           "create index ix_name on code(name,ccode desc)\n"
                           "create table gl_accsum (n int not null)\nGO\n"
                           "insert into code(ccode,name,me) values(N'1001',N'现金',23070)\n"
                           "insert into code(ccode,name,me) values(N'100201',N'',null)\n"
                           "insert into code(ccode,name,me) values(N'1002',null,-1.5)"});
    ASSERT_EQ(a.code, 0) << a.err;
  }
  std::string server() const { return "embedded:" + folder_.text(); }
  // The prompt stands a moment before the keys are read one by one: a Ctrl-D that comes earlier than that is lost.
  static int leave(TerminalSession& t) {
    for (int i = 0; i < 20 && !t.ended(); ++i) {
      t.send(ctrlD);
      t.expectWithin("never shown", 300);
    }
    return t.finish();
  }
  std::vector<std::string> words() const { return {"sql", "--server", server(), "--database", "d"}; }
  TemporaryFolder folder_, home_;
};

TEST_F(SqlShellTest, LinesAreNumberedAndRunAtGo) {
  TerminalSession t(words(), home_);
  t.expect("d 1> ");
  t.send("select ccode,name,me\r");
  t.expect("d 2> ");
  t.send("from code order by ccode\r");
  t.expect("d 3> ");
  t.send("go\r");
  const std::string rows = t.expect(" s\r\n");
  EXPECT_NE(rows.find("ccode   name     me\r\n"
                      "------  ----  -----\r\n"
                      "1001    现金  23070\r\n"
                      "1002    NULL   -1.5\r\n"
                      "100201         NULL\r\n"
                      "(3 rows)\r\n"),
            std::string::npos)
      << rows;
  t.expect("d 1> ");
  EXPECT_EQ(leave(t), 0);
}

TEST_F(SqlShellTest, CtrlCDropsWhatWasTypedAndCtrlDLeaves) {
  TerminalSession t(words(), home_);
  t.expect("d 1> ");
  t.send("delete from code\r");
  t.expect("d 2> ");
  t.send("where this is half a li");
  t.expect("half a li");
  t.send(ctrlC);
  t.expect("d 1> ");
  t.send("GO\r");
  t.expect("d 1> ");
  EXPECT_EQ(leave(t), 0);
  EXPECT_EQ(
      gljz({"sql", "--server", server(), "--database", "d", "--format", "json", "-q", "select count(*) as n from code"})
          .out,
      "[\n {\"n\": 3}\n]\n");
}

TEST_F(SqlShellTest, AFailureHasNumberLevelLineAndPlace) {
  TerminalSession t(words(), home_);
  t.expect("d 1> ");
  t.send("select 1 as a\r");
  t.expect("2> ");
  t.send("select '现金', missing from code\rGO\r");
  t.expect(
      "Msg 207, Level 16, Line 2\r\nInvalid column name 'missing'.\r\n"
      "  select '现金', missing from code\r\n"
      "                 ^\r\n");
  t.expect("d 1> ");
  t.send(":quit\r");
  EXPECT_EQ(t.finish(), 0) << "the person has seen it";
}

TEST_F(SqlShellTest, TablesAreListedAndDescribed) {
  TerminalSession t(words(), home_);
  t.expect("1> ");
  t.send(":tables\r");
  t.expect(
      "table      rows\r\n"
      "---------  ----\r\n"
      "code          3\r\n"
      "gl_accsum     0\r\n");
  t.send(":tables gl_*\r");
  EXPECT_EQ(t.expect("gl_accsum     0\r\n").find("code  "), std::string::npos);
  t.send(":tables nothing\r");
  t.expect("no table is like nothing");
  t.send(":describe code\r");
  t.expect(
      "d..code\r\n"
      "column  type          null      default\r\n"
      "------  ------------  --------  -------------\r\n"
      "id      int           not null  identity(1,1)\r\n"
      "ccode   nvarchar(40)  not null\r\n"
      "name    nvarchar(60)            N'x'\r\n"
      "me      money\r\n"
      "\r\n"
      "key      kind         columns\r\n"
      "-------  -----------  ----------------\r\n"
      "pk_code  primary key  ccode\r\n"
      "ix_name  index        name, ccode desc\r\n");
  t.send(":describe missing\r");
  t.expect("Msg 208, Level 16, Line 1\r\nInvalid object name 'missing'.");
  t.send(":nothing\r");
  t.expect("there is no command :nothing; :help lists the commands");
  t.send(":help\r");
  t.expect(":describe TABLE");
}

TEST_F(SqlShellTest, APlanIsShownOfWhatIsTypedOrRanLast) {
  TerminalSession t(words(), home_);
  t.expect("1> ");
  t.send(":plan\r");
  t.expect("nothing was typed yet");
  t.send("select me from code\rwhere ccode=N'1001'\r");
  t.expect("3> ");
  t.send(":plan\r");
  const std::string plan = t.expect("3> ");
  EXPECT_NE(plan.find("SELECT s0.\"me\" AS c0"), std::string::npos) << plan;
  EXPECT_NE(plan.find("?1  literal 0: nvarchar(4)"), std::string::npos) << plan;
  EXPECT_NE(plan.find("SEARCH s0 USING INDEX"), std::string::npos) << plan;
  t.send("GO\r");
  t.expect("23070\r\n(1 row)\r\n");
  t.expect("1> ");
  t.send(":tree\r");
  t.expect("(where (= s0.ccode:nvarchar(40)! ?1:nvarchar(");
  t.send(":plan delete from code where me>1\r");
  t.expect("DELETE FROM");
}

TEST_F(SqlShellTest, TheDatabaseAndAnOpenTransactionAreInThePrompt) {
  TerminalSession t({"sql", "--server", server()}, home_);
  t.expect("1> ");
  t.send(":databases\r");
  t.expect("database\r\n--------\r\nd\r\n");
  t.send(":use nowhere\r");
  t.expect("nowhere");
  t.send(":use d\r");
  t.expect("d 1> ");
  t.send("begin tran delete from code\rGO\r");
  t.expect("(3 rows affected)");
  t.expect("d* 1> ");
  t.send("select 1");
  t.send("\r");
  t.expect("d* 2> ");
  EXPECT_EQ(leave(t), 0);
  t.expect("there was no GO behind it");
  t.expect("the open transaction is undone");
}

TEST_F(SqlShellTest, ABatchIsFoundAgainTheNextDay) {
  {
    TerminalSession t(words(), home_);
    t.expect("1> ");
    t.send("select 'one day'\ras d\rGO\r");
    t.expect("(1 row)");
    t.expect("1> ");
    EXPECT_EQ(leave(t), 0);
  }
  EXPECT_EQ(contentOf(home_.file("state/gljz/sql_history")), "select 'one day'\\nas d\n");
  TerminalSession t(words(), home_);
  t.expect("1> ");
  t.send(up);
  t.expect("as d");
  t.send("\r");
  t.expect("3> ");
  t.send("GO\r");
  t.expect("one day\r\n(1 row)");
}

TEST_F(SqlShellTest, ChineseIsEditedAsCharacters) {
  TerminalSession t(words(), home_);
  t.expect("1> ");
  t.send("select N'结转错' as a\x7f\x7f\x7f\x7f\x7f\x7f\x7f' as b\rGO\r");  // back to the last character, and over it
  t.expect("b\r\n----\r\n结转\r\n(1 row)");
}

TEST_F(SqlShellTest, TabCompletesNames) {
  TerminalSession t(words(), home_);
  t.expect("1> ");
  t.send("select cco\t");
  t.expect("de ");
  t.send("from gl_\t\rGO\r");
  t.expect("Msg 207");
  t.send(":desc\tcode\r");
  t.expect("d..code");
}

TEST_F(SqlShellTest, CtrlCEndsTheBatchThatRuns) {
  TerminalSession t(words(), home_);
  t.expect("1> ");
  t.send("insert into gl_accsum select a.id*1000+b.id from code a,code b\rGO\r");
  t.expect("(9 rows affected)");
  t.send(
      "select count(*) from gl_accsum a,gl_accsum b,gl_accsum c,gl_accsum d,gl_accsum e,gl_accsum f,gl_accsum g,"
      "gl_accsum h,gl_accsum i,gl_accsum j,gl_accsum k where a.n+b.n+c.n=d.n+e.n+f.n+g.n+h.n+i.n+j.n+k.n\rGO");
  t.expect("GO");
  t.send("\r");
  t.expect("\n");
  for (int i = 0; i < 50 && t.shown().find("Msg 3621") == std::string::npos; ++i) {
    t.send(ctrlC);
    if (t.expectWithin("Msg 3621", 200)) break;
  }
  t.expect("d 1> ");
  t.send("select 'still here' as a\rGO\r");
  t.expect("still here\r\n(1 row)");
}

TEST_F(SqlShellTest, LongTextsAreCutOnATerminalOnly) {
  const std::string query = "select 1 as n, replicate('ab',60) as t, N'长' as u";
  std::vector<std::string> ask = words();
  ask.insert(ask.end(), {"-q", query});
  std::string whole;
  for (int i = 0; i < 60; ++i) whole += "ab";
  EXPECT_NE(gljz(ask).out.find("1  " + whole + "  长\n"), std::string::npos);
  TerminalSession t(ask, home_, 40);
  const std::string rows = t.expect("(1 row)");
  EXPECT_NE(rows.find("1  " + whole.substr(0, 27) + "...  长\r\n"), std::string::npos) << rows;
}

TEST_F(SqlShellTest, ColumnsThatDoNotFitComeInBlocks) {
  std::vector<std::string> ask = words();
  ask.insert(ask.end(), {"-q", "select 1111111111 as a, 2222222222 as b, 33333 as c union all select 4, 5, 6"});
  TerminalSession t(ask, home_, 24);
  t.expect(
      "         a           b\r\n"
      "----------  ----------\r\n"
      "1111111111  2222222222\r\n"
      "         4           5\r\n"
      "\r\n"
      "    c\r\n"
      "-----\r\n"
      "33333\r\n"
      "    6\r\n"
      "(2 rows)");
}

TEST_F(SqlShellTest, NullIsDimWhereThereAreColours) {
  std::vector<std::string> ask = words();
  ask.insert(ask.end(), {"-q", "select name from code where ccode<>N'1001' order by ccode"});
  EXPECT_EQ(gljz(ask).out, "name\n----\nNULL\n\n(2 rows)\n");
  TerminalSession t(words(), home_, 100, true);
  t.expect("1> ");
  t.send("select null as a,'NULL' as b\rGO\r");
  t.expect("\x1b[2mNULL\x1b[0m  NULL\r\n");
}

TEST_F(SqlShellTest, CsvOpensInASpreadsheet) {
  std::vector<std::string> ask = words();
  ask.insert(ask.end(), {"--format", "csv", "-q",
                         "select ccode,name,me from code order by id select N'a\"b,c' as [x y],'two\nlines' as z"});
  EXPECT_EQ(gljz(ask).out,
            "\xEF\xBB\xBF"
            "ccode,name,me\n1001,现金,23070\n100201,\"\",\n1002,,-1.5\n"
            "\n"
            "x y,z\n\"a\"\"b,c\",\"two\nlines\"\n");
}

TEST_F(SqlShellTest, WithoutATerminalATextOrAFileIsExpected) {
  const Answer a = gljz(words(), "select 1\nGO\n");
  EXPECT_EQ(a.code, 2);
  EXPECT_NE(a.err.find("either -q TEXT or -f FILE is expected"), std::string::npos) << a.err;
}

}  // namespace
}  // namespace host::test
