// The failures of the server: number, severity, line and wording, and what each of them ends.

#include "server_test_support.h"

namespace embedded::test {
namespace {

class ErrorMessagesTest : public ServerTest {
protected:
  ErrorMessagesTest() {
    run(session,
        "create table t (id int not null constraint pk_t primary key, c nvarchar(3) null, m money null, d datetime "
        "null, b tinyint null constraint ck_b check (b<10), u int null, constraint ck_two check (b<>u))");
    run(session, "create unique index ux_c on t(c)");
    run(session, "create table n (i int identity(1,1), k int constraint uq_k unique)");
    run(session, "insert into t(id,c) values(1,N'a') insert into n(k) values(1)");
  }
  Session session{server, "d1"};
};

class ErrorMessages : public ErrorMessagesTest, public ::testing::WithParamInterface<ExpectedFailure> {};

TEST_P(ErrorMessages, NameTheObjectAsTheServerDoes) {
  expectFirstFailure(session, GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Server, ErrorMessages,
    ::testing::Values(
        ExpectedFailure{"select 1\nselct 2", 102, 15, 2, "Incorrect syntax near '2'."},
        ExpectedFailure{"select *\nfrom t\nwhere", 102, 15, 3, "Incorrect syntax near 'where'."},
        ExpectedFailure{"select id from t\norder id", 102, 15, 2, "Incorrect syntax near 'id'."},
        ExpectedFailure{"select from t", 156, 15, 1, "Incorrect syntax near the keyword 'from'."},
        ExpectedFailure{"select 'a", 105, 15, 1, "Unclosed quotation mark after the character string 'a'."},
        ExpectedFailure{"select\n@x", 137, 15, 2, "Must declare the scalar variable \"@x\"."},
        ExpectedFailure{
            "declare @x int\ndeclare @X int", 134, 15, 2,
            "The variable name '@X' has already been declared. Variable names must be unique within a query batch "
            "or stored procedure."},
        ExpectedFailure{"select nosuch\nfrom t", 207, 16, 1, "Invalid column name 'nosuch'."},
        ExpectedFailure{"select id from\nd1..nosuch", 208, 16, 2, "Invalid object name 'd1..nosuch'."},
        ExpectedFailure{"select id from t a, n, t b", 209, 16, 1, "Ambiguous column name 'id'."},
        ExpectedFailure{"select x.id from t", 4104, 16, 1, "The multi-part identifier \"x.id\" could not be bound."},
        ExpectedFailure{"insert into t(m) values('x')", 235, 16, 1,
                        "Cannot convert a char value to money. The char value has incorrect syntax."},
        ExpectedFailure{"select id from t where d>'x'", 241, 16, 1,
                        "Conversion failed when converting date and/or time from character string."},
        ExpectedFailure{"select 1 as a\nselect cast('12x' as int)", 245, 16, 2,
                        "Conversion failed when converting the varchar value '12x' to data type int."},
        ExpectedFailure{"select N'y'+1", 245, 16, 1,
                        "Conversion failed when converting the nvarchar value 'y' to data type int."},
        ExpectedFailure{
            "insert into t(id) values(null)", 515, 16, 1,
            "Cannot insert the value NULL into column 'id', table 'd1.dbo.t'; column does not allow nulls. INSERT "
            "fails."},
        ExpectedFailure{
            "update t set id=null", 515, 16, 1,
            "Cannot insert the value NULL into column 'id', table 'd1.dbo.t'; column does not allow nulls. UPDATE "
            "fails."},
        ExpectedFailure{
            "insert into t(id,b) values(2,10)", 547, 16, 1,
            "The INSERT statement conflicted with the CHECK constraint \"ck_b\". The conflict occurred in database "
            "\"d1\", table \"dbo.t\", column 'b'."},
        ExpectedFailure{
            "update t set b=1,u=1", 547, 16, 1,
            "The UPDATE statement conflicted with the CHECK constraint \"ck_two\". The conflict occurred in "
            "database \"d1\", table \"dbo.t\"."},
        ExpectedFailure{"insert into t(id,c) values(2,N'A ')", 2601, 14, 1,
                        "Cannot insert duplicate key row in object 'dbo.t' with unique index 'ux_c'."},
        ExpectedFailure{"insert into t(id) values(1)", 2627, 14, 1,
                        "Violation of PRIMARY KEY constraint 'pk_t'. Cannot insert duplicate key in object 'dbo.t'."},
        ExpectedFailure{"insert into n(k) values(1)", 2627, 14, 1,
                        "Violation of UNIQUE KEY constraint 'uq_k'. Cannot insert duplicate key in object 'dbo.n'."},
        ExpectedFailure{"create table T (a int)", 2714, 16, 1, "There is already an object named 'T' in the database."},
        ExpectedFailure{"exec d1..nosuch", 2812, 16, 1, "Could not find stored procedure 'd1..nosuch'."},
        ExpectedFailure{"drop table nosuch", 3701, 11, 1,
                        "Cannot drop the table 'nosuch', because it does not exist or you do not have permission."},
        ExpectedFailure{"commit", 3902, 16, 1,
                        "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
        ExpectedFailure{"rollback", 3903, 16, 1,
                        "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
        ExpectedFailure{"select cast('x' as float)", 8114, 16, 1, "Error converting data type varchar to float."},
        ExpectedFailure{"select 2147483647+1", 8115, 16, 1,
                        "Arithmetic overflow error converting expression to data type int."},
        ExpectedFailure{"select 1e308*10", 8115, 16, 1,
                        "Arithmetic overflow error converting expression to data type float."},
        ExpectedFailure{"select sum(c) from t", 8117, 16, 1, "Operand data type nvarchar is invalid for sum operator."},
        ExpectedFailure{"select c,count(*) from t", 8120, 16, 1,
                        "Column 't.c' is invalid in the select list because it is not contained in either an aggregate "
                        "function or the GROUP BY clause."},
        ExpectedFailure{"select 1/0", 8134, 16, 1, "Divide by zero error encountered."},
        ExpectedFailure{"insert into t(id,c) values(2,N'abcd')", 8152, 16, 1,
                        "String or binary data would be truncated."},
        ExpectedFailure{
            "insert into n values(1,1)", 8101, 16, 1,
            "An explicit value for the identity column in table 'n' can only be specified when a column list is "
            "used and IDENTITY_INSERT is ON."},
        ExpectedFailure{
            "insert into n(i) values(1)", 544, 16, 1,
            "Cannot insert explicit value for identity column in table 'n' when IDENTITY_INSERT is set to OFF."},
        ExpectedFailure{"insert into t values(1)", 213, 16, 1,
                        "Column name or number of supplied values does not match table definition."},
        ExpectedFailure{"insert into t(id) values(c)", 128, 15, 1,
                        "The name \"c\" is not permitted in this context. Valid expressions are constants, constant "
                        "expressions, and (in some contexts) variables. Column names are not permitted."},
        ExpectedFailure{"insert into t(id) values(t.c)", 4104, 16, 1,
                        "The multi-part identifier \"t.c\" could not be bound."},
        ExpectedFailure{"update t set x.c=null", 4104, 16, 1, "The multi-part identifier \"x.c\" could not be bound."},
        ExpectedFailure{"select dateadd(foo,1,d) from t", 155, 15, 1, "'foo' is not a recognized dateadd option."},
        ExpectedFailure{"select nosuch(1)", 195, 15, 1, "'nosuch' is not a recognized built-in function name."},
        ExpectedFailure{"select a.id from t a, n a", 1011, 16, 1,
                        "The correlation name 'a' is specified multiple times in a FROM clause."}));

// ---------------------------------------------------------------------------------------------- what is refused
struct Refused {
  const char* batch;
  const char* text;
};

class Refusals : public ErrorMessagesTest, public ::testing::WithParamInterface<Refused> {};

TEST_P(Refusals, SayTheConstructAndItsPlaceBeforeAnythingRuns) {
  const Answers a = ask(session, std::string("delete n ") + GetParam().batch);
  ASSERT_FALSE(a.failures.empty()) << GetParam().batch;
  EXPECT_EQ(a.failures.front().number, 40000) << GetParam().batch;
  EXPECT_NE(std::string(a.failures.front().what()).find(GetParam().text), std::string::npos)
      << a.failures.front().what();
  EXPECT_EQ(rows(session, "select count(*) from n"), (std::vector<std::string>{"1"}));
}

INSTANTIATE_TEST_SUITE_P(
    Server, Refusals,
    ::testing::Values(Refused{"select c,count(*) from t group by c with rollup",
                              "group by with rollup is not supported (line 1, column 46)"},
                      Refused{"select c from t group by all c", "group by all is not supported (line 1, column 35)"},
                      Refused{"select soundex(c) from t", "the function soundex is not supported (line 1, column 17)"},
                      Refused{"select row_number() over (order by id) from t", "the over clause is not supported"},
                      Refused{"set rowcount 5", "set rowcount 5 is not supported (line 1, column 14)"},
                      Refused{"set dateformat dmy", "set dateformat dmy is not supported"},
                      Refused{"set ansi_nulls off", "set ansi_nulls off is not supported"},
                      Refused{"exec ('select 1')", "execute of a text is not supported (line 1, column 15)"},
                      Refused{"exec sp_rename 't','u'", "the system procedure sp_rename is not supported"},
                      Refused{"declare c cursor for select 1 as a", "a cursor is not supported"},
                      Refused{"declare @t table (a int)", "a table variable is not supported"},
                      Refused{"declare @a int update t set @a=id", "assignment to a variable is not supported"},
                      Refused{"declare @a int, @b int select @a=id,@b=@a from t",
                              "a variable that the same selection assigns before is not supported"},
                      Refused{"waitfor delay '0:0:1'", "waitfor is not supported (line 1, column 10)"},
                      Refused{"insert into t(id) exec p", "INSERT ... EXECUTE is not supported"},
                      Refused{"create view v as select 1 as a", "create view is not supported"}));

// ---------------------------------------------------------------------------------------------- what a failure ends
TEST_F(ErrorMessagesTest, AViolatedConstraintUndoesItsStatementAlone) {
  const Answers a = ask(session, "begin transaction insert into t(id) values(1) insert into n(k) values(7) commit");
  EXPECT_EQ(a.failures.size(), 1u);
  EXPECT_EQ(rows(session, "select k from n order by k"), (std::vector<std::string>{"1", "7"}));
}

TEST_F(ErrorMessagesTest, AFailedConversionEndsBatchAndTransaction) {
  run(session, "begin transaction");
  EXPECT_EQ(failureOf(session, "insert into n(k) values(7) insert into n(k) values('x') insert into n(k) values(8)"),
            245);
  EXPECT_FALSE(session.inTransaction());
  EXPECT_EQ(rows(session, "select k from n order by k"), (std::vector<std::string>{"1"}));
}

TEST_F(ErrorMessagesTest, UnderXactAbortEveryFailureEndsBatchAndTransaction) {
  EXPECT_EQ(
      failureOf(session,
                "set xact_abort on begin transaction insert into n(k) values(7) insert into t(id) values(1) insert "
                "into n(k) values(8)"),
      2627);
  EXPECT_FALSE(session.inTransaction());
  EXPECT_EQ(rows(session, "select k from n order by k"), (std::vector<std::string>{"1"}));
  run(session, "set xact_abort off");
  EXPECT_EQ(failureOf(session, "insert into t(id) values(1) insert into n(k) values(9)"), 2627);
  EXPECT_EQ(rows(session, "select k from n order by k"), (std::vector<std::string>{"1", "9"}));
}

TEST_F(ErrorMessagesTest, AnInsertWithoutColumnListSeesTheColumnThatAnotherSessionAdded) {
  run(session, "create table w (a int null)");
  for (const char* value : {"1", "2", "3"}) run(session, std::string("insert into w values(") + value + ")");
  Session other(server, "d1");
  run(other, "alter table w add b int null");
  EXPECT_EQ(failureOf(session, "insert into w values(4)"), 213);
  run(session, "insert into w values(4,4)");
  run(session, "begin transaction");
  run(other, "alter table w add c int null");
  EXPECT_EQ(failureOf(session, "insert into w values(5,5)"), 213);
  run(session, "insert into w values(5,5,5) commit");
  EXPECT_EQ(rows(session, "select a,c from w where a>3 order by a"), (std::vector<std::string>{"4|Null", "5|5"}));
}

TEST_F(ErrorMessagesTest, AStatementThatIsKnownGoesOnWhenOnlyItsOwnSessionChangedOtherTables) {
  run(session, "insert into n(k) values(20)");
  run(session, "create table #x (a int)");
  run(session, "insert into n(k) values(21)");
  run(session, "drop table #x");
  run(session, "insert into n(k) values(22)");
  EXPECT_EQ(rows(session, "select i from n where k>=20 order by i"), (std::vector<std::string>{"2", "3", "4"}));
}

TEST_F(ErrorMessagesTest, SavepointsAndNamesOfTransactions) {
  run(session,
      "begin transaction outermost insert into n(k) values(30) save transaction s insert into n(k) values(31)");
  run(session, "create table made (a int)");
  run(session, "rollback transaction S");
  EXPECT_EQ(failureOf(session, "select * from made"), 208);
  EXPECT_EQ(failureOf(session, "rollback transaction nosuch"), 6401);
  EXPECT_TRUE(session.inTransaction());
  run(session, "insert into n(k) values(32) commit");
  EXPECT_EQ(rows(session, "select k from n where k>=30 order by k"), (std::vector<std::string>{"30", "32"}));
  run(session, "begin transaction outermost delete n begin transaction inside");
  EXPECT_EQ(failureOf(session, "rollback transaction inside"), 6401);
  run(session, "rollback transaction outermost");
  EXPECT_EQ(rows(session, "select count(*) from n"), (std::vector<std::string>{"3"}));
  EXPECT_EQ(failureOf(session, "save transaction s"), 628);
}

TEST_F(ErrorMessagesTest, GetdateIsOneTimeForAllRowsOfAStatement) {
  std::int64_t ticks = 0;
  server->setClock([&ticks] { return ticks += 300; });
  Session timed(server, "d1");
  EXPECT_EQ(rows(timed, "select case when getdate()=getdate() then 'one' else 'two' end"),
            (std::vector<std::string>{"one"}));
  run(timed, "create table times (d datetime)");
  run(timed, "insert into t(id) values(5) insert into times select getdate() from t");
  EXPECT_EQ(rows(timed, "select count(*),count(distinct d) from times"), (std::vector<std::string>{"2|1"}));
  EXPECT_EQ(rows(timed, "select case when max(d)<getdate() then 'later' else 'same' end from times"),
            (std::vector<std::string>{"later"}));
}

}  // namespace
}  // namespace embedded::test
