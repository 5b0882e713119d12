// CDate and IsDate: dates typed by the user, always day first.
#include "support/print_to.h"
#include "runtime/clock.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

TEST(CDate, ReadsDayMonthYear) {
    EXPECT_EQ(vb::CDate("31/12/2003"), QDate(2003, 12, 31));
    EXPECT_EQ(vb::CDate("1/2/2026"), QDate(2026, 2, 1));
    EXPECT_EQ(vb::CDate(" 05-03-2026 "), QDate(2026, 3, 5));
}

TEST(CDate, TwoDigitYearsFallBetween1930And2029) {
    EXPECT_EQ(vb::CDate("1/2/03"), QDate(2003, 2, 1));
    EXPECT_EQ(vb::CDate("1/2/29"), QDate(2029, 2, 1));
    EXPECT_EQ(vb::CDate("1/2/30"), QDate(1930, 2, 1));
    EXPECT_EQ(vb::CDate("1/2/99"), QDate(1999, 2, 1));
}

TEST(CDate, IsLenientLikeTheRuntime) {
    // Month first is taken when day first gives no date.
    EXPECT_EQ(vb::CDate("12/31/2003"), QDate(2003, 12, 31));
    EXPECT_EQ(vb::CDate("12/2003"), QDate(2003, 12, 1));
    vb::clock::pin(QDateTime(QDate(2026, 5, 4), QTime(9, 0)));
    EXPECT_EQ(vb::CDate("31/12"), QDate(2026, 12, 31));
    vb::clock::unpin();
}

TEST(CDate, RejectsWhatIsNoDate) {
    EXPECT_FALSE(vb::CDate("").isValid());
    EXPECT_FALSE(vb::CDate("abc").isValid());
    EXPECT_FALSE(vb::CDate("31/02/2003").isValid());
    EXPECT_FALSE(vb::CDate("29/02/2003").isValid());
    EXPECT_FALSE(vb::CDate("32/13/2003").isValid());
    EXPECT_FALSE(vb::CDate("1/2/3/4").isValid());
    EXPECT_FALSE(vb::CDate("12").isValid());
    EXPECT_FALSE(vb::CDate("1.5").isValid());
}

TEST(IsDate, TellsADateFromOtherText) {
    EXPECT_TRUE(vb::IsDate("29/02/2004"));
    EXPECT_FALSE(vb::IsDate("29/02/2003"));
    EXPECT_FALSE(vb::IsDate("hoy"));
}
