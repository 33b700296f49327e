#include "platform/date_time.h"

#include <gtest/gtest.h>

#include "platform/run_time_error.h"

namespace {

using platform::DateTime;
using platform::RunTimeError;

TEST(DateTime, TextHasATimeOnlyWhenThereIsOne) {
  EXPECT_EQ(DateTime::fromDate(2006, 1, 1).text(), "2006-01-01");
  EXPECT_EQ(DateTime::fromDate(2006, 1, 1, 8, 5, 9).text(), "2006-01-01 08:05:09");
  EXPECT_EQ(DateTime::fromDate(2006, 1, 1, 8, 5, 9).dateText(), "2006-01-01");
}

TEST(DateTime, TicksCountFrom1900InBothDirections) {
  EXPECT_EQ(DateTime::fromDate(1900, 1, 1).ticks(), 0);
  EXPECT_EQ(DateTime::fromDate(1900, 1, 2).ticks(), DateTime::ticksPerDay);
  EXPECT_EQ(DateTime::fromTicks(-1).text(), "1899-12-31 23:59:59");
  EXPECT_EQ(DateTime::fromDate(1753, 1, 1).text(), "1753-01-01");
  EXPECT_EQ(DateTime::fromDate(9999, 12, 31, 23, 59, 59).text(), "9999-12-31 23:59:59");
}

TEST(DateTime, MillisecondsAreThoseOfTheServer) {
  EXPECT_EQ(DateTime::fromTicks(1).parts().millisecond, 3);
  EXPECT_EQ(DateTime::fromTicks(2).parts().millisecond, 7);
  EXPECT_EQ(DateTime::fromTicks(3).parts().millisecond, 10);
  EXPECT_EQ(DateTime::fromTicks(299).parts().millisecond, 997);
}

TEST(DateTime, ParseReadsThreeSeparatorsAndAnOptionalTime) {
  const DateTime day = DateTime::fromDate(2005, 12, 31);
  EXPECT_EQ(DateTime::parse("2005-12-31"), day);
  EXPECT_EQ(DateTime::parse("2005/12/31"), day);
  EXPECT_EQ(DateTime::parse(" 2005.12.31 "), day);
  EXPECT_EQ(DateTime::parse("2005-12-31 23:59"), DateTime::fromDate(2005, 12, 31, 23, 59));
  EXPECT_EQ(DateTime::parse("2005-1-2 3:04:05"), DateTime::fromDate(2005, 1, 2, 3, 4, 5));
}

TEST(DateTime, ParseRefusesWhatIsNoDate) {
  for (const char* text : {"", "2005", "2005-02-29", "2005-13-01", "2005-01-01x", "2005-01-01 25:00", "1752-12-31",
                           "20050101", "2005-01-01 10"}) {
    try {
      DateTime::parse(text);
      ADD_FAILURE() << text;
    } catch (const RunTimeError& e) {
      EXPECT_EQ(e.number(), RunTimeError::typeMismatch) << text;
    }
  }
}

TEST(DateTime, FromDateRefusesADayThatIsNot) {
  EXPECT_EQ(DateTime::fromDate(2004, 2, 29).text(), "2004-02-29");
  EXPECT_THROW(DateTime::fromDate(1900, 2, 29), RunTimeError);
  EXPECT_THROW(DateTime::fromDate(2005, 4, 31), RunTimeError);
  EXPECT_THROW(DateTime::fromDate(2005, 1, 1, 24), RunTimeError);
}

}  // namespace
