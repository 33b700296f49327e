#include "core/mdu_jz.h"

#include <gtest/gtest.h>

#include "core/fakes.h"

namespace {

using fakes::Table;
using gljz::run;
using platform::RunTimeError;
using platform::Value;

class MduJz : public testing::Test {
protected:
  MduJz() { world.connectRun(); }
  fakes::World world;

  std::string setting(Value cvalue, Value cdefault) {
    world.server.answer("from accinformation", {{"cvalue", "cdefault"}, {{std::move(cvalue), std::move(cdefault)}}});
    return gljz::GetAccinfo(gljz::lastConn(), "GL", "bCusDisplay");
  }
};

TEST_F(MduJz, SqlValueTellsNullFromEmpty) {
  EXPECT_EQ(gljz::SqlValue({}), "Null,");
  EXPECT_EQ(gljz::SqlValue(""), "N'',");
  EXPECT_EQ(gljz::SqlValue("O'Neill"), "N'O'Neill',") << "a quote is not doubled";
  EXPECT_EQ(gljz::SqlValue(platform::Money::parse("1.50")), "N'1.5',");
  EXPECT_EQ(gljz::SqlValue(platform::DateTime::fromDate(2006, 1, 1)), "N'2006-01-01',");
}

TEST_F(MduJz, LiteralsOfInsertedRowsKeepTheirValue) {
  EXPECT_EQ(gljz::textLiteral("O'Neill"), "N'O''Neill'");
  EXPECT_EQ(gljz::textLiteral({}), "Null");
  EXPECT_EQ(gljz::numberLiteral(0.1), "0.1");
  EXPECT_EQ(gljz::numberLiteral(platform::Money::parse("-100.00")), "-100");
  EXPECT_EQ(gljz::numberLiteral({}), "Null");
}

TEST_F(MduJz, GetResStringHandsArgumentsOverOnlyWhenThereAreSome) {
  EXPECT_EQ(gljz::GetResString("key"), "key");
  EXPECT_EQ(gljz::GetResString("key", {1, "a"}), "key(1,a)");
}

TEST_F(MduJz, GetResStringWithoutServicesGivesTheKey) {
  run.m_pubCls = nullptr;
  EXPECT_EQ(gljz::GetResString("key", {1}), "key");
}

TEST_F(MduJz, GetResStringWithoutServicesAsksTheSurroundings) {
  run.m_pubCls = nullptr;
  platform::surroundings().text = [](const std::string& key) { return "words of " + key; };
  EXPECT_EQ(gljz::GetResString("key"), "words of key");
}

TEST_F(MduJz, ShowMsgShowsNothingUnlessBothGatesAreOpen) {
  for (const auto& [manual, cancelable] : {std::pair{false, false}, {true, false}, {false, true}}) {
    run.m_bManual = manual;
    run.m_bCancelable = cancelable;
    EXPECT_EQ(gljz::ShowMsg("prompt", 16, "title"), 0);
  }
  EXPECT_TRUE(world.logOf({"box:"}).empty());
  run.m_bManual = run.m_bCancelable = true;
  EXPECT_EQ(gljz::ShowMsg("prompt", 16, "title"), gljz::answerNo);
  EXPECT_EQ(world.logOf({"box:"}), fakes::Log{"box: prompt"});
}

TEST_F(MduJz, SettingReadsItsValueThenItsDefaultThenNothing) {
  EXPECT_EQ(setting("False", "True"), "False");
  EXPECT_EQ(setting("", "True"), "") << "an empty value is a value";
  EXPECT_EQ(setting({}, "True"), "True");
  EXPECT_EQ(setting({}, {}), "");
  world.server.answer("from accinformation", {});
  EXPECT_EQ(gljz::GetAccinfo(gljz::lastConn(), "GL", "bCusDisplay"), "");
  EXPECT_EQ(world.server.log.back(),
            "last: select cvalue,cdefault from accinformation where csysid ='GL' and cname = N'bCusDisplay'");
}

TEST_F(MduJz, DatabaseOfAYearIsAskedOverAPrivateConnection) {
  EXPECT_EQ(gljz::GetDatabaseName("2005"), "TqData_001_2005");
  EXPECT_EQ(world.server.log,
            (fakes::Log{"made: ConnectionOpen Database=TqData_001_2006;",
                        "made:  SELECT TOP 1 cDatabase FROM TqSystem.dbo.UA_AccountDatabase Where cAcc_Id = N'001' AND "
                        "iBeginYear<=2005 ORDER BY iBeginYear DESC",
                        "made: ConnectionClose"}));
}

TEST_F(MduJz, AnAccountWithoutDatabaseHasAnEmptyName) {
  world.answerDatabases("", "");
  EXPECT_EQ(gljz::GetDatabaseName("2005"), "");
}

TEST_F(MduJz, LastInitialisedYearIsZeroWithoutOne) {
  EXPECT_EQ(gljz::GetLastInitYear(), "2005");
  world.server.answer("from gl_yearstate where iinitflag", {});
  EXPECT_EQ(gljz::GetLastInitYear(), "0");
  EXPECT_EQ(world.logOf({"select top 1 iyear"}).back(),
            "made:  select top 1 iyear from gl_yearstate where iinitflag =1 and iyear <=2005 order by iyear desc");
}

TEST_F(MduJz, SelectedCodesFormAnInList) {
  EXPECT_EQ(gljz::GetYeMxSelCodes(1, 2), "''");
  world.server.answer("from GL_YeMxSel", {{"ccode"}, {{"1131"}, {"113101"}}});
  EXPECT_EQ(gljz::GetYeMxSelCodes(7, 1), "'1131','113101'");
  EXPECT_EQ(world.server.log,
            (fakes::Log{"new: Select ccode from GL_YeMxSel where iCusSupType=1 and iYeMxType=2 order by ccode",
                        "new: Select ccode from GL_YeMxSel where iCusSupType=2 and iYeMxType=1 order by ccode"}));
}

TEST_F(MduJz, ASelectedCodeIsFoundAndAFailureMeansNot) {
  world.server.answer("from GL_YeMxSel", {{"ccode"}, {{"1131"}}});
  EXPECT_TRUE(gljz::IsYeMxSelCode(1, 1, "1131"));
  EXPECT_EQ(world.server.log.back(),
            "new: Select ccode from GL_YeMxSel where iCusSupType=1 and iYeMxType=1 and ccode ='1131'");
  world.server.failures = {"GL_YeMxSel"};
  EXPECT_FALSE(gljz::IsYeMxSelCode(1, 1, "1131"));
}

TEST_F(MduJz, RecordCountCountsEveryStarAndPassesFailuresOver) {
  world.server.answer("count(1)", fakes::oneCell(7));
  EXPECT_EQ(gljz::RecordCount("select * from (select * from t) x"), 7);
  EXPECT_EQ(world.server.log.back(), "new: select count(1) from (select count(1) from t) x");
  world.server.answer("count(1)", fakes::oneCell({}));
  EXPECT_EQ(gljz::RecordCount("select * from t"), 0);
  world.server.answer("count(1)", {});
  EXPECT_EQ(gljz::RecordCount("select * from t"), 0);
  world.server.failures = {"count(1)"};
  EXPECT_EQ(gljz::RecordCount("select * from t"), 0);
}

TEST_F(MduJz, RecordCountBeyond32BitsIsAFailureAndSoNothing) {
  world.server.answer("count(1)", fakes::oneCell(std::int64_t{2147483647}));
  EXPECT_EQ(gljz::RecordCount("select * from t"), 2147483647);
  world.server.answer("count(1)", fakes::oneCell(std::int64_t{2147483648}));
  EXPECT_EQ(gljz::RecordCount("select * from t"), 0);
}

TEST_F(MduJz, AYearIsANumberOf32Bits) {
  EXPECT_EQ(gljz::yearNumber("2006"), 2006);
  const auto failureOf = [](const char* year) {
    try {
      gljz::yearNumber(year);
    } catch (const platform::RunTimeError& failure) {
      return failure.number();
    }
    return 0;
  };
  EXPECT_EQ(failureOf("20060000000"), platform::RunTimeError::overflow);
  EXPECT_EQ(failureOf("next"), platform::RunTimeError::typeMismatch);
}

TEST_F(MduJz, DatabasesAreSeparateWithoutRegardToCase) {
  EXPECT_TRUE(gljz::separateDatabases());
  run.m_strCurDB = "TQDATA_001_2005";
  EXPECT_FALSE(gljz::separateDatabases());
}

TEST_F(MduJz, ObjectsThatAreNotSetAreAFailure) {
  run = {};
  const auto numberOf = [](auto ask) {
    try {
      ask();
    } catch (const RunTimeError& e) {
      return e.number();
    }
    return 0;
  };
  EXPECT_EQ(numberOf([] { gljz::newConn(); }), 91);
  EXPECT_EQ(numberOf([] { gljz::lastConn(); }), 91);
  EXPECT_EQ(numberOf([] { gljz::login(); }), 91);
}

}  // namespace
