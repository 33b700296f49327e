#include "golden/pipeline.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "dialect/corpus.h"
#include "embedded/explain.h"
#include "embedded/session_impl.h"
#include "golden/golden_file.h"

namespace golden {
namespace {

using tsql::ast::StatementKind;

class FirstFailure : public embedded::ResultSink {
public:
  void columns(const std::vector<embedded::ColumnInfo>&) override {}
  void row(const std::vector<platform::Value>&) override {}
  void endRows(std::int64_t) override {}
  void failure(const tsql::SqlError& e) override {
    if (text.empty()) text = "Msg " + std::to_string(e.number) + ": " + e.what();
  }
  std::string text;
};

bool defines(const tsql::ast::Statement& s) {
  switch (s.kind) {
    case StatementKind::select:
      return static_cast<const tsql::ast::SelectStatement&>(s).select->into.has_value();
    case StatementKind::createTable:
    case StatementKind::alterTable:
    case StatementKind::dropTable:
    case StatementKind::createIndex:
    case StatementKind::dropIndex:
    case StatementKind::createProcedure:
    case StatementKind::dropProcedure:
    case StatementKind::setOption:
      return true;
    case StatementKind::if_: {
      const auto& i = static_cast<const tsql::ast::If&>(s);
      return defines(*i.then) || (i.otherwise && defines(*i.otherwise));
    }
    default:
      return false;
  }
}

std::filesystem::path newFolder() {
  std::random_device random;
  const auto folder = std::filesystem::temp_directory_path() / ("gljz-golden-" + std::to_string(random()));
  std::filesystem::create_directories(folder);
  return folder;
}

std::string failureSection(const tsql::SqlError& e) {
  return "--- failure\nMsg " + std::to_string(e.number) + ", line " + std::to_string(e.pos.line) + ": " + e.what() +
         '\n';
}

}  // namespace

std::string folded(const std::string& sql) {
  static constexpr std::array<std::string_view, 13> clauses = {
      " FROM ",      " WHERE ", " GROUP BY ",   " HAVING ",    " ORDER BY ", " LIMIT ", " UNION ",
      " LEFT JOIN ", " JOIN ",  " RIGHT JOIN ", " FULL JOIN ", " VALUES(",   " SET "};
  constexpr std::size_t longest = 110;
  if (sql.size() <= longest) return sql;
  std::string out;
  std::size_t lineBegin = 0;
  int depth = 0;
  char quote = 0;
  for (std::size_t i = 0; i < sql.size(); ++i) {
    const char c = sql[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      --depth;
    } else if (c == ' ' && depth == 0) {
      const auto rest = std::string_view(sql).substr(i);
      if (std::any_of(clauses.begin(), clauses.end(), [&](auto clause) { return rest.starts_with(clause); })) {
        out += "\n  ";
        lineBegin = out.size();
        continue;
      }
    }
    out += c;
    if (quote == 0 && c == ',' && out.size() - lineBegin > longest) {
      out += "\n    ";
      lineBegin = out.size() - 4;
    }
  }
  return out;
}

Pipeline::Pipeline() : folder_(newFolder()), server_(embedded::Server::open(folder_.string())) {
  session_ = std::make_unique<embedded::Session>(server_, "");
  for (const char* database : {"d1", "d2", "TqSystem"}) {
    const std::string failure = run(std::string("create database ") + database);
    if (!failure.empty()) throw std::runtime_error(failure);
  }
  const auto corpus = folder().parent_path() / "dialect" / "schema.sql";
  for (const char* database : {"d1", "d2"}) {
    session_->use(database);
    runScript(corpus.string());
  }
  runScript((folder() / "setup.sql").string());
}

Pipeline::~Pipeline() {
  session_.reset();
  server_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void Pipeline::runScript(const std::string& file) {
  for (const std::string& batch : dialect::scriptBatches(dialect::readFile(file))) {
    FirstFailure sink;
    session_->execute(batch, sink);
    if (!sink.text.empty()) throw std::runtime_error(file + ": " + sink.text + "\n" + batch);
  }
}

std::string Pipeline::sections(const std::string& batch) {
  try {
    const auto tokens = tsql::lex(batch);
    const auto tree = tsql::parse(tokens);
    std::string out;
    for (const auto& s : tree.statements) {
      const std::size_t begin = tokens.tokens[s->firstToken].pos.offset;
      const auto& end = tokens.tokens[s->lastToken - 1];
      out += statement(batch.substr(begin, end.pos.offset + end.length - begin), defines(*s));
    }
    return out;
  } catch (const tsql::SqlError& e) {
    return failureSection(e);
  }
}

std::string Pipeline::statement(const std::string& text, bool definesSomething) {
  std::string out;
  try {
    for (const embedded::Explanation& e : embedded::explain(*session_, text)) {
      if (e.sql.empty()) continue;
      out += "--- typed\n" + e.tree + "--- SQLite\n" + folded(e.sql) + '\n';
      for (std::size_t i = 0; i < e.slots.size(); ++i) out += "  ?" + std::to_string(i + 1) + ' ' + e.slots[i] + '\n';
    }
  } catch (const tsql::SqlError& e) {
    return failureSection(e);
  }
  if (definesSomething) {
    const std::string changed = run(text);
    out += "--- definition\n" + (changed.empty() ? "nothing changes in SQLite's schema\n" : changed);
  } else if (out.empty()) {
    out = "--- no text of its own\n";
  }
  return out;
}

std::string Pipeline::run(const std::string& text) {
  const auto lines = [](const std::string& all) {
    std::set<std::string> found;
    std::istringstream in(all);
    for (std::string line; std::getline(in, line);) found.insert(line);
    return found;
  };
  const auto before = lines(schema());
  FirstFailure sink;
  session_->execute(text, sink);
  if (!sink.text.empty()) return sink.text + '\n';
  const auto after = lines(schema());
  std::string out;
  for (const auto& line : before)
    if (!after.contains(line)) out += "- " + folded(line) + '\n';
  for (const auto& line : after)
    if (!before.contains(line)) out += "+ " + folded(line) + '\n';
  return out;
}

// One line an object of every attached database.
std::string Pipeline::schema() {
  auto& db = session_->impl().db;
  std::string out;
  embedded::PreparedStatement databases(db.get(), "PRAGMA database_list");
  while (databases.step()) {
    const std::string name = databases.text(1);
    embedded::PreparedStatement objects(
        db.get(), "SELECT replace(sql,char(10),' ') FROM \"" + name + "\".sqlite_schema WHERE sql IS NOT NULL");
    while (objects.step()) out += name + ": " + objects.text(0) + '\n';
  }
  return out;
}

}  // namespace golden
