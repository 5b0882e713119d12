// A delivery note on paper: its header, its lines of seven pieces, the pages
// it counts, the continuation between pages and its foot.
#include "print_fixture.h"
#include "runtime/errors.h"
#include "runtime/vb.h"
#include <QFile>

namespace vel::testing {
namespace {

using print_layout::LineaAlbaran;

const QString Continuation = vb::Space(60) + "> > > CONTINUA > > >";

class DeliveryNotePrint : public PrintTest {
protected:
    std::shared_ptr<Rejilla> rejilla = std::make_shared<Rejilla>();
    print_layout::Contadores contadores;

    void print(const print_layout::Documento& d) {
        print_layout::cabeceraalbaran(printer, d);
        print_layout::detallealbaran(printer, d, contadores);
        print_layout::piealbaran(printer, d);
        printer.EndDoc();
    }
    // Prints a note of n lines; answers its printed lines.
    QStringList printLines(int n, const QString& tag = "FERROBANDA") {
        print(NotaDeEntrega(rejilla, n, tag));
        return lines();
    }
    static int count(const QStringList& l, const QString& text) { return int(l.count(text)); }
    // Empty lines between the last printed grid line and the foot's first rule.
    static int filling(const QStringList& l) {
        const int foot = int(l.lastIndexOf(print_layout::RayaSubrayado, l.size() - 1)) - 3; // foot: rule, title, values, rule
        int n = 0;
        for (int i = foot - 1; i >= 0 && l[i].isEmpty(); --i) ++n;
        return n;
    }
    static QString row(int i) { return LineaAlbaran({QStringLiteral("TORN%1").arg(i, 3, 10, QLatin1Char('0')),
                                                      "TORNILLO 4X40", "2", "1.50", "3.00", "0", "3.00"}); }
};

// The whole of a three-line note under FERROBANDA on 21/11/2026, run by run.
TEST_F(DeliveryNotePrint, AThreeLineNoteComesOutExactlyAsDesigned) {
    print(NotaDeEntrega(rejilla, 3));
    QFile golden(QStringLiteral(VEL_TEST_DATA "/sales/data/nota_tres_lineas.txt"));
    ASSERT_TRUE(golden.open(QIODevice::ReadOnly));
    EXPECT_EQ(recorder.transcript(), QString::fromUtf8(golden.readAll()));
}

TEST_F(DeliveryNotePrint, TheHeaderNamesTheDocumentsKindAndTheTerm) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.ComboProforma = "Presupuesto";
    d.Labelformapagofacturavencimientos = "1/0,0,0,0,0,0,0,0,0,0,0,0";
    print(d);
    EXPECT_TRUE(lines().contains(
        " Nº Presupuesto: 00027/2026  Fecha Presupuesto: 21/11/2026      Forma de Pago: CONTADO"));
    EXPECT_TRUE(lines().contains("REFERENCIA    DESCRIPCION                 UNID. IMPORTE SUBTOTAL  DTO.  TOTAL  "));
}

TEST_F(DeliveryNotePrint, TheTermIsAWordForFourLabelsAndTheWholeLabelElse) {
    using print_layout::TerminoPago;
    EXPECT_EQ(TerminoPago("1/0,0,0,0,0,0,0,0,0,0,0,0"), "CONTADO");
    EXPECT_EQ(TerminoPago("1/30,0,0,0,0,0,0,0,0,0,0,0"), "30 Días");
    EXPECT_EQ(TerminoPago("1/60,0,0,0,0,0,0,0,0,0,0,0"), "60 Días");
    EXPECT_EQ(TerminoPago("1/90,0,0,0,0,0,0,0,0,0,0,0"), "90 Días");
    EXPECT_EQ(TerminoPago("3/30,60,90,0,0,0,0,0,0,0,0,0"), "3/30,60,90,0,0,0,0,0,0,0,0,0");
    EXPECT_EQ(TerminoPago("1/300,0"), "30 Días"); // only the first four characters count
    EXPECT_EQ(TerminoPago("Días vencimientos"), "Días vencimientos");
}

// The delivery note prints the discount as it stands, 0 included.
TEST_F(DeliveryNotePrint, ADiscountOfZeroPrintsTheFigure) {
    EXPECT_EQ(LineaAlbaran({"R", "D", "1", "1.00", "1.00", "0", "1.00"}).mid(68, 3), " 0 ");
}

TEST_F(DeliveryNotePrint, AnAmountOfTenCharactersInAPrintedNote) {
    auto d = NotaDeEntrega(rejilla, 1);
    rejilla->filas[0] = {"ROLLO", "CABLE", "0.5", "1234567.50", "617283.75", "0", "617283.75"};
    print(d);
    EXPECT_TRUE(lines().contains("ROLLO         CABLE                         0.5 1234567.50617283.75  0 617283.75"));
}

TEST_F(DeliveryNotePrint, PagesAreCountedFromTheGridsRows) {
    using print_layout::PaginasAlbaran;
    EXPECT_EQ(PaginasAlbaran(1), 1);
    EXPECT_EQ(PaginasAlbaran(40), 1);
    EXPECT_EQ(PaginasAlbaran(41), 2);
    EXPECT_EQ(PaginasAlbaran(79), 3);
    EXPECT_EQ(PaginasAlbaran(80), 3);
    EXPECT_EQ(PaginasAlbaran(81), 3);
    EXPECT_EQ(PaginasAlbaran(39 * 32766 + 1), 32767);
}

TEST_F(DeliveryNotePrint, ThirtyEightLinesFillOnePageWithTheFootBelowThem) {
    const QStringList l = printLines(38);
    EXPECT_EQ(contadores.paginas, 1);
    EXPECT_EQ(contadores.lineas, 39);
    EXPECT_EQ(count(l, Continuation), 0);
    EXPECT_EQ(filling(l), 0);
    EXPECT_EQ(l[l.indexOf(row(38)) + 1], print_layout::RayaSubrayado);
    EXPECT_EQ(recorder.last().pages(), 1);
}

TEST_F(DeliveryNotePrint, FewerLinesAreFilledToLine38) {
    const QStringList l = printLines(10);
    EXPECT_EQ(filling(l), 27); // lines 11 to 37 empty, lineas ends at 38
    EXPECT_EQ(contadores.lineas, 38);
}

// A single-page note never continues, even when its lines reach 39.
TEST_F(DeliveryNotePrint, ThirtyNineLinesStayOnOnePageWithoutContinuation) {
    const QStringList l = printLines(39);
    EXPECT_EQ(contadores.paginas, 1);
    EXPECT_EQ(count(l, Continuation), 0);
    EXPECT_EQ(count(l, " Nº Albarán: 00027/2026  Fecha Albarán: 21/11/2026      Forma de Pago: 30 Días"), 1);
    EXPECT_EQ(l[l.indexOf(row(39)) + 1], print_layout::RayaSubrayado);
}

// The continuation is the mark, four line feeds and the header again, with no
// new page asked of the printer.
TEST_F(DeliveryNotePrint, FortyLinesContinueAfterLine39WithoutANewPage) {
    const QStringList l = printLines(40);
    EXPECT_EQ(contadores.paginas, 2);
    const int mark = int(l.indexOf(Continuation));
    ASSERT_GT(mark, 0);
    EXPECT_EQ(l[mark - 1], row(39));
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(l[mark + i], "") << i;
    EXPECT_EQ(l[mark + 5], vb::Space(20) + "Ins. en el Reg. Mercantil de Valdeferro, Tomo 1000, Folio 100, Hoja 10000");
    EXPECT_EQ(count(l, Continuation), 1);
    EXPECT_EQ(count(l, "                                        FERRETERIA O CRUCEIRO"), 2);
    EXPECT_EQ(l[l.indexOf(print_layout::RayaSubrayado, mark) + 3], row(40));
    EXPECT_EQ(filling(l), 36);
    for (const auto& e : recorder.last().events)
        if (e.kind == vb::PrintEvent::Kind::NewPage) {
            EXPECT_TRUE(e.automatic);
        }
}

TEST_F(DeliveryNotePrint, FortyOneLinesPutTwoOnTheSecondPage) {
    const QStringList l = printLines(41);
    EXPECT_EQ(contadores.paginas, 2);
    EXPECT_EQ(count(l, Continuation), 1);
    EXPECT_EQ(l[l.indexOf(row(41)) - 1], row(40));
    EXPECT_EQ(filling(l), 35);
    EXPECT_EQ(contadores.lineas, 38);
}

TEST_F(DeliveryNotePrint, SeventyNineLinesMakeThreePagesOfHeaders) {
    const QStringList l = printLines(79);
    EXPECT_EQ(contadores.paginas, 3);
    EXPECT_EQ(count(l, Continuation), 2);
    EXPECT_EQ(l[l.indexOf(Continuation) - 1], row(39));
    EXPECT_EQ(l[l.lastIndexOf(Continuation) - 1], row(78));
    EXPECT_EQ(count(l, " Nº Albarán: 00027/2026  Fecha Albarán: 21/11/2026      Forma de Pago: 30 Días"), 3);
    EXPECT_EQ(filling(l), 36);
}

// The test knows no last page: a note ending on line 39 of a page still
// continues, onto a header with no lines under it.
TEST_F(DeliveryNotePrint, SeventyEightLinesEndOnLine39AndStillContinue) {
    const QStringList l = printLines(78);
    EXPECT_EQ(contadores.paginas, 3);
    EXPECT_EQ(count(l, Continuation), 2);
    EXPECT_EQ(l[l.lastIndexOf(Continuation) - 1], row(78));
    EXPECT_EQ(count(l, "REFERENCIA    DESCRIPCION                 UNID. IMPORTE SUBTOTAL  DTO.  TOTAL  "), 3);
    EXPECT_EQ(filling(l), 37);
}

TEST_F(DeliveryNotePrint, TheFootShowsEveryColumnZerosIncluded) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Labelbruto = "3";
    d.Labeldescuento = "";
    d.Labelneto = "3";
    d.Labelbase = "3";
    d.Textiva = "21";
    d.Labelimporteiva = ".63";
    d.Textrecargo = "0";
    d.Labelimporterecargo = "0";
    d.Labeltotalfactura = "3.625";
    const QString values = print_layout::LineaTotalesAlbaran(d);
    EXPECT_EQ(vb::RTrim(values), "    3.00      0.00    3.00      3.00      21 0.63       0    0.00      3.62");
    EXPECT_EQ(values.size(), 71 + 4 + 80);
    print(d);
    const QStringList l = lines();
    const int title = int(l.indexOf("Importe Bruto Dtos.   Imp. Neto Base    %IVA Cuota IVA %Rec Cuota Rec. Total"));
    ASSERT_GT(title, 0);
    EXPECT_EQ(l[title - 1], print_layout::RayaSubrayado);
    EXPECT_EQ(l[title + 1], values);
    EXPECT_EQ(l[title + 2], print_layout::RayaSubrayado);
    EXPECT_EQ(l.last(), "");
}

// The cutting keeps the stops: a figure wider than its column loses its tail.
TEST_F(DeliveryNotePrint, AWideBrutoIsCutAtTheDiscountsStop) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Labelbruto = "123456789.5";
    const QString values = print_layout::LineaTotalesAlbaran(d);
    EXPECT_TRUE(values.startsWith("    123456789.0.00    3.00")) << qPrintable(values);
}

} // namespace
} // namespace vel::testing
