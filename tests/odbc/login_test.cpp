#include "odbc_fixture.h"

using platform::RunTimeError;
using platform::Value;

namespace {

std::string withoutUser() {
  return postgres().connectionText("UID=" + std::string(PostgresServer::passwordUser));
}

odbc::Settings clerk(const std::string& password) {
  odbc::Settings settings;
  odbc::ConnectionString credentials;
  credentials.set("PWD", password);
  settings.credentials = credentials;
  return settings;
}

}  // namespace

TEST(OdbcLogin, credentials_are_added_at_connect_and_appear_nowhere) {
  const auto connection = odbc::makeConnection(clerk(PostgresServer::password));
  connection->ConnectionOpen(withoutUser());
  EXPECT_EQ(connection->ConnectionText(), withoutUser());
  EXPECT_EQ(connection->OpenRecordset("select cast(current_user as varchar(20))", 2)->Field(std::size_t{0}),
            Value(PostgresServer::passwordUser));
}

TEST(OdbcLogin, a_password_in_a_connection_text_is_used_and_not_told) {
  odbc::ConnectionString secret;
  secret.set("PWD", PostgresServer::password);
  const auto connection = odbc::makeConnection({});
  connection->ConnectionOpen(withoutUser() + secret.text() + ";");
  EXPECT_EQ(connection->ConnectionText().find("s3cret"), std::string::npos) << connection->ConnectionText();
}

TEST(OdbcLogin, a_wrong_password_is_a_clear_failure_without_the_password) {
  const auto connection = odbc::makeConnection(clerk("wrong-word"));
  const RunTimeError e = failureOf([&] { connection->ConnectionOpen(withoutUser()); });
  EXPECT_NE(e.description().find("cannot be opened"), std::string::npos) << e.description();
  EXPECT_NE(e.description().find("password authentication failed"), std::string::npos) << e.description();
  EXPECT_EQ(e.description().find("wrong-word"), std::string::npos) << e.description();
  EXPECT_EQ(connection->RawConnection().State(), platform::RawConnection::closed);
  EXPECT_EQ(failureOf([&] { connection->ExecuteSql("select 1"); }).number(), RunTimeError::connectionClosed);
}

TEST(OdbcLogin, a_missing_database_is_named) {
  std::string text = postgres().connectionText();
  text.replace(text.find("ledger"), 6, "no_such_ledger");
  const RunTimeError e = failureOf([&] { odbc::makeConnection({})->ConnectionOpen(text); });
  EXPECT_NE(e.description().find("no_such_ledger"), std::string::npos) << e.description();
}

TEST(OdbcLogin, a_driver_that_is_not_installed_is_named_as_missing) {
  const RunTimeError e = failureOf(
      [] { odbc::makeConnection({})->ConnectionOpen("Database=x;Server=odbc:Driver={No Such Driver};PWD=hidden!;"); });
  EXPECT_EQ(e.number(), RunTimeError::connectionClosed);
  EXPECT_NE(e.description().find("No Such Driver"), std::string::npos) << e.description();
  EXPECT_EQ(e.description().find("hidden"), std::string::npos) << e.description();
}

TEST(OdbcLogin, a_text_of_another_server_is_refused) {
  EXPECT_EQ(failureOf([] { odbc::makeConnection({})->ConnectionOpen("Database=x;Server=embedded:./y;"); }).number(),
            RunTimeError::connectionClosed);
}

// A driver that shows amounts with two decimals loses what the ledger has to keep.
TEST(OdbcLogin, a_driver_that_rounds_amounts_is_refused) {
  odbc::Settings settings;
  settings.amountType = "numeric(19,4)";
  EXPECT_NO_THROW(odbc::makeConnection(settings)->ConnectionOpen(postgres().connectionText()));
  settings.amountType = "numeric(19,2)";
  const RunTimeError e =
      failureOf([&] { odbc::makeConnection(settings)->ConnectionOpen(postgres().connectionText()); });
  EXPECT_NE(e.description().find("-922337203685477.58"), std::string::npos) << e.description();
}

TEST(OdbcLogin, an_open_connection_is_not_opened_again) {
  const auto connection = odbc::makeConnection({});
  connection->ConnectionOpen(postgres().connectionText());
  EXPECT_EQ(failureOf([&] { connection->ConnectionOpen(postgres().connectionText()); }).number(), 3705);
}
