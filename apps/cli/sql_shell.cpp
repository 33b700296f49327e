#include "sql_shell.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "embedded/describe.h"
#include "embedded/interrupt.h"
#include "host/display_width.h"
#include "host/usage_error.h"
#include "line_editor.h"
#include "platform/run_time_error.h"
#include "platform/value.h"
#include "result_writer.h"
#include "sql_commands.h"
#include "sql_history.h"
#include "terminal.h"
#include "tsql/parser.h"

namespace cli {
namespace {

// While it lives Ctrl-C ends the batch that runs, not the program.
class EndBatchOnInterrupt {
public:
  explicit EndBatchOnInterrupt(embedded::Session& session) : interrupter_(session) {
    running_ = &interrupter_;
    before_ = std::signal(SIGINT, [](int) {
      if (const auto* i = running_) (*i)();
    });
  }
  ~EndBatchOnInterrupt() {
    std::signal(SIGINT, before_);
    running_ = nullptr;
  }
  EndBatchOnInterrupt(const EndBatchOnInterrupt&) = delete;
  EndBatchOnInterrupt& operator=(const EndBatchOnInterrupt&) = delete;

private:
  static inline const embedded::Interrupter* volatile running_ = nullptr;
  embedded::Interrupter interrupter_;
  void (*before_)(int) = SIG_DFL;
};

// Between a line that was read and the batch that it begins, Ctrl-C does nothing: it must not end the program that is
// about to say what a batch has done.
class PassOverInterrupt {
public:
  PassOverInterrupt() : before_(std::signal(SIGINT, [](int) {})) {}
  ~PassOverInterrupt() { std::signal(SIGINT, before_); }
  PassOverInterrupt(const PassOverInterrupt&) = delete;
  PassOverInterrupt& operator=(const PassOverInterrupt&) = delete;

private:
  void (*before_)(int);
};

// The line of the batch that the failure names, with a mark below the place. Empty where the place is another text's,
// a procedure's for one.
std::string placeOf(const tsql::SqlError& e, const std::string& batch) {
  if (e.pos.offset == 0 || e.pos.offset > batch.size()) return "";
  for (const auto& s : {"exec", "EXEC", "Exec"})
    if (batch.find(s) != std::string::npos) return "";
  const std::size_t begin = e.pos.offset == 0 ? 0 : batch.rfind('\n', e.pos.offset - 1) + 1;
  const std::size_t end = std::min(batch.find('\n', begin), batch.size());
  const std::string before = batch.substr(begin, e.pos.offset - begin);
  return "  " + batch.substr(begin, end - begin) + "\n  " + std::string(host::displayWidth(before), ' ') + "^\n";
}

bool startsWithLetters(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && platform::equalsIgnoreCase(text.substr(0, word.size()), word);
}

class Shell {
public:
  Shell(embedded::Server& server, embedded::Session& session, const std::string& format)
      : session_(session), commands_(server, session), format_(format) {
    editor_ = makeLineEditor(history_.entries(), [this](std::string_view word) { return completions(word); });
  }

  int run() {
    const PassOverInterrupt guard;
    std::fprintf(stderr, "Batches run at GO on a line of its own; :help lists the commands.\n");
    std::string line;
    for (;;) {
      switch (editor_->read(prompt(), line)) {
        case LineEditor::End::dropped:
          remember(pending());
          lines_.clear();
          break;
        case LineEditor::End::closed:
          return leave(true);
        case LineEditor::End::line:
          if (!take(line)) return leave(false);
      }
    }
  }

private:
  static TableLook look() {
    const char* noColour = std::getenv("NO_COLOR");
    return {outputWidth(), outputIsTerminal() && (!noColour || *noColour == '\0')};
  }

  // "TqData_001_2006 1> ", and a star while a transaction is open.
  std::string prompt() const {
    std::string text = session_.database();
    if (session_.inTransaction()) text += '*';
    if (!text.empty()) text += ' ';
    return text + std::to_string(lines_.size() + 1) + "> ";
  }

  std::string pending() const {
    std::string text;
    for (const std::string& line : lines_) text += line + '\n';
    return text;
  }

  // False: the person wants to leave. A recalled entry brings several lines.
  bool take(const std::string& text) {
    for (std::size_t at = 0; at <= text.size();) {
      const std::size_t end = std::min(text.find('\n', at), text.size());
      if (!takeLine(text.substr(at, end - at))) return false;
      at = end + 1;
    }
    return true;
  }

  bool takeLine(const std::string& line) {
    const std::string word = platform::trim(line);
    if (platform::equalsIgnoreCase(word, "go")) {
      runBatch();
    } else if (word.starts_with(':') && !insideText()) {
      return command(word);
    } else if (!word.empty() || !lines_.empty()) {
      lines_.push_back(line);
    }
    return true;
  }

  // An unclosed text or comment swallows what looks like a command.
  bool insideText() const {
    try {
      tsql::lex(pending());
      return false;
    } catch (const tsql::SqlError& e) {
      return e.number == 105 || e.number == 113;
    }
  }

  void runBatch() {
    const std::string batch = pending();
    lines_.clear();
    if (platform::trim(batch).empty()) return;
    remember(batch);
    last_ = batch;
    const auto writer = makeResultWriter(format_, look());  // the window may have another width by now
    writer->sayFailuresAs([&](const tsql::SqlError& e) { return failureText(e, batch); });
    const auto begin = std::chrono::steady_clock::now();
    {
      const EndBatchOnInterrupt guard(session_);
      session_.execute(batch, *writer);
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::fflush(stdout);
    std::fprintf(stderr, "%.3f s\n", seconds);
  }

  bool command(const std::string& line) {
    remember(line);
    const std::string typed = pending();
    try {
      const EndBatchOnInterrupt guard(session_);
      const auto answer = commands_.run(line, typed.empty() ? last_ : typed, look());
      std::fputs(answer.text.c_str(), stdout);
      std::fflush(stdout);
      return !answer.leave;
    } catch (const tsql::SqlError& e) {
      std::fputs(failureText(e, "").c_str(), stderr);
    } catch (const platform::RunTimeError& e) {
      std::fprintf(stderr, "%s\n", e.description().c_str());
    } catch (const host::UsageError& e) {
      std::fprintf(stderr, "%s\n", e.what());
    }
    return true;
  }

  static std::string failureText(const tsql::SqlError& e, const std::string& batch) {
    return "Msg " + std::to_string(e.number) + ", Level " + std::to_string(e.severity) + ", Line " +
           std::to_string(e.pos.line) + "\n" + e.what() + "\n" + placeOf(e, batch);
  }

  void remember(std::string entry) {
    while (entry.ends_with('\n')) entry.pop_back();
    if (entry.empty()) return;
    history_.add(entry);
    editor_->remember(entry);
    if (history_.trouble().empty() || saidTrouble_) return;
    std::fprintf(stderr, "%s\n", history_.trouble().c_str());
    saidTrouble_ = true;
  }

  int leave(bool newLine) {
    if (newLine) std::fputs("\n", stderr);
    if (!lines_.empty()) {
      remember(pending());
      std::fputs("what was typed last did not run: there was no GO behind it\n", stderr);
    }
    if (session_.inTransaction()) std::fputs("the open transaction is undone\n", stderr);
    return 0;
  }

  // Tables, columns and commands; keywords are quicker typed.
  std::vector<std::string> completions(std::string_view word) {
    std::vector<std::string> found;
    if (word.empty()) return found;
    const auto offer = [&](const std::string& name) {
      if (startsWithLetters(name, word)) found.push_back(name);
    };
    if (word[0] == ':') {
      for (const std::string& name : SqlCommands::names()) offer(name);
      return found;
    }
    try {
      for (const std::string& table : embedded::tableNames(session_)) {
        offer(table);
        if (const auto definition = embedded::tableDefinition(session_, "[" + table + "]"))
          for (const auto& column : definition->columns) offer(column.name);
      }
    } catch (const std::exception&) {
      found.clear();  // a name that cannot be looked up now is none to offer
    }
    std::sort(found.begin(), found.end());
    // One spelling of each: tables share their columns' names in different letters.
    found.erase(std::unique(found.begin(), found.end(),
                            [](const auto& a, const auto& b) { return platform::equalsIgnoreCase(a, b); }),
                found.end());
    return found;
  }

  embedded::Session& session_;
  SqlCommands commands_;
  std::string format_;
  SqlHistory history_;
  std::unique_ptr<LineEditor> editor_;
  std::vector<std::string> lines_;
  std::string last_;  // the batch that ran last
  bool saidTrouble_ = false;
};

}  // namespace

int runSqlShell(const std::shared_ptr<embedded::Server>& server, embedded::Session& session,
                const std::string& format) {
  return Shell(*server, session, format).run();
}

}  // namespace cli
