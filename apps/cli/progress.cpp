#include "progress.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

#include "host/display_width.h"
#include "host/messages.h"
#include "terminal.h"

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

// Captions change with every row; a person reads some ten a second.
constexpr auto redrawEvery = std::chrono::milliseconds(100);

class LiveList final : public host::ProgressSink {
public:
  LiveList(bool colours, const std::string& language) : colours_(colours), messages_(language) {}
  ~LiveList() override { settle(); }

  void began(const std::vector<std::string>& steps, std::function<std::int64_t()> rowsWritten) override {
    steps_.clear();
    for (const std::string& text : steps) steps_.push_back({text, State::waiting});
    rowsWritten_ = std::move(rowsWritten);
    caption_.clear();
    settled_ = 0;
    start_ = Clock::now();
    draw();
  }
  void stepBegan(const std::string& text) override {
    set(text, State::running);
    caption_.clear();
    draw();
  }
  void stepDone(const std::string& text) override {
    set(text, State::done);
    draw();
  }
  void caption(const std::string& text) override {
    caption_ = text;
    if (Clock::now() - drawn_ >= redrawEvery) draw();
  }
  void paused() override { settle(); }
  void ended() override {
    settle();
    rowsWritten_ = nullptr;  // what it counts goes with the run
  }

private:
  enum class State { waiting, running, done };
  struct Line {
    std::string text;
    State state;
  };

  void set(const std::string& text, State state) {
    const auto found = std::find_if(steps_.begin(), steps_.end(), [&](const Line& l) { return l.text == text; });
    if (found != steps_.end()) found->state = state;
  }

  std::string coloured(const char* colour, const std::string& text) const {
    return colours_ ? std::string("\x1b[") + colour + "m" + text + "\x1b[0m" : text;
  }
  std::string drawn(const Line& line, std::size_t width) const {
    const std::string text = host::fittedToWidth(line.text, width > 4 ? width - 4 : width);
    switch (line.state) {
      case State::running:
        return coloured("31", "> " + text);
      case State::done:
        return "  " + text + coloured("32", " Y");
      case State::waiting:
        break;
    }
    return coloured("2", "  " + text);
  }
  std::string status(std::size_t width) const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start_).count();
    char time[32];
    std::snprintf(time, sizeof time, "%d:%02d", static_cast<int>(seconds / 60), static_cast<int>(seconds % 60));
    std::string text =
        messages_.text("Gljz.Host.Progress.Rows", {std::to_string(rowsWritten_ ? rowsWritten_() : 0)}) + "  " + time;
    if (!caption_.empty()) text += "  " + caption_;
    return host::fittedToWidth("  " + text, width);
  }

  void draw() {
    constexpr std::size_t linesBeside = 3;  // the status and what stands above
    drawn_ = Clock::now();
    const std::size_t width = errorWidth() - 1;
    const bool whole = errorHeight() >= steps_.size() + linesBeside;
    std::string out = back();
    std::size_t lines = 0;
    for (const Line& line : steps_) {
      if (!whole && line.state != State::running) continue;
      out += drawn(line, width) + "\x1b[K\n";
      ++lines;
    }
    out += status(width) + "\x1b[K\x1b[J";
    std::fputs(out.c_str(), stderr);
    std::fflush(stderr);
    above_ = lines;
    shown_ = true;
  }
  // To the first column of the first line of what is drawn.
  std::string back() const {
    if (!shown_) return {};
    return "\r" + (above_ > 0 ? "\x1b[" + std::to_string(above_) + "A" : std::string());
  }
  // In place of the list, a line for each finished step that has none yet: they stay.
  void settle() {
    if (!shown_) return;
    std::string out = back() + "\x1b[J";
    std::size_t done = 0;
    for (const Line& line : steps_)
      if (line.state == State::done && ++done > settled_) out += line.text + " Y\n";
    settled_ = done;
    std::fputs(out.c_str(), stderr);
    std::fflush(stderr);
    shown_ = false;
  }

  bool colours_;
  host::Messages messages_;
  std::vector<Line> steps_;
  std::function<std::int64_t()> rowsWritten_;
  std::string caption_;
  std::size_t settled_ = 0, above_ = 0;
  Clock::time_point start_, drawn_;
  bool shown_ = false;
};

class Lines final : public host::ProgressSink {
public:
  void began(const std::vector<std::string>&, std::function<std::int64_t()>) override {}
  void stepBegan(const std::string&) override {}
  void stepDone(const std::string& text) override { std::fprintf(stderr, "%s Y\n", text.c_str()); }
  void caption(const std::string&) override {}
  void paused() override {}
  void ended() override {}
};

}  // namespace

std::unique_ptr<host::ProgressSink> makeProgress(bool quiet, const std::string& language) {
  if (quiet) return nullptr;
  if (errorTakesEscapes()) return std::make_unique<LiveList>(errorTakesColours(), language);
  return std::make_unique<Lines>();
}

}  // namespace cli
