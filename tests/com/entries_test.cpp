// Transfer and the properties as a host meets them: by slot, through COM, on the demo account set.

#include <gmock/gmock.h>

#include "entry_calls.h"
#include "relay.h"

namespace com::test {
namespace {

using platform::Money;
using platform::Value;
using testing::HasSubstr;

class EntriesTest : public testing::Test {
protected:
  // A run of another instance that reached its end, and one that stopped: what the process remembers of it.
  void runToTheEnd() const {
    const Pointer<_clsGLJZ> other = newGljz();
    ASSERT_EQ(other->putref_ZwPubCls(server.services().get()), S_OK);
    ASSERT_TRUE(transfer(other.get(), server.login()).returned);
    ASSERT_TRUE(transferMsg(other.get()).returned);
  }
  void runIntoAStop() const {
    const Pointer<_clsGLJZ> other = newGljz();
    const Pointer<Relay> firstYear = adopt(new Relay(server.services()));
    firstYear->answer(L"AccountYearInfo", Variant(Value(2006)));
    ASSERT_EQ(other->putref_ZwPubCls(firstYear.get()), S_OK);
    ASSERT_TRUE(transfer(other.get(), server.login()).returned);
    ASSERT_FALSE(transferMsg(other.get()).returned);
  }
  Money cash() const {
    return server.cell("TqData_001_2006", "select mb from gl_accsum where ccode='1001' and iperiod=1").asMoney();
  }

  const ReferenceServer server;
  Pointer<_clsGLJZ> gljz = newGljz();
};

TEST_F(EntriesTest, TransferCarriesTheDemo) {
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_THAT(answer, says(true, message("Orvo.GL.TqGLJZ.00310")));
  EXPECT_THAT(answer.parameters, HasSubstr("<Account")) << "the dialog's parameter text comes back";
  EXPECT_THAT(transferMsg(gljz.get()), says(true, ""));
  EXPECT_EQ(cash(), Money::parse("23070"));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark where iNumber=205 and cSysID='GL' and iYear=2005"),
            Value(1));
}

TEST_F(EntriesTest, ParametersThatAreGivenComeBackAsTheyWere) {
  const std::string given = "<Account><Parameter ID='GL*Clear' Check='False'/></Account>";
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login(), given);
  EXPECT_TRUE(answer.returned);
  EXPECT_EQ(answer.parameters, given);
}

TEST_F(EntriesTest, PropertiesGiveTheHostsOwnObjectsBack) {
  const Pointer<IDispatch> services = server.services(), login = server.login();
  Pointer<IDispatch> got;
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_FALSE(got) << "nothing before something is set";
  ASSERT_EQ(gljz->get_m_loginCls(got.receive()), S_OK);
  EXPECT_FALSE(got);
  ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
  ASSERT_EQ(gljz->putref_m_loginCls(login.get()), S_OK);
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_EQ(got.get(), services.get());
  ASSERT_EQ(gljz->get_m_loginCls(got.receive()), S_OK);
  EXPECT_EQ(got.get(), login.get());
  ASSERT_EQ(gljz->putref_m_loginCls(nullptr), S_OK);
  ASSERT_EQ(gljz->get_m_loginCls(got.receive()), S_OK);
  EXPECT_FALSE(got);
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_EQ(got.get(), services.get()) << "each property for itself";
  ASSERT_EQ(gljz->putref_ZwPubCls(nullptr), S_OK);
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_FALSE(got);
}

TEST_F(EntriesTest, AnObjectOfTheHostsThatIsNotOursComesBackToo) {
  const Pointer<Relay> services = adopt(new Relay(server.services())), login = adopt(new Relay(server.login()));
  Pointer<IDispatch> got;
  ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
  ASSERT_EQ(gljz->putref_m_loginCls(login.get()), S_OK);
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_EQ(got.get(), services.get());
  ASSERT_EQ(gljz->get_m_loginCls(got.receive()), S_OK);
  EXPECT_EQ(got.get(), login.get());
}

// --- something is not set

TEST_F(EntriesTest, TransferWithoutServicesLeavesTheReasonInTheMessage) {
  runIntoAStop();
  gljz = newGljz();  // a new instance clears the services of the process: the component has the words itself
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_THAT(answer, says(false, ""));
  EXPECT_THAT(transferMsg(gljz.get()), says(false, message("Orvo.GL.TqGLJZ.00001")));
}

TEST_F(EntriesTest, ServicesThatAnEarlierRunLeftInTheProcessStillKnowTheText) {
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  ASSERT_EQ(gljz->putref_ZwPubCls(nullptr), S_OK);
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_THAT(answer, says(false, ""));
  EXPECT_EQ(transferMsg(gljz.get()).message, message("Orvo.GL.TqGLJZ.00001"));
}

TEST_F(EntriesTest, TransferWithoutALoginLeavesTheReasonInTheMessage) {
  runIntoAStop();
  gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);  // they become the run's behind this check only
  const Answer answer = transfer(gljz.get(), nullptr);
  EXPECT_THAT(answer, says(false, ""));
  EXPECT_THAT(transferMsg(gljz.get()), says(false, message("Orvo.GL.TqGLJZ.00003")));
}

TEST_F(EntriesTest, TransferWithoutALoginBehindAnotherRunHasTheText) {
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  const Answer answer = transfer(gljz.get(), nullptr);
  EXPECT_THAT(answer, says(false, ""));
  EXPECT_EQ(transferMsg(gljz.get()).message, message("Orvo.GL.TqGLJZ.00003"));
}

// An entry that ends before the stages does not say that they have not run. That is intended.
TEST_F(EntriesTest, AnEntryThatNeverReachesTheStagesKeepsWhatTheRunBeforeItWas) {
  runToTheEnd();
  gljz = newGljz();
  EXPECT_FALSE(transfer(gljz.get(), server.login()).returned);
  EXPECT_THAT(transferMsg(gljz.get()), says(true, message("Orvo.GL.TqGLJZ.00001")));
}

// --- the closing year has no database, or it may not be opened

TEST_F(EntriesTest, TransferWithoutAClosingDatabaseReturnsFalseWithAText) {
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login(), {}, {"001", "1999", "2006"});
  EXPECT_THAT(answer, says(false, message("Orvo.GL.TqGLJZ.00030")));
  EXPECT_EQ(answer.parameters, "") << "nobody is asked";
  EXPECT_EQ(transferMsg(gljz.get()).message, "");
}

TEST_F(EntriesTest, TransferThatMayNotOpenTheClosingYearReturnsFalseWithTheSameText) {
  const Pointer<Relay> login = adopt(new Relay(server.login()));
  login->answer(L"LoginOpenAccount", Variant(Value(false)));
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), dispatchOf(login));
  EXPECT_THAT(answer, says(false, message("Orvo.GL.TqGLJZ.00030")));
  EXPECT_EQ(login->heard("LoginOpenAccount"), 1);
  EXPECT_EQ(login->heard("LoginMarkDone"), 0);
}

TEST_F(EntriesTest, ParametersThatCannotBeReadReturnFalseAndTheMessageSaysWhy) {
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login(), "<Account");
  EXPECT_THAT(answer, says(false, ""));
  EXPECT_EQ(answer.parameters, "<Account");
  EXPECT_NE(transferMsg(gljz.get()).message, "");
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(0));
}

// --- one process

TEST_F(EntriesTest, AllInstancesShareOneRun) {
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  const Pointer<_clsGLJZ> second = newGljz();
  EXPECT_TRUE(transferMsg(second.get()).returned) << "the run of the first one";
  Pointer<IDispatch> services;
  ASSERT_EQ(second->get_ZwPubCls(services.receive()), S_OK);
  EXPECT_FALSE(services) << "properties are an instance's own";
}

// --- subsystems

class SubsystemTest : public EntriesTest {
protected:
  void SetUp() override {
    server.execute("TqData_001_2006",
                   "insert into AccInformation(cSysID, cName, cValue) values('GF', 'bDeleteYe', 'True') "
                   "insert into AccInformation(cSysID, cName, cValue) values('GL', 'bDeleteYe', 'True') "
                   "insert into GF_ImportSet(dSuccessEndDate) values('2005-12-31')");
  }
  Answer carry(bool gf) {
    server.host.put(L"IsGFLogin", Value(gf));
    EXPECT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
    return transfer(gljz.get(), server.login());
  }
  Value deleteYe(const std::string& system) const {
    return server.cell("TqData_001_2006",
                       "select cValue from AccInformation where cSysID='" + system + "' and cName='bDeleteYe'");
  }
  Value importsWithADate() const {
    return server.cell("TqData_001_2006", "select count(dSuccessEndDate) from GF_ImportSet");
  }
};

TEST_F(SubsystemTest, ALoginOfTheSiblingSubsystemResetsItsImportsAndIsMarkedAsSuch) {
  const Answer answer = carry(true);
  EXPECT_THAT(answer, says(true, message("Orvo.GL.TqGLJZ.00309")));
  EXPECT_EQ(deleteYe("GF"), Value("False"));
  EXPECT_EQ(deleteYe("GL"), Value("True"));
  EXPECT_EQ(importsWithADate(), Value(0));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark where iNumber=205 and cSysID='GF' and iYear=2005"),
            Value(1));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(1));
}

TEST_F(SubsystemTest, ALoginOfTheLedgerLeavesTheImportsOfItsSibling) {
  const Answer answer = carry(false);
  EXPECT_THAT(answer, says(true, message("Orvo.GL.TqGLJZ.00310")));
  EXPECT_EQ(deleteYe("GF"), Value("True"));
  EXPECT_EQ(importsWithADate(), Value(1));
  EXPECT_TRUE(transferMsg(gljz.get()).returned) << "and that run has come as far";
}

// --- the border itself

TEST_F(EntriesTest, NullPointersAreRefused) {
  EXPECT_EQ(gljz->StartJz(nullptr), E_POINTER);
  EXPECT_EQ(gljz->getTransferMsg(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(gljz->get_ZwPubCls(nullptr), E_POINTER);
  EXPECT_EQ(gljz->get_m_loginCls(nullptr), E_POINTER);
  VARIANT_BOOL returned = VARIANT_FALSE;
  EXPECT_EQ(gljz->Transfer(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &returned), E_POINTER);
  EXPECT_EQ(gljz->TransGL(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &returned),
            E_POINTER);
}

}  // namespace
}  // namespace com::test
