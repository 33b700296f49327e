#include "dialect/corpus.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace dialect {

namespace {

constexpr std::string_view resultMark = "----";

std::vector<std::string> splitLines(std::string_view text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.emplace_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

std::vector<std::string> words(const std::string& line) {
  std::istringstream in(line);
  return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

bool isBlank(std::string_view line) {
  return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

template <class Number>
std::optional<Number> wholeNumber(const std::string& text) {
  Number number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string join(std::vector<std::string>::const_iterator from, std::vector<std::string>::const_iterator to) {
  std::string text;
  for (auto line = from; line != to; ++line) text += (line == from ? "" : "\n") + *line;
  return text;
}

class Parser {
public:
  Parser(std::string_view text, std::string_view file) : lines_(splitLines(text)), file_(file) {}

  std::vector<Block> parse() {
    std::vector<Block> blocks;
    while (skipBlankLines()) {
      const bool optional = takeComments();
      if (atEnd() || isBlank(lines_[at_])) continue;  // a comment that stands alone
      Block block = takeBlock();
      block.optional = optional;
      blocks.push_back(std::move(block));
    }
    return blocks;
  }

private:
  bool atEnd() const { return at_ >= lines_.size(); }

  bool skipBlankLines() {
    while (!atEnd() && isBlank(lines_[at_])) ++at_;
    return !atEnd();
  }

  // Whether one of the comments is the mark "# optional". (The other marks tell a reader where a result comes from.)
  bool takeComments() {
    bool optional = false;
    for (; !atEnd() && lines_[at_].starts_with('#'); ++at_) {
      optional = optional || lower(lines_[at_]).starts_with("# optional");
    }
    return optional;
  }

  Block takeBlock() {
    const std::size_t at = at_;
    const int line = static_cast<int>(at) + 1;
    const std::vector<std::string> head = words(lines_[at_++]);
    const auto bodyStart = lines_.cbegin() + static_cast<std::ptrdiff_t>(at_);
    while (!atEnd() && !lines_[at_].empty()) ++at_;
    const std::vector<std::string> body(bodyStart, lines_.cbegin() + static_cast<std::ptrdiff_t>(at_));
    Block block;
    block.line = line;
    if (!readHead(head, block)) throw CorpusError(file_, line, "unknown block '" + lines_[at] + "'");
    readBody(body, block);
    return block;
  }

  static bool readHead(const std::vector<std::string>& head, Block& block) {
    const std::string& word = head[0];
    if (word == "statement") return readStatement(head, block);
    if (word == "query") return readQuery(head, block);
    if (word == "count") {
      block.kind = BlockKind::count;
      const auto number = head.size() == 2 ? wholeNumber<std::int64_t>(head[1]) : std::nullopt;
      block.affected = number.value_or(0);
      return number.has_value();
    }
    if (word == "connection") {
      block.kind = BlockKind::connection;
      block.close = head.size() == 3 && head[2] == "close";
      return readName(head, block, block.close ? 3 : 2);
    }
    if (word == "database" || word == "script") {
      block.kind = word == "database" ? BlockKind::database : BlockKind::script;
      return readName(head, block, 2);
    }
    return false;
  }

  static bool readName(const std::vector<std::string>& head, Block& block, std::size_t size) {
    if (head.size() != size) return false;
    block.name = head[1];
    return true;
  }

  static bool readStatement(const std::vector<std::string>& head, Block& block) {
    block.kind = BlockKind::statement;
    if (head.size() == 2) return head[1] == "ok";
    if (head.size() != 3 || head[1] != "error") return false;
    block.error = head[2];
    return true;
  }

  static bool readQuery(const std::vector<std::string>& head, Block& block) {
    block.kind = BlockKind::query;
    const auto number = head.size() > 1 ? wholeNumber<std::size_t>(head[1]) : std::nullopt;
    if (!number || head.size() > 3) return false;
    block.columns = *number;
    if (head.size() == 3) {
      block.anyOrder = head[2] == "rowsort";
      block.onlyRowCount = head[2] == "rowcount";
      if (!block.anyOrder && !block.onlyRowCount) return false;
    }
    return block.columns > 0 || block.onlyRowCount;
  }

  void readBody(const std::vector<std::string>& body, Block& block) {
    if (block.kind != BlockKind::statement && block.kind != BlockKind::query) {
      if (!body.empty()) throw CorpusError(file_, block.line, "this kind of block is one line");
      return;
    }
    auto sqlEnd = body.cend();
    if (block.kind == BlockKind::query) {
      sqlEnd = std::find(body.cbegin(), body.cend(), resultMark);
      if (sqlEnd == body.cend()) throw CorpusError(file_, block.line, "a query without ---- and its rows");
      block.rows.assign(sqlEnd + 1, body.cend());
      if (block.onlyRowCount && (block.rows.size() != 1 || !wholeNumber<std::size_t>(block.rows[0]))) {
        throw CorpusError(file_, block.line, "rowcount wants one number behind ----");
      }
    }
    block.sql = join(body.cbegin(), sqlEnd);
    if (block.sql.empty()) throw CorpusError(file_, block.line, "there is nothing to send");
  }

  std::vector<std::string> lines_;
  std::string_view file_;
  std::size_t at_ = 0;
};

}  // namespace

CorpusError::CorpusError(std::string_view file, int line, const std::string& what)
    : std::runtime_error(std::string(file) + ":" + std::to_string(line) + ": " + what) {}

std::vector<Block> parseCorpus(std::string_view text, std::string_view file) {
  return Parser(text, file).parse();
}

std::vector<std::string> scriptBatches(std::string_view text) {
  std::vector<std::string> batches;
  std::string batch;
  const auto finish = [&] {
    if (batch.find_first_not_of(" \t\r\n") != std::string::npos) batches.push_back(batch);
    batch.clear();
  };
  for (const std::string& line : splitLines(text)) {
    const auto said = words(line);
    if (said.size() == 1 && lower(said[0]) == "go") {
      finish();
    } else {
      batch += line + "\n";
    }
  }
  finish();
  return batches;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace dialect
