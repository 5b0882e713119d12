// Val: how every amount, quantity and code typed in a window is read.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

using vb::Val;

TEST(Val, ReadsTheLeadingDigitsOfACode) {
    // A code typed as "12A" goes into the SQL text as 12.
    EXPECT_EQ(Val("12A"), 12);
}

TEST(Val, ACommaEndsTheNumberSo12Comma5IsStoredAs12) {
    // The shop owner types a Spanish decimal comma into a price: it reads as 12.
    EXPECT_EQ(Val("12,5"), 12);
    EXPECT_EQ(Val("1,999"), 1);
}

TEST(Val, AnEmptyFieldReadsAsZero) {
    EXPECT_EQ(Val(""), 0);
    EXPECT_EQ(Val("   "), 0);
    EXPECT_EQ(Val("abc"), 0);
}

TEST(Val, BlanksTabsAndLineFeedsAreSkippedAnywhere) {
    EXPECT_EQ(Val(" 1 2 3"), 123);
    EXPECT_EQ(Val(" 1 2 "), 12);
    EXPECT_EQ(Val("\t1\n2"), 12);
    EXPECT_EQ(Val("1 . 5"), 1.5);
}

TEST(Val, ReadsThePointAsTheDecimalMark) {
    EXPECT_EQ(Val("12.5"), 12.5);
    EXPECT_EQ(Val("1.999"), 1.999);
    EXPECT_EQ(Val(".5"), 0.5);
    EXPECT_EQ(Val("1.2.3"), 1.2);
    EXPECT_EQ(Val("5.997"), 5.997);
}

TEST(Val, ReadsAnOptionalSign) {
    // A price of "-5" makes a negative line.
    EXPECT_EQ(Val("-5"), -5);
    EXPECT_EQ(Val("+5"), 5);
    EXPECT_EQ(Val(" - 5"), -5);
    EXPECT_EQ(Val("--5"), 0);
    EXPECT_EQ(Val("-"), 0);
    EXPECT_EQ(Val("5-"), 5);
}

TEST(Val, ReadsAnExponentWithEOrD) {
    EXPECT_EQ(Val("1E3"), 1000);
    EXPECT_EQ(Val("1.5e-2"), 0.015);
    EXPECT_EQ(Val("2D2"), 200);
    EXPECT_EQ(Val("12E"), 12);   // no exponent digits: the number stands
    EXPECT_EQ(Val("12Ex"), 12);
    EXPECT_EQ(Val("-1.1102230246251565E-16"), -1.1102230246251565E-16);
}

TEST(Val, ReadsBackEveryPlainTextOfANumber) {
    for (double x : {126.21551724137932, 0.1 + 0.2, -0.25, 5.997000000000001, 1e-7, 1e20, 123456789012345.6})
        EXPECT_EQ(Val(vb::CStr(x)), x) << vb::CStr(x).toStdString();
}

TEST(Val, ReadsHexadecimalAndOctal) {
    EXPECT_EQ(Val("&HFF"), 255);
    EXPECT_EQ(Val("&h1f"), 31);
    EXPECT_EQ(Val("&O17"), 15);
    EXPECT_EQ(Val("&17"), 15);
    EXPECT_EQ(Val("&HFFFF"), -1);       // a 16-bit Integer, as the runtime reads it
    EXPECT_EQ(Val("&HFFFFF"), 1048575);
    EXPECT_EQ(Val("&H"), 0);
    EXPECT_EQ(Val("&"), 0);
    EXPECT_EQ(Val("&HFFFFFFFFFFFFFFFFFFFF"), 1208925819614629174706176.0); // never crashes
}

TEST(Val, AHugeNumberOverflowsAndATinyOneIsZero) {
    try {
        Val("1E400");
        FAIL() << "no overflow";
    } catch (const vb::RuntimeError& e) {
        EXPECT_EQ(e.Number, 6);
    }
    EXPECT_EQ(Val("1E-400"), 0);
    EXPECT_EQ(Val("0E999"), 0);
}

TEST(IsNumeric, AcceptsNumbersWithBlanksAround) {
    EXPECT_TRUE(vb::IsNumeric("21"));
    EXPECT_TRUE(vb::IsNumeric(" 21 "));
    EXPECT_TRUE(vb::IsNumeric("-4.5"));
    EXPECT_TRUE(vb::IsNumeric("+.5"));
    EXPECT_TRUE(vb::IsNumeric("1."));
    EXPECT_TRUE(vb::IsNumeric("1E5"));
    EXPECT_TRUE(vb::IsNumeric("1.5e-3"));
    EXPECT_TRUE(vb::IsNumeric("&H1F"));
}

TEST(IsNumeric, LetsADecimalCommaThrough) {
    // The VAT window accepts "12,5" as a number; it is then read as 12.
    EXPECT_TRUE(vb::IsNumeric("12,5"));
    EXPECT_TRUE(vb::IsNumeric("1,000.25"));
}

TEST(IsNumeric, RejectsLettersAndEmptyText) {
    // Typing letters in a percentage box empties it with a message.
    EXPECT_FALSE(vb::IsNumeric(""));
    EXPECT_FALSE(vb::IsNumeric("  "));
    EXPECT_FALSE(vb::IsNumeric("abc"));
    EXPECT_FALSE(vb::IsNumeric("12A"));
    EXPECT_FALSE(vb::IsNumeric("-"));
    EXPECT_FALSE(vb::IsNumeric("."));
    EXPECT_FALSE(vb::IsNumeric("1 2"));
    EXPECT_FALSE(vb::IsNumeric("1.2.3"));
    EXPECT_FALSE(vb::IsNumeric(",5"));
    EXPECT_FALSE(vb::IsNumeric("1E"));
    EXPECT_FALSE(vb::IsNumeric("&HZ"));
    EXPECT_FALSE(vb::IsNumeric("31/12/2003"));
}

TEST(CDbl, ConvertsANumericText) {
    EXPECT_EQ(vb::CDbl("21"), 21);
    EXPECT_EQ(vb::CDbl(" 10.000 "), 10);   // the "DSC" line's total
    EXPECT_EQ(vb::CDbl("0"), 0);           // VAT 0: the retail price goes in whole
    EXPECT_EQ(vb::CDbl("12,5"), 12);       // read as Val reads it
}

TEST(CDbl, ATextThatIsNoNumberIsATypeMismatch) {
    for (const char* text : {"", "abc", "12A"}) {
        try {
            vb::CDbl(text);
            FAIL() << "no error for " << text;
        } catch (const vb::RuntimeError& e) {
            EXPECT_EQ(e.Number, 13);
            EXPECT_EQ(e.Description, QStringLiteral("No coinciden los tipos"));
        }
    }
}
