#pragma once
// The program on a terminal of its own: what a person types, and what the terminal shows.
//
//   TerminalSession t({"sql", "--server", server()}, folder);
//   t.expect("1> ");
//   t.send("select 1\rGO\r");
//   t.expect("(1 row)");

#include <string>
#include <vector>

#include "host/temporary_folder.h"

namespace host::test {

class TerminalSession {
public:
  // home: where the program finds its user's files, its history for one.
  TerminalSession(const std::vector<std::string>& words, const TemporaryFolder& home, int columns = 100,
                  bool colours = false);
  ~TerminalSession();  // ends the program if it still runs
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;

  // Waits until the text is shown behind what was waited for last, and gives what was shown up to its end. After 30
  // seconds without it the test fails, with all that was shown.
  std::string expect(const std::string& text);
  // The same for so many milliseconds, and without a failure.
  bool expectWithin(const std::string& text, int milliseconds);
  void send(const std::string& keys);
  bool ended() const { return ended_; }  // as far as was read
  // Waits for the program's end. Its exit code, -1 when a signal ended it.
  int finish();
  const std::string& shown() const { return shown_; }

private:
  bool readMore(int milliseconds);

  int terminal_ = -1, process_ = -1;
  std::string shown_, part_;
  std::size_t seen_ = 0;
  bool ended_ = false;
};

}  // namespace host::test
