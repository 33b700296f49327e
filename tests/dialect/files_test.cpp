// Every corpus file against the embedded server, under several settings.
//
// One file alone: test_dialect --gtest_filter='*/money' (or 'Plain/*' for one setting).

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>

#include "dialect/corpus.h"
#include "dialect/embedded_session.h"
#include "dialect/runner.h"

namespace dialect {
namespace {

namespace fs = std::filesystem;

const fs::path& folder() {
  static const fs::path path = fs::path(GLJZ_SOURCE_DIR) / "tests" / "dialect";
  return path;
}

std::vector<std::string> corpusFiles() {
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder())) {
    if (entry.path().extension() == ".test") files.push_back(entry.path().filename().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Files in which every block has to pass.
const std::set<std::string>& requiredFiles() {
  static const std::set<std::string> files = [] {
    std::set<std::string> names;
    for (const auto& entry : listEntries(readFile(folder() / "required.txt"))) names.insert(entry.at(0));
    return names;
  }();
  return files;
}

// The number of blocks that have passed before and must not be lost again, by file.
const std::map<std::string, int>& floors() {
  static const std::map<std::string, int> counts = [] {
    std::map<std::string, int> numbers;
    for (const auto& entry : listEntries(readFile(folder() / "floor.txt"))) {
      numbers[entry.at(0)] = std::stoi(entry.at(1));
    }
    return numbers;
  }();
  return counts;
}

struct Case {
  std::string file;
  Setting setting;
};

std::vector<Case> casesUnder(const Setting& setting) {
  std::vector<Case> cases;
  for (const std::string& file : corpusFiles()) cases.push_back({file, setting});
  return cases;
}

std::string caseName(const testing::TestParamInfo<Case>& info) {
  std::string name = fs::path(info.param.file).stem().string();
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
  return name;
}

class Corpus : public testing::TestWithParam<Case> {};

TEST_P(Corpus, answersAsExpected) {
  const auto& [file, setting] = GetParam();
  const fs::path path = folder() / file;
  const std::vector<Block> blocks = parseCorpus(readFile(path), file);
  TemporaryServer server;
  Runner runner([&](const std::string& database) { return server.open(database, setting); }, folder());
  const Outcome outcome = runner.run(blocks);

  const bool required = requiredFiles().contains(file);
  for (const Difference& difference : outcome.failed) {
    if (required) {
      ADD_FAILURE_AT(path.string().c_str(), difference.line) << difference.text;
    } else {
      std::cout << path.string() << ":" << difference.line << ":\n" << difference.text << "\n";
    }
  }
  std::cout << file << " (" << setting.name << "): " << outcome.passed << " passed, " << outcome.failed.size()
            << " failed, " << outcome.declined << " declined" << (required ? "" : "; not required yet") << "\n";
  RecordProperty("passed", outcome.passed);
  RecordProperty("failed", static_cast<int>(outcome.failed.size()));
  RecordProperty("declined", outcome.declined);

  EXPECT_GT(outcome.passed + outcome.declined + static_cast<int>(outcome.failed.size()), 0) << "nothing was compared";
  if (const auto floor = floors().find(file); floor != floors().end()) {
    EXPECT_GE(outcome.passed, floor->second) << "fewer blocks pass than floor.txt says; what was won is lost again";
  }
}

INSTANTIATE_TEST_SUITE_P(Plain, Corpus, testing::ValuesIn(casesUnder({"plain"})), caseName);
INSTANTIATE_TEST_SUITE_P(NoStatementCache, Corpus, testing::ValuesIn(casesUnder({"no statement cache", false})),
                         caseName);
INSTANTIATE_TEST_SUITE_P(ClientCursor, Corpus,
                         testing::ValuesIn(casesUnder({"client cursor", true, Setting::Read::clientCursor})), caseName);
INSTANTIATE_TEST_SUITE_P(ServerCursor, Corpus,
                         testing::ValuesIn(casesUnder({"server cursor", true, Setting::Read::serverCursor})), caseName);
INSTANTIATE_TEST_SUITE_P(FetchBlockOfOne, Corpus,
                         testing::ValuesIn(casesUnder({"server cursor, fetch block of 1", false,
                                                       Setting::Read::serverCursor, 1})),
                         caseName);

// A name that is spelled wrongly in a list would silently demand nothing.
TEST(CorpusLists, nameFilesThatAreThere) {
  EXPECT_FALSE(requiredFiles().empty());
  for (const std::string& file : requiredFiles()) EXPECT_TRUE(fs::exists(folder() / file)) << "required.txt: " << file;
  for (const auto& entry : floors()) EXPECT_TRUE(fs::exists(folder() / entry.first)) << "floor.txt: " << entry.first;
}

}  // namespace
}  // namespace dialect
