// The corpus files' reader, on texts that are right and on texts that are not.

#include "dialect/corpus.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace dialect {
namespace {

Block onlyBlock(std::string_view text) {
  const auto blocks = parseCorpus(text, "x.test");
  EXPECT_EQ(blocks.size(), 1u);
  return blocks.at(0);
}

std::string refusal(std::string_view text) {
  try {
    parseCorpus(text, "x.test");
  } catch (const CorpusError& e) {
    return e.what();
  }
  return "none";
}

TEST(CorpusParser, readsAStatementThatRuns) {
  const Block b = onlyBlock("statement ok\ncreate table t (a int)\n");
  EXPECT_EQ(b.kind, BlockKind::statement);
  EXPECT_EQ(b.line, 1);
  EXPECT_EQ(b.sql, "create table t (a int)");
  EXPECT_EQ(b.error, "");
  EXPECT_FALSE(b.optional);
}

TEST(CorpusParser, keepsTheLinesOfABatchAndTheBlanksAtItsEnds) {
  EXPECT_EQ(onlyBlock("statement ok\n  select 1 \n\tselect 2  \n\n").sql, "  select 1 \n\tselect 2  ");
}

TEST(CorpusParser, aLineOfBlanksBelongsToTheBatch) {
  EXPECT_EQ(onlyBlock("statement ok\nselect 1\n \nselect 2\n").sql, "select 1\n \nselect 2");
}

TEST(CorpusParser, aLineOfABatchMayBeginWithANumberSign) {
  EXPECT_EQ(onlyBlock("statement ok\nselect * from\n#T\n").sql, "select * from\n#T");
}

TEST(CorpusParser, readsTheExpectedFailure) {
  EXPECT_EQ(onlyBlock("statement error 2601|2627\ninsert t values(1)\n").error, "2601|2627");
  EXPECT_EQ(onlyBlock("statement error overflow\nselect 1\n").error, "overflow");
}

TEST(CorpusParser, readsAQuery) {
  const Block b = onlyBlock("query 2\nselect a,b\nfrom t\n----\n1\tx\n2\tNULL\n");
  EXPECT_EQ(b.kind, BlockKind::query);
  EXPECT_EQ(b.columns, 2u);
  EXPECT_EQ(b.sql, "select a,b\nfrom t");
  EXPECT_EQ(b.rows, (std::vector<std::string>{"1\tx", "2\tNULL"}));
  EXPECT_FALSE(b.anyOrder);
  EXPECT_FALSE(b.onlyRowCount);
}

TEST(CorpusParser, aQueryMayExpectNoRow) {
  EXPECT_TRUE(onlyBlock("query 1\nselect a from t\n----\n").rows.empty());
}

TEST(CorpusParser, readsTheWaysToCompareAQuery) {
  EXPECT_TRUE(onlyBlock("query 1 rowsort\nselect a from t\n----\n1\n").anyOrder);
  EXPECT_TRUE(onlyBlock("query 3 rowcount\nselect * from t\n----\n7\n").onlyRowCount);
}

TEST(CorpusParser, readsTheBlocksOfOneLine) {
  const auto blocks =
      parseCorpus("count 3\n\nconnection b\n\nconnection b close\n\ndatabase d2\n\nscript s.sql\n", "x");
  ASSERT_EQ(blocks.size(), 5u);
  EXPECT_EQ(blocks[0].kind, BlockKind::count);
  EXPECT_EQ(blocks[0].affected, 3);
  EXPECT_EQ(blocks[1].kind, BlockKind::connection);
  EXPECT_EQ(blocks[1].name, "b");
  EXPECT_FALSE(blocks[1].close);
  EXPECT_TRUE(blocks[2].close);
  EXPECT_EQ(blocks[3].kind, BlockKind::database);
  EXPECT_EQ(blocks[3].name, "d2");
  EXPECT_EQ(blocks[4].kind, BlockKind::script);
  EXPECT_EQ(blocks[4].name, "s.sql");
  EXPECT_EQ(blocks[4].line, 9);
}

TEST(CorpusParser, commentsBelongToTheBlockBelowAndMayMarkIt) {
  const auto blocks = parseCorpus(
      "# a file\n\n# why\n# Optional: not many can do it\nstatement ok\nselect 1\n\nstatement ok\nselect 2", "x");
  ASSERT_EQ(blocks.size(), 2u);
  EXPECT_TRUE(blocks[0].optional);
  EXPECT_EQ(blocks[0].line, 5);
  EXPECT_FALSE(blocks[1].optional);
  EXPECT_EQ(blocks[1].sql, "select 2");
}

TEST(CorpusParser, aCommentThatStandsAloneMarksNothing) {
  EXPECT_FALSE(onlyBlock("# optional\n\nstatement ok\nselect 1\n").optional);
}

TEST(CorpusParser, namesFileAndLineOfWhatItCannotRead) {
  EXPECT_EQ(refusal("\n# c\nstatemant ok\nselect 1\n"), "x.test:3: unknown block 'statemant ok'");
  EXPECT_EQ(refusal("query 1\nselect 1\n"), "x.test:1: a query without ---- and its rows");
  EXPECT_EQ(refusal("query 2 rowcount\nselect 1\n----\nx\n"), "x.test:1: rowcount wants one number behind ----");
  EXPECT_EQ(refusal("count 1\nselect 1\n"), "x.test:1: this kind of block is one line");
  EXPECT_EQ(refusal("statement ok\n\nselect 1\n"), "x.test:1: there is nothing to send");
}

TEST(CorpusParser, refusesHeadsThatSayTooMuchOrTooLittle) {
  for (const char* head : {"statement", "statement maybe", "statement ok now", "statement error", "query", "query x",
                           "query 0", "query 1 sorted", "query 1 rowsort rowcount", "count", "count x", "connection",
                           "connection a open", "connection a close now", "database", "script", "script a b"}) {
    EXPECT_NE(refusal(head).find("unknown block"), std::string::npos) << head;
  }
}

TEST(CorpusParser, readsEveryFileOfTheCorpus) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GLJZ_SOURCE_DIR "/tests/dialect")) {
    if (entry.path().extension() != ".test") continue;
    ++files;
    const auto blocks = parseCorpus(readFile(entry.path()), entry.path().filename().string());
    EXPECT_FALSE(blocks.empty()) << entry.path();
    for (const Block& b : blocks) {
      if (b.kind == BlockKind::script) {
        EXPECT_FALSE(scriptBatches(readFile(entry.path().parent_path() / b.name)).empty()) << entry.path() << b.line;
      }
    }
  }
  EXPECT_GE(files, 36);
}

TEST(CorpusScript, isCutAtLinesThatSayGo) {
  EXPECT_EQ(scriptBatches("select 1\nselect 2\nGO\nselect 3\n go \n\nGo\nselect 'go'"),
            (std::vector<std::string>{"select 1\nselect 2\n", "select 3\n", "select 'go'\n"}));
  EXPECT_TRUE(scriptBatches("\nGO\n \n").empty());
}

TEST(CorpusFile, thatIsMissingIsNamed) {
  EXPECT_THROW(
      {
        try {
          readFile("no/such.test");
        } catch (const std::runtime_error& e) {
          EXPECT_NE(std::string(e.what()).find("no/such.test"), std::string::npos);
          throw;
        }
      },
      std::runtime_error);
}

}  // namespace
}  // namespace dialect
