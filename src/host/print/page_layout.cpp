#include "host/print/page_layout.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

#include "host/utf8_path.h"

namespace host {
namespace {

constexpr double pointsPerMillimetre = 72 / 25.4;
constexpr std::size_t mostBytes = 64 * 1024;
constexpr std::size_t mostRows = 100, mostTexts = 20;

struct Paper {
  std::string_view name;
  double width, height;  // millimetres, upright
};
constexpr Paper papers[] = {{"a3", 297, 420}, {"a4", 210, 297}, {"a5", 148, 210}, {"letter", 215.9, 279.4}};

struct Word {
  std::string text;
  bool quoted = false;
};

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

// Length of the character at the head of the text; 0 when that is no UTF-8.
std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (length == 1) return 1;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  // Overlong forms, halves of surrogate pairs, and what lies above Unicode.
  if ((first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F) || (first == 0xF0 && byte(1) < 0x90) ||
      (first == 0xF4 && byte(1) > 0x8F))
    return 0;
  return length;
}

class Parser {
public:
  Parser(std::string_view text, const std::string& file, LayoutPart part) : text_(text), part_(part) {
    layout_.file = file;
  }

  PageLayout parse() {
    if (text_.size() > mostBytes) fail("the layout is longer than " + std::to_string(mostBytes) + " bytes");
    if (text_.starts_with("\xEF\xBB\xBF")) text_.remove_prefix(3);
    while (!text_.empty()) {
      ++line_;
      const std::size_t end = text_.find('\n');
      requireText(text_.substr(0, end));
      words_ = split(text_.substr(0, end));
      text_.remove_prefix(end == std::string_view::npos ? text_.size() : end + 1);
      at_ = 0;
      if (!words_.empty()) directive();
    }
    return std::move(layout_);
  }

private:
  [[noreturn]] void fail(const std::string& what) const { fail(line_, what); }
  [[noreturn]] void fail(int line, const std::string& what) const {
    throw LayoutError(layout_.file + ":" + std::to_string(line) + ": " + what);
  }

  void requireText(std::string_view line) const {
    for (std::size_t length = 0; !line.empty(); line.remove_prefix(length)) {
      length = characterLength(line);
      if (length == 0) fail("this is not UTF-8");
      if (static_cast<unsigned char>(line[0]) < 0x20 && !isBlank(line[0])) fail("a control character");
    }
  }

  std::vector<Word> split(std::string_view line) const {
    std::vector<Word> words;
    for (std::size_t i = 0; i < line.size();) {
      if (isBlank(line[i])) {
        ++i;
      } else if (line[i] == '#' && !isColour(line.substr(i))) {
        break;
      } else if (line[i] == '"') {
        words.push_back({quotedText(line, i), true});
      } else {
        const std::size_t begin = i;
        while (i < line.size() && !isBlank(line[i]) && line[i] != '"') ++i;
        words.push_back({std::string(line.substr(begin, i - begin)), false});
      }
    }
    return words;
  }
  static bool isColour(std::string_view text) {
    constexpr std::size_t length = 7;
    if (text.size() < length || (text.size() > length && !isBlank(text[length]))) return false;
    return std::all_of(text.begin() + 1, text.begin() + length, [](char c) {
      return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
  }
  // line[i] is the opening quotation mark; i is moved behind the closing one.
  std::string quotedText(std::string_view line, std::size_t& i) const {
    std::string out;
    for (++i; i < line.size(); ++i) {
      if (line[i] == '"') {
        ++i;
        return out;
      }
      if (line[i] == '\\' && i + 1 < line.size()) ++i;
      out += line[i];
    }
    fail("the text has no closing quotation mark");
  }

  // --- words of the line

  bool more() const { return at_ < words_.size(); }
  bool accept(std::string_view word) {
    if (!more() || words_[at_].quoted || words_[at_].text != word) return false;
    ++at_;
    return true;
  }
  std::string quoted(const char* what) {
    if (!more() || !words_[at_].quoted) fail(std::string(what) + " in quotation marks is expected");
    return words_[at_++].text;
  }
  std::optional<double> numberIfAny() {
    if (!more() || words_[at_].quoted) return std::nullopt;
    const std::string& text = words_[at_].text;
    double value = 0;
    const auto [end, failure] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
    ++at_;
    return value;
  }
  double number(const char* what, double least, double most) {
    const std::string given = more() ? "\"" + words_[at_].text + "\"" : "nothing";
    const auto value = numberIfAny();
    if (!value || !(*value >= least && *value <= most)) {
      const auto shown = [](double n) { return std::to_string(static_cast<int>(n)); };
      fail(std::string(what) + ": a number from " + shown(least) + " to " + shown(most) + " is expected, not " + given);
    }
    return *value;
  }
  Ink colour() {
    if (!more() || words_[at_].quoted || words_[at_].text[0] != '#') fail("colour: #RRGGBB is expected");
    const std::string& text = words_[at_++].text;
    std::uint32_t value = 0;
    const auto [end, failure] = std::from_chars(text.data() + 1, text.data() + text.size(), value, 16);
    constexpr std::size_t length = 7;
    if (text.size() != length || failure != std::errc() || end != text.data() + text.size())
      fail("colour: #RRGGBB is expected, not \"" + text + "\"");
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8 & 0xFF),
            static_cast<std::uint8_t>(value & 0xFF)};
  }
  [[noreturn]] void unexpected() const { fail("\"" + words_[at_].text + "\" is not expected here"); }
  void requireEnd() const {
    if (more()) unexpected();
  }

  // --- directives

  void directive() {
    if (words_[0].quoted) fail("a line begins with what it is: row, text, rule, ...");
    if (accept("row")) return row();
    if (accept("text")) return text();
    if (accept("rule")) return rule();
    for (const auto& [name, read] : pageDirectives)
      if (accept(name)) {
        if (part_ == LayoutPart::foot) fail(std::string(name) + " belongs into the head's layout");
        if (!layout_.rows.empty()) fail(std::string(name) + " belongs above the first row");
        return (this->*read)();
      }
    fail("\"" + words_[0].text + "\" is no directive");
  }

  LayoutRow& addRow() {
    if (layout_.rows.size() == mostRows) fail("there are more than " + std::to_string(mostRows) + " rows");
    layout_.rows.emplace_back();
    layout_.rows.back().line = line_;
    return layout_.rows.back();
  }
  double gap() { return number("gap", 0, 200) * pointsPerMillimetre; }

  void row() {
    LayoutRow& row = addRow();
    if (accept("gap")) row.gap = gap();
    requireEnd();
  }

  void text() {
    if (layout_.rows.empty() || layout_.rows.back().thickness > 0) fail("a text belongs into a row");
    LayoutRow& row = layout_.rows.back();
    if (row.texts.size() == mostTexts) fail("there are more than " + std::to_string(mostTexts) + " texts in the row");
    LayoutText text;
    text.line = line_;
    text.pieces = pieces(quoted("a text"));
    while (more()) {
      if (accept("width"))
        text.percent = number("width", 1, 100);
      else if (accept("left"))
        text.align = TextAlign::left;
      else if (accept("right"))
        text.align = TextAlign::right;
      else if (accept("centre"))
        text.align = TextAlign::centre;
      else if (accept("size"))
        text.size = number("size", 4, 72);
      else if (accept("bold"))
        text.bold = true;
      else if (accept("colour"))
        text.ink = colour();
      else
        unexpected();
    }
    row.texts.push_back(std::move(text));
    double percent = 0;
    bool shared = false;
    for (const LayoutText& t : row.texts) {
      percent += t.percent;
      shared = shared || t.percent == 0;
    }
    if (percent > 100 || (shared && percent >= 100)) fail("the texts of this row are wider than the page");
  }

  std::vector<LayoutText::Piece> pieces(const std::string& text) const {
    std::vector<LayoutText::Piece> pieces;
    std::string plain;
    const auto flush = [&] {
      if (!plain.empty()) pieces.push_back({std::exchange(plain, {}), false});
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool twice = i + 1 < text.size() && text[i + 1] == text[i];
      if ((text[i] == '{' || text[i] == '}') && twice) {
        plain += text[i++];
      } else if (text[i] == '}') {
        fail("a closing brace without an opening one");
      } else if (text[i] == '{') {
        const std::size_t end = text.find('}', i);
        if (end == std::string::npos) fail("an opening brace without a closing one");
        flush();
        pieces.push_back({text.substr(i + 1, end - i - 1), true});
        i = end;
      } else {
        plain += text[i];
      }
    }
    flush();
    return pieces;
  }

  void rule() {
    LayoutRow& rule = addRow();
    rule.thickness = 0.5;
    if (more() && !words_[at_].quoted && words_[at_].text != "gap" && words_[at_].text != "colour") {
      const double thickness = number("rule", 0, 20);
      if (thickness > 0) rule.thickness = thickness;
    }
    while (more()) {
      if (accept("gap"))
        rule.gap = gap();
      else if (accept("colour"))
        rule.ink = colour();
      else
        unexpected();
    }
  }

  void paper() {
    const auto found =
        std::find_if(std::begin(papers), std::end(papers), [&](const Paper& p) { return accept(p.name); });
    if (found == std::end(papers)) fail("paper: one of a3, a4, a5, letter is expected");
    layout_.page.width = found->width * pointsPerMillimetre;
    layout_.page.height = found->height * pointsPerMillimetre;
    if (accept("landscape"))
      std::swap(layout_.page.width, layout_.page.height);
    else
      accept("portrait");
    requireEnd();
  }
  void margins() {
    PageSetup& page = layout_.page;
    for (double* margin : {&page.left, &page.right, &page.top, &page.bottom})
      *margin = number("margins", 0, 60) * pointsPerMillimetre;
    requireEnd();
  }
  void fonts() {
    layout_.page.fonts.clear();
    do {
      layout_.page.fonts.push_back(quoted("a font family"));
      // The families become one list, whose separator a name cannot hold.
      if (layout_.page.fonts.back().empty() || layout_.page.fonts.back().find(',') != std::string::npos)
        fail("\"" + layout_.page.fonts.back() + "\" is no font family");
    } while (more());
  }
  void grid() {
    layout_.page.gridSize = number("grid", 4, 24);
    if (accept("colour")) layout_.page.gridHeader = colour();
    requireEnd();
  }

  static constexpr std::pair<std::string_view, void (Parser::*)()> pageDirectives[] = {
      {"paper", &Parser::paper}, {"margins", &Parser::margins}, {"fonts", &Parser::fonts}, {"grid", &Parser::grid}};

  std::string_view text_;
  LayoutPart part_;
  PageLayout layout_;
  int line_ = 0;
  std::vector<Word> words_;
  std::size_t at_ = 0;
};

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool LessNoCase::operator()(std::string_view a, std::string_view b) const {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return lower(x) < lower(y); });
}

std::string LayoutText::filled(const LayoutFields& fields) const {
  std::string out;
  for (const Piece& piece : pieces) {
    if (!piece.field) {
      out += piece.text;
    } else if (const auto found = fields.find(piece.text); found != fields.end()) {
      out += found->second;
    }
  }
  return out;
}

std::vector<double> LayoutRow::shares() const {
  double given = 0;
  std::size_t others = 0;
  for (const LayoutText& text : texts) {
    given += text.percent;
    others += text.percent == 0 ? 1 : 0;
  }
  std::vector<double> shares;
  for (const LayoutText& text : texts)
    shares.push_back((text.percent > 0 ? text.percent : (100 - given) / static_cast<double>(others)) / 100);
  return shares;
}

void PageLayout::requireFields(const std::vector<std::string>& names) const {
  const auto known = [&](const std::string& name) {
    const auto same = [&](const std::string& other) { return platform::equalsIgnoreCase(name, other); };
    return same("page") || same("pages") || std::any_of(names.begin(), names.end(), same);
  };
  for (const LayoutRow& row : rows)
    for (const LayoutText& text : row.texts)
      for (const LayoutText::Piece& piece : text.pieces)
        if (piece.field && !known(piece.text))
          throw LayoutError(file + ":" + std::to_string(text.line) + ": there is no field {" + piece.text + "}");
}

PageLayout parsePageLayout(std::string_view text, const std::string& file, LayoutPart part) {
  return Parser(text, file, part).parse();
}

PageLayout readPageLayout(const std::string& path, LayoutPart part) {
  std::error_code ignored;
  const std::filesystem::path file = pathOf(path);
  std::ifstream in(file, std::ios::binary);
  if (!in || std::filesystem::is_directory(file, ignored)) throw LayoutError(path + ": the layout cannot be read");
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  return parsePageLayout(text, path, part);
}

}  // namespace host
