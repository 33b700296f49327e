#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tsql/parsed.h"

namespace tsql {
namespace {

using namespace ast;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// ---------------------------------------------------------------------------------------------- batches

TEST(Batch, StatementsNeedNoSeparator) {
  const Parsed p(
      "delete t where id>2 insert into t values(20,N'b');; update t set c=N'z' where id=1 insert t(id) values(21) ;");
  ASSERT_EQ(p.batch.statements.size(), 4u);
  EXPECT_EQ(p.span(*p.batch.statements[0]), "delete t where id>2");
  EXPECT_EQ(p.span(*p.batch.statements[1]), "insert into t values(20,N'b')");
  EXPECT_EQ(p.span(*p.batch.statements[3]), "insert t(id) values(21)");
}

TEST(Batch, EmptyTextIsAnEmptyBatch) {
  EXPECT_TRUE(Parsed("").batch.statements.empty());
  EXPECT_TRUE(Parsed(" ; -- nothing\n;").batch.statements.empty());
}

TEST(Batch, SpansOfInnerStatements) {
  const Parsed p("if 1=1 begin select 1; select 2 end else select 3; select 4");
  const auto& branch = p.as<If>();
  EXPECT_EQ(p.span(branch), "if 1=1 begin select 1; select 2 end else select 3");
  const auto& block = dynamic_cast<const Block&>(*branch.then);
  EXPECT_EQ(p.span(block), "begin select 1; select 2 end");
  EXPECT_EQ(p.span(*block.statements[1]), "select 2");
  EXPECT_EQ(p.span(*branch.otherwise), "select 3");
}

TEST(Batch, ElseBelongsToTheNearestIf) {
  const Parsed p("if 1=1 if 2=2 select 1 else select 2");
  const auto& outer = p.as<If>();
  EXPECT_EQ(outer.otherwise, nullptr);
  EXPECT_NE(dynamic_cast<const If&>(*outer.then).otherwise, nullptr);
}

TEST(Batch, SemicolonBeforeElse) {
  EXPECT_EQ(Parsed("if 1=1 select 1; else select 2").batch.statements.size(), 1u);
}

TEST(Batch, ParametersAreCounted) {
  const Parsed p("insert into t values(?,?) select * from t where a=?");
  EXPECT_EQ(p.batch.parameters, 3);
  EXPECT_EQ(dynamic_cast<const ast::Parameter&>(*p.as<Insert>().values[1]).number, 1);
}

TEST(Batch, LiteralsInTheTreeItselfAreFixed) {
  const Parsed p("select 1 as 'a', cast(b as nvarchar(40)) from t where c='x' set rowcount 0");
  EXPECT_THAT(p.batch.fixedLiterals, ElementsAre(1, 2, 4));
  EXPECT_THAT(Parsed("create table t (a int identity(1,-2) default (0), check (a>5))").batch.fixedLiterals,
              ElementsAre(0, 1, 2, 3));
}

// ---------------------------------------------------------------------------------------------- expressions

TEST(Expression, Levels) {
  EXPECT_EQ(printedExpr("a+b*c-d"), "a + b * c - d");
  EXPECT_EQ(printedExpr("(a+b)*c"), "(a + b) * c");
  EXPECT_EQ(printedExpr("a-(b-c)"), "a - (b - c)");
  EXPECT_EQ(printedExpr("(a-b)-c"), "a - b - c");
  // The bit operators stand on the level of + and -.
  EXPECT_EQ(printedExpr("(a & b) + c"), "a & b + c");
  EXPECT_EQ(printedExpr("a & (b + c)"), "a & (b + c)");
  EXPECT_EQ(printedExpr("~a*b"), "~a * b");
}

TEST(Expression, SignTakesTheProductBehindIt) {
  EXPECT_EQ(printedExpr("-100.0/-100.0*10.0"), "-100.0 / (-100.0 * 10.0)");
  EXPECT_EQ(printedExpr("-a+b"), "-a + b");
  EXPECT_EQ(printedExpr("(-a)*b"), "(-a) * b");
  EXPECT_EQ(printedExpr("a - -b"), "a - (-b)");
}

TEST(Expression, ConditionLevels) {
  EXPECT_EQ(printedExpr("a=1 or b=2 and not c=3"), "a = 1 or b = 2 and not c = 3");
  EXPECT_EQ(printedExpr("(a=1 or b=2) and c=3"), "(a = 1 or b = 2) and c = 3");
  EXPECT_EQ(printedExpr("not x like y"), "not x like y");
  EXPECT_EQ(printedExpr("not (a=1 and b=2)"), "not (a = 1 and b = 2)");
  EXPECT_EQ(printedExpr("a between 1 and 2 and b=3"), "a between 1 and 2 and b = 3");
  EXPECT_EQ(printedExpr("((a+1))=(2)"), "a + 1 = 2");
}

TEST(Expression, NotBeforeLikeIsANegation) {
  const TokenStream tokens = lex("not x like y");
  EXPECT_EQ(parseExpression(tokens)->kind, ExprKind::negation);
  const TokenStream other = lex("x not like y");
  const ExprPtr like = parseExpression(other);
  EXPECT_TRUE(dynamic_cast<const Like&>(*like).negated);
}

TEST(Expression, Conditions) {
  EXPECT_EQ(printedExpr("a is not null or b is null"), "a is not null or b is null");
  EXPECT_EQ(printedExpr("a not in (1,'x',null)"), "a not in (1, 'x', null)");
  EXPECT_EQ(printedExpr("a in (select b from c)"), "a in (select b from c)");
  EXPECT_EQ(printedExpr("a like b+'%' escape '!'"), "a like b + '%' escape '!'");
  EXPECT_EQ(printedExpr("not exists(select * from t)"), "not exists (select * from t)");
  EXPECT_EQ(printedExpr("a>=all(select 1) and b = some (select 2)"), "a >= all (select 1) and b = any (select 2)");
  EXPECT_EQ(printedExpr("(select max(a) from t) > 3"), "(select max(a) from t) > 3");
  EXPECT_EQ(printedExpr("((select 1)+2) > 3"), "(select 1) + 2 > 3");
}

TEST(Expression, ComparisonSpellings) {
  EXPECT_EQ(printedExpr("a != b"), "a <> b");
  EXPECT_EQ(printedExpr("a !< b"), "a >= b");
  EXPECT_EQ(printedExpr("a !> b"), "a <= b");
  EXPECT_EQ(printedExpr("a > = b"), "a >= b");
  EXPECT_EQ(printedExpr("a < > b"), "a <> b");
  EXPECT_EQ(printedExpr("a ! = b"), "a <> b");
}

TEST(Expression, Functions) {
  EXPECT_EQ(printedExpr("left(a,3)+right(b,2)"), "left(a, 3) + right(b, 2)");
  EXPECT_EQ(printedExpr("coalesce(a,nullif(b,''),getdate())"), "coalesce(a, nullif(b, ''), getdate())");
  EXPECT_EQ(printedExpr("convert(nvarchar(10),d,120)"), "convert(nvarchar(10), d, 120)");
  EXPECT_EQ(printedExpr("CAST(a AS decimal(10,2))"), "cast(a as decimal(10,2))");
  EXPECT_EQ(printedExpr("count(distinct a)+count(*)+sum(all b)"), "count(distinct a) + count(*) + sum(b)");
  EXPECT_EQ(printedExpr("case when a=1 then 1else 2 end"), "case when a = 1 then 1 else 2 end");
  EXPECT_EQ(printedExpr("case a when 1 then 'x' when 2 then 'y' end"), "case a when 1 then 'x' when 2 then 'y' end");
}

TEST(Expression, WordsThatAreFunctions) {
  const TokenStream tokens = lex("current_timestamp");
  EXPECT_EQ(parseExpression(tokens)->kind, ExprKind::function);
  EXPECT_EQ(printedExpr("user+system_user"), "user + system_user");
}

TEST(Expression, DatePartIsAColumn) {
  const Parsed p("select datediff(day, a, getdate())");
  const auto& call = itemAs<Function>(p);
  EXPECT_EQ(dynamic_cast<const Column&>(*call.arguments[0]).name.last(), "day");
}

TEST(Expression, NamesOfUpToFourParts) {
  const Parsed p("select [d1]..[code].[ccode], d.dbo.t.c, a from [d1]..[code]");
  EXPECT_THAT(itemAs<Column>(p, 0).name.parts, ElementsAre("d1", "", "code", "ccode"));
  EXPECT_THAT(itemAs<Column>(p, 1).name.parts, ElementsAre("d", "dbo", "t", "c"));
  EXPECT_EQ(errorOf("select a.b.c.d.e").number, 117);
}

TEST(Expression, PlacesOfNodes) {
  const Parsed p("select a,\n  借 + b");
  const auto& sum = itemAs<Binary>(p, 1);
  EXPECT_EQ(sum.pos.line, 2);
  EXPECT_EQ(sum.pos.column, 3);
  EXPECT_EQ(sum.right->pos.column, 7);
}

TEST(Expression, ConditionIsNoValueAndValueIsNoCondition) {
  EXPECT_EQ(errorOf("select a=1 and b").number, 156);
  EXPECT_STREQ(errorOf("select (a=1)").what(), "Incorrect syntax near '='.");
  EXPECT_EQ(errorOf("select (a=1)+2").number, 102);
  EXPECT_EQ(errorOf("select 1 where a").number, 4145);
  EXPECT_EQ(errorOf("select 1 where a and b=1").number, 4145);
  EXPECT_EQ(errorOf("select 1 where not a").number, 4145);
  EXPECT_EQ(errorOf("select 1 where a=(b=1)").number, 102);
  EXPECT_EQ(errorOf("select case when a then 1 end").number, 4145);
}

// ---------------------------------------------------------------------------------------------- select

TEST(Select, Aliases) {
  const Parsed p("select a x, b as [my y], 'z' z, w=a.c, 'q'=d, e 'r', f \"s\" from a");
  std::vector<std::string> aliases;
  for (const auto& item : p.as<SelectStatement>().select->items) aliases.push_back(item.alias);
  EXPECT_THAT(aliases, ElementsAre("x", "my y", "z", "w", "q", "r", "s"));
  // A text that names a column is held to what a name is held to.
  EXPECT_EQ(errorOf("select a '" + std::string(129, 'z') + "' from t").number, 103);
  EXPECT_EQ(errorOf("select '" + std::string(129, 'z') + "'=a from t").number, 103);
  EXPECT_EQ(errorOf("select a as '' from t").number, 1038);
}

TEST(Select, Stars) {
  const Parsed p("select *, a.*, db..t.*, a*b from t");
  EXPECT_TRUE(itemAs<Star>(p, 0).qualifier.parts.empty());
  EXPECT_THAT(itemAs<Star>(p, 1).qualifier.parts, ElementsAre("a"));
  EXPECT_THAT(itemAs<Star>(p, 2).qualifier.parts, ElementsAre("db", "", "t"));
  EXPECT_EQ(itemAs<Binary>(p, 3).op, BinaryOp::multiply);
}

TEST(Select, Top) {
  const Parsed p("select distinct top 5 percent a from t");
  const Select& select = *p.as<SelectStatement>().select;
  EXPECT_TRUE(select.distinct && select.topPercent && select.top);
  EXPECT_TRUE(Parsed("select top (2+3) with ties a from t order by a").as<SelectStatement>().select->topWithTies);
  EXPECT_EQ(printed("select top 5 * from t"), "select top (5) * from t");
  EXPECT_EQ(errorOf("select top 5 with ties a from t").number, 1062);
  EXPECT_EQ(errorOf("select top a from t").number, 102);
}

TEST(Select, JoinsNestByTheirConditions) {
  EXPECT_EQ(printed("select * from a left join b inner join c on b.x=c.x on a.x=b.x"),
            "select * from a left join (b inner join c on b.x = c.x) on a.x = b.x");
  EXPECT_EQ(printed("select * from (a join b on a.x=b.x) left outer join c on c.x=a.x, d cross join e"),
            "select * from a inner join b on a.x = b.x left join c on c.x = a.x, d cross join e");
  EXPECT_EQ(printed("select * from a full join (b right outer join c on 1=1) on 2=2"),
            "select * from a full join (b right join c on 1 = 1) on 2 = 2");
  EXPECT_EQ(printed("select * from ((select 1 x) q join t on 1=1)"),
            "select * from (select 1 as x) as q inner join t on 1 = 1");
}

TEST(Select, TableHintsAreIgnored) {
  EXPECT_EQ(
      printed("select * from t with (nolock), u (nolock) x, v nolock, w as y with (index(1), rowlock), z (holdlock)"),
      "select * from t, u as x, v, w as y, z");
  EXPECT_EQ(printed("update t with (rowlock) set a=1"), "update t set a = 1");
}

TEST(Select, DerivedTables) {
  EXPECT_EQ(printed("select * from (select 1,2 union all select 3,4) q (a, b)"),
            "select * from (select 1, 2 union all select 3, 4) as q (a, b)");
  EXPECT_EQ(errorOf("select * from (select 1)").number, 102);  // needs a name
  EXPECT_EQ(errorOf("select * from (select a from t order by a) q").number, 1033);
  EXPECT_EQ(printed("select * from (select top 1 a from t order by a) q"),
            "select * from (select top (1) a from t order by a) as q");
}

TEST(Select, Combined) {
  const Parsed p("select a into #x from t union all select b from u union select c from v order by 1 desc");
  const Select& first = *p.as<SelectStatement>().select;
  EXPECT_EQ(first.op, SetOperation::unionAll);
  EXPECT_EQ(first.next->op, SetOperation::unionDistinct);
  EXPECT_EQ(first.next->next->op, SetOperation::none);
  EXPECT_TRUE(first.into && first.orderBy.size() == 1 && first.orderBy[0].descending);
  EXPECT_TRUE(first.next->next->orderBy.empty());
  EXPECT_EQ(errorOf("select a from t union select b into #x from u").number, 196);
}

TEST(Select, BracketsAndIntersectGroupTheCombination) {
  EXPECT_EQ(printed("(select 1) union (select 2)"), "select 1 union select 2");
  EXPECT_EQ(printed("(select 1 union all select 2) union select 3"), "select 1 union all select 2 union select 3");
  // The chain groups to the left; another grouping becomes a derived table.
  EXPECT_EQ(printed("select 1 union all (select 2 union select 3)"),
            "select 1 union all select * from (select 2 union select 3) as combined (column1)");
  EXPECT_EQ(printed("select 1 except select 2 intersect select 3"),
            "select 1 except select * from (select 2 intersect select 3) as combined (column1)");
  EXPECT_EQ(printed("select 1 intersect select 2 except select 3"), "select 1 intersect select 2 except select 3");
}

TEST(Select, IgnoredAndRefusedClauses) {
  EXPECT_EQ(printed("select a from t option (maxdop 1)"), "select a from t");
  EXPECT_THAT(errorOf("select a from t for update").what(),
              HasSubstr("for update is not supported (line 1, column 21)"));
  EXPECT_EQ(errorOf("select a from t order by a compute sum(a)").number, 40000);
  EXPECT_EQ(errorOf("select a from t group by a with rollup").number, 40000);
  EXPECT_EQ(errorOf("select * from a, b where a.x *= b.x").number, 40000);
  EXPECT_EQ(errorOf("select * from a, b where a.x =* b.x").number, 40000);
  EXPECT_EQ(errorOf("select a from t order by a collate Chinese_PRC_BIN").number, 40000);
  EXPECT_EQ(printed("select a from t order by a collate Chinese_PRC_CI_AS"), "select a from t order by a");
}

}  // namespace
}  // namespace tsql
