// PDF by cairo, texts by pango, which chooses fonts for every character and breaks lines as each script wants it.

#include <cairo/cairo-pdf.h>
#include <pango/pangocairo.h>

#include <cstdint>
#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "host/print/page_canvas.h"

#if defined(__SANITIZE_ADDRESS__)
// The library that finds the fonts keeps what it has read until the process ends.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}
extern "C" const char* __lsan_default_options();
extern "C" const char* __lsan_default_options() {
  return "print_suppressions=0";  // standard error is the program's own
}
#endif

namespace host {
namespace {

template <auto release>
struct Releaser {
  template <class T>
  void operator()(T* object) const {
    release(object);
  }
};
using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Drawing = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
using Layout = std::unique_ptr<PangoLayout, Releaser<g_object_unref>>;
using Description = std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>>;
using Metrics = std::unique_ptr<PangoFontMetrics, Releaser<pango_font_metrics_unref>>;

double points(int pangoUnits) {
  return static_cast<double>(pangoUnits) / PANGO_SCALE;
}
int units(double length) {
  return static_cast<int>(length * PANGO_SCALE);
}

// One paragraph of well-formed UTF-8.
std::string cleaned(const std::string& text) {
  std::string out = text;
  for (char& c : out)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  if (!g_utf8_validate(out.data(), static_cast<gssize>(out.size()), nullptr)) {
    const std::unique_ptr<char, Releaser<g_free>> valid(g_utf8_make_valid(out.data(), static_cast<gssize>(out.size())));
    out = valid.get();
  }
  return out;
}

class PdfCanvas final : public PageCanvas {
public:
  explicit PdfCanvas(const CanvasSettings& settings)
      : file_(settings.file),
        surface_(cairo_pdf_surface_create(settings.file.c_str(), settings.width, settings.height)) {
    require();
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_TITLE, settings.title.c_str());
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_AUTHOR, settings.author.c_str());
    drawing_.reset(cairo_create(surface_.get()));
    layout_.reset(pango_cairo_create_layout(drawing_.get()));
    pango_cairo_context_set_resolution(context(), 72);  // sizes are the surface's own points
    if (!settings.language.empty())
      pango_context_set_language(context(), pango_language_from_string(settings.language.c_str()));
    pango_layout_set_wrap(layout_.get(), PANGO_WRAP_WORD_CHAR);
    for (const std::string& family : settings.fonts) families_ += (families_.empty() ? "" : ",") + family;
  }

  double lineHeight(const PageFont& font) override { return face(font).lineHeight; }

  // Most texts of a grid are measured without being set: the widths of their characters are known.
  double width(const std::string& text, const PageFont& font) override {
    Face& f = face(font);
    double sum = 0;
    const std::string clean = cleaned(text);
    for (const char *at = clean.data(), *next = at; at < clean.data() + clean.size(); at = next) {
      next = g_utf8_next_char(at);
      const gunichar c = g_utf8_get_char(at);
      auto known = f.advances.find(c);
      if (known == f.advances.end()) {
        set(std::string(at, next), font, -1);
        int advance = 0;
        pango_layout_get_size(layout_.get(), &advance, nullptr);
        known = f.advances.emplace(c, points(advance)).first;
      }
      sum += known->second;
    }
    return sum;
  }

  double height(const std::string& text, const PageFont& font, double most) override {
    if (width(text, font) <= most) return face(font).lineHeight;
    set(cleaned(text), font, most);
    int height = 0;
    pango_layout_get_size(layout_.get(), nullptr, &height);
    return points(height);
  }

  void text(double x, double y, double most, const std::string& text, const PageFont& font, TextAlign align,
            Ink ink) override {
    if (text.empty()) return;
    set(cleaned(text), font, width(text, font) <= most ? -1 : most);
    unknown_ += static_cast<std::size_t>(pango_layout_get_unknown_glyphs_count(layout_.get()));
    const bool lines = pango_layout_get_line_count(layout_.get()) > 1;
    pango_layout_set_alignment(layout_.get(), align == TextAlign::left    ? PANGO_ALIGN_LEFT
                                              : align == TextAlign::right ? PANGO_ALIGN_RIGHT
                                                                          : PANGO_ALIGN_CENTER);
    if (!lines && align != TextAlign::left) {
      int own = 0;
      pango_layout_set_width(layout_.get(), -1);
      pango_layout_get_size(layout_.get(), &own, nullptr);
      const double room = most - points(own);
      x += align == TextAlign::right ? room : room / 2;
    }
    colour(ink);
    cairo_move_to(drawing_.get(), x, y);
    pango_cairo_show_layout(drawing_.get(), layout_.get());
  }

  void fill(double x, double y, double w, double h, Ink ink) override {
    colour(ink);
    cairo_rectangle(drawing_.get(), x, y, w, h);
    cairo_fill(drawing_.get());
  }

  void endPage() override { cairo_show_page(drawing_.get()); }

  void finish() override {
    cairo_surface_finish(surface_.get());
    require();
  }

  std::size_t unknownCharacters() const override { return unknown_; }

private:
  struct Face {
    Description description;
    double lineHeight = 0;
    std::unordered_map<gunichar, double> advances;
  };

  PangoContext* context() const { return pango_layout_get_context(layout_.get()); }

  void require() const {
    const cairo_status_t status = cairo_surface_status(surface_.get());
    if (status != CAIRO_STATUS_SUCCESS)
      throw std::runtime_error("file " + file_ + " cannot be written: " + cairo_status_to_string(status));
  }

  Face& face(const PageFont& font) {
    const auto key = std::pair(units(font.size), font.bold);
    const auto found = faces_.find(key);
    if (found != faces_.end()) return found->second;
    Face& made = faces_[key];
    made.description.reset(pango_font_description_new());
    if (!families_.empty()) pango_font_description_set_family(made.description.get(), families_.c_str());
    pango_font_description_set_absolute_size(made.description.get(), font.size * PANGO_SCALE);
    if (font.bold) pango_font_description_set_weight(made.description.get(), PANGO_WEIGHT_BOLD);
    // Of a line that mixes scripts, so that all rows are of one height.
    set("结Ag", font, -1);
    int height = 0;
    pango_layout_get_size(layout_.get(), nullptr, &height);
    made.lineHeight = points(height);
    return made;
  }

  void set(const std::string& text, const PageFont& font, double width) {
    pango_layout_set_font_description(layout_.get(), face(font).description.get());
    pango_layout_set_width(layout_.get(), width < 0 ? -1 : units(width));
    pango_layout_set_alignment(layout_.get(), PANGO_ALIGN_LEFT);
    pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
  }

  void colour(Ink ink) { cairo_set_source_rgb(drawing_.get(), ink.red / 255.0, ink.green / 255.0, ink.blue / 255.0); }

  std::string file_;
  Surface surface_;
  Drawing drawing_;
  Layout layout_;
  std::string families_;
  std::map<std::pair<int, bool>, Face> faces_;
  std::size_t unknown_ = 0;
};

}  // namespace

bool canMakePdf() {
  return true;
}

std::unique_ptr<PageCanvas> newPdfCanvas(const CanvasSettings& settings) {
  return std::make_unique<PdfCanvas>(settings);
}

}  // namespace host
