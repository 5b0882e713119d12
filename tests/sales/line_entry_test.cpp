// Entering lines: the keys each field takes, Enter and the focus, the product
// found by reference or barcode, and the grid.
#include "line_area_fixture.h"

#include <QScrollBar>

namespace veltest {
namespace {

using LineEntry = LineArea;

TEST_F(LineEntry, AProductFoundByReferenceFillsDescriptionAndPriceWithoutVat) {
    typeInto(w->Textreferencia, "TORN-6");
    enter();
    // 1.21 with 21 percent of VAT in it: 1.000 without.
    EXPECT_EQ(line(), "ref=TORN-6 desc=TORNILLO 6MM uds= precio=1.000 sub= dto= total=");
    EXPECT_EQ(focused(), w->Textcantidad);
    type("10");
    enter();
    enter();
    enter();
    EXPECT_EQ(row(1), "TORN-6|TORNILLO 6MM|10|1.000|10.000||10.000");
    EXPECT_EQ(foot(), "bruto=10.00 dto=0.00 neto=10.00 base=10.00 iva%=21 iva=2.10 rec%=0 rec=0.00 total=12.10");
}

TEST_F(LineEntry, ABarcodeIsAcceptedAndStaysTheLinesReference) {
    typeLine("8400000000024", "", "1", "", "");
    EXPECT_EQ(row(1), "8400000000024|MARTILLO DE CARPINTERO|1|10.000|10.000||10.000");
    typeLine("8412345678901", "", "2", "", "");
    EXPECT_EQ(row(2), "8412345678901|TORNILLO 6MM|2|1.000|2.000||2.000");
}

TEST_F(LineEntry, AnUnknownReferenceGoesToTheDescriptionAndThePriceMustBeTyped) {
    typeInto(w->Textreferencia, "NOEXISTE");
    enter();
    EXPECT_EQ(focused(), w->Textdescripcion);
    EXPECT_EQ(line(), "ref=NOEXISTE desc= uds= precio= sub= dto= total=");
}

TEST_F(LineEntry, TheProductsPriceIsFreedOfTheDocumentsVatNotItsOwn) {
    // The tile's VAT type is 2; the document's rate is what counts.
    typeInto(w->Textiva, "10");
    typeInto(w->Textreferencia, "AZULEJO");
    enter();
    EXPECT_EQ(w->Textprecio->text(), "110.000");
    // With VAT 0 the division is by 1: the retail price goes in whole. The
    // description is cut to the field's 26 characters.
    newDocument();
    typeInto(w->Textiva, "0");
    typeInto(w->Textreferencia, "AZULEJO");
    enter();
    EXPECT_EQ(line(), "ref=AZULEJO desc=AZULEJO BLANCO 20X20 BRILL uds= precio=121.000 sub= dto= total=");
}

TEST_F(LineEntry, AnEmptyVatFieldStopsTheSearchWithTheRuntimesError) {
    w->Textiva->setText("");
    typeInto(w->Textreferencia, "TORN-6");
    enter();
    EXPECT_TRUE(ended);
    ASSERT_FALSE(boxes.shown.isEmpty());
    EXPECT_TRUE(boxes.shown.last().contains("'13'")) << boxes.shown.last().toStdString();
}

TEST_F(LineEntry, RetypingAReferenceOpensItsLineAndADifferentCaseMakesASecondLine) {
    typeLine("TORN-6", "", "10", "", "");
    typeInto(w->Textreferencia, "TORN-6");
    enter();
    // The line is open again: its amounts are out of the totals.
    EXPECT_EQ(w->FilaEditada, 1);
    EXPECT_EQ(focused(), w->Textcantidad);
    EXPECT_EQ(line(), "ref=TORN-6 desc=TORNILLO 6MM uds=10 precio=1.000 sub=10.000 dto= total=10.000");
    EXPECT_EQ(foot(), "bruto=0.00 dto=0.00 neto=0.00 base=0.00 iva%=21 iva=0.00 rec%=0 rec=0.00 total=0.00");
    w->Textcantidad->selectAll();
    type("12");
    enter();
    enter();
    enter();
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(row(1), "TORN-6|TORNILLO 6MM|12|1.000|12.000||12.000");
    EXPECT_EQ(foot(), "bruto=12.00 dto=0.00 neto=12.00 base=12.00 iva%=21 iva=2.52 rec%=0 rec=0.00 total=14.52");
    // The grid's comparison counts case; the catalogue's doesn't.
    typeLine("torn-6", "", "1", "", "");
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(row(2), "torn-6|TORNILLO 6MM|1|1.000|1.000||1.000");
}

TEST_F(LineEntry, AnOpenedLineKeepsItsOwnPriceAndDescription) {
    typeLine("TORN-6", "", "4", "0.9", "");
    EXPECT_EQ(row(1), "TORN-6|TORNILLO 6MM|4|0.900|3.600||3.600");
    typeInto(w->Textreferencia, "TORN-6");
    enter();
    EXPECT_EQ(line(), "ref=TORN-6 desc=TORNILLO 6MM uds=4 precio=0.900 sub=3.600 dto= total=3.600");
}

TEST_F(LineEntry, EachFieldTakesOnlyItsKeysAndItsLength) {
    typeInto(w->Textreferencia, "abc,.-/ 1234567890");
    EXPECT_EQ(w->Textreferencia->text(), "abc,.-/ 12345");
    typeInto(w->Textdescripcion, "Descripción muy larga de una línea");
    EXPECT_EQ(w->Textdescripcion->text(), "Descripción muy larga de u");
    typeInto(w->Textcantidad, "1a2,3.-45678");
    EXPECT_EQ(w->Textcantidad->text(), "123456");
    typeInto(w->Textprecio, "1a2,5.-7x");
    // The comma is dropped: 12,5 can't even be typed here.
    EXPECT_EQ(w->Textprecio->text(), "125.-7");
    typeInto(w->Textiva, "2x1.7");
    EXPECT_EQ(w->Textiva->text(), "21");
    typeInto(w->Textrecargo, "5.2a01");
    EXPECT_EQ(w->Textrecargo->text(), "5.20");
    typeInto(w->Textdescuento, "1a55");
    EXPECT_EQ(w->Textdescuento->text(), "15");
}

TEST_F(LineEntry, EnterMovesOnAndAnEmptyReferenceAndDescriptionGoToAceptar) {
    typeInto(w->Textreferencia, "");
    enter();
    EXPECT_EQ(focused(), w->Textdescripcion);
    enter();
    EXPECT_EQ(focused(), counter->Commandaceptar);
    EXPECT_EQ(rows(), 1);
    // With a description the entry goes on.
    typeInto(w->Textdescripcion, "PORTES");
    enter();
    EXPECT_EQ(focused(), w->Textcantidad);
    enter();
    EXPECT_EQ(focused(), w->Textprecio);
    typeInto(w->Textiva, "");
    enter();
    EXPECT_EQ(focused(), w->Textrecargo);
}

TEST_F(LineEntry, GettingTheFocusSelectsAllAndHidesTheCalendarButPriceAndDiscountLeaveIt) {
    w->Textdescripcion->setText("TORNILLO");
    w->Textprecio->setText("12.5");
    const int before = counter->calendarHidden;
    vb::SetFocus(w->Textdescripcion);
    settle();
    EXPECT_EQ(w->Textdescripcion->selectedText(), "TORNILLO");
    EXPECT_EQ(counter->calendarHidden, before + 1);
    vb::SetFocus(w->Textprecio);
    settle();
    EXPECT_EQ(w->Textprecio->selectedText(), "12.5");
    EXPECT_EQ(counter->calendarHidden, before + 1);
    for (QLineEdit* f : {w->Textcantidad, w->Textiva, w->Textrecargo, w->Textreferencia}) {
        vb::SetFocus(f);
        settle();
    }
    EXPECT_EQ(counter->calendarHidden, before + 5);
    vb::SetFocus(w->Textdescuento);
    settle();
    EXPECT_EQ(counter->calendarHidden, before + 5);
}

TEST_F(LineEntry, OnlyTheReferenceSearchActs) {
    w->Textreferencia->setText("TORN-6");
    w->BuscarProducto("DESCRIPCION");
    w->BuscarProducto("referencia");
    EXPECT_EQ(w->Textdescripcion->text(), "");
    w->BuscarProducto("REFERENCIA");
    EXPECT_EQ(w->Textdescripcion->text(), "TORNILLO 6MM");
}

TEST_F(LineEntry, TheGridHasItsSevenHeadersAndWidthsInCourier) {
    const char* headers[] = {"Referencia", "Descripción", "Unidades", "Precio", "Subtotal", "Descuento", "Total"};
    const long widths[] = {1500, 4400, 1000, 1150, 1150, 400, 1300};
    ASSERT_EQ(w->Gridfacturas->Cols(), 7);
    ASSERT_EQ(rows(), 1);
    for (int c = 0; c < 7; ++c) {
        EXPECT_EQ(w->Gridfacturas->TextMatrix(0, c), QString::fromUtf8(headers[c]));
        // Widths are kept in whole pixels, as the grid keeps them.
        EXPECT_NEAR(w->Gridfacturas->ColWidth(c), widths[c], 15) << c;
    }
    EXPECT_EQ(w->Gridfacturas->font().family(), "Courier New");
    typeLine("X", "UNO", "1", "1", "");
    // Rebuilt for the next document: the headers again and no line.
    newDocument();
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(row(0), "Referencia|Descripción|Unidades|Precio|Subtotal|Descuento|Total");
}

TEST_F(LineEntry, TheGridFollowsTheLastLine) {
    for (int i = 1; i <= 30; ++i) typeLine(QString("R%1").arg(i), "LINEA", "1", "1", "");
    QTableWidget* g = w->Gridfacturas;
    const QRect last = g->visualRect(g->model()->index(30, 0));
    EXPECT_TRUE(g->viewport()->rect().intersects(last));
    EXPECT_GT(g->verticalScrollBar()->value(), 0);
}

} // namespace
} // namespace veltest
