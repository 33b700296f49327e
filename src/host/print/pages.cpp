#include "host/print/pages.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace host {
namespace {

constexpr double cellPadding = 3, rowPadding = 1.6, bandDistance = 7;  // points
constexpr double thinLine = 0.4;
constexpr Ink lineInk{0xC4, 0xCB, 0xD3};

// Room that a page must have between head and foot: less is no page but a mistake in a layout.
constexpr double leastRoom = 72;

struct Cells {
  const std::vector<std::string>& row;
  const std::string& operator[](std::size_t column) const {
    static const std::string none;
    return column < row.size() ? row[column] : none;
  }
};

// The widest part of a text that cannot be broken well: a word, or two Chinese characters.
double leastWidth(PageCanvas& canvas, const std::string& text, const PageFont& font) {
  constexpr std::size_t chineseBytes = 3, together = 2;
  double widest = 0;
  for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end) {
    const bool ascii = static_cast<unsigned char>(text[begin]) < 0x80;
    if (text[begin] == ' ') {
      end = begin + 1;
      continue;
    }
    while (end < text.size() && text[end] != ' ' && (static_cast<unsigned char>(text[end]) < 0x80) == ascii &&
           (ascii || end - begin < together * chineseBytes))
      ++end;
    widest = std::max(widest, canvas.width(text.substr(begin, end - begin), font));
  }
  return widest;
}

// Cuts the widths of the wide ones among `columns` to a common limit, so that all together have `room`.
void limitWidths(std::vector<double>& widths, std::vector<std::size_t> columns, double room) {
  std::sort(columns.begin(), columns.end(), [&](std::size_t a, std::size_t b) { return widths[a] < widths[b]; });
  for (std::size_t n = 0; n < columns.size(); ++n) {
    double& own = widths[columns[n]];
    own = std::min(own, room / static_cast<double>(columns.size() - n));
    room -= own;
  }
}

// Widths of a table's columns that fill the page. What is left over goes to the columns in the proportions that the
// table asks for. Where there is too little, columns of words give way first and break into lines, the widest before
// the others; numbers do not break unless nothing else helps.
std::vector<double> columnWidths(PageCanvas& canvas, const PageFont& font, const PageFont& headerFont,
                                 const PageTable& table, double width) {
  constexpr double slack = 0.5;
  const std::size_t count = table.columns.size();
  std::vector<double> given(count, 0), needed(count, 0), least(count, 0);
  std::vector<std::size_t> ofWords;
  double proportions = 0, numbers = 0;
  for (const PageColumn& column : table.columns) proportions += column.width;
  for (std::size_t i = 0; i < count; ++i) {
    given[i] = proportions > 0 ? width * table.columns[i].width / proportions : width / static_cast<double>(count);
    const bool words = table.columns[i].align == TextAlign::left;
    std::size_t longest = 0;
    for (std::size_t n = 0; n < table.rows->size(); ++n) {
      const std::string& text = Cells{(*table.rows)[n]}[i];
      // A text of fewer bytes than half of the longest cannot be the widest one.
      if (n > 0 && text.size() * 2 < longest) continue;
      longest = std::max(longest, text.size());
      const PageFont& own = n == 0 ? headerFont : font;
      needed[i] = std::max(needed[i], canvas.width(text, own) + 2 * cellPadding + slack);
      const double whole = words || n == 0 ? leastWidth(canvas, text, own) : canvas.width(text, own);
      least[i] = std::max(least[i], whole + 2 * cellPadding + slack);
    }
    // A column of words that wants more than this breaks its lines rather than squeezing the others.
    if (words) {
      needed[i] = std::max(least[i], std::min(needed[i], std::max(given[i], width * 0.4)));
      ofWords.push_back(i);
    } else {
      numbers += least[i];
    }
  }
  const double sum = std::accumulate(needed.begin(), needed.end(), 0.0);
  const double leastSum = std::accumulate(least.begin(), least.end(), 0.0);
  if (leastSum >= width) {
    // Words in the narrowest column still have room for two characters or so.
    const double forWords = std::max(width - numbers, static_cast<double>(ofWords.size()) * 4 * font.size);
    limitWidths(least, ofWords, forWords);
    const double shrunk = std::accumulate(least.begin(), least.end(), 0.0);
    for (double& own : least) own *= width / shrunk;
    return least;
  }
  std::vector<double> widths(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (sum <= width)
      widths[i] = needed[i] + (width - sum) * given[i] / width;
    else
      widths[i] = least[i] + (needed[i] - least[i]) * (width - leastSum) / (sum - leastSum);
  }
  return widths;
}

class Pages {
public:
  Pages(PageCanvas& canvas, const PageSetup& page, const PageBand& head, const PageBand& foot)
      : canvas_(canvas), page_(page), head_(head), foot_(foot), width_(page.width - page.left - page.right) {
    top_ = page.top + bandHeight(head) + (bandHeight(head) > 0 ? bandDistance : 0);
    bottom_ = page.height - page.bottom - bandHeight(foot) - (bandHeight(foot) > 0 ? bandDistance : 0);
    if (width_ < leastRoom || bottom_ - top_ < leastRoom)
      throw std::runtime_error("the layouts leave no room on the page");
  }

  std::size_t draw(const std::vector<PageBlock>& blocks) {
    measure(blocks);
    breakPages(blocks);
    for (std::size_t n = 0; n < pages_.size(); ++n) {
      band(head_, page_.top, n + 1);
      for (const Slice& slice : pages_[n]) draw(blocks[slice.block], slice);
      band(foot_, page_.height - page_.bottom - bandHeight(foot_), n + 1);
      canvas_.endPage();
    }
    return pages_.size();
  }

private:
  // A part of a block on a page: rows [first, last) of a table, below its header row; or a paragraph.
  struct Slice {
    std::size_t block, first, last;
    double y;
  };
  struct Measured {
    double height = 0;  // of a paragraph, or of the table's header row
    std::vector<double> columns;
    std::vector<float> rows;  // heights, without the header row
    // A row whose first cell is empty says more about the row above it, a sum for one, and stays with it.
    std::vector<bool> joined;
  };

  // --- bands

  static std::string filled(const PageBand& band, const LayoutText& text, const std::string& page,
                            const std::string& pages) {
    LayoutFields fields = band.fields;
    fields["page"] = page;
    fields["pages"] = pages;
    return text.filled(fields);
  }
  static PageFont fontOf(const LayoutText& text) { return {text.size, text.bold}; }

  // Height of a row without its gap; nullopt when it is left out.
  std::optional<double> rowHeight(const PageBand& band, const LayoutRow& row) {
    if (row.thickness > 0) return row.thickness;
    const std::vector<double> shares = row.shares();
    double height = 0;
    for (std::size_t i = 0; i < row.texts.size(); ++i) {
      // Page numbers have their room before they are known.
      const std::string text = filled(band, row.texts[i], "0000", "0000");
      if (!text.empty()) height = std::max(height, canvas_.height(text, fontOf(row.texts[i]), shares[i] * width_));
    }
    return height > 0 || row.texts.empty() ? std::optional(height) : std::nullopt;
  }
  double bandHeight(const PageBand& band) {
    if (!band.layout) return 0;
    double height = 0;
    for (const LayoutRow& row : band.layout->rows)
      if (const auto own = rowHeight(band, row)) height += row.gap + *own;
    return height;
  }
  void band(const PageBand& band, double y, std::size_t page) {
    if (!band.layout) return;
    for (const LayoutRow& row : band.layout->rows) {
      const auto height = rowHeight(band, row);
      if (!height) continue;
      y += row.gap;
      double x = page_.left;
      if (row.thickness > 0) canvas_.fill(x, y, width_, row.thickness, row.ink);
      const std::vector<double> shares = row.shares();
      for (std::size_t i = 0; i < row.texts.size(); ++i) {
        const LayoutText& text = row.texts[i];
        canvas_.text(x, y, shares[i] * width_, filled(band, text, std::to_string(page), std::to_string(pages_.size())),
                     fontOf(text), text.align, text.ink);
        x += shares[i] * width_;
      }
      y += *height;
    }
  }

  // --- blocks

  void measure(const std::vector<PageBlock>& blocks) {
    for (const PageBlock& block : blocks) {
      Measured m;
      if (block.paragraph) {
        m.height = canvas_.height(block.paragraph->text, block.paragraph->font, width_);
      } else if (block.table && !block.table->rows->empty()) {
        const PageTable& table = *block.table;
        m.columns = columnWidths(canvas_, gridFont(), headerFont(), table, width_);
        m.height = gridRowHeight(table.rows->front(), m.columns, headerFont());
        m.rows.reserve(table.rows->size() - 1);
        for (std::size_t n = 1; n < table.rows->size(); ++n) {
          m.rows.push_back(static_cast<float>(gridRowHeight((*table.rows)[n], m.columns, gridFont())));
          m.joined.push_back(n > 1 && Cells{(*table.rows)[n]}[0].empty());
        }
      }
      measured_.push_back(std::move(m));
    }
  }
  PageFont gridFont() const { return {page_.gridSize, false}; }
  PageFont headerFont() const { return {page_.gridSize, true}; }
  double gridRowHeight(const std::vector<std::string>& row, const std::vector<double>& columns, const PageFont& font) {
    double height = canvas_.lineHeight(font);
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (const std::string& text = Cells{row}[i]; !text.empty())
        height = std::max(height, canvas_.height(text, font, columns[i] - 2 * cellPadding));
    return height + 2 * rowPadding;
  }

  double room() const { return bottom_ - y_; }
  void newPage() {
    pages_.emplace_back();
    y_ = top_;
  }
  void breakPages(const std::vector<PageBlock>& blocks) {
    newPage();
    for (std::size_t b = 0; b < blocks.size(); ++b) {
      if (y_ > top_) {
        if (blocks[b].gap + leastHeight(blocks, b) > room())
          newPage();
        else
          y_ += blocks[b].gap;
      }
      if (blocks[b].paragraph) {
        pages_.back().push_back({b, 0, 0, y_});
        y_ += measured_[b].height;
      } else if (blocks[b].table) {
        breakTable(b);
      }
    }
  }
  // What has to stand on one page: a paragraph, a heading with the beginning of what it is the heading of, a table's
  // header with one row and what belongs to it.
  double leastHeight(const std::vector<PageBlock>& blocks, std::size_t b) const {
    const Measured& m = measured_[b];
    const double own = m.height + firstRows(m);
    const bool keep = blocks[b].paragraph && blocks[b].paragraph->keepWithNext && b + 1 < blocks.size();
    return keep ? own + blocks[b + 1].gap + leastHeight(blocks, b + 1) : own;
  }
  // A row with so many others below it that no page holds them stands for itself.
  double firstRows(const Measured& m) const {
    if (m.rows.empty()) return 0;
    double height = m.rows.front();
    for (std::size_t n = 1; n < m.rows.size() && m.joined[n]; ++n) height += m.rows[n];
    return m.height + height > bottom_ - top_ ? m.rows.front() : height;
  }
  void breakTable(std::size_t b) {
    const Measured& m = measured_[b];
    if (m.columns.empty()) return;
    std::size_t first = 0;
    double height = m.height;
    const auto close = [&](std::size_t last) {
      pages_.back().push_back({b, first, last, y_});
      y_ += height;
      first = last;
      height = m.height;
    };
    for (std::size_t n = 0; n < m.rows.size(); ++n) {
      // A row that is higher than a page is cut by the paper; it must not come up on page after page.
      if (height + m.rows[n] > room() && n > first) {
        std::size_t next = n;
        double moved = 0;  // height of the rows that go to the next page with this one
        while (next > first && m.joined[next]) moved += m.rows[--next];
        // They began this page, or one page does not hold them all: they are parted.
        if (next == first || m.height + moved + m.rows[n] > bottom_ - top_) next = n, moved = 0;
        height -= moved;
        close(next);
        newPage();
        height += moved;
      }
      height += m.rows[n];
    }
    close(m.rows.size());
  }

  void draw(const PageBlock& block, const Slice& slice) {
    if (block.paragraph) {
      const PageParagraph& p = *block.paragraph;
      canvas_.text(page_.left, slice.y, width_, p.text, p.font, TextAlign::left, p.ink);
      return;
    }
    const Measured& m = measured_[slice.block];
    const PageTable& table = *block.table;
    double y = slice.y;
    canvas_.fill(page_.left, y, width_, m.height, page_.gridHeader);
    gridRow(table, table.rows->front(), m.columns, y, headerFont(), {});
    y += m.height;
    for (std::size_t n = slice.first; n < slice.last; ++n) {
      const auto& row = (*table.rows)[n + 1];
      const auto ink = table.ink ? table.ink(row) : std::nullopt;
      gridRow(table, row, m.columns, y, gridFont(), ink.value_or(Ink{}));
      y += m.rows[n];
      canvas_.fill(page_.left, y - thinLine / 2, width_, thinLine, lineInk);
    }
  }
  void gridRow(const PageTable& table, const std::vector<std::string>& row, const std::vector<double>& columns,
               double y, const PageFont& font, Ink ink) {
    double x = page_.left;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      canvas_.text(x + cellPadding, y + rowPadding, columns[i] - 2 * cellPadding, Cells{row}[i], font,
                   table.columns[i].align, ink);
      x += columns[i];
    }
  }

  PageCanvas& canvas_;
  const PageSetup& page_;
  const PageBand &head_, &foot_;
  double width_, top_ = 0, bottom_ = 0, y_ = 0;
  std::vector<Measured> measured_;
  std::vector<std::vector<Slice>> pages_;
};

}  // namespace

std::size_t drawPages(PageCanvas& canvas, const PageSetup& page, const PageBand& head, const PageBand& foot,
                      const std::vector<PageBlock>& blocks) {
  return Pages(canvas, page, head, foot).draw(blocks);
}

}  // namespace host
