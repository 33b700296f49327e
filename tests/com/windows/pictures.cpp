#include "com/windows/pictures.h"

#include <windows.h>
// after it
#include <objidl.h>
#include <propidl.h>

#include <algorithm>

namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include <filesystem>
#include <stdexcept>

#include "com/windows/demo_windows.h"
#include "com/windows/form_windows.h"
#include "com/windows/wide_text.h"
#include "core/mdu_jz.h"
#include "dialogs/frm_two.h"
#include "host/form_captions.h"

namespace windows::test {
namespace {

class Graphics {
public:
  Graphics() {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok)
      throw std::runtime_error("GDI+ does not start");
  }
  ~Graphics() { Gdiplus::GdiplusShutdown(token_); }
  Graphics(const Graphics&) = delete;
  Graphics& operator=(const Graphics&) = delete;

private:
  ULONG_PTR token_ = 0;
};

void save(Picture picture, const std::string& file) {
  constexpr CLSID png = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
                         reinterpret_cast<BYTE*>(picture.pixels.data()));
  if (bitmap.Save(wide(file).c_str(), &png, nullptr) != Gdiplus::Ok)
    throw std::runtime_error(file + " cannot be written");
}

class Camera {
public:
  Camera(std::string folder, std::string language) : folder_(std::move(folder)), language_(std::move(language)) {}

  void take(HWND window, const std::string& name) const {
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    save(photographOf(window), folder_ + "/" + language_ + "-" + name + ".png");
  }

private:
  std::string folder_, language_;
};

// The road of a carry-forward with open items by detail.
void tellRoad(Pilot& pilot, const Camera& camera) {
  pilot.then("frmTranCond", [&](HWND w) {
    for (const char* key : {"GL*PersonMXJZ", "GL*CusMXJZ", "GL*SupMXJZ"}) tick(w, key);
    camera.take(w, "frmTranCond");
    press(w, idCmdCustomerTran);
    press(w, idCmdSyKmSel);
    press(w, idCmdOk);
  });
  pilot.then("frmYeMxSel", [&](HWND w) {
    select(w, idLeftList, {0});
    press(w, idMoveRight);
    camera.take(w, "frmYeMxSel");
    SetWindowPos(w, nullptr, 0, 0, 760, 520, SWP_NOMOVE | SWP_NOZORDER);
    camera.take(w, "frmYeMxSel-larger");
    press(w, idCmdOk);
  });
  pilot.then("frmSyKmSel", [&](HWND w) {
    camera.take(w, "frmSyKmSel");
    press(w, idCmdOk);
  });
  pilot.then("frmJZSN", [&](HWND w) { camera.take(w, "frmJZSN"); });
  pilot.then("frmJZBG", [&](HWND w) {
    camera.take(GetWindow(w, GW_OWNER), "frmJZSN-done");
    camera.take(w, "frmJZBG");
    press(w, idCommand1);
    press(w, idCommand3);
  });
  pilot.then("frmNBalance", [&](HWND w) {
    camera.take(w, "frmNBalance");
    press(w, idCommand2);
  });
}

// No run asks it.
void askQuestion(Pilot& pilot, const Camera& camera, FormWindows& forms, const std::string& language) {
  pilot.then("frmTwo", [&](HWND w) {
    camera.take(w, "frmTwo");
    press(w, idCommand1);
  });
  const host::Messages texts(language);
  platform::Surroundings surroundings;
  surroundings.forms = &forms;
  platform::setSurroundings(&surroundings);
  gljz::FrmTwo question;
  host::localizeForm(question, texts, gljz::resourcePrefix);
  question.lblNote.Caption =
      texts.text("Orvo.GL.TqGLJZ.Orvo90.00001") + "\r\n\r\n" + texts.text("Orvo.GL.TqGLJZ.Orvo90.00002");
  question.ShowModal();
  platform::setSurroundings(nullptr);
}

void expectWalked(const Pilot& pilot) {
  if (!pilot.failures().empty()) throw std::runtime_error(pilot.failures().front());
  if (!pilot.left().empty()) throw std::runtime_error(pilot.left().front() + " did not come");
}

}  // namespace

void takePictures(const std::string& folder) {
  const Graphics graphics;
  std::filesystem::create_directories(folder);
  for (const std::string language : {"zh-CN", "zh-TW", "en-US"}) {
    const Camera camera(folder, language);
    const host::test::TemporaryFolder place;
    host::CarryForwardOptions options;
    options.server = host::parseServer("embedded:" + place.file("server"));
    host::createDemo(host::openAnyServer(options.server, true));
    options.account = host::demoAccount;
    options.closingYear = host::demoClosingYear;
    options.newYear = host::demoNewYear;
    options.language = language;
    DialogWindows windows({nullptr, [&] { return language; }, nullptr});
    options.dialogs = &windows;
    {
      Pilot pilot(windows);
      tellRoad(pilot, camera);
      const host::RunResult result = host::carryForward(options);
      if (result.uncaught) throw std::runtime_error(*result.uncaught);
      expectWalked(pilot);
    }
    FormWindows forms({place.text(), [&] { return language; }, true, nullptr, nullptr});
    Pilot pilot(*forms.dialogs());
    askQuestion(pilot, camera, forms, language);
    expectWalked(pilot);
  }
}

}  // namespace windows::test
