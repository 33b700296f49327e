#include "detail/bank_ledger.h"

#include "detail/bank_account.h"
#include "dialogs/frm_jzsn.h"
#include "system/bank_fixture.h"

namespace gljz::test {
namespace {

class BankLedgerTest : public BankFixture<LedgerTest> {
protected:
  BankLedgerTest() { run.m_bBankTransfer = 2; }
};

class SharedBankLedgerTest : public BankFixture<SharedLedgerTest> {
protected:
  SharedBankLedgerTest() { run.m_bBankTransfer = 2; }
};

// --- What moves

TEST_F(BankLedgerTest, ALineGoesOverInPeriod21AndTheBalanceInPeriod20) {
  bank("100201");
  vouchers(closing, {"ccode | dbill_date | md", "100201 | 2005-10-10 | 200"});
  JzYhData();
  expectCarried("iperiod,ccode,cexch_name,dbill_date,md,mc",
                {"21 | 100201 | Null | 2005-10-10 | 200 | 0", "20 | 100201 | Null | 2006-01-01 | 200 | 0"});
}

TEST_F(BankLedgerTest, ALineKeepsEverythingButYearPeriodAndBooking) {
  bank("100201");
  sql(closing,
      "insert into Department(cDepCode,cDepName) values(N'D1',N'销售部') insert into Person(cPersonCode) values(N'P1') "
      "insert into Customer(cCusCode) values(N'C1') insert into Vendor(cVenCode) values(N'V1')");
  sql(opening,
      "insert into Department(cDepCode,cDepName) values(N'D1',N'销售部') insert into Person(cPersonCode) values(N'P1') "
      "insert into Customer(cCusCode) values(N'C1') insert into Vendor(cVenCode) values(N'V1')");
  const std::string columns =
      "csign,isignseq,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname,csettle,ino_id,inid,"
      "dbill_date,idoc,cbill,ccheck,cbook,ccashier,cbankreconno,ctext1,ctext2,cdigest,ccode,md,mc,cn_id,dt_date,"
      "ccode_equal,iflagbank,bdelete,coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign,"
      "doutdate,coutbillsign,coutid,bvouchedit,bvouchaddordele,bvouchmoneyhold,bvalueedit,ccodecontrol,bpcsedit,"
      "bdeptedit,bitemedit,bcussupinput,cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,"
      "cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,cdefine14,cdefine15,cdefine16";
  sql(closing,
      "insert into gl_accvouch(iyear,iperiod,ibook,iflagperson,wllqperiod," + columns +
          ") "
          "values(2005,7,0,1,200507,N'银',3,Null,N'D1',N'P1',N'C1',N'V1',N'I9',N'01',N'张三',N'1',17,4,'2005-07-08',2,"
          "N'甲',N'乙',N'丙',N'丁',N'R7',N't1',N't2',N'收款',N'100201',12.5,0,N'N-1','2005-07-07',N'6001',0,0,N'002',"
          "2004,N'AR',N'8.1','2005-07-01',7,N'收','2005-07-02',N'发票',N'O1',0,1,1,0,N'ctl',0,0,0,1,N'a1',N'a2',N'a3',"
          "'2005-02-03',N'a5','2005-03-04',N'a7',N'a8',N'a9',N'a10',N'a11',N'a12',N'a13',N'a14',N'a15',N'a16')");
  JzYhData();
  EXPECT_EQ(rows(opening, "select " + columns + " from gl_accvouch where iyear=2006 and iperiod=21"),
            rows(closing, "select " + columns + " from gl_accvouch where iyear=2005 and iperiod=7"));
  expectRows(opening, "select ibook,iflagperson,wllqperiod,iflag from gl_accvouch where iyear=2006 and iperiod=21",
             {"1 | Null | Null | Null"});
}

// The texts that insert the rows of the new year, in their order.
class BankStatementTextTest : public BankLedgerTest {
protected:
  std::vector<std::string> inserts() const {
    std::vector<std::string> all;
    for (const SpiedStatement& s : statements())
      if (s.text.starts_with("insert into gl_accvouch(iyear")) all.push_back(s.text);
    return all;
  }
  const std::string columns =
      "insert into gl_accvouch(iyear,iPeriod,csign,iSignSeq,cexch_name,md_f,mc_f,nfrat,nd_s,nc_s,cDept_ID,cPerson_ID,"
      "ccus_id,csup_id,cItem_id,citem_class,cname,iflagperson,csettle,iNo_id,inid,dbill_date,idoc,cbill,ccheck,cbook,"
      "ibook,ccashier,iflag,cbankreconno,ctext1,ctext2,cDigest,cCode,md,mc,cn_id,dt_date,ccode_equal,iflagbank,bDelete,"
      "coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign,doutdate,coutbillsign,coutid,"
      "bvouchedit,bvouchaddordele,bvouchmoneyhold,bvalueedit,ccodecontrol,bpcsedit,bdeptedit,bitemedit,bcussupinput,"
      "cdefine1,cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,"
      "cdefine13,cdefine14,cdefine15,cdefine16) Values(";
};

TEST_F(BankStatementTextTest, ALineAndABalanceAreRenderedLetterForLetter) {
  severalCurrencies();
  bank("100201", {"cmeasure", "件"});
  sql(closing,
      "insert into gl_accvouch(iyear,iperiod,csign,isignseq,cexch_name,md_f,mc_f,nfrat,nd_s,nc_s,cdept_id,cperson_id,"
      "ccus_id,csup_id,citem_id,citem_class,cname,iflagperson,csettle,ino_id,inid,dbill_date,idoc,cbill,ccheck,cbook,"
      "ibook,ccashier,cbankreconno,ctext1,ctext2,cdigest,ccode,md,mc,cn_id,dt_date,ccode_equal,iflagbank,coutaccset,"
      "ioutyear,doutbilldate,ioutperiod,bvouchedit,ccodecontrol,cdefine1,cdefine4,cdefine6,cdefine16) "
      "values(2005,7,N'银',3,N'美元',10.5,0,8,2.5,0,N'D1',N'P1',N'C1',N'V1',N'I9',N'01',N'张三',1,N'1',17,4,'2005-07-"
      "08',"
      "2,N'甲',N'乙',N'丙',0,N'丁',N'R7',N't1',N't2',N'收款',N'100201',84,0,N'N-1','2005-07-07',N'6001',0,N'002',2004,"
      "'2005-07-01',7,0,N'ctl',N'a1','2005-02-03','2005-03-04 05:06:07',N'a16')");
  JzYhData();
  ASSERT_EQ(inserts().size(), 2u);
  EXPECT_EQ(
      inserts()[0],
      columns +
          "2006,21,N'银',N'3',N'美元',10.5,0,8,2.5,0,N'D1',N'P1',N'C1',N'V1',N'I9',N'01',N'张三',Null,N'1',N'17',4,"
          "'2005-07-08',2,N'甲',N'乙',N'丙',1,N'丁',Null,N'R7',N't1',N't2',N'收款',N'100201',84,0,N'N-1',"
          "'2005-07-07',N'6001',0,0,N'002',2004,Null,Null,'2005-07-01',7,Null,Null,Null,Null,0,0,0,1,N'ctl',1,1,1,"
          "0,N'a1',Null,Null,'2005-02-03',Null,'2005-03-04',Null,Null,Null,Null,Null,Null,Null,Null,Null,N'a16')");
  EXPECT_EQ(
      inserts()[1],
      columns +
          "2006,20,Null,Null,N'美元',0,0,0,0,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,0,'2006-01-01',0,"
          "Null,Null,Null,1,Null,Null,Null,Null,Null,N' ',N'100201',10.5,0,Null,Null,Null,Null,0,Null,Null,Null,"
          "Null,Null,Null,Null,Null,Null,Null,1,0,0,1,Null,1,1,1,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,"
          "Null,Null,Null,Null,Null,Null,Null)");
}

TEST_F(BankStatementTextTest, WithoutCurrencyAndUnitTheyAreZero) {
  bank("100201");
  vouchers(closing, {"ccode | md | md_f | nfrat | nd_s", "100201 | 80 | 10 | 8 | 2.5"});
  JzYhData();
  ASSERT_EQ(inserts().size(), 2u);
  EXPECT_EQ(inserts()[0],
            columns +
                "2006,21,Null,Null,Null,0,0,0,0,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,1,'2005-06-06',0,"
                "Null,Null,Null,1,Null,Null,Null,Null,Null,Null,N'100201',80,0,Null,Null,Null,Null,0,Null,Null,Null,"
                "Null,Null,Null,Null,Null,Null,Null,1,0,0,1,Null,1,1,1,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,"
                "Null,Null,Null,Null,Null,Null,Null)");
}

TEST_F(BankLedgerTest, OnlyLiveLinesOfLastLevelBankAccountsGoOver) {
  bank("100201");
  bank("1002", {"bend", "0"});
  account("1001");
  vouchers(closing, {"ccode | md | bdelete | iflag", "100201 | 1 | 0 | Null", "100201 | 2 | 1 | Null",
                     "100201 | 4 | 0 | 1", "1002 | 8 | 0 | Null", "1001 | 16 | 0 | Null"});
  JzYhData();
  expectRows(opening, "select ccode,md from gl_accvouch where iyear=2006 and iperiod=21", {"100201 | 1"});
}

TEST_F(BankLedgerTest, AnyPeriodOfTheClosingYearQualifies) {
  bank("100201");
  vouchers(closing, {"ccode | iperiod | md", "100201 | 0 | 1", "100201 | 12 | 2", "100201 | 21 | 4"});
  JzYhData();
  expectRows(opening, "select md from gl_accvouch where iyear=2006 and iperiod=21 order by md", {"1", "2", "4"});
}

TEST_F(BankLedgerTest, OpenLinesOnlyHaveNoMarkOrZero) {
  bank("100201");
  vouchers(closing, {"ccode | md | iflagbank", "100201 | 1 | Null", "100201 | 2 | 0", "100201 | 4 | 1",
                     "100201 | 8 | 24", "100201 | 16 | 25"});
  JzYhData();
  expectRows(opening, "select md,iflagbank from gl_accvouch where iyear=2006 and iperiod=21 order by md",
             {"1 | Null", "2 | 0"});
}

TEST_F(BankLedgerTest, MarksUpTo24GoOverAndStayWhenReconciledLinesAreWanted) {
  run.m_bBankTransfer = 1;
  bank("100201");
  vouchers(closing, {"ccode | md | iflagbank", "100201 | 1 | Null", "100201 | 2 | 0", "100201 | 4 | 1",
                     "100201 | 8 | 24", "100201 | 16 | 25"});
  JzYhData();
  expectRows(opening, "select md,iflagbank from gl_accvouch where iyear=2006 and iperiod=21 order by md",
             {"1 | Null", "2 | 0", "4 | 1", "8 | 24"});
  EXPECT_TRUE(
      wasRun("select count(1) from code inner join gl_accvouch on code.ccode=gl_accvouch.ccode and "
             "code.iyear=gl_accvouch.iyear  where code.bend=1 and code.be=1 and not gl_accvouch.ccode is null "
             "and not gl_accvouch.bdelete=1  and code.iyear=2005  and (gl_accvouch.iFlagBank Is NULL Or "
             "gl_accvouch.iFlagBank = 0 Or gl_accvouch.iFlagBank >= 1 And gl_accvouch.iFlagBank <= 24)  and "
             "gl_accvouch.iflag is null"));
}

TEST_F(SharedBankLedgerTest, OneDatabaseForBothYears) {
  bank("100201");
  vouchers(closing, {"ccode | md", "100201 | 200"});
  JzYhData();
  expectMarkers({"100201 | Null | 0 | 0"});
  expectCarried("iperiod,md", {"21 | 200", "20 | 200"});
}

// --- Markers of the closing year

TEST_F(BankLedgerTest, TwoCurrenciesOfAnAccountHaveAMarkerAndABalanceRowEach) {
  severalCurrencies();
  bank("100201");
  vouchers(closing, {"ccode | cexch_name | md | md_f", "100201 | 美元 | 80 | 10", "100201 | Null | 200 | 0"});
  JzYhData();
  expectMarkers({"100201 | Null | 0 | 0", "100201 | 美元 | 0 | 0"});
  expectRows(opening,
             "select cexch_name,md,mc,md_f from gl_accvouch where iyear=2006 and iperiod=20 order by cexch_name",
             {"Null | 200 | 0 | 0", "美元 | 10 | 0 | 0"});
}

TEST_F(BankLedgerTest, AMarkerIsAZeroRowOfToday) {
  bank("100201");
  vouchers(closing, {"ccode | md", "100201 | 200"});
  JzYhData();
  expectRows(closing,
             "select inid,dbill_date,idoc,ibook,md,mc,md_f,mc_f,nd_s,nc_s,nfrat,cbankreconno,bdelete,iflag from "
             "gl_accvouch where iperiod=20",
             {"0 | 2006-01-10 | 0 | 1 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | Null | 0 | Null"});
}

TEST_F(BankLedgerTest, ASecondRunFindsTheMarkers) {
  bank("100201");
  vouchers(closing, {"ccode | md", "100201 | 200"});
  JzYhData();
  const auto first = carried("iperiod,ccode,md,mc,dbill_date");
  sql(opening, "delete from gl_accvouch where iyear=2006");
  JzYhData();
  expectMarkers({"100201 | Null | 0 | 0"});
  EXPECT_EQ(carried("iperiod,ccode,md,mc,dbill_date"), first);
}

TEST_F(BankLedgerTest, AnAccountWithABalanceRowInOneCurrencyGetsNoMarkerForAnother) {
  bank("100201");
  vouchers(closing, {"ccode | iperiod | cexch_name | md", "100201 | 20 | Null | 100", "100201 | 6 | 美元 | 5"});
  JzYhData();
  expectMarkers({"100201 | Null | 100 | 0"});
}

TEST_F(BankLedgerTest, AFailureOfTheMarkersGoesToTheCaller) {
  bank("100201");
  failAt("insert into gl_accvouch(iperiod");
  EXPECT_THROW(JzYhData(), platform::RunTimeError);
  EXPECT_FALSE(wasRun("select top 1 * from gl_accvouch"));
}

// --- The balance

TEST_F(BankLedgerTest, TheMovementSinceTheReconciliationBeganRaisesAndLowersTheBalance) {
  bank("100201", {"dbegin", "2005-06-01"});
  vouchers(closing, {"ccode | iperiod | dbill_date | md | mc", "100201 | 20 | 2005-01-01 | 100 | 0",
                     "100201 | 5 | 2005-05-31 | 1000 | 0", "100201 | 6 | 2005-06-01 | 30 | 0",
                     "100201 | 7 | 2005-07-01 | 0 | 10", "100201 | 21 | 2005-08-01 | 500 | 0"});
  JzYhData();
  expectRows(opening, "select md,mc from gl_accvouch where iyear=2006 and iperiod=20", {"120 | 0"});
}

TEST_F(BankLedgerTest, WithoutMovementTheBalanceStays) {
  bank("100201", {"dbegin", "2005-12-01"});
  vouchers(closing, {"ccode | iperiod | md", "100201 | 20 | 100", "100201 | 6 | 30"});
  JzYhData();
  expectRows(opening, "select md from gl_accvouch where iyear=2006 and iperiod=20", {"100"});
}

TEST_F(BankLedgerTest, WithoutABeginEveryLineCounts) {
  bank("100201", {"dbegin", "Null"});
  vouchers(closing,
           {"ccode | iperiod | dbill_date | md", "100201 | 20 | 2005-01-01 | 100", "100201 | 1 | 1999-01-01 | 30"});
  JzYhData();
  EXPECT_TRUE(wasRun("dbill_date>='' and"));
  expectRows(opening, "select md from gl_accvouch where iyear=2006 and iperiod=20", {"130"});
}

TEST_F(BankLedgerTest, ReconciledLinesCountForTheBalanceAlthoughTheyStay) {
  bank("100201");
  vouchers(closing, {"ccode | md | iflagbank", "100201 | 200 | Null", "100201 | 50 | 3"});
  JzYhData();
  expectRows(opening, "select iperiod,md from gl_accvouch where iyear=2006 order by iperiod", {"20 | 250", "21 | 200"});
}

TEST_F(BankLedgerTest, TheMainCurrencyByNameIsSummedByAmount) {
  severalCurrencies();
  bank("100201");
  vouchers(closing, {"ccode | cexch_name | md | md_f", "100201 | 人民币 | 80 | 10"});
  JzYhData();
  EXPECT_TRUE(
      wasRun("select sum(md) as zd1, sum(mc) as zd2 from GL_AccVouch where iyear=2005  and ccode= '100201' and "
             "iperiod<>20 and iperiod<>21 and dbill_date>='2005-01-01' and gl_accvouch.iflag is null  and "
             "cexch_name ='人民币' "));
  expectRows(opening, "select cexch_name,md from gl_accvouch where iyear=2006 and iperiod=20", {"人民币 | 80"});
}

TEST_F(BankLedgerTest, AnAccountWithoutARowInTheYearCannotBeRead) {
  const auto codeRow = GetLastCodeRow("100201", "2005");
  EXPECT_TRUE(codeRow->Eof());
  EXPECT_THROW(reconciliationBegin(*codeRow), platform::RunTimeError);
}

// --- Currency and quantities

TEST_F(BankLedgerTest, AForeignLineWithoutForeignMoneyIsDroppedButABalanceRowIsKept) {
  severalCurrencies();
  watched();
  bank("100201");
  vouchers(closing, {"ccode | cexch_name | md | md_f", "100201 | 美元 | 80 | 0"});
  JzYhData();
  expectCarried("iperiod,cexch_name,md", {"20 | 美元 | 0"});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(BankLedgerTest, WithOneCurrencyAnAccountTheNewYearsCurrencyCounts) {
  bank("100201", {"cexch_name", "欧元"});
  vouchers(closing, {"ccode | cexch_name | md | md_f | nfrat", "100201 | 美元 | 80 | 10 | 8"});
  JzYhData();
  expectRows(opening, "select cexch_name,md,md_f,nfrat from gl_accvouch where iyear=2006 and iperiod=21",
             {"欧元 | 80 | 10 | 8"});
}

TEST_F(BankLedgerTest, ForeignAmountsAndRateFallAwayWithoutACurrency) {
  bank("100201");
  vouchers(closing, {"ccode | cexch_name | md | md_f | nfrat", "100201 | 美元 | 80 | 10 | 8"});
  JzYhData();
  expectRows(opening, "select cexch_name,md,md_f,nfrat from gl_accvouch where iyear=2006 and iperiod=21",
             {"Null | 80 | 0 | 0"});
}

TEST_F(BankLedgerTest, ALineWithoutACurrencyGetsNoneFromItsAccount) {
  bank("100201", {"cexch_name", "美元"});
  vouchers(closing, {"ccode | md | md_f", "100201 | 80 | 10"});
  JzYhData();
  expectRows(opening, "select cexch_name,md,md_f from gl_accvouch where iyear=2006 and iperiod=21", {"Null | 80 | 0"});
}

TEST_F(BankLedgerTest, QuantitiesStayOnlyOnAnAccountWithAUnit) {
  bank("100201");
  bank("100202", {"cmeasure", "件"});
  vouchers(closing, {"ccode | md | nd_s", "100201 | 80 | 2.5", "100202 | 80 | 2.5"});
  JzYhData();
  expectRows(opening, "select ccode,nd_s from gl_accvouch where iyear=2006 and iperiod=21 order by ccode",
             {"100201 | 0", "100202 | 2.5"});
}

// --- References

TEST_F(BankLedgerTest, AWatchedRunReportsAndDropsMissingKeysButCarriesTheLine) {
  watched();
  bank("100201");
  sql(closing,
      "insert into Department(cDepCode,cDepName) values(N'D1',N'销售部') "
      "insert into Person(cPersonCode,cPersonName) values(N'P1',N'张三') "
      "insert into Customer(cCusCode,cCusName,cCusAbbName) values(N'C1',N'红星商场',N'红星') "
      "insert into Vendor(cVenCode,cVenName,cVenAbbName) values(N'V1',N'南方钢厂',N'南钢')");
  vouchers(closing, {"ccode | md | cdept_id | cperson_id | ccus_id | csup_id | citem_id | citem_class",
                     "100201 | 80 | D1 | P1 | C1 | V1 | I1 | 01"});
  JzYhData();
  expectRows(opening,
             "select md,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class from gl_accvouch where iyear=2006 and "
             "iperiod=21",
             {"80 | Null | Null | Null | Null | I1 | 01"});
  const std::string reason = "|银行账：新年度没有此档案，已去掉该辅助核算结转";
  EXPECT_EQ(notCarried(), (std::vector<std::string>{"部门|D1|销售部" + reason, "个人|P1|张三" + reason,
                                                    "客户|C1|红星" + reason, "供应商|V1|南钢" + reason}));
}

TEST_F(BankLedgerTest, AnUnattendedRunKeepsMissingKeys) {
  bank("100201");
  vouchers(closing, {"ccode | md | cdept_id | cperson_id | ccus_id | csup_id", "100201 | 80 | D1 | P1 | C1 | V1"});
  JzYhData();
  expectRows(opening, "select cdept_id,cperson_id,ccus_id,csup_id from gl_accvouch where iyear=2006 and iperiod=21",
             {"D1 | P1 | C1 | V1"});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(BankLedgerTest, AnAccountWithoutAUsableCounterpartIsLeftOutWithAReason) {
  watched();
  bank(closing, "100201", {"ccode_name", "工行"});
  bank(closing, "100202");
  bank(opening, "100202", {"ccode_name", "中行", "bend", "0"});
  bank(closing, "100203");
  bank(opening, "100203", {"ccode_name", "建行", "be", "0"});
  bank("100204");
  vouchers(closing, {"ccode | md", "100201 | 1", "100202 | 2", "100203 | 4", "100204 | 8"});
  JzYhData();
  expectRows(opening, "select ccode,md from gl_accvouch where iyear=2006 and iperiod=21", {"100204 | 8"});
  // the markers are reported as well
  EXPECT_EQ(notCarried(),
            (std::vector<std::string>{
                "科目|100201|工行|银行账：新年度没有此科目", "科目|100201|工行|银行账：新年度没有此科目",
                "科目|100202|中行|银行账：新年度不是末级科目", "科目|100202|中行|银行账：新年度不是末级科目",
                "科目|100203|建行|银行账：新年度不是银行对账科目", "科目|100203|建行|银行账：新年度不是银行对账科目"}));
}

TEST_F(BankLedgerTest, AnUnattendedRunLeavesThemOutInSilence) {
  bank(closing, "100201");
  vouchers(closing, {"ccode | md", "100201 | 1"});
  JzYhData();
  expectCarried("ccode", {});
  EXPECT_TRUE(notCarried().empty());
}

// --- Look-ups

TEST_F(BankLedgerTest, AnAccountIsLookedUpOnceForAllItsLines) {
  bank("100201");
  bank("100202");
  vouchers(closing, {"ccode | md", "100201 | 1", "100201 | 2", "100201 | 4", "100202 | 8", "100202 | 16"});
  forgetStatements();
  JzYhData();
  for (const std::string ccode : {"100201", "100202"}) {
    EXPECT_EQ(timesRun("select ccode from code where iyear=2006 and ccode=N'" + ccode + "'"), 1u) << ccode;
    EXPECT_EQ(timesRun("update code set dbegin='2006-01-01' where iyear=2006   and  ccode='" + ccode + "'"), 1u);
    EXPECT_EQ(timesRun("update code set dend=b.dend from code inner join code b on code.ccode=b.ccode where "
                       "code.ccode='" +
                       ccode + "' and code.iyear=2006 and b.iyear=2005"),
              1u);
  }
}

TEST_F(BankLedgerTest, ALineThatIsNotWrittenDoesNotSaveTheNextLookUp) {
  bank(closing, "100201");
  vouchers(closing, {"ccode | md", "100201 | 1", "100201 | 2"});
  forgetStatements();
  JzYhData();
  EXPECT_EQ(timesRun("select ccode from code where iyear=2006 and ccode=N'100201'"), 3u);  // two lines and the marker
}

TEST_F(BankLedgerTest, AnAccountThatChangedItsCodeIsMatchedAtEveryLineAndKeepsItsOldCode) {
  bank(closing, "100201");
  bank(opening, "100209");
  sql(opening, "insert into GL_CodeMatch(iyear,cOldCode,cNewCode) values(2006,N'100201',N'100209')");
  vouchers(closing, {"ccode | md", "100201 | 1", "100201 | 2"});
  forgetStatements();
  JzYhData();
  EXPECT_EQ(timesRun("m.cOldCode=N'100201'"), 3u);
  EXPECT_EQ(timesRun("update code set dbegin"), 1u);
  expectCarried("ccode,md", {"100201 | 1", "100201 | 2", "100201 | 3"});
}

TEST_F(BankLedgerTest, AnAccountWhoseCodeIsTheNewCodeOfTheOneBeforeIsTakenForThatOne) {
  bank("100202");
  bank(closing, "100201");
  account(opening, "100203");  // no bank account: lines of 100202 would not be carried
  sql(opening,
      "insert into GL_CodeMatch(iyear,cOldCode,cNewCode) values(2006,N'100201',N'100202') "
      "insert into GL_CodeMatch(iyear,cOldCode,cNewCode) values(2006,N'100202',N'100203')");
  vouchers(closing, {"ccode | md", "100201 | 1", "100202 | 2"});
  JzYhData();
  expectRows(opening, "select ccode,md from gl_accvouch where iyear=2006 and iperiod=21 order by ccode",
             {"100201 | 1", "100202 | 2"});
}

TEST_F(SharedBankLedgerTest, TheReconciliationBeginsWithTheYearAndEndsAsInTheClosingOne) {
  bank(closing, "100201", {"dend", "2005-11-30"});
  bank(opening, "100201", {"dbegin", "Null"});
  vouchers(closing, {"ccode | md", "100201 | 1"});
  JzYhData();
  expectRows(opening, "select iyear,dbegin,dend from code where ccode='100201' order by iyear",
             {"2005 | 2005-01-01 | 2005-11-30", "2006 | 2006-01-01 | 2005-11-30"});
}

// --- The cursor

TEST_F(BankLedgerTest, TheRunGoesOnWhenTheLinesCannotBeCounted) {
  bank("100201");
  vouchers(closing, {"ccode | md", "100201 | 1"});
  failAt("select count(1) from code inner join gl_accvouch");
  JzYhData();
  expectCarried("iperiod,md", {"21 | 1", "20 | 1"});
}

// --- What an operator sees

TEST_F(BankLedgerTest, AWatchedRunShowsTheAccountAndTicksTheThreeSteps) {
  watched();
  bank("100201");
  vouchers(closing, {"ccode | md", "100201 | 1"});
  JzYhData();
  EXPECT_EQ(frmJZSN().Label3(), "正在结转未核销银行账 100201");
  for (std::size_t step : {4u, 5u, 6u}) EXPECT_EQ(frmJZSN().Label2(step), "Y") << step;
  EXPECT_EQ(frmJZSN().Label2(7), "");
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--结转支票登记簿RP_cheque");
}

TEST_F(BankLedgerTest, AnUnattendedRunMakesNoForm) {
  bank("100201");
  vouchers(closing, {"ccode | md", "100201 | 1"});
  JzYhData();
  EXPECT_FALSE(frmJZSN.isLoaded());
}

}  // namespace
}  // namespace gljz::test
