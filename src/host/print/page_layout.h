#pragma once
// PageLayout: what a layout file says about the head or the foot of every printed page.
//
//   const PageLayout head = parsePageLayout(text, "dzerru.rep", LayoutPart::head);
//   head.rows[0].texts[0].filled(fields);
//
// A layout file is UTF-8 text, a directive a line; # begins a comment, texts stand in quotation marks (\" and
// \\ inside).
//
//   row [gap MM]                    begins a row below the last one, MM millimetres lower
//   text "TEXT" [width PERCENT] [left|centre|right] [size POINTS] [bold] [colour #RRGGBB]
//                                   a text of that row, beside the last one; those without a width share what is left.
//                                   {P1} stands for a field of the table, {page} and {pages} for the page's number and
//                                   how many there are; a brace itself is written twice
//   rule [POINTS] [gap MM] [colour #RRGGBB]
//                                   a line over the whole width
//
// and in the head's layout, which decides about the page, above the first row:
//
//   paper a3|a4|a5|letter [portrait|landscape]
//   margins LEFT RIGHT TOP BOTTOM   millimetres
//   fonts "FAMILY" ...              the first that is installed, the others for what it lacks
//   grid POINTS [colour #RRGGBB]    size of the grid's texts, and the ground behind its header row
//
// A row whose texts are all empty takes no room.

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace host {

// "FILE:LINE: what is wrong".
class LayoutError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

enum class LayoutPart { head, foot };
enum class TextAlign { left, right, centre };

struct Ink {
  std::uint8_t red = 0, green = 0, blue = 0;
  friend bool operator==(const Ink&, const Ink&) = default;
};

struct LessNoCase {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};
using LayoutFields = std::map<std::string, std::string, LessNoCase>;

// A text with holes.
struct LayoutText {
  struct Piece {
    std::string text;
    bool field = false;  // text is a field's name
  };
  std::vector<Piece> pieces;
  double percent = 0;  // of the page's width; 0: its share of what is left
  TextAlign align = TextAlign::left;
  double size = 9;  // points
  bool bold = false;
  Ink ink;
  int line = 0;  // in the file, for messages

  // A field that is not there is empty.
  std::string filled(const LayoutFields& fields) const;
};

struct LayoutRow {
  double gap = 0;                 // points above it
  std::vector<LayoutText> texts;  // none: it is a rule
  double thickness = 0;           // of a rule, points
  Ink ink;
  int line = 0;

  // The row's widths in parts of the page's width, one for each text.
  std::vector<double> shares() const;
};

struct PageSetup {
  double width = 595.28, height = 841.89;                   // points
  double left = 42.5, right = 42.5, top = 36, bottom = 36;  // margins, points
  std::vector<std::string> fonts;                           // families, none: the system's
  double gridSize = 8.5;                                    // points
  Ink gridHeader{0xEE, 0xF1, 0xF5};
};

struct PageLayout {
  PageSetup page;
  std::vector<LayoutRow> rows;
  std::string file;  // its name, for messages

  // LayoutError for the first hole that is neither page, pages nor one of the names.
  void requireFields(const std::vector<std::string>& names) const;
};

// file names the text in messages. LayoutError at the first thing that is wrong.
PageLayout parsePageLayout(std::string_view text, const std::string& file, LayoutPart part);
// LayoutError also when the file cannot be read.
PageLayout readPageLayout(const std::string& path, LayoutPart part);

}  // namespace host
