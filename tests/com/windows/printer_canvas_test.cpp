// Pages on a printer that is a bitmap.

#include "com/windows/printer_canvas.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "com/windows/ask.h"

namespace windows::test {
namespace {

using testing::ElementsAre;

// 96 dots an inch, so that 72 points are 96 dots.
class BitmapPrinter final : public Printer {
public:
  static constexpr int width = 400, height = 400;

  explicit BitmapPrinter(std::vector<std::string>& log) : Printer(CreateCompatibleDC(nullptr), nullptr), log_(log) {
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = -height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    bitmap_ = CreateDIBSection(device(), &format, DIB_RGB_COLORS, &bits_, nullptr, 0);
    before_ = SelectObject(device(), bitmap_);
    clear();
  }
  ~BitmapPrinter() override {
    SelectObject(device(), before_);
    DeleteObject(bitmap_);
  }

  std::string failing;
  void setPaper(double w, double h) override { say(std::to_string(int(w)) + "x" + std::to_string(int(h))); }
  bool begin(const std::wstring& title) override { return say("begin " + std::string(title.begin(), title.end())); }
  bool beginPage() override { return say("page"); }
  bool endPage() override { return say("end of page"); }
  bool finish() override { return say("finish"); }
  void withdraw() override { say("withdraw"); }

  // Where something has been drawn; empty when nothing has.
  RECT inked() const {
    GdiFlush();
    RECT box{width, height, 0, 0};
    const auto* pixels = static_cast<const std::uint32_t*>(bits_);
    for (LONG y = 0; y < height; ++y)
      for (LONG x = 0; x < width; ++x)
        if ((pixels[y * width + x] & 0xFFFFFF) != 0xFFFFFF) {
          box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
        }
    return box;
  }
  void clear() {
    RECT all{0, 0, width, height};
    FillRect(device(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  }

private:
  bool say(const std::string& what) {
    log_.push_back(what);
    return what != failing;
  }
  std::vector<std::string>& log_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
  void* bits_ = nullptr;
};

class PrinterCanvasTest : public testing::Test {
protected:
  std::vector<std::string> log_;
  std::shared_ptr<BitmapPrinter> printer_ = std::make_shared<BitmapPrinter>(log_);
  host::CanvasSettings settings_{{}, 595, 842, {}, "zh-CN", "title", {}};
};

TEST_F(PrinterCanvasTest, PrintsPageByPage) {
  const auto canvas = newPrinterCanvas(printer_, settings_);
  canvas->fill(0, 0, 10, 10, {});
  canvas->endPage();
  canvas->text(0, 0, 100, "x", {}, host::TextAlign::left, {});
  canvas->endPage();
  canvas->finish();
  EXPECT_THAT(log_, ElementsAre("595x842", "begin title", "page", "end of page", "page", "end of page", "finish"));
}

TEST_F(PrinterCanvasTest, CountsInPoints) {
  const auto canvas = newPrinterCanvas(printer_, settings_);
  canvas->fill(72, 36, 144, 9, {});
  const RECT box = printer_->inked();
  EXPECT_EQ(box.left, 96);
  EXPECT_EQ(box.top, 48);
  EXPECT_EQ(box.right, 288);
  EXPECT_EQ(box.bottom, 60);
  printer_->clear();
  canvas->fill(0, 72, 72, 0.1, {});
  EXPECT_EQ(printer_->inked().bottom - printer_->inked().top, 1) << "the thinnest rule is still one";
}

TEST_F(PrinterCanvasTest, TextsStandOnTheirSideOfTheirWidth) {
  const auto canvas = newPrinterCanvas(printer_, settings_);
  const auto drawn = [&](host::TextAlign align) {
    printer_->clear();
    canvas->text(72, 0, 144, "1234", {9, false}, align, {});
    return printer_->inked();
  };
  EXPECT_LT(drawn(host::TextAlign::left).left, 96 + 4);
  EXPECT_GT(drawn(host::TextAlign::right).right, 288 - 4);
  const RECT middle = drawn(host::TextAlign::centre);
  EXPECT_NEAR((middle.left + middle.right) / 2.0, 192, 3);
}

TEST_F(PrinterCanvasTest, MeasuresWhatItDraws) {
  const auto canvas = newPrinterCanvas(printer_, settings_);
  const host::PageFont font{9, false};
  const double line = canvas->lineHeight(font);
  EXPECT_NEAR(canvas->height("one", font, 200), line, 1);
  EXPECT_GE(canvas->height("one two three four five six seven eight", font, 50), 3 * line - 1);
  EXPECT_GE(canvas->height(std::string(60, 'w'), font, 50), 3 * line - 1) << "a long word ends anywhere";
  EXPECT_GT(canvas->width("wide", {18, false}), 1.5 * canvas->width("wide", font));
}

TEST_F(PrinterCanvasTest, AnErrorOfThePrinterIsAFailureAndWithdrawsThePrint) {
  printer_->failing = "begin title";
  EXPECT_THROW(newPrinterCanvas(printer_, settings_), std::runtime_error);
  EXPECT_THAT(log_, ElementsAre("595x842", "begin title"));
  printer_->failing = "page";
  EXPECT_THROW(newPrinterCanvas(printer_, settings_)->fill(0, 0, 1, 1, {}), std::runtime_error);
  EXPECT_EQ(log_.back(), "withdraw");
  printer_->failing = "finish";
  EXPECT_THROW(newPrinterCanvas(printer_, settings_)->finish(), std::runtime_error);
}

}  // namespace
}  // namespace windows::test
