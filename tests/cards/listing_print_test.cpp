// The extract on paper: the page head of each installation line by line, 37
// lines to a page with the continuation, the totals and the foot, the question
// with the page count, Cancelar and a printer that fails.
#include "listing_fixture.h"
#include "runtime/vb.h"

#include <QCheckBox>
#include <QTimer>

namespace vel::testing {
namespace {

const QString kFichas = QStringLiteral("detalle_fichas_clientes");
const QString kRaya = QString(80, QLatin1Char('_'));
const QString kTitulos = QStringLiteral("APUNTE FECHA      DESCRIPCION                   EST.    DEBE     HABER     SALDO");

class ListingPrint : public ListingTest {
protected:
    void SetUp() override {
        ListingTest::SetUp();
        exec(Cliente("C001", "11111111A", "FERRETERIA PEDRO", "PEDRO GARCIA SL"));
        exec(Cliente("C002", "22222222B", "BAZAR LUCIA", "LUCIA CASTRO SL"));
    }
    // n entries of Pedro's card in 2026.
    void apuntes(int n, const QString& nif = "11111111A", const QString& codigo = "C001") {
        for (int i = 1; i <= n; ++i)
            exec(Apunte(kFichas, 2026, nif, codigo, i, "05/01/2026", QStringLiteral("FACTURA %1").arg(i), "10", "0"));
    }
    // The listing of all customers (or of Pedro), with or without sub/totals.
    void listado(bool uno, bool subtotales, bool totales) {
        abre();
        if (uno) {
            click("Optionuno");
            c<vb::ComboBox>("Combonifcli")->SetListIndex(0);
        }
        vb::SetValue(c<QCheckBox>("Checksubtotal"), subtotales ? 1 : 0);
        vb::SetValue(c<QCheckBox>("Checktotal"), totales ? 1 : 0);
        click("BotonListadofcl");
    }
    void imprime() {
        boxes.answers.push_back(vb::vbYes);
        click("BotonImprimirfcl");
    }
    QStringList papel() const { return recorder.last().lines(); }
};

// The head of the first page of Pedro's extract, after the installation's
// first lines.
QStringList CabeceraDePedro() {
    return {vb::Space(59) + "Ejercicio: 2026",
            "",
            "",
            vb::Space(25) + "EXTRACTO DE FICHAS DE CLIENTES",
            "",
            "",
            vb::Space(42) + "Cód. Cliente: C001",
            "PERIODO:",
            vb::Space(10) + "DEL 01/01/2026",
            vb::Space(10) + " AL 31/12/2026",
            vb::Space(17) + "PEDRO GARCIA SL",
            vb::Space(42) + "CALLE MAYOR 1",
            vb::Space(42) + "15001   PORTELAS",
            vb::Space(42) + "VALDEFERRO",
            "",
            kTitulos,
            kRaya};
}

TEST_F(ListingPrint, FerrobandaPageOfOneCustomerLineByLine) {
    apuntes(2);
    listado(true, true, true);
    ASSERT_EQ(lista()->ListCount(), 5);
    imprime();
    EXPECT_EQ(boxes.shown.first(), "Pregunta|¿Desea imprimir el extracto de la ficha? (1 Pág.)|292");
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_TRUE(recorder.last().ended);
    QStringList esperado = {"Suministros Industriales" + vb::Space(33) + "Fecha de emisión: 21/11/2026",
                            "     ______________" + vb::Space(45) + "Hoja Nº: 1/1", "        PORTELAS"};
    esperado << CabeceraDePedro();
    for (int i = 0; i < 5; ++i) esperado << lista()->List(i);
    esperado << "" << kRaya;
    // The totals: the title over the 80 columns, the sums in their places.
    QString totales = vb::Space(32) + "T O T A L E S ..." + vb::Space(31);
    totales = vb::Left(totales, 60 - 2) + "20.00";
    totales += vb::Space(90 - totales.size());
    totales = vb::Left(totales, 70 - 1) + "0.00";
    totales += vb::Space(90 - totales.size());
    totales = vb::Left(totales, 81 - 4) + "0.00";
    esperado << totales << "EXTRACTO DE FICHAS DE CLIENTES   Página : 1";
    EXPECT_EQ(papel(), esperado);
    EXPECT_EQ(c<QLabel>("Labelayuda")->text(), "");
}

TEST_F(ListingPrint, EachInstallationHasItsOwnFirstLines) {
    apuntes(1);
    struct Caso {
        const char* tag;
        QStringList lineas;
    };
    const QString fecha = "Fecha de emisión: 21/11/2026", hoja = "Hoja Nº: 1/1";
    const std::vector<Caso> casos = {
        {"FERROBANDA",
         {"Suministros Industriales" + vb::Space(33) + fecha, "     ______________" + vb::Space(45) + hoja,
          "        PORTELAS"}},
        {"ULTRAMARINOS",
         {"  Panadería Bollería Os Vieiros" + vb::Space(29) + fecha, "      _______________" + vb::Space(45) + hoja,
          "      PORTELAS"}},
        {"LAPRESA",
         {"      ESTABLECIMIENTOS" + vb::Space(35) + fecha, "   ______________" + vb::Space(47) + hoja,
          "      LA PRESA"}},
        {"ORTA",
         {"      TECNOLOGIA" + vb::Space(35) + fecha, "      __________" + vb::Space(47) + hoja, "         ORTA"}},
    };
    for (const Caso& caso : casos) {
        SCOPED_TRACE(caso.tag);
        etiqueta(caso.tag);
        recorder.clear();
        listado(true, false, false);
        imprime();
        QStringList esperado = caso.lineas;
        esperado << CabeceraDePedro() << lista()->List(0) << "EXTRACTO DE FICHAS DE CLIENTES   Página : 1";
        EXPECT_EQ(papel(), esperado);
        for (const vb::PrintEvent& p : recorder.last().prints())
            EXPECT_EQ(p.font.name, "Courier New") << p.text.toStdString();
        w.reset();
    }
}

// A tag the listings don't know: no letterhead, the date and sheet in place.
TEST_F(ListingPrint, AnUnknownTagPrintsNoLetterhead) {
    etiqueta("ferrobanda");
    apuntes(1);
    listado(false, false, false);
    imprime();
    const QStringList l = papel();
    ASSERT_GE(l.size(), 3);
    EXPECT_EQ(l[0], vb::Space(57) + "Fecha de emisión: 21/11/2026");
    EXPECT_EQ(l[1], vb::Space(64) + "Hoja Nº: 1/1");
    EXPECT_EQ(l[2], vb::Space(59) + "Ejercicio: 2026");
    EXPECT_EQ(l[8], vb::Space(42) + "Cód. Cliente: TODOS");
}

TEST_F(ListingPrint, ThirtySevenLinesAreOnePage) {
    apuntes(37);
    listado(false, false, false);
    ASSERT_EQ(lista()->ListCount(), 37);
    imprime();
    EXPECT_EQ(boxes.shown.first(), "Pregunta|¿Desea imprimir el extracto de la ficha? (1 Pág.)|292");
    EXPECT_EQ(recorder.last().pages(), 1);
    EXPECT_FALSE(papel().contains(vb::Space(20) + "... Continúa ...->"));
}

TEST_F(ListingPrint, ThirtyEightLinesAreTwoPagesWithTheContinuation) {
    apuntes(38);
    listado(false, false, false);
    imprime();
    EXPECT_EQ(boxes.shown.first(), "Pregunta|¿Desea imprimir el extracto de la ficha? (2 Pág.)|292");
    EXPECT_EQ(recorder.last().pages(), 2);
    const QStringList uno = recorder.last().linesOfPage(1), dos = recorder.last().linesOfPage(2);
    // Page 1: the head (16 lines for all customers), 37 lines, the continuation, the foot.
    ASSERT_EQ(uno.size(), 16 + 37 + 3 + 1);
    EXPECT_EQ(uno[1], "     ______________" + vb::Space(45) + "Hoja Nº: 1/2");
    EXPECT_EQ(uno[16 + 36], lista()->List(36));
    EXPECT_EQ(uno.mid(16 + 37), QStringList({vb::Space(20) + "... Continúa ...->", kRaya, "",
                                             "EXTRACTO DE FICHAS DE CLIENTES   Página : 1"}));
    EXPECT_EQ(dos[1], "     ______________" + vb::Space(45) + "Hoja Nº: 2/2");
    EXPECT_EQ(dos[16], lista()->List(37));
    EXPECT_EQ(dos.last(), "EXTRACTO DE FICHAS DE CLIENTES   Página : 2");
}

TEST_F(ListingPrint, NoToTheQuestionPrintsNothing) {
    apuntes(1);
    listado(false, false, false);
    click("BotonImprimirfcl");  // the default answer: No
    EXPECT_EQ(boxes.shown.first(), "Pregunta|¿Desea imprimir el extracto de la ficha? (1 Pág.)|292");
    EXPECT_EQ(dialogs.shown, 0);
    EXPECT_TRUE(recorder.jobs.empty());
}

// Cancelar is heard at the end of a page: that page is the last that comes out.
TEST_F(ListingPrint, CancelarStopsAtTheEndOfThePage) {
    apuntes(80);
    listado(false, false, false);
    struct CancelaAlElegir : Dialogs {
        ListadoFichas* w = nullptr;
        std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest& r) override {
            QTimer::singleShot(0, w, [this] {
                auto* b = vb::Control<QPushButton>(w, "Cancelar");
                QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, b->rect().center());
            });
            return Dialogs::printer(r);
        }
    } cancela;
    cancela.w = w.get();
    vb::InstalledEnvironment conCancelar({.messageBoxes = &boxes,
                                          .dialogs = &cancela,
                                          .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
                                          .programFolder = dir.path(),
                                          .printers = &recorder});
    imprime();
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_TRUE(recorder.last().ended);
    EXPECT_EQ(recorder.last().pages(), 1);
    const QStringList l = papel();
    EXPECT_EQ(l.last(), "");  // after the continuation's rule, nothing more
    EXPECT_EQ(l[l.size() - 4], lista()->List(36));
    EXPECT_EQ(c<QLabel>("Labelayuda")->text(), "");
}

TEST_F(ListingPrint, APrinterErrorIsToldInABoxTitledError) {
    apuntes(1);
    listado(false, false, false);
    dialogs.none = true;
    imprime();
    ASSERT_EQ(boxes.shown.size(), 2);
    EXPECT_EQ(boxes.shown[1], "ERROR|No hay ninguna impresora predeterminada.|0");
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(c<QLabel>("Labelayuda")->text(), "");
}

TEST_F(ListingPrint, ACancelledPrintDialogPrintsNothingAndSaysNothing) {
    apuntes(1);
    listado(false, false, false);
    dialogs.cancel = true;
    imprime();
    EXPECT_EQ(boxes.shown.size(), 1);
    EXPECT_TRUE(recorder.jobs.empty() || !recorder.last().ended);
}

// The foot and the bold head of the window's page procedures.
TEST_F(ListingPrint, FootAndHeadProcedures) {
    abre();
    vb::PrinterObject& p = vb::Printer();
    p.SetDestination({.kind = vb::PrintDestination::Kind::Printer, .printer = "Grabadora"});
    p.SetFontName("Courier New");
    w->ImprimeCabecera(p);
    w->HaySaltoPagina(p, "X");  // room enough: nothing
    while (p.CurrentY() + 5 * p.TextHeight("X") <= p.ScaleHeight()) p.Print("relleno");
    w->HaySaltoPagina(p, "X");  // no room: foot, new page, head
    p.EndDoc();
    const auto prints = recorder.last().prints();
    ASSERT_GE(prints.size(), 3u);
    EXPECT_EQ(prints.front().text, "EXTRACTO DE FICHAS DE CLIENTES");
    EXPECT_TRUE(prints.front().font.bold);
    EXPECT_EQ(recorder.last().pages(), 2);
    EXPECT_EQ(recorder.last().linesOfPage(1).last(), "EXTRACTO DE FICHAS DE CLIENTES   Página : 1");
    EXPECT_EQ(recorder.last().linesOfPage(2), QStringList{"EXTRACTO DE FICHAS DE CLIENTES"});
}

} // namespace
} // namespace vel::testing
