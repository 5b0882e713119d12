// The amounts of a document line, computed the way the document windows do it:
// text in labels read with Val, plain text of the result written back, and the
// label's change handler rounding it with Format. These check that the runtime
// pieces give the figures the shop sees.
#include "support/print_to.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

using vb::CStr;
using vb::Format;
using vb::Val;

namespace {
// What a total label holds after its change handler has run.
QString label(const QString& caption, const char* mask) { return Format(Val(caption), mask); }
} // namespace

TEST(DocumentAmounts, DeliveryNoteLineOf3At1999With10PercentOff) {
    const QString precio = Format(QStringLiteral("1.999"), "0.000");
    const QString cantidad = QStringLiteral("3");
    const QString descuento = QStringLiteral("10");
    const QString subtotal = label(CStr(Val(precio) * Val(cantidad)), "0.000");
    const QString total = label(CStr(Val(subtotal) - Val(descuento) / 100 * Val(subtotal)), "0.000");
    const QString bruto = label(CStr(Val(subtotal) + Val(QString())), "0.00");
    const QString dto = label(CStr(Val(QString()) + Val(descuento) / 100 * Val(subtotal)), "0.00");
    const QString neto = Format(Val(bruto) - Val(dto), "0.00");
    EXPECT_EQ(subtotal, QStringLiteral("5.997"));
    EXPECT_EQ(total, QStringLiteral("5.397"));
    EXPECT_EQ(bruto, QStringLiteral("6.00"));
    EXPECT_EQ(dto, QStringLiteral("0.60"));
    EXPECT_EQ(neto, QStringLiteral("5.40"));
}

TEST(DocumentAmounts, TheSameLineInAnInvoiceOutsideFerrobanda) {
    // The subtotal is taken from the price as typed, then the price is rounded.
    const QString typed = QStringLiteral("1.999");
    const QString subtotal = label(CStr(Val(typed) * Val("3")), "0.00");
    const QString precio = Format(typed, "0.00");
    const QString total = label(CStr(Val(subtotal) - Val("10") / 100 * Val(subtotal)), "0.00");
    EXPECT_EQ(subtotal, QStringLiteral("6.00"));
    EXPECT_EQ(precio, QStringLiteral("2.00"));
    EXPECT_EQ(total, QStringLiteral("5.40"));
}

TEST(DocumentAmounts, ADiscountLineOf10On100At21Percent) {
    const QString neto = QStringLiteral("100.00");
    const double descuentoDocumento = vb::CDbl(label(CStr(10), "0.000"));
    const QString iva = Format(Val("21") / 100 * Val(neto), "0.00");
    const QString totalFactura = Format(Val(iva) + Val(neto) + Val("0.00") - descuentoDocumento, "0.00");
    EXPECT_EQ(iva, QStringLiteral("21.00"));
    EXPECT_EQ(totalFactura, QStringLiteral("111.00"));
}

TEST(DocumentAmounts, ANegativePriceLowersTheTotals) {
    const QString subtotal = label(CStr(Val(Format(QStringLiteral("-5"), "0.000")) * Val("2")), "0.000");
    EXPECT_EQ(subtotal, QStringLiteral("-10.000"));
    EXPECT_EQ(label(CStr(Val("25.00") + Val(subtotal)), "0.00"), QStringLiteral("15.00"));
}

TEST(DocumentAmounts, AProductPriceWithoutVat) {
    // The catalogue price holds VAT; the line takes it out with the document's rate.
    EXPECT_EQ(Format(121 / (vb::CDbl("21") / 100 + 1), "0.000"), QStringLiteral("100.000"));
    EXPECT_EQ(Format(12.1 / (vb::CDbl("0") / 100 + 1), "0.000"), QStringLiteral("12.100")); // VAT 0: divided by 1
}

TEST(DocumentAmounts, AnEmptyLineIsARowOfZeros) {
    EXPECT_EQ(label(CStr(Val("") * Val("")), "0.000"), QStringLiteral("0.000"));
    EXPECT_EQ(label(CStr(Val("") + Val("")), "0.00"), QStringLiteral("0.00"));
}

TEST(DocumentAmounts, PrintedAmountsAreRoundedToTwoPlaces) {
    EXPECT_EQ(Format(vb::Round(Val("111.004"), 2), "0.00"), QStringLiteral("111.00"));
    EXPECT_EQ(Format(vb::Round(Val("5.397"), 2), "0.00"), QStringLiteral("5.40"));
}
