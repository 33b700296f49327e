#include "host/services.h"

#include <gtest/gtest.h>

#include "embedded/server.h"
#include "host/account.h"
#include "host/database_desk.h"
#include "host/login.h"
#include "host/temporary_folder.h"

namespace host::test {
namespace {

using platform::CodeRecord;
using platform::DateTime;
using platform::SignRecord;

// Account 001: 2003 and 2004 in one database, 2005 and 2006 in another. The services stand on 2006.
class ServicesTest : public ::testing::Test {
protected:
  ServicesTest() {
    account_.account = "001";
    account_.name = "青石商贸";
    account_.year = 2005;
    account_.through = 2006;
    createAccount(server_, account_);
    DatabaseDesk(server_, systemDatabase)
        .run(
            "insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(N'001', 2003, 2004, "
            "N'old')");
    services_ = make("zh-CN");
  }
  std::shared_ptr<platform::ZwPubCls> make(const std::string& language) {
    auto services = makeServices(
        {[] { return embedded::makeConnection(); }, nullptr, std::make_shared<Messages>(language), language, "赵六"});
    services->InitServices({}, connectionText("TqData_001_2005", address_), "001", 2006, {}, {});
    return services;
  }
  void run(const std::string& sql) { DatabaseDesk(server_, "TqData_001_2005").run(sql); }
  void account(const std::string& code, int year = 2006, const std::string& columns = "",
               const std::string& values = "") {
    run("insert into code(iyear, ccode, ccode_name" + columns + ") values(" + std::to_string(year) + ", N'" + code +
        "', N'账'" + values + ")");
  }

  TemporaryFolder folder_;
  ServerAddress address_ = parseServer("embedded:" + folder_.text());
  std::shared_ptr<embedded::Server> server_ = openServer(address_);
  NewAccount account_;
  std::shared_ptr<platform::ZwPubCls> services_;
};

TEST_F(ServicesTest, YearsComeFromTheAccountsDatabases) {
  EXPECT_EQ(services_->CurrentYearInfo(), 2006);
  EXPECT_EQ(services_->AccountYearInfo(), 2003);
  EXPECT_EQ(services_->iStartYear(), 2005);
}

TEST_F(ServicesTest, AnAccountGoesToTheSameCodeOfTheNewYear) {
  account("1001");
  account("1002", 2005);
  EXPECT_EQ(services_->MatchCode("1001", 2, true), "1001");
  EXPECT_EQ(services_->MatchCode("1002", 2, true), "");  // the closing year's alone
  EXPECT_EQ(services_->MatchCode("", 2, true), "");
  EXPECT_EQ(services_->MatchCode("10'01", 2, true), "");
}

TEST_F(ServicesTest, ARenumberedAccountGoesToItsNewCode) {
  account("1001");
  account("2001");
  run("insert into GL_CodeMatch(iyear, cOldCode, cNewCode) values(2006, N'1001', N'2001')");
  run("insert into GL_CodeMatch(iyear, cOldCode, cNewCode) values(2006, N'1009', N'2009')");  // no such account
  run("insert into GL_CodeMatch(iyear, cOldCode, cNewCode) values(2005, N'2001', N'1001')");  // another year
  EXPECT_EQ(services_->MatchCode("1001", 2, true), "2001");
  EXPECT_EQ(services_->MatchCode("1009", 2, true), "");
  EXPECT_EQ(services_->MatchCode("2001", 2, true), "2001");
}

TEST_F(ServicesTest, ADatabaseWithoutRenumberingsIsAsked) {
  account("1001");
  run("drop table GL_CodeMatch");
  EXPECT_EQ(services_->MatchCode("1001", 2, true), "1001");
}

TEST_F(ServicesTest, AMatchNeverGoesStale) {
  EXPECT_EQ(services_->MatchCode("1001", 2, true), "");
  account("1001");
  EXPECT_EQ(services_->MatchCode("1001", 2, true), "1001");
  run("delete from code");
  EXPECT_EQ(services_->MatchCode("1001", 2, true), "");
}

TEST_F(ServicesTest, ReferenceRecordsMatchWhenTheNewYearHasThem) {
  run("insert into Department(cDepCode, cDepName) values(N'01', N'财务')");
  run("insert into Person(cPersonCode, cPersonName) values(N'P1', N'张三')");
  run("insert into Customer(cCusCode, cCusName) values(N'C1', N'北一')");
  run("insert into Vendor(cVenCode, cVenName) values(N'V1', N'唐钢')");
  run("insert into fitemss98(citemcode, citemname) values(N'I1', N'工程')");
  run("insert into inventory(cInvCode, cInvName) values(N'S1', N'钢')");
  EXPECT_EQ(services_->MatchDepartment("01"), "01");
  EXPECT_EQ(services_->MatchDepartment("02"), "");
  EXPECT_EQ(services_->MatchPerson("P1"), "P1");
  EXPECT_EQ(services_->MatchPerson("P2"), "");
  EXPECT_EQ(services_->MatchCustomer("C1"), "C1");
  EXPECT_EQ(services_->MatchCustomer("C2"), "");
  EXPECT_EQ(services_->MatchVendor("V1"), "V1");
  EXPECT_EQ(services_->MatchVendor("V2"), "");
  EXPECT_EQ(services_->MatchItem("I1", "98"), "I1");
  EXPECT_EQ(services_->MatchItem("I2", "98"), "");
  EXPECT_EQ(services_->MatchItem("S1", "ch"), "S1");
  EXPECT_EQ(services_->MatchItem("I1", "77"), "");  // no such class
}

TEST_F(ServicesTest, SignsAndSettlementStyles) {
  run("insert into dsign(csign, isignseq, ctext) values(N'记', 3, N'记账凭证')");
  run("insert into settlestyle(csscode, cssname) values(N'1', N'支票')");
  SignRecord record;
  EXPECT_TRUE(services_->GetSignRecord("记", record));
  EXPECT_EQ(record.iSignSeq, 3);
  EXPECT_EQ(record.ctext, "记账凭证");
  EXPECT_FALSE(services_->GetSignRecord("收", record));
  EXPECT_EQ(record.iSignSeq, 0);
  EXPECT_TRUE(services_->SignExists("记"));
  EXPECT_FALSE(services_->SignExists("收"));
  EXPECT_TRUE(services_->SettleStyleExists("1"));
  EXPECT_FALSE(services_->SettleStyleExists("9"));
}

TEST_F(ServicesTest, OptionsComeFromTheSettingsTable) {
  auto options = services_->AccountOptions();
  EXPECT_FALSE(options.bMultiCurrency);
  EXPECT_TRUE(options.bCusAccount);
  EXPECT_EQ(options.cDefaultCurrency, "人民币");
  EXPECT_EQ(options.cCompanyName, "青石商贸");
  run("update accinformation set cValue=null, cDefault=N'TRUE' where cName=N'bMultiCurrency'");
  run("update accinformation set cValue=N'False' where cName=N'bCusAccount'");
  options = make("zh-CN")->AccountOptions();
  EXPECT_TRUE(options.bMultiCurrency);
  EXPECT_FALSE(options.bCusAccount);
  EXPECT_EQ(services_->OptionText("GL", "iZBMsg"), "0");
  EXPECT_EQ(services_->OptionText("GL", "missing"), "");
}

TEST_F(ServicesTest, TheYearBeginsWithItsCalendar) {
  EXPECT_EQ(services_->CalendarInfo(0, 0), DateTime::fromDate(2006, 1, 1));
  DatabaseDesk system(server_, systemDatabase);
  system.run("update UA_Period set dBegin='2005-12-26' where iYear=2006 and iId=1");
  EXPECT_EQ(make("zh-CN")->YearCalendar(0, 0), DateTime::fromDate(2005, 12, 26));
  system.run("delete from UA_Period");
  EXPECT_EQ(make("zh-CN")->CalendarInfo(0, 0), DateTime::fromDate(2006, 1, 1));
  system.run("drop table UA_Period");
  EXPECT_EQ(make("zh-CN")->CalendarInfo(0, 0), DateTime::fromDate(2006, 1, 1));
}

TEST_F(ServicesTest, AnAccountsRecordIsTheNewYears) {
  account("4105", 2005, ", bend", ", 0");
  account("4105", 2006, ", bend, bitem, cass_item, cexch_name", ", 1, 1, N'98', N'美元'");
  run("insert into foreigncurrency(cexch_name, cexch_code) values(N'美元', N'USD')");
  CodeRecord record;
  services_->GetCodeRecord("4105", record);
  EXPECT_TRUE(record.bEnd);
  EXPECT_TRUE(record.bItemOnly);
  EXPECT_EQ(record.cItemClass, "98");
  EXPECT_EQ(record.cexch_code, "USD");
  services_->GetCodeRecord("4105", record, {29});
  EXPECT_TRUE(record.bEnd);
  EXPECT_EQ(record.ccode, "");
  services_->GetCodeRecord("4105", record, {11});
  EXPECT_EQ(record.cexch_code, "USD");
  services_->GetCodeRecord("9999", record);
  EXPECT_EQ(record, CodeRecord());
}

TEST_F(ServicesTest, DirectionWordsAreInTheLanguageOfTheLogin) {
  EXPECT_EQ(services_->TranslateWord("贷"), "贷");
  EXPECT_EQ(services_->TranslateWord("Dr"), "借");
  EXPECT_EQ(make("zh-TW")->TranslateWord("贷"), "貸");
  EXPECT_EQ(make("en-US")->TranslateWord("借"), "Dr");
  EXPECT_EQ(make("en-US")->TranslateWord("平"), "-");
  EXPECT_EQ(services_->TranslateWord("其他"), "其他");
}

TEST_F(ServicesTest, BoxesAreNotShownAndMessagesAreFilled) {
  EXPECT_EQ(services_->ServiceMsgBox("?", 292, "", "", 0), 0);
  EXPECT_EQ(services_->ResText("no.such.key", nullptr), "no.such.key");
}

TEST_F(ServicesTest, TheLoginOpensTheDatabaseOfTheYear) {
  LoginSettings settings;
  settings.server = address_;
  settings.account = "001";
  settings.year = "2006";
  const auto login = makeLogin(
      settings, [] { return embedded::makeConnection(); }, nullptr);
  EXPECT_EQ(login->LoginConnText(), "Database=TqSystem;Server=" + address_.text + ";");
  std::string text = "0012006";
  EXPECT_TRUE(login->LoginOpenAccount(10, text));
  EXPECT_EQ(text, "Database=TqData_001_2005;Server=" + address_.text + ";");
  text = "0012004";
  EXPECT_TRUE(login->LoginOpenAccount(10, text));
  EXPECT_EQ(text, "Database=old;Server=" + address_.text + ";");
  for (const char* wrong : {"0012002", "9992006", "2006", "001abcd", ""}) {
    text = wrong;
    EXPECT_FALSE(login->LoginOpenAccount(10, text)) << wrong;
  }
}

TEST_F(ServicesTest, TheLoginRecordsTheEndOfARun) {
  LoginSettings settings;
  settings.server = address_;
  settings.account = "001";
  const auto journal = std::make_shared<Journal>();
  const auto login = makeLogin(
      settings, [] { return embedded::makeConnection(); }, journal);
  login->LoginMarkDone(205, "GL", 2005, true);
  DatabaseDesk system(server_, systemDatabase);
  const auto rows = system.rows("select cAcc_Id, iNumber, cSysID, iYear, bDone from UA_Mark");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0][0].asText(), "001");
  EXPECT_EQ(rows[0][1].asInteger(), 205);
  EXPECT_EQ(rows[0][2].asText(), "GL");
  EXPECT_EQ(rows[0][3].asInteger(), 2005);
  EXPECT_TRUE(rows[0][4].asBool());
  system.run("drop table UA_Mark");
  login->LoginMarkDone(205, "GL", 2005, true);
  ASSERT_EQ(journal->notes().size(), 1u);
}

}  // namespace
}  // namespace host::test
