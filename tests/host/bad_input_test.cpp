// What a person can get wrong: one clear line, exit code 2, and all data as it was.
#include <gtest/gtest.h>

#include "host/program.h"

namespace host::test {
namespace {

class BadInputTest : public ::testing::Test {
protected:
  std::string server() const { return "embedded:" + folder_.text(); }
  TemporaryFolder folder_;
};

void expectRefused(const std::vector<std::string>& words, const std::string& part) {
  const Answer a = gljz(words);
  std::string command;
  for (const std::string& w : words) command += w + " ";
  EXPECT_EQ(a.code, 2) << command << "\n" << a.err;
  EXPECT_EQ(a.out, "") << command;
  EXPECT_TRUE(a.err.starts_with("gljz: ")) << command << "\n" << a.err;
  EXPECT_EQ(a.err.find('\n'), a.err.size() - 1) << command << "\n" << a.err;  // one line
  EXPECT_NE(a.err.find(part), std::string::npos) << command << "\n" << a.err;
}

TEST_F(BadInputTest, WordsThatAreNotUnderstood) {
  const std::vector<std::string> run{"transfer", "--server", server(), "--account", "001", "--from", "2005", "--to"};
  const auto with = [&](std::vector<std::string> more) {
    std::vector<std::string> words = run;
    words.insert(words.end(), more.begin(), more.end());
    return words;
  };
  expectRefused({"frobnicate"}, "unknown command \"frobnicate\"");
  expectRefused(with({"2006", "--frobnicate"}), "unknown option --frobnicate");
  expectRefused(with({"2006", "extra"}), "unexpected argument \"extra\"");
  expectRefused(with({"2006", "--to", "2007"}), "--to stands twice");
  expectRefused(with({"2006", "--quiet=1"}), "--quiet takes no value");
  expectRefused(with({}), "--to needs a value");
  expectRefused(with({"next"}), "--to \"next\": a year");
  expectRefused(with({"20006"}), "--to \"20006\": a year");
  expectRefused(with({"2006", "--today", "2006-02-30"}), "--today \"2006-02-30\"");
  expectRefused(with({"2006", "--today", "1.2.2006"}), "--today");
  expectRefused(with({"2006", "--language", "fr-FR"}), "zh-CN, zh-TW, en-US");
  expectRefused(with({"2006", "--subsystem", "XX"}), "GL, GF");
  expectRefused(with({"2006", "--format", "xml"}), "text, json");
  expectRefused(with({"2006", "--check", "GL*Clear"}), "KEY=True");
  expectRefused(with({"2006", "--check", "GL*Clear=Yes"}), "KEY=True");
  expectRefused(with({"2006", "--report", "x.doc"}), "x.doc");
  expectRefused(with({"2006", "--params", folder_.file("none.xml")}), "none.xml cannot be read");
  expectRefused(with({"2006", "--params", folder_.text()}), "is a folder");
  expectRefused(with({"2006", "--params", folder_.write("empty.xml", "")}), "empty.xml is empty");
  expectRefused({"transfer", "--from", "2005", "--to", "2006"}, "--account is missing");
  expectRefused({"transgl", "--from", "2005", "--to", "2006", "--from-db", "a"}, "--to-db is missing");
  expectRefused({"account"}, "create, open-year or close-year");
  expectRefused({"account", "delete"}, "create, open-year or close-year");
  expectRefused({"account", "create", "--account", "a/b", "--year", "2005", "--server", server()},
                "letters and digits");
  expectRefused({"sql", "--server", server()}, "either -q TEXT or -f FILE");
  expectRefused({"sql", "--server", server(), "-q", "select 1", "-f", "x"}, "either -q TEXT or -f FILE");
  expectRefused({"sql", "--server", server(), "-f", folder_.file("none.sql")}, "none.sql cannot be read");
  expectRefused(
      {"generate", "--server", server(), "--account", "9", "--from", "2005", "--to", "2006", "--accounts", "many"},
      "--accounts \"many\"");
}

// Whatever the system makes of a command line on its way.
TEST_F(BadInputTest, WordsArriveLetterForLetter) {
  for (const std::string word : {"", " ", "a b", "\"", "a \"b\" c", "c:\\ledger\\", "c:\\the ledger\\", "\\\"",
                                 "\\\\\"x", "'", "*", "?", "%PATH%", "$HOME", "^", "&", "|", "<", "结转"})
    EXPECT_EQ(gljz({word}).line(), "gljz: unknown command \"" + word + "\"; gljz --help lists the commands");
}

TEST_F(BadInputTest, WithoutACommandTheUsageIsShown) {
  const Answer none = gljz({});
  EXPECT_EQ(none.code, 2);
  EXPECT_NE(none.err.find("usage: gljz"), std::string::npos);
  const Answer help = gljz({"transfer", "--help"});
  EXPECT_EQ(help.code, 0);
  EXPECT_NE(help.out.find("usage: gljz"), std::string::npos);
}

TEST_F(BadInputTest, ServersThatAreNoServers) {
  for (const char* text : {"nonsense", "embedded:", "embedded:a;b"})
    expectRefused({"sql", "--server", text, "-q", "select 1"}, "server \"");
  const std::string missing = folder_.file("missing");
  expectRefused({"sql", "--server", "embedded:" + missing, "-q", "select 1"}, missing + " does not exist");
  expectRefused({"transfer", "--server", "embedded:" + missing, "--account", "001", "--from", "2005", "--to", "2006"},
                missing + " does not exist");
  const std::string file = folder_.write("file", "x");
  expectRefused({"sql", "--server", "embedded:" + file, "-q", "select 1"}, file + " is no folder");
  expectRefused({"sql", "--server", server(), "--database", "nope", "-q", "select 1"}, "has no database nope");
}

TEST_F(BadInputTest, AccountsAndDatabasesThatAreNotThere) {
  expectRefused({"transfer", "--server", server(), "--account", "001", "--from", "2005", "--to", "2006"},
                "has no database TqSystem");
  expectRefused({"account", "close-year", "--server", server(), "--account", "001", "--year", "2005"}, "TqSystem");
  ASSERT_EQ(gljz({"account", "create", "--server", server(), "--account", "001", "--year", "2005"}).code, 0);
  expectRefused({"account", "create", "--server", server(), "--account", "001", "--year", "2006"},
                "registered already");
  expectRefused({"account", "open-year", "--server", server(), "--account", "002"}, "account 002 is not registered");
  expectRefused({"account", "close-year", "--server", server(), "--account", "001", "--year", "2004"}, "no year 2004");
  expectRefused({"account", "open-year", "--server", server(), "--account", "001"}, "no chart of accounts");
  expectRefused({"transfer", "--server", server(), "--account", "777", "--from", "2005", "--to", "2006"},
                "account 777 has no database for 2006");
  expectRefused({"transgl", "--server", server(), "--from", "2005", "--to", "2006", "--from-db", "TqData_001_2005",
                 "--to-db", "other"},
                "has no database other");
  expectRefused({"transgl", "--server", server(), "--from", "2005", "--to", "2006", "--from-db", "TqData_001_2005",
                 "--to-db", "TqSystem"},
                "TqSystem is not registered");
  // The refusals have left no trace.
  const Answer rows = gljz({"sql", "--server", server(), "--database", "TqSystem", "--format", "csv", "-q",
                            "select count(*) as n from UA_AccountDatabase"});
  EXPECT_EQ(csv(rows), "n\n1\n");
}

TEST_F(BadInputTest, ASwitchThatIsNotOfferedIsRefusedBeforeAnythingMoves) {
  ASSERT_EQ(
      gljz({"generate", "--server", server(), "--account", "001", "--from", "2005", "--to", "2006", "--accounts", "20"})
          .code,
      0);
  const std::vector<std::string> run{"transfer", "--server", server(), "--account", "001",    "--from",
                                     "2005",     "--to",     "2006",   "--quiet",   "--check"};
  for (const char* check : {"GL*m_bAutoWLClear=True", "GF*Clear=True", "nonsense=False", "GL*OpeningInput=False"}) {
    auto words = run;
    words.push_back(check);
    expectRefused(words, std::string(check).substr(0, std::string(check).find('=')));
  }
  const Answer rows = gljz({"sql", "--server", server(), "--database", "TqData_001_2006", "--format", "csv", "-q",
                            "select count(*) as n from gl_accsum"});
  EXPECT_EQ(csv(rows), "n\n0\n");
}

TEST_F(BadInputTest, OutputThatCannotBeWritten) {
  ASSERT_EQ(
      gljz({"generate", "--server", server(), "--account", "001", "--from", "2005", "--to", "2006", "--accounts", "20"})
          .code,
      0);
  const std::vector<std::string> run{"transfer", "--server", server(), "--account", "001",
                                     "--from",   "2005",     "--to",   "2006",      "--quiet"};
  auto report = run, trace = run;
  report.insert(report.end(), {"--report", folder_.file("none/r.json")});
  trace.insert(trace.end(), {"--trace", folder_.file("none/t.json")});
  expectRefused(report, "none/r.json cannot be written");
  expectRefused(trace, "none/t.json cannot be written");
}

TEST_F(BadInputTest, ADatabaseFileThatIsNoDatabase) {
  ASSERT_EQ(
      gljz({"generate", "--server", server(), "--account", "001", "--from", "2005", "--to", "2006", "--accounts", "20"})
          .code,
      0);
  bool damaged = false;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.text()))
    if (entry.path().filename().string().starts_with("TqData_001_2006")) {
      std::ofstream(entry.path(), std::ios::binary) << std::string(8192, 'x');
      damaged = true;
    }
  ASSERT_TRUE(damaged);
  const Answer a =
      gljz({"transfer", "--server", server(), "--account", "001", "--from", "2005", "--to", "2006", "--quiet"});
  EXPECT_EQ(a.code, 2) << a.err;
  EXPECT_TRUE(a.err.starts_with("gljz: ")) << a.err;
}

}  // namespace
}  // namespace host::test
