// Round, Int and Fix: the printed amounts are Format(Round(Val(text), 2), "0.00").
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

TEST(Round, ATieGoesToTheEvenNumber) {
    EXPECT_EQ(vb::Round(2.5), 2);
    EXPECT_EQ(vb::Round(3.5), 4);
    EXPECT_EQ(vb::Round(-2.5), -2);
    EXPECT_EQ(vb::Round(-3.5), -4);
    EXPECT_EQ(vb::Round(0.5), 0);
    EXPECT_EQ(vb::Round(1.5), 2);
    EXPECT_EQ(vb::Round(2.4), 2);
    EXPECT_EQ(vb::Round(2.6), 3);
}

TEST(Round, ToTwoPlacesForPrinting) {
    EXPECT_EQ(vb::Round(12.345678, 2), 12.35);
    EXPECT_EQ(vb::Round(0.125, 2), 0.12);   // an exact tie: to even
    EXPECT_EQ(vb::Round(0.375, 2), 0.38);
    EXPECT_EQ(vb::Round(111, 2), 111);
    EXPECT_EQ(vb::Round(-1.235, 2), -1.24); // -1.235 is held a little below: not a tie
}

TEST(Round, WorksOnTheStoredBinaryValue) {
    // 1.005 is held as 1.00499999999999989..., so Round gives 1 where Format,
    // which reads the number as written, gives 1.01.
    EXPECT_EQ(vb::Round(1.005, 2), 1);
    EXPECT_EQ(vb::Format(vb::Round(1.005, 2), "0.00"), QStringLiteral("1.00"));
    EXPECT_EQ(vb::Format(1.005, "0.00"), QStringLiteral("1.01"));
    EXPECT_EQ(vb::Round(0.285, 2), 0.28); // 28.499999999999996 once scaled
}

TEST(Round, NegativeDigitsAreAnInvalidCall) {
    try {
        vb::Round(1.5, -1);
        FAIL();
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 5);
    }
}

TEST(Int, GoesDownAndFixGoesTowardZero) {
    EXPECT_EQ(vb::Int(-2.5), -3);
    EXPECT_EQ(vb::Int(2.5), 2);
    EXPECT_EQ(vb::Fix(-2.5), -2);
    EXPECT_EQ(vb::Fix(2.5), 2);
}

TEST(Int, CountsThePagesOfAPrintedDocument) {
    // 40 rows give Int(40 / 39) + 1 = 2 pages.
    EXPECT_EQ(vb::Int(40.0 / 39) + 1, 2);
    EXPECT_EQ(vb::Int(39.0 / 39) + 1, 2);
    EXPECT_EQ(vb::Int(38.0 / 39) + 1, 1);
}

TEST(Int, CentresATicketLine) {
    // Centring "ABC" on a 40-column ticket: Space(Int((40 - 3) / 2)), 18 blanks.
    EXPECT_EQ(vb::Space(static_cast<int>(vb::Int((40 - vb::Len("ABC")) / 2.0))), QString(18, u' '));
}
