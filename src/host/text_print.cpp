#include "host/text_print.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <vector>

#include "host/display_width.h"
#include "host/format_database.h"

namespace host {
namespace {

using Rows = std::vector<std::vector<std::string>>;

// Fields of the table's first row that hold a text, a line each.
void appendFields(std::string& page, platform::FormatDatabase& database, const std::string& table) {
  const auto rows = database.OpenTable(table);
  if (rows->Eof()) return;
  for (std::size_t i = 0; i < rows->FieldCount(); ++i)
    if (const std::string text = rows->Field(i).displayText(); !text.empty()) page += text + "\n";
}

std::vector<std::size_t> widthsOf(const Rows& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], displayWidth(row[i]));
  }
  return widths;
}

void appendGrid(std::string& page, const Rows& rows, const std::vector<int>& alignments) {
  constexpr int right = 1;
  const std::vector<std::size_t> widths = widthsOf(rows);
  for (std::size_t n = 0; n < rows.size(); ++n) {
    std::string line;
    for (std::size_t i = 0; i < rows[n].size(); ++i)
      line +=
          (i > 0 ? "  " : "") + paddedToWidth(rows[n][i], widths[i], i < alignments.size() && alignments[i] == right);
    line.erase(line.find_last_not_of(' ') + 1);
    page += line + "\n";
    if (n > 0) continue;
    for (std::size_t i = 0; i < widths.size(); ++i) page += (i > 0 ? "  " : "") + std::string(widths[i], '-');
    page += "\n";
  }
}

}  // namespace

int TextPrint::Print(const Job& job) {
  std::string page;
  try {
    const auto database = openFormatDatabase(job.formatDatabase);
    appendFields(page, *database, job.headTable);
    page += "\n";
    if (job.grid) appendGrid(page, *job.grid, job.alignments);
    page += "\n";
    appendFields(page, *database, job.footTable);
  } catch (const platform::RunTimeError&) {
    return noFormatDatabase;
  }
  std::ofstream out(file_, std::ios::binary);
  out << page;
  out.close();
  return out ? 0 : cannotWrite;
}

}  // namespace host
