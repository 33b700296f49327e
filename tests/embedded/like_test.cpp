#include "embedded/like.h"

#include <random>

#include "embedded/collation.h"
#include "functions_test_support.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

bool like(std::string_view text, std::string_view pattern) {
  return LikePattern(pattern).match(text);
}

TEST(Like, PercentAndUnderscore) {
  EXPECT_TRUE(like("1002", "1002%"));
  EXPECT_TRUE(like("10020101", "1002%"));
  EXPECT_FALSE(like("1003", "1002%"));
  EXPECT_TRUE(like("工行存款", "%行%"));
  EXPECT_FALSE(like("工行存款", "%行"));
  EXPECT_TRUE(like("银行", "%行"));
  EXPECT_TRUE(like("工行存款", "_行%"));
  EXPECT_TRUE(like("abc", "a_c"));
  EXPECT_FALSE(like("abbc", "a_c"));
  EXPECT_TRUE(like("abbc", "a__c"));
  EXPECT_TRUE(like("aXbXbc", "a%b%bc"));
  EXPECT_FALSE(like("abab", "%aab"));
  EXPECT_TRUE(like("", "%"));
  EXPECT_TRUE(like("", ""));
  EXPECT_FALSE(like("a", ""));
  EXPECT_FALSE(like("1002", "1002_%"));
}

TEST(Like, CaseAndWidthDoNotCount) {
  EXPECT_TRUE(like("abc", "ABC"));
  EXPECT_TRUE(like("ＡＢＣ", "abc"));
  EXPECT_TRUE(like("É", "é"));
  EXPECT_FALSE(like("é", "e"));
}

TEST(Like, Sets) {
  EXPECT_TRUE(like("a_c", "a[_]c"));
  EXPECT_FALSE(like("abc", "a[_]c"));
  EXPECT_TRUE(like("a%c", "a[%]c"));
  EXPECT_TRUE(like("a[c", "a[[]c"));
  EXPECT_TRUE(like("1002", "100[12]%"));
  EXPECT_FALSE(like("1003", "100[12]%"));
  EXPECT_TRUE(like("1003", "100[^2]%"));
  EXPECT_FALSE(like("1002", "100[^2]%"));
  EXPECT_TRUE(like("1002", "[0-9][0-9][0-9][0-9]"));
  EXPECT_FALSE(like("100201", "[0-9][0-9][0-9][0-9]"));
  EXPECT_TRUE(like("ABC", "a[b-d]%"));
  EXPECT_FALSE(like("a_c", "a[b-d]%"));
  EXPECT_TRUE(like("a-", "a[x-]"));
  EXPECT_TRUE(like("借", "[贷-平]"));
  EXPECT_FALSE(like("a]", "a[]"));
  EXPECT_FALSE(like("a[b", "a[b"));
  EXPECT_TRUE(like("a]", "a]"));
}

TEST(Like, TrailingBlanks) {
  EXPECT_FALSE(like("abc ", "abc"));
  EXPECT_TRUE(LikePattern("abc").match("abc  ", true));
  EXPECT_TRUE(LikePattern("%c").match("abc  ", true));
  EXPECT_FALSE(LikePattern("abc ").match("abc", true));
  EXPECT_TRUE(like("abc ", "abc "));
}

TEST(Like, Escape) {
  EXPECT_TRUE(LikePattern("a!%c", U'!').match("a%c"));
  EXPECT_FALSE(LikePattern("a!%c", U'!').match("abc"));
  EXPECT_TRUE(LikePattern("a!!", U'!').match("a!"));
  EXPECT_TRUE(LikePattern("[!]]", U'!').match("]"));
}

TEST(Like, FindIsWhereTheMatchBegins) {
  EXPECT_EQ(LikePattern("%行%").find("工行存款"), 2);
  EXPECT_EQ(LikePattern("%z%").find("abc"), 0);
  EXPECT_EQ(LikePattern("b%").find("abc"), 0);
  EXPECT_EQ(LikePattern("a%").find("abc"), 1);
  EXPECT_EQ(LikePattern("%c").find("abc"), 3);
  EXPECT_EQ(LikePattern("%[0-9]%").find("ab7"), 3);
}

TEST(Like, ManyPercentSignsStayQuick) {
  std::string pattern;
  for (int i = 0; i < 30; ++i) pattern += "%a";
  EXPECT_FALSE(like(std::string(2000, 'a') + "b", pattern + "c"));
}

TEST(Like, BoundsOfPlainPatterns) {
  EXPECT_EQ(LikePattern("1002%").lowerBound(), "1002");
  EXPECT_EQ(LikePattern("1002%").upperBound(), "1002\uFFFF");
  EXPECT_EQ(LikePattern("1002").upperBound(), "1002");
  EXPECT_EQ(LikePattern("%x").lowerBound(), "");
  EXPECT_EQ(LikePattern("ba%").lowerBound(), "ba");
  EXPECT_EQ(LikePattern("ba").lowerBound(), "ba");
  EXPECT_EQ(LikePattern("工行_").lowerBound(), "工行");
  EXPECT_EQ(LikePattern("a!%b%", U'!').lowerBound(), "a%b");
}

TEST(Like, AllMatchesLieBetweenTheBounds) {
  const std::u32string letters =
      U"aAbBlLkK12 -é借贷eunmv\u0300\u0304\u030C\u0323\u0301\u0308\u00B7\u00ADＡ１²\u212Aかカเก\uFE0Fßi\u0130ı";
  const std::u32string signs = U"%%%_[]^";
  std::mt19937 random(5);
  int matches = 0;
  for (int round = 0; round < 400000; ++round) {
    std::u32string text, pattern;
    for (auto n = random() % 5; n > 0; --n) {
      const char32_t c = letters[random() % letters.size()];
      text += c;
      // Mostly the same character, its folded form or one that folds to it.
      if (random() % 8 != 0) pattern += random() % 2 ? c : foldCharacter(c);
      if (random() % 4 == 0) pattern += signs[random() % signs.size()];
    }
    if (random() % 2) pattern += U'%';
    for (auto n = random() % 3; n > 0; --n) text += letters[random() % letters.size()];
    std::string t, p;
    for (const char32_t c : text) tsql::appendCodePoint(t, c);
    for (const char32_t c : pattern) tsql::appendCodePoint(p, c);
    const LikePattern compiled(p);
    if (!compiled.match(t, true)) continue;
    ++matches;
    ASSERT_LE(compareText(compiled.lowerBound(), t), 0) << t << " like " << p;
    ASSERT_GE(compareText(compiled.upperBound(), t), 0) << t << " like " << p;
  }
  EXPECT_GT(matches, 50000);
}

class LikeInSqlite : public FunctionsTest {};

TEST_F(LikeInSqlite, Functions) {
  EXPECT_EQ(value("ts_like('100201','1002%')"), "1");
  EXPECT_EQ(value("ts_like('2','1002%')"), "0");
  EXPECT_EQ(value("ts_like(null,'%')"), "NULL");
  EXPECT_EQ(value("ts_like('a%c','a!%c','!')"), "1");
  EXPECT_EQ(value("ts_like('abc','a!%c','!')"), "0");
  EXPECT_EQ(value("ts_like('a','a','')"), "!506");
  EXPECT_EQ(value("ts_like('a ','a')"), "0");
  EXPECT_EQ(value("ts_vlike('a ','a')"), "1");
  EXPECT_EQ(value("ts_patindex('%b%','abc')"), "2");
  EXPECT_EQ(value("ts_like_lo('ab!%c%','!')"), "ab%c");
}

TEST_F(LikeInSqlite, PrefixJoin) {
  run("create table k(c text collate TQ); create index i on k(c);"
      "insert into k values('1002'),('100201'),('10020101'),('1003'),('工行存款'),(null),('银行'),('')");
  const std::string join =
      "select p.c||'<'||q.c from k p join k q on q.c between ts_like_lo(p.c||'%') and ts_like_hi(p.c||'%') and "
      "ts_like(q.c,p.c||'%') where p.c=";
  EXPECT_EQ(rows(join + "'1002' order by q.c"),
            (std::vector<std::string>{"1002<1002", "1002<100201", "1002<10020101"}));
  EXPECT_EQ(rows(join + "''").size(), 7u);
}

}  // namespace
}  // namespace embedded
