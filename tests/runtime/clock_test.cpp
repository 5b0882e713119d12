// The clock: documents take today's date, and tests pin it.
#include "support/print_to.h"
#include "runtime/clock.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

TEST(Clock, APinnedClockStandsStill) {
    vb::clock::pin(QDateTime(QDate(2026, 3, 9), QTime(17, 45, 30)));
    EXPECT_TRUE(vb::clock::pinned());
    EXPECT_EQ(vb::Date(), QDate(2026, 3, 9));
    EXPECT_EQ(vb::Time(), QTime(17, 45, 30));
    EXPECT_EQ(vb::Now(), QDateTime(QDate(2026, 3, 9), QTime(17, 45, 30)));
    EXPECT_EQ(vb::Format(vb::Date(), "dd/mm/yyyy"), QStringLiteral("09/03/2026"));
    EXPECT_EQ(vb::Format(vb::Time(), "hh:mm:ss"), QStringLiteral("17:45:30"));
    vb::clock::unpin();
}

TEST(Clock, KeepsWholeSecondsOnly) {
    vb::clock::pin(QDateTime(QDate(2026, 3, 9), QTime(17, 45, 30, 999)));
    EXPECT_EQ(vb::Time(), QTime(17, 45, 30));
    vb::clock::unpin();
}

TEST(Clock, UnpinnedItFollowsTheSystemClock) {
    vb::clock::pin(QDateTime(QDate(2001, 1, 1), QTime(0, 0)));
    vb::clock::unpin();
    EXPECT_FALSE(vb::clock::pinned());
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    const QDateTime now = vb::Now();
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
    EXPECT_EQ(now.time().msec(), 0);
}
