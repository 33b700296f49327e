// The report as a workbook: a sheet for the outcome and one for each table. Numbers are number cells with a format,
// codes are text cells, so that leading zeros stay.

#include <xlsxwriter.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <stdexcept>

#include "host/display_width.h"
#include "host/messages.h"
#include "host/report_file.h"

namespace host {
namespace {

constexpr lxw_row_t sheetRows = LXW_ROW_MAX;  // 1,048,576
constexpr std::size_t cellBytes = 32000;      // a cell holds 32,767 characters

// A cell's number is a double: of more digits than these it would not keep each.
constexpr std::size_t exactDigits = 15;

std::optional<double> exactNumber(const std::string& text) {
  const auto digits = std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  double value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc() || end != text.data() + text.size() || static_cast<std::size_t>(digits) > exactDigits)
    return std::nullopt;
  return value;
}

std::string fitted(const std::string& text) {
  if (text.size() <= cellBytes) return text;
  std::size_t end = cellBytes;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;  // whole characters
  return text.substr(0, end);
}

// A tab's name: at most 31 characters, none of []:*?/\ .
std::string sheetName(const std::string& tab) {
  constexpr std::size_t most = 31;
  std::string name;
  std::size_t characters = 0;
  for (const char c : tab) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80 && ++characters > most) break;
    name += std::string_view("[]:*?/\\").find(c) == std::string_view::npos ? c : ' ';
  }
  return name;
}

class Workbook {
public:
  Workbook(const std::string& fileName, const ReportModel& model) : model_(model), messages_(model.language) {
    // Rows go to a temporary file as they come: a report of a hundred thousand accounts must not fill the memory.
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    book_ = workbook_new_opt(fileName.c_str(), &options);
    if (!book_) throw std::runtime_error("out of memory");
    std::string title = model.title, author = "gljz";  // the library's texts are not const, though it copies them
    lxw_doc_properties properties{};
    properties.title = title.data();
    properties.author = author.data();
    workbook_set_properties(book_, &properties);
    formats();
  }
  ~Workbook() {
    if (book_) workbook_close(book_);
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  void write() {
    outcome();
    for (const ReportTable& table : model_.tables) sheet(table);
    require(workbook_close(std::exchange(book_, nullptr)));
  }

private:
  static void require(lxw_error error) {
    if (error != LXW_NO_ERROR) throw std::runtime_error(lxw_strerror(error));
  }
  std::string own(const char* key, const std::vector<platform::Value>& arguments = {}) const {
    return messages_.text(std::string("Gljz.Host.") + key, arguments);
  }

  lxw_format* format(const char* number = nullptr) {
    lxw_format* f = workbook_add_format(book_);
    format_set_align(f, LXW_ALIGN_VERTICAL_TOP);
    if (number) format_set_num_format(f, number);
    return f;
  }
  void formats() {
    title_ = format();
    format_set_bold(title_);
    format_set_font_size(title_, 16);
    headline_ = format();
    format_set_bold(headline_);
    format_set_font_size(headline_, 13);
    const bool good = model_.grade == Grade::good, failed = model_.grade == Grade::failed;
    format_set_font_color(headline_, good ? 0x157347 : failed ? 0xB8242B : 0x9A5200);
    header_ = format();
    format_set_bold(header_);
    format_set_bg_color(header_, 0xE8EDF3);
    format_set_bottom(header_, LXW_BORDER_THIN);
    headerRight_ = format();
    format_set_bold(headerRight_);
    format_set_bg_color(headerRight_, 0xE8EDF3);
    format_set_bottom(headerRight_, LXW_BORDER_THIN);
    format_set_align(headerRight_, LXW_ALIGN_RIGHT);
    text_ = format();
    wrapped_ = format();
    format_set_text_wrap(wrapped_);
    code_ = format("@");
    count_ = format("#,##0");
    amount_ = format("#,##0.00");
    quantity_ = format("#,##0.######");
    right_ = format("@");
    format_set_align(right_, LXW_ALIGN_RIGHT);
    verdict_ = format();
    format_set_align(verdict_, LXW_ALIGN_CENTER);
    wrong_ = format();
    format_set_align(wrong_, LXW_ALIGN_CENTER);
    format_set_bold(wrong_);
    format_set_font_color(wrong_, 0xB8242B);
    format_set_bg_color(wrong_, 0xFDE8E8);
    label_ = format();
    format_set_font_color(label_, 0x5A6675);
  }

  lxw_worksheet* newSheet(const std::string& tab) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, sheetName(tab).c_str());
    if (!sheet) throw std::runtime_error("no sheet can have the name \"" + tab + "\"");
    constexpr std::uint8_t a4 = 9;
    worksheet_set_paper(sheet, a4);
    worksheet_set_landscape(sheet);
    worksheet_fit_to_pages(sheet, 1, 0);
    worksheet_set_footer(sheet, ("&L" + model_.title + "&R" + own("Page.Number", {"&P", "&N"})).c_str());
    return sheet;
  }
  static void put(lxw_worksheet* sheet, lxw_row_t row, std::size_t column, const std::string& text, lxw_format* f) {
    require(worksheet_write_string(sheet, row, static_cast<lxw_col_t>(column), fitted(text).c_str(), f));
  }
  static void put(lxw_worksheet* sheet, lxw_row_t row, std::size_t column, double number, lxw_format* f) {
    require(worksheet_write_number(sheet, row, static_cast<lxw_col_t>(column), number, f));
  }

  void outcome() {
    lxw_worksheet* sheet = newSheet(own("Tab.Outcome"));
    worksheet_set_column(sheet, 0, 0, 24, nullptr);
    worksheet_set_column(sheet, 1, 1, 60, nullptr);
    lxw_row_t row = 0;
    put(sheet, row++, 0, model_.title, title_);
    ++row;
    put(sheet, row++, 0, model_.headline, headline_);
    for (const std::string& sentence : model_.sentences) put(sheet, row++, 0, sentence, text_);
    ++row;
    for (const ReportFigure& figure : model_.figures) {
      put(sheet, row, 0, figure.label, label_);
      cell(sheet, row++, 1, figure.value, CellKind::count, 0);
    }
    ++row;
    for (const ReportFact& fact : model_.facts) {
      put(sheet, row, 0, fact.label, label_);
      put(sheet, row++, 1, fact.value, text_);
    }
  }

  void sheet(const ReportTable& table) {
    constexpr std::size_t widest = 60, slack = 2;
    lxw_worksheet* sheet = newSheet(table.tab);
    const auto lastColumn = static_cast<lxw_col_t>(table.columns.size() - 1);
    const std::size_t room = sheetRows - 1;
    const std::size_t rows = std::min(table.rows.size(), table.rows.size() > room ? room - 1 : room);
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      std::size_t width = displayWidth(table.columns[i].title);
      // Grouping adds a comma to three digits.
      for (const auto& row : table.rows)
        width = std::max(width, displayWidth(row[i]) + (isNumber(table.columns[i].kind) ? row[i].size() / 3 : 0));
      widths.push_back(std::min(width, widest));
      worksheet_set_column(sheet, static_cast<lxw_col_t>(i), static_cast<lxw_col_t>(i),
                           static_cast<double>(widths.back() + slack), nullptr);
    }
    worksheet_freeze_panes(sheet, 1, 0);
    worksheet_repeat_rows(sheet, 0, 0);
    if (rows > 0) worksheet_autofilter(sheet, 0, 0, static_cast<lxw_row_t>(rows), lastColumn);

    for (std::size_t i = 0; i < table.columns.size(); ++i)
      put(sheet, 0, i, table.columns[i].title, isNumber(table.columns[i].kind) ? headerRight_ : header_);
    lxw_row_t at = 1;
    for (std::size_t n = 0; n < rows; ++n, ++at)
      for (std::size_t i = 0; i < table.rows[n].size(); ++i)
        cell(sheet, at, i, table.rows[n][i], table.columns[i].kind, widths[i]);
    if (rows < table.rows.size())
      put(sheet, at, 0, own("Sheet.Cut", {std::to_string(table.rows.size() - rows)}), text_);
  }

  void cell(lxw_worksheet* sheet, lxw_row_t row, std::size_t column, const std::string& text, CellKind kind,
            std::size_t width) {
    if (text.empty()) return;
    if (isNumber(kind)) {
      if (const auto number = exactNumber(text))
        put(sheet, row, column, *number,
            kind == CellKind::amount     ? amount_
            : kind == CellKind::quantity ? quantity_
                                         : count_);
      else
        put(sheet, row, column, text, right_);
    } else if (kind == CellKind::verdict) {
      put(sheet, row, column, text, text == "X" ? wrong_ : verdict_);
    } else {
      put(sheet, row, column, text, kind == CellKind::code ? code_ : displayWidth(text) > width ? wrapped_ : text_);
    }
  }

  const ReportModel& model_;
  Messages messages_;
  lxw_workbook* book_ = nullptr;
  lxw_format *title_ = nullptr, *headline_ = nullptr, *header_ = nullptr, *headerRight_ = nullptr, *text_ = nullptr,
             *wrapped_ = nullptr, *code_ = nullptr, *count_ = nullptr, *amount_ = nullptr, *quantity_ = nullptr,
             *right_ = nullptr, *verdict_ = nullptr, *wrong_ = nullptr, *label_ = nullptr;
};

}  // namespace

bool canMakeWorkbooks() {
  return true;
}

void writeReportXlsx(const std::string& fileName, const ReportModel& model) {
  Workbook(fileName, model).write();
}

}  // namespace host
