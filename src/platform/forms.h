#pragma once
// Forms: dialogs as models without a window, and the host that shows them.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A dialog. The model holds the controls' state and has the event procedures; a view draws it and raises the events.
class Form {
public:
  virtual ~Form() = default;
  virtual std::string_view Name() const = 0;  // "frmJZSN", "frmTranCond", ...
  virtual void Load() {}                      // the load event, raised once before the form first shows
};

// 32-bit colour, 0x00BBGGRR.
using Colour = std::uint32_t;
constexpr Colour rgb(unsigned r, unsigned g, unsigned b) {
  return r | g << 8 | b << 16;
}

// The window system, or what stands in its place.
class FormHost {
public:
  virtual ~FormHost() = default;
  // Shows the form and returns when it has been hidden or unloaded. For frmJZSN that means: fire its timer.
  virtual void ShowModal(Form& form) = 0;
  virtual void Changed(Form& form) = 0;       // a control changed; repaint when convenient
  virtual void DoEvents() = 0;                // let pending window events run
  virtual void ScreenPointer(int shape) = 0;  // 0 default, 11 hourglass
  virtual std::string ProgramFolder()
      const = 0;  // where TransferParameter.xml and glrep/ lie, without a trailing slash
};

// Prints a head layout, a grid and a foot layout.
class PrintControl {
public:
  virtual ~PrintControl() = default;
  struct Job {
    const Form* owner = nullptr;  // the dialog whose window the print belongs to
    std::string formatDatabase;
    std::string headLayout, headTable;
    std::string footLayout, footTable;
    const std::vector<std::vector<std::string>>* grid = nullptr;  // rows of cells, the first is the header row
    std::vector<int> columnWidths;                                // twips
    std::vector<int> alignments;                                  // 0 left, 1 right, 2 centred
    // The print service's own page settings, in its order; a service with a page set-up of its own may leave them.
    struct Settings {
      int first = 9, second = 1;
      bool third = false;
      int fourth = 1, fifth = 30;
      bool sixth = true;
    } settings;
  };
  virtual int Print(const Job& job) = 0;  // 0 done, 1003 the operator left, else an error number
};

}  // namespace platform
