#include "golden/system_statements.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "core/all_statements.h"
#include "golden/golden_file.h"
#include "tsql/corpus.h"
#include "tsql/parser.h"

namespace golden {
namespace {

std::string withoutReturns(std::string_view text) {
  std::string out;
  for (const char c : text)
    if (c != '\r') out += c;
  return out;
}

// The fixed pieces of a text around its holes.
std::vector<std::string> pieces(const std::string& text) {
  std::vector<std::string> out(1);
  gljz::sql_detail::walk(
      text, [&](std::string_view literal) { out.back() += literal; }, [&](std::string_view) { out.emplace_back(); });
  return out;
}

struct Match {
  std::string text;
  std::size_t filled = std::numeric_limits<std::size_t>::max();  // characters in the holes
};

bool parses(const std::string& sql) {
  try {
    return !tsql::parse(tsql::lex(sql)).statements.empty();
  } catch (const tsql::SqlError&) {
    return false;
  }
}

// The pieces in `sql` from `begin` on, each as near behind the one before as can be; the last one as far away as its
// line allows when `far` is set. No hole reaches over a line end.
std::optional<Match> matchAt(const std::vector<std::string>& parts, const std::string& sql, std::size_t begin,
                             bool far) {
  Match m;
  m.filled = 0;
  std::size_t at = begin + parts[0].size();
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const bool last = i + 1 == parts.size();
    const std::size_t lineEnd = std::min(sql.find('\n', at), sql.size());
    std::size_t next = sql.find(parts[i], at);
    if (last && parts[i].empty()) next = lineEnd;
    if (last && far && !parts[i].empty()) next = sql.rfind(parts[i], lineEnd);
    if (next == std::string::npos || next < at || next > lineEnd) return {};
    m.filled += next - at;
    at = next + parts[i].size();
  }
  m.text = sql.substr(begin, at - begin);
  if (!parses(m.text)) return {};
  return m;
}

// With the shortest values that make a statement of it.
std::string fromCorpus(const std::string& statement, const std::vector<corpus::Block>& blocks) {
  const auto parts = pieces(statement);
  if (parts.size() == 1) return statement;
  Match best;
  for (const auto& block : blocks) {
    if (!block.file.starts_with("statements-")) continue;
    for (std::size_t at = block.sql.find(parts[0]); at != std::string::npos; at = block.sql.find(parts[0], at + 1))
      for (const bool far : {false, true})
        if (const auto m = matchAt(parts, block.sql, at, far); m && m->filled < best.filled) best = *m;
  }
  return best.text;
}

}  // namespace

std::vector<SystemStatement> systemStatements() {
  const auto blocks = corpus::read();
  std::vector<SystemStatement> out;
  for (const gljz::SqlText* s : gljz::all_statements()) {
    const auto dot = s->name.find('.');
    std::string text = withoutReturns(s->text);
    while (text.ends_with('\n')) text.pop_back();
    text = fromCorpus(text, blocks);
    out.push_back({std::string(s->name.substr(0, dot)), std::string(s->name.substr(dot + 1)), std::move(text)});
  }
  return out;
}

}  // namespace golden
