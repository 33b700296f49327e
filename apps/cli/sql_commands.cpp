#include "sql_commands.h"

#include "embedded/describe.h"
#include "embedded/explain.h"
#include "host/usage_error.h"
#include "platform/value.h"

namespace cli {
namespace {

using host::UsageError;

// The one number that a statement answers.
class OneNumber : public embedded::ResultSink {
public:
  void columns(const std::vector<embedded::ColumnInfo>&) override {}
  void row(const std::vector<platform::Value>& row) override { text = row.at(0).displayText(); }
  void endRows(std::int64_t) override {}
  void failure(const tsql::SqlError& e) override { throw e; }
  std::string text;
};

std::string bracketed(std::string_view name) {
  std::string out = "[";
  for (const char c : name) {
    if (c == ']') out += c;
    out += c;
  }
  return out + "]";
}

// * and % for any characters, ? and _ for one; a pattern without any of them is looked for anywhere in the name.
bool matches(std::string_view name, std::string_view pattern) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == '*' || pattern[0] == '%')
    return matches(name, pattern.substr(1)) || (!name.empty() && matches(name.substr(1), pattern));
  if (name.empty()) return false;
  const bool one = pattern[0] == '?' || platform::equalsIgnoreCase(name.substr(0, 1), pattern.substr(0, 1));
  return one && matches(name.substr(1), pattern.substr(1));
}

std::string keyColumns(const tsql::TableDef& t, const tsql::KeyDef& key) {
  std::string out;
  for (const auto& part : key.parts)
    out += (out.empty() ? "" : ", ") + t.columns[static_cast<std::size_t>(part.column)].name +
           (part.descending ? " desc" : "");
  return out;
}

std::string indented(const std::string& text, const std::string& by) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    out += by + text.substr(at, end - at) + '\n';
    at = end + 1;
  }
  return out;
}

}  // namespace

const std::vector<std::string>& SqlCommands::names() {
  static const std::vector<std::string> all{":databases", ":describe", ":help", ":plan",
                                            ":quit",      ":tables",   ":tree", ":use"};
  return all;
}

std::string SqlCommands::help() {
  return "GO                 on a line of its own runs what was typed since the last one\n"
         ":tables [PATTERN]  tables of the database and their rows; gl_* begins with gl_, sum has it anywhere\n"
         ":describe TABLE    columns, keys, indexes, checks\n"
         ":databases         databases of the server\n"
         ":use DATABASE      goes on in another database\n"
         ":plan [BATCH]      the SQLite text, its parameters and its query plan; without a batch of what is being\n"
         "                   typed, or of the batch that ran last\n"
         ":tree [BATCH]      the same before that step: names resolved, every expression with its type\n"
         ":help              this text\n"
         ":quit              leaves, as Ctrl-D does\n"
         "Arrows find earlier batches, Tab completes names, Ctrl-C drops what was typed or ends what is running.\n";
}

SqlCommands::Answer SqlCommands::run(std::string_view line, const std::string& batch, const TableLook& look) {
  const std::size_t space = std::min(line.find_first_of(" \t"), line.size());
  const std::string_view name = line.substr(0, space);
  const std::string argument = platform::trim(std::string(line.substr(space)));
  const auto is = [&](std::string_view word) { return platform::equalsIgnoreCase(name, word); };
  if (is(":quit") || is(":q") || is(":exit")) return {"", true};
  if (is(":help") || is(":h") || is(":?")) return {help()};
  if (is(":tables")) return {tables(argument, look)};
  if (is(":databases")) return {databases(look)};
  if (is(":plan")) return {plan(argument.empty() ? batch : argument, false)};
  if (is(":tree")) return {plan(argument.empty() ? batch : argument, true)};
  if (is(":describe") || is(":d")) {
    if (argument.empty()) throw UsageError(":describe wants the name of a table");
    return {describe(argument, look)};
  }
  if (is(":use")) {
    if (argument.empty()) throw UsageError(":use wants the name of a database; :databases lists them");
    session_.use(argument);
    return {};
  }
  throw UsageError("there is no command " + std::string(name) + "; :help lists the commands");
}

std::string SqlCommands::tables(const std::string& pattern, const TableLook& look) {
  const bool wild = pattern.find_first_of("*%?") != std::string::npos;
  const std::string wanted = pattern.empty() ? "*" : wild ? pattern : "*" + pattern + "*";
  TextTable table({{"table"}, {"rows", true}});
  for (const std::string& name : embedded::tableNames(session_)) {
    if (!matches(name, wanted)) continue;
    OneNumber count;
    session_.execute("select count(*) from " + bracketed(name), count);
    table.row({{name}, {count.text}});
  }
  if (table.rows() > 0) return table.text(look);
  if (session_.database().empty()) return "the session stands on the server itself; :databases, then :use DATABASE\n";
  return pattern.empty() ? "the database has no table\n" : "no table is like " + pattern + "\n";
}

std::string SqlCommands::databases(const TableLook& look) {
  TextTable table({{"database"}});
  for (const std::string& name : server_.databases()) table.row({{name}});
  return table.rows() > 0 ? table.text(look) : "the server has no database; create database NAME makes one\n";
}

std::string SqlCommands::describe(const std::string& name, const TableLook& look) {
  const auto t = embedded::tableDefinition(session_, name);
  if (!t) throw tsql::SqlError(208, "Invalid object name '" + name + "'.");
  TextTable columns({{"column"}, {"type"}, {"null"}, {"default", false, true}});
  for (const auto& c : t->columns) {
    std::string value = c.defaultText;
    if (c.identity)
      value = "identity(" + std::to_string(c.identity->seed) + "," + std::to_string(c.identity->increment) + ")";
    if (!c.computedText.empty()) value = "as " + c.computedText;
    columns.row({{c.name}, {c.type.name()}, {c.nullable ? "" : "not null"}, {value}});
  }
  std::string out = t->database + (t->database.empty() ? "" : "..") + t->name + '\n' + columns.text(look);
  if (!t->keys.empty()) {
    TextTable keys({{"key"}, {"kind"}, {"columns", false, true}});
    for (const auto& k : t->keys) {
      const std::string kind = k.primary ? "primary key" : k.unique ? "unique" : "index";
      keys.row({{k.name}, {kind}, {keyColumns(*t, k)}});
    }
    out += '\n' + keys.text(look);
  }
  if (!t->checks.empty()) {
    TextTable checks({{"check"}, {"condition", false, true}});
    for (const auto& c : t->checks) checks.row({{c.name}, {c.text}});
    out += '\n' + checks.text(look);
  }
  return out;
}

std::string SqlCommands::plan(const std::string& batch, bool typed) {
  if (platform::trim(batch).empty()) throw UsageError("nothing was typed yet; :plan BATCH explains a batch at once");
  const auto explained = embedded::explain(session_, batch);
  std::string out;
  for (const auto& e : explained) {
    if (!out.empty()) out += '\n';
    if (explained.size() > 1) out += e.statement + '\n';
    if (e.sql.empty()) {
      out += "no plan: the server itself carries this out\n";
    } else if (typed) {
      out += e.tree;
    } else {
      out += e.sql + '\n';
      for (std::size_t i = 0; i < e.slots.size(); ++i) out += "  ?" + std::to_string(i + 1) + "  " + e.slots[i] + '\n';
      for (const auto& step : e.steps)
        out += indented(step.text, std::string(2 + 2 * static_cast<std::size_t>(step.depth), ' '));
    }
  }
  return out;
}

}  // namespace cli
