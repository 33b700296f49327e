#pragma once
// Pages of plain text: the same head, grid and foot in columns of characters, a form feed between pages.

#include <string>
#include <vector>

#include "host/print/pages.h"

namespace host {

// Lines of a page, head and foot included.
constexpr std::size_t textPageLines = 60;

// UTF-8. As wide as the grid needs, 78 columns at least; Chinese characters take two. std::runtime_error when head and
// foot leave no room on a page.
std::string textPages(const PageBand& head, const PageBand& foot, const PageTable& table);

}  // namespace host
