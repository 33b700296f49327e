#pragma once
// PageCanvas: sheets of paper to write and draw on, and what measures texts. All lengths are points (1/72 inch), from
// the upper left corner.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/print/page_layout.h"

namespace host {

struct PageFont {
  double size = 9;  // points
  bool bold = false;
};

class PageCanvas {
public:
  virtual ~PageCanvas() = default;
  virtual double lineHeight(const PageFont& font) = 0;
  // Of the text on one line.
  virtual double width(const std::string& text, const PageFont& font) = 0;
  // Of the text in as many lines as it needs; a line ends at a blank, between Chinese characters, at worst anywhere.
  virtual double height(const std::string& text, const PageFont& font, double width) = 0;
  virtual void text(double x, double y, double width, const std::string& text, const PageFont& font, TextAlign align,
                    Ink ink) = 0;
  virtual void fill(double x, double y, double width, double height, Ink ink) = 0;
  virtual void endPage() = 0;
  // Writes the file. std::runtime_error when that fails.
  virtual void finish() = 0;
  // Characters that no installed font can draw: they are boxes on the paper.
  virtual std::size_t unknownCharacters() const = 0;
};

struct CanvasSettings {
  std::string file;
  double width = 595.28, height = 841.89;
  std::vector<std::string> fonts;  // families in order of preference
  std::string language;            // zh-CN, ...: decides between the forms of a character
  std::string title, author;
};

bool canMakePdf();
// std::runtime_error when the file cannot be written or this program was built without PDF.
std::unique_ptr<PageCanvas> newPdfCanvas(const CanvasSettings& settings);

}  // namespace host
