#include "progress.h"

#include <chrono>
#include <cstdio>

#include "host/display_width.h"
#include "terminal.h"

namespace cli {
namespace {

class LiveLine final : public host::ProgressSink {
public:
  ~LiveLine() override { clear(); }
  void stepBegan(const std::string& text) override {
    step_ = text;
    caption_.clear();
    draw();
  }
  void stepDone(const std::string& text) override {
    clear();
    std::fprintf(stderr, "%s Y\n", text.c_str());
  }
  // Captions change with every row; a person reads some ten a second.
  void caption(const std::string& text) override {
    caption_ = text;
    const auto now = std::chrono::steady_clock::now();
    if (now - drawn_ >= std::chrono::milliseconds(100)) draw();
  }
  void ended() override { clear(); }

private:
  void draw() {
    drawn_ = std::chrono::steady_clock::now();
    const std::string line = host::fittedToWidth(step_ + "  " + caption_, errorWidth() - 1);
    std::fprintf(stderr, "\r\x1b[K%s", line.c_str());
    std::fflush(stderr);
    shown_ = true;
  }
  void clear() {
    if (shown_) std::fputs("\r\x1b[K", stderr);
    shown_ = false;
  }
  std::string step_, caption_;
  std::chrono::steady_clock::time_point drawn_;
  bool shown_ = false;
};

class Lines final : public host::ProgressSink {
public:
  void stepBegan(const std::string&) override {}
  void stepDone(const std::string& text) override { std::fprintf(stderr, "%s Y\n", text.c_str()); }
  void caption(const std::string&) override {}
  void ended() override {}
};

}  // namespace

std::unique_ptr<host::ProgressSink> makeProgress(bool quiet) {
  if (quiet) return nullptr;
  if (errorIsTerminal()) return std::make_unique<LiveLine>();
  return std::make_unique<Lines>();
}

}  // namespace cli
