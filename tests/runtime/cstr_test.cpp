// CStr: the plain text of a number, as a running total is written into a label
// before the label's own handler rounds it.
#include "support/print_to.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

using vb::CStr;

TEST(CStr, WritesAllTheDigitsOfAPriceWithoutVat) {
    // A retail price of 121 at 16% taken out and 21% put back.
    EXPECT_EQ(CStr(121 / 1.16 * 1.21), QStringLiteral("126.21551724137932"));
}

TEST(CStr, WritesTheShortestTextThatReadsBack) {
    EXPECT_EQ(CStr(12.5), QStringLiteral("12.5"));
    EXPECT_EQ(CStr(-0.25), QStringLiteral("-0.25"));
    EXPECT_EQ(CStr(0.1 + 0.2), QStringLiteral("0.30000000000000004"));
    EXPECT_EQ(CStr(1.999 * 3), QStringLiteral("5.997"));
    // The line total of 3 x 1.999 with 10% off, before its label rounds it.
    EXPECT_EQ(CStr(5.997 - 10.0 / 100 * 5.997), QStringLiteral("5.3972999999999995"));
}

TEST(CStr, WholeNumbersHaveNoDecimalPart) {
    EXPECT_EQ(CStr(3), QStringLiteral("3"));
    EXPECT_EQ(CStr(0), QStringLiteral("0"));
    EXPECT_EQ(CStr(-0.0), QStringLiteral("0"));
    EXPECT_EQ(CStr(-17), QStringLiteral("-17"));
    EXPECT_EQ(CStr(100000), QStringLiteral("100000"));
    EXPECT_EQ(CStr(999999999999999), QStringLiteral("999999999999999"));
}

TEST(CStr, OrdinaryMagnitudesNeverUseAnExponent) {
    EXPECT_EQ(CStr(0.0001), QStringLiteral("0.0001"));
    EXPECT_EQ(CStr(0.00012), QStringLiteral("0.00012"));
    EXPECT_EQ(CStr(123456789012.25), QStringLiteral("123456789012.25"));
}

TEST(CStr, VeryLargeAndVerySmallNumbersUseTheRuntimesExponentForm) {
    EXPECT_EQ(CStr(1e15), QStringLiteral("1E+15"));
    EXPECT_EQ(CStr(1.5e-5), QStringLiteral("1.5E-05"));
    EXPECT_EQ(CStr(-1.1102230246251565e-16), QStringLiteral("-1.1102230246251565E-16"));
    EXPECT_EQ(CStr(2.5e100), QStringLiteral("2.5E+100"));
}
