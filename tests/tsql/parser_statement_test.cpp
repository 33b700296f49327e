#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tsql/parsed.h"

namespace tsql {
namespace {

using namespace ast;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// ---------------------------------------------------------------------------------------------- changes of rows

TEST(InsertStatement, Forms) {
  EXPECT_EQ(printed("insert t values(1,default,-2.5)"), "insert into t values (1, default, -2.5)");
  EXPECT_EQ(printed("insert into t(a,[b c]) select 1,2"), "insert into t (a, [b c]) select 1, 2");
  EXPECT_EQ(printed("insert into t (select 1)"), "insert into t select 1");
  EXPECT_EQ(printed("insert t default values"), "insert into t default values");
  EXPECT_EQ(printed("insert into t exec p 1"), "insert into t execute p 1");
}

TEST(InsertStatement, SeveralRowsAreACombinedSelect) {
  const Parsed p("insert into t values(1,'a'),(2,'b')");
  const auto& insert = p.as<Insert>();
  EXPECT_TRUE(insert.values.empty());
  EXPECT_EQ(insert.select->op, SetOperation::unionAll);
  EXPECT_EQ(errorOf("insert into t values(1),(2,3)").number, 10709);
  EXPECT_EQ(errorOf("insert into t values(1),(default)").number, 40000);
  std::string many = "insert into t values(0)";
  for (int i = 1; i < 1000; ++i) many += ",(0)";
  EXPECT_EQ(Parsed(many).batch.statements.size(), 1u);
  EXPECT_EQ(errorOf(many + ",(0)").number, 10738);
}

TEST(UpdateStatement, Forms) {
  EXPECT_EQ(printed("update d2..t set a=b.x+1, t.c=default from d2..t b, u where b.k=u.k"),
            "update d2..t set a = b.x + 1, t.c = default from d2..t as b, u where b.k = u.k");
  EXPECT_EQ(errorOf("update top (5) t set a=1").number, 40000);
  EXPECT_EQ(errorOf("update t set @a=1").number, 40000);
}

TEST(DeleteStatement, Forms) {
  EXPECT_EQ(printed("delete t"), "delete from t");
  EXPECT_EQ(printed("delete a from t a, u where a.k=u.k"), "delete from a from t as a, u where a.k = u.k");
  EXPECT_EQ(printed("truncate table [d]..t"), "truncate table d..t");
}

// ---------------------------------------------------------------------------------------------- definitions

TEST(CreateTableStatement, TheStandardsSpellingsOfTypesAreTheServersTypes) {
  EXPECT_EQ(printed("create table t (a character varying(5), b char varying(3), c character(4), d national char(2), e "
                    "national character varying(4), f national text, g double precision, h binary varying(3), i char)"),
            "create table t (a varchar(5), b varchar(3), c char(4), d nchar(2), e nvarchar(4), f ntext, g float, h "
            "varbinary(3), i char)");
  EXPECT_EQ(errorOf("create table t (a national int)").number, 156);
  EXPECT_EQ(errorOf("create table t (a double)").number, 156);
}

TEST(CreateTableStatement, Columns) {
  const Parsed p(
      "create table [dbo].[t] ([id] [int] IDENTITY (1, -2) NOT NULL ,a nvarchar(10) collate Chinese_PRC_CI_AS null "
      "default N'借', b decimal(10,2) constraint df default (0) not null, c as a+'x', [d] [varchar](max), g "
      "uniqueidentifier rowguidcol default (newid()), constraint pk primary key clustered (id desc, a) with fillfactor "
      "= 90 on [PRIMARY]) on [PRIMARY] textimage_on [PRIMARY]");
  const auto& table = p.as<CreateTable>();
  EXPECT_THAT(table.name.parts, ElementsAre("dbo", "t"));
  ASSERT_EQ(table.columns.size(), 6u);
  EXPECT_EQ(table.columns[0].identity->increment, -2);
  EXPECT_EQ(table.columns[0].nullable, false);
  EXPECT_EQ(table.columns[1].type.first, 10);
  EXPECT_EQ(table.columns[1].nullable, true);
  EXPECT_EQ(table.columns[1].defaultText, "N'借'");
  EXPECT_EQ(table.columns[2].defaultName, "df");
  EXPECT_EQ(table.columns[2].defaultText, "0");
  EXPECT_EQ(table.columns[2].nullable, false);
  EXPECT_EQ(table.columns[3].computedText, "a+'x'");
  EXPECT_TRUE(table.columns[3].type.name.empty());
  EXPECT_TRUE(table.columns[4].type.max);
  EXPECT_EQ(table.columns[4].nullable, std::nullopt);
  EXPECT_TRUE(table.columns[5].rowGuid);
  EXPECT_EQ(table.columns[5].defaultText, "newid()");
  ASSERT_EQ(table.constraints.size(), 1u);
  EXPECT_TRUE(table.constraints[0].clustered);
  EXPECT_TRUE(table.constraints[0].columns[0].descending);
}

TEST(CreateTableStatement, Constraints) {
  const Parsed p(
      "create table t (a int not null constraint pk primary key, b int constraint ck check ((b>0) and (b<9)) "
      "constraint "
      "uq unique nonclustered, c int references u(x) on delete cascade, unique (a,b), foreign key (a,b) references v, "
      "check (a>b),)");
  const auto& table = p.as<CreateTable>();
  EXPECT_EQ(table.columns[0].constraints[0].name, "pk");
  EXPECT_EQ(table.columns[0].constraints[0].columns[0].name, "a");
  EXPECT_EQ(table.columns[1].constraints[0].text, "(b>0) and (b<9)");
  EXPECT_EQ(table.columns[1].constraints[1].kind, TableConstraint::Kind::unique);
  EXPECT_EQ(table.columns[2].constraints[0].kind, TableConstraint::Kind::foreignKey);
  EXPECT_EQ(table.columns[2].constraints[0].text, "references u(x) on delete cascade");
  ASSERT_EQ(table.constraints.size(), 3u);
  EXPECT_EQ(table.constraints[1].columns.size(), 2u);
  EXPECT_EQ(table.constraints[2].text, "a>b");
}

TEST(AlterTableStatement, Forms) {
  EXPECT_EQ(printed("Alter TABLE [dbo].[t] Add [a] [int] NOT NULL DEFAULT 0, b money, constraint pk primary key (a)"),
            "alter table dbo.t add a int not null default (0), b money, constraint pk primary key (a)");
  EXPECT_EQ(printed("alter table t with nocheck add constraint df default 0 for c"),
            "alter table t add constraint df default (0) for c");
  EXPECT_EQ(printed("alter table t alter column c varchar(10) not null"),
            "alter table t alter column c varchar(10) not null");
  EXPECT_EQ(printed("alter table t drop column a, b"), "alter table t drop column a, b");
  EXPECT_EQ(printed("alter table t drop constraint a"), "alter table t drop constraint a");
  EXPECT_EQ(printed("alter table t drop a"), "alter table t drop constraint a");
  EXPECT_EQ(printed("alter table t add a int not null default 1 with values"),
            "alter table t add a int not null default (1)");
  EXPECT_EQ(errorOf("alter table t add a int null default 1 with values").number, 40000);
  EXPECT_EQ(errorOf("alter table t nocheck constraint all").number, 40000);
}

TEST(IndexStatements, Forms) {
  EXPECT_EQ(printed("create unique clustered index i on d..t(a, b desc) with fillfactor=80, pad_index on [PRIMARY]"),
            "create unique clustered index i on d..t (a, b desc)");
  EXPECT_EQ(printed("create index i on t(a) with (pad_index = off, ignore_dup_key = off)"), "create index i on t (a)");
  EXPECT_EQ(errorOf("create unique index i on t(a) with ignore_dup_key").number, 40000);
  EXPECT_THAT(Parsed("drop index t.i").as<DropIndex>().names[0].parts, ElementsAre("t", "i"));
  EXPECT_THAT(Parsed("drop index i on d..t").as<DropIndex>().names[0].parts, ElementsAre("d", "", "t", "i"));
}

TEST(ProcedureStatements, Definition) {
  const Parsed p(
      "CREATE PROCEDURE [dbo].[p1] @id int, @c nvarchar(10)=N'dflt', @n int = null with recompile AS\nbegin\n set "
      "nocount on\n delete from t where id=@id\nend\nselect 1 -- end");
  const auto& procedure = p.as<CreateProcedure>();
  ASSERT_EQ(procedure.parameters.size(), 3u);
  EXPECT_EQ(procedure.parameters[0].name, "@id");
  EXPECT_EQ(procedure.parameters[0].defaultValue, nullptr);
  EXPECT_EQ(procedure.parameters[1].defaultValue->kind, ExprKind::literal);
  EXPECT_EQ(procedure.parameters[2].defaultValue->kind, ExprKind::null);
  EXPECT_EQ(procedure.body.size(), 2u);
  EXPECT_THAT(procedure.text, HasSubstr("CREATE PROCEDURE [dbo].[p1] @id int"));
  EXPECT_TRUE(Parsed("alter proc p (@a int) as select @a").as<CreateProcedure>().alter);
  EXPECT_EQ(errorOf("select 1 create proc p as select 1").number, 111);
  EXPECT_TRUE(Parsed("create proc p @a int output as select 1").as<CreateProcedure>().parameters[0].output);
  EXPECT_EQ(errorOf("create proc p as").number, 102);
}

TEST(ProcedureStatements, Execution) {
  EXPECT_EQ(printed("exec d1..p 63, N'three', -1, null, @x, abc, ?"),
            "execute d1..p 63, N'three', -1, null, @x, abc, ?");
  EXPECT_EQ(printed("execute dbo.p @c=N'named', @id=62"), "execute dbo.p @c = N'named', @id = 62");
  EXPECT_EQ(printed("exec p0 exec p3"), "execute p0\nexecute p3");
  EXPECT_EQ(printed("sp_help 't'"), "execute sp_help 't'");  // the word may be missing at the head of a batch
  EXPECT_EQ(errorOf("select 1 sp_help 't'").number, 102);
  EXPECT_EQ(Parsed("exec @r = p").as<Execute>().returnVariable, "@r");
  EXPECT_EQ(errorOf("exec ('select 1')").number, 40000);
}

TEST(SmallStatements, Forms) {
  EXPECT_EQ(printed("begin tran x commit tran x begin transaction rollback work"),
            "begin transaction x\ncommit transaction\nbegin transaction\nrollback transaction");
  EXPECT_EQ(printed("set nocount on set identity_insert d..t off set rowcount 0 set lock_timeout -1"),
            "set nocount on\nset identity_insert d..t off\nset rowcount 0\nset lock_timeout -1");
  EXPECT_EQ(printed("set transaction isolation level read committed set ANSI_NULLS, quoted_identifier on"),
            "set transaction isolation level read committed\nset ansi_nulls,quoted_identifier on");
  EXPECT_EQ(printed("create database x drop database x use [y z] print 'a'+'b' return"),
            "create database x\ndrop database x\nuse [y z]\nprint 'a' + 'b'\nreturn");
  EXPECT_EQ(printed("return 1+1 select 2"), "return 1 + 1\nselect 2");
}

// ---------------------------------------------------------------------------------------------- failures

TEST(Failure, NamesTheWord) {
  EXPECT_STREQ(errorOf("selct * from t where").what(), "Incorrect syntax near '*'.");
  EXPECT_STREQ(errorOf("select * fro t where id=1").what(), "Incorrect syntax near 'fro'.");
  EXPECT_STREQ(errorOf("delete from where id=1").what(), "Incorrect syntax near the keyword 'where'.");
  EXPECT_EQ(errorOf("delete from where id=1").number, 156);
  EXPECT_STREQ(errorOf("insert into t values(101 N'y')").what(), "Incorrect syntax near 'y'.");
  EXPECT_STREQ(errorOf("select [my col] from t [x] [y z]").what(), "Incorrect syntax near 'y z'.");
}

TEST(Failure, AtTheEndNamesTheLastWord) {
  const SqlError error = errorOf("select id from t where id=");
  EXPECT_EQ(error.number, 102);
  EXPECT_STREQ(error.what(), "Incorrect syntax near '='.");
  EXPECT_STREQ(errorOf("select * from").what(), "Incorrect syntax near 'from'.");
}

TEST(Failure, Place) {
  const SqlError error = errorOf("select 1\nselect '借', from t");
  EXPECT_EQ(error.pos.line, 2);
  EXPECT_EQ(error.pos.column, 13);
}

TEST(Failure, EmptyBlockAndMissingEnd) {
  EXPECT_EQ(errorOf("begin end").number, 156);
  EXPECT_EQ(errorOf("begin select 1").number, 102);
  EXPECT_EQ(errorOf("if 1=1").number, 102);
  EXPECT_EQ(errorOf("if 1=1 else select 1").number, 156);
}

TEST(Failure, UnsupportedConstructsAreNamed) {
  const std::pair<const char*, const char*> cases[] = {
      {"declare @x table (a int)", "a table variable"},
      {"declare c cursor for select 1", "a cursor"},
      {"goto x", "goto"},
      {"x: select 1", "a label"},
      {"open c", "a cursor"},
      {"fetch next from c", "a cursor"},
      {"raiserror(50001,16,1)", "raiserror with the number of a stored message"},
      {"update t set @v=1", "assignment to a variable"},
      {"set rowcount 10", "set rowcount 10"},
      {"set ansi_nulls, quoted_identifier off", "set ansi_nulls off"},
      {"grant select on t to u", "grant"},
      {"with q as (select 1 a) select * from q", "a common table expression"},
      {"begin try select 1 end try", "begin try"},
      {"create view v as select 1", "create view"},
      {"create function f() returns int as return 1", "create function"},
      {"drop trigger x", "drop trigger"},
      {"alter database x set recovery simple", "alter database"},
      {"create database x on (name=y)", "the place of a database's files"},
      {"select {fn now()}", "an escape in braces"},
      {"select {d '2005-01-01'}", "an escape in braces"},
      {"select dbo.f(1)", "a user-defined function (f)"},
      {"select * from f(1)", "a table-valued function (f)"},
      {"select * from t cross apply u", "cross apply"},
      {"select row_number() over (order by a) from t", "the over clause"},
      {"select * from @t", "a table variable"},
      {"insert into t output inserted.a values(1)", "the output clause"},
      {"dbcc checkdb", "dbcc"},
      {"waitfor delay '0:0:1'", "waitfor"},
  };
  for (const auto& [sql, construct] : cases) {
    const SqlError error = errorOf(sql);
    EXPECT_EQ(error.number, 40000) << sql << ": " << error.what();
    EXPECT_THAT(error.what(), HasSubstr(construct)) << sql;
    EXPECT_THAT(error.what(), HasSubstr(" is not supported (line 1, column ")) << sql;
  }
}

TEST(Failure, NestingAndLengthAreBounded) {
  const auto repeated = [](const std::string& text, int n) {
    std::string result;
    for (int i = 0; i < n; ++i) result += text;
    return result;
  };
  EXPECT_EQ(Parsed("select " + repeated("(", 150) + "1" + repeated(")", 150)).batch.statements.size(), 1u);
  for (const std::string& sql :
       {"select " + repeated("(", 100000) + "1" + repeated(")", 100000), "select " + repeated("- ", 100000) + "1",
        "select " + repeated("~", 100000) + "1", "select 1 where " + repeated("not ", 100000) + "1=1",
        "select 1" + repeated("+1", 100000), "select 1 where 1=1" + repeated(" or 1=1", 100000),
        "select " + repeated("f(", 100000), repeated("if 1=1 ", 100000) + "select 1", repeated("begin ", 100000),
        "select 1" + repeated(" union all select 1", 100000), "select " + repeated("case when 1=1 then ", 100000),
        "select * from " + repeated("(", 100000) + "t", repeated("(", 100000) + "select 1" + repeated(")", 100000),
        "select " + repeated("(select ", 100000) + "1",
        // A chain inside a chain inside a chain, each within its own bound.
        "select " + repeated("(", 150) + "1" + repeated(repeated("+1", 700) + ")", 150)}) {
    EXPECT_EQ(errorOf(sql).number, 191) << sql.substr(0, 40);
  }
  EXPECT_EQ(errorOf("select * from t" + repeated(" cross join t", 300)).number, 106);
  // Lists are as long as they like.
  EXPECT_EQ(Parsed("select 1 where 1 in (1" + repeated(",1", 100000) + ")").batch.statements.size(), 1u);
  EXPECT_EQ(Parsed("select 1 where 1=1" + repeated(" or 1=1", 700)).batch.statements.size(), 1u);
  EXPECT_EQ(Parsed(repeated("select 1 ", 20000)).batch.statements.size(), 20000u);
}

TEST(ReservedWords, AreNoBareNames) {
  for (const char* word : {"select", "order", "key", "user", "table", "top", "left", "writetext", "add"})
    EXPECT_TRUE(isReserved(word)) << word;
  for (const char* word : {"code", "type", "name", "date", "year", "go", "cast", "max", "output", ""})
    EXPECT_FALSE(isReserved(word)) << word;
  EXPECT_EQ(errorOf("select order from t").number, 156);
  EXPECT_EQ(printed("select [order] from t"), "select [order] from t");
}

}  // namespace
}  // namespace tsql
