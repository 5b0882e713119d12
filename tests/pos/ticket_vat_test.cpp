// The three VAT slots and their deliberate mismatch: the second slot is tested
// against 7 and labelled "10" as a line goes in, "7" as one comes out.
#include "pos/ticket_vat.h"

#include <gtest/gtest.h>

namespace {

using vel::ticket::HuecosIva;
using vel::ticket::Movimiento;
using vel::ticket::MueveIva;

TEST(TicketVat, RatesGoToTheirSlots) {
    EXPECT_EQ(vel::ticket::HuecoDe(21.0f), 0);
    EXPECT_EQ(vel::ticket::HuecoDe(7.0f), 1);
    EXPECT_EQ(vel::ticket::HuecoDe(4.0f), 2);
    EXPECT_EQ(vel::ticket::HuecoDe(10.0f), -1);
    EXPECT_EQ(vel::ticket::HuecoDe(0.0f), -1);
    EXPECT_EQ(vel::ticket::HuecoDe(21.5f), -1);
}

// The rate is compared as a 32-bit float: a rate stored as 21.0000001 is 21.
TEST(TicketVat, TheComparisonIsInSinglePrecision) {
    EXPECT_EQ(vel::ticket::HuecoDe(static_cast<float>(21.0000001)), 0);
    EXPECT_EQ(vel::ticket::HuecoDe(static_cast<float>(7.00000001)), 1);
}

TEST(TicketVat, AFirstLineAt21LabelsTheFirstSlot) {
    HuecosIva h;
    MueveIva(h, 21.0f, 12.10, Movimiento::Anadir);
    EXPECT_EQ(h[0].tipo, QStringLiteral("21"));
    EXPECT_EQ(h[0].total, QStringLiteral("2.10"));
    EXPECT_TRUE(h[1].tipo.isEmpty());
    EXPECT_TRUE(h[2].tipo.isEmpty());
}

// A line at 7% lands in the second slot, which shows "10".
TEST(TicketVat, TheSecondSlotTestsSevenAndShowsTen) {
    HuecosIva h;
    MueveIva(h, 7.0f, 10.70, Movimiento::Anadir);
    EXPECT_EQ(h[1].tipo, QStringLiteral("10"));
    EXPECT_EQ(h[1].total, QStringLiteral("0.70"));
}

TEST(TicketVat, AnArticleAtTenPercentAddsNoVat) {
    HuecosIva h;
    MueveIva(h, 10.0f, 11.00, Movimiento::Anadir);
    for (const auto& hueco : h) {
        EXPECT_TRUE(hueco.tipo.isEmpty());
        EXPECT_TRUE(hueco.total.isEmpty());
    }
}

TEST(TicketVat, TheThirdSlotIsFour) {
    HuecosIva h;
    MueveIva(h, 4.0f, 10.40, Movimiento::Anadir);
    EXPECT_EQ(h[2].tipo, QStringLiteral("4"));
    EXPECT_EQ(h[2].total, QStringLiteral("0.40"));
}

// Taking a line out of an empty second slot labels it "7", not "10".
TEST(TicketVat, RemovingFromAnEmptySecondSlotLabelsItSeven) {
    HuecosIva h;
    MueveIva(h, 7.0f, 10.70, Movimiento::Quitar);
    EXPECT_EQ(h[1].tipo, QStringLiteral("7"));
    EXPECT_EQ(h[1].total, QStringLiteral("-0.70"));
}

// A label already set stays as it is when a line comes out. The amount taken
// out is the VAT computed again, not the "0.70" shown: with the rate in single
// precision it is 0.70000049, and the slot is left a shadow below zero.
TEST(TicketVat, RemovingKeepsALabelAlreadySet) {
    HuecosIva h;
    MueveIva(h, 7.0f, 10.70, Movimiento::Anadir);
    EXPECT_EQ(h[1].total, QStringLiteral("0.70"));
    MueveIva(h, 7.0f, 10.70, Movimiento::Quitar);
    EXPECT_EQ(h[1].tipo, QStringLiteral("10"));
    EXPECT_EQ(h[1].total, QStringLiteral("-0.00"));
}

// Each step is shown as "0.00" and read back from the label: the slot adds
// rounded amounts.
TEST(TicketVat, TheSlotTotalAddsItsShownAmounts) {
    HuecosIva h;
    for (int i = 0; i < 3; ++i) MueveIva(h, 21.0f, 1.00, Movimiento::Anadir);
    // 1.00 holds 0.1736 of VAT: shown 0.17, 0.34, 0.51, where the exact sum
    // of the three would show 0.52.
    EXPECT_EQ(h[0].total, QStringLiteral("0.51"));
}

TEST(TicketVat, VatContainedInAnAmount) {
    EXPECT_NEAR(vel::ticket::IvaContenido(121.0, 21.0f), 21.0, 1e-5);
    EXPECT_NEAR(vel::ticket::IvaContenido(104.0, 4.0f), 4.0, 1e-5);
    EXPECT_DOUBLE_EQ(vel::ticket::IvaContenido(50.0, 0.0f), 0.0);
}

} // namespace
