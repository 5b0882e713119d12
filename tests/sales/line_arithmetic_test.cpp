// The arithmetic of a document's lines and foot, typed key by key: every caption
// of the line and the foot, and the grid cells, after each step.
#include "line_area_fixture.h"

namespace veltest {
namespace {

using LineArithmetic = LineArea;

TEST_F(LineArithmetic, ANewDocumentStartsAtTheCustomersRatesOrTwentyOne) {
    // Labelneto and Labelbase have no change handler: cleared, they stay empty.
    EXPECT_EQ(foot(), "bruto=0.00 dto=0.00 neto= base= iva%=21 iva=0.00 rec%=0 rec=0.00 total=0.00");
    counter->Labelivaiva->setText("10");
    counter->Labelivare->setText("1.4");
    newDocument();
    EXPECT_EQ(foot(), "bruto=0.00 dto=0.00 neto= base= iva%=10 iva=0.00 rec%=1.4 rec=0.00 total=0.00");
}

TEST_F(LineArithmetic, ThreeAt1999WithTenPercentOffInADeliveryNote) {
    typeInto(w->Textreferencia, "X1");
    enter();
    ASSERT_EQ(focused(), w->Textdescripcion); // not a product: a free line
    type("TACO");
    enter();
    type("3");
    enter();
    type("1.999");
    enter();
    EXPECT_EQ(line(), "ref=X1 desc=TACO uds=3 precio=1.999 sub=5.997 dto= total=");
    type("10");
    enter();
    // Bruto and discounts are rounded as they are written: 6.00 and 0.60.
    EXPECT_EQ(row(1), "X1|TACO|3|1.999|5.997|10|5.397");
    EXPECT_EQ(foot(), "bruto=6.00 dto=0.60 neto=5.40 base=5.40 iva%=21 iva=1.13 rec%=0 rec=0.00 total=6.53");
    EXPECT_EQ(line(), "ref= desc= uds= precio= sub=0.000 dto= total=0.000");
    EXPECT_EQ(focused(), w->Textreferencia);
    EXPECT_EQ(rows(), 2);
}

TEST_F(LineArithmetic, TheSameLineInAnInvoiceOfAnotherTagMultipliesThePriceAsTyped) {
    w->SetReglas(vel::ReglasFactura("ORTA"));
    typeLine("X1", "TACO", "3", "1.999", "");
    EXPECT_EQ(row(1), "X1|TACO|3|2.00|6.00||6.00");
    newDocument();
    typeInto(w->Textreferencia, "X1");
    enter();
    type("TACO");
    enter();
    type("3");
    enter();
    type("1.999");
    enter();
    // The subtotal of the unrounded price, then the price rounded to two places.
    EXPECT_EQ(line(), "ref=X1 desc=TACO uds=3 precio=2.00 sub=6.00 dto= total=0.00");
    type("10");
    enter();
    EXPECT_EQ(row(1), "X1|TACO|3|2.00|6.00|10|5.40");
    EXPECT_EQ(foot(), "bruto=6.00 dto=0.60 neto=5.40 base=5.40 iva%=21 iva=1.13 rec%=0 rec=0.00 total=6.53");
}

TEST_F(LineArithmetic, TheTwoOrdersOfThePriceGiveDifferentSubtotals) {
    // Delivery note: 1.9996 becomes 2.000 first, so 3 units make 6.000.
    typeLine("X1", "TACO", "3", "1.9996", "");
    EXPECT_EQ(row(1), "X1|TACO|3|2.000|6.000||6.000");
    // Invoice of FERROBANDA: three places too, but from the price as typed.
    newDocument();
    w->SetReglas(vel::ReglasFactura("FERROBANDA"));
    typeLine("X1", "TACO", "3", "1.9996", "");
    EXPECT_EQ(row(1), "X1|TACO|3|2.000|5.999||5.999");
    EXPECT_EQ(foot(), "bruto=6.00 dto=0.00 neto=6.00 base=6.00 iva%=21 iva=1.26 rec%=0 rec=0.00 total=7.26");
}

TEST_F(LineArithmetic, BrutoRoundedAtEveryLineLeavesTheLinesAndTheNetoCentsApart) {
    typeLine("A", "UNO", "1", "0.333", "");
    EXPECT_EQ(foot(), "bruto=0.33 dto=0.00 neto=0.33 base=0.33 iva%=21 iva=0.07 rec%=0 rec=0.00 total=0.40");
    typeLine("B", "DOS", "1", "0.333", "");
    EXPECT_EQ(foot(), "bruto=0.66 dto=0.00 neto=0.66 base=0.66 iva%=21 iva=0.14 rec%=0 rec=0.00 total=0.80");
    typeLine("C", "TRES", "1", "0.333", "");
    // The three lines add up to 0.999; the neto is 0.99.
    EXPECT_EQ(row(1), "A|UNO|1|0.333|0.333||0.333");
    EXPECT_EQ(row(2), "B|DOS|1|0.333|0.333||0.333");
    EXPECT_EQ(row(3), "C|TRES|1|0.333|0.333||0.333");
    EXPECT_EQ(foot(), "bruto=0.99 dto=0.00 neto=0.99 base=0.99 iva%=21 iva=0.21 rec%=0 rec=0.00 total=1.20");
}

TEST_F(LineArithmetic, ADiscountLineOfTenOnAHundredAtTwentyOneGives111) {
    typeLine("X", "PUERTA", "1", "100", "");
    EXPECT_EQ(foot(), "bruto=100.00 dto=0.00 neto=100.00 base=100.00 iva%=21 iva=21.00 rec%=0 rec=0.00 total=121.00");
    typeLine("DSC", "DESCUENTO", "1", "10", "");
    // The "DSC" line adds nothing to bruto, discounts or neto; it comes off after VAT.
    EXPECT_EQ(row(2), "DSC|DESCUENTO|1|10.000|10.000||10.000");
    EXPECT_EQ(foot(), "bruto=100.00 dto=0.00 neto=100.00 base=100.00 iva%=21 iva=21.00 rec%=0 rec=0.00 total=111.00");
    EXPECT_DOUBLE_EQ(w->DescuentoDocumento, 10.0);
}

TEST_F(LineArithmetic, OfTwoDiscountLinesOnlyTheLastCountsInAnyCase) {
    typeLine("X", "PUERTA", "1", "100", "");
    typeLine("DSC", "DESCUENTO", "1", "10", "");
    typeLine("dsc", "OTRO DESCUENTO", "1", "5", "50");
    // 5 less half of it: the line's total is what is taken off.
    EXPECT_EQ(row(3), "dsc|OTRO DESCUENTO|1|5.000|5.000|50|2.500");
    EXPECT_DOUBLE_EQ(w->DescuentoDocumento, 2.5);
    EXPECT_EQ(foot(), "bruto=100.00 dto=0.00 neto=100.00 base=100.00 iva%=21 iva=21.00 rec%=0 rec=0.00 total=118.50");
}

TEST_F(LineArithmetic, ANegativePriceLowersEveryTotal) {
    typeLine("X", "PUERTA", "1", "25", "");
    EXPECT_EQ(foot(), "bruto=25.00 dto=0.00 neto=25.00 base=25.00 iva%=21 iva=5.25 rec%=0 rec=0.00 total=30.25");
    typeLine("ABONO", "DEVOLUCION", "2", "-5", "10");
    EXPECT_EQ(row(2), "ABONO|DEVOLUCION|2|-5.000|-10.000|10|-9.000");
    EXPECT_EQ(foot(), "bruto=15.00 dto=-1.00 neto=16.00 base=16.00 iva%=21 iva=3.36 rec%=0 rec=0.00 total=19.36");
}

TEST_F(LineArithmetic, LeavingAnEmptyDiscountAddsARowOfZeros) {
    typeInto(w->Textdescuento, "");
    w->Textreferencia->setFocus(Qt::MouseFocusReason); // any departure accepts the line
    settle();
    EXPECT_EQ(rows(), 2);
    // The subtotal label was never written in this window: its cell is empty.
    EXPECT_EQ(row(1), "||||||0.000");
    EXPECT_EQ(foot(), "bruto=0.00 dto=0.00 neto=0.00 base=0.00 iva%=21 iva=0.00 rec%=0 rec=0.00 total=0.00");
    typeInto(w->Textprecio, "");
    typeInto(w->Textdescuento, "");
    w->Textreferencia->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_EQ(row(2), "||||0.000||0.000");
    EXPECT_EQ(rows(), 3);
}

TEST_F(LineArithmetic, TextInTheNumberFieldsReadsAsItsLeadingNumber) {
    // Typed by code, as a pasted text would arrive: Val reads what leads.
    typeInto(w->Textreferencia, "X");
    w->Textcantidad->setText("2uds");
    w->Textprecio->setText("3abc");
    w->Textprecio->setFocus(Qt::MouseFocusReason);
    settle();
    w->Textdescuento->setFocus(Qt::MouseFocusReason);
    settle();
    // "3abc" is no number: Format leaves it as it stands, and Val reads 3.
    EXPECT_EQ(line(), "ref=X desc= uds=2uds precio=3abc sub=6.000 dto= total=");
    w->Textreferencia->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_EQ(row(1), "X||2uds|3abc|6.000||6.000");
    EXPECT_EQ(foot(), "bruto=6.00 dto=0.00 neto=6.00 base=6.00 iva%=21 iva=1.26 rec%=0 rec=0.00 total=7.26");
}

TEST_F(LineArithmetic, VatAndSurchargeOfTheDocumentRecomputeTheFootWhenLeft) {
    typeLine("X", "PUERTA", "2", "50", "");
    typeInto(w->Textiva, "10");
    typeInto(w->Textrecargo, "1.4");
    w->Textreferencia->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_EQ(foot(), "bruto=100.00 dto=0.00 neto=100.00 base=100.00 iva%=10 iva=10.00 rec%=1.4 rec=1.40 total=111.40");
    // The next line: the surcharge is first taken on the neto before it, then
    // on the new neto when the foot is recomputed.
    typeLine("Y", "MARCO", "1", "10", "");
    EXPECT_EQ(foot(), "bruto=110.00 dto=0.00 neto=110.00 base=110.00 iva%=10 iva=11.00 rec%=1.4 rec=1.54 total=122.54");
}

TEST_F(LineArithmetic, TheAmountLabelsReRoundWhateverIsWrittenInThem) {
    w->Labelsubtotal->SetCaption("1.23456");
    w->Labeltotal->SetCaption("abc");
    w->Labelbruto->SetCaption("12.3456");
    w->Labeldescuento->SetCaption("-0.005");
    w->Labelimporteiva->SetCaption("7");
    w->Labelimporterecargo->SetCaption("");
    w->Labeltotalfactura->SetCaption("1e3");
    w->Labelneto->SetCaption("1.23456"); // no handler
    EXPECT_EQ(w->Labelsubtotal->text(), "1.235");
    EXPECT_EQ(w->Labeltotal->text(), "0.000");
    EXPECT_EQ(w->Labelbruto->text(), "12.35");
    EXPECT_EQ(w->Labeldescuento->text(), "-0.01");
    EXPECT_EQ(w->Labelimporteiva->text(), "7.00");
    EXPECT_EQ(w->Labelimporterecargo->text(), "0.00");
    EXPECT_EQ(w->Labeltotalfactura->text(), "1000.00");
    EXPECT_EQ(w->Labelneto->text(), "1.23456");
    // In an invoice of another tag the line labels keep two places.
    w->SetReglas(vel::ReglasFactura("ORTA"));
    w->Labelsubtotal->SetCaption("1.23456");
    EXPECT_EQ(w->Labelsubtotal->text(), "1.23");
}

} // namespace
} // namespace veltest
