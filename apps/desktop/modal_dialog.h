#pragma once
// ModalDialog: a window over one dialog of the system. It shows the model and raises its events; when an event
// procedure hides the form, the window goes.

#include <QDialog>
#include <exception>
#include <functional>

class QHBoxLayout;
class QPushButton;

namespace gljz {
class Dialog;
struct Button;
}  // namespace gljz

namespace desktop {

class ModalDialog : public QDialog {
public:
  // Shows the window until the form is hidden. A failure of an event procedure ends the window and leaves from here:
  // it belongs to whoever asked for the dialog.
  void showModal();

protected:
  // name: of the form, for those who look for the window.
  ModalDialog(QWidget* parent, const gljz::Dialog& form);

  // Runs an event procedure of the form, then `refresh`.
  void call(const std::function<void()>& procedure);
  virtual void refresh() {}
  // The close box. By default it is a button's: the form decides.
  virtual void closeBox() = 0;
  // The Escape key; the close box, unless leaving that way would do what nobody expects of it.
  virtual void escape() { closeBox(); }
  // What a failure in an event procedure does; the default ends the window.
  virtual void failed(std::exception_ptr failure);

  // A button of the form: its caption, state and tool tip; and the same again in refresh.
  QPushButton* addButton(QHBoxLayout* row, const gljz::Button& button, const QString& name,
                         std::function<void()> procedure);
  void showState(QPushButton& button, const gljz::Button& state) const;

  void closeEvent(QCloseEvent* event) override;
  void reject() override;

private:
  const gljz::Dialog& form_;
  std::exception_ptr failure_;
};

}  // namespace desktop
