#include "odbc/connection_string.h"

#include <gtest/gtest.h>

#include "odbc/connection.h"
#include "odbc/diagnostics.h"
#include "odbc/text.h"
#include "odbc_fixture.h"

using odbc::ConnectionString;
using odbc::redacted;

TEST(ConnectionStrings, values_in_braces_hold_what_separates_others) {
  const ConnectionString s(" Driver = {ODBC Driver 18 for SQL Server} ;Server=db1,1433;PWD={a;b}}c=d};UID= ledger ");
  EXPECT_EQ(*s.find("driver"), "ODBC Driver 18 for SQL Server");
  EXPECT_EQ(*s.find("SERVER"), "db1,1433");
  EXPECT_EQ(*s.find("pwd"), "a;b}c=d");
  EXPECT_EQ(*s.find("UID"), "ledger");
  EXPECT_EQ(s.find("Database"), nullptr);
  EXPECT_EQ(s.text(), "Driver=ODBC Driver 18 for SQL Server;Server=db1,1433;PWD={a;b}}c=d};UID=ledger");
  EXPECT_EQ(ConnectionString(s.text()).text(), s.text());
}

TEST(ConnectionStrings, secrets_are_taken_out_and_added_again) {
  ConnectionString s("DSN=ledger;PWD=x1234;UID=u");
  const ConnectionString secrets = s.takeSecrets();
  EXPECT_EQ(s.text(), "DSN=ledger;UID=u");
  EXPECT_EQ(secrets.secretValues(), std::vector<std::string>{"x1234"});
  s.complete(ConnectionString("UID=other;PWD=y"));
  EXPECT_EQ(*s.find("UID"), "u") << "what is there stays";
  EXPECT_EQ(*s.find("PWD"), "y");
}

TEST(ConnectionStrings, what_cannot_be_read_is_refused_without_being_repeated) {
  for (const char* text : {"PWD={secret", "secret", "=secret", "Driver=x;secret word"}) {
    const auto e = failureOf([&] { ConnectionString{text}; });
    EXPECT_EQ(e.number(), platform::RunTimeError::invalidCall) << text;
    EXPECT_EQ(e.description().find("secret"), std::string::npos) << e.description();
  }
}

TEST(ConnectionStrings, secrets_in_other_texts_are_blotted_out) {
  EXPECT_EQ(redacted("odbc:UID=u;PWD=x;Server=s"), "odbc:UID=u;PWD=***;Server=s");
  EXPECT_EQ(redacted("password = {a;b}}c};Server=s"), "password =***;Server=s");
  EXPECT_EQ(redacted("pwd=open to the end"), "pwd=***");
  EXPECT_EQ(redacted("PWD={never closed;Server=s"), "PWD=***");
  EXPECT_EQ(redacted("PWD=a;x;Password=b"), "PWD=***;x;Password=***");
  EXPECT_EQ(redacted("login 'u' with Tiger99 failed", {"Tiger99"}), "login 'u' with *** failed");
  EXPECT_EQ(redacted("no secrets here"), "no secrets here");
  EXPECT_EQ(redacted("PWD="), "PWD=***");
  EXPECT_EQ(redacted("KeyStoreSecret=hunter22;SSLKeyPassword=b;ClientKey=c;Server=s"),
            "KeyStoreSecret=***;SSLKeyPassword=***;ClientKey=***;Server=s");
}

TEST(ConnectionStrings, a_connection_text_gives_its_server_part_and_its_database) {
  EXPECT_EQ(odbc::connectionStringOf("Database=TqSystem;Server=odbc:Driver={FreeTDS};Server=db1;Port=1433;").text(),
            "Driver=FreeTDS;Server=db1;Port=1433;Database=TqSystem");
  EXPECT_EQ(odbc::connectionStringOf("database=A;SERVER=ODBC:DSN=x;Database=B").text(), "DSN=x;Database=A");
  EXPECT_EQ(odbc::connectionStringOf("Server=odbc:DSN=x;Database=B").text(), "DSN=x;Database=B");
}

TEST(OdbcTexts, convert_both_ways_and_refuse_what_is_no_utf8) {
  EXPECT_EQ(odbc::toUtf16("a账\xF0\x9F\x93\x92z"), u"a账\U0001F4D2z");
  EXPECT_EQ(odbc::toUtf8(u"a账\U0001F4D2z"), "a账\xF0\x9F\x93\x92z");
  EXPECT_EQ(odbc::toUtf8(std::u16string{u'a', char16_t{0xD83D}, u'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(odbc::toUtf8(std::u16string{char16_t{0xDE00}}), "\xEF\xBF\xBD");
  for (const char* bad : {"\x80", "\xC0\x80", "\xE8\xB4", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"})
    EXPECT_EQ(failureOf([&] { odbc::toUtf16(bad); }).number(), platform::RunTimeError::invalidCall);
}

TEST(Diagnostics, a_servers_text_keeps_its_brackets) {
  using odbc::withoutComponents;
  EXPECT_EQ(withoutComponents("[unixODBC][FreeTDS][SQL Server]Invalid object name 'x'."), "Invalid object name 'x'.");
  EXPECT_EQ(withoutComponents("[FreeTDS][SQL Server][dbo].[t] is gone"), "[dbo].[t] is gone");
  EXPECT_EQ(withoutComponents("[unixODBC][Maker][Driver 18 for SQL Server][SQL Server][a] b"), "[a] b");
  EXPECT_EQ(withoutComponents("[unixODBC] ERROR: no"), "ERROR: no");
  EXPECT_EQ(withoutComponents("no component"), "no component");
  EXPECT_EQ(withoutComponents("[never closed"), "[never closed");
}
