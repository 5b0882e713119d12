// A mask may carry fixed text: a character after a backslash, or a text in
// double quotes. Number, date and text masks all print it as it stands.
#include "support/print_to.h"
#include "runtime/vb.h"
#include <gtest/gtest.h>

TEST(FormatLiterals, NumberMaskPrintsQuotedTextAndEscapedCharacters) {
    EXPECT_EQ(vb::Format(12.5, "0.00\" EUR\""), "12.50 EUR");
    EXPECT_EQ(vb::Format(7.0, "\\#00"), "#07");
}

TEST(FormatLiterals, DateMaskPrintsQuotedTextAndEscapedCharacters) {
    const QDate day(2026, 11, 21);
    EXPECT_EQ(vb::Format(day, "\"Día \"dd"), "Día 21");
    EXPECT_EQ(vb::Format(day, "dd\\-mm"), "21-11");
}

TEST(FormatLiterals, TextMaskPrintsQuotedTextAndEscapedCharacters) {
    // Without "!" the placeholders fill from the right; with it, from the left.
    EXPECT_EQ(vb::Format(QStringLiteral("7"), "\"[\"@@\\]"), "[ 7]");
    EXPECT_EQ(vb::Format(QStringLiteral("7"), "!\"[\"@@\\]"), "[7 ]");
}
