#pragma once
// Autopilot: a person for the modal windows, for tests and for screenshots. A modal window keeps the call that opened
// it waiting, so whoever presses its buttons has to have been told before.
//
//   Autopilot pilot;
//   pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
//   pilot.then("frmJZBG", [](QWidget& w) { press(w, "Command3"); });
//   window.carry(host::Entry::transfer);
//   pilot.left();      // names that never came

#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace desktop {

class Autopilot {
public:
  Autopilot();

  // Each step waits for a modal window of the name on top, painted once, and is then done once. Steps go in order.
  // ready: what it waits for in the window besides; none: nothing.
  using Step = std::function<void(QWidget& window)>;
  using Ready = std::function<bool(const QWidget& window)>;
  void then(const std::string& name, Step step, Ready ready = {});
  std::vector<std::string> left() const;
  // Steps that threw, and windows that closed because no step came for them: both are told here, so that the road ends.
  const std::vector<std::string>& failures() const { return failures_; }

private:
  void look();

  struct Waiting {
    std::string name;
    Step step;
    Ready ready;
  };
  std::deque<Waiting> steps_;
  std::vector<std::string> failures_;
  QTimer timer_;
  int waited_ = 0;  // milliseconds
};

// Clicks the button of that object name. std::logic_error when there is none, it is hidden or disabled.
void press(QWidget& window, const char* button);

}  // namespace desktop
