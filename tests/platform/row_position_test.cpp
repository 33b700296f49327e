#include "platform/row_position.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(RowPositionTest, WalksFromBeforeTheFirstRowToBehindTheLast) {
  RowPosition p;
  EXPECT_EQ(p.row(2), 0u);
  p.toPrevious(2);
  EXPECT_TRUE(p.isBefore());
  EXPECT_THROW(p.row(2), RunTimeError);
  EXPECT_THROW(p.toPrevious(2), RunTimeError);
  p.toNext(2);
  EXPECT_EQ(p.row(2), 0u);
  p.toNext(2);
  EXPECT_EQ(p.row(2), 1u);
  p.toNext(2);
  EXPECT_TRUE(p.isBehind(2));
  EXPECT_THROW(p.row(2), RunTimeError);
  EXPECT_THROW(p.toNext(2), RunTimeError);
  p.toPrevious(2);
  EXPECT_EQ(p.row(2), 1u);
  p.toFirst(2);
  EXPECT_TRUE(p.isAtStart());
}

TEST(RowPositionTest, OfNoRowsIsBehindThemAndLeadsNowhere) {
  RowPosition p;
  EXPECT_TRUE(p.isBehind(0));
  EXPECT_THROW(p.toFirst(0), RunTimeError);
  EXPECT_THROW(p.toNext(0), RunTimeError);
  EXPECT_THROW(p.toPrevious(0), RunTimeError);
  EXPECT_FALSE(p.isBefore());
}

}  // namespace
}  // namespace platform
