#pragma once
// frmYeMxSel and frmSyKmSel on the screen, and frmTwo.

#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_two.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "double_list_view.h"
#include "modal_window.h"

namespace windows {

// A double list in its frame, a note below it, and buttons.
class SelectionWindow : public ModalWindow {
protected:
  struct Texts {
    const std::string &caption, &frame, &leftTitle, &rightTitle, &note;
    int noteId;
  };
  SelectionWindow(const WindowContext& context, const gljz::Dialog& form, const Texts& texts, gljz::DoubleList& list);
  void addClosing(HWND left, HWND right) { leftButton_ = left, rightButton_ = right; }  // left: null for none

  void refresh() override { lists_.refresh(); }
  SIZE preferredSize() const override;
  SIZE smallestSize() const override;
  void arrange(int width, int height) override;
  HWND firstFocus() const override { return lists_.firstFocus(); }
  bool listSays(int id, int notification) override;
  bool listKey(HWND list, WORD key) override;

private:
  int around(int width) const;  // height of everything but the lists

  HWND frame_;
  DoubleListView lists_;
  HWND note_, leftButton_ = nullptr, rightButton_ = nullptr;
};

class DivisionWindow final : public SelectionWindow {
public:
  DivisionWindow(const WindowContext& context, gljz::FrmYeMxSel& form);
};

class ClearingWindow final : public SelectionWindow {
public:
  ClearingWindow(const WindowContext& context, gljz::FrmSyKmSel& form);
};

class QuestionWindow final : public ModalWindow {
public:
  QuestionWindow(const WindowContext& context, gljz::FrmTwo& form);

protected:
  SIZE preferredSize() const override;
  void arrange(int width, int height) override;
  HWND firstFocus() const override { return first_; }

private:
  int textWidth() const;

  HWND image_, heading_, note_, first_, second_;
};

}  // namespace windows
