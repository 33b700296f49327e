#include "text_table.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "host/display_width.h"

namespace cli {
namespace {

constexpr std::size_t gap = 2;  // blanks between columns
constexpr std::size_t uncut = std::numeric_limits<std::size_t>::max();

// Line ends, tabs and whatever else would move the cursor.
std::string oneLine(std::string text) {
  for (char& c : text)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
  return text;
}

std::size_t totalOf(const std::vector<std::size_t>& widths) {
  return std::accumulate(widths.begin(), widths.end(), std::size_t{0}) + gap * (widths.size() - 1);
}

}  // namespace

void TextTable::row(std::vector<TableCell> cells) {
  for (TableCell& cell : cells) cell.text = oneLine(std::move(cell.text));
  rows_.push_back(std::move(cells));
}

std::vector<std::size_t> TextTable::widths(std::size_t longest) const {
  std::vector<std::size_t> result;
  for (const TableColumn& c : columns_) result.push_back(std::max<std::size_t>(1, host::displayWidth(c.name)));
  for (const auto& row : rows_)
    for (std::size_t i = 0; i < result.size(); ++i) result[i] = std::max(result[i], host::displayWidth(row[i].text));
  for (std::size_t i = 0; i < result.size(); ++i)
    if (columns_[i].longText) result[i] = std::min(result[i], std::max(longest, host::displayWidth(columns_[i].name)));
  return result;
}

std::string TextTable::text(const TableLook& look) const {
  std::string out;
  if (columns_.empty()) return out;
  auto w = widths(uncut);
  for (const std::size_t longest : {60u, 40u, 30u, 20u}) {
    if (look.width == 0 || totalOf(w) <= look.width) break;
    w = widths(longest);
  }
  if (look.width == 0 || totalOf(w) <= look.width) {
    block(0, columns_.size(), w, look, out);
    return out;
  }
  w = widths(std::min<std::size_t>(40, look.width));
  for (std::size_t first = 0; first < columns_.size();) {
    std::size_t last = first + 1, used = w[first];
    while (last < columns_.size() && used + gap + w[last] <= look.width) used += gap + w[last++];
    if (first > 0) out += '\n';
    block(first, last, w, look, out);
    first = last;
  }
  return out;
}

void TextTable::block(std::size_t first, std::size_t last, const std::vector<std::size_t>& w, const TableLook& look,
                      std::string& out) const {
  const auto line = [&](auto&& cell) {
    std::string text;
    for (std::size_t i = first; i < last; ++i) text += (i > first ? std::string(gap, ' ') : "") + cell(i);
    text.erase(text.find_last_not_of(' ') + 1);
    out += text + '\n';
  };
  line([&](std::size_t i) { return host::paddedToWidth(columns_[i].name, w[i], columns_[i].right); });
  line([&](std::size_t i) { return std::string(w[i], '-'); });
  for (const auto& row : rows_)
    line([&](std::size_t i) {
      std::string text = host::paddedToWidth(host::fittedToWidth(row[i].text, w[i]), w[i], columns_[i].right);
      return look.colours && row[i].null ? "\x1b[2m" + text + "\x1b[0m" : text;
    });
}

}  // namespace cli
