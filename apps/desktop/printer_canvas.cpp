#include "printer_canvas.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <stdexcept>

#include "host/print/page_canvas.h"
#include "texts.h"

namespace desktop {
namespace {

constexpr double pointsPerInch = 72;

class PrinterCanvas final : public host::PageCanvas {
public:
  PrinterCanvas(std::shared_ptr<QPrinter> printer, const host::CanvasSettings& settings, const Texts& texts)
      : printer_(std::move(printer)),
        cannotOpen_(utf8(texts("Printer.CannotOpen"))),
        error_(utf8(texts("Printer.Error"))),
        width_(settings.width),
        height_(settings.height) {
    const bool landscape = width_ > height_;
    const QSizeF portrait(std::min(width_, height_), std::max(width_, height_));
    printer_->setPageLayout(QPageLayout(QPageSize(portrait, QPageSize::Point, {}, QPageSize::FuzzyMatch),
                                        landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    printer_->setFullPage(true);  // the margins are the layout's
    printer_->setDocName(shown(settings.title));
    for (const std::string& family : settings.fonts) families_ << shown(family);
    if (!painter_.begin(printer_.get())) throw std::runtime_error(cannotOpen_);
    scale_ = printer_->resolution() / pointsPerInch;
    painter_.scale(scale_, scale_);
  }

  double lineHeight(const host::PageFont& font) override { return metrics(font).height() / scale_; }
  double width(const std::string& text, const host::PageFont& font) override {
    return metrics(font).horizontalAdvance(shown(text)) / scale_;
  }
  double height(const std::string& text, const host::PageFont& font, double width) override {
    const QRectF room(0, 0, width * scale_, 1e6);
    return metrics(font).boundingRect(room, wrap, shown(text)).height() / scale_;
  }
  void text(double x, double y, double width, const std::string& text, const host::PageFont& font,
            host::TextAlign align, host::Ink ink) override {
    turnPage();
    const int side = align == host::TextAlign::right    ? Qt::AlignRight
                     : align == host::TextAlign::centre ? Qt::AlignHCenter
                                                        : Qt::AlignLeft;
    // In the printer's own dots, as the text was measured.
    painter_.save();
    painter_.resetTransform();
    painter_.setFont(fontOf(font));
    painter_.setPen(QColor(ink.red, ink.green, ink.blue));
    painter_.drawText(QRectF(x * scale_, y * scale_, width * scale_, 1e6), side | Qt::AlignTop | wrap, shown(text));
    painter_.restore();
  }
  void fill(double x, double y, double width, double height, host::Ink ink) override {
    turnPage();
    painter_.fillRect(QRectF(x, y, width, height), QColor(ink.red, ink.green, ink.blue));
  }
  void endPage() override { pageEnded_ = true; }
  void finish() override {
    if (!painter_.end() || printer_->printerState() == QPrinter::Error) throw std::runtime_error(error_);
  }
  std::size_t unknownCharacters() const override { return 0; }  // the window system finds a font for each

private:
  static constexpr int wrap = Qt::TextWrapAnywhere;

  // The last page of a print is followed by none.
  void turnPage() {
    if (pageEnded_ && !printer_->newPage()) throw std::runtime_error(error_);
    pageEnded_ = false;
  }
  QFont fontOf(const host::PageFont& font) const {
    QFont made;
    if (!families_.isEmpty()) made.setFamilies(families_);
    made.setPixelSize(std::max(1, static_cast<int>(font.size * scale_)));
    made.setBold(font.bold);
    return made;
  }
  QFontMetricsF metrics(const host::PageFont& font) const { return QFontMetricsF(fontOf(font), printer_.get()); }

  std::shared_ptr<QPrinter> printer_;
  std::string cannotOpen_, error_;  // what a failure says
  double width_, height_, scale_ = 1;
  QStringList families_;
  QPainter painter_;
  bool pageEnded_ = false;
};

}  // namespace

std::unique_ptr<host::PageCanvas> newPrinterCanvas(std::shared_ptr<QPrinter> printer,
                                                   const host::CanvasSettings& settings, const Texts& texts) {
  return std::make_unique<PrinterCanvas>(std::move(printer), settings, texts);
}

}  // namespace desktop
