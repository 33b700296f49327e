#include <gtest/gtest.h>

#include "core/cls_gljz.h"
#include "core/fakes.h"
#include "core/run_state.h"
#include "dialogs/frm_jzsn.h"

namespace {

using fakes::Log;
using gljz::clsGLJZ;
using gljz::run;
using platform::RunTimeError;

const std::string someParameters = "<Account><Parameter ID='GL*Clear' Check='False'/></Account>";

class Entries : public testing::Test {
protected:
  fakes::World world;
  clsGLJZ gljz;
  std::string parameters = someParameters, cErrMsg = "left over";

  bool transfer() {
    gljz.ZwPubCls = world.services;
    return gljz.Transfer("001", "2005", "2006", parameters, world.login, cErrMsg, nullptr);
  }
  bool transGL(const std::string& last = "TqData_001_2005", const std::string& current = "TqData_001_2006") {
    return gljz.TransGL("2005", "2006", world.login, cErrMsg, last, current);
  }
  void leavesParameters(const std::string& text) {
    world.forms.conditions = [text] { run.m_strCondXml = text; };
  }
  std::pair<bool, std::string> transferMsg() {
    std::string text = "left over";
    const bool success = gljz.getTransferMsg(text);
    return {success, text};
  }
};

TEST_F(Entries, CreatingTheClassSetsColoursAndClearsServicesAndLogin) {
  world.connectRun();
  const clsGLJZ another;
  EXPECT_EQ(run.m_pubCls, nullptr);
  EXPECT_EQ(run.m_login, nullptr);
  EXPECT_EQ(run.m_lWhite, platform::rgb(255, 255, 255));
  EXPECT_EQ(run.m_lGridHead, platform::rgb(205, 208, 215));
  EXPECT_EQ(run.m_lGridShade, platform::rgb(247, 237, 236));
  EXPECT_EQ(run.m_lReportRow, platform::rgb(238, 238, 214));
  EXPECT_EQ(run.m_strLastDB, "TqData_001_2005") << "the rest of the state stays";
}

// --- Transfer

TEST_F(Entries, TransferCarriesForwardAndReportsSuccess) {
  EXPECT_TRUE(transfer());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00310");
  EXPECT_EQ(transferMsg(), (std::pair<bool, std::string>{true, ""}));
  EXPECT_EQ(world.login->openedWith, "10 0012005") << "account and year in one run";
  EXPECT_EQ(world.logOf({"debug:", "login:"}),
            (Log{"debug: ExecJZ m_strMsg:", "debug: Transfer m_strMsg:", "login: done 205 GL 2005 True"}));
  EXPECT_EQ(run.m_conn, nullptr);
  EXPECT_EQ(run.m_strLastAccId, "001");
  EXPECT_EQ(run.m_strCurAccId, "001");
  EXPECT_FALSE(run.m_bManual) << "only while the progress form shows";
}

TEST_F(Entries, TransferOfSubsystemGFNamesItsOwnSuccessAndSystem) {
  world.login->gf = true;
  EXPECT_TRUE(transfer());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00309");
  EXPECT_EQ(world.logOf({"login:"}), Log{"login: done 205 GF 2005 True"});
}

TEST_F(Entries, TransferWithoutServicesOrLoginLeavesTheReasonInTheMessage) {
  EXPECT_FALSE(gljz.Transfer("001", "2005", "2006", parameters, world.login, cErrMsg, nullptr));
  EXPECT_EQ(cErrMsg, "");
  EXPECT_EQ(transferMsg().second, "Orvo.GL.TqGLJZ.00001");
  gljz.ZwPubCls = world.services;
  cErrMsg = "left over";
  EXPECT_FALSE(gljz.Transfer("001", "2005", "2006", parameters, nullptr, cErrMsg, nullptr));
  EXPECT_EQ(cErrMsg, "");
  EXPECT_EQ(transferMsg().second, "Orvo.GL.TqGLJZ.00003");
}

TEST_F(Entries, TransferWithoutADatabaseForTheClosingYearFails) {
  for (const char* name : {"", "  "}) {
    world.answerDatabases(name, "TqData_001_2006");
    EXPECT_FALSE(transfer());
    EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00030");
  }
  EXPECT_TRUE(world.logOf({"show"}).empty());
}

TEST_F(Entries, TransferThatMayNotOpenTheClosingYearFails) {
  world.login->opens = false;
  EXPECT_FALSE(transfer());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00030");
}

TEST_F(Entries, TransferOpensTheClosingYearOnWhatTheLoginAnswers) {
  transfer();
  const Log opened = world.logOf({"ConnectionOpen Database=of"});
  ASSERT_FALSE(opened.empty());
  EXPECT_EQ(opened.front(), "made: ConnectionOpen Database=of 0012005");
}

TEST_F(Entries, AConnectionThatCannotBeOpenedGoesToTheHost) {
  world.server.failures = {"ConnectionOpen Database=of"};
  EXPECT_THROW(transfer(), RunTimeError);
}

TEST_F(Entries, TransferWithinOneDatabaseUsesOneConnectionAndKeepsIt) {
  world.answerDatabases("TqData_001_2005", "TQDATA_001_2005");
  EXPECT_TRUE(transfer());
  EXPECT_EQ(run.m_conn, world.newYear);
  EXPECT_EQ(world.newYear->State(), 1);
  EXPECT_EQ(world.login->openedWith, "");
}

TEST_F(Entries, TransferHandsTheAskedParametersBack) {
  leavesParameters(someParameters);
  parameters.clear();
  EXPECT_TRUE(transfer());
  EXPECT_EQ(parameters, someParameters);
  EXPECT_EQ(world.logOf({"show frmTranCond", "show frmJZSN"}), (Log{"forms: show frmTranCond", "forms: show frmJZSN"}));
}

TEST_F(Entries, TransferWithParametersDoesNotAsk) {
  transfer();
  EXPECT_TRUE(world.logOf({"show frmTranCond"}).empty());
}

TEST_F(Entries, ACancelledConditionsDialogLeavesThoseOfTheRunBefore) {
  run.m_strCondXml = someParameters;
  parameters.clear();
  EXPECT_TRUE(transfer());
  EXPECT_EQ(parameters, someParameters);
}

TEST_F(Entries, ACancelledConditionsDialogInAFreshProcessEndsTheTransfer) {
  parameters.clear();
  EXPECT_FALSE(transfer());
  EXPECT_EQ(cErrMsg, "");
  EXPECT_NE(transferMsg().second, "");
  EXPECT_TRUE(world.logOf({"show frmJZSN"}).empty());
}

TEST_F(Entries, TransferHandsTheMessageOfAStopOver) {
  world.server.answer("select bflag from gl_mend", {});
  EXPECT_FALSE(transfer());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00032");
  EXPECT_EQ(transferMsg(), (std::pair<bool, std::string>{false, "Orvo.GL.TqGLJZ.00032"}));
  EXPECT_TRUE(world.logOf({"login:"}).empty());
  EXPECT_EQ(run.m_conn, nullptr) << "a stop closes the closing year's connection";
}

TEST_F(Entries, TransferReportsSuccessAfterASilentStop) {
  world.server.answer("from gl_accvouch where ibook=1", fakes::oneCell(1));
  EXPECT_TRUE(transfer());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00310");
  EXPECT_EQ(transferMsg(), (std::pair<bool, std::string>{false, ""}));
  EXPECT_TRUE(world.logOf({"BeginTrans"}).empty());
  EXPECT_EQ(world.logOf({"login:"}).size(), 1U);
}

TEST_F(Entries, AFailedStageIsASuccessWithoutAWord) {
  world.server.failures = {"delete from gl_accsum"};
  EXPECT_TRUE(transfer());
  EXPECT_EQ(transferMsg(), (std::pair<bool, std::string>{true, ""}));
  EXPECT_EQ(world.logOf({"CommitTrans"}).size(), 1U);
}

TEST_F(Entries, MessagesShowNothingInATransfer) {
  world.forms.duringRun = [] { EXPECT_TRUE(run.m_bManual); };
  world.server.answer("from gl_accvouch where ibook=1", fakes::oneCell(1));
  transfer();
  EXPECT_TRUE(world.logOf({"box:"}).empty());
}

TEST_F(Entries, TwoTransfersSeeFreshCaptionsAndAnArmedTimer) {
  int shown = 0;
  world.forms.duringRun = [&] {
    ++shown;
    EXPECT_EQ(gljz::frmJZSN().Label2(0), "");
    EXPECT_EQ(gljz::frmJZSN().Label3(), "正在结转......");
    EXPECT_TRUE(gljz::frmJZSN().Timer1_Enabled());
  };
  EXPECT_TRUE(transfer());
  EXPECT_TRUE(transfer());
  EXPECT_EQ(shown, 2);
}

TEST_F(Entries, FlagsKeepTheirValueFromTransferToTransfer) {
  parameters = "<a><Parameter ID='GL*m_bCoverChequeData' Check='True'/></a>";
  transfer();
  parameters = someParameters;
  transfer();
  EXPECT_TRUE(run.m_bCoverChequeData);
}

// --- StartJz

TEST_F(Entries, StartJzInAFreshProcessFailsUncaught) {
  gljz.ZwPubCls = world.services;
  gljz.m_loginCls = world.login;
  EXPECT_THROW(gljz.StartJz(), RunTimeError);
}

TEST_F(Entries, StartJzNeedsServicesAndLogin) {
  EXPECT_FALSE(gljz.StartJz());
  gljz.ZwPubCls = world.services;
  EXPECT_FALSE(gljz.StartJz());
  EXPECT_EQ(run.m_strMsg, "");
  EXPECT_TRUE(world.logOf({"show", "box:"}).empty());
}

TEST_F(Entries, StartJzUsesWhatAnEarlierEntryLeft) {
  world.answerDatabases("TqData_001_2005", "TqData_001_2005");
  EXPECT_TRUE(transfer());
  gljz.m_loginCls = world.login;
  EXPECT_TRUE(gljz.StartJz());
  EXPECT_EQ(world.logOf({"login:"}).size(), 2U);
  EXPECT_TRUE(run.m_bManual) << "it stays so";
}

TEST_F(Entries, StartJzAfterARunBetweenTwoDatabasesHasNoConnection) {
  EXPECT_TRUE(transfer());
  gljz.m_loginCls = world.login;
  EXPECT_THROW(gljz.StartJz(), RunTimeError);
}

TEST_F(Entries, StartJzBuildsTheFailureText) {
  world.connectRun();
  world.server.answer("from gl_accvouch where ibook=1", fakes::oneCell(1));
  run.m_strMsg = "earlier.";
  run.m_strLastSql = "select 1";
  gljz.ZwPubCls = world.services;
  gljz.m_loginCls = world.login;
  EXPECT_FALSE(gljz.StartJz());
  EXPECT_EQ(run.m_strMsg,
            "earlier.  失败所在函数：TqGLJZ.mdlZDJZ.ExecJZ  该函数的功能 :结转函数--条件判断   最后执行的 sql "
            "语句：select 1");
  EXPECT_TRUE(world.logOf({"login:"}).empty());
}

// --- TransGL

TEST_F(Entries, TransGLMakesItsOwnServicesAndAlwaysAsks) {
  leavesParameters(someParameters);
  run.m_strFuncDesc = "before";
  EXPECT_TRUE(transGL());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00310");
  const Log setUp =
      world.logOf({"services:", "pointer", "show frmTranCond", "ConnectionOpen Database=TqData_001_2005"});
  ASSERT_GE(setUp.size(), 7U);
  EXPECT_EQ((Log{setUp.begin(), setUp.begin() + 7}),
            (Log{"services: SetLogin", "services: SetYear 2006",
                 "services: InitServices handle|Database=TqData_001_2006;Server=s|001|2006|operator|date",
                 "made: ConnectionOpen Database=TqData_001_2005;Server=s", "forms: pointer 0",
                 "forms: show frmTranCond", "forms: pointer 11"}));
  EXPECT_TRUE(world.logOf({"show frmJZSN", "login:"}).empty()) << "no progress form, nothing marked";
  EXPECT_FALSE(gljz::frmJZSN.isLoaded());
  EXPECT_EQ(run.m_strLastAccId, "") << "account ids may be left out";
}

TEST_F(Entries, TransGLTakesAccountAndYearFromItsArgumentsWhenTheLoginHasNone) {
  world.login->accId = "";
  world.login->year = "";
  leavesParameters(someParameters);
  EXPECT_TRUE(gljz.TransGL("2005", "2006", world.login, cErrMsg, "TqData_001_2005", "TqData_001_2006", "001", "002"));
  EXPECT_EQ(world.logOf({"InitServices"}),
            Log{"services: InitServices handle|Database=TqData_001_2006;Server=s|002|2006|operator|date"});
}

struct TextCase {
  const char *name, *loginText, *last, *current, *newYear, *closingYear;
};

class ConnectionTexts : public Entries, public testing::WithParamInterface<TextCase> {};

TEST_P(ConnectionTexts, FollowTheLoginsText) {
  const TextCase& c = GetParam();
  world.login->connText = c.loginText;
  leavesParameters(someParameters);
  transGL(c.last, c.current);
  EXPECT_EQ(world.logOf({"InitServices"}),
            Log{std::string("services: InitServices handle|") + c.newYear + "|001|2006|operator|date"});
  const Log opened = world.logOf({"ConnectionOpen"});
  ASSERT_FALSE(opened.empty());
  EXPECT_EQ(opened.front(), std::string("made: ConnectionOpen ") + c.closingYear);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ConnectionTexts,
    testing::Values(TextCase{"SystemDatabase", "db=tqSystem;x", "L", "C", "db=C;x", "db=L;x"},
                    TextCase{"OnlyTheFirst", "TqSystem;TqSystem", "L", "C", "C;TqSystem", "L;TqSystem"},
                    TextCase{"LastDatabase", "db=DB05;x", "DB05", "DB06", "db=DB06;x", "db=DB05;x"},
                    TextCase{"SmallLettersAreNotFound", "db=Db05;x", "Db05", "Db06", "db=Db05;x", "db=Db05;x"},
                    TextCase{"NeitherButTheNewName", "db=Db06;x", "Db05", "Db06", "db=Db06;x", "db=Db05;x"},
                    TextCase{"NoNewName", "db=TqSystem;x", "L", "", "db=TqSystem;x", "db=TqSystem;x"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(Entries, TransGLWithoutAClosingDatabaseFails) {
  EXPECT_FALSE(transGL("", "TqData_001_2006"));
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.00030");
  EXPECT_TRUE(world.logOf({"show"}).empty());
}

TEST_F(Entries, TransGLReportsParametersThatCannotBeRead) {
  EXPECT_FALSE(transGL());
  EXPECT_EQ(cErrMsg, "Orvo.GL.TqGLJZ.OrvoV100.013");
  EXPECT_NE(transferMsg().second, "");
}

TEST_F(Entries, TransGLDoesNotStopAtTheFirstYear) {
  world.services->accountYear = 2006;
  leavesParameters(someParameters);
  EXPECT_TRUE(transGL());
  EXPECT_TRUE(transferMsg().first);
}

TEST_F(Entries, TransGLWithinOneDatabaseOpensAConnectionOfItsOwn) {
  leavesParameters(someParameters);
  EXPECT_TRUE(transGL("TqData_001_2006", "TqData_001_2006"));
  EXPECT_NE(run.m_conn, world.newYear);
  ASSERT_NE(run.m_conn, nullptr) << "and it stays open, as any shared database";
  EXPECT_EQ(run.m_conn->RawConnection().State(), 1);
}

}  // namespace
