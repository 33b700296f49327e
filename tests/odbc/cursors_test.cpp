#include "odbc_fixture.h"

using platform::CursorLocation;
using platform::RunTimeError;
using platform::Value;

namespace {

constexpr int manyRows = 2500;  // several blocks

class OdbcCursors : public OdbcTest {
protected:
  static void SetUpTestSuite() {
    connect()->ExecuteSql(
        "drop table if exists numbers; create table numbers(n int primary key, t varchar(40));"
        "insert into numbers select i, '行' || i from generate_series(1, " +
        std::to_string(manyRows) + ") i");
  }
};

// Reads all rows forward.
int countRows(platform::Recordset& rows) {
  int count = 0;
  for (; !rows.Eof(); rows.MoveNext()) {
    ++count;
    EXPECT_EQ(rows.Field("n"), Value(count));
    EXPECT_EQ(rows.Field("t"), Value("行" + std::to_string(count)));
  }
  return count;
}

}  // namespace

TEST_F(OdbcCursors, a_client_cursor_has_all_rows_and_walks_both_ways) {
  const auto rows = open("select * from numbers order by n");
  EXPECT_EQ(countRows(*rows), manyRows);
  EXPECT_EQ(failureOf([&] { rows->MoveNext(); }).number(), RunTimeError::noCurrentRecord);
  EXPECT_EQ(failureOf([&] { rows->Field("n"); }).number(), RunTimeError::noCurrentRecord);
  for (int n = manyRows; n >= 1; --n) {
    rows->MovePrevious();
    EXPECT_EQ(rows->Field("n"), Value(n));
  }
  rows->MovePrevious();
  EXPECT_TRUE(rows->Bof());
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(failureOf([&] { rows->MovePrevious(); }).number(), RunTimeError::noCurrentRecord);
  rows->MoveNext();
  EXPECT_EQ(rows->Field("n"), Value(1));
}

TEST_F(OdbcCursors, a_client_cursor_does_not_see_what_happens_later) {
  const auto rows = open("select * from numbers where n <= 3 order by n");
  run("update numbers set t = 'later' where n = 2");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("t"), Value("行2"));
  run("update numbers set t = '行2' where n = 2");
}

TEST_F(OdbcCursors, an_empty_result_set_is_at_both_ends) {
  const auto rows = open("select * from numbers where n < 0");
  EXPECT_TRUE(rows->Bof());
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(rows->FieldCount(), 2u);
  EXPECT_EQ(failureOf([&] { rows->MoveFirst(); }).number(), RunTimeError::noCurrentRecord);
}

TEST_F(OdbcCursors, fields_are_found_without_regard_to_case_and_the_first_of_equal_names_wins) {
  const auto rows = open("select 1 as \"Amount\", 2 as amount, 3 as other");
  EXPECT_EQ(rows->Field("AMOUNT"), Value(1));
  EXPECT_EQ(rows->Field(std::size_t{1}), Value(2));
  EXPECT_EQ(rows->Field("oTHER"), Value(3));
  EXPECT_EQ(failureOf([&] { rows->Field("none"); }).number(), RunTimeError::noSuchField);
  EXPECT_EQ(failureOf([&] { rows->Field(std::size_t{3}); }).number(), RunTimeError::noSuchField);
}

TEST_F(OdbcCursors, a_closed_result_set_says_so) {
  const auto rows = open("select 1 as a");
  rows->Close();
  rows->Close();
  EXPECT_FALSE(rows->IsOpen());
  EXPECT_EQ(failureOf([&] { rows->Eof(); }).number(), RunTimeError::objectClosed);
  EXPECT_EQ(failureOf([&] { rows->Field("a"); }).number(), RunTimeError::objectClosed);
}

TEST_F(OdbcCursors, a_batch_without_a_result_set_has_none_to_open) {
  EXPECT_EQ(failureOf([&] { open("update numbers set t = t where n < 0"); }).number(), RunTimeError::objectClosed);
}

TEST_F(OdbcCursors, a_failure_behind_the_rows_is_a_failure) {
  const RunTimeError e = failureOf([&] { open("select 1 as a; select * from nowhere_at_all"); });
  EXPECT_NE(e.description().find("nowhere_at_all"), std::string::npos) << e.description();
}

// Both ways in which a server cursor is read beside other statements.
class OdbcServerCursors : public OdbcCursors, public testing::WithParamInterface<odbc::ServerCursor> {
protected:
  // The driver fetches in portions instead of reading all rows at once.
  std::shared_ptr<platform::Connection> streaming_ = connect("UseDeclareFetch=1;Fetch=100", GetParam());
};

TEST_P(OdbcServerCursors, rows_are_walked_while_other_statements_run_on_the_connection) {
  run("drop table if exists seen; create table seen(n int)");
  const auto rows = streaming_->OpenRecordset("select * from numbers order by n", 2, CursorLocation::server);
  int count = 0;
  for (; !rows->Eof(); rows->MoveNext()) {
    ++count;
    if (count % 100 != 0) continue;
    streaming_->ExecuteSql("insert into seen values(" + rows->Field("n").asText() + ")");
    EXPECT_EQ(streaming_->OpenRecordset("select max(n) from seen", 2)->Field(std::size_t{0}), Value(count));
  }
  EXPECT_EQ(count, manyRows);
  EXPECT_EQ(value("select count(*) from seen"), Value(manyRows / 100));
}

TEST_P(OdbcServerCursors, rows_are_walked_inside_a_transaction_that_writes) {
  run("drop table if exists seen; create table seen(n int)");
  streaming_->BeginTrans();
  const auto rows = streaming_->OpenRecordset("select * from numbers order by n", 2, CursorLocation::server);
  int count = 0;
  for (; !rows->Eof(); rows->MoveNext())
    if (++count % 500 == 0) streaming_->ExecuteSql("insert into seen values(1)");
  rows->Close();
  streaming_->CommitTrans();
  EXPECT_EQ(count, manyRows);
  EXPECT_EQ(value("select count(*) from seen"), Value(manyRows / 500));
}

TEST_P(OdbcServerCursors, it_goes_back_within_its_block_and_begins_anew) {
  const auto rows = streaming_->OpenRecordset("select * from numbers order by n", 2, CursorLocation::server);
  rows->MoveNext();
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("n"), Value(1));
  EXPECT_EQ(countRows(*rows), manyRows);
  rows->MoveFirst();
  EXPECT_EQ(countRows(*rows), manyRows);
}

TEST_P(OdbcServerCursors, two_of_them_walk_side_by_side) {
  const auto up = streaming_->OpenRecordset("select * from numbers order by n", 2, CursorLocation::server);
  const auto down = streaming_->OpenRecordset("select * from numbers order by n desc", 2, CursorLocation::server);
  for (int i = 1; i <= manyRows; ++i, up->MoveNext(), down->MoveNext())
    ASSERT_EQ(up->Field("n").asInteger() + down->Field("n").asInteger(), manyRows + 1);
  EXPECT_TRUE(up->Eof() && down->Eof());
}

TEST_P(OdbcServerCursors, an_empty_one_is_at_its_end) {
  const auto rows = streaming_->OpenRecordset("select * from numbers where n < 0", 2, CursorLocation::server);
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->Bof());
}

TEST_P(OdbcServerCursors, it_is_closed_with_its_connection) {
  const auto rows = streaming_->OpenRecordset("select * from numbers order by n", 2, CursorLocation::server);
  streaming_->ConnectionClose();
  EXPECT_NO_THROW(rows->Close());
}

INSTANTIATE_TEST_SUITE_P(Ways, OdbcServerCursors,
                         testing::Values(odbc::ServerCursor::activeResults, odbc::ServerCursor::staticCursor),
                         [](const auto& way) {
                           return way.param == odbc::ServerCursor::activeResults ? "active_results" : "static_cursor";
                         });
