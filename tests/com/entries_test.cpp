// The entries of clsGLJZ as a host meets them: by slot, through COM, on the demo account set.

#include <gmock/gmock.h>

#include "component_host.h"

namespace com::test {
namespace {

using platform::Money;
using platform::Value;
using testing::HasSubstr;

struct Answer {
  HRESULT code = S_OK;
  bool returned = false;
  std::string parameters, message;
};

Answer transfer(_clsGLJZ* gljz, const Pointer<IDispatch>& login, const std::string& parameters = {},
                const std::string& lastYear = "2005", const std::string& currentYear = "2006",
                const std::string& accountId = "001") {
  Text account(accountId), last(lastYear), current(currentYear), info(parameters), message("before");
  VARIANT_BOOL returned = VARIANT_TRUE;
  Answer answer;
  answer.code = gljz->Transfer(&account, &last, &current, &info, login.get(), &message, nullptr, &returned);
  answer.returned = returned != VARIANT_FALSE;
  answer.parameters = info.value();
  answer.message = message.value();
  return answer;
}

Answer messageOf(_clsGLJZ* gljz) {
  Text text("before");
  VARIANT_BOOL returned = VARIANT_FALSE;
  Answer answer;
  answer.code = gljz->getTransferMsg(&text, &returned);
  answer.returned = returned != VARIANT_FALSE;
  answer.message = text.value();
  return answer;
}

Money cash(const ReferenceServer& server) {
  return server.cell("TqData_001_2006", "select mb from gl_accsum where ccode='1001' and iperiod=1").asMoney();
}

TEST(EntriesTest, StartJzInAFreshProcessIsAnErrorOfTheCaller) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  ASSERT_EQ(gljz->putref_m_loginCls(server.login().get()), S_OK);
  VARIANT_BOOL reachedItsEnd = VARIANT_TRUE;
  const HRESULT code = gljz->StartJz(&reachedItsEnd);
  EXPECT_TRUE(FAILED(code));
  const ComError error = lastError();
  EXPECT_EQ(error.source, "TqGLJZ");
  EXPECT_FALSE(error.description.empty());
  EXPECT_EQ(reachedItsEnd, VARIANT_FALSE);
}

TEST(EntriesTest, TransferCarriesTheDemo) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_TRUE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_THAT(answer.parameters, HasSubstr("<Account")) << "the dialog's parameter text comes back";
  const Answer told = messageOf(gljz.get());
  EXPECT_TRUE(told.returned);
  EXPECT_EQ(told.message, "");
  EXPECT_EQ(cash(server), Money::parse("23070"));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark where iNumber=205 and cSysID='GL' and iYear=2005"),
            Value(1));
}

TEST(EntriesTest, PropertiesGiveTheHostsOwnObjectsBack) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  Pointer<IDispatch> given = server.services(), got;
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_FALSE(got) << "nothing before something is set";
  ASSERT_EQ(gljz->putref_ZwPubCls(given.get()), S_OK);
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_EQ(got.get(), given.get());
  ASSERT_EQ(gljz->putref_ZwPubCls(nullptr), S_OK);
  ASSERT_EQ(gljz->get_ZwPubCls(got.receive()), S_OK);
  EXPECT_FALSE(got);
}

TEST(EntriesTest, TransferWithoutServicesReturnsFalseAndLeavesTheTextEmpty) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  const Answer answer = transfer(gljz.get(), server.login());
  // The text of the reason comes from the services, of which there are none in a fresh process: the platform's own
  // failure is what a host sees then.
  if (answer.code == S_OK) {
    EXPECT_FALSE(answer.returned);
    EXPECT_EQ(answer.message, "");
  } else {
    EXPECT_EQ(lastError().source, "TqGLJZ");
  }
}

TEST(EntriesTest, TransferWithoutALoginTellsTheReasonInTheMessageOnly) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);  // the services are the run's from here on
  const Answer answer = transfer(gljz.get(), nullptr);
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "");
  EXPECT_EQ(messageOf(gljz.get()).message, message("Orvo.GL.TqGLJZ.00003"));
}

TEST(EntriesTest, TransferWithoutAClosingDatabaseReturnsFalseWithAText) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login(), {}, "1999", "2006");
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00030"));
}

TEST(EntriesTest, ASilentStopCountsAsSuccessAndTheMessageTellsOtherwise) {
  const ReferenceServer server;
  server.execute("TqData_001_2006", "delete from dsign");  // without voucher categories no year begins
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_EQ(answer.code, S_OK);
  const Answer told = messageOf(gljz.get());
  EXPECT_FALSE(told.returned);
  EXPECT_EQ(answer.returned, told.message.empty());
  EXPECT_EQ(server.cell("TqData_001_2006", "select count(*) from gl_yearstate where iyear=2006 and iIsUnload=1"),
            Value(0));
}

TEST(EntriesTest, ParametersThatCannotBeReadReturnFalseAndTheMessageSaysWhy) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login(), "<Account");
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "");
  EXPECT_EQ(answer.parameters, "<Account");
  EXPECT_FALSE(messageOf(gljz.get()).message.empty());
}

TEST(EntriesTest, AllInstancesShareOneRun) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> first = newGljz();
  ASSERT_EQ(first->putref_ZwPubCls(server.services().get()), S_OK);
  ASSERT_TRUE(transfer(first.get(), server.login()).returned);
  const Pointer<_clsGLJZ> second = newGljz();
  EXPECT_TRUE(messageOf(second.get()).returned) << "the run of the first one";
  Pointer<IDispatch> services;
  ASSERT_EQ(second->get_ZwPubCls(services.receive()), S_OK);
  EXPECT_FALSE(services) << "properties are an instance's own";
}

TEST(EntriesTest, AnAccountWithBothYearsInOneDatabaseKeepsItsConnection) {
  const ReferenceServer server;
  server.execute("TqSystem",
                 "update UA_AccountDatabase set iEndYear=2006 where cAcc_Id='001' and iBeginYear=2005 "
                 "delete from UA_AccountDatabase where cAcc_Id='001' and iBeginYear=2006");
  const Pointer<IDispatch> services = server.services();
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login());
  ASSERT_EQ(answer.code, S_OK) << lastError().description;
  const Automation connection(objectOf(Automation(services).call(L"NewYearConn").get()));
  const Automation raw(objectOf(connection.call(L"RawConnection").get()));
  EXPECT_EQ(raw.get(L"State"), Value(1)) << "it belongs to the services, not to the run";
}

TEST(EntriesTest, ALoginOfTheSiblingSubsystemIsMarkedAsSuch) {
  const ReferenceServer server;
  server.host.put(L"IsGFLogin", Value(true));
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_EQ(gljz->putref_ZwPubCls(server.services().get()), S_OK);
  const Answer answer = transfer(gljz.get(), server.login());
  if (FAILED(answer.code)) GTEST_FAIL() << lastError().description;
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00309"));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark where cSysID='GF'"), Value(1));
}

TEST(EntriesTest, TransGLRunsWithoutAccountIds) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  Text last("2005"), current("2006"), text("before"), lastDb("TqData_001_2005"), thisDb("TqData_001_2006");
  VARIANT_BOOL returned = VARIANT_FALSE;
  const HRESULT code =
      gljz->TransGL(&last, &current, server.login().get(), &text, &lastDb, &thisDb, nullptr, nullptr, &returned);
  ASSERT_EQ(code, S_OK) << lastError().description;
  EXPECT_EQ(returned, VARIANT_TRUE);
  EXPECT_EQ(text.value(), message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_EQ(cash(server), Money::parse("23070"));
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(0)) << "TransGL marks nothing";
}

TEST(EntriesTest, TransGLWithoutAClosingDatabaseReturnsFalseWithAText) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  Text last("2005"), current("2006"), text, lastDb, thisDb("TqData_001_2006"), id("001");
  VARIANT_BOOL returned = VARIANT_TRUE;
  ASSERT_EQ(gljz->TransGL(&last, &current, server.login().get(), &text, &lastDb, &thisDb, &id, &id, &returned), S_OK)
      << lastError().description;
  EXPECT_EQ(returned, VARIANT_FALSE);
  EXPECT_EQ(text.value(), message("Orvo.GL.TqGLJZ.00030"));
}

TEST(EntriesTest, AConnectionThatCannotBeOpenedIsAComErrorWithTheServersText) {
  const ReferenceServer server;
  const Pointer<_clsGLJZ> gljz = newGljz();
  Text last("2005"), current("2006"), text, lastDb("TqData_001_1999"), thisDb("TqData_001_2006");
  VARIANT_BOOL returned = VARIANT_TRUE;
  const HRESULT code =
      gljz->TransGL(&last, &current, server.login().get(), &text, &lastDb, &thisDb, nullptr, nullptr, &returned);
  EXPECT_TRUE(FAILED(code));
  const ComError error = lastError();
  EXPECT_EQ(error.source, "TqGLJZ");
  EXPECT_THAT(error.description, HasSubstr("TqData_001_1999"));
}

TEST(EntriesTest, NullPointersAreRefused) {
  const Pointer<_clsGLJZ> gljz = newGljz();
  EXPECT_EQ(gljz->StartJz(nullptr), E_POINTER);
  EXPECT_EQ(gljz->getTransferMsg(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(gljz->get_ZwPubCls(nullptr), E_POINTER);
  VARIANT_BOOL returned = VARIANT_FALSE;
  EXPECT_EQ(gljz->Transfer(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &returned), E_POINTER);
}

}  // namespace
}  // namespace com::test
