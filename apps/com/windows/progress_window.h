#pragma once
// frmJZSN on the screen. The run happens inside its timer event, on the thread that called, so the window paints when
// the run lets events through.

#include <array>

#include "dialogs/frm_jzsn.h"
#include "modal_window.h"

namespace windows {

class ProgressWindow final : public ModalWindow {
public:
  ProgressWindow(const WindowContext& context, gljz::FrmJZSN& form);

  void changed() override;
  // Neither a change nor this is worth a repaint each time: a person reads some twenty captions a second, the run sets
  // thousands.
  void doEvents();
  void paint();  // what has changed until now, as before a dialog comes over it

protected:
  void refresh() override;
  void closeBox() override {}  // nothing stops a run from here
  SIZE preferredSize() const override;
  void arrange(int width, int height) override;
  HWND firstFocus() const override { return handle(); }
  void opened() override;
  std::optional<COLORREF> inkOf(int id) const override;
  int pointer() const override { return form_.MousePointer(); }
  void timer() override;

private:
  struct Line {
    HWND text, mark;
    COLORREF ink;
  };

  gljz::FrmJZSN& form_;
  std::array<Line, gljz::FrmJZSN::stepCount> lines_{};
  HWND caption_, first_, second_;
  ULONGLONG painted_ = 0;  // milliseconds of the system's clock
  bool dirty_ = false, passing_ = false;
};

}  // namespace windows
