// The line editor over libedit.

#include <histedit.h>
#include <langinfo.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "host/display_width.h"
#include "line_editor.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace cli {
namespace {

volatile sig_atomic_t interrupted = 0, resized = 0;

// Sets a signal's handler for as long as a line is read, and lets the signal come only while a key is waited for: one
// that came in between would be noticed with the next key only.
class Handler {
public:
  Handler(int number, void (*handler)(int)) : number_(number) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigaction(number, &action, &before_);
    sigset_t own;
    sigemptyset(&own);
    sigaddset(&own, number);
    sigprocmask(SIG_BLOCK, &own, &mask_);
  }
  ~Handler() {
    sigaction(number_, &before_, nullptr);
    sigprocmask(SIG_SETMASK, &mask_, nullptr);
  }
  Handler(const Handler&) = delete;
  Handler& operator=(const Handler&) = delete;
  const sigset_t& maskBefore() const { return mask_; }

private:
  int number_;
  struct sigaction before_ {};
  sigset_t mask_{};
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
    el_set(editor_.get(), EL_GETCFN, &EditedLines::nextCharacter);
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
    const Handler onInterrupt(SIGINT, [](int) { interrupted = 1; });
    const Handler onResize(SIGWINCH, [](int) { resized = 1; });
    waitingMask_ = &onInterrupt.maskBefore();
    resize();
    // Left to itself the library shows the prompt first: keys that came between prompt and mode were edited by the
    // terminal instead, which knows neither completion nor the width of Chinese.
    el_set(editor_.get(), EL_PREP_TERM, 1);
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

  void resize() {
    if (resized == 0) return;
    resized = 0;
    el_resize(editor_.get());
  }

  // One character of the terminal, as the library asks for it: 1, 0 at the end, -1 after an interrupt.
  static int nextCharacter(EditLine* editor, wchar_t* character) {
    EditedLines& me = self(editor);
    std::mbstate_t state{};
    for (;;) {
      pollfd key{STDIN_FILENO, POLLIN, 0};
      while (ppoll(&key, 1, nullptr, me.waitingMask_) < 0) {
        if (errno != EINTR || interrupted != 0) return -1;
        me.resize();
      }
      char byte = 0;
      const ssize_t n = ::read(STDIN_FILENO, &byte, 1);
      if (n <= 0) return n == 0 ? 0 : -1;
      // Ctrl-D on an empty line ends the input. Typed ahead, while the terminal had its ordinary mode, it comes as 0.
      constexpr char ctrlD = 4, ctrlDTypedAhead = 0;
      if ((byte == ctrlD || byte == ctrlDTypedAhead) && me.isEmpty()) return 0;
      const std::size_t used = std::mbrtowc(character, &byte, 1, &state);
      if (used == static_cast<std::size_t>(-2)) continue;  // more bytes of it are to come
      if (used != static_cast<std::size_t>(-1)) return 1;
      state = {};  // no character: what comes next may be one
    }
  }

  bool isEmpty() {
    const LineInfo* line = el_line(editor_.get());
    return line->buffer == line->lastchar;
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
  const sigset_t* waitingMask_ = nullptr;  // of the signals that wait, while a line is read
  std::string prompt_;
  Completer completer_;
};

}  // namespace

std::unique_ptr<LineEditor> makeLineEditor(const std::vector<std::string>& entries, Completer completer) {
  return std::make_unique<EditedLines>(entries, std::move(completer));
}

}  // namespace cli
