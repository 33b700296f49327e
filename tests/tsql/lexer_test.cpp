#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tsql/token.h"

namespace tsql {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> raws(const TokenStream& stream) {
  std::vector<std::string> result;
  for (const Token& token : stream.tokens)
    if (token.kind != TokenKind::end) result.emplace_back(token.raw);
  return result;
}

Token only(const TokenStream& stream) {
  EXPECT_EQ(stream.tokens.size(), 2u);
  return stream.tokens.front();
}

LiteralValue literal(const std::string& text) {
  TokenStream stream = lex(text);
  EXPECT_EQ(stream.literals.size(), 1u) << text;
  return stream.literals.at(0);
}

SqlError errorOf(const std::string& text) {
  try {
    lex(text);
  } catch (const SqlError& error) {
    return error;
  }
  ADD_FAILURE() << "no failure: " << text;
  return SqlError(0, "");
}

TEST(Lexer, Words) {
  EXPECT_THAT(raws(lex("select a_1,#T.b$,##T from code借 where @x=@@rowcount")),
              ElementsAre("select", "a_1", ",", "#T", ".", "b$", ",", "##T", "from", "code借", "where", "@x", "=",
                          "@@rowcount"));
  EXPECT_EQ(only(lex("@@identity")).kind, TokenKind::variable);
  EXPECT_EQ(only(lex("@@identity")).text, "@@identity");
}

TEST(Lexer, QuotedNames) {
  EXPECT_EQ(only(lex("[my ]] col]")).text, "my ] col");
  EXPECT_EQ(only(lex("\"a\"\"b\"")).text, "a\"b");
  EXPECT_EQ(only(lex("[x]")).kind, TokenKind::quotedIdentifier);
  EXPECT_EQ(errorOf("select 1 as []").number, 1038);
  EXPECT_EQ(errorOf("[" + std::string(129, 'a') + "]").number, 103);
  EXPECT_EQ(errorOf(std::string(129, 'a')).number, 103);
  std::string longest;
  for (int i = 0; i < 128; ++i) longest += "借";
  EXPECT_EQ(only(lex(longest)).text, longest);
}

TEST(Lexer, Operators) {
  EXPECT_THAT(raws(lex("a<=b<>c!=d!<e!>f>=g<h>i=j+-*/%&|^~(),.;:::")),
              ElementsAre("a", "<=", "b", "<>", "c", "!=", "d", "!<", "e", "!>", "f", ">=", "g", "<", "h", ">", "i",
                          "=", "j", "+", "-", "*", "/", "%", "&", "|", "^", "~", "(", ")", ",", ".", ";", "::", ":"));
}

TEST(Lexer, CommentsAreBlanks) {
  EXPECT_THAT(raws(lex("a--b\nc/* x /* nested */ 'y */d-- end")), ElementsAre("a", "c", "d"));
  EXPECT_THAT(raws(lex("a/**/b")), ElementsAre("a", "b"));
  EXPECT_EQ(errorOf("a /* /* */ b").number, 113);
  EXPECT_EQ(errorOf("/*").number, 113);
}

TEST(Lexer, Numbers) {
  EXPECT_THAT(raws(lex("1 1.5 .5 1. 1e3 1.5E-3 .5e+2 2e")),
              ElementsAre("1", "1.5", ".5", "1.", "1e3", "1.5E-3", ".5e+2", "2e"));
  // A number ends where a word begins.
  EXPECT_THAT(raws(lex("1else 2from 10a")), ElementsAre("1", "else", "2", "from", "10", "a"));
  EXPECT_THAT(raws(lex("d1..t")), ElementsAre("d1", ".", ".", "t"));
}

TEST(Lexer, Positions) {
  const TokenStream stream = lex("select '借\n贷', x\n  /* 借\n */ y");
  const auto at = [&](std::size_t i) { return stream.tokens[i].pos; };
  EXPECT_EQ(at(1).line, 1);
  EXPECT_EQ(at(1).column, 8);
  EXPECT_EQ(at(3).line, 2);
  EXPECT_EQ(at(3).column, 5);  // characters, not bytes
  EXPECT_EQ(at(4).line, 4);
  EXPECT_EQ(at(4).column, 5);
  EXPECT_EQ(stream.source.substr(at(4).offset, 1), "y");
}

TEST(Lexer, TokensSurviveAMove) {
  TokenStream stream = lex("a b");  // so short that the text could lie inside the string object
  const TokenStream moved = std::move(stream);
  EXPECT_THAT(raws(moved), ElementsAre("a", "b"));
}

TEST(Lexer, ByteOrderMarkIsSkipped) {
  EXPECT_THAT(raws(lex("\xef\xbb\xbfselect 1")), ElementsAre("select", "1"));
}

TEST(Lexer, Failures) {
  const SqlError open = errorOf("select 'abc");
  EXPECT_EQ(open.number, 105);
  EXPECT_STREQ(open.what(), "Unclosed quotation mark after the character string 'abc'.");
  EXPECT_EQ(open.pos.column, 8);
  EXPECT_EQ(errorOf("[a").number, 105);
  EXPECT_EQ(errorOf("'a''").number, 105);
  EXPECT_EQ(errorOf("select \\").number, 102);
  EXPECT_EQ(errorOf(std::string("a\0b", 3)).number, 102);
}

TEST(Literal, Integers) {
  EXPECT_EQ(literal("12").type, typeOf(TypeKind::integer));
  EXPECT_EQ(std::get<std::int64_t>(literal("2147483647").value), 2147483647);
  EXPECT_EQ(literal("2147483647").type, typeOf(TypeKind::integer));
  EXPECT_EQ(literal("0000000000012").type, typeOf(TypeKind::integer));
  EXPECT_EQ(literal("2147483648").type, decimalType(10, 0));
  EXPECT_EQ(std::get<std::int64_t>(literal("99999999999").value), 99999999999);
}

TEST(Literal, Decimals) {
  EXPECT_EQ(literal("2.50").type, decimalType(3, 2));
  EXPECT_EQ(std::get<std::int64_t>(literal("2.50").value), 250);
  EXPECT_EQ(literal("0.05").type, decimalType(2, 2));
  EXPECT_EQ(literal("007.5").type, decimalType(2, 1));
  EXPECT_EQ(literal("1.").type, decimalType(1, 0));
  EXPECT_EQ(literal(".5").type, decimalType(1, 1));
  EXPECT_EQ(literal("0.").type, decimalType(1, 0));
}

TEST(Literal, WideDecimalIsABlobHighestByteFirst) {
  const LiteralValue wide = literal("18446744073709551616");  // 2^64
  EXPECT_EQ(wide.type, decimalType(20, 0));
  Blob expected(16);
  expected[7] = 1;
  EXPECT_EQ(std::get<Blob>(wide.value), expected);
  EXPECT_EQ(literal(std::string(38, '9')).type, decimalType(38, 0));
  EXPECT_EQ(errorOf(std::string(39, '9')).number, 1007);
  EXPECT_EQ(errorOf("0." + std::string(39, '0')).number, 1007);
}

TEST(Literal, Reals) {
  EXPECT_EQ(literal("1.5E-3").type, typeOf(TypeKind::float_));
  EXPECT_EQ(std::get<double>(literal("1.5E-3").value), 0.0015);
  EXPECT_EQ(std::get<double>(literal("2e").value), 2);
  EXPECT_EQ(std::get<double>(literal(".5e+2").value), 50);
  EXPECT_EQ(std::get<double>(literal("1e-400").value), 0);
  EXPECT_EQ(errorOf("1e400").number, 168);
}

TEST(Literal, Money) {
  EXPECT_EQ(literal("$1.5").type, typeOf(TypeKind::money));
  EXPECT_EQ(std::get<std::int64_t>(literal("$1.5").value), 15000);
  EXPECT_EQ(std::get<std::int64_t>(literal("$1.00005").value), 10001);
  EXPECT_EQ(std::get<std::int64_t>(literal("$1.000049").value), 10000);
  EXPECT_EQ(std::get<std::int64_t>(literal("$.25").value), 2500);
  EXPECT_EQ(std::get<std::int64_t>(literal("$").value), 0);
  EXPECT_EQ(std::get<std::int64_t>(literal("$922337203685477.5807").value), INT64_MAX);
  EXPECT_EQ(errorOf("$922337203685477.5808").number, 8115);
  EXPECT_EQ(errorOf("$" + std::string(60, '9')).number, 8115);
}

TEST(Literal, Texts) {
  EXPECT_EQ(literal("'it''s'").type, typeOf(TypeKind::varchar, 4));
  EXPECT_EQ(std::get<std::string>(literal("'it''s'").value), "it's");
  EXPECT_EQ(literal("''").type, typeOf(TypeKind::varchar, 1));
  EXPECT_EQ(literal("''''").type, typeOf(TypeKind::varchar, 1));
  EXPECT_EQ(literal("'借方a'").type, typeOf(TypeKind::varchar, 5));  // two bytes a Chinese character
  EXPECT_EQ(literal("N'借方a'").type, typeOf(TypeKind::nvarchar, 3));
  EXPECT_EQ(literal("n''").type, typeOf(TypeKind::nvarchar, 1));
  EXPECT_EQ(literal("N'\xf0\xa0\x80\x80'").type, typeOf(TypeKind::nvarchar, 2));  // beyond 16 bits
  EXPECT_EQ(literal("'" + std::string(8001, 'x') + "'").type, typeOf(TypeKind::varchar, SqlType::maxLength));
  EXPECT_EQ(literal("N'" + std::string(4001, 'x') + "'").type, typeOf(TypeKind::nvarchar, SqlType::maxLength));
}

TEST(Literal, BackslashAtTheEndOfALineJoinsLines) {
  EXPECT_EQ(std::get<std::string>(literal("'a\\\nb'").value), "ab");
  EXPECT_EQ(std::get<std::string>(literal("'a\\\r\nb'").value), "ab");
  EXPECT_EQ(std::get<std::string>(literal("'a\\b\nc'").value), "a\\b\nc");
}

TEST(Literal, Hexadecimal) {
  EXPECT_EQ(literal("0x1F2").type, typeOf(TypeKind::varbinary, 2));
  EXPECT_EQ(std::get<Blob>(literal("0x1F2").value), (Blob{0x01, 0xf2}));
  EXPECT_EQ(literal("0x").type, typeOf(TypeKind::varbinary, 1));
  EXPECT_EQ(std::get<Blob>(literal("0x").value), Blob{});
}

TEST(Literal, OrdinalsCountLiteralsOnly) {
  const TokenStream stream = lex("a=1 and b='x' and c=? and d=N'y'");
  std::vector<int> ordinals;
  for (const Token& token : stream.tokens) ordinals.push_back(token.literal);
  EXPECT_THAT(ordinals, ElementsAre(-1, -1, 0, -1, -1, -1, 1, -1, -1, -1, -1, -1, -1, -1, 2, -1));
}

std::string shapeOf(const std::string& text) {
  return lex(text).shape();
}

TEST(Shape, ContentsOfLiteralsDoNotCount) {
  EXPECT_EQ(shapeOf("select A from T where b=1 and c='x'"), shapeOf("select A\nfrom T where b = 25 and c = 'other'"));
  EXPECT_NE(shapeOf("select a as Total"), shapeOf("select a as TOTAL"));
  EXPECT_EQ(shapeOf("values(1.50,$2,1e3,0x1)"), shapeOf("values(22.75,$3,2e5,0xff)"));
}

TEST(Shape, ClassesOfLiteralsCount) {
  const std::vector<std::string> different = {"x 1",    "x 1.5", "x 1.50", "x 1e0", "x $1",  "x '1'",
                                              "x N'1'", "x 0x1", "x ?",    "x y",   "x [y]", "x 99999999999"};
  for (std::size_t i = 0; i < different.size(); ++i)
    for (std::size_t k = 0; k < i; ++k) EXPECT_NE(shapeOf(different[i]), shapeOf(different[k])) << i << " " << k;
}

TEST(Shape, SizesOfTypesCount) {
  EXPECT_NE(shapeOf("cast(a as nvarchar(4))"), shapeOf("cast(a as nvarchar(40))"));
  EXPECT_NE(shapeOf("cast(a as [Decimal](10,2))"), shapeOf("cast(a as [Decimal](10,3))"));
  EXPECT_EQ(shapeOf("left(a,4)"), shapeOf("left(a,5)"));
  EXPECT_EQ(shapeOf("a in (4)"), shapeOf("a in (5)"));
}

TEST(Shape, PartOfABatch) {
  const TokenStream stream = lex("select 1 select 2");
  EXPECT_EQ(stream.shape(0, 2), stream.shape(2, 4));
  EXPECT_EQ(stream.shape(1, 1), "");
}

}  // namespace
}  // namespace tsql
