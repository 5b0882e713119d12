// An invoice on paper: its header with rules drawn across the page, its lines
// of seven pieces, the pages it counts from its lines and long description,
// the continuation onto a new sheet, and its foot.
#include "invoice_fixture.h"
#include "runtime/errors.h"
#include "printing/letterheads.h"

namespace vel::testing {
namespace {

using print_layout::LineaFactura;
using print_layout::PaginasFactura;
using print_layout::PiezasLineaFactura;
using vb::Space;

const QString NumberLine = " Nº Factura: 00027/2026  Fecha Factura: 21/11/2026     Forma de Pago: 30 Días";
const QString FerrobandaFirstLine =
    Space(20) + "Ins. en el Reg. Mercantil de Valdeferro, Tomo 1000, Folio 100, Hoja 10000";

class InvoicePrint : public InvoicePrintTest {
protected:
    std::vector<vb::PrintEvent> rules() const {
        std::vector<vb::PrintEvent> out;
        for (const auto& e : recorder.last().events)
            if (e.kind == vb::PrintEvent::Kind::Line) out.push_back(e);
        return out;
    }
    // The right end of a rule: ScaleWidth - 2 cells of 120 twips.
    double ruleEnd() const { return recorder.portrait.printable.width() - 2 * 120; }
};

// ---- The header ----------------------------------------------------------------

TEST_F(InvoicePrint, TheHeaderPrintsTheCustomerTheInvoiceAndTheTitleBetweenRules) {
    const QStringList l = printLines(1);
    const int name = int(l.indexOf(Space(40) + "FERRETERIA O CRUCEIRO"));
    ASSERT_GT(name, 0);
    EXPECT_EQ(l.mid(name, 13), QStringList({
                                   Space(40) + "FERRETERIA O CRUCEIRO",
                                   Space(40) + "XOSE MANUEL CASAL RIOS",
                                   Space(40) + "RUA DO CRUCEIRO 4",
                                   Space(40) + "15001 PORTELAS-VALDEFERRO",
                                   Space(40) + "CIF/NIF: 00000014Z",
                                   "",
                                   "",
                                   "",
                                   NumberLine,
                                   "", // the rule's line feed
                                   InvoiceDetailTitle,
                                   "", // the rule's line feed
                                   row(1),
                               }));
    EXPECT_EQ(printed(InvoiceDetailTitle).font, (vb::PrintFont{"Courier New", 12, false, false}));
}

// A rule is a Line from cell 1 to ScaleWidth - 2 in black, and the line after it
// prints at the rule's own height.
TEST_F(InvoicePrint, TheHeadersRulesAreLinesThatTakeNoRoom) {
    printLines(1);
    const auto r = rules();
    ASSERT_EQ(r.size(), 4u); // two in the header, two in the foot
    const double numberY = printed(NumberLine).y;
    const double titleY = printed(InvoiceDetailTitle).y;
    const double rowY = printed(row(1)).y;
    EXPECT_EQ(titleY, numberY + 240);
    EXPECT_EQ(rowY, titleY + 240);
    EXPECT_EQ(r[0].y, titleY);
    EXPECT_EQ(r[0].y2, titleY);
    EXPECT_EQ(r[1].y, rowY);
    for (const auto& rule : r) {
        EXPECT_EQ(rule.x, 120);
        EXPECT_NEAR(rule.x2, ruleEnd(), 0.01);
        EXPECT_EQ(rule.color, 0);
    }
}

TEST_F(InvoicePrint, TheHeaderPrintsTheTermAsAWordOrTheWholeLabel) {
    auto d = Factura(rejilla, 1);
    d.Labelformapagofacturavencimientos = "1/0,0,0,0,0,0,0,0,0,0,0,0";
    print(d);
    EXPECT_TRUE(lines().contains(" Nº Factura: 00027/2026  Fecha Factura: 21/11/2026     Forma de Pago: CONTADO"));
    recorder.clear();
    d.Labelformapagofacturavencimientos = "2/30,60,0,0,0,0,0,0,0,0,0,0";
    print(d);
    EXPECT_TRUE(lines().contains(
        " Nº Factura: 00027/2026  Fecha Factura: 21/11/2026     Forma de Pago: 2/30,60,0,0,0,0,0,0,0,0,0,0"));
}

// ---- The lines ------------------------------------------------------------------

// The invoice leaves a discount of nothing blank; the delivery note prints its 0.
TEST_F(InvoicePrint, ADiscountOfZeroPrintsThreeBlanks) {
    for (const char* zero : {"0", "0.00", "", "00"})
        EXPECT_EQ(PiezasLineaFactura({"R", "D", "1", "1.00", "1.00", zero, "1.00"})[5], "   ") << zero;
    EXPECT_EQ(PiezasLineaFactura({"R", "D", "1", "1.00", "0.95", "5", "0.95"})[5], " 5 ");
    EXPECT_EQ(LineaFactura({"R", "D", "1", "1.00", "1.00", "0", "1.00"}),
              " R             D                               1      1.00      1.00         1.00");
    EXPECT_EQ(LineaFactura({"R", "D", "1", "1.00", "1.00", "0", "1.00"}).mid(69, 3), "   ");
    EXPECT_EQ(print_layout::LineaAlbaran({"R", "D", "1", "1.00", "1.00", "0", "1.00"}).mid(68, 3), " 0 ");
}

TEST_F(InvoicePrint, AnAmountOfTenCharactersInAPrintedInvoice) {
    auto d = Factura(rejilla, 1);
    rejilla->filas[0] = {"ROLLO", "CABLE", "0.5", "1234567.50", "617283.75", "0", "617283.75"};
    print(d);
    EXPECT_TRUE(lines().contains(" ROLLO         CABLE                         0.5 1234567.50617283.75    617283.75"));
}

// ---- Pages ----------------------------------------------------------------------

TEST_F(InvoicePrint, PagesCountTheGridsRowsAndTheLongDescriptionsUpperBound) {
    auto lines = [](int n) {
        QStringList l;
        for (int i = 1; i <= n; ++i) l << QStringLiteral("linea %1").arg(i);
        return l.join("\r\n");
    };
    // No description: U is -1, so R + U + 1 is R.
    EXPECT_EQ(PaginasFactura(1, ""), 1);
    EXPECT_EQ(PaginasFactura(40, ""), 1);
    EXPECT_EQ(PaginasFactura(41, ""), 2); // Int(40 / 39) + 1
    EXPECT_EQ(PaginasFactura(79, ""), 3); // Int(78 / 39) + 1
    // A one-line description: U is 0.
    EXPECT_EQ(PaginasFactura(39, "PORTES INCLUIDOS"), 1);
    EXPECT_EQ(PaginasFactura(40, "PORTES INCLUIDOS"), 2);
    // R + U + 1 of 40 is one page; of 41, two.
    EXPECT_EQ(PaginasFactura(30, lines(10)), 1);
    EXPECT_EQ(PaginasFactura(30, lines(11)), 2);
    EXPECT_EQ(PaginasFactura(2, lines(200)), 6); // R + U = 201: Int(201 / 39) + 1
    // Only CR LF ends a line of the description.
    EXPECT_EQ(PaginasFactura(30, lines(11).replace("\r\n", "\n")), 1);
}

// ---- One page -------------------------------------------------------------------

TEST_F(InvoicePrint, ThirtyEightLinesPrintOnePageWithTheFootBelowLine39) {
    const QStringList l = printLines(38);
    EXPECT_EQ(contadores.paginas, 1);
    EXPECT_EQ(contadores.paginaactual, 1);
    EXPECT_EQ(contadores.lineas, 39);
    EXPECT_FALSE(l.contains(ContinuationMark));
    const int last = int(l.indexOf(row(38)));
    EXPECT_EQ(l[last + 1], ""); // the foot's rule
    EXPECT_EQ(l[last + 2], InvoiceFootTitle);
    EXPECT_EQ(printed(InvoiceFootTitle).y, printed(row(1)).y + 38 * 240);
    EXPECT_EQ(recorder.last().pages(), 1);
}

// Fewer lines are filled with empty ones up to line 39, so that the foot falls
// at the same height.
TEST_F(InvoicePrint, TenLinesAreFilledToLine39) {
    const QStringList l = printLines(10);
    EXPECT_EQ(contadores.lineas, 39);
    const int last = int(l.indexOf(row(10)));
    for (int i = 1; i <= 28; ++i) EXPECT_EQ(l[last + i], "") << i;
    EXPECT_EQ(l[last + 29], ""); // the foot's rule
    EXPECT_EQ(l[last + 30], InvoiceFootTitle);
    EXPECT_EQ(printed(InvoiceFootTitle).y, printed(row(1)).y + 38 * 240);
}

// A single-page invoice never continues, even when its lines reach 39 and more.
TEST_F(InvoicePrint, ThirtyNineLinesStayOnOnePageWithoutContinuation) {
    const QStringList l = printLines(39);
    EXPECT_EQ(contadores.paginas, 1);
    EXPECT_FALSE(l.contains(ContinuationMark));
    EXPECT_EQ(l.count(NumberLine), 1);
    EXPECT_EQ(l[l.indexOf(row(39)) + 2], InvoiceFootTitle);
}

TEST_F(InvoicePrint, ThirtyLinesAndANineLineDescriptionAreFortyLinesOnOnePage) {
    QStringList text;
    for (int i = 1; i <= 9; ++i) text << QStringLiteral("Montaxe da estantería, tramo %1").arg(i);
    const QStringList l = printLines(30, text);
    EXPECT_EQ(contadores.paginas, 1);
    EXPECT_EQ(contadores.lineas, 41);
    EXPECT_FALSE(l.contains(ContinuationMark));
    EXPECT_EQ(recorder.last().pages(), 1);
}

// ---- The long description -------------------------------------------------------

TEST_F(InvoicePrint, TheLongDescriptionFollowsTheLinesAfterAnEmptyLine) {
    const QStringList l = printLines(5, {"Portes incluidos.", "", "Garantía de dous anos."});
    const int last = int(l.indexOf(row(5)));
    EXPECT_EQ(l.mid(last + 1, 4), QStringList({"", Space(15) + "Portes incluidos.", Space(15),
                                                Space(15) + "Garantía de dous anos."}));
    // 5 lines, the empty one and 3 make 9: filled with 29 up to line 39.
    for (int i = 5; i <= 33; ++i) EXPECT_EQ(l[last + i], "") << i;
    EXPECT_EQ(l[last + 34], "");
    EXPECT_EQ(l[last + 35], InvoiceFootTitle);
    EXPECT_EQ(contadores.lineas, 39);
}

TEST_F(InvoicePrint, WithoutALongDescriptionNoEmptyLineFollowsTheGrid) {
    auto d = Factura(rejilla, 38);
    d.TextDescripcionLarga = "";
    print(d);
    EXPECT_EQ(lines()[lines().indexOf(row(38)) + 2], InvoiceFootTitle);
}

// The description's lines count like grid lines: the third one is the 39th of
// the page and continues the invoice on a new sheet.
TEST_F(InvoicePrint, ALongDescriptionContinuesOnTheNextPage) {
    QStringList text;
    for (int i = 1; i <= 10; ++i) text << QStringLiteral("Detalle %1").arg(i);
    const QStringList l = printLines(35, text);
    EXPECT_EQ(contadores.paginas, 2); // R + U + 1 = 36 + 9 + 1 = 46
    const int mark = int(l.indexOf(ContinuationMark));
    ASSERT_GT(mark, 0);
    EXPECT_EQ(l[mark - 1], Space(15) + "Detalle 3");
    EXPECT_EQ(l[mark + 1], FerrobandaFirstLine);
    EXPECT_EQ(l[l.indexOf(InvoiceDetailTitle, mark) + 2], Space(15) + "Detalle 4");
    EXPECT_EQ(printed(Space(15) + "Detalle 4").page, 2);
    EXPECT_EQ(contadores.lineas, 39);
}

// The empty line before the description is counted but not tested: when it is
// the 39th of a page the count passes 39 and that page never continues.
TEST_F(InvoicePrint, AnEmptyLineOnLine39SkipsTheContinuation) {
    const QStringList l = printLines(38, {"Portes incluidos.", "Garantía de dous anos."});
    EXPECT_EQ(contadores.paginas, 2); // R + U + 1 = 39 + 1 + 1
    EXPECT_FALSE(l.contains(ContinuationMark));
    EXPECT_EQ(contadores.lineas, 42);
    EXPECT_EQ(l.count(NumberLine), 1);
}

// ---- Several pages --------------------------------------------------------------

// The continuation: the mark after the 39th line, a new sheet, and the whole
// header again from the letterhead's first line.
TEST_F(InvoicePrint, FortyLinesContinueOnANewSheetWithTheWholeLetterheadAgain) {
    const QStringList l = printLines(40);
    EXPECT_EQ(contadores.paginas, 2);
    const int mark = int(l.indexOf(ContinuationMark));
    ASSERT_GT(mark, 0);
    EXPECT_EQ(l[mark - 1], row(39));
    EXPECT_EQ(l.count(ContinuationMark), 1);
    EXPECT_EQ(printed(ContinuationMark).page, 1);

    std::vector<vb::PrintEvent> newPages;
    for (const auto& e : recorder.last().events)
        if (e.kind == vb::PrintEvent::Kind::NewPage) newPages.push_back(e);
    ASSERT_EQ(newPages.size(), 1u);
    EXPECT_FALSE(newPages[0].automatic); // asked for by the program

    const auto prints = recorder.last().prints();
    const auto first = *std::find_if(prints.begin(), prints.end(), [](const auto& e) { return e.page == 2; });
    EXPECT_EQ(first.text, FerrobandaFirstLine);
    EXPECT_EQ(first.page, 2);
    EXPECT_EQ(first.y, 0);
    EXPECT_EQ(first.font, (vb::PrintFont{"Courier New", 8, false, false}));
    EXPECT_EQ(l.count(FerrobandaFirstLine), 2);
    EXPECT_EQ(l.count(NumberLine), 2);
    EXPECT_EQ(l[l.indexOf(InvoiceDetailTitle, mark) + 2], row(40));
    EXPECT_EQ(printed(row(40)).page, 2);
    EXPECT_EQ(recorder.last().pages(), 2);
    EXPECT_EQ(rules().size(), 6u);
    // Page 2 holds one line: filled with 37 up to line 39.
    EXPECT_EQ(contadores.lineas, 39);
    EXPECT_EQ(printed(InvoiceFootTitle).y, printed(row(40)).y + 38 * 240);
}

// The test knows no last page: 78 lines end on line 39 of page 2, which still
// continues onto a third sheet with a header and no lines.
TEST_F(InvoicePrint, SeventyEightLinesEndOnLine39AndStillContinue) {
    const QStringList l = printLines(78);
    EXPECT_EQ(contadores.paginas, 3);
    EXPECT_EQ(l.count(ContinuationMark), 2);
    EXPECT_EQ(l[l.lastIndexOf(ContinuationMark) - 1], row(78));
    EXPECT_EQ(l.count(InvoiceDetailTitle), 3);
    EXPECT_EQ(recorder.last().pages(), 3);
    EXPECT_EQ(printed(InvoiceFootTitle).page, 3);
    const int title = int(l.lastIndexOf(InvoiceDetailTitle));
    for (int i = 2; i <= 39; ++i) EXPECT_EQ(l[title + i], "") << i; // the rule's feed and 38 filling lines
    EXPECT_EQ(l[title + 40], "");
    EXPECT_EQ(l[title + 41], InvoiceFootTitle);
}

// ---- The foot -------------------------------------------------------------------

TEST_F(InvoicePrint, WithoutSurchargeTheFootHasNoRecColumns) {
    auto d = Factura(rejilla, 10);
    d.Labelbruto = d.Labelneto = d.Labelbase = "30";
    d.Labeldescuento = "0";
    d.Labelimporteiva = "6.3";
    d.Textrecargo = "0";
    d.Labelimporterecargo = "0";
    d.Labeltotalfactura = "36.3";
    EXPECT_EQ(print_layout::TituloTotalesFactura(d.Textrecargo), InvoiceFootTitle);
    const QString values = print_layout::LineaTotalesFactura(d);
    EXPECT_EQ(values, " 30.00" + Space(17) + "30.00" + Space(5) + "30.00" + Space(4) + "21" + Space(2) + "6.30" +
                          Space(24) + "36.30 €" + Space(80));
    print(d);
    const QStringList l = lines();
    const int title = int(l.indexOf(InvoiceFootTitle));
    ASSERT_GT(title, 0);
    EXPECT_FALSE(l.contains(InvoiceFootTitleWithSurcharge));
    EXPECT_EQ(l[title + 1], values);
    EXPECT_EQ(values.mid(50, 24), Space(24)); // the surcharge's columns
}

TEST_F(InvoicePrint, WithSurchargeTheFootShowsItsRateAndAmount) {
    auto d = Factura(rejilla, 10);
    d.Labelbruto = d.Labelneto = d.Labelbase = "30";
    d.Labelimporteiva = "6.3";
    d.Textrecargo = "5.2";
    d.Labelimporterecargo = "1.56";
    d.Labeltotalfactura = "37.86";
    EXPECT_EQ(print_layout::TituloTotalesFactura(d.Textrecargo), InvoiceFootTitleWithSurcharge);
    const QString values = print_layout::LineaTotalesFactura(d);
    EXPECT_EQ(vb::RTrim(values), " 30.00" + Space(17) + "30.00" + Space(5) + "30.00" + Space(4) + "21" + Space(2) +
                                     "6.30" + Space(6) + "5.2" + Space(2) + "1.56" + Space(9) + "37.86 €");
    print(d);
    const QStringList l = lines();
    const int title = int(l.indexOf(InvoiceFootTitleWithSurcharge));
    ASSERT_GT(title, 0);
    EXPECT_EQ(l[title + 1], values);
}

TEST_F(InvoicePrint, ADiscountIsPrintedOnlyWhenItIsNotZero) {
    auto d = Factura(rejilla, 1);
    d.Labelbruto = "100";
    d.Labeldescuento = "12.5";
    d.Labelneto = d.Labelbase = "87.5";
    d.Labelimporteiva = "18.375";
    d.Labeltotalfactura = "105.875";
    EXPECT_EQ(vb::RTrim(print_layout::LineaTotalesFactura(d)),
              " 100.00" + Space(8) + "12.50" + Space(3) + "87.50" + Space(5) + "87.50" + Space(4) + "21" + Space(2) +
                  "18.38" + Space(22) + "105.88 €");
    d.Labeldescuento = "0.00";
    EXPECT_EQ(print_layout::LineaTotalesFactura(d).mid(7, 16), Space(16));
}

// However long the total, its euro sign is the 81st character.
TEST_F(InvoicePrint, TheTotalEndsAtColumn81WithTheEuroSign) {
    auto d = Factura(rejilla, 1);
    for (const char* total : {"5", "36.3", "123456.789", "9999999.99"}) {
        d.Labeltotalfactura = total;
        const QString values = print_layout::LineaTotalesFactura(d);
        const QString amount = print_layout::Importe(total) + " €";
        EXPECT_EQ(values.mid(81 - amount.size(), amount.size()), amount) << total;
        EXPECT_EQ(values.mid(79, 2), " €") << total;
        EXPECT_EQ(values.size(), 81 + 80) << total;
    }
}

// Rule, title, values, rule, the notice with three blanks before each line and
// a last empty Print; both rules take no room.
TEST_F(InvoicePrint, TheFootEndsWithTheNoticeIndentedByThreeBlanks) {
    print(Factura(rejilla, 2));
    const QStringList l = lines();
    const int title = int(l.indexOf(InvoiceFootTitle));
    ASSERT_GT(title, 0);
    const QStringList notice = letterheads::AvisoLegal(letterheads::Bloque::FerrobandaPosterior);
    ASSERT_EQ(notice.size(), 6);
    QStringList expected = {InvoiceFootTitle, l[title + 1], ""};
    for (const QString& line : notice) expected << Space(3) + line;
    expected << "";
    EXPECT_EQ(l.mid(title), expected);

    const auto r = rules();
    ASSERT_EQ(r.size(), 4u);
    const auto& titleRun = printed(InvoiceFootTitle);
    EXPECT_EQ(r[2].y, titleRun.y);
    EXPECT_EQ(r[3].y, titleRun.y + 2 * 240);
    const auto& firstNotice = printed(Space(3) + notice[0]);
    EXPECT_EQ(firstNotice.y, r[3].y);
    EXPECT_EQ(firstNotice.font, (vb::PrintFont{"Courier New", 6, false, false}));
}

} // namespace
} // namespace vel::testing
