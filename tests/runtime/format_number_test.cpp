// Format of numbers: every mask the windows use to show amounts and stored numbers.
#include "support/print_to.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

using vb::Format;

TEST(FormatNumber, AmountsWithTwoDecimals) {
    EXPECT_EQ(Format(12.5, "0.00"), QStringLiteral("12.50"));
    EXPECT_EQ(Format(6, "0.00"), QStringLiteral("6.00"));
    EXPECT_EQ(Format(0, "0.00"), QStringLiteral("0.00"));
    EXPECT_EQ(Format(0.6, "0.00"), QStringLiteral("0.60"));
    EXPECT_EQ(Format(1234567.891, "0.00"), QStringLiteral("1234567.89")); // no grouping
}

TEST(FormatNumber, PricesWithThreeDecimals) {
    EXPECT_EQ(Format(1.999, "0.000"), QStringLiteral("1.999"));
    EXPECT_EQ(Format(5.3973, "0.000"), QStringLiteral("5.397"));
    EXPECT_EQ(Format(100 * (21.0 / 100 + 1), "0.000"), QStringLiteral("121.000"));
    EXPECT_EQ(Format(121 / (21.0 / 100 + 1), "0.000"), QStringLiteral("100.000"));
}

TEST(FormatNumber, RoundsHalfAwayFromZero) {
    EXPECT_EQ(Format(2.5, "0"), QStringLiteral("3"));
    EXPECT_EQ(Format(3.5, "0"), QStringLiteral("4"));
    EXPECT_EQ(Format(-2.5, "0"), QStringLiteral("-3"));
    EXPECT_EQ(Format(0.125, "0.00"), QStringLiteral("0.13"));
    EXPECT_EQ(Format(0.5997, "0.00"), QStringLiteral("0.60"));
    EXPECT_EQ(Format(5.997, "0.00"), QStringLiteral("6.00"));
    EXPECT_EQ(Format(9.995, "0.00"), QStringLiteral("10.00"));
    EXPECT_EQ(Format(0.0005, "0.000"), QStringLiteral("0.001"));
}

TEST(FormatNumber, RoundsTheNumberAsItIsWrittenNotItsBinaryTail) {
    // 1.005 is held as 1.00499999999999989...: the shop sees 1.005, and gets 1.01.
    EXPECT_EQ(Format(1.005, "0.00"), QStringLiteral("1.01"));
    EXPECT_EQ(Format(2.675, "0.00"), QStringLiteral("2.68"));
    EXPECT_EQ(Format(1.0049999, "0.00"), QStringLiteral("1.00"));
    EXPECT_EQ(Format(0.1 + 0.2, "0.00"), QStringLiteral("0.30"));
    EXPECT_EQ(Format(4.35 * 100, "0"), QStringLiteral("435")); // 434.99999999999994
}

TEST(FormatNumber, NegativeAmountsTakeALeadingMinus) {
    EXPECT_EQ(Format(-5, "0.00"), QStringLiteral("-5.00"));
    EXPECT_EQ(Format(-0.6, "0.00"), QStringLiteral("-0.60"));
    EXPECT_EQ(Format(-1234.5, "0.000"), QStringLiteral("-1234.500"));
    // A negative remainder too small to show keeps its sign.
    EXPECT_EQ(Format(-0.001, "0.00"), QStringLiteral("-0.00"));
    EXPECT_EQ(Format(-0.0, "0.00"), QStringLiteral("0.00"));
}

TEST(FormatNumber, DocumentNumbersAndCodesWithLeadingZeros) {
    EXPECT_EQ(Format(17, "00000"), QStringLiteral("00017"));
    EXPECT_EQ(Format(123, "000000"), QStringLiteral("000123")); // a ticket
    EXPECT_EQ(Format(1, "00"), QStringLiteral("01"));           // warehouse and store
    EXPECT_EQ(Format(0, "00"), QStringLiteral("00"));           // operator
    EXPECT_EQ(Format(123, "00"), QStringLiteral("123"));        // more digits than zeros: all shown
    EXPECT_EQ(Format(21, "0000"), QStringLiteral("0021"));      // bank and branch
    EXPECT_EQ(Format(1234567, "0000000000"), QStringLiteral("0001234567")); // account number
    EXPECT_EQ(Format(5, "00"), QStringLiteral("05"));           // control digits
}

TEST(FormatNumber, HashShowsAStoredZeroAsNothing) {
    // Postal codes, telephones, days and percentages: 0 shows an empty box.
    EXPECT_EQ(Format(0, "#"), QString());
    EXPECT_EQ(Format(0.4, "#"), QString());
    EXPECT_EQ(Format(1234, "#"), QStringLiteral("1234"));      // postal code 01234 comes back as 1234
    EXPECT_EQ(Format(981234567, "#"), QStringLiteral("981234567"));
    EXPECT_EQ(Format(15, "#"), QStringLiteral("15"));
    EXPECT_EQ(Format(2.5, "#"), QStringLiteral("3"));
}

TEST(FormatNumber, TheInvoicingLimitMaskIsUpToThreeDecimals) {
    // "#.###": the point is the decimal placeholder, not a thousands mark.
    EXPECT_EQ(Format(1500, "#.###"), QStringLiteral("1500."));
    EXPECT_EQ(Format(0.5, "#.###"), QStringLiteral(".5"));
    EXPECT_EQ(Format(1.5, "#.###"), QStringLiteral("1.5"));
    EXPECT_EQ(Format(1500.25, "#.###"), QStringLiteral("1500.25"));
    EXPECT_EQ(Format(1.23456, "#.###"), QStringLiteral("1.235"));
    EXPECT_EQ(Format(0, "#.###"), QStringLiteral("."));
    EXPECT_EQ(Format(-0.5, "#.###"), QStringLiteral("-.5"));
}

TEST(FormatNumber, OtherMaskFeatures) {
    EXPECT_EQ(Format(1234567.5, "#,##0.00"), QStringLiteral("1,234,567.50"));
    EXPECT_EQ(Format(0.21, "0%"), QStringLiteral("21%"));
    EXPECT_EQ(Format(12.5, ".00"), QStringLiteral("12.50"));
    EXPECT_EQ(Format(1.5, "0.0#"), QStringLiteral("1.5"));
    EXPECT_EQ(Format(1.25, "0.0#"), QStringLiteral("1.25"));
    EXPECT_EQ(Format(-3, "0;(0)"), QStringLiteral("(3)"));
    EXPECT_EQ(Format(0, "0;(0);\"cero\""), QStringLiteral("cero"));
    EXPECT_EQ(Format(7, "\"No \"0"), QStringLiteral("No 7"));
    EXPECT_EQ(Format(7, "\\#0"), QStringLiteral("#7"));
    EXPECT_EQ(Format(12.5, ""), QStringLiteral("12.5"));
}

TEST(FormatNumber, ValReadsBackWhatFormatWrote) {
    for (double x : {0.0, 1.999, 5.997, -0.6, 12345.678, 0.125})
        for (const char* mask : {"0.00", "0.000"})
            EXPECT_EQ(Format(vb::Val(Format(x, mask)), mask), Format(x, mask));
}
