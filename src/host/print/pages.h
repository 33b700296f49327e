#pragma once
// Pages: paragraphs and tables set on as many pages as they need, between the head and the foot of a layout.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/print/page_canvas.h"
#include "host/print/page_layout.h"

namespace host {

// A head or a foot, and the fields that its texts name. {page} and {pages} are filled in.
struct PageBand {
  const PageLayout* layout = nullptr;
  LayoutFields fields;
};

struct PageColumn {
  double width = 0;  // in proportion to the other columns; a column grows when its texts need it
  TextAlign align = TextAlign::left;
};

struct PageTable {
  // The first row is the header row, repeated on each page that the table reaches. Rows may be shorter than others.
  const std::vector<std::vector<std::string>>* rows = nullptr;
  std::vector<PageColumn> columns;
  std::function<std::optional<Ink>(const std::vector<std::string>& row)> ink = {};  // of a whole row; may be null
};

struct PageParagraph {
  std::string text;
  PageFont font;
  Ink ink;
  bool keepWithNext = false;  // a heading
};

// Either a paragraph or a table, and the room above it.
struct PageBlock {
  double gap = 0;  // points
  std::optional<PageParagraph> paragraph;
  std::optional<PageTable> table;
};

// Draws and returns the number of pages; at least one. The canvas is the caller's to finish. std::runtime_error when
// head and foot leave no room on a page.
std::size_t drawPages(PageCanvas& canvas, const PageSetup& page, const PageBand& head, const PageBand& foot,
                      const std::vector<PageBlock>& blocks);

}  // namespace host
