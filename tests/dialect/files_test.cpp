// Every corpus file against the embedded server, under several settings.
//
// One file alone: test_dialect --gtest_filter='*/money' (or 'Plain/*' for one setting).

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

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

  for (const Difference& difference : outcome.failed)
    ADD_FAILURE_AT(path.string().c_str(), difference.line) << difference.text;
  EXPECT_EQ(outcome.declined, 0) << "what is more than has to be supported was supported before";
  EXPECT_GT(outcome.passed, 0) << "nothing was compared";
  RecordProperty("passed", outcome.passed);
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

}  // namespace
}  // namespace dialect
