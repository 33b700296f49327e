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
    head.table = {};
    head.temporary = head.qualified = false;
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
      head.qualified = true;
      ++at_;
    }
  }
  // The names of a from clause; head keeps the one whose data is fetched. Stands behind the clause's last table.
  void joinedNames(StatementHead& head) {
    const auto isChart = [](const StatementHead& h) { return platform::equalsIgnoreCase(h.table, "code"); };
    name(head);
    while (toNextTable()) {
      StatementHead next = head;
      name(next);
      if (!next.table.empty() && !isChart(next)) head = next;
    }
  }
  bool hasGroupBy() {
    while (skipTo([](std::string_view w) { return platform::equalsIgnoreCase(w, "group"); }))
      if (accept("by")) return true;
    return false;
  }
  // Moves behind the next word that is wanted and stands outside a literal and outside parentheses; false when there
  // is none.
  template <class Wanted>
  bool skipTo(const Wanted& wanted) {
    int depth = 0;
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '\'') {
        const std::size_t end = text_.find('\'', at_ + 1);
        if (end == std::string_view::npos) return false;
        at_ = end + 1;
      } else if (isWordChar(c)) {
        const std::string_view found = word();
        if (depth == 0 && wanted(found)) return true;
      } else {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        ++at_;
        if (depth == 0 && c == ',' && wanted(",")) return true;
      }
    }
    return false;
  }
  bool skipToFrom() {
    return skipTo([](std::string_view w) { return platform::equalsIgnoreCase(w, "from"); });
  }

private:
  // Moves behind the comma or the "join" that another table follows; false, before the word, where the clause ends.
  bool toNextTable() {
    std::size_t before = at_;
    bool ended = false;
    const bool found = skipTo([&](std::string_view w) {
      if (w == "," || platform::equalsIgnoreCase(w, "join")) return true;
      for (const char* end : {"where", "group", "order", "having", "union"})
        if (platform::equalsIgnoreCase(w, end)) {
          ended = true;
          before = at_ - w.size();
        }
      return ended;
    });
    if (found && !ended) return true;
    at_ = before;
    return false;
  }
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
    head.condensed = scan.accept("distinct");
    if (!scan.skipToFrom()) return head;
    scan.joinedNames(head);
    if (scan.hasGroupBy()) head.condensed = true;
    return head;
  } else {
    return head;
  }
  scan.name(head);
  return head;
}

StatementHead lastChangeHead(std::string_view text) {
  StatementHead last = statementHead(text);
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) {
    const std::string_view rest = text.substr(at + 1);
    bool changes = false;
    for (const std::string_view verb : {"insert", "update", "delete"})
      changes = changes || platform::equalsIgnoreCase(rest.substr(0, verb.size()), verb);
    if (changes) last = statementHead(rest);
  }
  return last;
}

}  // namespace host
