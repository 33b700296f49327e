#include "detail/voucher_row.h"

#include "system/voucher_lines.h"

namespace gljz::test {
namespace {

using platform::CodeRecord;
using platform::RunTimeError;
using platform::SignRecord;
using platform::Value;

const std::string columns =
    "insert into gl_accvouch(iyear,iPeriod,csign,iSignSeq,cexch_name,md_f,mc_f,nfrat,nd_s,nc_s,cDept_ID,cPerson_ID,"
    "ccus_id,csup_id,cItem_id,citem_class,cname,iflagperson,csettle,iNo_id,inid,dbill_date,idoc,cbill,ccheck,cbook,"
    "ibook,ccashier,iflag,ctext1,ctext2,cDigest,cCode,md,mc,cn_id,dt_date,ccode_equal,iflagbank,bDelete,coutaccset,"
    "ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign,doutdate,coutbillsign,coutid,bvouchedit,"
    "bvouchaddordele,bvouchmoneyhold,bvalueedit,ccodecontrol,bpcsedit,bdeptedit,bitemedit,bcussupinput,cdefine1,"
    "cdefine2,cdefine3,cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,"
    "cdefine14,cdefine15,cdefine16) Values(";

// Every column set, each to something of its own.
const std::string fullRow =
    "insert into "
    "gl_accvouch(iyear,iperiod,csign,isignseq,ino_id,inid,dbill_date,idoc,cbill,ccheck,cbook,ibook,ccashier,"
    "iflag,ctext1,ctext2,cdigest,ccode,cexch_name,md,mc,md_f,mc_f,nfrat,nd_s,nc_s,csettle,cn_id,dt_date,cdept_id,"
    "cperson_id,ccus_id,csup_id,citem_id,citem_class,cname,ccode_equal,iflagbank,iflagPerson,bdelete,coutaccset,"
    "ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign,doutdate,coutbillsign,coutid,bvouchedit,"
    "bvouchAddordele,bvouchmoneyhold,bvalueedit,ccodecontrol,bPCSedit,bDeptedit,bItemedit,bCusSupInput,cDefine1,"
    "cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,"
    "cDefine14,cDefine15,cDefine16,wllqPeriod,wllqDate) "
    "values(2005,7,N'记',9,12,3,'2005-07-05 "
    "10:20:30',2,N'陈',N'李',N'王',0,N'钱',4,N't1',N't2',N'销售',N'1131',N'美元',"
    "102.18,-0.5,12.3456,0.0001,8.2765,1.5,0.25,N'Q',N'A-1','2005-07-04',N'01',N'P1',N'C1',N'V1',N'I1',N'98',N'赵',"
    "N'5101',5,1,1,N'001',2005,N'AR',N'8','2005-07-03',6,N's',N'2005-07-02',N'b',N'77',0,1,1,0,N'c',0,1,0,1,N'd1',N'd2'"
    ","
    "N'd3','2005-01-04',N'd5','2005-01-06 07:08:09',N'd7',N'd8',N'd9',N'd10',N'd11',N'd12',N'd13',N'd14',N'd15',N'd16',"
    "200601,'2006-01-15')";

// What does not depend on the kind of item, from iNo_id on.
const std::string fullTail =
    "N'12',3,'2005-07-05',2,N'陈',N'李',N'王',1,N'钱',4,N't1',N't2',N'销售',N'1131',102.18,-0.5,N'A-1','2005-07-04',"
    "N'5101',5,1,N'001',2005,N'AR',N'8','2005-07-03',6,N's','2005-07-02',N'b',N'77',0,1,1,0,N'c',0,1,0,1,N'd1',N'd2',"
    "N'd3','2005-01-04',N'd5','2005-01-06',N'd7',N'd8',N'd9',N'd10',N'd11',N'd12',N'd13',N'd14',N'd15',N'd16')";

class VoucherRowTest : public VoucherLines<LedgerTest> {
protected:
  VoucherRowTest() {
    account_.cMeasure = "吨";
    account_.cPersonItemClass = "98";
  }
  void fullLine() { sql(closing, fullRow); }
  // Only what the table demands, every other column Null.
  void emptyLine() {
    vouchers(closing, {"ccode", "1131"});
    sql(closing, "update gl_accvouch set bdelete=0");
  }

  std::string statement(std::uint8_t kind, const std::string& selection = "gl_accvouch.*") {
    auto row = lastConn().OpenRecordset("select " + selection + " from gl_accvouch", 2);
    return InsertAccVouch(kind, *row, sign_, account_, currency_, dept_, person_, cus_, sup_, item_, class_, settle_);
  }

  SignRecord sign_;
  CodeRecord account_;
  std::string currency_ = "美元";
  Value dept_ = "D", person_ = "P", cus_ = "C", sup_ = "V", item_ = "I", class_ = "K", settle_ = "1";
};

TEST_F(VoucherRowTest, APersonItemTakesItsKeysFromTheRow) {
  fullLine();
  EXPECT_EQ(statement(personItem), columns +
                                       "2006,0,N'记',1,N'美元',12.3456,0.0001,8.2765,1.5,0.25,N'01',N'P1',Null,Null,"
                                       "N'I1',N'98',Null,Null,N'1'," +
                                       fullTail);
}

TEST_F(VoucherRowTest, ACustomerItemTakesItsKeysFromTheCaller) {
  fullLine();
  EXPECT_EQ(statement(customerItem), columns +
                                         "2006,0,N'记',1,N'美元',12.3456,0.0001,8.2765,1.5,0.25,N'D',Null,N'C',Null,"
                                         "N'I',N'K',N'赵',Null,N'1'," +
                                         fullTail);
}

TEST_F(VoucherRowTest, ASupplierItemTakesItsKeysFromTheCaller) {
  fullLine();
  EXPECT_EQ(statement(supplierItem), columns +
                                         "2006,0,N'记',1,N'美元',12.3456,0.0001,8.2765,1.5,0.25,N'D',Null,Null,N'V',"
                                         "N'I',N'K',N'赵',Null,N'1'," +
                                         fullTail);
}

const std::string emptyTail =
    "Null,1,'2005-06-06',0,Null,Null,Null,1,Null,Null,Null,Null,Null,N'1131',0,0,Null,Null,Null,Null,0,Null,Null,Null,"
    "Null,Null,Null,Null,Null,Null,Null,1,0,0,1,Null,1,1,1,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,"
    "Null,Null,Null,Null,Null)";

TEST_F(VoucherRowTest, ARowOfNullsIsWrittenAsNulls) {
  emptyLine();
  currency_ = "", account_ = {}, dept_ = person_ = cus_ = sup_ = item_ = class_ = settle_ = Value();
  const std::string noKeys = "2006,0,Null,0,Null,0,0,0,0,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,";
  for (const std::uint8_t kind : {personItem, customerItem, supplierItem})
    EXPECT_EQ(statement(kind), columns + noKeys + emptyTail) << int(kind);

  // With a currency and a unit the amounts are the row's own, zeros here.
  currency_ = "美元", account_.cMeasure = "吨";
  const std::string withCurrency = "2006,0,Null,0,N'美元',0,0,0,0,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,";
  for (const std::uint8_t kind : {personItem, customerItem, supplierItem})
    EXPECT_EQ(statement(kind), columns + withCurrency + emptyTail) << int(kind);
}

TEST_F(VoucherRowTest, TheStatementWritesTheLineAsAnOpeningDetail) {
  fullLine();
  sql(opening, statement(customerItem));
  expectRows(opening,
             "select iyear,iperiod,csign,isignseq,ibook,iflagperson,wllqperiod,wllqdate,csettle,md,mc,md_f,nfrat,nd_s,"
             "cdefine4,cdefine6,dbill_date,bdelete from gl_accvouch",
             {"2006 | 0 | 记 | 1 | 1 | Null | Null | Null | 1 | 102.18 | -0.5 | 12.3456 | 8.2765 | 1.5 | 2005-01-04 | "
              "2005-01-06 | 2005-07-05 | 1"});
}

// The whole statement for a row with every column set, in every case that a caller can bring about.
struct Case {
  std::uint8_t kind = 0;
  bool typeKnown = true, currency = true, measure = true;
};
std::ostream& operator<<(std::ostream& out, const Case& c) {
  return out << "kind " << int(c.kind) << (c.typeKnown ? "" : ", unknown voucher type")
             << (c.currency ? "" : ", no currency") << (c.measure ? "" : ", no measure unit");
}
std::vector<Case> everyCase() {
  std::vector<Case> all;
  for (const std::uint8_t kind : {personItem, customerItem, supplierItem})
    for (const bool known : {true, false})
      for (const bool currency : {true, false})
        for (const bool measure : {true, false}) all.push_back({kind, known, currency, measure});
  return all;
}

class EveryCaseTest : public VoucherRowTest, public ::testing::WithParamInterface<Case> {};

TEST_P(EveryCaseTest, IsRenderedLetterForLetter) {
  const Case& c = GetParam();
  fullLine();
  if (!c.typeKnown) sql(opening, "delete from dsign");
  if (!c.currency) currency_ = "";
  if (!c.measure) account_.cMeasure = "";
  const std::string sequence = c.typeKnown ? "1," : "Null,",
                    foreign = c.currency ? "N'美元',12.3456,0.0001,8.2765," : "Null,0,0,0,",
                    quantities = c.measure ? "1.5,0.25," : "0,0,",
                    keys = c.kind == personItem     ? "N'01',N'P1',Null,Null,N'I1',N'98',Null,"
                           : c.kind == customerItem ? "N'D',Null,N'C',Null,N'I',N'K',N'赵',"
                                                    : "N'D',Null,Null,N'V',N'I',N'K',N'赵',";
  EXPECT_EQ(statement(c.kind),
            columns + "2006,0,N'记'," + sequence + foreign + quantities + keys + "Null,N'1'," + fullTail);
}
INSTANTIATE_TEST_SUITE_P(Rows, EveryCaseTest, ::testing::ValuesIn(everyCase()));

TEST_F(VoucherRowTest, AVoucherTypeThatTheNewYearDoesNotHaveKeepsItsNameWithoutASequence) {
  fullLine();
  sql(opening, "delete from dsign");
  sql(opening, statement(customerItem));
  expectRows(opening, "select csign,isignseq from gl_accvouch", {"记 | Null"});
}

TEST_F(VoucherRowTest, TheSequenceOfTheVoucherTypeIsTheNewYears) {
  fullLine();
  sql(opening, "update dsign set isignseq=7");
  EXPECT_TRUE(statement(customerItem).starts_with(columns + "2006,0,N'记',7,"));
  EXPECT_EQ(sign_.iSignSeq, 7);
}

TEST_F(VoucherRowTest, ARowWithoutAVoucherTypeHasSequenceZero) {
  emptyLine();
  EXPECT_TRUE(statement(customerItem).starts_with(columns + "2006,0,Null,0,"));
  EXPECT_FALSE(wasRun("from dsign"));
}

TEST_F(VoucherRowTest, WithoutACurrencyTheForeignAmountsAndTheRateAreZero) {
  fullLine();
  currency_ = "";
  EXPECT_TRUE(statement(customerItem).starts_with(columns + "2006,0,N'记',1,Null,0,0,0,1.5,0.25,"));
}

TEST_F(VoucherRowTest, WithoutAMeasureUnitTheQuantitiesAreZero) {
  fullLine();
  account_.cMeasure = "";
  EXPECT_TRUE(statement(customerItem).starts_with(columns + "2006,0,N'记',1,N'美元',12.3456,0.0001,8.2765,0,0,"));
}

TEST_F(VoucherRowTest, APersonItemKeepsItsItemOnlyOnAnAccountOfPersonsAndItems) {
  fullLine();
  account_.cPersonItemClass = "";
  EXPECT_NE(statement(personItem).find("N'01',N'P1',Null,Null,Null,Null,Null,Null,N'1',"), std::string::npos);
}

TEST_F(VoucherRowTest, ThePersonArgumentIsNeverWritten) {
  fullLine();
  for (const std::uint8_t kind : {personItem, customerItem, supplierItem})
    EXPECT_EQ(statement(kind).find("N'P',"), std::string::npos);
}

TEST_F(VoucherRowTest, TheSettlementStyleIsTheCallersAndNotTheRows) {
  fullLine();
  settle_ = Value();
  for (const std::uint8_t kind : {personItem, customerItem, supplierItem})
    EXPECT_EQ(statement(kind).find("N'Q'"), std::string::npos);
}

TEST_F(VoucherRowTest, ANullFlagIsWrittenAsZero) {
  emptyLine();
  const std::string text = statement(customerItem,
                                     "iyear,csign,ino_id,inid,dbill_date,idoc,cbill,ccheck,cbook,ccashier,iflag,ctext1,"
                                     "ctext2,cdigest,ccode,md,mc,md_f,mc_f,nfrat,nd_s,nc_s,cn_id,dt_date,ccode_equal,"
                                     "iflagbank,cname,coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,"
                                     "ioutperiod,coutsign,doutdate,coutbillsign,coutid,bvouchedit,bvouchaddordele,"
                                     "bvouchmoneyhold,bvalueedit,ccodecontrol,bpcsedit,bdeptedit,bitemedit,"
                                     "bcussupinput,cast(null as bit) as bdelete,cdefine1,cdefine2,cdefine3,cdefine4,"
                                     "cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,"
                                     "cdefine13,cdefine14,cdefine15,cdefine16");
  EXPECT_TRUE(text.ends_with(emptyTail)) << text;
}

TEST_F(VoucherRowTest, ABareNullLeavesAnEmptyPlaceThatTheServerRefuses) {
  emptyLine();
  sql(closing, "update gl_accvouch set idoc=null");
  const std::string text = statement(customerItem);
  EXPECT_NE(text.find("'2005-06-06',,Null"), std::string::npos);
  EXPECT_THROW(newConn().ExecuteSql(text), RunTimeError);
}

TEST_F(VoucherRowTest, AnApostropheClosesItsTextEarly) {
  emptyLine();
  sql(closing, "update gl_accvouch set cdigest=N'张三''s'");
  const std::string text = statement(customerItem);
  EXPECT_NE(text.find("N'张三's',"), std::string::npos);
  EXPECT_THROW(newConn().ExecuteSql(text), RunTimeError);
}

TEST_F(VoucherRowTest, AFieldThatTheSelectionLacksFails) {
  emptyLine();
  EXPECT_THROW(statement(customerItem, "csign,md_f,mc_f,nfrat"), RunTimeError);
}

}  // namespace
}  // namespace gljz::test
