// What a definition, a message or an argument is refused with.

#include "server_test_support.h"

namespace embedded::test {
namespace {

class DefinitionMessagesTest : public ServerTest {
protected:
  DefinitionMessagesTest() {
    run(session,
        "create table t (id int not null, c nvarchar(9) null, m money null, a int null, b int null constraint ckb "
        "check "
        "(b>0), s as b+1, u nvarchar(3) null)");
    run(session, "create index ia on t(a) create table i (id int identity(1,1), v int)");
    run(session, "insert into t(id,c,m) values(1,N'a',1.5) insert into t(id,c,m) values(1,N'A',1.5)");
  }
  Session session{server, "d1"};
};

class DefinitionMessages : public DefinitionMessagesTest, public ::testing::WithParamInterface<ExpectedFailure> {};

TEST_P(DefinitionMessages, NameTheObjectAsTheServerDoes) {
  expectFirstFailure(session, GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Server, DefinitionMessages,
    ::testing::Values(
        ExpectedFailure{
            "alter table t\nadd constraint c4 check(id>5)", 547, 16, 1,
            "The ALTER TABLE statement conflicted with the CHECK constraint \"c4\". The conflict occurred in "
            "database \"d1\", table \"dbo.t\", column 'id'."},
        ExpectedFailure{
            "alter table t alter column a int not null", 515, 16, 1,
            "Cannot insert the value NULL into column 'a', table 'd1.dbo.t'; column does not allow nulls. UPDATE "
            "fails."},
        ExpectedFailure{
            "alter table t add constraint pk_t primary key (id)", 1505, 16, 1,
            "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the object name "
            "'dbo.t' and the index name 'pk_t'. The duplicate key value is (1)."},
        ExpectedFailure{
            "alter table t add constraint uq unique (c,m)", 1505, 16, 1,
            "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the object name "
            "'dbo.t' and the index name 'uq'. The duplicate key value is (a, 1.50)."},
        ExpectedFailure{
            "create unique index ux on t(u,id)", 1505, 16, 1,
            "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the object name "
            "'dbo.t' and the index name 'ux'. The duplicate key value is (<NULL>, 1)."},
        ExpectedFailure{"alter table t drop column a", 5074, 16, 1, "The index 'ia' is dependent on column 'a'."},
        ExpectedFailure{"alter table t drop column b", 5074, 16, 1, "The object 'ckb' is dependent on column 'b'."},
        ExpectedFailure{
            "create table v (a varchar(9000))", 131, 15, 1,
            "The size (9000) given to the column 'a' exceeds the maximum allowed for any data type (8000)."},
        ExpectedFailure{
            "create table v (a int,\nb decimal(40,2))", 2750, 16, 2,
            "Column or parameter #2: Specified column precision 40 is greater than the maximum precision of 38."},
        ExpectedFailure{"create table v (a decimal(5,6))", 192, 15, 1,
                        "The scale must be less than or equal to the precision."},
        ExpectedFailure{"create table v (b int, a int default b)", 128, 15, 1,
                        "The name \"b\" is not permitted in this context. Valid expressions are constants, constant "
                        "expressions, and (in some contexts) variables. Column names are not permitted."},
        ExpectedFailure{"create table v (a int null not null)", 8150, 16, 1,
                        "Multiple NULL constraints were specified for column 'a', table 'v'."},
        ExpectedFailure{"create table v (a int, primary key(a,a))", 1909, 16, 1,
                        "Cannot use duplicate column names in index. Column name 'a' listed more than once."},
        ExpectedFailure{"create table v (a nvarchar(5) collate nosuch)", 448, 16, 1, "Invalid collation 'nosuch'."},
        ExpectedFailure{"create table v (a nvarchar(5)\ncollate Chinese_PRC_BIN)", 40000, 16, 2,
                        "the collation Chinese_PRC_BIN is not supported (line 2, column 9)"},
        ExpectedFailure{"create table v (a timestamp)", 40000, 16, 1,
                        "the type timestamp is not supported (line 1, column 19)"},
        ExpectedFailure{"create tabel v (a int)", 343, 15, 1,
                        "Unknown object type 'tabel' used in a CREATE, DROP, or ALTER statement."},
        ExpectedFailure{"drop index ia", 159, 15, 1,
                        "Must specify the table name and index name for the DROP INDEX statement."},
        ExpectedFailure{"drop index t.nosuch", 3701, 11, 1,
                        "Cannot drop the index 't.nosuch', because it does not exist or you do not have permission."},
        ExpectedFailure{"select * from\ninformation_schema.tables", 40000, 16, 2,
                        "the catalog view information_schema.tables is not supported (line 2, column 1)"},
        ExpectedFailure{"select * from sysindexes", 40000, 16, 1,
                        "the system table sysindexes is not supported (line 1, column 15)"},
        ExpectedFailure{"update t set a+=1", 40000, 16, 1,
                        "the compound assignment += is not supported (line 1, column 15)"},
        ExpectedFailure{"merge into t using i on 1=1 when matched then delete;", 40000, 16, 1,
                        "merge is not supported (line 1, column 1)"},
        ExpectedFailure{"select * from (values (1),(2)) x(a)", 40000, 16, 1,
                        "a derived table of values is not supported (line 1, column 16)"},
        ExpectedFailure{"update z set a=1\nfrom (select * from t) z", 40000, 16, 1,
                        "changing rows through a derived table (z) is not supported (line 1, column 8)"},
        ExpectedFailure{"set nocount\nmaybe", 102, 15, 2, "Incorrect syntax near 'maybe'."},
        ExpectedFailure{"select id from t\nwhere a=\n\n", 102, 15, 2, "Incorrect syntax near '='."},
        ExpectedFailure{
            "use nosuch", 911, 16, 1,
            "Could not locate entry in sysdatabases for database 'nosuch'. No entry found with that name. Make "
            "sure that the name is entered correctly."},
        ExpectedFailure{
            "insert into t(id,id) values(1,1)", 264, 16, 1,
            "The column name 'id' is specified more than once in the SET clause or column list of an INSERT. A "
            "column cannot be assigned more than one value in the same clause. Modify the clause to make sure that "
            "a column is updated only once. If this statement updates or inserts columns into a view, column "
            "aliasing can conceal the duplication in your code."},
        ExpectedFailure{"set identity_insert i on insert into i(id,v) values(null,1)", 339, 16, 1,
                        "DEFAULT or NULL are not allowed as explicit identity values."}));

TEST_F(DefinitionMessagesTest, EveryObjectThatNeedsTheColumnIsNamedThenTheStatement) {
  const Answers a = ask(session, "alter table t drop column b");
  ASSERT_EQ(a.failures.size(), 3u);
  EXPECT_STREQ(a.failures[1].what(), "The column 's' is dependent on column 'b'.");
  EXPECT_EQ(a.failures[2].number, 4922);
  EXPECT_STREQ(a.failures[2].what(),
               "ALTER TABLE DROP COLUMN b failed because one or more objects access this column.");
}

TEST_F(DefinitionMessagesTest, AParameterThatIsSuppliedTwiceIsNamedAndTheBatchGoesOn) {
  run(session, "create procedure p @a int as select @a");
  const Answers a = ask(session, "exec p 1,@A=2 select 5");
  ASSERT_EQ(a.failures.size(), 1u);
  EXPECT_EQ(a.failures[0].number, 8143);
  EXPECT_STREQ(a.failures[0].what(), "Parameter '@a' was supplied multiple times.");
  EXPECT_EQ(a.rows, std::vector<std::string>{"5"});
}

struct Raised {
  const char* batch;
  const char* text;
};

class RaisedMessagesTest : public ServerTest {};

class RaisedMessages : public RaisedMessagesTest, public ::testing::WithParamInterface<Raised> {};

TEST_P(RaisedMessages, AreFormattedAsTheServerDoes) {
  Session session(server, "d1");
  const Answers a = ask(session, GetParam().batch);
  ASSERT_EQ(a.failures.size(), 1u) << GetParam().batch;
  EXPECT_STREQ(a.failures[0].what(), GetParam().text) << GetParam().batch;
}

INSTANTIATE_TEST_SUITE_P(
    Server, RaisedMessages,
    ::testing::Values(
        Raised{"raiserror('x=%x X=%X o=%o u=%u i=%i d=%d s=%s',16,1,255,255,8,-1,-5,7,'abc')",
               "x=ff X=FF o=10 u=4294967295 i=-5 d=7 s=abc"},
        Raised{"raiserror('|%8d|%-8d|%08d|%08d|%+d|%#x|%#o|',16,1,42,42,42,-42,42,42,42)",
               "|      42|42      |00000042|-0000042|+42|0x2a|052|"},
        Raised{"raiserror('|%5.3d|%.3s|%-6s|%6s|%.1s|100%%|',16,1,42,'abcdef','abc','abc',N'借贷')",
               "|  042|abc|abc   |   abc|借|100%|"},
        Raised{"raiserror('|%*d|%*.*s|%ld|%hd|%-06d|% d|',16,1,5,9,5,2,'abc',42,42,7,8)",
               "|    9|   ab|42|42|7     | 8|"},
        Raised{"declare @b bigint, @m bigint set @b=9000000000 set @m=-2 raiserror('|%I64d|%I64x|%x|',16,1,@b,@m,-1)",
               "|9000000000|fffffffffffffffe|ffffffff|"},
        Raised{"declare @n bigint set @n=-9223372036854775807 set @n=@n-1 raiserror('%I64d',16,1,@n)",
               "-9223372036854775808"},
        Raised{"declare @n int raiserror('|%d|%s|%s|',16,1,@n)", "|(null)|(null)|(null)|"},
        Raised{"raiserror('%s %d',16,1,'a','b')",
               "The data type of substitution parameter 2 does not match the expected type of the format "
               "specification."},
        Raised{"declare @b bigint set @b=1 raiserror('%d',16,1,@b)",
               "The data type of substitution parameter 1 does not match the expected type of the format "
               "specification."},
        Raised{"raiserror('%d',16,1,1.5)",
               "Cannot specify numeric data type (parameter 4) as a substitution parameter."},
        Raised{"raiserror('a %q b',16,1,5)", "Invalid format specification: '%q b'."},
        Raised{"raiserror('at the end %',16,1,5)", "Invalid format specification: '%'."}));

TEST_F(RaisedMessagesTest, AWidthHasABound) {
  Session session(server, "d1");
  const Answers a = ask(session, "raiserror('%99999999999999999999d|%.99999999999999999999d',16,1,5,5)");
  ASSERT_EQ(a.failures.size(), 1u);
  EXPECT_EQ(std::string(a.failures[0].what()).size(), 2047u + 1 + 2047u);
}

}  // namespace
}  // namespace embedded::test
