#pragma once
// frmJZSN on the screen. The run happens inside its timer event, so the window paints when the run lets events through.

#include <QElapsedTimer>
#include <QTimer>
#include <array>
#include <cstdint>
#include <functional>

#include "dialogs/frm_jzsn.h"
#include "modal_dialog.h"

class QLabel;
class QProgressBar;

namespace desktop {

class Texts;

class ProgressWindow final : public ModalDialog {
public:
  // rowsWritten: by the run so far; may be empty.
  ProgressWindow(QWidget* parent, gljz::FrmJZSN& form, const Texts& texts, std::function<std::int64_t()> rowsWritten);

  // The form changed, or the run lets events through. Neither is worth a repaint each time: a person reads some twenty
  // captions a second, the run sets thousands.
  void changed() { dirty_ = true; }
  void doEvents();
  // Milliseconds between two repaints. 0, for pictures: every change is seen.
  static inline int repaintEvery = 40;
  // Shows the form as it is, however recently it was painted: nothing may come behind this that lets events through.
  void paintNow();

protected:
  void refresh() override;
  void closeBox() override {}  // nothing stops a run from here
  void failed(std::exception_ptr failure) override;

private:
  struct Line {
    QLabel *text, *mark;
  };

  gljz::FrmJZSN& form_;
  const Texts& texts_;
  std::function<std::int64_t()> rowsWritten_;
  std::int64_t rowsBefore_;  // written before the run began, by the dialogs in front of it
  QTimer timer_;
  QElapsedTimer sinceStart_, sincePaint_;
  std::array<Line, gljz::FrmJZSN::stepCount> lines_{};
  QLabel *caption_, *status_;
  QProgressBar* bar_;
  bool dirty_ = false, passing_ = false;
};

}  // namespace desktop
