// An invoice whose lines reach column 81 of 12-point "Courier New": wider than
// the printable part of an A4 sheet (12 points of border). On paper the whole
// page is drawn smaller, by one factor, so that every word lies inside the
// printable area, as a driver's "fit to page" does; the print transcript (the
// composition: texts, places, pages) is the one of a page that does not fit.
//
// VEL_KEEP_PDF=FOLDER leaves the PDF there to be looked at.
#include "invoice_fixture.h"
#include "pdf_files.h"
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace vel::testing {
namespace {

struct Palabra {
    double xMin, yMin, xMax, yMax;
    QString texto;
};
struct Pagina {
    double ancho = 0, alto = 0;
    std::vector<Palabra> palabras;
};

// The words of each page with their boxes in points, as pdftotext -bbox gives them.
std::vector<Pagina> Palabras(const QString& pdf) {
    const pdf::Ran r = pdf::run("pdftotext", {"-bbox", pdf, "-"});
    EXPECT_EQ(r.exitCode, 0) << qPrintable(r.err);
    std::vector<Pagina> paginas;
    static const QRegularExpression page(R"re(<page width="([\d.]+)" height="([\d.]+)">)re");
    static const QRegularExpression word(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re");
    for (const QString& l : r.out.split('\n')) {
        if (const auto m = page.match(l); m.hasMatch()) paginas.push_back({m.captured(1).toDouble(), m.captured(2).toDouble(), {}});
        else if (const auto w = word.match(l); w.hasMatch() && !paginas.empty())
            paginas.back().palabras.push_back({w.captured(1).toDouble(), w.captured(2).toDouble(),
                                               w.captured(3).toDouble(), w.captured(4).toDouble(), w.captured(5)});
    }
    return paginas;
}

class InvoiceFitToPage : public InvoicePrintTest {
protected:
    QTemporaryDir tmp;
    QString folder() const {
        const QString keep = qEnvironmentVariable("VEL_KEEP_PDF");
        if (!keep.isEmpty()) QDir().mkpath(keep);
        return keep.isEmpty() ? tmp.path() : keep;
    }
    // Three lines at 30 days, with an equivalence surcharge: the total's " €"
    // ends at column 81, the widest of the page (the notice's lines, in
    // "Courier New" 6, are narrower).
    print_layout::Documento invoice() {
        auto d = Factura(rejilla, 3, "FERROBANDA");
        d.Textrecargo = "5.2";
        d.Labelimporterecargo = "0.47";
        d.Labeltotalfactura = "1234567.89";
        return d;
    }
    void TearDown() override { vb::SetPrintEnvironment(nullptr); }
};

TEST_F(InvoiceFitToPage, AnEightyOneColumnLineLiesInsideThePrintableAreaOfTheSheet) {
    const auto d = invoice();
    // The composition, on the recording printer: the totals line ends with " €"
    // at column 81, 81 characters of 144 twips from the printable corner, past
    // the printable width of the sheet.
    print(d);
    // The line keeps the blanks of its last cut after the " €": they draw nothing.
    const QString linea = lines()[size_t(lines().indexOf(InvoiceFootTitleWithSurcharge)) + 1];
    const QString totales = vb::RTrim(linea);
    ASSERT_EQ(totales.size(), 81) << qPrintable(totales);
    ASSERT_TRUE(totales.endsWith(" €"));
    const vb::PrintEvent& e = printed(linea);
    EXPECT_EQ(e.x, 0);
    const double anchoImprimible = vb::SheetGeometry().printable.width();
    EXPECT_GT(81 * 144.0, anchoImprimible);
    const QString transcripcion = recorder.transcript();

    // The same invoice on a PDF file of the real printing.
    vb::SetPrintEnvironment(nullptr);
    const QString pdf = folder() + "/factura_81_columnas.pdf";
    QFile::remove(pdf);
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, pdf});
    print(d);
    const std::vector<Pagina> paginas = Palabras(pdf);
    ASSERT_EQ(paginas.size(), 1u);
    const Pagina& p = paginas[0];
    // The sheet in points as written (pdftotext rounds the page's size).
    const double borde = vb::kBordePuntos;
    const double ancho = vb::kA4AnchoMm / 25.4 * 72, alto = vb::kA4AltoMm / 25.4 * 72;
    EXPECT_NEAR(p.ancho, ancho, 0.5);
    const double derecha = ancho - borde, abajo = alto - borde;
    const Palabra* euro = nullptr;
    for (const Palabra& w : p.palabras) {
        EXPECT_LE(w.xMax, derecha + 0.01) << qPrintable(w.texto) << " ends past the printable area at " << w.xMax;
        EXPECT_LE(w.yMax, abajo + 0.01) << qPrintable(w.texto);
        EXPECT_GE(w.xMin, borde - 0.01) << qPrintable(w.texto);
        if (w.texto == "€") euro = &w;
    }
    ASSERT_NE(euro, nullptr);
    // The widest line fills the printable width: the page is scaled, not cut,
    // and by no more than it needs (81 columns into 11,425 twips).
    EXPECT_GT(euro->xMax, derecha - 3.0);
    bool total = false;
    for (const Palabra& w : p.palabras) total = total || w.texto == "1234567.89";
    EXPECT_TRUE(total);
    // One factor for both directions: the grid's lines, 12 points apart in the
    // composition, are as much closer as the columns are narrower.
    const double factor = (derecha - borde) / (81 * 7.2);
    double y1 = -1, y2 = -1;
    for (const Palabra& w : p.palabras) {
        if (w.texto == "TORN001") y1 = w.yMin;
        if (w.texto == "TORN002") y2 = w.yMin;
    }
    ASSERT_GE(y1, 0);
    ASSERT_GE(y2, 0);
    EXPECT_NEAR(y2 - y1, 12 * factor, 0.05);

    // Printing to paper changed nothing of the composition.
    vb::SetPrintEnvironment(&recorder);
    recorder.clear();
    print(d);
    EXPECT_EQ(recorder.transcript(), transcripcion);
}

// A term of twelve instalments prints its whole text: the "Forma de Pago" line
// of 98 columns is then the widest, and the page is drawn smaller still, its end
// inside the printable area.
TEST_F(InvoiceFitToPage, TheWholeTermOfTwelveInstalmentsIsOnTheSheet) {
    auto d = invoice();
    d.Labelformapagofacturavencimientos = "3/30,60,90,0,0,0,0,0,0,0,0,0";
    vb::SetPrintEnvironment(nullptr);
    const QString pdf = folder() + "/factura_forma_de_pago.pdf";
    QFile::remove(pdf);
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, pdf});
    print(d);
    const std::vector<Pagina> paginas = Palabras(pdf);
    ASSERT_EQ(paginas.size(), 1u);
    const double derecha = vb::kA4AnchoMm / 25.4 * 72 - vb::kBordePuntos;
    const Palabra* plazos = nullptr;
    for (const Palabra& w : paginas[0].palabras) {
        EXPECT_LE(w.xMax, derecha + 0.01) << qPrintable(w.texto);
        if (w.texto == "3/30,60,90,0,0,0,0,0,0,0,0,0") plazos = &w;
    }
    ASSERT_NE(plazos, nullptr);
    EXPECT_GT(plazos->xMax, derecha - 3.0);
}

// A page that fits is drawn at its size: its words stand where the
// composition puts them.
TEST_F(InvoiceFitToPage, AnInvoiceNarrowerThanTheSheetIsNotScaled) {
    vb::SetPrintEnvironment(nullptr);
    const QString pdf = folder() + "/linea_estrecha.pdf";
    QFile::remove(pdf);
    vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, pdf});
    printer.SetFontName("Courier New");
    printer.SetFontSize(12);
    printer.Print(vb::Space(70) + "FIN");
    printer.EndDoc();
    const std::vector<Pagina> paginas = Palabras(pdf);
    ASSERT_EQ(paginas.size(), 1u);
    ASSERT_EQ(paginas[0].palabras.size(), 1u);
    // 12 points of border and 70 characters of 7.2 points.
    EXPECT_NEAR(paginas[0].palabras[0].xMin, 12 + 70 * 7.2, 0.5);
}

} // namespace
} // namespace vel::testing
