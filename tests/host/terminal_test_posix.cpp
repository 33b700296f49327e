// A run on a terminal: the live list of steps, and the closing dialogs, through a pseudo-terminal.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <regex>
#include <utility>

#include "host/program.h"

namespace host::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// Characters as they end up on the screen: line feeds, carriage returns, cursor up, clearing of a line's end and of
// what is below. Wide characters take one cell here, which changes nothing as no line is as wide as the screen.
class Screen {
public:
  void write(const std::string& bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
      const char c = bytes[i];
      if (c == '\x1b' && i + 1 < bytes.size() && bytes[i + 1] == '[') {
        i = escape(bytes, i + 2);
      } else if (c == '\n') {
        ++row_, column_ = 0, ++i;
      } else if (c == '\r') {
        column_ = 0, ++i;
      } else {
        std::size_t n = 1;
        while (i + n < bytes.size() && (static_cast<unsigned char>(bytes[i + n]) & 0xC0) == 0x80) ++n;
        line().resize(std::max(line().size(), column_ + 1), " ");
        line()[column_++] = bytes.substr(i, n);
        i += n;
      }
    }
  }
  std::vector<std::string> lines() const {
    std::vector<std::string> all;
    for (const auto& cells : cells_) {
      std::string text;
      for (const std::string& cell : cells) text += cell;
      text.erase(text.find_last_not_of(' ') + 1);
      all.push_back(text);
    }
    while (!all.empty() && all.back().empty()) all.pop_back();
    return all;
  }

private:
  std::vector<std::string>& line() {
    if (cells_.size() <= row_) cells_.resize(row_ + 1);
    return cells_[row_];
  }
  std::size_t escape(const std::string& bytes, std::size_t i) {
    std::size_t number = 0;
    while (i < bytes.size() && ((bytes[i] >= '0' && bytes[i] <= '9') || bytes[i] == ';'))
      number = bytes[i] == ';' ? 0 : number * 10 + static_cast<std::size_t>(bytes[i] - '0'), ++i;
    const char kind = i < bytes.size() ? bytes[i] : ' ';
    if (kind == 'A') row_ -= std::min(row_, std::max<std::size_t>(number, 1));
    if (kind == 'K' || kind == 'J') line().resize(std::min(line().size(), column_));
    if (kind == 'J') cells_.resize(row_ + 1);
    EXPECT_NE(std::string("AKJm").find(kind), std::string::npos) << "an escape that no terminal here knows: " << kind;
    return i + 1;
  }
  std::vector<std::vector<std::string>> cells_;
  std::size_t row_ = 0, column_ = 0;
};

class StepListTest : public ::testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(gljz({"demo", folder_.file("data"), "--quiet"}).code, 0); }
  void TearDown() override {
    if (terminal_ >= 0) close(terminal_);
  }

  std::vector<std::string> transfer(const std::vector<std::string>& more) const {
    std::vector<std::string> words{"transfer",  "--server",  "embedded:" + folder_.file("data"),
                                   "--account", "001",       "--from",
                                   "2005",      "--to",      "2006",
                                   "--today",   "2006-01-10"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }
  struct Window {
    unsigned short lines = 30, columns = 120;
    std::string kind = "xterm-256color", noColour = "";
  };
  // Starts the program on a terminal of its own; standard output goes to a file.
  void start(const std::vector<std::string>& words, const Window& window) {
    terminal_ = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal_, 0);
    ASSERT_EQ(grantpt(terminal_), 0);
    ASSERT_EQ(unlockpt(terminal_), 0);
    const std::string name = ptsname(terminal_);
    winsize size{window.lines, window.columns, 0, 0};
    ioctl(terminal_, TIOCSWINSZ, &size);
    const std::string out = folder_.file("out"), place = folder_.text();
    child_ = fork();
    if (child_ == 0) {
      setsid();
      const int own = open(name.c_str(), O_RDWR);
      const int file = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
      termios mode{};
      tcgetattr(own, &mode);
      mode.c_lflag &= ~static_cast<tcflag_t>(ECHO);
      mode.c_oflag &= ~static_cast<tcflag_t>(OPOST);
      tcsetattr(own, TCSANOW, &mode);
      dup2(own, 0), dup2(file, 1), dup2(own, 2);
      setenv("TERM", window.kind.c_str(), 1);
      setenv("NO_COLOR", window.noColour.c_str(), 1);
      std::vector<char*> arguments{const_cast<char*>(GLJZ_PROGRAM)};
      for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
      arguments.push_back(nullptr);
      if (chdir(place.c_str()) == 0) execv(GLJZ_PROGRAM, arguments.data());
      _exit(127);
    }
    ASSERT_GT(child_, 0);
  }
  // Reads until the text has come, or the end of the program.
  void readUntil(const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    std::size_t at;
    while ((at = seen_.find(text, mark_)) == std::string::npos) {
      ASSERT_LT(std::chrono::steady_clock::now(), end) << "never seen: " << text << "\n" << seen_;
      if (!readSome()) {
        FAIL() << "ended without: " << text << "\n" << seen_;
      }
    }
    mark_ = at + text.size();  // what came in the same piece may be the next one waited for
  }
  bool readSome() {
    pollfd ready{terminal_, POLLIN, 0};
    if (poll(&ready, 1, 1000) == 0) return waitpid(child_, &status_, WNOHANG) == 0;
    char buffer[4096];
    const ssize_t n = read(terminal_, buffer, sizeof buffer);
    if (n <= 0) return false;
    seen_.append(buffer, static_cast<std::size_t>(n));
    return true;
  }
  void type(const std::string& line) {
    const std::string bytes = line + "\n";
    ASSERT_EQ(write(terminal_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  // The exit code; everything that came until the end is in seen_.
  int finish() {
    while (readSome()) {
    }
    if (!WIFEXITED(status_) && waitpid(child_, &status_, 0) < 0) return -1;
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
  }
  std::vector<std::string> screen() const {
    Screen screen;
    screen.write(seen_);
    return screen.lines();
  }

  TemporaryFolder folder_;
  int terminal_ = -1;
  pid_t child_ = -1;
  int status_ = 0x7F;  // neither exited nor signalled
  std::string seen_;
  std::size_t mark_ = 0;
};

const std::vector<std::string> finishedSteps{"结转上年之前的检查... Y", "结转科目总账... Y",     "结转辅助总账... Y",
                                             "结转明细账... Y",         "结转未核销银行账... Y", "结转银行对账单... Y",
                                             "结转支票登记簿... Y",     "结转其它表... Y"};

TEST_F(StepListTest, TheListOfStepsIsLiveAndLeavesItsFinishedSteps) {
  start(transfer({"--check", "GL*OpeningInput=True"}), {});
  EXPECT_EQ(finish(), 4) << seen_;
  EXPECT_EQ(screen(), finishedSteps);
  EXPECT_THAT(seen_, HasSubstr("\x1b[31m> 结转上年之前的检查...\x1b[0m")) << "the step under way is red";
  EXPECT_THAT(seen_, HasSubstr("\x1b[2m  结转科目总账...\x1b[0m")) << "a step to come is pale";
  EXPECT_THAT(seen_, HasSubstr("  结转科目总账...\x1b[32m Y\x1b[0m")) << "a finished step has its mark";
  // Line 7 goes from waiting to marked and is never under way.
  EXPECT_THAT(seen_, Not(HasSubstr("> 结转其它表")));
}

TEST_F(StepListTest, TheMovingCaptionAndTheRowsAreToldBelowTheList) {
  start(transfer({"--check", "GL*OpeningInput=True"}), {});
  EXPECT_EQ(finish(), 4);
  const std::regex status("  已写入 (\\d+) 行  \\d+:\\d\\d");
  std::vector<long> rows;
  for (std::sregex_iterator it(seen_.begin(), seen_.end(), status), end; it != end; ++it)
    rows.push_back(std::stol((*it)[1]));
  ASSERT_GT(rows.size(), 8u);
  EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
  EXPECT_EQ(rows.front(), 0);
  EXPECT_GT(rows.back(), 100);
}

TEST_F(StepListTest, ColoursCanBeSwitchedOff) {
  start(transfer({"--check", "GL*OpeningInput=True"}), {30, 120, "xterm", "1"});
  EXPECT_EQ(finish(), 4);
  EXPECT_THAT(seen_, Not(HasSubstr("m> ")));
  EXPECT_THAT(seen_, HasSubstr("> 结转科目总账..."));
  EXPECT_EQ(screen(), finishedSteps);
}

TEST_F(StepListTest, ATerminalWithoutACursorGetsLines) {
  start(transfer({"--check", "GL*OpeningInput=True"}), {30, 120, "dumb", ""});
  EXPECT_EQ(finish(), 4);
  EXPECT_THAT(seen_, Not(HasSubstr("\x1b")));
  EXPECT_EQ(screen(), finishedSteps);
}

TEST_F(StepListTest, InALowWindowOnlyTheStepUnderWayShows) {
  start(transfer({"--check", "GL*OpeningInput=True"}), {6, 40, "xterm", "1"});
  EXPECT_EQ(finish(), 4);
  EXPECT_THAT(seen_, Not(HasSubstr("\x1b[8A")));
  EXPECT_THAT(seen_, HasSubstr("> 结转科目总账..."));
  EXPECT_EQ(screen(), finishedSteps);
}

// The form closes at once: the step that the check belongs to has no mark.
TEST_F(StepListTest, AStopAtACheckLeavesNoStep) {
  gljz({"sql", "--server", "embedded:" + folder_.file("data"), "--database", "TqData_001_2005", "-q",
        "update gl_mend set bflag=0"});
  start(transfer({"--check", "GL*OpeningInput=True"}), {});
  EXPECT_EQ(finish(), 1);
  EXPECT_EQ(screen(), std::vector<std::string>());
}

TEST_F(StepListTest, APersonPrintsFromTheClosingDialogs) {
  start(transfer({}), {});
  readUntil("q：取消 > ");
  type("");
  readUntil("Enter：确认 > ");
  type("p");
  readUntil("Enter：closing-report.pdf，q：退出 > ");
  type("report.doc");
  readUntil("  ? report.doc");
  readUntil("q：退出 > ");
  type("");
  readUntil("  closing-report.pdf\n");
  readUntil("Enter：确认 > ");
  type("n");
  readUntil("Enter：关闭 > ");
  EXPECT_THAT(seen_, HasSubstr("C006"));
  type("p");
  readUntil("Enter：left-out.pdf，q：退出 > ");
  type("left.txt");
  readUntil("Enter：关闭 > ");
  type("p");
  readUntil("q：退出 > ");
  type("q");
  readUntil("Enter：关闭 > ");
  type("");
  readUntil("Enter：确认 > ");
  type("x");
  readUntil("  ? x");
  readUntil("Enter：确认 > ");
  type("");
  EXPECT_EQ(finish(), 4);
  EXPECT_TRUE(std::filesystem::exists(folder_.file("closing-report.pdf")));
  EXPECT_THAT(contentOf(folder_.file("left.txt")), HasSubstr("无对应记录"));
  EXPECT_FALSE(std::filesystem::exists(folder_.file("left-out.pdf")));
}

// At the conditions, where the selection dialogs store what they confirm.
class ConditionsOnATerminalTest : public StepListTest {
protected:
  std::string rows() const {
    return csv(
        gljz({"sql", "--server", "embedded:" + folder_.file("data"), "--database", "TqData_001_2006", "-q",
              "select * from gl_accsum order by i_id\nGO\nselect * from GL_YeMxSel order by iid", "--format", "csv"}));
  }
  // Moves the first customer account to the other side, and confirms that dialog.
  void divideCustomers() {
    readUntil("q：取消 > ");
    type("5");
    readUntil("q：取消 > ");
    type("c");
    readUntil("Enter：确定 > ");
    type("1");
    readUntil("Enter：确定 > ");
    type("");
    readUntil("q：取消 > ");
  }
  void expectEndBySignal(int signal) {
    while (readSome()) {
    }
    if (!WIFSIGNALED(status_)) {
      ASSERT_EQ(waitpid(child_, &status_, 0), child_);
    }
    EXPECT_TRUE(WIFSIGNALED(status_) && WTERMSIG(status_) == signal) << status_;
  }
};

// Ctrl-C before the run begins leaves everything as it was.
TEST_F(ConditionsOnATerminalTest, AnInterruptChangesNothing) {
  const std::string before = rows();
  start(transfer({}), {});
  readUntil("q：取消 > ");
  ASSERT_EQ(kill(child_, SIGINT), 0);
  expectEndBySignal(SIGINT);
  EXPECT_EQ(rows(), before);
}

TEST_F(ConditionsOnATerminalTest, AnInterruptPutsAConfirmedDivisionBack) {
  const std::string before = rows();
  start(transfer({}), {});
  divideCustomers();
  EXPECT_NE(rows(), before) << "the dialog stores at once";
  ASSERT_EQ(kill(child_, SIGINT), 0);
  expectEndBySignal(SIGINT);
  EXPECT_EQ(rows(), before);
}

// The interrupted dialog confirms itself, as its close box does.
TEST_F(ConditionsOnATerminalTest, AnInterruptInsideASelectionDialogPutsItBackToo) {
  const std::string before = rows();
  start(transfer({}), {});
  readUntil("q：取消 > ");
  type("5 c");
  readUntil("Enter：确定 > ");
  type("all");
  readUntil("Enter：确定 > ");
  ASSERT_EQ(kill(child_, SIGTERM), 0);
  expectEndBySignal(SIGTERM);
  EXPECT_EQ(rows(), before);
}

TEST_F(ConditionsOnATerminalTest, LeavingKeepsAConfirmedDivisionAndSaysSo) {
  const std::string before = rows();
  start(transfer({}), {});
  divideCustomers();
  const std::string divided = rows();
  EXPECT_NE(divided, before);
  type("q");
  EXPECT_EQ(finish(), 1);
  EXPECT_EQ(rows(), divided);
  EXPECT_THAT(contentOf(folder_.file("out")), HasSubstr("已确认的科目划分仍然保留"));
  EXPECT_THAT(contentOf(folder_.file("out")), HasSubstr("\n您退出了结转条件，没有结转任何数据。\n"));
  EXPECT_THAT(contentOf(folder_.file("out")), Not(HasSubstr("Object variable")));
}

TEST_F(ConditionsOnATerminalTest, AConfirmedRunKeepsTheDivision) {
  const std::string query = "select iCusSupType,ccode,iYeMxType from GL_YeMxSel where iCusSupType=1 order by ccode";
  const auto division = [&] {
    return csv(gljz({"sql", "--server", "embedded:" + folder_.file("data"), "--database", "TqData_001_2006", "-q",
                     query, "--format", "csv"}));
  };
  const std::string before = division();
  start(transfer({}), {});
  divideCustomers();
  const std::string chosen = division();
  EXPECT_NE(chosen, before);
  type("");
  readUntil("Enter：确认 > ");
  type("");
  EXPECT_EQ(finish() % 4, 0);
  EXPECT_EQ(division(), chosen);
}

// Once the conditions are confirmed an interrupt ends the program as ever.
TEST_F(ConditionsOnATerminalTest, AnInterruptAtTheClosingReportEndsTheProgram) {
  start(transfer({}), {});
  readUntil("q：取消 > ");
  type("");
  readUntil("Enter：确认 > ");
  ASSERT_EQ(kill(child_, SIGINT), 0);
  expectEndBySignal(SIGINT);
}

TEST_F(ConditionsOnATerminalTest, ADisabledButtonSaysWhy) {
  start(transfer({"--language", "en-US"}), {});
  readUntil("number: toggle, letter: choose accounts, Enter: OK, q: Cancel > ");
  type("c");
  readUntil("  \"Customer accounts by detail...\" is not available: tick \"Customers: carry open items\" first\n");
  readUntil("q: Cancel > ");
  type("q");
  EXPECT_EQ(finish(), 1);
}

TEST_F(ConditionsOnATerminalTest, ThePromptsAreInTheLanguage) {
  start(transfer({"--language", "zh-TW"}), {});
  readUntil("數字：選擇或取消，字母：選擇科目，Enter：");
  type("p");
  readUntil("數字：移到另一邊，all：全部右移，none：全部左移，Enter：");
  type("");
  readUntil("q：取消 > ");
  type("q");
  EXPECT_EQ(finish(), 1);
  EXPECT_THAT(seen_, Not(HasSubstr("number")));
}

}  // namespace
}  // namespace host::test
