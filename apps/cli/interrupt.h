#pragma once
// HeldInterrupt: Ctrl-C at a question waits until what has to be put back has been put back.
//
//   HeldInterrupt held;
//   if (!held.waitForInput()) ...   // the person wants to leave: put things back, and then
//   held.end();                     // the program ends as the interrupt would have ended it
//
// One at a time, on the thread that asks.

namespace cli {

class HeldInterrupt {
public:
  HeldInterrupt();
  // Interrupts end the program again; one that came and was not answered with end() does so now.
  ~HeldInterrupt();
  HeldInterrupt(const HeldInterrupt&) = delete;
  HeldInterrupt& operator=(const HeldInterrupt&) = delete;

  // Until standard input, a terminal, has a line or has ended. False: an interrupt came, now or earlier.
  bool waitForInput();
  bool interrupted() const;
  [[noreturn]] void end();
};

}  // namespace cli
