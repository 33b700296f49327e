// The dialogs before a run and the closing report, through the command line.
#include <gtest/gtest.h>

#include "host/program.h"

namespace host::test {
namespace {

class CliConditionsTest : public ::testing::Test {
protected:
  void SetUp() override {
    ASSERT_EQ(gljz({"demo", folder_.text(), "--quiet"}).code % 4, 0);
    ASSERT_EQ(gljz({"sql", "--server", server(), "--database", "TqData_001_2006", "-q", "delete from GL_YeMxSel"}).code,
              0);
  }
  std::string server() const { return "embedded:" + folder_.text(); }
  std::vector<std::string> words(const std::vector<std::string>& more) const {
    std::vector<std::string> all{"transfer", "--server", server(), "--account", "001",  "--from",
                                 "2005",     "--to",     "2006",   "--format",  "json", "--quiet"};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  Answer transfer(const std::vector<std::string>& more = {}) const { return gljz(words(more)); }
  void expectRefused(const std::vector<std::string>& more, const std::string& part) const {
    const Answer a = transfer(more);
    EXPECT_EQ(a.code, 2) << a.out << a.err;
    EXPECT_EQ(a.out, "");
    EXPECT_NE(a.err.find(part), std::string::npos) << a.err;
    EXPECT_EQ(stored(), "");
  }
  // Accounts by kind and treatment, "1 1131 2;..."
  std::string stored() const {
    const Answer a = gljz({"sql", "--server", server(), "--database", "TqData_001_2006", "--format", "csv", "-q",
                           "select iCusSupType, ccode, iYeMxType from GL_YeMxSel order by iCusSupType, ccode"});
    EXPECT_EQ(a.code, 0) << a.err;
    const std::string rows = a.out.substr(a.out.find('\n') + 1);
    std::string text;
    for (const char c : rows) text += c == '\n' ? ';' : c == ',' ? ' ' : c;
    return text;
  }
  TemporaryFolder folder_;
};

TEST_F(CliConditionsTest, TheClosingReportIsInTheResult) {
  const Answer a = transfer();
  EXPECT_NE(a.out.find("\"report\": {\"right\": \""), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("\"rows\": [[\""), std::string::npos) << a.out;
}

TEST_F(CliConditionsTest, ARunThatStopsShowsNoReport) {
  gljz({"sql", "--server", server(), "--database", "TqData_001_2005", "-q", "update gl_mend set bflag=0"});
  const Answer a = transfer();
  EXPECT_NE(a.out.find("\"report\": null"), std::string::npos) << a.out;
}

TEST_F(CliConditionsTest, DetailOfAllCustomersIsStored) {
  const Answer a = transfer({"--check", "GL*CusMXJZ=True", "--customer-detail", "all"});
  EXPECT_EQ(a.code % 4, 0) << a.out << a.err;
  const std::string rows = stored();
  EXPECT_TRUE(rows.starts_with("1 ")) << rows;
  EXPECT_EQ(rows.find(" 1;"), std::string::npos) << rows;
}

TEST_F(CliConditionsTest, WhatTheDialogsDoNotAllowIsRefused) {
  expectRefused({"--customer-detail", "all"}, "is disabled");
  expectRefused({"--check", "GL*CusMXJZ=True", "--customer-detail", "0000"}, "account 0000 is on neither list");
  expectRefused({"--clear", "0000"}, "account 0000 is on neither list");
  expectRefused({"--check", "GL*m_bAutoWLClear=True"}, "is not offered");
  expectRefused({"--check", "GL*OpeningInput=False"}, "always ticked");
  expectRefused({"--clear", ","}, "--clear \",\"");
}

TEST_F(CliConditionsTest, AParameterFileShowsNoDialog) {
  const std::string file = folder_.write("p.xml", "<Account/>");
  expectRefused({"--params", file, "--clear", "all"}, "--params and --clear exclude each other");
  const Answer a = transfer({"--params", file});
  EXPECT_NE(a.out.find("\"parameters\": \"<Account/>\""), std::string::npos) << a.out;
}

// A person at a terminal, with `script` as the terminal.
class TerminalTest : public CliConditionsTest {
protected:
  void SetUp() override {
    if (runProgram({"script", "--version"}).code != 0) GTEST_SKIP() << "there is no terminal to lend";
    CliConditionsTest::SetUp();
  }
  static std::string shellQuoted(const std::string& word) {
    std::string out = "'";
    for (const char c : word) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
  }
  // What the terminal showed.
  std::string type(const std::string& keys, int& code) const {
    std::string command = shellQuoted(GLJZ_PROGRAM);
    for (const std::string& word :
         {std::string("transfer"), std::string("--server"), server(), std::string("--account"), std::string("001"),
          std::string("--from"), std::string("2005"), std::string("--to"), std::string("2006"),
          std::string("--language"), std::string("en-US"), std::string("--report"), folder_.file("r.json")})
      command += " " + shellQuoted(word);
    const Answer a = runProgram({"script", "-qec", command, "/dev/null"}, keys);
    code = a.code;
    return a.out + a.err;
  }
};

TEST_F(TerminalTest, SwitchesAreToggledAndConfirmed) {
  int code = -1;
  const std::string screen = type("2\n99\n\n", code);
  EXPECT_EQ(code % 4, 0) << screen;
  EXPECT_NE(screen.find("Conditions of the carry-forward"), std::string::npos) << screen;
  EXPECT_NE(screen.find("  2 [ ] Persons: carry balances"), std::string::npos) << screen;
  EXPECT_NE(screen.find("? 99"), std::string::npos) << screen;
  EXPECT_NE(contentOf(folder_.file("r.json")).find("GL*PersonYEJZ\\\" Check=\\\"False"), std::string::npos);
}

TEST_F(TerminalTest, AccountsAreDivided) {
  int code = -1;
  const std::string screen = type("5\nc\n1\n\n\n", code);
  EXPECT_NE(screen.find("Choose how customer accounts are carried"), std::string::npos) << screen;
  EXPECT_NE(stored().find(" 2;"), std::string::npos) << stored();
}

TEST_F(TerminalTest, LeavingCarriesNothing) {
  int code = -1;
  type("q\n", code);
  EXPECT_EQ(code, 1);
  EXPECT_NE(contentOf(folder_.file("r.json")).find("\"returned\": false"), std::string::npos);
}

}  // namespace
}  // namespace host::test
