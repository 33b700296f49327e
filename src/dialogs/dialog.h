#pragma once
// Dialog: what the forms of the system share, and the one instance that each of them has.
//
//   frmTranCond().ShowModal();   // the first reference creates and loads the form
//   frmTranCond.unload();        // the next reference starts with a fresh one

#include <functional>
#include <string>
#include <string_view>

#include "platform/forms.h"
#include "platform/surroundings.h"

namespace gljz {

class Dialog : public platform::Form {
public:
  // Shows the form and returns when it has been hidden or unloaded.
  void ShowModal() {
    visible_ = true;
    platform::surroundings().forms->ShowModal(*this);
    visible_ = false;
  }
  void Hide() {
    visible_ = false;
    changed();
  }
  // A window host keeps the form on the screen while this holds; Changed is raised when it ends.
  bool visible() const { return visible_; }

  // Every caption that the form is designed with, by the name of its control; the form's own has an empty name. This is
  // what language resources replace when the form loads: what the form's code sets later stands.
  using CaptionVisitor = std::function<void(std::string_view control, std::string& caption)>;
  virtual void visitCaptions(const CaptionVisitor&) {}

protected:
  void changed() { platform::surroundings().forms->Changed(*this); }

private:
  bool visible_ = false;
};

// The process-wide instance of a form: it exists from the first reference, which raises its load event, until unload.
// The object's address stays the same, so that an event procedure may unload its own form.
template <class F>
class DefaultInstance {
public:
  F& operator()() {
    if (!loaded_) load();
    return form_;
  }
  bool isLoaded() const { return loaded_; }
  void unload() {
    if (!loaded_) return;
    loaded_ = false;
    form_.Hide();
  }

private:
  void load() {
    form_ = F();
    loaded_ = true;
    try {
      form_.Load();
    } catch (...) {
      loaded_ = false;
      throw;
    }
  }

  F form_;
  bool loaded_ = false;
};

}  // namespace gljz
