// Opening a line again with a double click, the "DSC" asymmetry, the row left
// open across a clearing, and a stored document replayed through the fields.
#include "line_area_fixture.h"

namespace veltest {
namespace {

using LineReopen = LineArea;

TEST_F(LineReopen, ADoubleClickOnTheHeadersDoesNothing) {
    typeLine("A", "UNO", "2", "10", "");
    doubleClickRow(0);
    EXPECT_EQ(w->FilaEditada, 0);
    EXPECT_EQ(line(), "ref= desc= uds= precio= sub=0.000 dto= total=0.000");
    EXPECT_EQ(foot(), "bruto=20.00 dto=0.00 neto=20.00 base=20.00 iva%=21 iva=4.20 rec%=0 rec=0.00 total=24.20");
}

TEST_F(LineReopen, AnOpenedLineLeavesTheTotalsUntilItIsAcceptedAgainInItsRow) {
    typeLine("A", "UNO", "2", "10", "10");
    typeLine("B", "DOS", "1", "5", "");
    EXPECT_EQ(foot(), "bruto=25.00 dto=2.00 neto=23.00 base=23.00 iva%=21 iva=4.83 rec%=0 rec=0.00 total=27.83");
    doubleClickRow(1);
    EXPECT_EQ(w->FilaEditada, 1);
    EXPECT_EQ(focused(), w->Textreferencia);
    EXPECT_EQ(line(), "ref=A desc=UNO uds=2 precio=10.000 sub=20.000 dto=10 total=18.000");
    EXPECT_EQ(foot(), "bruto=5.00 dto=0.00 neto=5.00 base=5.00 iva%=21 iva=1.05 rec%=0 rec=0.00 total=6.05");
    // The row keeps its old text while the line is open.
    EXPECT_EQ(row(1), "A|UNO|2|10.000|20.000|10|18.000");
    typeInto(w->Textcantidad, "3");
    enter();
    enter();
    enter();
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(row(1), "A|UNO|3|10.000|30.000|10|27.000");
    EXPECT_EQ(row(2), "B|DOS|1|5.000|5.000||5.000");
    EXPECT_EQ(foot(), "bruto=35.00 dto=3.00 neto=32.00 base=32.00 iva%=21 iva=6.72 rec%=0 rec=0.00 total=38.72");
    EXPECT_EQ(w->FilaEditada, 0);
}

TEST_F(LineReopen, TheNextAcceptedLineGoesToTheOpenRowWhateverItIs) {
    typeLine("A", "UNO", "2", "10", "");
    typeLine("B", "DOS", "1", "5", "");
    doubleClickRow(1);
    // Another line typed over the open one takes its row.
    typeLine("C", "TRES", "1", "7", "");
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(row(1), "C|UNO|1|7.000|7.000||7.000"); // the opened description stays
    EXPECT_EQ(foot(), "bruto=12.00 dto=0.00 neto=12.00 base=12.00 iva%=21 iva=2.52 rec%=0 rec=0.00 total=14.52");
}

TEST_F(LineReopen, OpeningADiscountLineTakesFromBrutoWhatItNeverAdded) {
    typeLine("X", "PUERTA", "1", "100", "");
    typeLine("DSC", "DESCUENTO", "1", "10", "");
    EXPECT_EQ(foot(), "bruto=100.00 dto=0.00 neto=100.00 base=100.00 iva%=21 iva=21.00 rec%=0 rec=0.00 total=111.00");
    doubleClickRow(2);
    // Its subtotal leaves bruto; DescuentoDocumento stays as it was.
    EXPECT_EQ(foot(), "bruto=90.00 dto=0.00 neto=90.00 base=90.00 iva%=21 iva=18.90 rec%=0 rec=0.00 total=98.90");
    EXPECT_DOUBLE_EQ(w->DescuentoDocumento, 10.0);
    // Accepted again, it doesn't put it back.
    vb::SetFocus(w->Textdescuento);
    settle();
    vb::SetFocus(w->Textreferencia);
    settle();
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(row(2), "DSC|DESCUENTO|1|10.000|10.000||10.000");
    EXPECT_EQ(foot(), "bruto=90.00 dto=0.00 neto=90.00 base=90.00 iva%=21 iva=18.90 rec%=0 rec=0.00 total=98.90");
}

TEST_F(LineReopen, ARowLeftOpenOutlivesTheClearingAndTheNextLineLooksForIt) {
    typeLine("A", "UNO", "1", "1", "");
    typeLine("B", "DOS", "1", "2", "");
    typeLine("C", "TRES", "1", "3", "");
    doubleClickRow(3);
    ASSERT_EQ(w->FilaEditada, 3);
    // The window clears the document (as Cancelar does); the open row stays.
    newDocument();
    EXPECT_EQ(w->FilaEditada, 3);
    EXPECT_EQ(rows(), 1);
    // The first line of the new document is sent to row 3, which the rebuilt
    // grid hasn't got: the grid's error ends the program.
    typeLine("D", "CUATRO", "1", "4", "");
    EXPECT_TRUE(ended);
    ASSERT_FALSE(boxes.shown.isEmpty());
    EXPECT_TRUE(boxes.shown.last().contains("Se ha producido el error")) << boxes.shown.last().toStdString();
    EXPECT_EQ(rows(), 1);
}

TEST_F(LineReopen, AStoredDocumentReplayedGivesWhatTypingItGave) {
    typeLine("TORN-6", "", "10", "1", "");
    typeLine("X1", "TACO", "3", "1.999", "10");
    typeLine("DSC", "DESCUENTO", "1", "5", "");
    const QString typedFoot = foot();
    EXPECT_EQ(typedFoot, "bruto=16.00 dto=0.60 neto=15.40 base=15.40 iva%=21 iva=3.23 rec%=0 rec=0.00 total=13.63");

    newDocument();
    // The stored values as the tables give them back: numbers as plain text.
    w->ReproducirLinea("TORN-6", "TORNILLO 6MM", "10", "1", "0");
    w->ReproducirLinea("X1", "TACO", "3", "1.999", "10");
    w->ReproducirLinea("DSC", "DESCUENTO", "1", "5", "0");
    EXPECT_EQ(foot(), typedFoot);
    EXPECT_EQ(row(1), "TORN-6|TORNILLO 6MM|10|1.000|10.000|0|10.000");
    EXPECT_EQ(row(2), "X1|TACO|3|1.999|5.997|10|5.397");
    EXPECT_EQ(row(3), "DSC|DESCUENTO|1|5.000|5.000|0|5.000");
    EXPECT_EQ(line(), "ref= desc= uds= precio= sub=0.000 dto= total=0.000");
}

TEST_F(LineReopen, AnInvoiceOfAnotherTagRoundsAStoredThreePlacePriceAgain) {
    w->SetReglas(vel::ReglasFactura("ORTA"));
    w->ReproducirLinea("X1", "TACO", "3", "1.999", "0");
    EXPECT_EQ(row(1), "X1|TACO|3|2.00|6.00|0|6.00");
    EXPECT_EQ(foot(), "bruto=6.00 dto=0.00 neto=6.00 base=6.00 iva%=21 iva=1.26 rec%=0 rec=0.00 total=7.26");
}

} // namespace
} // namespace veltest
