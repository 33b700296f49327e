// What each statement becomes on its way through the embedded server: the statement, its typed tree, the SQLite text.

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "golden/golden_file.h"
#include "golden/pipeline.h"
#include "golden/system_statements.h"

namespace golden {
namespace {

constexpr const char* systemPrefix = "system-";
constexpr const char* dialectPrefix = "dialect-";

// The first line in which two texts differ, with both versions.
std::string firstDifference(const std::string& golden, const std::string& now) {
  std::size_t at = 0, begin = 0;
  while (at < golden.size() && at < now.size() && golden[at] == now[at])
    if (golden[at++] == '\n') begin = at;
  const auto lineOf = [&](const std::string& s) { return s.substr(begin, s.find('\n', begin) - begin); };
  return "  golden: " + lineOf(golden) + "\n  now:    " + lineOf(now);
}

void compare(const std::string& name, const File& golden, const File& now) {
  if (rewriting) return write(folder() / name, now);
  std::map<std::string, const Entry*> known;
  for (const Entry& e : golden.entries)
    EXPECT_TRUE(known.emplace(e.name, &e).second) << name << ":" << e.line << ": " << e.name << " stands there twice";
  for (const Entry& e : now.entries) {
    const auto found = known.find(e.name);
    if (found == known.end()) {
      ADD_FAILURE() << name << ": the entry " << e.name << " is missing. " << advice;
      continue;
    }
    const Entry& g = *found->second;
    const std::string place = name + ":" + std::to_string(g.line) + ": " + e.name;
    EXPECT_EQ(g.statement, e.statement) << place << ": the statement is another one now. " << advice;
    if (g.sections.empty())
      ADD_FAILURE() << place << " has no sections yet. " << advice;
    else if (g.sections != e.sections)
      ADD_FAILURE() << place << " has changed.\n" << firstDifference(g.sections, e.sections) << "\n" << advice;
    known.erase(found);
  }
  for (const auto& [stale, e] : known)
    ADD_FAILURE() << name << ":" << e->line << ": " << stale << " is no statement any more. " << advice;
}

TEST(Golden, StatementsOfTheCarryForward) {
  Pipeline pipeline;
  std::map<std::string, File> now;
  for (const SystemStatement& s : systemStatements()) {
    if (s.text.empty()) {
      ADD_FAILURE() << s.stage << "." << s.name << ": no file of tests/dialect has this statement; add a block with it";
      continue;
    }
    now[s.stage].entries.push_back({s.name, s.text, pipeline.sections(s.text), 0});
  }
  EXPECT_FALSE(now.empty());
  std::set<std::string> expected;
  for (auto& [stage, file] : now) {
    const std::string name = systemPrefix + stage + ".golden";
    expected.insert(name);
    file.comment = "# Statements of " + stage + ", written by test_golden --rewrite-golden.\n\n";
    compare(name, read(folder() / name), file);
  }
  for (const std::string& name : names()) {
    if (!name.starts_with(systemPrefix) || expected.contains(name)) continue;
    if (rewriting)
      std::filesystem::remove(folder() / name);
    else
      ADD_FAILURE() << name << " belongs to no stage any more. " << advice;
  }
}

// Here the statements themselves stand in the golden files: an entry is added by its name and its statement.
TEST(Golden, ConstructsOfTheDialect) {
  Pipeline pipeline;
  std::size_t entries = 0;
  for (const std::string& name : names()) {
    if (!name.starts_with(dialectPrefix)) continue;
    const File golden = read(folder() / name);
    File now = golden;
    for (Entry& e : now.entries) e.sections = pipeline.sections(e.statement);
    entries += now.entries.size();
    compare(name, golden, now);
  }
  EXPECT_GE(entries, 130u) << "entries were lost";
}

TEST(Golden, EveryFileIsKnownByItsName) {
  for (const std::string& name : names())
    EXPECT_TRUE(name.starts_with(systemPrefix) || name.starts_with(dialectPrefix)) << name << ": nobody compares it";
}

// The proof that a difference is seen.
TEST(GoldenFile, KeepsWhatIsWrittenAndNamesWhatIsWrong) {
  const auto path = std::filesystem::temp_directory_path() / "gljz-golden-format.golden";
  const File file{"# a comment\n", {{"one", "select 1\n\nfrom t", "--- typed\nx\n", 2}, {"two", "select 2", "", 8}}};
  write(path, file);
  const File again = read(path);
  EXPECT_EQ(again.comment, file.comment);
  ASSERT_EQ(again.entries.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(again.entries[i].name, file.entries[i].name);
    EXPECT_EQ(again.entries[i].statement, file.entries[i].statement);
    EXPECT_EQ(again.entries[i].sections, file.entries[i].sections);
  }
  write(path, {"", {{"empty", "", "", 1}}});
  EXPECT_THROW(read(path), std::runtime_error);
  std::filesystem::remove(path);
}

TEST(GoldenFile, FoldedTextLosesNothing) {
  const std::string sql =
      "SELECT s0.\"ccode\" AS c0,ts_conv(s0.\"md, md\",1,2) AS c1 FROM \"d1\".\"code\" AS s0 WHERE (s0.\"iyear\"=?1 "
      "AND "
      "EXISTS(SELECT 1 FROM t WHERE x)) ORDER BY 1";
  const std::string lines = folded(sql);
  EXPECT_NE(lines.find("\n  FROM "), std::string::npos);
  EXPECT_EQ(lines.find("\n  FROM t"), std::string::npos) << "brackets stay on their line";
  std::string joined;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i] != '\n') {
      joined += lines[i];
      continue;
    }
    const bool clause = lines[i - 1] != ',';
    while (lines[i + 1] == ' ') ++i;
    if (clause) joined += ' ';
  }
  EXPECT_EQ(joined, sql);
}

}  // namespace
}  // namespace golden
