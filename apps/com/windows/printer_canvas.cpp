#include "printer_canvas.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

#include "ask.h"
#include "wide_text.h"

namespace windows {
namespace {

constexpr double pointsPerInch = 72;

COLORREF colourOf(host::Ink ink) {
  return RGB(ink.red, ink.green, ink.blue);
}

class PrinterCanvas final : public host::PageCanvas {
public:
  PrinterCanvas(std::shared_ptr<Printer> printer, const host::CanvasSettings& settings)
      : printer_(std::move(printer)), device_(printer_->device()) {
    printer_->setPaper(settings.width, settings.height);
    if (!settings.fonts.empty()) family_ = wide(settings.fonts.front());
    dotsX_ = GetDeviceCaps(device_, LOGPIXELSX) / pointsPerInch;
    dotsY_ = GetDeviceCaps(device_, LOGPIXELSY) / pointsPerInch;
    begun_ = printer_->begin(wide(settings.title));
    if (!begun_) throw std::runtime_error("the printer cannot be opened");
  }
  ~PrinterCanvas() override {
    if (begun_) printer_->withdraw();
    SelectObject(device_, GetStockObject(SYSTEM_FONT));  // none of those that go
    for (const auto& [key, font] : fonts_) DeleteObject(font);
  }

  double lineHeight(const host::PageFont& font) override {
    select(font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(device_, &metrics);
    return metrics.tmHeight / dotsY_;
  }
  double width(const std::string& text, const host::PageFont& font) override {
    select(font);
    const std::wstring shown = wide(text);
    SIZE size{};
    GetTextExtentPoint32W(device_, shown.data(), static_cast<int>(shown.size()), &size);
    return size.cx / dotsX_;
  }
  double height(const std::string& text, const host::PageFont& font, double width) override {
    select(font);
    RECT room{0, 0, dots(width, dotsX_), 0};
    DrawTextW(device_, wide(text).c_str(), -1, &room, wrap | DT_CALCRECT);
    return room.bottom / dotsY_;
  }
  void text(double x, double y, double width, const std::string& text, const host::PageFont& font,
            host::TextAlign align, host::Ink ink) override {
    turnPage();
    select(font);
    SetTextColor(device_, colourOf(ink));
    SetBkMode(device_, TRANSPARENT);
    RECT room = rect(x, y, width, 1e4);
    const UINT side = align == host::TextAlign::right    ? DT_RIGHT
                      : align == host::TextAlign::centre ? DT_CENTER
                                                         : DT_LEFT;
    DrawTextW(device_, wide(text).c_str(), -1, &room, wrap | side);
  }
  void fill(double x, double y, double width, double height, host::Ink ink) override {
    turnPage();
    RECT room = rect(x, y, width, height);
    room.bottom = std::max(room.bottom, room.top + 1);  // the thinnest rule is still one
    const HBRUSH brush = CreateSolidBrush(colourOf(ink));
    FillRect(device_, &room, brush);
    DeleteObject(brush);
  }
  void endPage() override {
    turnPage();
    if (!printer_->endPage()) complain();
    onPage_ = false;
  }
  void finish() override {
    begun_ = false;
    if (!printer_->finish()) complain();
  }
  std::size_t unknownCharacters() const override { return 0; }  // the window system finds a font for each

private:
  static constexpr UINT wrap = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX;

  [[noreturn]] static void complain() { throw std::runtime_error("the printer reports an error"); }

  void turnPage() {
    if (onPage_) return;
    if (!printer_->beginPage()) complain();
    // Lengths count from the sheet's corner, the device's from where the printer can print.
    SetViewportOrgEx(device_, -GetDeviceCaps(device_, PHYSICALOFFSETX), -GetDeviceCaps(device_, PHYSICALOFFSETY),
                     nullptr);
    onPage_ = true;
  }
  static LONG dots(double points, double perPoint) { return static_cast<LONG>(std::lround(points * perPoint)); }
  RECT rect(double x, double y, double width, double height) const {
    return {dots(x, dotsX_), dots(y, dotsY_), dots(x + width, dotsX_), dots(y + height, dotsY_)};
  }
  void select(const host::PageFont& font) {
    HFONT& made = fonts_[{font.size, font.bold}];
    if (!made)
      made = CreateFontW(-static_cast<int>(std::lround(font.size * dotsY_)), 0, 0, 0, font.bold ? FW_BOLD : FW_NORMAL,
                         FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                         DEFAULT_PITCH | FF_DONTCARE, family_.c_str());
    SelectObject(device_, made);
  }

  std::shared_ptr<Printer> printer_;
  HDC device_;
  std::wstring family_;
  double dotsX_ = 1, dotsY_ = 1;  // a point
  std::map<std::pair<double, bool>, HFONT> fonts_;
  bool begun_ = false, onPage_ = false;
};

}  // namespace

std::unique_ptr<host::PageCanvas> newPrinterCanvas(std::shared_ptr<Printer> printer,
                                                   const host::CanvasSettings& settings) {
  return std::make_unique<PrinterCanvas>(std::move(printer), settings);
}

}  // namespace windows
