#include "host/print/text_pages.h"

#include <algorithm>
#include <stdexcept>

#include "host/display_width.h"

namespace host {
namespace {

constexpr std::size_t leastWidth = 78, leastGridLines = 3;
constexpr char formFeed = '\f';

std::size_t codeUnits(const std::string& text, std::size_t at) {
  std::size_t n = 1;
  while (at + n < text.size() && (static_cast<unsigned char>(text[at + n]) & 0xC0) == 0x80) ++n;
  return n;
}

// Lines of at most `width` columns; a line ends at a blank where there is one.
std::vector<std::string> wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::string rest = text;
  while (displayWidth(rest) > width) {
    std::size_t end = 0, blank = 0;
    for (std::size_t n; end < rest.size(); end += n) {
      n = codeUnits(rest, end);
      if (displayWidth(rest.substr(0, end + n)) > width) break;
      if (rest[end] == ' ') blank = end;
    }
    if (blank > 0) end = blank;
    end = std::max<std::size_t>(end, codeUnits(rest, 0));
    lines.push_back(rest.substr(0, end));
    rest.erase(0, end);
    rest.erase(0, rest.find_first_not_of(' '));
  }
  lines.push_back(rest);
  return lines;
}

std::string aligned(const std::string& text, std::size_t width, TextAlign align) {
  if (align != TextAlign::centre) return paddedToWidth(text, width, align == TextAlign::right);
  const std::size_t own = displayWidth(text), left = own < width ? (width - own) / 2 : 0;
  return paddedToWidth(std::string(left, ' ') + text, width);
}

void addLine(std::string& out, std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  out += line + "\n";
}

class TextPages {
public:
  TextPages(const PageBand& head, const PageBand& foot, const PageTable& table)
      : head_(head), foot_(foot), table_(table) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      std::size_t width = 0;
      for (const auto& row : *table.rows) width = std::max(width, i < row.size() ? displayWidth(row[i]) : 0);
      widths_.push_back(width);
      gridWidth_ += width + (i > 0 ? 2 : 0);
    }
    width_ = std::max(gridWidth_, leastWidth);
  }

  std::string text() {
    // Lines of grid on a page: without head, foot, the empty lines beside them, the header row and its rule.
    constexpr std::size_t around = 4;
    const std::size_t fixed = band(head_, 1, 1).size() + band(foot_, 1, 1).size() + around;
    if (fixed + leastGridLines > textPageLines) throw std::runtime_error("the layouts leave no room on the page");
    const std::size_t lines = textPageLines - fixed;
    const std::size_t rows = table_.rows->empty() ? 0 : table_.rows->size() - 1;
    const std::size_t pages = std::max<std::size_t>(1, (rows + lines - 1) / lines);
    for (std::size_t page = 1; page <= pages; ++page) {
      if (page > 1) out_ += formFeed;
      for (const std::string& line : band(head_, page, pages)) addLine(out_, line);
      out_ += "\n";
      grid((page - 1) * lines, std::min(rows, page * lines));
      out_ += "\n";
      for (const std::string& line : band(foot_, page, pages)) addLine(out_, line);
    }
    return std::move(out_);
  }

private:
  std::vector<std::string> band(const PageBand& band, std::size_t page, std::size_t pages) const {
    std::vector<std::string> lines;
    if (!band.layout) return lines;
    LayoutFields fields = band.fields;
    fields["page"] = std::to_string(page);
    fields["pages"] = std::to_string(pages);
    for (const LayoutRow& row : band.layout->rows) {
      if (row.thickness > 0) {
        lines.emplace_back(width_, '-');
        continue;
      }
      const std::vector<double> shares = row.shares();
      std::vector<std::vector<std::string>> cells;
      std::vector<std::size_t> widths;
      std::size_t height = 0;
      double end = 0;
      std::size_t at = 0;
      for (std::size_t i = 0; i < row.texts.size(); ++i) {
        end += shares[i] * static_cast<double>(width_);
        widths.push_back(std::max<std::size_t>(static_cast<std::size_t>(end + 0.5) - at, 2));
        at += widths.back();
        const std::string text = row.texts[i].filled(fields);
        cells.push_back(text.empty() ? std::vector<std::string>() : wrapped(text, widths.back()));
        height = std::max(height, cells.back().size());
      }
      for (std::size_t n = 0; n < height; ++n) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i)
          line += aligned(n < cells[i].size() ? cells[i][n] : std::string(), widths[i], row.texts[i].align);
        lines.push_back(std::move(line));
      }
    }
    return lines;
  }

  void gridLine(const std::vector<std::string>& row) {
    std::string line;
    for (std::size_t i = 0; i < widths_.size(); ++i)
      line +=
          (i > 0 ? "  " : "") + aligned(i < row.size() ? row[i] : std::string(), widths_[i], table_.columns[i].align);
    addLine(out_, std::move(line));
  }
  // Rows [first, last) of the grid below its header row.
  void grid(std::size_t first, std::size_t last) {
    if (table_.rows->empty()) return;
    gridLine(table_.rows->front());
    std::string rule;
    for (std::size_t i = 0; i < widths_.size(); ++i) rule += (i > 0 ? "  " : "") + std::string(widths_[i], '-');
    addLine(out_, rule);
    for (std::size_t n = first; n < last; ++n) gridLine((*table_.rows)[n + 1]);
  }

  const PageBand &head_, &foot_;
  const PageTable& table_;
  std::vector<std::size_t> widths_;
  std::size_t gridWidth_ = 0, width_ = 0;
  std::string out_;
};

}  // namespace

std::string textPages(const PageBand& head, const PageBand& foot, const PageTable& table) {
  return TextPages(head, foot, table).text();
}

}  // namespace host
