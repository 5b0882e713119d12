// The listing window on screen: its opening state, the options and boxes, the
// lines of the extract built from the cards, and the refused close.
#include "listing_fixture.h"
#include "runtime/vb.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>

namespace vel::testing {
namespace {

const QString kFichas = QStringLiteral("detalle_fichas_clientes");

class ListingWindow : public ListingTest {
protected:
    void SetUp() override {
        ListingTest::SetUp();
        exec(Cliente("C001", "11111111A", "FERRETERIA PEDRO", "PEDRO GARCIA SL"));
        exec(Cliente("C002", "22222222B", "BAZAR LUCIA", "LUCIA CASTRO SL"));
    }
};

// An amount placed so that it ends at a column (counted from 1).
QString Hasta(const QString& linea, int columna, const QString& importe) {
    return linea + vb::Space(columna - vb::Len(importe) - vb::Len(linea)) + importe;
}

TEST_F(ListingWindow, OpensOnTheYearOfTodayWithAllCustomers) {
    abre();
    EXPECT_EQ(c<QLineEdit>("Textejer")->text(), "2026");
    EXPECT_EQ(c<QLineEdit>("Textdiaini")->text(), "01");
    EXPECT_EQ(c<QLineEdit>("Textmesini")->text(), "01");
    EXPECT_EQ(c<QLineEdit>("Texta_oini")->text(), "2026");
    EXPECT_EQ(c<QLineEdit>("Textdiafin")->text(), "31");
    EXPECT_EQ(c<QLineEdit>("Textmesfin")->text(), "12");
    EXPECT_EQ(c<QLineEdit>("Texta_ofin")->text(), "2026");
    // The four lists in the same row order: the same index, the same customer.
    auto* nif = c<vb::ComboBox>("Combonifcli");
    ASSERT_EQ(nif->ListCount(), 2);
    EXPECT_EQ(nif->List(1), "22222222B");
    EXPECT_EQ(c<vb::ComboBox>("Combocodcli")->List(1), "C002");
    EXPECT_EQ(c<vb::ComboBox>("Combonomcomcli")->List(1), "BAZAR LUCIA");
    EXPECT_EQ(c<vb::ComboBox>("Combonomfiscli")->List(1), "LUCIA CASTRO SL");
    EXPECT_TRUE(vb::Visible(c("BotonListadofcl")));
    EXPECT_FALSE(vb::Visible(c("BotonImprimirfcl")));
    EXPECT_FALSE(vb::Visible(c("BotonCerrarfcl")));
}

TEST_F(ListingWindow, OptionsEnableTheFourLists) {
    abre();
    const QStringList listas = {"Combonifcli", "Combocodcli", "Combonomfiscli", "Combonomcomcli"};
    for (const QString& l : listas) EXPECT_FALSE(vb::Enabled(c(l))) << l.toStdString();
    click("Optionuno");
    for (const QString& l : listas) EXPECT_TRUE(vb::Enabled(c(l))) << l.toStdString();
    click("Optiontodos");
    for (const QString& l : listas) EXPECT_FALSE(vb::Enabled(c(l))) << l.toStdString();
}

TEST_F(ListingWindow, TheYearIsCopiedToBothEndsOfTheInterval) {
    abre();
    teclea("Textejer", "2025");
    EXPECT_EQ(c<QLineEdit>("Texta_oini")->text(), "2025");
    EXPECT_EQ(c<QLineEdit>("Texta_ofin")->text(), "2025");
}

TEST_F(ListingWindow, ADayOfOneBecomesZeroOneOnLeavingTheBox) {
    abre();
    teclea("Textdiaini", "1");
    QTest::keyClick(c("Textdiaini"), Qt::Key_Return);  // Enter moves on, as Tab
    QApplication::processEvents();
    EXPECT_EQ(c<QLineEdit>("Textdiaini")->text(), "01");
    EXPECT_TRUE(c("Textmesini")->hasFocus());
    // Days and months take digits only.
    teclea("Textmesini", "a3");
    EXPECT_EQ(c<QLineEdit>("Textmesini")->text(), "3");
}

TEST_F(ListingWindow, ChoosingByNameSetsTheOtherListsAndTheDataPage) {
    abre();
    click("Optionuno");
    c<vb::ComboBox>("Combonomcomcli")->SetListIndex(1);
    EXPECT_EQ(c<vb::ComboBox>("Combonifcli")->ListIndex(), 1);
    EXPECT_EQ(c<vb::ComboBox>("Combocodcli")->Text(), "C002");
    EXPECT_EQ(c<vb::ComboBox>("Combonomfiscli")->Text(), "LUCIA CASTRO SL");
    EXPECT_EQ(c<QLineEdit>("Textnombrefiscal")->text(), "LUCIA CASTRO SL");
    EXPECT_EQ(c<QLineEdit>("Textdomicilio")->text(), "CALLE MAYOR 1");
    EXPECT_EQ(c<QLineEdit>("Textcodigopostal")->text(), "15001");
}

TEST_F(ListingWindow, TheStatementsOfOneCustomerAndOfAll) {
    abre();
    EXPECT_EQ(w->SentenciaApuntes(), "SELECT * FROM detalle_fichas_clientes WHERE ejercicio_detalle_fichas_clientes = "
                                     "2026 ORDER BY nif_detalle_fichas_clientes");
    click("Optionuno");
    c<vb::ComboBox>("Combonifcli")->SetListIndex(0);
    EXPECT_EQ(w->SentenciaApuntes(), "SELECT * FROM detalle_fichas_clientes WHERE nif_detalle_fichas_clientes = "
                                     "'11111111A' AND ejercicio_detalle_fichas_clientes = 2026 ORDER BY "
                                     "nif_detalle_fichas_clientes");
}

TEST_F(ListingWindow, ALineIsPlacedByTheRawLengthOfEachAmount) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "05/01/2026", "FACTURA 1", "100", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 2, "05/02/2026", "COBRO FACTURA 1", "0", "33.33", "C"));
    abre();
    vb::SetValue(c<QCheckBox>("Checksubtotal"), 0);
    vb::SetValue(c<QCheckBox>("Checktotal"), 0);
    click("BotonListadofcl");
    const QStringList l = lineas();
    ASSERT_EQ(l.size(), 2);
    // "100" is three long: cut at 57, "100.00" ends at 63; "0" cut at 69, ends at 73.
    EXPECT_EQ(l[0], Hasta(Hasta(Hasta("1   05/01/2026    FACTURA 1", 63, "100.00"), 73, "0.00"), 81, "0.00"));
    // A collected entry has its "C" at 50; 33.33 ends at 70 and the SALDO
    // column, the running sum of HABER, at 81.
    EXPECT_EQ(l[1], Hasta(Hasta(Hasta(Hasta("2   05/02/2026    COBRO FACTURA 1", 50, "C"), 63, "0.00"), 70, "33.33"),
                          81, "33.33"));
}

TEST_F(ListingWindow, AWholeAmountOfFiveOverrunsItsColumn) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "05/01/2026", "ENTERO", "5", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 2, "06/01/2026", "UN DECIMAL", "5.5", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 3, "07/01/2026", "DOS DECIMALES", "5.25", "0"));
    abre();
    vb::SetValue(c<QCheckBox>("Checksubtotal"), 0);
    vb::SetValue(c<QCheckBox>("Checktotal"), 0);
    click("BotonListadofcl");
    const QStringList l = lineas();
    ASSERT_EQ(l.size(), 3);
    // 5 prints as 5.00, two places beyond 5.50 and three beyond 5.25, which
    // ends under the heading's DEBE.
    EXPECT_EQ(vb::Mid(l[0], 60, 4), "5.00");
    EXPECT_EQ(vb::Mid(l[1], 58, 4), "5.50");
    EXPECT_EQ(vb::Mid(l[2], 57, 4), "5.25");
}

TEST_F(ListingWindow, SubtotalsOnAChangeOfCustomerAndTheTotal) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "05/01/2026", "FACTURA 1", "100", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 2, "05/02/2026", "COBRO", "0", "40", "C"));
    exec(Apunte(kFichas, 2026, "22222222B", "C002", 1, "10/03/2026", "FACTURA 7", "12.5", "12.5"));
    abre();
    click("BotonListadofcl");
    const QStringList l = lineas();
    ASSERT_EQ(l.size(), 8);
    const QString subtotal = vb::Space(10) + "Subtotal... " + vb::Space(30);
    // Sums of 100 and 40 are whole: their raw text is "100" and "40".
    EXPECT_EQ(l[2], Hasta(Hasta(Hasta(subtotal, 63, "100.00"), 73, "40.00"), 81, "40.00"));
    EXPECT_EQ(l[3], vb::Space(10) + "C001 / FERRETERIA PEDRO");
    EXPECT_TRUE(l[4].startsWith("1   10/03/2026    FACTURA 7"));
    EXPECT_EQ(l[5], Hasta(Hasta(Hasta(subtotal, 61, "12.50"), 71, "12.50"), 81, "12.50"));
    EXPECT_EQ(l[6], vb::Space(10) + "C002 / BAZAR LUCIA");
    EXPECT_EQ(l[7], Hasta(Hasta(Hasta(vb::Space(10) + "Total...... " + vb::Space(30), 61, "112.50"), 71, "52.50"),
                          81, "52.50"));
    EXPECT_TRUE(boxes.shown.isEmpty());
}

TEST_F(ListingWindow, TheSaldoOptionChoosesCollectedOrNot) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "05/01/2026", "FACTURA 1", "100", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 2, "05/02/2026", "COBRO", "0", "40", "C"));
    abre();
    vb::SetValue(c<QCheckBox>("Checksubtotal"), 0);
    vb::SetValue(c<QCheckBox>("Checktotal"), 0);
    click("Optionsipagado");
    click("BotonListadofcl");
    ASSERT_EQ(lista()->ListCount(), 1);
    EXPECT_TRUE(lista()->List(0).startsWith("2   05/02/2026    COBRO"));
    click("BotonCerrarfcl");
    click("Optionnopagado");
    click("BotonListadofcl");
    ASSERT_EQ(lista()->ListCount(), 1);
    EXPECT_TRUE(lista()->List(0).startsWith("1   05/01/2026    FACTURA 1"));
}

TEST_F(ListingWindow, TheIntervalTakesBothEnds) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "31/12/2025", "OTRO AÑO", "1", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 2, "01/03/2026", "PRIMERO", "1", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 3, "31/03/2026", "ULTIMO", "1", "0"));
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 4, "01/04/2026", "FUERA", "1", "0"));
    abre();
    vb::SetValue(c<QCheckBox>("Checksubtotal"), 0);
    vb::SetValue(c<QCheckBox>("Checktotal"), 0);
    teclea("Textmesini", "3");
    teclea("Textdiafin", "31");
    teclea("Textmesfin", "3");
    click("BotonListadofcl");
    ASSERT_EQ(lista()->ListCount(), 2);
    EXPECT_TRUE(lista()->List(0).contains("PRIMERO"));
    EXPECT_TRUE(lista()->List(1).contains("ULTIMO"));
}

TEST_F(ListingWindow, NothingInTheIntervalSaysNada) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "05/01/2026", "FACTURA 1", "100", "0"));
    abre();
    teclea("Textejer", "2024");
    click("BotonListadofcl");
    EXPECT_EQ(lista()->ListCount(), 0);
    EXPECT_EQ(boxes.shown, QStringList{"Velmarinda|nada|0"});
    // The listing stands, empty, until Cerrar.
    EXPECT_TRUE(vb::Visible(c("BotonCerrarfcl")));
}

TEST_F(ListingWindow, WhileAListingStandsTheFramesAreOffAndTheWindowWontClose) {
    exec(Apunte(kFichas, 2026, "11111111A", "C001", 1, "05/01/2026", "FACTURA 1", "100", "0"));
    abre();
    click("Optionuno");
    c<vb::ComboBox>("Combonifcli")->SetListIndex(0);
    click("BotonListadofcl");
    EXPECT_EQ(lista()->ListCount(), 4);  // the entry, the subtotal, the customer, the total
    EXPECT_FALSE(vb::Visible(c("BotonListadofcl")));
    EXPECT_TRUE(vb::Visible(c("BotonImprimirfcl")));
    for (const char* f : {"Frameseleccion", "Framedatosejer", "Frameopciones", "Combonifcli"})
        EXPECT_FALSE(vb::Enabled(c(f))) << f;
    EXPECT_FALSE(w->close());
    EXPECT_EQ(boxes.shown, QStringList{"TRAMPEL  - Aviso| Para cerrar la ventana debe finalizar la tarea actual|304"});
    EXPECT_FALSE(w->IsUnloaded());
    click("BotonCerrarfcl");
    EXPECT_EQ(lista()->ListCount(), 0);
    EXPECT_TRUE(vb::Visible(c("BotonListadofcl")));
    EXPECT_TRUE(vb::Enabled(c("BotonListadofcl")));
    for (const char* f : {"Frameseleccion", "Framedatosejer", "Frameopciones", "Combonifcli"})
        EXPECT_TRUE(vb::Enabled(c(f))) << f;
    EXPECT_TRUE(w->close());
    EXPECT_TRUE(w->IsUnloaded());
}

// The supplier's window reads HABER first, under the DEBE heading.
TEST_F(ListingWindow, TheSupplierListingReadsTheAmountsMirrored) {
    exec(Proveedor("P001", "33333333C", "ALMACENES UNO", "ALMACENES UNO SL"));
    exec(Apunte("detalle_fichas_proveedores", 2026, "33333333C", "P001", 1, "05/01/2026", "FACTURA 9", "0", "100"));
    abre(true);
    EXPECT_EQ(w->objectName(), "Faplistado");
    EXPECT_EQ(c<vb::ComboBox>("Combonifpro")->List(0), "33333333C");
    EXPECT_NE(c("BotonListadofpr"), nullptr);
    EXPECT_FALSE(vb::Visible(c("Textcodigotienda")));
    vb::SetValue(c<QCheckBox>("Checksubtotal"), 0);
    click("BotonListadofpr");
    const QStringList l = lineas();
    ASSERT_EQ(l.size(), 2);
    EXPECT_EQ(l[0], Hasta(Hasta(Hasta("1   05/01/2026    FACTURA 9", 63, "100.00"), 73, "0.00"), 81, "0.00"));
    EXPECT_EQ(w->SentenciaApuntes(), "SELECT * FROM detalle_fichas_proveedores WHERE "
                                     "ejercicio_detalle_fichas_proveedores = 2026 ORDER BY "
                                     "nif_detalle_fichas_proveedores");
}

} // namespace
} // namespace vel::testing
