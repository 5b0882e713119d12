// A database field's value as the windows read it.
#include "support/print_to.h"
#include "runtime/errors.h"
#include "runtime/variant.h"

#include <gtest/gtest.h>

TEST(Variant, ANumberFieldShowsAllItsDigits) {
    EXPECT_EQ(vb::Variant(12.5).str(), QStringLiteral("12.5"));
    EXPECT_EQ(vb::Variant(3.0).str(), QStringLiteral("3"));
    EXPECT_EQ(vb::Variant(121 / 1.16 * 1.21).str(), QStringLiteral("126.21551724137932"));
}

TEST(Variant, ATextFieldStandsAsItIs) {
    EXPECT_EQ(vb::Variant(QStringLiteral(" 12,5 ")).str(), QStringLiteral(" 12,5 "));
    EXPECT_EQ(vb::Variant(QStringLiteral("12.5")).num(), 12.5);
    EXPECT_EQ(vb::Variant(QStringLiteral("12,5")).num(), 12);   // through Val
    EXPECT_EQ(vb::Variant(QString()).num(), 0);
    EXPECT_EQ(vb::Variant(7.25).num(), 7.25);
}

TEST(Variant, ANullFieldCannotBeUsed) {
    const vb::Variant null;
    EXPECT_TRUE(vb::IsNull(null));
    for (int i = 0; i < 2; ++i) {
        try {
            if (i == 0) (void)null.str();
            else (void)null.num();
            FAIL() << "Null was used";
        } catch (const vb::RuntimeError& e) {
            EXPECT_EQ(e.Number, 94);
            EXPECT_EQ(e.Description, QString::fromUtf8("Uso no válido de Null"));
        }
    }
}
