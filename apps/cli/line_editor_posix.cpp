// The line editor over libedit.

#include <histedit.h>
#include <langinfo.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>

#include "host/display_width.h"
#include "line_editor.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace cli {
namespace {

volatile sig_atomic_t interrupted = 0, resized = 0;

// Sets a signal's handler for as long as a line is read. A read that SIGINT meets ends; one that SIGWINCH meets goes
// on.
class Handler {
public:
  Handler(int number, void (*handler)(int), int flags) : number_(number) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(number, &action, &before_);
  }
  ~Handler() { sigaction(number_, &before_, nullptr); }
  Handler(const Handler&) = delete;
  Handler& operator=(const Handler&) = delete;

private:
  int number_;
  struct sigaction before_ {};
};

// The editor counts columns by the locale: without UTF-8 a Chinese character would be three strange ones.
void useUtf8() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
}

std::size_t characters(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

class EditedLines final : public LineEditor {
public:
  EditedLines(const std::vector<std::string>& entries, Completer completer) : completer_(std::move(completer)) {
    useUtf8();
    // The prompt is no result: it stays away from an output that goes somewhere else.
    FILE* screen = isatty(STDOUT_FILENO) != 0 ? stdout : stderr;
    editor_.reset(el_init("gljz", stdin, screen, stderr));
    history_.reset(history_init());
    HistEvent event;
    history(history_.get(), &event, H_SETSIZE, 2000);
    history(history_.get(), &event, H_SETUNIQUE, 1);
    for (const std::string& e : entries) history(history_.get(), &event, H_ENTER, e.c_str());
    el_set(editor_.get(), EL_CLIENTDATA, this);
    el_set(editor_.get(), EL_HIST, history, history_.get());
    el_set(editor_.get(), EL_EDITOR, "emacs");
    el_set(editor_.get(), EL_PROMPT, &EditedLines::promptOf);
    addCompletion();
    const auto bind = [&](const char* keys, const char* command) {
      el_set(editor_.get(), EL_BIND, keys, command, nullptr);
    };
    bind("\t", "complete-word");
    bind("^R", "em-inc-search-prev");
    bind("\\e[3~", "ed-delete-next-char");
    bind("\\e[H", "ed-move-to-beg");
    bind("\\e[F", "ed-move-to-end");
    bind("\\e[1;5C", "em-next-word");
    bind("\\e[1;5D", "ed-prev-word");
    el_source(editor_.get(), nullptr);  // the person's own ~/.editrc
  }

  End read(const std::string& prompt, std::string& line) override {
    prompt_ = prompt;
    interrupted = 0;
    const Handler onInterrupt(
        SIGINT, [](int) { interrupted = 1; }, 0);
    const Handler onResize(
        SIGWINCH, [](int) { resized = 1; }, SA_RESTART);
    if (resized != 0) {
      resized = 0;
      el_resize(editor_.get());
    }
    int count = 0;
    const char* text = el_gets(editor_.get(), &count);
    if (interrupted != 0) {
      el_reset(editor_.get());
      std::fputs("^C\n", stderr);
      return End::dropped;
    }
    if (!text || count <= 0) return End::closed;
    line.assign(text, static_cast<std::size_t>(count));
    if (line.ends_with('\n')) line.pop_back();
    return End::line;
  }

  void remember(const std::string& entry) override {
    HistEvent event;
    history(history_.get(), &event, H_ENTER, entry.c_str());
  }

private:
  // The library keeps copies of both texts and never frees them; a leak checker is not to hear of it.
  void addCompletion() {
#if defined(__SANITIZE_ADDRESS__)
    const __lsan::ScopedDisabler quiet;
#endif
    el_set(editor_.get(), EL_ADDFN, "complete-word", "complete the word", &EditedLines::complete);
  }

  static EditedLines& self(EditLine* editor) {
    EditedLines* found = nullptr;
    el_get(editor, EL_CLIENTDATA, &found);
    return *found;
  }

  static char* promptOf(EditLine* editor) {
    return self(editor).prompt_.data();
  }

  static bool inWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '#' || c == ':' || (c & 0x80) != 0;
  }

  static unsigned char complete(EditLine* editor, int) {
    EditedLines& me = self(editor);
    const LineInfo* info = el_line(editor);
    const char* begin = info->cursor;
    while (begin > info->buffer && inWord(begin[-1])) --begin;
    const std::string word(begin, info->cursor);
    const auto words = me.completer_(word);
    if (words.empty()) return CC_REFRESH_BEEP;
    std::string common = words.front();
    for (const std::string& w : words)
      common.resize(static_cast<std::size_t>(std::mismatch(common.begin(), common.end(), w.begin(), w.end()).first -
                                             common.begin()));
    while (!common.empty() && (static_cast<unsigned char>(common.back()) & 0xC0) == 0x80) common.pop_back();
    if (common.size() >= word.size() && (common != word || words.size() == 1)) {
      el_deletestr(editor, static_cast<int>(characters(word)));
      el_insertstr(editor, (common + (words.size() == 1 ? " " : "")).c_str());
      return CC_REFRESH;
    }
    me.show(words);
    return CC_REDISPLAY;
  }

  // Below the line, as many as fit side by side.
  void show(const std::vector<std::string>& words) {
    constexpr std::size_t most = 200;
    std::size_t widest = 1;
    for (const std::string& w : words) widest = std::max(widest, host::displayWidth(w));
    FILE* screen = nullptr;
    el_get(editor_.get(), EL_GETFP, 1, &screen);
    const std::size_t columns = std::max<std::size_t>(1, 78 / (widest + 2));
    for (std::size_t i = 0; i < std::min(words.size(), most); ++i)
      std::fprintf(screen, "%s%s", i % columns == 0 ? "\n" : "  ", host::paddedToWidth(words[i], widest).c_str());
    std::fputs(words.size() > most ? "\n...\n" : "\n", screen);
  }

  struct EndEditor {
    void operator()(EditLine* e) const { el_end(e); }
  };
  struct EndHistory {
    void operator()(History* h) const { history_end(h); }
  };
  std::unique_ptr<History, EndHistory> history_;
  std::unique_ptr<EditLine, EndEditor> editor_;
  std::string prompt_;
  Completer completer_;
};

}  // namespace

std::unique_ptr<LineEditor> makeLineEditor(const std::vector<std::string>& entries, Completer completer) {
  return std::make_unique<EditedLines>(entries, std::move(completer));
}

}  // namespace cli
