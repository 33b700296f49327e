#include "tsql/types.h"

#include <gtest/gtest.h>

#include "tsql/sql_error.h"

namespace tsql {
namespace {

SqlType named(std::string_view name, std::optional<int> first = {}, std::optional<int> second = {}) {
  return typeByName(name, first, second, false, 1).value();
}

int errorOf(std::string_view name, std::optional<int> first = {}, std::optional<int> second = {}, bool max = false) {
  try {
    typeByName(name, first, second, max, 1);
    return 0;
  } catch (const SqlError& error) {
    return error.number;
  }
}

TEST(SqlType, PackKeepsEverything) {
  for (const SqlType& type : {typeOf(TypeKind::null), typeOf(TypeKind::integer), typeOf(TypeKind::nvarchar, 4000),
                              typeOf(TypeKind::varchar, 8000), typeOf(TypeKind::varbinary, SqlType::maxLength),
                              decimalType(38, 38), decimalType(1, 0), typeOf(TypeKind::image)}) {
    EXPECT_EQ(SqlType::unpack(type.pack()), type) << type.name();
    EXPECT_GE(type.pack(), 0);
  }
}

TEST(SqlType, Names) {
  EXPECT_EQ(typeOf(TypeKind::nvarchar, 40).name(), "nvarchar(40)");
  EXPECT_EQ(typeOf(TypeKind::varchar, SqlType::maxLength).name(), "varchar(max)");
  EXPECT_EQ(decimalType(10, 2).name(), "decimal(10,2)");
  EXPECT_EQ(typeOf(TypeKind::money).name(), "money");
  EXPECT_EQ(typeOf(TypeKind::float_).name(), "float");
  EXPECT_EQ(typeOf(TypeKind::nvarchar, 40).baseName(), "nvarchar");
  EXPECT_EQ(decimalType(10, 2).baseName(), "numeric");
  EXPECT_EQ(typeOf(TypeKind::integer).baseName(), "int");
}

TEST(TypeByName, Spellings) {
  EXPECT_EQ(named("INT"), typeOf(TypeKind::integer));
  EXPECT_EQ(named("integer"), typeOf(TypeKind::integer));
  EXPECT_EQ(named("Numeric", 8, 3), decimalType(8, 3));
  EXPECT_EQ(named("dec", 5), decimalType(5, 0));
  EXPECT_EQ(named("decimal"), decimalType(18, 0));
  EXPECT_EQ(named("sysname"), typeOf(TypeKind::nvarchar, 128));
  EXPECT_EQ(named("float", 24), typeOf(TypeKind::real));
  EXPECT_EQ(named("float", 25), typeOf(TypeKind::float_));
  EXPECT_EQ(named("float"), typeOf(TypeKind::float_));
  EXPECT_EQ(named("ntext"), typeOf(TypeKind::ntext));
}

TEST(TypeByName, LengthDefaultsByPlace) {
  EXPECT_EQ(typeByName("varchar", {}, {}, false, 1), typeOf(TypeKind::varchar, 1));
  EXPECT_EQ(typeByName("nvarchar", {}, {}, false, 30), typeOf(TypeKind::nvarchar, 30));
  EXPECT_EQ(typeByName("binary", {}, {}, false, 30), typeOf(TypeKind::binary, 30));
  EXPECT_EQ(typeByName("nvarchar", {}, {}, true, 1), typeOf(TypeKind::nvarchar, SqlType::maxLength));
}

TEST(TypeByName, UnknownNamesAreNoTypes) {
  for (const char* name : {"nosuchtype", "timestamp", "xml", "", "in", "ints"})
    EXPECT_EQ(typeByName(name, {}, {}, false, 1), std::nullopt) << name;
}

TEST(TypeByName, WrongSizes) {
  EXPECT_EQ(errorOf("varchar", 0), 1001);
  EXPECT_EQ(errorOf("varchar", 8001), 131);
  EXPECT_EQ(errorOf("varchar", 8000), 0);
  EXPECT_EQ(errorOf("nvarchar", 4001), 131);
  EXPECT_EQ(errorOf("decimal", 39), 1001);
  EXPECT_EQ(errorOf("decimal", 5, 6), 192);
  EXPECT_EQ(errorOf("int", 4), 2716);
  EXPECT_EQ(errorOf("varchar", 4, 2), 2716);
  EXPECT_EQ(errorOf("float", 54), 1001);
  EXPECT_EQ(errorOf("char", {}, {}, true), 102);
}

TEST(Precedence, HigherTypeWins) {
  const TypeKind descending[] = {
      TypeKind::datetime,  TypeKind::smalldatetime, TypeKind::float_,     TypeKind::real,
      TypeKind::decimal,   TypeKind::money,         TypeKind::smallmoney, TypeKind::bigint,
      TypeKind::integer,   TypeKind::smallint,      TypeKind::tinyint,    TypeKind::bit,
      TypeKind::ntext,     TypeKind::text,          TypeKind::image,      TypeKind::uniqueidentifier,
      TypeKind::nvarchar,  TypeKind::nchar,         TypeKind::varchar,    TypeKind::char_,
      TypeKind::varbinary, TypeKind::binary,        TypeKind::null};
  for (std::size_t i = 1; i < std::size(descending); ++i)
    EXPECT_GT(precedence(descending[i - 1]), precedence(descending[i])) << i;
}

TEST(Families, Kinds) {
  EXPECT_TRUE(isText(TypeKind::char_) && isText(TypeKind::ntext));
  EXPECT_FALSE(isText(TypeKind::binary) || isText(TypeKind::uniqueidentifier));
  EXPECT_TRUE(isNumeric(TypeKind::bit) && isNumeric(TypeKind::float_) && isNumeric(TypeKind::money));
  EXPECT_FALSE(isNumeric(TypeKind::smalldatetime) || isNumeric(TypeKind::null));
  EXPECT_TRUE(isExactInteger(TypeKind::bit) && isExactInteger(TypeKind::bigint));
  EXPECT_FALSE(isExactInteger(TypeKind::smallmoney));
  EXPECT_TRUE(isBinary(TypeKind::image) && isLob(TypeKind::image) && isUnicode(TypeKind::ntext));
}

}  // namespace
}  // namespace tsql
