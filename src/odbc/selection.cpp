#include "odbc/selection.h"

#include <algorithm>
#include <cctype>

#include "platform/value.h"

namespace odbc {
namespace {

struct Token {
  enum class Kind { word, name, text, sign, end };
  Kind kind = Kind::end;
  std::string text;  // a name without its brackets
  std::size_t begin = 0, end = 0;

  bool is(std::string_view word) const {
    return (kind == Kind::word || kind == Kind::sign) && platform::equalsIgnoreCase(text, word);
  }
  bool isName() const { return kind == Kind::word || kind == Kind::name; }
};

bool isWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '#' || c == '@' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80;
}

class Lexer {
public:
  explicit Lexer(std::string_view text) : text_(text) {}

  Token next() {
    skipBlanks();
    Token t;
    t.begin = at_;
    if (at_ < text_.size()) read(t);
    t.end = at_;
    return t;
  }

private:
  void skipBlanks() {
    for (;;) {
      while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])) != 0) ++at_;
      if (text_.substr(at_, 2) == "--")
        at_ = std::min(text_.find('\n', at_), text_.size());
      else if (text_.substr(at_, 2) == "/*")
        at_ = std::min(text_.find("*/", at_ + 2), text_.size() - 2) + 2;
      else
        return;
    }
  }
  void read(Token& t) {
    const char c = text_[at_];
    if (c == '[' || c == '"') {
      t.kind = Token::Kind::name;
      enclosed(t.text, c == '[' ? ']' : '"');
    } else if (c == '\'') {
      t.kind = Token::Kind::text;
      enclosed(t.text, '\'');
    } else if (isWordCharacter(c)) {
      t.kind = Token::Kind::word;
      while (at_ < text_.size() && isWordCharacter(text_[at_])) t.text += text_[at_++];
    } else {
      t.kind = Token::Kind::sign;
      t.text = c;
      ++at_;
    }
  }
  void enclosed(std::string& out, char close) {
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == close && (at_ + 1 >= text_.size() || text_[at_ + 1] != close)) break;
      if (text_[at_] == close) ++at_;
      out += text_[at_];
    }
    at_ = std::min(at_ + 1, text_.size());
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

// Words that end a selection from one table or begin another statement.
constexpr std::string_view foreignWords[] = {
    "select", "insert", "update", "delete", "exec",      "execute", "group", "having",  "union", "into",   "join",
    "create", "drop",   "alter",  "for",    "intersect", "except",  "if",    "declare", "set",   "compute"};

class Reader {
public:
  explicit Reader(std::string_view text) : text_(text), lexer_(text) { advance(); }

  std::optional<Selection> read() {
    if (!take("select") || token_.is("distinct")) return std::nullopt;
    if (take("top")) {
      if (take("("))
        while (token_.kind != Token::Kind::end && !take(")")) advance();
      else
        advance();  // its number
    }
    if (!list() || !table() || !rest()) return std::nullopt;
    return std::move(selection_);
  }

private:
  void advance() { token_ = lexer_.next(); }
  bool take(std::string_view word) {
    if (!token_.is(word)) return false;
    advance();
    return true;
  }

  // One item of the list after another, up to "from".
  bool list() {
    for (;;) {
      std::vector<Token> item;
      int depth = 0;
      while (token_.kind != Token::Kind::end && (depth > 0 || (!token_.is(",") && !token_.is("from")))) {
        if (depth == 0 && token_.is("into")) return false;
        depth += token_.is("(") ? 1 : token_.is(")") ? -1 : 0;
        item.push_back(token_);
        advance();
      }
      if (item.empty()) return false;
      selection_.columns.push_back(columnOf(item));
      if (take("from")) return true;
      if (!take(",")) return false;
    }
  }
  // A name with or without its table in front of it. A new name behind it makes it an expression: the field would
  // otherwise be written to whatever column has that name.
  std::string columnOf(const std::vector<Token>& item) {
    if (item.back().is("*") && (item.size() == 1 || item[item.size() - 2].is("."))) {
      selection_.allColumns = true;
      return {};
    }
    for (std::size_t i = 0; i < item.size(); ++i)
      if (i % 2 == 0 ? !item[i].isName() : !item[i].is(".")) return {};
    return item.size() % 2 == 1 ? item.back().text : std::string();
  }

  bool table() {
    const std::size_t begin = token_.begin;
    std::size_t end = begin;
    bool nameIsDue = true;
    for (; token_.isName() || token_.is("."); advance()) {
      if (token_.is(".")) {
        if (nameIsDue) selection_.parts.emplace_back();  // "db..t"
        nameIsDue = true;
      } else {
        if (!nameIsDue) break;
        selection_.parts.push_back(token_.text);
        nameIsDue = false;
      }
      end = token_.end;
    }
    selection_.table = text_.substr(begin, end - begin);
    return !nameIsDue && selection_.parts.size() <= 3;
  }

  bool rest() {
    const auto ends = [&] { return token_.kind == Token::Kind::end || token_.is("where") || token_.is("order"); };
    if (!ends() && !token_.is(";")) {
      take("as");
      if (!token_.isName() || isForeign(token_)) return false;
      advance();
      if (!ends() && !token_.is(";")) return false;
    }
    int depth = 0;
    for (; token_.kind != Token::Kind::end; advance()) {
      depth += token_.is("(") ? 1 : token_.is(")") ? -1 : 0;
      if (depth == 0 && isForeign(token_)) return false;
    }
    return true;
  }
  static bool isForeign(const Token& t) {
    return std::any_of(std::begin(foreignWords), std::end(foreignWords),
                       [&](std::string_view word) { return t.is(word); });
  }

  std::string_view text_;
  Lexer lexer_;
  Token token_;
  Selection selection_;
};

}  // namespace

std::optional<Selection> selectionOf(std::string_view batch) {
  return Reader(batch).read();
}

}  // namespace odbc
