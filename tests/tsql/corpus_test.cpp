// The parser and the printer over the dialect's corpus, and over damaged copies of it.

#include "tsql/corpus.h"

#include <gtest/gtest.h>

#include <random>

#include "tsql/parser.h"

namespace tsql {
namespace {

std::string printed(const std::string& sql) {
  const TokenStream tokens = lex(sql);
  return print(parse(tokens), tokens);
}

TEST(Corpus, EverySuccessfulBlockParses) {
  const auto blocks = corpus::read();
  if (blocks.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& block : blocks) {
    if (!block.succeeds) continue;
    try {
      const TokenStream tokens = lex(block.sql);
      EXPECT_FALSE(parse(tokens).statements.empty()) << block.file << ":" << block.line;
    } catch (const SqlError& error) {
      ADD_FAILURE() << block.file << ":" << block.line << ": " << error.number << " " << error.what() << "\n"
                    << block.sql;
    }
  }
}

TEST(Corpus, PrintingAParsedPrintGivesTheSameText) {
  const auto blocks = corpus::read();
  if (blocks.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& block : blocks) {
    if (!block.succeeds) continue;
    try {
      const std::string once = printed(block.sql);
      EXPECT_EQ(printed(once), once) << block.file << ":" << block.line;
    } catch (const SqlError& error) {
      ADD_FAILURE() << block.file << ":" << block.line << ": " << error.number << " " << error.what() << "\n"
                    << block.sql;
    }
  }
}

// Statements cover the batch's tokens in order, and nothing but semicolons lies between them.
TEST(Corpus, SpansOfStatementsCoverTheBatch) {
  const auto blocks = corpus::read();
  if (blocks.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& block : blocks) {
    if (!block.succeeds) continue;
    const TokenStream tokens = lex(block.sql);
    const ast::Batch batch = parse(tokens);
    std::size_t at = 0;
    const auto skipSemicolons = [&](std::size_t until) {
      for (; at < until; ++at) EXPECT_EQ(tokens.tokens[at].raw, ";") << block.file << ":" << block.line;
    };
    for (const auto& statement : batch.statements) {
      ASSERT_LT(statement->firstToken, statement->lastToken);
      skipSemicolons(statement->firstToken);
      at = statement->lastToken;
    }
    skipSemicolons(tokens.tokens.size() - 1);
  }
}

// Whatever stands in a text: a tree or a SqlError, never another end.
void parseAnything(const std::string& sql) {
  try {
    const TokenStream tokens = lex(sql);
    const ast::Batch batch = parse(tokens);
    const std::string once = print(batch, tokens);
    // What was understood can be said again.
    EXPECT_EQ(printed(once), once) << sql;
  } catch (const SqlError& error) {
    EXPECT_NE(error.number, 0) << sql;
    EXPECT_STRNE(error.what(), "") << sql;
  }
}

std::vector<std::string> seeds() {
  std::vector<std::string> texts;
  for (const auto& block : corpus::read())
    if (block.sql.size() < 3000) texts.push_back(block.sql);
  if (texts.empty())
    texts = {
        "select top 3 a.x, count(*) n from d1..t a left join (select 1 q) b on a.x=b.q where a.y like N'%借[0-9]' "
        "escape '!' group by a.x having sum(m)>-1.50 order by n desc",
        "if exists (select * from t where a in (1,2,3)) begin update t set a=b.c+1 from u b where t.k=b.k end else "
        "delete t where not a between 1 and 2 or b is not null",
        "create table [dbo].[t] (a int identity(1,1) not null primary key, b as a+1, c decimal(10,2) default (0), "
        "constraint ck check (a>0)) on [PRIMARY]",
        "create proc p @a int, @b nvarchar(10)=N'x' as set nocount on exec q @a, @c=@b /* end */ -- done"};
  return texts;
}

TEST(DamagedText, BytesDeletedDoubledSwapped) {
  const auto texts = seeds();
  std::mt19937 random(20060105);
  const auto upTo = [&random](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
  for (int round = 0; round < 20000; ++round) {
    std::string text = texts[upTo(texts.size())];
    for (std::size_t edits = 1 + upTo(4); edits && !text.empty(); --edits) {
      const std::size_t at = upTo(text.size());
      switch (upTo(5)) {
        case 0:
          text.erase(at, 1 + upTo(3));
          break;
        case 1:
          text.insert(at, text.substr(at, 1 + upTo(8)));
          break;
        case 2:
          std::swap(text[at], text[upTo(text.size())]);
          break;
        case 3:
          text[at] = static_cast<char>(upTo(256));
          break;
        default:
          text.resize(at);
      }
    }
    parseAnything(text);
    if (HasFailure()) return;
  }
}

TEST(DamagedText, WordsDeletedDoubledSwapped) {
  const auto texts = seeds();
  std::mt19937 random(20051231);
  const auto upTo = [&random](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
  std::vector<std::string> words;
  for (int round = 0; round < 20000; ++round) {
    words.clear();
    std::string text;
    try {
      const TokenStream tokens = lex(texts[upTo(texts.size())]);
      for (const Token& token : tokens.tokens)
        if (token.kind != TokenKind::end) words.emplace_back(token.raw);
      const TokenStream other = lex(texts[upTo(texts.size())]);
      const std::string strange(other.tokens[upTo(other.tokens.size())].raw);
      if (words.empty()) continue;
      const std::size_t at = upTo(words.size());
      switch (upTo(4)) {
        case 0:
          words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
          break;
        case 1:
          words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), words[upTo(words.size())]);
          break;
        case 2:
          words[at] = strange;
          break;
        default:
          std::swap(words[at], words[upTo(words.size())]);
      }
    } catch (const SqlError&) {
      continue;  // a block that is there for its lexical error
    }
    for (const std::string& word : words) text += word + ' ';
    parseAnything(text);
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace tsql
