// The extract on real paper: two-page extracts of one customer and of all
// customers printed to PDF files through the print dialog, and read back as
// fixed-pitch text. With VEL_KEEP_PDF=/some/folder the files are kept there.
#include "listing_fixture.h"
#include "runtime/vb.h"

#include <QCheckBox>
#include <QDir>
#include <QProcess>

namespace vel::testing {
namespace {

QString Ejecuta(const QString& programa, const QStringList& args) {
    QProcess p;
    p.start(programa, args);
    if (!p.waitForFinished(60000) || p.exitCode() != 0) return QString();
    return QString::fromUtf8(p.readAllStandardOutput());
}

class ListingPaper : public ListingTest {
protected:
    // A PDF file: the print dialog names it.
    struct AFichero : Dialogs {
        QString file;
        std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override {
            vb::PrinterChoice c;
            c.outputFile = file;
            return c;
        }
    } fichero;
    std::optional<vb::InstalledEnvironment> papel;

    void SetUp() override {
        ListingTest::SetUp();
        papel.emplace(vb::Environment{.messageBoxes = &boxes,
                                      .dialogs = &fichero,
                                      .clock = QDateTime(QDate(2026, 11, 21), QTime(10, 0)),
                                      .programFolder = dir.path()});
        exec(Cliente("C001", "11111111A", "FERRETERIA PEDRO", "PEDRO GARCIA SL"));
        exec(Cliente("C002", "22222222B", "BAZAR LUCIA", "LUCIA CASTRO SL"));
    }
    void TearDown() override {
        w.reset();
        papel.reset();
        ListingTest::TearDown();
    }
    void apuntes(int n, const QString& nif, const QString& codigo) {
        for (int i = 1; i <= n; ++i)
            exec(Apunte("detalle_fichas_clientes", 2026, nif, codigo, i,
                        QStringLiteral("%1/%2/2026").arg(1 + i % 28, 2, 10, QChar('0')).arg(1 + i % 12, 2, 10, QChar('0')),
                        i % 2 ? QStringLiteral("FACTURA %1").arg(i) : QStringLiteral("COBRO FACTURA %1").arg(i - 1),
                        i % 2 ? QString::number(10 + i) : "0", i % 2 ? "0" : QString::number(9 + i),
                        i % 2 ? QString() : QStringLiteral("C")));
    }
    QString imprime(const QString& nombre) {
        const char* keep = std::getenv("VEL_KEEP_PDF");
        fichero.file = keep ? QDir(QString::fromLocal8Bit(keep)).filePath(nombre) : dir.filePath(nombre);
        boxes.answers.push_back(vb::vbYes);
        click("BotonImprimirfcl");
        return fichero.file;
    }
    static QStringList texto(const QString& pdf) {
        return Ejecuta("pdftotext", {"-layout", "-fixed", "6", pdf, "-"}).split('\n');
    }
    static int paginas(const QString& pdf) {
        for (const QString& l : Ejecuta("pdfinfo", {pdf}).split('\n'))
            if (l.startsWith("Pages:")) return l.mid(6).trimmed().toInt();
        return 0;
    }
    // The line of the PDF that holds the text (blanks on the left aside).
    static bool tiene(const QStringList& pdf, const QString& linea) {
        for (const QString& l : pdf)
            if (l.trimmed() == linea.trimmed()) return true;
        return false;
    }
};

TEST_F(ListingPaper, TwoPagesOfOneCustomer) {
    apuntes(40, "11111111A", "C001");
    abre();
    click("Optionuno");
    c<vb::ComboBox>("Combonifcli")->SetListIndex(0);
    click("BotonListadofcl");
    ASSERT_EQ(lista()->ListCount(), 43);
    const QString pdf = imprime("extracto_un_cliente.pdf");
    ASSERT_EQ(paginas(pdf), 2);
    const QStringList l = texto(pdf);
    EXPECT_TRUE(tiene(l, "Suministros Industriales" + vb::Space(33) + "Fecha de emisión: 21/11/2026"));
    EXPECT_TRUE(tiene(l, "     ______________" + vb::Space(45) + "Hoja Nº: 2/2"));
    EXPECT_TRUE(tiene(l, "Cód. Cliente: C001"));
    EXPECT_TRUE(tiene(l, "PEDRO GARCIA SL"));
    EXPECT_TRUE(tiene(l, "15001   PORTELAS"));
    EXPECT_TRUE(tiene(l, vb::Space(20) + "... Continúa ...->"));
    for (int i = 0; i < lista()->ListCount(); ++i) EXPECT_TRUE(tiene(l, lista()->List(i))) << i;
    EXPECT_TRUE(tiene(l, "EXTRACTO DE FICHAS DE CLIENTES   Página : 2"));
}

TEST_F(ListingPaper, TwoPagesOfAllCustomers) {
    apuntes(25, "11111111A", "C001");
    apuntes(15, "22222222B", "C002");
    abre();
    click("BotonListadofcl");
    ASSERT_EQ(lista()->ListCount(), 45);
    const QString pdf = imprime("extracto_todos.pdf");
    ASSERT_EQ(paginas(pdf), 2);
    const QStringList l = texto(pdf);
    EXPECT_TRUE(tiene(l, "Cód. Cliente: TODOS"));
    EXPECT_TRUE(tiene(l, vb::Space(10) + "C001 / FERRETERIA PEDRO"));
    EXPECT_TRUE(tiene(l, vb::Space(10) + "C002 / BAZAR LUCIA"));
    for (int i = 0; i < lista()->ListCount(); ++i) EXPECT_TRUE(tiene(l, lista()->List(i))) << i;
    bool totales = false;
    for (const QString& linea : l) totales = totales || linea.trimmed().startsWith("T O T A L E S ...");
    EXPECT_TRUE(totales);
}

} // namespace
} // namespace vel::testing
