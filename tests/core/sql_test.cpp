#include "core/sql.h"

#include <gtest/gtest.h>

#include <set>

#include "core/all_statements.h"

namespace {

using gljz::Sql;

inline constexpr Sql noHole{"test.none", "select '{' , '{}', '{1a}', '{ a }' from t"};
inline constexpr Sql oneHole{"test.one", "delete from t where iyear={curYear}", "curYear"};
inline constexpr Sql repeated{"test.repeated", "select {b},{a},{b} from [{a}]..[t]", "a", "b"};
inline constexpr Sql brace{"test.brace", "select '{{a}'", "a"};

static_assert(std::is_invocable_v<decltype(oneHole), std::string>);
static_assert(!std::is_invocable_v<decltype(oneHole)>, "a missing argument does not compile");
static_assert(!std::is_invocable_v<decltype(oneHole), int, int>, "an argument too many does not compile");
static_assert(!std::is_invocable_v<decltype(noHole), int>);

TEST(Sql, BracesThatAreNoHoleStayInTheText) {
  EXPECT_EQ(noHole(), "select '{' , '{}', '{1a}', '{ a }' from t");
}

TEST(Sql, ArgumentsFollowTheOrderOfTheNames) {
  EXPECT_EQ(repeated("x", "y"), "select y,x,y from [x]..[t]");
}

TEST(Sql, AHoleMayFollowABrace) {
  EXPECT_EQ(brace("v"), "select '{v'");
}

TEST(Sql, ValuesArePutInAsTheyStand) {
  EXPECT_EQ(oneHole("2006 or 'x'='x'"), "delete from t where iyear=2006 or 'x'='x'");
  EXPECT_EQ(oneHole("{curYear}"), "delete from t where iyear={curYear}") << "a value is not searched for holes";
}

TEST(Sql, NumbersAndDatesHaveTheirPlainText) {
  EXPECT_EQ(oneHole(-5), "delete from t where iyear=-5");
  EXPECT_EQ(oneHole(platform::Money::parse("12.50")), "delete from t where iyear=12.5");
  EXPECT_EQ(oneHole(platform::DateTime::fromDate(2006, 1, 1)), "delete from t where iyear=2006-01-01");
}

TEST(Sql, LineEndsAreThoseOfTheServer) {
  EXPECT_EQ(gljz::lineEnd, "\r\n");
}

TEST(AllStatements, NamesAreUniqueAndNameTheirStage) {
  std::set<std::string_view> names;
  for (const gljz::SqlText* statement : gljz::all_statements()) {
    EXPECT_TRUE(names.insert(statement->name).second) << statement->name;
    EXPECT_NE(statement->name.find('.'), std::string_view::npos) << statement->name;
    EXPECT_FALSE(statement->text.empty()) << statement->name;
  }
  EXPECT_TRUE(names.count("account_totals.delete_year"));
  EXPECT_TRUE(names.count("mdu_jz.select_setting"));
}

}  // namespace
