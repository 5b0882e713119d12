// Text functions: upper-casing of names, fixed-column print lines and combo texts.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

namespace {
int errorNumberOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const vb::RuntimeError& e) {
        return e.Number;
    }
    return 0;
}
} // namespace

TEST(UCase, UpperCasesSpanishNames) {
    EXPECT_EQ(vb::UCase(QString::fromUtf8("la peña sl")), QString::fromUtf8("LA PEÑA SL"));
    EXPECT_EQ(vb::UCase(QString::fromUtf8("áéíóúüç")), QString::fromUtf8("ÁÉÍÓÚÜÇ"));
    EXPECT_EQ(vb::UCase(QString::fromUtf8("x12345678z")), QStringLiteral("X12345678Z")); // a NIF
    EXPECT_EQ(vb::UCase(QString::fromUtf8("straße")).size(), 6);                       // one letter for one
    EXPECT_EQ(vb::UCase("dsc"), QStringLiteral("DSC"));
}

TEST(LCase, LowerCasesSpanishLetters) {
    EXPECT_EQ(vb::LCase(QString::fromUtf8("MUÑOZ ÁLVAREZ")), QString::fromUtf8("muñoz álvarez"));
}

TEST(Trim, TakesOffBlanksOnly) {
    EXPECT_EQ(vb::Trim("  LA TIENDA  "), QStringLiteral("LA TIENDA"));
    EXPECT_EQ(vb::LTrim("  A  "), QStringLiteral("A  "));
    EXPECT_EQ(vb::RTrim("  A  "), QStringLiteral("  A"));
    EXPECT_EQ(vb::Trim("\tA\t"), QStringLiteral("\tA\t"));
    EXPECT_EQ(vb::Trim("   "), QString());
}

TEST(Left, TakesTheFirstCharactersOrAllOfThem) {
    EXPECT_EQ(vb::Left("ABCDEF", 2), QStringLiteral("AB"));
    EXPECT_EQ(vb::Left("ABC", 10), QStringLiteral("ABC"));
    EXPECT_EQ(vb::Left("ABC", 0), QString());
    EXPECT_EQ(errorNumberOf([] { vb::Left("ABC", -1); }), 5);
}

TEST(Right, TakesTheLastCharactersOrAllOfThem) {
    EXPECT_EQ(vb::Right("ABCDEF", 2), QStringLiteral("EF"));
    EXPECT_EQ(vb::Right("ABC", 10), QStringLiteral("ABC"));
    EXPECT_EQ(errorNumberOf([] { vb::Right("ABC", -1); }), 5);
}

TEST(Mid, CountsFromOne) {
    EXPECT_EQ(vb::Mid("abc", 1, 2), QStringLiteral("ab"));
    EXPECT_EQ(vb::Mid("abc", 2), QStringLiteral("bc"));
    EXPECT_EQ(vb::Mid("abc", 2, 10), QStringLiteral("bc"));
    EXPECT_EQ(vb::Mid("abc", 3, 1), QStringLiteral("c"));
    EXPECT_EQ(vb::Mid("abc", 4), QString());
    EXPECT_EQ(vb::Mid("abc", 5), QString());
    EXPECT_EQ(vb::Mid("abc", 2, 0), QString());
}

TEST(Mid, AStartBelowOneIsAnInvalidCall) {
    EXPECT_EQ(errorNumberOf([] { vb::Mid("abc", 0); }), 5);
    EXPECT_EQ(errorNumberOf([] { vb::Mid("abc", 1, -2); }), 5);
}

TEST(Mid, ReadsTheCodeOfAStructureEntry) {
    // A one-character code comes with the blank behind it.
    EXPECT_EQ(vb::Mid(QStringLiteral("7 FERRETERIA"), 1, 2), QStringLiteral("7 "));
    EXPECT_EQ(vb::Mid(QStringLiteral("12 PINTURA"), 1, 2), QStringLiteral("12"));
}

TEST(Space, MakesBlanks) {
    EXPECT_EQ(vb::Space(3), QStringLiteral("   "));
    EXPECT_EQ(vb::Space(0), QString());
    EXPECT_EQ(errorNumberOf([] { vb::Space(-1); }), 5);
}

TEST(Space, RightJustifiesAPriceInTenColumns) {
    // The catalogue line: Left(Space(10), 10 - Len(P)) and then P.
    const QString price = vb::Format(12.5, "0.000");
    const QString column = vb::Left(vb::Space(10), 10 - vb::Len(price)) + price;
    EXPECT_EQ(column, QStringLiteral("    12.500"));
    EXPECT_EQ(vb::Len(column), 10);
}

TEST(Space, CutsAPrintLineByColumns) {
    // L = Left(L, n), value, Space(80): each value starts at a fixed column.
    QString line = QStringLiteral(" ") + "100.00" + vb::Space(80);
    line = vb::Left(line, 12) + "10.00" + vb::Space(80);
    line = vb::Left(line, 24) + "90.00";
    EXPECT_EQ(line, QStringLiteral(" 100.00     10.00       90.00"));
}

TEST(Len, CountsCharacters) {
    EXPECT_EQ(vb::Len(QString::fromUtf8("Peña")), 4);
    EXPECT_EQ(vb::Len(QString()), 0);
}

TEST(InStr, FindsFromOne) {
    EXPECT_EQ(vb::InStr("3 /CENTRO", "/"), 3);
    EXPECT_EQ(vb::InStr("abcabc", "c", 4), 6);
    EXPECT_EQ(vb::InStr("abc", "x"), 0);
    EXPECT_EQ(vb::InStr("abc", "B"), 0); // binary comparison
    EXPECT_EQ(vb::InStr("abc", ""), 1);
    EXPECT_EQ(vb::InStr("", "a"), 0);
    EXPECT_EQ(vb::InStr("abc", "a", 9), 0);
    EXPECT_EQ(errorNumberOf([] { vb::InStr("abc", "a", 0); }), 5);
}

TEST(Split, CutsTheObservationsIntoLines) {
    // Pages of a document: U is the upper bound of Split(observaciones, CR LF).
    EXPECT_EQ(vb::Split("uno\r\ndos\r\ntres", "\r\n").size() - 1, 2);
    EXPECT_EQ(vb::Split("una linea", "\r\n").size() - 1, 0);
    EXPECT_EQ(static_cast<int>(vb::Split("", "\r\n").size()) - 1, -1); // an empty text has no lines
    EXPECT_EQ(vb::Split("a,,b", ","), (QStringList{"a", "", "b"}));
    EXPECT_EQ(vb::Split("a b"), (QStringList{"a", "b"}));
    EXPECT_EQ(vb::Split("a b", ""), (QStringList{"a b"}));
}

TEST(StrComp, ComparesByCharacterCodes) {
    EXPECT_EQ(vb::StrComp("A", "B"), -1);
    EXPECT_EQ(vb::StrComp("B", "A"), 1);
    EXPECT_EQ(vb::StrComp("ABC", "ABC"), 0);
    EXPECT_EQ(vb::StrComp("a", "B"), 1);       // lower case after upper case
    EXPECT_EQ(vb::StrComp("AB", "ABC"), -1);
    EXPECT_EQ(vb::StrComp(QString::fromUtf8("Ñ"), "Z"), 1);
}
