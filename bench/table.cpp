#include "bench/table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace bench {

namespace {

constexpr std::size_t columnCount = 8;
using Row = std::array<std::string, columnCount>;
// Numbers stand right-aligned below each other, words left.
constexpr std::array<bool, columnCount> isNumber{false, true, true, true, true, false, false, true};

std::string number(double value, int decimals, const char* unit) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f%s", decimals, value, unit);
  return text;
}

// Characters of UTF-8: all bytes but the continuing ones.
std::size_t width(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string ratioText(double ratio) {
  return std::isfinite(ratio) ? number(ratio, 2, "") : "-";
}

std::string measuredText(double measured, Line::Unit unit) {
  return unit == Line::Unit::bytes ? memoryText(static_cast<std::int64_t>(measured)) : secondsText(measured);
}

}  // namespace

std::string secondsText(double seconds) {
  if (seconds >= 1) return number(seconds, 3, " s");
  if (seconds >= 1e-3) return number(seconds * 1e3, 1, " ms");
  return number(seconds * 1e6, 1, " us");
}

std::string memoryText(const std::optional<std::int64_t>& bytes) {
  constexpr double mebibyte = 1024.0 * 1024.0;
  return bytes ? number(static_cast<double>(*bytes) / mebibyte, 1, " MiB") : "-";
}

std::string table(const std::vector<Result>& results, bool judged) {
  std::vector<Row> rows{{"case", "size", "ours", "floor", "ratio", "target", "met", "peak memory"}};
  for (const Result& r : results) {
    rows.push_back({r.name, r.line.size, measuredText(r.line.ours, r.line.unit),
                    measuredText(r.line.floor, r.line.unit), ratioText(r.ratio()), r.target,
                    !judged   ? "-"
                    : r.met() ? "yes"
                              : "no",
                    memoryText(r.peakBytes)});
  }
  std::array<std::size_t, columnCount> widths{};
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < columnCount; ++i) widths[i] = std::max(widths[i], width(row[i]));
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < columnCount; ++i) {
      const std::string blanks(widths[i] - width(row[i]), ' ');
      if (i > 0) line += "  ";
      line += isNumber[i] ? blanks + row[i] : row[i] + blanks;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace bench
