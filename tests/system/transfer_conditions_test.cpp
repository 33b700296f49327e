#include <optional>

#include "core/cls_gljz.h"
#include "core/transfer_parameters.h"
#include "dialogs/frm_tran_cond.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

using platform::RunTimeError;
using Texts = std::vector<std::string>;

constexpr const char* smallFile = R"(<Transfer><Parameters>
<Parameter ID="GL*m_bAutoWLClear" Check="True" Text_CN="自动" Text_TW="自動" Text_EN="auto"/>
<Parameter ID="GF*Clear" Check="True" Text_CN="a" Text_TW="b" Text_EN="c"/>
<Parameter ID=" GL*Clear " Check="1" Text_CN=" 清零 " Text_TW="清零" Text_EN="clear"/>
<Parameter ID="GL*CusYEJZ" Check="True" Text_CN="余额" Text_TW="餘額" Text_EN="balance"/>
<Parameter ID="GL*CusMXJZ" Check="False" Text_CN="明细" Text_TW="明細" Text_EN="detail"/>
<Parameter ID="GL*SupYEJZ" Check="True" Text_CN="余额" Text_TW="餘額" Text_EN="balance"/>
<Parameter ID="GL*SupMXJZ" Check="False" Text_CN="明细" Text_TW="明細" Text_EN="detail"/>
<Parameter ID="GL*OpeningInput" Check="True" Text_CN="期初" Text_TW="期初" Text_EN="opening"/>
</Parameters><RadioParameters>
<Parameters FirstID="GL*CusYEJZ" SecondID="GL*CusMXJZ"/>
<Parameters FirstID="GL*SupYEJZ" SecondID="GL*SupMXJZ"/>
</RadioParameters></Transfer>)";

class TransferConditionsTest : public LedgerTest {
protected:
  explicit TransferConditionsTest(Layout layout = Layout::separate)
      : LedgerTest(layout), dialogs_({nullptr, nullptr, folder_.text()}) {
    surroundings_.forms = &dialogs_;
    definition(smallFile);
  }
  ~TransferConditionsTest() override { surroundings_.forms = &forms(); }

  void definition(const std::string& text) { folder_.write("TransferParameter.xml", text); }
  FrmTranCond& open() {
    frmTranCond.unload();
    return frmTranCond();
  }
  static Texts keys(const FrmTranCond& form) {
    Texts all;
    for (const auto& item : form.lvCond) all.push_back(item.key + (item.checked ? "=True" : "=False"));
    return all;
  }
  static void check(FrmTranCond& form, const char* key, bool checked) {
    form.check(form.indexOf(key).value(), checked);
  }
  static bool isChecked(const FrmTranCond& form, const char* key) {
    return form.lvCond.at(form.indexOf(key).value()).checked;
  }
  // A definition with these elements only.
  static std::string of(const std::string& parameters, const std::string& pairs = "") {
    return "<Transfer><Parameters>" + parameters + "</Parameters><RadioParameters>" + pairs +
           "</RadioParameters></Transfer>";
  }
  static std::string row(const std::string& id, const std::string& check = "False") {
    return "<Parameter ID=\"" + id + "\" Check=\"" + check + "\" Text_CN=\"t\"/>";
  }
  static std::string pair(const std::string& first, const std::string& second) {
    return "<Parameters FirstID=\"" + first + "\" SecondID=\"" + second + "\"/>";
  }

  host::test::TemporaryFolder folder_;
  host::FormHost dialogs_;
};

class SharedConditionsTest : public TransferConditionsTest {
protected:
  SharedConditionsTest() : TransferConditionsTest(Layout::shared) {}
};

TEST_F(TransferConditionsTest, TheListShowsTheLedgersSwitchesInReverse) {
  EXPECT_EQ(keys(open()), (Texts{"GL*OpeningInput=True", "GL*SupMXJZ=False", "GL*SupYEJZ=True", "GL*CusMXJZ=False",
                                 "GL*CusYEJZ=True", "GL*Clear=True"}));
}

TEST_F(TransferConditionsTest, ASwitchOfAnotherSubsystemIsNotOffered) {
  EXPECT_FALSE(open().indexOf("GF*Clear").has_value());
}

TEST_F(TransferConditionsTest, TwoDatabasesOfferNoAutomaticClearing) {
  EXPECT_FALSE(open().indexOf("GL*m_bAutoWLClear").has_value());
}

TEST_F(SharedConditionsTest, ALaterYearOfOneDatabaseOffersAutomaticClearingUnticked) {
  EXPECT_EQ(keys(open()), (Texts{"GL*OpeningInput=True", "GL*Clear=True", "GL*m_bAutoWLClear=False"}));
}

TEST_F(SharedConditionsTest, ALaterYearOffersNoneOfTheSwitchesForOpenItemsAndCheques) {
  definition(of(row("GL*PersonYEJZ") + row("GL*PersonMXJZ") + row("GL*CusYEJZ") + row("GL*CusMXJZ") +
                row("GL*SupYEJZ") + row("GL*SupMXJZ") + row("GL*PersonNoBal") + row("GL*CusNoBal") +
                row("GL*SupNoBal") + row("GL*m_bCoverChequeData") + row("GL*m_bCoverBankData")));
  EXPECT_EQ(keys(open()), Texts{"GL*m_bCoverBankData=False"});
}

TEST_F(SharedConditionsTest, TheFirstYearOfADatabaseOffersWhatTwoDatabasesOffer) {
  run.m_strCurYear = "2005";  // the year in which the database begins
  EXPECT_EQ(keys(open()), (Texts{"GL*OpeningInput=True", "GL*SupMXJZ=False", "GL*SupYEJZ=True", "GL*CusMXJZ=False",
                                 "GL*CusYEJZ=True", "GL*Clear=True"}));
}

TEST_F(SharedConditionsTest, DatabaseNamesCompareWithoutRegardToCase) {
  run.m_strLastDB = platform::toUpperAscii(run.m_strLastDB);
  EXPECT_NE(open().indexOf("GL*m_bAutoWLClear"), std::nullopt);
}

TEST_F(TransferConditionsTest, TextsAreInTheLoginsLanguageAndTrimmed) {
  const auto clearText = [this] {
    prepareRun();
    const FrmTranCond& form = open();
    return form.lvCond.at(form.indexOf("GL*Clear").value()).text;
  };
  EXPECT_EQ(clearText(), "清零");
  language_ = "en-us";
  EXPECT_EQ(clearText(), "clear");
  language_ = "ZH-TW";
  EXPECT_EQ(clearText(), "清零");
}

TEST_F(TransferConditionsTest, AnyOtherLanguageAsksForATextThatTheFileLacks) {
  language_ = "fr-FR";
  prepareRun();
  EXPECT_THROW(open(), RunTimeError);
  EXPECT_FALSE(frmTranCond.isLoaded());
  definition(of("<Parameter ID=\"GL*Clear\" Check=\"True\" Text_=\"plain\"/>"));
  EXPECT_EQ(open().lvCond.at(0).text, "plain");
}

TEST_F(TransferConditionsTest, ARowWithoutItsTickOrWithATickThatIsNoBooleanIsAFailure) {
  definition(of("<Parameter ID=\"GL*Clear\" Text_CN=\"t\"/>"));
  EXPECT_THROW(open(), RunTimeError);
  definition(of(row("GL*Clear", "maybe")));
  EXPECT_THROW(open(), RunTimeError);
  definition(of("<Parameter Check=\"True\" Text_CN=\"t\"/>"));
  EXPECT_THROW(open(), RunTimeError);
}

TEST_F(TransferConditionsTest, ARowOfAnotherSubsystemMayLackTextAndTick) {
  definition(of("<Parameter ID=\"GF*Clear\"/>" + row("GL*Clear")));
  EXPECT_EQ(keys(open()), Texts{"GL*Clear=False"});
}

TEST_F(TransferConditionsTest, AFileThatIsMissingOrBrokenLeavesAnEmptyListWithoutAWord) {
  definition("<Transfer><Parameters>");
  EXPECT_TRUE(open().lvCond.empty());
  std::filesystem::remove(folder_.file("TransferParameter.xml"));
  EXPECT_TRUE(open().lvCond.empty());
}

TEST_F(TransferConditionsTest, AFileWithoutSwitchesLeavesAnEmptyList) {
  definition("<Transfer/>");
  EXPECT_TRUE(open().lvCond.empty());
  definition("<Other><Parameters>" + row("GL*Clear") + "</Parameters></Other>");
  EXPECT_TRUE(open().lvCond.empty());
}

TEST_F(TransferConditionsTest, AnEmptyListGivesAParameterTextThatIsValid) {
  definition("<Transfer/>");
  open().cmdOk_Click();
  EXPECT_EQ(run.m_strCondXml, "<Account/>");
  EXPECT_TRUE(ParseTransferParameters(run.m_strCondXml));
}

TEST_F(TransferConditionsTest, TheFirstItemHasAColourOfItsOwn) {
  const FrmTranCond& form = open();
  EXPECT_EQ(form.lvCond.at(0).backColour, 0xE8E8E8u);
  EXPECT_NE(form.lvCond.at(1).backColour, 0xE8E8E8u);
}

TEST_F(TransferConditionsTest, CaptionsAndToolTips) {
  const FrmTranCond& form = open();
  EXPECT_EQ(form.Caption, "上年结转条件");
  EXPECT_EQ(form.cmdOk.Caption, "确定");
  EXPECT_EQ(form.cmdCancel.Caption, "取消");
  EXPECT_EQ(form.cmdSyKmSel.Caption, "清零损益科目设置");
  EXPECT_EQ(form.cmdSyKmSel.ToolTipText, form.cmdSyKmSel.Caption);
  EXPECT_EQ(form.cmdSupTran.ToolTipText, "供应商明细结转科目设置");
  EXPECT_EQ(form.cmdCustomerTran.ToolTipText, "客户明细结转科目设置");
}

TEST_F(TransferConditionsTest, TheSelectionButtonsStartTheSameWhateverIsTicked) {
  definition(of(row("GL*CusMXJZ", "True") + row("GL*SupMXJZ", "True") + row("GL*Clear", "False")));
  const FrmTranCond& form = open();
  EXPECT_FALSE(form.cmdCustomerTran.Enabled);
  EXPECT_FALSE(form.cmdSupTran.Enabled);
  EXPECT_TRUE(form.cmdSyKmSel.Enabled);
}

TEST_F(TransferConditionsTest, TickingCustomerDetailUnticksItsPartnerAndEnablesTheButton) {
  FrmTranCond& form = open();
  check(form, "GL*CusMXJZ", true);
  EXPECT_FALSE(isChecked(form, "GL*CusYEJZ"));
  EXPECT_TRUE(form.cmdCustomerTran.Enabled);
  check(form, "GL*CusYEJZ", true);
  EXPECT_FALSE(isChecked(form, "GL*CusMXJZ"));
  EXPECT_FALSE(form.cmdCustomerTran.Enabled);
  EXPECT_FALSE(form.cmdSupTran.Enabled);
}

TEST_F(TransferConditionsTest, UntickingCustomerBalanceTicksDetailAndEnablesTheButton) {
  FrmTranCond& form = open();
  check(form, "GL*CusYEJZ", false);
  EXPECT_TRUE(isChecked(form, "GL*CusMXJZ"));
  EXPECT_TRUE(form.cmdCustomerTran.Enabled);
}

TEST_F(TransferConditionsTest, SupplierSwitchesSteerTheirOwnButton) {
  FrmTranCond& form = open();
  check(form, "GL*SupMXJZ", true);
  EXPECT_TRUE(form.cmdSupTran.Enabled);
  EXPECT_FALSE(form.cmdCustomerTran.Enabled);
  check(form, "GL*SupYEJZ", true);
  EXPECT_FALSE(form.cmdSupTran.Enabled);
}

TEST_F(TransferConditionsTest, ClearingSteersItsButton) {
  FrmTranCond& form = open();
  check(form, "GL*Clear", false);
  EXPECT_FALSE(form.cmdSyKmSel.Enabled);
  check(form, "GL*Clear", true);
  EXPECT_TRUE(form.cmdSyKmSel.Enabled);
}

TEST_F(TransferConditionsTest, OpeningInputCannotBeCleared) {
  FrmTranCond& form = open();
  check(form, "GL*OpeningInput", false);
  EXPECT_TRUE(isChecked(form, "GL*OpeningInput"));
}

TEST_F(TransferConditionsTest, OpeningInputIsTickedBeforeItsPartnerIsSet) {
  definition(of(row("GL*OpeningInput", "True") + row("GL*Clear"), pair("GL*OpeningInput", "GL*Clear")));
  FrmTranCond& form = open();
  check(form, "GL*OpeningInput", false);
  EXPECT_FALSE(isChecked(form, "GL*Clear"));
  check(form, "GL*Clear", true);  // a partner is set without its own rule
  EXPECT_FALSE(isChecked(form, "GL*OpeningInput"));
}

TEST_F(TransferConditionsTest, APartnersChangeHasNoFurtherEffect) {
  definition(of(row("GL*Clear", "True") + row("GL*CusIsNull"), pair("GL*CusIsNull", "GL*Clear")));
  FrmTranCond& form = open();
  check(form, "GL*CusIsNull", true);
  EXPECT_FALSE(isChecked(form, "GL*Clear"));
  EXPECT_TRUE(form.cmdSyKmSel.Enabled);
}

TEST_F(TransferConditionsTest, APairOfWhichOnlyOneIsOfferedKeepsTheOthersKey) {
  definition(of(row("GL*CusYEJZ", "True"), pair("GL*CusYEJZ", "GL*CusMXJZ")));
  FrmTranCond& form = open();
  EXPECT_EQ(form.lvCond.at(0).partner, "GL*CusMXJZ");
  check(form, "GL*CusYEJZ", false);
  EXPECT_FALSE(isChecked(form, "GL*CusYEJZ"));
}

TEST_F(TransferConditionsTest, OnlyTheFirstKeyOfAPairIsTrimmedWhereItIsStored) {
  definition(of(row("GL*CusYEJZ", "True") + row("GL*CusMXJZ"), pair("GL*CusYEJZ", " GL*CusMXJZ")));
  const FrmTranCond& second = open();
  EXPECT_EQ(second.lvCond.at(second.indexOf("GL*CusYEJZ").value()).partner, " GL*CusMXJZ");
  EXPECT_EQ(second.lvCond.at(second.indexOf("GL*CusMXJZ").value()).partner, "");

  definition(of(row("GL*CusYEJZ", "True") + row("GL*CusMXJZ"), pair(" GL*CusYEJZ ", "GL*CusMXJZ")));
  const FrmTranCond& first = open();
  EXPECT_EQ(first.lvCond.at(first.indexOf("GL*CusYEJZ").value()).partner, "");
  EXPECT_EQ(first.lvCond.at(first.indexOf("GL*CusMXJZ").value()).partner, "GL*CusYEJZ");
}

TEST_F(TransferConditionsTest, OkLeavesTheParameterTextAndUnloadsTheForm) {
  definition(of(row("GL*Clear", "True") + row("GL*CusIsNull")));
  open().cmdOk_Click();
  EXPECT_EQ(run.m_strCondXml,
            "<Account><Parameter ID=\"GL*CusIsNull\" Check=\"False\" text=\"t\"/>"
            "<Parameter ID=\"GL*Clear\" Check=\"True\" text=\"t\"/></Account>");
  EXPECT_FALSE(frmTranCond.isLoaded());
}

TEST_F(TransferConditionsTest, CancelLeavesTheParameterTextAsItWas) {
  run.m_strCondXml = "before";
  open().cmdCancel_Click();
  EXPECT_EQ(run.m_strCondXml, "before");
  EXPECT_FALSE(frmTranCond.isLoaded());
}

TEST_F(TransferConditionsTest, TicksAreNotRememberedBetweenOpenings) {
  check(open(), "GL*Clear", false);
  frmTranCond().cmdOk_Click();
  EXPECT_TRUE(isChecked(frmTranCond(), "GL*Clear"));
}

TEST_F(TransferConditionsTest, TheFileOfTheInstallationIsWhole) {
  host::FormHost installed({nullptr, nullptr, GLJZ_SOURCE_DIR "/data"});
  surroundings_.forms = &installed;
  for (const char* language : {"zh-CN", "zh-TW", "en-US"}) {
    language_ = language;
    prepareRun();
    const FrmTranCond& form = open();
    EXPECT_EQ(form.lvCond.size(), 22u);
    EXPECT_EQ(form.lvCond.at(0).key, "GL*OpeningInput");
    for (const auto& item : form.lvCond) EXPECT_FALSE(item.text.empty()) << item.key;
  }
  surroundings_.forms = &dialogs_;
}

TEST_F(TransferConditionsTest, ACancelledDialogWithoutAnEarlierTextEndsTheEntry) {
  const auto services = run.m_pubCls;
  const auto login = run.m_login;
  clsGLJZ entry;
  entry.ZwPubCls = services;
  std::string text, message;
  EXPECT_FALSE(entry.Transfer("001", "2005", "2006", text, login, message, nullptr));  // nobody answers the dialog
  EXPECT_EQ(dialogs_.shown(), Texts{"frmTranCond"});
  EXPECT_EQ(message, "");
  EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace gljz::test
