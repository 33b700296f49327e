// The small tools of the host that work on texts alone.
#include <gtest/gtest.h>

#include "host/connection_text.h"
#include "host/display_width.h"
#include "host/json_text.h"
#include "host/sql_script.h"
#include "host/statement_head.h"
#include "host/usage_error.h"

namespace host {
namespace {

using Kind = StatementHead::Kind;

TEST(StatementHeadTest, ReadsVerbAndTable) {
  struct Case {
    const char* text;
    Kind kind;
    const char* table;
    bool temporary;
  };
  const Case cases[] = {
      {"insert into gl_accsum(iyear) values(1)", Kind::insert, "gl_accsum", false},
      {"Insert gl_accass select 1", Kind::insert, "gl_accass", false},
      {"INSERT INTO [GL_accvouch]([iperiod]) select 0", Kind::insert, "GL_accvouch", false},
      {"update  GF_ImportSet set dSuccessEndDate=null", Kind::update, "GF_ImportSet", false},
      {"Delete From  TqData_001_2006..GL_accsum Where 1=1", Kind::erase, "GL_accsum", false},
      {"delete code where 1=0", Kind::erase, "code", false},
      {"delete from [TqData_001_2006]..[GL_bmultiGroup]", Kind::erase, "GL_bmultiGroup", false},
      {" select  top 1 * from gl_accvouch where 1=1", Kind::select, "gl_accvouch", false},
      {"select 'a from b' as x from code", Kind::select, "code", false},
      {"select cDatabase FROM TqSystem.dbo.UA_AccountDatabase", Kind::select, "UA_AccountDatabase", false},
      {"insert into tempdb..jztmp select 1", Kind::insert, "jztmp", true},
      {"insert into #t select 1", Kind::insert, "#t", true},
      {"select 1", Kind::select, "", false},
      {"exec GL_P_AllItemName", Kind::other, "", false},
      {"", Kind::other, "", false},
      {"insert into [broken", Kind::insert, "", false},
  };
  for (const Case& c : cases) {
    const StatementHead head = statementHead(c.text);
    EXPECT_EQ(head.kind, c.kind) << c.text;
    EXPECT_EQ(head.table, c.table) << c.text;
    EXPECT_EQ(head.temporary, c.temporary) << c.text;
  }
}

TEST(StatementHeadTest, OfASelectionTakesTheTableWhoseDataItFetches) {
  const std::pair<const char*, const char*> cases[] = {
      {"select * from code inner join gl_accsum on code.ccode=gl_accsum.ccode where 1=1", "gl_accsum"},
      {"select A.*,C.ccode_name from d2005..code  C inner join d2005..rp_cheque A on C.ccode=A.ccode", "rp_cheque"},
      {"select code.ccode from code ,gl_bautotran where 1=1", "gl_bautotran"},
      {"select G.mb from GL_accsum G,code C where G.ccode=C.ccode", "GL_accsum"},
      {"select a from t order by x, y", "t"},
      {"select a from t where x in (select ccode from code, u)", "t"},
      {"select (select max(i) from u) from t join [v w] on isnull(t.a,t.b)=1", "v w"},
      {"select a from (select b from t) x", ""},
      {"select a from t where b='from x, y join z'", "t"},
  };
  for (const auto& [text, table] : cases) EXPECT_EQ(statementHead(text).table, table) << text;
  EXPECT_TRUE(statementHead("select a from d2005..code c join d2005..rp_cheque r on 1=1").qualified);
  EXPECT_FALSE(statementHead("select a from code c join rp_cheque r on 1=1").qualified);
  EXPECT_TRUE(statementHead("select a from code c join tempdb..w r on 1=1").temporary);
}

TEST(StatementHeadTest, KnowsSelectionsWhoseRowsAreNoRowsOfATable) {
  EXPECT_TRUE(statementHead("select distinct a from t").condensed);
  EXPECT_TRUE(statementHead("select a from t where b=1 Group By a").condensed);
  EXPECT_FALSE(statementHead("select a from t where b in (select c from u group by c) order by a").condensed);
  EXPECT_FALSE(statementHead("select a, b as distinctness from t where n='group by'").condensed);
}

TEST(StatementHeadTest, OfABatchTakesTheLastChange) {
  const StatementHead head = lastChangeHead(
      "select ccode into #T from code\r\ndelete gl_accsum from #T\r\nInsert into Gl_AccSum(a) select 1\r\ndrop table "
      "#T");
  EXPECT_EQ(head.kind, Kind::insert);
  EXPECT_EQ(head.table, "Gl_AccSum");
  EXPECT_EQ(lastChangeHead("update t set a=1\nwhere b=2").table, "t");
}

TEST(SqlScriptTest, SplitsAtGoOnALineOfItsOwn) {
  EXPECT_EQ(splitBatches("select 1\nGO\n  go \r\nselect 'go'\ngoto\nGo"),
            (std::vector<std::string>{"select 1\n", "select 'go'\ngoto\n"}));
  EXPECT_EQ(splitBatches(" \n\nGO\n"), std::vector<std::string>());
  EXPECT_EQ(splitBatches("\xEF\xBB\xBFselect 1"), std::vector<std::string>{"select 1"});
}

TEST(DisplayWidthTest, AChineseCharacterTakesTwoColumns) {
  EXPECT_EQ(displayWidth("abc"), 3u);
  EXPECT_EQ(displayWidth("结转a"), 5u);
  EXPECT_EQ(paddedToWidth("结", 4), "结  ");
  EXPECT_EQ(paddedToWidth("结", 4, true), "  结");
  EXPECT_EQ(fittedToWidth("结转上年余额", 12), "结转上年余额");
  EXPECT_EQ(fittedToWidth("结转上年余额", 8), "结转...");
}

TEST(JsonTextTest, EscapesAndReplacesWhatIsNoUtf8) {
  EXPECT_EQ(jsonString("a\"\\\n\t\x01结"), "\"a\\\"\\\\\\n\\t\\u0001结\"");
  EXPECT_EQ(jsonString("a\xC3(\xFF"), "\"a\\ufffd(\\ufffd\"");
  EXPECT_EQ(jsonString("\xED\xA0\x80"), "\"\\ufffd\\ufffd\\ufffd\"");  // half of a surrogate pair
}

TEST(ConnectionTextTest, TheDatabaseStandsFirst) {
  const ServerAddress server = parseServer("embedded:/data/TqData_001_2006");
  EXPECT_EQ(connectionText("TqData_001_2006", server),
            "Database=TqData_001_2006;Server=embedded:/data/TqData_001_2006;");
}

TEST(ConnectionTextTest, OddServersAreRefused) {
  for (const char* text : {"", "DIR", "embedded:", "embedded:a;b", "sqlite:x"})
    EXPECT_THROW(parseServer(text), UsageError) << text;
  const ServerAddress odbc = parseServer("odbc:Driver=x;PWD=secret");
  try {
    requireEmbedded(odbc);
    FAIL();
  } catch (const UsageError& e) {
    EXPECT_EQ(std::string(e.what()).find("secret"), std::string::npos);
  }
}

TEST(ConnectionTextTest, QuotesAreDoubled) {
  EXPECT_EQ(quoted("it's"), "N'it''s'");
  EXPECT_EQ(bracketed("a]b"), "[a]]b]");
}

}  // namespace
}  // namespace host
