// The report as PDF, on the pages that prints are made of: title above, page number below, outcome first.

#include "host/amount_text.h"
#include "host/messages.h"
#include "host/print/page_canvas.h"
#include "host/print/pages.h"
#include "host/report_file.h"

namespace host {
namespace {

constexpr std::string_view headText =
    "paper a4 landscape\n"
    "margins 14 14 12 11\n"
    "fonts \"WenQuanYi Micro Hei\" \"Noto Sans CJK SC\" \"Noto Sans\"\n"
    "grid 8\n"
    "row\n"
    "text \"{title}\" size 9 colour #5A6675 width 70\n"
    "text \"{account}\" size 9 colour #5A6675 right\n"
    "rule 0.5 gap 1 colour #C4CBD3\n";
std::string footText(const Messages& messages) {
  return "rule 0.5 colour #C4CBD3\n"
         "row gap 1\n"
         "text \"{made}\" size 8 colour #5A6675\n"
         "text \"" +
         messages.text("Gljz.Host.Page.Number", {"{page}", "{pages}"}) + "\" size 8 colour #5A6675 right\n";
}

constexpr Ink muted{0x5A, 0x66, 0x75}, goodInk{0x15, 0x73, 0x47}, attentionInk{0x9A, 0x52, 0x00},
    badInk{0xB8, 0x24, 0x2B};

Ink inkOf(Grade grade) {
  return grade == Grade::good ? goodInk : grade == Grade::failed ? badInk : attentionInk;
}

using Rows = std::vector<std::vector<std::string>>;

class Document {
public:
  explicit Document(const ReportModel& model) : model_(model), messages_(model.language) {
    rows_.reserve(model.tables.size() + 1);  // blocks point at them
  }

  std::vector<PageBlock> blocks() {
    paragraph(0, model_.title, {17, true});
    paragraph(8, model_.headline, {13, true}, inkOf(model_.grade));
    for (const std::string& sentence : model_.sentences) paragraph(3, sentence, {9.5});
    figures();
    std::string facts;
    for (const ReportFact& fact : model_.facts)
      facts += (facts.empty() ? "" : "      ") + fact.label + " " + fact.value;
    paragraph(8, facts, {9}, muted);
    for (const ReportTable& table : model_.tables) add(table);
    return std::move(blocks_);
  }

private:
  void paragraph(double gap, const std::string& text, PageFont font, Ink ink = {}, bool keep = false) {
    if (!text.empty()) blocks_.push_back({gap, PageParagraph{text, font, ink, keep}, {}});
  }
  void figures() {
    Rows& rows = rows_.emplace_back(2);
    PageTable table{&rows, {}, {}};
    for (const ReportFigure& figure : model_.figures) {
      rows[0].push_back(figure.label);
      rows[1].push_back(grouped(figure.value));
      table.columns.push_back({1, TextAlign::centre});
    }
    blocks_.push_back({10, {}, std::move(table)});
  }
  void add(const ReportTable& table) {
    paragraph(16, table.title, {11.5, true}, {}, true);
    if (table.columns.size() == 1) {
      for (const auto& row : table.rows) paragraph(3, row.front(), {9.5});
    } else if (!table.rows.empty()) {
      Rows& rows = rows_.emplace_back();
      rows.reserve(table.rows.size() + 1);
      rows.emplace_back();
      PageTable grid{&rows, {}, {}};
      for (const ReportColumn& column : table.columns) {
        rows.front().push_back(column.title);
        grid.columns.push_back({1, isNumber(column.kind)              ? TextAlign::right
                                   : column.kind == CellKind::verdict ? TextAlign::centre
                                                                      : TextAlign::left});
      }
      for (const auto& row : table.rows) {
        rows.push_back(row);
        for (std::size_t i = 0; i < row.size(); ++i)
          if (isNumber(table.columns[i].kind)) rows.back()[i] = grouped(row[i]);
      }
      const std::size_t verdict = table.index(CellKind::verdict);
      if (verdict < table.columns.size())
        grid.ink = [verdict](const std::vector<std::string>& row) -> std::optional<Ink> {
          if (row[verdict] == "X") return badInk;
          if (row[0].empty()) return muted;
          return std::nullopt;
        };
      blocks_.push_back({5, {}, std::move(grid)});
    }
    for (const std::string& remark : table.remarks) paragraph(4, remark, {8.5}, muted);
  }

  const ReportModel& model_;
  Messages messages_;
  std::vector<Rows> rows_;
  std::vector<PageBlock> blocks_;
};

}  // namespace

void writeReportPdf(const std::string& fileName, const ReportModel& model) {
  const PageLayout head = parsePageLayout(headText, "head", LayoutPart::head);
  const Messages messages(model.language);
  const PageLayout foot = parsePageLayout(footText(messages), "foot", LayoutPart::foot);
  CanvasSettings settings;
  settings.file = fileName;
  settings.width = head.page.width;
  settings.height = head.page.height;
  settings.fonts = head.page.fonts;
  settings.language = model.language;
  settings.title = model.title;
  settings.author = "gljz";
  const auto canvas = newPdfCanvas(settings);
  Document document(model);
  const LayoutFields fields{{"title", model.title},
                            {"account", model.facts.empty() ? std::string() : model.facts.front().value},
                            {"made", model.headline}};
  drawPages(*canvas, head.page, {&head, fields}, {&foot, fields}, document.blocks());
  canvas->finish();
}

}  // namespace host
