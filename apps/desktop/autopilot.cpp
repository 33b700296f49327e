#include "autopilot.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <stdexcept>

#include "texts.h"

namespace desktop {
namespace {

constexpr int lookEvery = 15, patience = 8000;  // milliseconds

}  // namespace

Autopilot::Autopilot() {
  QObject::connect(&timer_, &QTimer::timeout, [this] { look(); });
  timer_.setSingleShot(true);
  timer_.start(lookEvery);
}

void Autopilot::then(const std::string& name, Step step, Ready ready) {
  steps_.push_back({name, std::move(step), std::move(ready)});
  waited_ = 0;
}

std::vector<std::string> Autopilot::left() const {
  std::vector<std::string> names;
  for (const Waiting& step : steps_) names.push_back(step.name);
  return names;
}

void Autopilot::look() {
  timer_.start(lookEvery);  // anew each time: a timer does not fire within its own event, where most steps are walked
  QWidget* top = QApplication::activeModalWidget();
  if (!top || !top->isVisible()) {
    waited_ = 0;
    return;
  }
  const std::string name = utf8(top->objectName());
  const bool itsTurn = !steps_.empty() && steps_.front().name == name;
  if (itsTurn && steps_.front().ready && !steps_.front().ready(*top)) {
    timer_.start(0);  // with every event that the window lets through: what is waited for may be short
    return;
  }
  if (itsTurn) {
    const Step step = std::move(steps_.front().step);
    steps_.pop_front();
    waited_ = 0;
    try {
      step(*top);  // may open the next window and return when it has closed
    } catch (const std::exception& e) {
      failures_.push_back(name + ": " + e.what());
      top->close();
    }
    return;
  }
  // A run needs its time; every other window waits for somebody.
  if (name == "frmJZSN" || (waited_ += lookEvery) < patience) return;
  waited_ = 0;
  failures_.push_back(name + ": nobody closed it");
  top->close();
}

void press(QWidget& window, const char* name) {
  auto* button = window.findChild<QPushButton*>(name);
  if (!button || !button->isVisible() || !button->isEnabled())
    throw std::logic_error(utf8(window.objectName()) + " has no button " + name + " to press");
  button->click();
}

}  // namespace desktop
