#include "host/print/page_print.h"

#include <fstream>
#include <stdexcept>

#include "host/format_database.h"
#include "host/print/pages.h"
#include "host/print/text_pages.h"
#include "host/utf8_path.h"
#include "host/whole_file.h"
#include "platform/value.h"

namespace host {
namespace {

bool isPdf(const std::string& fileName) {
  return platform::toLowerAscii(fileName).ends_with(".pdf");
}

struct Table {
  std::vector<std::string> names;
  LayoutFields fields;
};

// The columns of a table, and the texts of its first row.
Table readTable(platform::FormatDatabase& database, const std::string& name) {
  Table table;
  const auto rows = database.OpenTable(name);
  for (std::size_t i = 0; i < rows->FieldCount(); ++i) {
    table.names.push_back(rows->FieldName(i));
    table.fields[table.names.back()] = rows->Eof() ? std::string() : rows->Field(i).displayText();
  }
  return table;
}

PageTable gridOf(const platform::PrintControl::Job& job) {
  static const std::vector<std::vector<std::string>> empty;
  PageTable table{job.grid ? job.grid : &empty, {}, {}};
  std::size_t columns = job.columnWidths.size();
  for (const auto& row : *table.rows) columns = std::max(columns, row.size());
  for (std::size_t i = 0; i < columns; ++i) {
    constexpr int right = 1, centred = 2, ordinaryWidth = 1000;
    const int align = i < job.alignments.size() ? job.alignments[i] : 0;
    table.columns.push_back({static_cast<double>(i < job.columnWidths.size() ? job.columnWidths[i] : ordinaryWidth),
                             align == right     ? TextAlign::right
                             : align == centred ? TextAlign::centre
                                                : TextAlign::left});
  }
  return table;
}

}  // namespace

bool PagePrint::canPrint(const std::string& fileName) {
  return (isPdf(fileName) && canMakePdf()) || platform::toLowerAscii(fileName).ends_with(".txt");
}

std::string_view PagePrint::endings() {
  return canMakePdf() ? ".pdf, .txt" : ".txt";
}

int PagePrint::Print(const Job& job) {
  failure_.clear();
  unknown_ = 0;
  if (file_.empty() && !maker_) return operatorLeft;
  try {
    if (maker_)
      write(job, {});
    else
      writeWhole(file_, [&](const std::string& path) { write(job, path); });
  } catch (const LayoutError& e) {
    failure_ = e.what();
    return badLayout;
  } catch (const platform::RunTimeError& e) {
    failure_ = e.what();
    return badFormatDatabase;
  } catch (const std::runtime_error& e) {
    failure_ = e.what();
    return cannotWrite;
  }
  ++printed_;
  return 0;
}

void PagePrint::write(const Job& job, const std::string& path) {
  const PageLayout head = readPageLayout(job.headLayout, LayoutPart::head);
  const PageLayout foot = readPageLayout(job.footLayout, LayoutPart::foot);
  const auto opened = tables_ ? nullptr : openFormatDatabase(job.formatDatabase);
  platform::FormatDatabase& database = tables_ ? *tables_ : *opened;
  const Table headTable = readTable(database, job.headTable), footTable = readTable(database, job.footTable);
  head.requireFields(headTable.names);
  foot.requireFields(footTable.names);
  const PageBand headBand{&head, headTable.fields}, footBand{&foot, footTable.fields};
  const PageTable grid = gridOf(job);

  if (!maker_ && !isPdf(file_)) {
    std::ofstream out(pathOf(path), std::ios::binary | std::ios::trunc);
    out << textPages(headBand, footBand, grid);
    out.close();
    if (!out) throw std::runtime_error("file " + path + " cannot be written");
    return;
  }
  CanvasSettings settings{path, head.page.width, head.page.height, head.page.fonts, language_, {}, {}};
  if (!head.rows.empty() && !head.rows.front().texts.empty())
    settings.title = head.rows.front().texts.front().filled(headTable.fields);
  const auto canvas = maker_ ? maker_(settings) : newPdfCanvas(settings);
  drawPages(*canvas, head.page, headBand, footBand, {{0, {}, grid}});
  canvas->finish();
  unknown_ = canvas->unknownCharacters();
}

}  // namespace host
