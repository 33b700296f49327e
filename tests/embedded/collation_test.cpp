#include "embedded/collation.h"

#include <algorithm>
#include <random>
#include <thread>

#include "functions_test_support.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

std::string trimmed(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

int sign(int n) {
  return n < 0 ? -1 : n > 0 ? 1 : 0;
}

TEST(Collation, CaseWidthAndTrailingBlanksDoNotCount) {
  EXPECT_EQ(compareText("a", "A"), 0);
  EXPECT_EQ(compareText("a", "a  "), 0);
  EXPECT_EQ(compareText("", "   "), 0);
  EXPECT_EQ(compareText("ABC", "ａｂｃ"), 0);
  EXPECT_EQ(compareText("借贷 ", "借贷"), 0);
  EXPECT_EQ(compareText("カ", "か"), 0);
}

TEST(Collation, AccentsLeadingBlanksAndOtherBlanksCount) {
  EXPECT_NE(compareText("é", "e"), 0);
  EXPECT_NE(compareText(" a", "a"), 0);
  EXPECT_NE(compareText("a\t", "a"), 0);
  EXPECT_NE(compareText("a-b", "ab"), 0);
  EXPECT_NE(compareText("a\u3000", "a"), 0);
}

// The tone marks of written Chinese are no exception.
TEST(Collation, AnAccentComesBehindTheBareLetterAndBeforeTheNextOne) {
  const std::vector<std::string> expected = {"ma", "mā", "mab", "máb", "mb", "mé", "mf", "贷é", "借e", "借é"};
  std::vector<std::string> texts = expected;
  std::mt19937 random(4);
  std::shuffle(texts.begin(), texts.end(), random);
  std::sort(texts.begin(), texts.end(), [](auto& a, auto& b) { return compareText(a, b) < 0; });
  EXPECT_EQ(texts, expected);
  for (const char* plain : {"a", "e", "i", "o", "u", "n", "c", "A", "E"})
    for (const char* mark : {"\u0300", "\u0301", "\u0302", "\u0303", "\u0304", "\u0308", "\u030C", "\u0327"})
      EXPECT_EQ(sign(compareText(plain, std::string(plain) + mark)), -1) << plain << mark;
  EXPECT_EQ(compareText("é", "É"), 0);
  EXPECT_EQ(compareText("é", "e\u0301"), 0);
}

TEST(Collation, EmptyPunctuationDigitsLatinChineseBySound) {
  const std::vector<std::string> expected = {"", " x", "-1", "10", "100", "9", "a", "b", "贷", "借", "平"};
  std::vector<std::string> texts = expected;
  std::mt19937 random(1);
  std::shuffle(texts.begin(), texts.end(), random);
  std::sort(texts.begin(), texts.end(), [](auto& a, auto& b) { return compareText(a, b) < 0; });
  EXPECT_EQ(texts, expected);
}

TEST(Collation, AsciiOrdersAsTheCollatorDoes) {
  std::mt19937 random(2);
  for (int round = 0; round < 50000; ++round) {
    const auto draw = [&] {
      std::string text(random() % 6, ' ');
      for (char& c : text) c = static_cast<char>(0x20 + random() % 0x5F);
      return text;
    };
    std::string a = draw(), b = draw();
    if (random() % 2 == 0) b = a.substr(0, random() % (a.size() + 1)) + b;  // common beginnings
    if (random() % 4 == 0)
      std::transform(b.begin(), b.end(), b.begin(),
                     [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    ASSERT_EQ(sign(compareText(a, b)), sign(collate(trimmed(a), trimmed(b)))) << a << '|' << b;
  }
}

// Everything that could make the quick way wrong: combining marks, ignorable characters, contractions, control
// characters, wide forms.
const std::u32string mixedLetters =
    U"aAbBlL1 "
    U"-zé借贷平\u0301\u0300\u0304\u030C\u0308\u00B7\u0387\u00AD\u200D\u0001\tＡａ１\u3000ｶカかÅ\u212A²ﬁßเก😀\uFE0F"
    U"\u0E34ÀǅĿ";

TEST(Collation, MixedTextOrdersAsTheCollatorDoes) {
  const std::u32string& letters = mixedLetters;
  std::mt19937 random(3);
  for (int round = 0; round < 100000; ++round) {
    const auto draw = [&] {
      std::string text;
      for (auto n = random() % 5; n > 0; --n) tsql::appendCodePoint(text, letters[random() % letters.size()]);
      return text;
    };
    const std::string start = draw(), a = start + draw(), b = (random() % 3 == 0 ? draw() : start) + draw();
    ASSERT_EQ(sign(compareText(a, b)), sign(collate(trimmed(a), trimmed(b)))) << a << '|' << b;
    ASSERT_EQ(sign(compareText(a, b)), -sign(compareText(b, a)));
  }
}

TEST(Collation, IsAStrictWeakOrder) {
  std::mt19937 random(5);
  const auto draw = [&] {
    std::string text;
    for (auto n = random() % 4; n > 0; --n)
      tsql::appendCodePoint(text,
                            random() % 2 ? mixedLetters[random() % mixedLetters.size()] : U"aAáàeEé"[random() % 7]);
    return text;
  };
  for (int round = 0; round < 200000; ++round) {
    const std::string a = draw(), b = draw(), c = draw();
    const int ab = sign(compareText(a, b)), bc = sign(compareText(b, c)), ac = sign(compareText(a, c));
    if (ab == 0) {
      ASSERT_EQ(ac, bc) << a << '|' << b << '|' << c;
    }
    if (ab == bc) {
      ASSERT_EQ(ac, ab) << a << '|' << b << '|' << c;
    }
  }
}

TEST(Collation, FoldedCharactersCompareEqual) {
  int folded = 0;
  for (char32_t c = 1; c < 0x10000; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    const char32_t f = foldCharacter(c);
    if (f == c) continue;
    ++folded;
    EXPECT_EQ(compareCharacters(c, f), 0) << std::hex << static_cast<unsigned>(c) << ' ' << static_cast<unsigned>(f);
    EXPECT_EQ(foldCharacter(f), f) << std::hex << static_cast<unsigned>(c);
  }
  EXPECT_GT(folded, 1000);
}

TEST(Collation, NothingSortsAboveTheHighestCharacter) {
  for (char32_t c = 1; c < 0xFFFF; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    std::string text;
    tsql::appendCodePoint(text, c);
    ASSERT_LT(compareText(text, "\uFFFF"), 0) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(Collation, BrokenUtf8HasAnOrderToo) {
  EXPECT_EQ(compareText("a\xFF", "a\xFF"), 0);
  EXPECT_EQ(sign(compareText("a\xE5", "b")), -1);
  EXPECT_EQ(sign(compareText("\xE5\x80", "\xE5")), -sign(compareText("\xE5", "\xE5\x80")));
}

TEST(Collation, ThreadsCompareAtOnce) {
  std::vector<std::thread> threads;
  std::vector<int> wrong(4);
  for (std::size_t t = 0; t < wrong.size(); ++t)
    threads.emplace_back([&wrong, t] {
      for (int i = 0; i < 20000; ++i)
        wrong[t] += compareText("应收账款é", "应收票据e") <= 0 || compareText("银行存款", "库存现金") <= 0;
    });
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

class CollationInSqlite : public FunctionsTest {};

TEST_F(CollationInSqlite, UniqueIndexSeesEqualTexts) {
  run("create table u(k text collate TQ); create unique index i on u(k); insert into u values('Ab'),(' ab'),('借')");
  for (const char* text : {"aB", "ab  ", "借 ", "ＡＢ"})
    EXPECT_EQ(
        sqlite3_exec(db_, ("insert into u values('" + std::string(text) + "')").c_str(), nullptr, nullptr, nullptr),
        SQLITE_CONSTRAINT)
        << text;
  EXPECT_EQ(rows("select k from u where k='AB '"), std::vector<std::string>{"Ab"});
}

TEST_F(CollationInSqlite, OrdersAndGroups) {
  run("create table o(k text collate TQ); insert into o "
      "values('b'),('B'),('a'),('10'),('9'),(null),('100'),(''),('平'),('借')");
  EXPECT_EQ(rows("select k from o order by k"),
            (std::vector<std::string>{"NULL", "", "10", "100", "9", "a", "b", "B", "借", "平"}));
  EXPECT_EQ(rows("select count(distinct k) from o"), std::vector<std::string>{"8"});
}

}  // namespace
}  // namespace embedded
