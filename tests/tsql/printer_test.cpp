#include <gtest/gtest.h>

#include "tsql/parser.h"

namespace tsql {
namespace {

std::string printed(const std::string& sql) {
  const TokenStream tokens = lex(sql);
  return print(parse(tokens), tokens);
}

// What is printed is printed again as it is.
void expectStable(const std::string& sql) {
  const std::string once = printed(sql);
  EXPECT_EQ(printed(once), once);
}

TEST(Printer, NamesGetBracketsWhereTheyNeedThem) {
  EXPECT_EQ(printed("select [a], [my col], [or]]der], [select], [1a], [借], [#t], [cast] from [T-1]"),
            "select a, [my col], [or]]der], [select], [1a], 借, #t, [cast] from [T-1]");
}

TEST(Printer, ColumnNamedDefaultIsNotTheDefault) {
  EXPECT_EQ(printed("update t set a=default, b=[default]+1"), "update t set a = default, b = [default] + 1");
}

TEST(Printer, LiteralsStandAsSpelled) {
  EXPECT_EQ(printed("select 1., .5, 1E3, $2, 0xAB, 'it''s', N'借'"), "select 1., .5, 1E3, $2, 0xAB, 'it''s', N'借'");
}

TEST(Printer, TwoMinusSignsBeginNoComment) {
  EXPECT_EQ(printed("select 1 - -2, -(-3), 4 - (-(-5))"), "select 1 - (-2), -(-3), 4 - (-(-5))");
  expectStable("select 1 - -2, -(-3), 4 - (-(-5)), 2*-3, (-2)*3, ~(-4), -(1+2), -(1*2), -1*2");
}

TEST(Printer, OperatorsKeepTheirGrouping) {
  expectStable("select a-(b-c)-d, a*(b+c), (a|b)&c, a|(b&c), a/(b*c), a/b*c, (a%b)*c");
  expectStable("select 1 where (a=1 or b=2) and (c=3 or not (d=4 and e=5)) or not not f=6");
  expectStable("select 1 where a+1 between b-1 and c*2 and a not like b+'%' escape '\\'");
}

TEST(Printer, AliasThatIsAHintStaysAnAlias) {
  EXPECT_EQ(printed("select * from t as nolock"), "select * from t as nolock");
  expectStable("select * from t as nolock");
}

TEST(Printer, StatementsAndBlocks) {
  EXPECT_EQ(
      printed("if exists(select * from t) begin delete t insert t values(1) end else print 'none' select 2"),
      "if exists (select * from t)\nbegin\ndelete from t\ninsert into t values (1)\nend\nelse\nprint 'none'\nselect 2");
  expectStable("if 1=1 if 2=2 select 1 else select 2 else select 3");
}

TEST(Printer, OneStatementOrExpressionAlone) {
  const TokenStream tokens = lex("select 1 delete t where a='x'");
  const ast::Batch batch = parse(tokens);
  EXPECT_EQ(print(*batch.statements[1], tokens), "delete from t where a = 'x'");
  const auto& deletion = dynamic_cast<const ast::Delete&>(*batch.statements[1]);
  EXPECT_EQ(print(*deletion.where, tokens), "a = 'x'");
}

TEST(Printer, Definitions) {
  expectStable(
      "create table t (a int identity(1,1) not null constraint pk primary key clustered, b as a*2, c nvarchar(5) "
      "null constraint df default (N'x') check (c>''), d int references u(x) on delete no action, constraint ck "
      "check (a>0), foreign key (a,d) references v(a,b) on update cascade)");
  expectStable("alter table t add e int default 0, constraint d2 default (getdate()) for f, unique (e desc)");
  expectStable("create proc p @a int, @b nvarchar(10)=N'x' as if @a is null return 1 exec q @a, @c=@b");
  expectStable("set language N'us_english' set datefirst 7 set statistics io on set deadlock_priority low");
}

TEST(Printer, VariablesLoopsAndTransactions) {
  expectStable(
      "declare @a int, @b nvarchar(5) = N'x' set @a = 1 while @a < 3 begin set @a = @a + 1 if @a = 2 continue else "
      "break "
      "end select @a = id, @b = c from t");
  expectStable("raiserror ('x %d', 16, 1, @a) raiserror 50001 'old' print 'said'");
  expectStable("begin transaction x save transaction s rollback transaction s rollback transaction [x]");
  expectStable("exec @a = p default, @b output, @c = @d output");
  expectStable("create proc p @a int output, @b int = 1 output as return @a");
}

TEST(Printer, ParametersAndVariables) {
  EXPECT_EQ(printed("select ?, @a, @@identity"), "select ?, @a, @@identity");
}

}  // namespace
}  // namespace tsql
