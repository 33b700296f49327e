// A layout file, given any bytes: a layout whose numbers are in their ranges and that sets a page, or a failure that
// names file and line.

#include "host/print/page_layout.h"

#include <cstdlib>
#include <numeric>
#include <stdexcept>

#include "fuzz/fuzz.h"
#include "host/print/text_pages.h"

namespace {

using host::PageLayout;

void requireRanges(const PageLayout& layout, const std::string& text) {
  const host::PageSetup& page = layout.page;
  if (!(page.width > 0 && page.height > 0 && page.left >= 0 && page.right >= 0 && page.top >= 0 && page.bottom >= 0 &&
        page.gridSize >= 4 && page.gridSize <= 24))
    fuzz::fail("a page has a size", text);
  for (const host::LayoutRow& row : layout.rows) {
    if (!(row.gap >= 0 && row.thickness >= 0)) fuzz::fail("gaps and rules are not negative", text);
    const auto shares = row.shares();
    if (std::accumulate(shares.begin(), shares.end(), 0.0) > 1 + 1e-9)
      fuzz::fail("the texts of a row fit beside each other", text);
    for (std::size_t i = 0; i < shares.size(); ++i)
      if (!(shares[i] > 0) || !(row.texts[i].size >= 4 && row.texts[i].size <= 72))
        fuzz::fail("a text has room and a size", text);
  }
}

// "layout:12: what is wrong"
bool namesItsPlace(const std::string& message) {
  constexpr std::string_view file = "layout:";
  return message.starts_with(file) && std::atoi(message.c_str() + file.size()) >= 0 &&
         message.find(": ", file.size()) != std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const std::vector<std::vector<std::string>> rows{{"科目", "金额"}, {"1001", "1.00"}};
  for (const auto part : {host::LayoutPart::head, host::LayoutPart::foot}) try {
      const PageLayout layout = host::parsePageLayout(text, "layout", part);
      requireRanges(layout, text);
      const host::LayoutFields fields{{"P1", "青石商贸"}, {"P2", ""}};
      try {
        const std::string pages =
            host::textPages({&layout, fields}, {&layout, fields}, {&rows, {{1}, {1, host::TextAlign::right}}, {}});
        if (pages.find("1001") == std::string::npos) fuzz::fail("the grid is on the page", text);
      } catch (const std::runtime_error&) {
        // A layout of very many lines leaves no room on a page of text.
      }
    } catch (const host::LayoutError& e) {
      if (!namesItsPlace(e.what())) fuzz::fail("a failure names file and line", e.what());
    }
  return 0;
}
