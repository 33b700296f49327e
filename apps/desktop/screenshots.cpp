#include "screenshots.h"

#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPixmap>
#include <QSettings>
#include <QTemporaryDir>
#include <stdexcept>

#include "ask.h"
#include "autopilot.h"
#include "core/mdu_jz.h"
#include "dialog_windows.h"
#include "dialogs/frm_tran_cond.h"
#include "dialogs/frm_two.h"
#include "host/demo.h"
#include "host/form_captions.h"
#include "progress_window.h"
#include "report_windows.h"
#include "selection_windows.h"
#include "start_window.h"

namespace desktop {
namespace {

// The pictures show the folder that they are about, not where this machine keeps what is temporary.
class WithinFolder {
public:
  explicit WithinFolder(const QString& folder) : before_(QDir::currentPath()) {
    if (!QDir::setCurrent(folder)) throw std::runtime_error(utf8(folder) + " cannot be entered");
  }
  ~WithinFolder() { QDir::setCurrent(before_); }
  WithinFolder(const WithinFolder&) = delete;
  WithinFolder& operator=(const WithinFolder&) = delete;

private:
  QString before_;
};

class Camera {
public:
  // folder: absolute.
  Camera(const std::string& folder, const std::string& language) : folder_(folder), language_(language) {}

  void take(QWidget& window, const std::string& name) const {
    const std::string file = folder_ + "/" + language_ + "-" + name + ".png";
    if (!window.grab().save(shown(file), "PNG")) throw std::runtime_error(file + " cannot be written");
  }

private:
  std::string folder_, language_;
};

// Nobody is there to be asked.
class NobodyToAsk final : public Ask {
public:
  std::string saveFile(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  bool hasPrinters() override { return false; }
  void complain(QWidget*, const QString&, const QString& text) override { throw std::runtime_error(utf8(text)); }
  bool open(const QString&) override { return true; }
};

void tick(QWidget& window, const std::string& text) {
  auto* list = window.findChild<QListWidget*>("lvCond");
  for (int i = 0; i < list->count(); ++i)
    if (utf8(list->item(i)->text()) == text) list->item(i)->setCheckState(Qt::Checked);
}

// In the middle of the run: some of the steps are done, and one is under way.
bool isUnderWay(const QWidget& window) {
  const auto text = [&](const QString& name) { return window.findChild<QLabel*>(name)->text(); };
  return text("Label2_3") == "Y" && text("Label2_6").isEmpty();
}

// The road of a carry-forward with open items by detail, every window on it photographed.
void tellRoad(Autopilot& pilot, const Camera& camera, StartWindow& start) {
  pilot.then("parameters", [&](QWidget& w) {
    camera.take(w, "parameters");
    press(w, "close");
  });
  pilot.then("frmTranCond", [&](QWidget& w) {
    for (const auto& item : gljz::frmTranCond().lvCond)
      for (const char* key : {"GL*PersonMXJZ", "GL*CusMXJZ", "GL*SupMXJZ"})
        if (item.key == key) tick(w, item.text);
    camera.take(w, "frmTranCond");
    press(w, "cmdCustomerTran");
    press(w, "cmdSyKmSel");
    press(w, "cmdOk");
  });
  pilot.then("frmYeMxSel", [&](QWidget& w) {
    w.findChild<QListWidget*>("left")->setCurrentRow(0);
    press(w, "moveRight");
    camera.take(w, "frmYeMxSel");
    press(w, "cmdOK");
  });
  pilot.then("frmSyKmSel", [&](QWidget& w) {
    camera.take(w, "frmSyKmSel");
    press(w, "cmdOK");
  });
  pilot.then(
      "frmJZSN", [&](QWidget& w) { camera.take(w, "frmJZSN"); }, isUnderWay);
  pilot.then("frmJZBG", [&](QWidget& w) {
    camera.take(w, "frmJZBG");
    press(w, "filterWrong");
    camera.take(w, "frmJZBG-wrong");
    press(w, "filterAll");
    press(w, "Command1");
    press(w, "Command3");
  });
  pilot.then("frmNBalance", [&](QWidget& w) {
    camera.take(w, "frmNBalance");
    press(w, "Command2");
  });
  pilot.then("result", [&](QWidget& w) {
    camera.take(w, "result");
    camera.take(start, "start-after");
    press(w, "close");
  });
}

}  // namespace

void takeScreenshots(const std::string& folder) {
  if (!QDir().mkpath(shown(folder))) throw std::runtime_error(folder + " cannot be made");
  NobodyToAsk nobody;
  setAsk(&nobody);
  ProgressWindow::repaintEvery = 0;
  const std::string album = utf8(QDir(shown(folder)).absolutePath());
  for (const char* language : {"zh-CN", "zh-TW", "en-US"}) {
    const Camera camera(album, language);
    const QTemporaryDir place;
    const WithinFolder within(place.path());
    const std::string server = "gljz-demo";
    host::createDemo(host::openAnyServer(host::parseServer("embedded:" + server), true));
    QSettings settings(place.filePath("settings.ini"), QSettings::IniFormat);
    StartChoice choice;
    choice.folder = server;
    choice.language = language;
    choice.operatorName = "demo";
    saveChoice(settings, choice);
    StartWindow start(settings);
    start.show();
    camera.take(start, "start");

    Autopilot pilot;
    tellRoad(pilot, camera, start);
    press(start, "preview");
    press(start, "transfer");
    pilot.then("frmTwo", [&](QWidget& w) {
      camera.take(w, "frmTwo");
      w.hide();  // no host stands behind this form: nobody asks it
    });
    const Texts texts(language);
    gljz::FrmTwo question;
    host::localizeForm(question, texts.messages(), gljz::resourcePrefix);
    question.lblNote.Caption = texts.messages().text("Orvo.GL.TqGLJZ.Orvo90.00001") + "\r\n\r\n" +
                               texts.messages().text("Orvo.GL.TqGLJZ.Orvo90.00002");
    QuestionWindow(&start, question, texts).showModal();
    if (!pilot.left().empty()) throw std::runtime_error(pilot.left().front() + " did not come");
    if (!pilot.failures().empty()) throw std::runtime_error(pilot.failures().front());
  }
  setAsk(nullptr);
}

}  // namespace desktop
