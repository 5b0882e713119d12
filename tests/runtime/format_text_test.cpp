// Format applied to the text of a control: numbers typed in boxes, dates typed
// in date boxes, and the "!@@" codes at the head of combo entries.
#include "support/print_to.h"
#include "runtime/clock.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

using vb::Format;

TEST(FormatText, ANumberTypedInABoxIsFormattedAsANumber) {
    EXPECT_EQ(Format(QStringLiteral("1"), "00000"), QStringLiteral("00001")); // the first document number
    EXPECT_EQ(Format(QStringLiteral("1.999"), "0.000"), QStringLiteral("1.999"));
    EXPECT_EQ(Format(QStringLiteral("2"), "0.000"), QStringLiteral("2.000"));
    EXPECT_EQ(Format(QStringLiteral("1.999"), "0.00"), QStringLiteral("2.00"));
    EXPECT_EQ(Format(QStringLiteral(" 7 "), "00"), QStringLiteral("07"));
    EXPECT_EQ(Format(QStringLiteral("-5"), "0.000"), QStringLiteral("-5.000"));
}

TEST(FormatText, ABankCodeTypedAs1IsShownAs0001) {
    EXPECT_EQ(Format(QStringLiteral("1"), "0000"), QStringLiteral("0001"));
}

TEST(FormatText, APriceTypedWithACommaIsTheNumberBeforeTheComma) {
    // "12,5" in the price box is stored as 12: Format reads it the way Val does.
    EXPECT_EQ(Format(QStringLiteral("12,5"), "0.000"), QStringLiteral("12.000"));
    EXPECT_EQ(vb::Val(Format(QStringLiteral("12,5"), "0.000")), 12);
}

TEST(FormatText, TheInvoicingLimitShowsWhatWasTyped) {
    EXPECT_EQ(Format(QStringLiteral("1500"), "#.###"), QStringLiteral("1500."));
    EXPECT_EQ(Format(QStringLiteral("1.5"), "#.###"), QStringLiteral("1.5"));
    EXPECT_EQ(Format(QStringLiteral("0"), "#.###"), QStringLiteral("."));
    EXPECT_EQ(Format(QString(), "#.###"), QString());
    EXPECT_EQ(Format(QStringLiteral("sin limite"), "#.###"), QStringLiteral("sin limite"));
}

TEST(FormatText, AnEmptyOrWordyTextStandsAsItIs) {
    EXPECT_EQ(Format(QString(), "0.00"), QString());
    EXPECT_EQ(Format(QStringLiteral("abc"), "0.00"), QStringLiteral("abc"));
    EXPECT_EQ(Format(QStringLiteral("abc"), "dd/mm/yyyy"), QStringLiteral("abc"));
    EXPECT_EQ(Format(QStringLiteral("abc"), ""), QStringLiteral("abc"));
}

TEST(FormatText, ADateTypedInADateBoxIsWrittenInFull) {
    EXPECT_EQ(Format(QStringLiteral("1/2/03"), "dd/mm/yyyy"), QStringLiteral("01/02/2003"));
    EXPECT_EQ(Format(QStringLiteral("31/12/2003"), "dd/mm/yyyy"), QStringLiteral("31/12/2003"));
    EXPECT_EQ(Format(QStringLiteral("31-12-2003"), "dd/mm/yyyy"), QStringLiteral("31/12/2003"));
    EXPECT_EQ(Format(QStringLiteral("31/12/2003"), "yyyymmdd"), QStringLiteral("20031231"));
}

TEST(FormatText, AShortDateFallsInTheCurrentYear) {
    vb::clock::pin(QDateTime(QDate(2026, 5, 4), QTime(10, 0)));
    EXPECT_EQ(Format(QStringLiteral("3/7"), "dd/mm/yyyy"), QStringLiteral("03/07/2026"));
    vb::clock::unpin();
}

TEST(FormatText, ACodeInFrontOfAComboEntryTakesTwoColumns) {
    // Store 3 "CENTRO": the entry is "3 /CENTRO", the code is Mid(text, 1, 2)
    // and the name starts at position 4.
    const QString entry = Format(3, "!@@") + "/" + "CENTRO";
    EXPECT_EQ(entry, QStringLiteral("3 /CENTRO"));
    EXPECT_EQ(vb::Mid(entry, 1, 2), QStringLiteral("3 "));
    EXPECT_EQ(vb::Val(vb::Mid(entry, 1, 2)), 3);
    EXPECT_EQ(vb::Mid(entry, 4), QStringLiteral("CENTRO"));
}

TEST(FormatText, TheVatComboEndsWithThePercent) {
    const QString entry = Format(1, "!@@") + "/" + vb::CStr(21);
    EXPECT_EQ(entry, QStringLiteral("1 /21"));
    EXPECT_EQ(vb::Right(entry, 2), QStringLiteral("21"));
}

TEST(FormatText, LeftAlignedCodesArePaddedOrCutFromTheLeft) {
    EXPECT_EQ(Format(QStringLiteral("7"), "!@@"), QStringLiteral("7 "));
    EXPECT_EQ(Format(QStringLiteral("12"), "!@@"), QStringLiteral("12"));
    EXPECT_EQ(Format(QStringLiteral("123"), "!@@"), QStringLiteral("23"));
    EXPECT_EQ(Format(QString(), "!@@"), QStringLiteral("  "));
    EXPECT_EQ(Format(QStringLiteral("A"), "!@@"), QStringLiteral("A "));
    EXPECT_EQ(Format(12, "!@@"), QStringLiteral("12"));
}

TEST(FormatText, OtherCharacterMasks) {
    EXPECT_EQ(Format(QStringLiteral("7"), "@@"), QStringLiteral(" 7"));     // right-aligned by default
    EXPECT_EQ(Format(QStringLiteral("123"), "@@"), QStringLiteral("123"));  // and nothing lost
    EXPECT_EQ(Format(QStringLiteral("7"), "&&"), QStringLiteral("7"));
    EXPECT_EQ(Format(QString::fromUtf8("año"), ">"), QString::fromUtf8("AÑO"));
    EXPECT_EQ(Format(QStringLiteral("AB"), "<@@@"), QStringLiteral(" ab"));
    EXPECT_EQ(Format(QStringLiteral("1234"), "@@-@@"), QStringLiteral("12-34"));
}
