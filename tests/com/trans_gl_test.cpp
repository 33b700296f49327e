// TransGL through COM: by databases, with services of its own. Which databases its two connections open follows from
// the login's connection text.

#include <gmock/gmock.h>

#include "entry_calls.h"
#include "relay.h"

namespace com::test {
namespace {

using platform::Money;
using platform::Value;
using testing::HasSubstr;

constexpr const char* opening = "TqData_001_2006";

class TransGLTest : public testing::Test {
protected:
  // The login's text, with this in place of the database.
  void loginNames(const std::string& database) {
    login->answer(L"LoginConnText", Variant(Value("Database=" + database + ";Server=" + server.address() + ";")));
  }
  Answer carry(const Databases& databases = {}) { return transGL(gljz.get(), dispatchOf(login), databases); }

  void expectCarried(const Answer& answer) const {
    EXPECT_EQ(answer.code, S_OK) << lastError().description;
    EXPECT_TRUE(answer.returned);
    EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00310"));
    const Answer told = transferMsg(gljz.get());
    EXPECT_TRUE(told.returned);
    EXPECT_EQ(told.message, "");
    EXPECT_EQ(
        server.cell(opening, "select mb from gl_accsum where ccode='1001' and iperiod=1 and iyear=2006").asMoney(),
        Money::parse("23070"));
    EXPECT_EQ(server.cell("TqData_001_2005", "select count(*) from gl_accsum where iyear=2006"), Value(0));
  }
  // What the server said about the first connection that it could not open.
  void expectRefused(const Answer& answer, const std::string& database) const {
    EXPECT_EQ(answer.code, serverSaid);
    EXPECT_THAT(lastError().description, HasSubstr("\"" + database + "\""));
    EXPECT_EQ(answer.message, "");
  }

  const ReferenceServer server;
  const Pointer<Relay> login = adopt(new Relay(server.login()));
  const Pointer<_clsGLJZ> gljz = newGljz();
};

TEST_F(TransGLTest, RunsWithoutAccountIdsAndMarksNothing) {
  expectCarried(carry());
  EXPECT_EQ(login->heard("LoginMarkDone"), 0);
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(0));
  EXPECT_EQ(login->heard("LoginOpenAccount"), 0) << "databases are named, not asked for";
}

TEST_F(TransGLTest, TheServicesOfThePropertyAreNotUsed) {
  const Pointer<Relay> services = adopt(new Relay(server.services()));
  ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
  expectCarried(carry());
  EXPECT_TRUE(services->heard().empty());
}

// The account has a fiscal year of its own; an unknown one begins on the first of January.
TEST_F(TransGLTest, TheAccountIsThatOfTheSecondIdWhenTheLoginHasNone) {
  server.execute("TqSystem", "update UA_Period set dBegin='2006-01-03' where cAcc_Id='001' and iYear=2006 and iId=1");
  login->answer(L"LoginAccId", Variant(Value("")));
  Text last("2005"), current("2006"), text, lastDb("TqData_001_2005"), thisDb(opening), lastId("nobody"), id("001");
  VARIANT_BOOL returned = VARIANT_FALSE;
  ASSERT_EQ(gljz->TransGL(&last, &current, login.get(), &text, &lastDb, &thisDb, &lastId, &id, &returned), S_OK)
      << lastError().description;
  EXPECT_EQ(returned, VARIANT_TRUE);
  const auto openingRowsOf = [&](const std::string& day) {
    return server.cell(opening, "select count(*) from gl_accvouch where iyear=2006 and dbill_date='" + day + "'")
        .asInteger();
  };
  EXPECT_GT(openingRowsOf("2006-01-03"), 0);
  EXPECT_EQ(openingRowsOf("2006-01-01"), 0);
}

TEST_F(TransGLTest, ALoginOfTheSiblingSubsystemHasItsOwnText) {
  login->answer(L"IsGFLogin", Variant(Value(true)));
  EXPECT_EQ(carry().message, message("Orvo.GL.TqGLJZ.00309"));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(0));
}

TEST_F(TransGLTest, WithoutAClosingDatabaseItReturnsFalseWithAText) {
  const Answer answer = carry({"", opening});
  EXPECT_THAT(answer, says(false, message("Orvo.GL.TqGLJZ.00030")));
  EXPECT_EQ(transferMsg(gljz.get()).message, "");
}

TEST_F(TransGLTest, WithoutALoginItIsAnErrorOfTheCaller) {
  const Answer answer = transGL(gljz.get(), nullptr);
  EXPECT_EQ(answer.code, objectNotSet);
  EXPECT_EQ(lastError().description, "Object not set: login");
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "");
}

TEST_F(TransGLTest, AStopOfTheChecksIsReported) {
  server.execute("TqData_001_2005", "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  const Answer answer = carry();
  EXPECT_THAT(answer, says(false, message("Orvo.GL.TqGLJZ.00032")));
}

TEST_F(TransGLTest, TheFirstYearOfAnAccountIsNoStop) {  // only a run that is watched asks for it
  server.execute("TqSystem", "delete from UA_AccountDatabase where iBeginYear=2005");
  expectCarried(carry());
}

// --- from the system database

TEST_F(TransGLTest, TheSystemDatabaseInTheLoginsTextIsFoundInAnyLetters) {
  for (const char* name : {"TqSystem", "tqsystem", "TQSYSTEM", "tqSYStem"}) {
    loginNames(name);
    server.execute(opening, "delete from gl_accsum where iyear=2006");
    expectCarried(carry());
  }
}

TEST_F(TransGLTest, ItGivesWayToTheNewYearsDatabaseForTheServices) {
  loginNames("tqsystem");
  expectRefused(carry({"TqData_001_2005", "TqData_no_new"}), "TqData_no_new");
}

TEST_F(TransGLTest, AndToTheClosingYearsForTheOther) {
  loginNames("tqsystem");
  expectRefused(carry({"TqData_no_old", opening}), "TqData_no_old");
}

// --- from the closing year's database

TEST_F(TransGLTest, AClosingDatabaseInCapitalsIsReplaced) {
  loginNames("TQDATA_001_2005");
  expectCarried(carry({"TQDATA_001_2005", opening}));
}

TEST_F(TransGLTest, AClosingDatabaseInCapitalsGivesWayToTheNewYears) {
  loginNames("TQDATA_001_2005");
  expectRefused(carry({"TQDATA_001_2005", "TqData_no_new"}), "TqData_no_new");
}

// The name is looked for as it was given in the text in capitals. That is intended: the new year's data are then looked
// for in the closing year's database, which has no chart of it.
TEST_F(TransGLTest, AClosingDatabaseWithSmallLettersIsNotFound) {
  loginNames("TqData_001_2005");
  const Answer answer = carry();
  EXPECT_EQ(answer.code, S_OK) << lastError().description;
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00034"));
}

// --- from neither

TEST_F(TransGLTest, ATextWithTheNewDatabaseAloneServesBoth) {
  loginNames(opening);
  expectCarried(carry());
}

TEST_F(TransGLTest, TheClosingYearThenHasTheNewDatabasesNameReplaced) {
  loginNames(opening);
  expectRefused(carry({"TqData_no_old", opening}), "TqData_no_old");
}

TEST_F(TransGLTest, ATextWithNeitherNameStaysAsItIs) {
  loginNames("TqData_another");
  expectRefused(carry(), "TqData_another");
}

TEST_F(TransGLTest, ATextWithNeitherNameServesTheClosingYearAsItIs) {
  server.execute(opening, "create database TqData_002_2006");  // the services open it; it has no table
  loginNames("TqData_002_2006");
  const Answer answer = carry({"TqData_no_old", "TqData_no_new"});
  EXPECT_EQ(answer.code, serverSaid);
  EXPECT_THAT(lastError().description, HasSubstr("gl_yearstate")) << "both connections are open";
}

// Both connections then are on the closing year, which has no chart of the new one.
TEST_F(TransGLTest, WithoutANewDatabaseTheLoginsTextStaysAsItIs) {
  loginNames("TQDATA_001_2005");
  const Answer answer = carry({"TQDATA_001_2005", ""});
  EXPECT_EQ(answer.code, S_OK) << lastError().description;
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00034"));
}

}  // namespace
}  // namespace com::test
