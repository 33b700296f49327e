// gljz on a server that is reached through ODBC, as a person runs it.

#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/program.h"
#include "odbc_fixture.h"

namespace {

using host::test::Answer;
using host::test::gljz;

std::string address(const std::string& more = "") {
  return "odbc:" + postgres().connectionString(more);
}
std::string clerkAddress() {
  return address("UID=" + std::string(PostgresServer::passwordUser));
}

Answer sql(const std::string& server, const std::string& query, const std::vector<std::string>& more = {}) {
  std::vector<std::string> words{"sql", "--server", server, "--database", "ledger", "-q", query, "--format", "json"};
  words.insert(words.end(), more.begin(), more.end());
  return gljz(words);
}

class OdbcProgram : public testing::Test {
protected:
  std::string credentials(const std::string& text, mode_t mode = 0600) {
    const std::string file = folder_.write("login", text);
    chmod(file.c_str(), mode);
    return file;
  }
  static void expectSilent(const Answer& a, const std::string& secret) {
    EXPECT_EQ(a.out.find(secret), std::string::npos) << a.out;
    EXPECT_EQ(a.err.find(secret), std::string::npos) << a.err;
  }
  host::test::TemporaryFolder folder_;
};

// Runs the program on a terminal of its own, types a line when it is asked, and gives what the terminal showed.
std::string onTerminal(const std::vector<std::string>& words, const std::string& typed) {
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    std::vector<char*> arguments{const_cast<char*>(GLJZ_PROGRAM)};
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(GLJZ_PROGRAM, arguments.data());
    _exit(127);
  }
  std::string shown;
  bool answered = false;
  for (;;) {
    pollfd ready{terminal, POLLIN, 0};
    if (poll(&ready, 1, 20'000) <= 0) break;
    char bytes[4096];
    const ssize_t got = read(terminal, bytes, sizeof bytes);
    if (got <= 0) break;
    shown.append(bytes, static_cast<std::size_t>(got));
    if (!answered && shown.find("password") != std::string::npos) {
      answered = true;
      usleep(100'000);  // the question is shown before the echo is switched off
      const std::string line = typed + "\n";
      if (write(terminal, line.data(), line.size()) < 0) break;
    }
  }
  close(terminal);
  waitpid(child, nullptr, 0);
  return shown;
}

}  // namespace

TEST_F(OdbcProgram, sql_shows_rows_as_the_embedded_server_does) {
  const Answer a =
      sql(address(),
          "select 1 as n, cast(12.5 as numeric(19,4)) as amount, true as flag, '账\"x' as words, null as none, "
          "cast(12345678901234567890.123456 as numeric(28,6)) as many");
  EXPECT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(a.out,
            "[\n {\"n\": 1, \"amount\": 12.5, \"flag\": 1, \"words\": \"账\\\"x\", \"none\": null, \"many\": "
            "12345678901234567890.123456}\n]\n");
}

TEST_F(OdbcProgram, sql_runs_the_next_batch_behind_one_that_failed) {
  const Answer a = sql(address(), "select * from nowhere\nGO\nselect 2 as b");
  EXPECT_EQ(a.code, 1);
  EXPECT_NE(a.err.find("Msg "), std::string::npos) << a.err;
  EXPECT_NE(a.err.find("nowhere"), std::string::npos) << a.err;
  EXPECT_EQ(a.out, "[\n {\"b\": 2}\n]\n");
}

TEST_F(OdbcProgram, batches_share_a_session) {
  const Answer a = sql(address(), "create temporary table t(a int)\nGO\ninsert into t values(7)\nGO\nselect a from t");
  EXPECT_EQ(a.code, 0) << a.err;
  EXPECT_EQ(a.out, "[\n {\"a\": 7}\n]\n");
}

TEST_F(OdbcProgram, credentials_come_from_a_file_that_only_its_owner_reads) {
  const std::string text = "# who\nUID=clerk\r\n\nPWD=" + std::string(PostgresServer::password) + "\n";
  const Answer good =
      sql(clerkAddress(), "select cast(current_user as varchar(9)) as who", {"--credentials", credentials(text)});
  EXPECT_EQ(good.out, "[\n {\"who\": \"clerk\"}\n]\n") << good.err;
  expectSilent(good, PostgresServer::password);
  for (const mode_t open : {0640, 0604, 0660, 0601}) {
    const Answer refused = sql(clerkAddress(), "select 1", {"--credentials", credentials(text, open)});
    EXPECT_EQ(refused.code, 2);
    EXPECT_NE(refused.err.find("chmod 600"), std::string::npos) << refused.err;
    expectSilent(refused, PostgresServer::password);
  }
}

TEST_F(OdbcProgram, a_credentials_file_that_cannot_be_used_is_refused_without_being_repeated) {
  for (const char* text : {"PWD=hunter22\nhunter22\n", "Server=hunter22\n", "", "#hunter22\n"}) {
    const Answer a = sql(clerkAddress(), "select 1", {"--credentials", credentials(text)});
    EXPECT_EQ(a.code, 2) << text;
    expectSilent(a, "hunter22");
  }
  EXPECT_EQ(sql(clerkAddress(), "select 1", {"--credentials", folder_.file("none")}).code, 2);
  EXPECT_EQ(sql(clerkAddress(), "select 1", {"--credentials", folder_.text()}).code, 2);
  EXPECT_EQ(sql(clerkAddress(), "select 1", {"--credentials", "-"}).code, 2) << "there is no terminal to ask on";
  EXPECT_EQ(gljz({"sql", "--server", "embedded:" + folder_.text(), "-q", "select 1", "--credentials", "-"}).code, 2);
}

TEST_F(OdbcProgram, a_password_in_the_address_works_with_a_warning_and_is_told_nowhere) {
  odbc::ConnectionString secret;
  secret.set("PWD", PostgresServer::password);
  const Answer good = sql(clerkAddress() + ";" + secret.text(), "select 1 as a");
  EXPECT_EQ(good.out, "[\n {\"a\": 1}\n]\n") << good.err;
  EXPECT_NE(good.err.find("other users of this machine"), std::string::npos) << good.err;
  expectSilent(good, PostgresServer::password);
  const Answer wrong = sql(clerkAddress() + ";PWD=hunter22", "select 1");
  EXPECT_EQ(wrong.code, 2);
  EXPECT_NE(wrong.err.find("password authentication failed"), std::string::npos) << wrong.err;
  expectSilent(wrong, "hunter22");
}

TEST_F(OdbcProgram, a_password_is_asked_for_on_a_terminal_and_not_shown) {
  const std::string shown = onTerminal({"sql", "--server", clerkAddress(), "--database", "ledger", "-q",
                                        "select cast(current_user as varchar(9)) as who", "--format", "csv"},
                                       PostgresServer::password);
  EXPECT_NE(shown.find("password of clerk: "), std::string::npos) << shown;
  EXPECT_NE(shown.find("who\r\nclerk"), std::string::npos) << shown;
  EXPECT_EQ(shown.find(PostgresServer::password), std::string::npos) << shown;
}

// No command gives the password away, whatever goes wrong first.
TEST_F(OdbcProgram, no_command_repeats_a_password) {
  const std::string none = "odbc:Driver=FreeTDS;Server=127.0.0.1;Port=1;TDS_Version=7.1;UID=ledger;PWD=hunter22";
  const std::string trace = folder_.file("trace"), report = folder_.file("report.json");
  const std::vector<std::vector<std::string>> commands{
      {"account", "create", "--account", "001", "--year", "2005"},
      {"account", "open-year", "--account", "001"},
      {"account", "close-year", "--account", "001", "--year", "2005"},
      {"generate", "--account", "9", "--from", "2005", "--to", "2006"},
      {"sql", "-q", "select 1"},
      {"demo"},
      {"transfer", "--account", "001", "--from", "2005", "--to", "2006", "--trace", trace, "--report", report},
      {"transgl", "--from", "2005", "--to", "2006", "--from-db", "a", "--to-db", "b", "--format", "json"}};
  for (std::vector<std::string> words : commands) {
    words.insert(words.end(), {"--server", none});
    const Answer a = gljz(words);
    EXPECT_EQ(a.code, 2) << words[0] << a.err;
    EXPECT_NE(a.err.find("cannot be opened"), std::string::npos) << words[0] << a.err;
    expectSilent(a, "hunter22");
  }
  EXPECT_EQ(host::test::contentOf(trace).find("hunter22"), std::string::npos);
  EXPECT_EQ(host::test::contentOf(report).find("hunter22"), std::string::npos);
  for (const char* bad :
       {"odbc:PWD=hunter22", "odbc:Driver=x;PWD={hunter22", "ODBC:Driver=x;PWD=hunter22", "odbc:hunter22"})
    expectSilent(gljz({"sql", "-q", "select 1", "--server", bad}), "hunter22");
}

TEST_F(OdbcProgram, what_a_server_of_another_dialect_says_is_shown) {
  const Answer a =
      gljz({"account", "create", "--server", address("Database=ledger"), "--account", "001", "--year", "2005"});
  EXPECT_NE(a.code, 0);
  EXPECT_NE(a.err.find("sysdatabases"), std::string::npos) << a.err;
}

TEST_F(OdbcProgram, a_demo_is_made_in_a_folder_or_on_a_server_but_not_both) {
  const Answer a = gljz({"demo", folder_.file("d"), "--server", address()});
  EXPECT_EQ(a.code, 2);
  EXPECT_NE(a.err.find("exclude each other"), std::string::npos) << a.err;
}
