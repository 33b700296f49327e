#include "host/statement_head.h"

#include "platform/value.h"

namespace host {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
bool isWordChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '#' ||
         c == '@' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

class Scanner {
public:
  explicit Scanner(std::string_view text) : text_(text) {}

  std::string_view word() {
    blanks();
    const std::size_t from = at_;
    while (at_ < text_.size() && isWordChar(text_[at_])) ++at_;
    return text_.substr(from, at_ - from);
  }
  bool accept(std::string_view wanted) {
    const std::size_t before = at_;
    if (platform::equalsIgnoreCase(word(), wanted)) return true;
    at_ = before;
    return false;
  }
  // A name of up to three parts, "db..t" included.
  void name(StatementHead& head) {
    for (bool first = true;; first = false) {
      blanks();
      if (at_ < text_.size() && text_[at_] == '[') {
        const std::size_t end = text_.find(']', at_);
        if (end == std::string_view::npos) return;
        head.table = text_.substr(at_ + 1, end - at_ - 1);
        at_ = end + 1;
      } else {
        head.table = word();
      }
      if (first && platform::equalsIgnoreCase(head.table, "tempdb")) head.temporary = true;
      if (head.table.starts_with('#')) head.temporary = true;
      blanks();
      if (at_ >= text_.size() || text_[at_] != '.') return;
      ++at_;
    }
  }
  // Moves behind the next word "from" that stands outside a literal; false when there is none.
  bool skipToFrom() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '\'') {
        const std::size_t end = text_.find('\'', at_ + 1);
        if (end == std::string_view::npos) return false;
        at_ = end + 1;
      } else if (isWordChar(c)) {
        if (platform::equalsIgnoreCase(word(), "from")) return true;
      } else {
        ++at_;
      }
    }
    return false;
  }

private:
  void blanks() {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  }
  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

StatementHead statementHead(std::string_view text) {
  using Kind = StatementHead::Kind;
  StatementHead head;
  Scanner scan(text);
  const std::string_view verb = scan.word();
  if (platform::equalsIgnoreCase(verb, "insert")) {
    head.kind = Kind::insert;
    scan.accept("into");
  } else if (platform::equalsIgnoreCase(verb, "update")) {
    head.kind = Kind::update;
  } else if (platform::equalsIgnoreCase(verb, "delete")) {
    head.kind = Kind::erase;
    scan.accept("from");
  } else if (platform::equalsIgnoreCase(verb, "select")) {
    head.kind = Kind::select;
    if (!scan.skipToFrom()) return head;
  } else {
    return head;
  }
  scan.name(head);
  return head;
}

}  // namespace host
