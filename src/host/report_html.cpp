// The report as one HTML page: outcome first, then numbers, then tables. It loads nothing: style, script and data stand
// in it, and its own policy forbids everything else. Long tables show their first rows; the script pages through the
// others, which lie in the page as data, because a browser that has to lay out a hundred thousand rows is of no use.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "host/amount_text.h"
#include "host/json_text.h"
#include "host/messages.h"
#include "host/report_file.h"
#include "host/resources.h"

namespace host {
namespace {

constexpr std::size_t pageRows = 200;         // as in report.js
constexpr std::size_t rowsWithoutTools = 20;  // a table that is seen whole needs no search

std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        // Control characters have no place in a page, not even as references.
        out += static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' ? ' ' : c;
    }
  return out;
}

// JSON inside a script element: no text may end the element.
std::string scriptJson(std::string json) {
  std::string out;
  for (const char c : json) out += c == '<' ? std::string("\\u003c") : std::string(1, c);
  return out;
}

std::int64_t countOf(const std::string& text) {
  std::int64_t n = 0;
  std::from_chars(text.data(), text.data() + text.size(), n);
  return std::max<std::int64_t>(n, 0);
}

const char* kindName(CellKind kind) {
  switch (kind) {
    case CellKind::code:
      return "code";
    case CellKind::count:
    case CellKind::milliseconds:
      return "count";
    case CellKind::amount:
    case CellKind::quantity:
      return "amount";
    case CellKind::verdict:
      return "verdict";
    case CellKind::text:
      break;
  }
  return "text";
}
const char* kindClass(CellKind kind) {
  if (isNumber(kind)) return "n";
  return kind == CellKind::code ? "c" : kind == CellKind::verdict ? "k" : "t";
}

const char* gradeName(Grade grade) {
  switch (grade) {
    case Grade::good:
      return "good";
    case Grade::attention:
      return "attention";
    case Grade::stopped:
      return "stopped";
    case Grade::failed:
      break;
  }
  return "failed";
}
// Drawn in the colour of the text, 24 by 24.
const char* gradeDrawing(Grade grade) {
  switch (grade) {
    case Grade::good:
      return "<circle cx=\"12\" cy=\"12\" r=\"10\"/><path d=\"m7.5 12.4 3 3 6-6.4\"/>";
    case Grade::attention:
      return "<path d=\"M12 3 2.5 20h19L12 3Z\"/><path d=\"M12 10v4.5M12 17.2v.1\"/>";
    case Grade::stopped:
      return "<path d=\"M8 2.5h8l5.5 5.5v8L16 21.5H8L2.5 16V8L8 2.5Z\"/><path d=\"M8 12h8\"/>";
    case Grade::failed:
      break;
  }
  return "<circle cx=\"12\" cy=\"12\" r=\"10\"/><path d=\"m8.5 8.5 7 7m0-7-7 7\"/>";
}

class Page {
public:
  explicit Page(const ReportModel& model) : model_(model), messages_(model.language) {}

  std::string html() {
    head();
    outcome();
    figures();
    contents();
    for (const ReportTable& table : model_.tables) section(table);
    out_ += "</main>\n<script type=\"application/json\" id=\"words\">" + words() + "</script>\n<script>\n";
    out_ += resource("report/report.js").value_or("");
    out_ += "</script>\n</body>\n</html>\n";
    return std::move(out_);
  }

private:
  std::string own(const char* key, const std::vector<platform::Value>& arguments = {}) const {
    return messages_.text(std::string("Gljz.Host.") + key, arguments);
  }
  void tag(std::string_view open, std::string_view text, std::string_view close) {
    out_ += open;
    out_ += escaped(text);
    out_ += close;
  }

  void head() {
    out_ += "<!DOCTYPE html>\n<html lang=\"" + escaped(model_.language) + "\">\n<head>\n<meta charset=\"utf-8\">\n";
    out_ +=
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'; "
        "script-src 'unsafe-inline'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    tag("<title>", model_.title, "</title>\n<style>\n");
    out_ += resource("report/report.css").value_or("");
    out_ += "</style>\n</head>\n<body lang=\"" + escaped(model_.language) + "\">\n<main>\n";
    tag("<header>\n<h1>", model_.title, "</h1>\n<dl class=\"facts\">\n");
    for (const ReportFact& fact : model_.facts) {
      tag("<div><dt>", fact.label, "</dt>");
      tag("<dd>", fact.value, "</dd></div>\n");
    }
    out_ += "</dl>\n</header>\n";
  }

  void outcome() {
    out_ += std::string("<div class=\"outcome ") + gradeName(model_.grade) + "\" id=\"outcome\" role=\"status\">\n";
    out_ += std::string(
                "<svg viewBox=\"0 0 24 24\" fill=\"none\" stroke=\"currentColor\" stroke-width=\"2\" "
                "stroke-linecap=\"round\" stroke-linejoin=\"round\" aria-hidden=\"true\">") +
            gradeDrawing(model_.grade) + "</svg>\n<div>\n";
    tag("<p class=\"headline\">", model_.headline, "</p>\n");
    for (const std::string& sentence : model_.sentences) tag("<p>", sentence, "</p>\n");
    out_ += "</div>\n</div>\n";
  }

  // A figure leads to its table.
  void figures() {
    constexpr std::array<std::pair<const char*, const char*>, 6> tables = {{{"rows", "data"},
                                                                            {"right", "accounts"},
                                                                            {"wrong", "accounts"},
                                                                            {"leftOut", "leftOut"},
                                                                            {"changed", "changed"},
                                                                            {"failures", "failures"}}};
    out_ += "<div class=\"figures\">\n";
    for (const ReportFigure& figure : model_.figures) {
      const auto target =
          std::find_if(tables.begin(), tables.end(), [&](const auto& t) { return figure.id == t.first; });
      const bool leads = target != tables.end() && model_.table(target->second) != nullptr;
      const std::string look = figure.attention ? " look" : "";
      out_ += leads ? "<a class=\"figure" + look + "\" href=\"#" + target->second + "\">"
                    : "<div class=\"figure" + look + "\">";
      tag("<b>", grouped(figure.value), "</b>");
      tag("<span>", figure.label, "</span>");
      out_ += leads ? "</a>\n" : "</div>\n";
    }
    out_ += "</div>\n";
  }

  void contents() {
    out_ += "<nav aria-label=\"" + escaped(own("Html.Contents")) + "\">\n";
    for (const ReportTable& table : model_.tables) {
      out_ += "<a href=\"#" + table.id + "\">";
      tag("", table.tab, "</a>\n");
    }
    out_ += "</nav>\n";
  }

  void section(const ReportTable& table) {
    const bool tools = table.rows.size() > rowsWithoutTools && table.bars.empty() && table.columns.size() > 1;
    const bool paged = tools && table.rows.size() > pageRows;
    out_ += "<section id=\"" + table.id + "\"";
    if (tools) {
      out_ += " data-kinds=\"";
      for (const ReportColumn& column : table.columns)
        out_ += std::string(&column == &table.columns.front() ? "" : " ") + kindName(column.kind);
      out_ += "\"";
    }
    tag(">\n<h2>", table.title, "</h2>\n");
    if (table.columns.size() == 1) {
      list(table);
    } else if (!table.rows.empty()) {
      share(table);
      legend(table);
      if (tools) out_ += "<div class=\"tools\" hidden></div>\n";
      if (paged)
        tag("<p class=\"remark first-rows\">",
            own("Html.FirstRows", {std::to_string(pageRows), std::to_string(table.rows.size())}), "</p>\n");
      grid(table, paged ? pageRows : table.rows.size());
      if (paged) data(table);
    }
    for (const std::string& remark : table.remarks) tag("<p class=\"remark\">", remark, "</p>\n");
    out_ += "</section>\n";
  }

  void list(const ReportTable& table) {
    out_ += "<ul>\n";
    for (const auto& row : table.rows) tag("<li>", row.front(), "</li>\n");
    out_ += "</ul>\n";
  }

  // The shares of right and wrong accounts above the table that judges them. (The sides of a year are no accounts.)
  void share(const ReportTable& table) {
    const std::size_t verdict = table.index(CellKind::verdict);
    if (verdict == table.columns.size() || table.id == "sides") return;
    std::size_t right = 0, wrong = 0;
    for (const auto& row : table.rows) {
      right += row[verdict] == "Y" ? 1 : 0;
      wrong += row[verdict] == "X" ? 1 : 0;
    }
    if (right + wrong == 0) return;
    out_ += "<div class=\"share\" aria-hidden=\"true\">";
    if (right > 0) out_ += "<span class=\"right\" style=\"flex:" + std::to_string(right) + "\"></span>";
    if (wrong > 0) out_ += "<span class=\"wrongs\" style=\"flex:" + std::to_string(wrong) + "\"></span>";
    out_ += "</div>\n";
  }

  void legend(const ReportTable& table) {
    if (table.bars.size() < 2) return;
    out_ += "<div class=\"legend\">";
    for (std::size_t part = 0; part < table.bars.size(); ++part)
      tag("<span><i class=\"p" + std::to_string(part) + "\"></i>", table.columns[table.bars[part]].title, "</span>");
    out_ += "</div>\n";
  }

  static std::int64_t barLength(const ReportTable& table, const std::vector<std::string>& row) {
    std::int64_t length = 0;
    for (const std::size_t column : table.bars) length += countOf(row[column]);
    return length;
  }

  void grid(const ReportTable& table, std::size_t rows) {
    out_ += "<div class=\"scroll\">\n<table>\n<thead><tr>";
    for (const ReportColumn& column : table.columns)
      tag(std::string("<th scope=\"col\" class=\"") + kindClass(column.kind) + "\">", column.title, "</th>");
    if (!table.bars.empty()) out_ += "<td class=\"bar\"></td>";
    out_ += "</tr></thead>\n<tbody>\n";
    std::int64_t longest = 1;
    for (const auto& row : table.rows) longest = std::max(longest, barLength(table, row));
    const std::size_t verdict = table.index(CellKind::verdict);
    for (std::size_t n = 0; n < rows; ++n) {
      const auto& row = table.rows[n];
      const bool judged = verdict < row.size();
      out_ += judged && row[verdict] == "X" ? "<tr class=\"wrong\">"
              : judged && row[0].empty()    ? "<tr class=\"sum\">"
                                            : "<tr>";
      for (std::size_t i = 0; i < row.size(); ++i) cell(table, i, row[i]);
      if (!table.bars.empty()) bar(table, row, longest);
      out_ += "</tr>\n";
    }
    out_ += "</tbody>\n</table>\n</div>\n";
  }

  void cell(const ReportTable& table, std::size_t column, const std::string& text) {
    const CellKind kind = table.columns[column].kind;
    out_ += std::string("<td class=\"") + kindClass(kind) + (text == "0" && isNumber(kind) ? " zero\"" : "\"");
    if (isNumber(kind)) {
      const std::string shown = grouped(text);
      if (shown != text) out_ += " data-raw=\"" + escaped(text) + "\"";
      tag(">", shown, "</td>");
    } else if (kind == CellKind::verdict && !text.empty()) {
      tag("><span class=\"mark " + escaped(text) + "\">", text, "</span></td>");
    } else if (table.id == "failures" && column + 1 == table.columns.size()) {
      tag("><code>", text, "</code></td>");
    } else {
      tag(">", text, "</td>");
    }
  }

  void bar(const ReportTable& table, const std::vector<std::string>& row, std::int64_t longest) {
    out_ += "<td class=\"bar\" aria-hidden=\"true\">";
    for (std::size_t part = 0; part < table.bars.size(); ++part) {
      const std::int64_t length = countOf(row[table.bars[part]]);
      if (length == 0) continue;
      char width[32];
      std::snprintf(width, sizeof width, "%.2f", 100.0 * static_cast<double>(length) / static_cast<double>(longest));
      // What is there shows, however short it is beside the longest.
      out_ += "<i class=\"p" + std::to_string(part) + "\" style=\"width:max(2px," + width + "%)\"></i>";
    }
    out_ += "</td>";
  }

  void data(const ReportTable& table) {
    out_ += "<script type=\"application/json\">[";
    std::string json;
    for (std::size_t n = 0; n < table.rows.size(); ++n) {
      json = n == 0 ? "\n[" : ",\n[";
      for (std::size_t i = 0; i < table.rows[n].size(); ++i) {
        if (i > 0) json += ',';
        appendJsonString(json, table.rows[n][i]);
      }
      out_ += scriptJson(json + "]");
    }
    out_ += "]</script>\n";
  }

  std::string words() const {
    std::string json = "{";
    const std::pair<const char*, const char*> texts[] = {{"search", "Html.Search"},
                                                         {"onlyWrong", "Html.OnlyWrong"},
                                                         {"noMatch", "Html.NoMatch"},
                                                         {"previous", "Html.Previous"},
                                                         {"next", "Html.Next"}};
    for (const auto& [name, key] : texts) json += jsonString(name) + ":" + jsonString(own(key)) + ",";
    // The script fills in the numbers.
    json += "\"range\":" + jsonString(own("Html.Range", {"{0}", "{1}", "{2}"})) + "}";
    return scriptJson(json);
  }

  const ReportModel& model_;
  Messages messages_;
  std::string out_;
};

}  // namespace

std::string reportHtml(const ReportModel& model) {
  return Page(model).html();
}

}  // namespace host
