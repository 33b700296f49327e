#include "odbc/selection.h"

#include <gtest/gtest.h>

using odbc::Selection;
using odbc::selectionOf;

namespace {

// "table: column column", "table: *", or "none".
std::string told(const char* sql) {
  const auto s = selectionOf(sql);
  if (!s) return "none";
  std::string text = s->table + ":";
  if (s->allColumns) return text + " *";
  for (const std::string& column : s->columns) text += " " + (column.empty() ? "-" : column);
  return text;
}

}  // namespace

TEST(Selections, the_table_behind_all_columns) {
  EXPECT_EQ(told("select * from gl_accsum where iyear=2006 order by ccode,iperiod"), "gl_accsum: *");
  EXPECT_EQ(told(" Select  top 1 * From [gl_accvouch]"), "[gl_accvouch]: *");
  EXPECT_EQ(told("select top (5) t.* from t"), "t: *");
  EXPECT_EQ(told("select * from code with_alias where bend=1;"), "code: *");
  EXPECT_EQ(told("select * from code as c where c.bend=1"), "code: *");
  EXPECT_EQ(told("select * from tempdb..jztmp order by ccode"), "tempdb..jztmp: *");
  EXPECT_EQ(told("select /* from x */ * from t -- where from"), "t: *");
}

TEST(Selections, the_parts_of_the_name) {
  EXPECT_EQ(selectionOf("select * from [my db]..[od]]d]")->parts, (std::vector<std::string>{"my db", "", "od]d"}));
  EXPECT_EQ(selectionOf("select * from a.b.c")->parts, (std::vector<std::string>{"a", "b", "c"}));
}

TEST(Selections, plain_columns_but_no_expressions) {
  EXPECT_EQ(told("select ccode, c.iyear, [b end] from code c"), "code: ccode iyear b end");
  EXPECT_EQ(told("select ccode as x, me+1, count(*) , isnull(a,'from') b from t"), "t: - - - -");
}

TEST(Selections, rows_of_several_tables_or_statements_belong_to_none) {
  for (const char* sql :
       {"select 1", "select * from a, b", "select * from a inner join b on a.x=b.x",
        "select * from a left join b on 1=1", "select distinct * from a", "select a from t group by a",
        "select a into #t from t", "select * from t select * from u", "select * from t delete from u",
        "select * from t; delete from u", "update t set a=1", "select * from (select 1 as a) x",
        "select * from t union select * from u", "select * from a.b.c.d", "", "select"})
    EXPECT_EQ(told(sql), "none") << sql;
  EXPECT_EQ(told("select * from t where a in (select b from u group by b)"), "t: *");
}
